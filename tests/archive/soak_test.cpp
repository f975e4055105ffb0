// Three workstation processes doing the ordinary mix of work on one archive
// file; after every round the archive check must find nothing. Bounded for
// CI; BRAVIK_SOAK_ROUNDS and BRAVIK_SOAK_OPERATIONS make it run longer.
#include <archivefixture.h>

#include <archivechecker.h>

#include <cstdlib>
#include <fstream>
#include <fcntl.h>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>

extern char** environ;

namespace {

long FromEnvironment(const char* name, long fallback)
{
    const char* value = std::getenv(name);
    const long n = value ? std::strtol(value, nullptr, 10) : 0;
    return n > 0 ? n : fallback;
}

std::string Slurp(const std::string& path)
{
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class SoakTest : public ArchiveFixture
{
protected:
    void Populate()
    {
        for (int i = 0; i < 30; ++i) {
            for (const auto& org : {m_north, m_south}) {
                ArchiveBuilder::PatientFields p;
                p.orgKey = org;
                p.last = "Soak" + std::to_string(i % 7);
                const std::string key = Build().Patient(p);
                if (i % 2 == 0)
                    Build().Study(Build().Exam(key), key);
            }
        }
    }

    // Starts one worker process; its output goes to files beside the archive.
    pid_t Start(int worker, int round, long operations)
    {
        const std::string out = (Dir() / ("worker" + std::to_string(worker) + ".out")).string();
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_addopen(&files, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        posix_spawn_file_actions_addopen(&files, 2, (out + ".err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const std::string seed = std::to_string(round * 10 + worker + 1);
        const std::string count = std::to_string(operations);
        const std::string path = Path();
        std::vector<char*> argv = {const_cast<char*>(BRAVIK_SOAK_WORKER), const_cast<char*>(path.c_str()),
                                   const_cast<char*>(seed.c_str()), const_cast<char*>(count.c_str()), nullptr};
        pid_t pid = -1;
        EXPECT_EQ(posix_spawn(&pid, BRAVIK_SOAK_WORKER, &files, nullptr, argv.data(), environ), 0);
        posix_spawn_file_actions_destroy(&files);
        return pid;
    }
};

TEST_F(SoakTest, ThreeWorkstationsLeaveASoundArchiveAfterEveryRound)
{
    Populate();
    const long rounds = FromEnvironment("BRAVIK_SOAK_ROUNDS", 2);
    const long operations = FromEnvironment("BRAVIK_SOAK_OPERATIONS", 40);
    constexpr int kWorkers = 3;
    for (long round = 0; round < rounds; ++round) {
        pid_t pids[kWorkers];
        for (int w = 0; w < kWorkers; ++w)
            pids[w] = Start(w, static_cast<int>(round), operations);
        for (int w = 0; w < kWorkers; ++w) {
            int status = -1;
            ASSERT_EQ(waitpid(pids[w], &status, 0), pids[w]);
            const std::string err = Slurp((Dir() / ("worker" + std::to_string(w) + ".out.err")).string());
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
                << "round " << round << ", worker " << w << ": " << err;
        }
        const auto findings = ArchiveChecker(Db()).Run();
        ASSERT_TRUE(findings.empty()) << "round " << round << ": " << findings.size() << " findings, first: "
                                      << findings.front();
    }
    // The workers did real work, not only refusals.
    EXPECT_GT(Count("SELECT count(*) FROM audit"), 0);
}

} // namespace
