// The bravik-archive tool: commands, messages and exit codes.
#include <archivetool.h>

#include <archivedb.h>

#include <gtest/gtest.h>

#include <SQLiteCpp/Database.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class ToolTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = std::filesystem::temp_directory_path() / ("bravik-tool-" + std::to_string(getpid()) + "-" +
                                                          ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(m_dir);
        std::filesystem::create_directories(m_dir);
    }
    void TearDown() override { std::filesystem::remove_all(m_dir); }

    int Run(std::vector<std::string> args)
    {
        std::ostringstream out, err;
        const int rc = RunArchiveTool(args, out, err);
        m_out = out.str();
        m_err = err.str();
        return rc;
    }
    std::string File(const std::string& name) { return (m_dir / name).string(); }

    std::filesystem::path m_dir;
    std::string m_out, m_err;
};

TEST_F(ToolTest, Help)
{
    EXPECT_EQ(Run({"--help"}), 0);
    EXPECT_NE(m_out.find("Usage: bravik-archive COMMAND FILE"), std::string::npos);
    EXPECT_NE(m_out.find("seed FILE --patients N [--duplicates RATE] [--seed S]"), std::string::npos);
}

TEST_F(ToolTest, BadUsageExitsWithTwoAndSaysWhy)
{
    EXPECT_EQ(Run({}), 2);
    EXPECT_NE(m_err.find("bravik-archive: no command given"), std::string::npos);
    EXPECT_EQ(Run({"frobnicate", File("x.db")}), 2);
    EXPECT_NE(m_err.find("unknown command 'frobnicate'"), std::string::npos);
    EXPECT_EQ(Run({"stats"}), 2);
    EXPECT_NE(m_err.find("stats: missing FILE"), std::string::npos);
    EXPECT_EQ(Run({"seed", File("x.db")}), 2);
    EXPECT_NE(m_err.find("seed: --patients N is required"), std::string::npos);
    EXPECT_EQ(Run({"seed", File("x.db"), "--patients", "many"}), 2);
    EXPECT_NE(m_err.find("--patients wants a whole number"), std::string::npos);
    EXPECT_EQ(Run({"seed", File("x.db"), "--patients", "10", "--duplicates", "1.5"}), 2);
    EXPECT_NE(m_err.find("--duplicates wants a rate from 0 to 1, not '1.5'"), std::string::npos);
    EXPECT_EQ(Run({"seed", File("x.db"), "--patients", "10", "--seed", "-3"}), 2);
    EXPECT_EQ(Run({"seed", File("x.db"), "--patients"}), 2);
    EXPECT_NE(m_err.find("seed: --patients needs a value"), std::string::npos);
    EXPECT_EQ(Run({"seed", File("x.db"), "--patients", "10", "--colour", "red"}), 2);
    EXPECT_NE(m_err.find("unknown option '--colour'"), std::string::npos);
    EXPECT_EQ(Run({"check", File("x.db"), "extra"}), 2);
    EXPECT_FALSE(std::filesystem::exists(File("x.db"))); // nothing was created
}

TEST_F(ToolTest, UnreadableFilesExitWithOne)
{
    EXPECT_EQ(Run({"stats", File("missing.db")}), 1);
    EXPECT_NE(m_err.find("cannot open '" + File("missing.db") + "': no such file"), std::string::npos);
    EXPECT_EQ(Run({"check", m_dir.string()}), 1);
    EXPECT_NE(m_err.find("it is a directory"), std::string::npos);
    std::ofstream(File("junk.db")) << "not an archive at all, only some text for the header";
    EXPECT_EQ(Run({"check", File("junk.db")}), 1);
    EXPECT_NE(m_err.find("not a database"), std::string::npos);
}

TEST_F(ToolTest, InitSeedStatsAndCheck)
{
    const std::string db = File("site.db");
    ASSERT_EQ(Run({"init", db}), 0);
    EXPECT_NE(m_out.find("Created archive " + db), std::string::npos);
    EXPECT_EQ(Run({"init", db}), 1);
    EXPECT_NE(m_err.find("already exists"), std::string::npos);

    ASSERT_EQ(Run({"seed", db, "--patients", "250", "--duplicates", "0.2", "--seed", "5"}), 0);
    EXPECT_NE(m_out.find("Seeded 250 patients into " + db), std::string::npos);
    EXPECT_NE(m_err.find("seeding: 250 / 250 patients (100%)"), std::string::npos);

    ASSERT_EQ(Run({"stats", db}), 0);
    SQLite::Database raw(db, SQLite::OPEN_READONLY);
    const long long patients = raw.execAndGet("SELECT count(*) FROM patients").getInt64();
    std::ostringstream line;
    line << std::left << std::setw(24) << "patients" << std::right << std::setw(12) << patients;
    EXPECT_NE(m_out.find(line.str()), std::string::npos) << m_out;
    EXPECT_NE(m_out.find("schema version " + std::to_string(ArchiveDb::CurrentSchemaVersion())), std::string::npos);

    ASSERT_EQ(Run({"check", db}), 0);
    EXPECT_EQ(m_out.substr(0, 3), "OK\n") << m_out;
    EXPECT_NE(m_out.find("\naudit chain: "), std::string::npos) << m_out;
}

TEST_F(ToolTest, CheckReportsEachInjectedViolation)
{
    const std::string db = File("broken.db");
    ASSERT_EQ(Run({"init", db}), 0);
    ASSERT_EQ(Run({"seed", db, "--patients", "50", "--seed", "2"}), 0);
    {
        SQLite::Database raw(db, SQLite::OPEN_READWRITE);
        // Damage only a tool with foreign keys off could do.
        raw.exec("PRAGMA foreign_keys = OFF");
        raw.exec("INSERT INTO exams(exam_key, patient_key, org_key, accession) "
                 "SELECT 'BAD-EXAM', 'NO-SUCH-PATIENT', org_key, 'BAD1' FROM organizations LIMIT 1");
        raw.exec("INSERT INTO journal(journal_id, at, operation) VALUES (999, 'x', 'merge')");
        raw.exec("INSERT INTO merged_patients(old_key, survivor_key, journal_id) VALUES ('GONE', 'X', 999)");
        raw.exec("INSERT INTO studies(study_key, exam_key, patient_key, study_uid) VALUES ('BAD-STUDY', NULL, 'GONE', '1.2')");
        // Two NORTHSIDE records in one group (the index that forbids it is dropped first).
        raw.exec("DROP INDEX patients_one_per_org_in_group");
        raw.exec("INSERT INTO link_groups(group_key) VALUES ('BAD-GROUP')");
        raw.exec("UPDATE patients SET link_group = 'BAD-GROUP' WHERE patient_key IN (SELECT patient_key FROM patients "
                 "WHERE org_key = (SELECT org_key FROM organizations WHERE org_id = 'NORTHSIDE') LIMIT 2)");
        raw.exec("INSERT INTO audit(at, event_code) VALUES ('x', 1)");
        raw.exec("INSERT INTO audit(at, event_code) VALUES ('x', 1)");
        raw.exec("DROP TRIGGER audit_no_delete");
        raw.exec("DELETE FROM audit WHERE audit_id = 1");
    }
    EXPECT_EQ(Run({"check", db}), 1);
    EXPECT_NE(m_out.find("exam BAD-EXAM points at missing patient NO-SUCH-PATIENT"), std::string::npos) << m_out;
    EXPECT_NE(m_out.find("study BAD-STUDY points at merged-away patient GONE"), std::string::npos) << m_out;
    EXPECT_NE(m_out.find("link group BAD-GROUP holds 2 records of organization NORTHSIDE"), std::string::npos) << m_out;
    EXPECT_NE(m_out.find("audit: trigger audit_no_delete is missing"), std::string::npos) << m_out;
    EXPECT_NE(m_out.find("audit: 1 rows but ids up to 2 (sequence 2): rows were removed"), std::string::npos) << m_out;
    EXPECT_NE(m_out.find("foreign key: row"), std::string::npos) << m_out;
    EXPECT_NE(m_out.find(" violations\n"), std::string::npos) << m_out;
}

TEST_F(ToolTest, TheProgramItselfExitsWithTheCommandsStatus)
{
    const std::string tool = BRAVIK_ARCHIVE_TOOL;
    const std::string db = File("exe.db");
    EXPECT_EQ(WEXITSTATUS(std::system((tool + " init '" + db + "' > /dev/null").c_str())), 0);
    EXPECT_EQ(WEXITSTATUS(std::system((tool + " check '" + db + "' > /dev/null").c_str())), 0);
    EXPECT_EQ(WEXITSTATUS(std::system((tool + " check '" + File("none.db") + "' 2> /dev/null").c_str())), 1);
    EXPECT_EQ(WEXITSTATUS(std::system((tool + " bogus 2> /dev/null").c_str())), 2);
}

} // namespace
