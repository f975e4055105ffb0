// Merge/link candidates over a large archive. Seeds patients and second
// registrations written with data-entry errors (unless an archive seeded
// earlier is given), rebuilds the kept pairs (once quiet, once while another
// workstation saves), runs a fixed query suite against the kept pairs and
// against the straightforward query, and times creates and modifies with
// their upkeep.
// Prints one "name value" line per figure; times in milliseconds unless the
// name says seconds.
//
//   bravik-bench-candidates [--patients N] [--archive FILE] [--seed S]
//                           [--runs R] [--naive-runs R] [--naive-limit-s T]
//                           [--saves-only]
//
// --saves-only times the creates and modifies alone, on the archive as it is.
// The straightforward query is stopped after T seconds (default 120); a
// stopped query counts as T, so naive figures and the speedup are then
// lower bounds (naive_stopped_queries says how many).

#include <archive.h>
#include <archivedb.h>
#include <candidaterules.h>
#include <candidatestore.h>
#include <indexedcandidatesearch.h>
#include <scancandidatesearch.h>
#include <sqlitepatientservice.h>
#include <walcheckpointer.h>

#include "registrationseeder.h"

#include <bdatetime.h>
#include <bpersonname.h>
#include <patientdetailrecord.h>

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double Ms(Clock::time_point since)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

double Percentile(std::vector<double> v, double p)
{
    if (v.empty())
        return 0.0;
    std::sort(v.begin(), v.end());
    size_t i = static_cast<size_t>(p * static_cast<double>(v.size() - 1) + 0.5);
    return v[std::min(i, v.size() - 1)];
}

void Figure(const std::string& name, double value)
{
    std::printf("%s %.3f\n", name.c_str(), value);
    std::fflush(stdout);
}

void Figure(const std::string& name, long long value)
{
    std::printf("%s %lld\n", name.c_str(), value);
    std::fflush(stdout);
}

double PeakRssMb()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmHWM:", 0) == 0)
            return std::atof(line.c_str() + 6) / 1024.0;
    return 0.0;
}

struct Query
{
    std::string name;
    CandidateCriteria criteria;
};

// One rebuild on a quiet archive, in seconds; where it spends its time on stderr.
double TimedRebuild(Archive& archive)
{
    const auto start = Clock::now();
    auto last = Clock::now();
    CandidateStore(archive.Db()).Rebuild([&](int step, int steps, const char* what) {
        std::fprintf(stderr, "rebuild step %d / %d (%s) after %.3f s, at %.3f s\n", step, steps, what, Ms(last) / 1000.0,
                     Ms(start) / 1000.0);
        last = Clock::now();
    });
    // Until the rebuilt pages have reached the file the log checkpoint
    // competes with every query; it is part of the rebuild's cost.
    archive.Checkpointer().WaitIdle();
    return Ms(start) / 1000.0;
}

// A second rebuild while another workstation saves a patient every 20 ms: how
// long its saves take is how long the rebuild kept it waiting.
void BusyRebuildFigures(Archive& archive, const std::string& path)
{
    std::atomic<bool> rebuilding{true};
    std::vector<double> saves;
    const std::string someone = archive.Db().Handle().execAndGet("SELECT min(patient_key) FROM patients").getString();
    std::thread other([&] {
        auto workstation = Archive::Open(path);
        workstation->SetUser(workstation->DefaultUser());
        for (int n = 0; rebuilding; ++n) {
            PatientDetailRecord r;
            workstation->Patients().GetPatient(someone.c_str(), &r, ACE_CString());
            r.SetName(BPersonName(r.GetName().GetLastName(), r.GetName().GetFirstName(), n % 2 ? "B" : "", "", ""));
            const auto begin = Clock::now();
            workstation->Patients().ModifyPatient(&r);
            saves.push_back(Ms(begin));
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    });
    Figure("rebuild_busy_s", TimedRebuild(archive));
    rebuilding = false;
    other.join();
    Figure("rebuild_saves", static_cast<long long>(saves.size()));
    Figure("rebuild_save_p99_ms", Percentile(saves, 0.99));
    Figure("rebuild_save_max_ms", saves.empty() ? 0.0 : *std::max_element(saves.begin(), saves.end()));
}

// Creates and modifies through the service, each committed with its upkeep.
void SaveFigures(Archive& archive, std::uint64_t seed)
{
    ArchiveDb& db = archive.Db();
    std::vector<std::string> orgs;
    SQLite::Statement o(db.Handle(), "SELECT org_key FROM organizations WHERE org_id IN ('NORTHSIDE', 'STMARY')");
    while (o.executeStep())
        orgs.push_back(o.getColumn(0).getString());
    std::mt19937_64 rng(seed + 99);
    std::vector<double> times;
    std::vector<std::string> created;
    const int ops = 400;
    // MRNs no earlier run on a reused archive has taken.
    const long long firstMrn =
        db.Handle()
            .execAndGet("SELECT coalesce(max(CAST(mrn AS INTEGER)), 899999999) + 1 FROM patients "
                        "WHERE mrn >= '900000000' AND mrn <= '999999999' AND length(mrn) = 9")
            .getInt64();
    long long failed = 0;
    for (int i = 0; i < ops; ++i) {
        PatientDetailRecord r;
        char dob[16];
        const int y = 1940 + static_cast<int>(rng() % 60), m = 1 + static_cast<int>(rng() % 12),
                  d = 1 + static_cast<int>(rng() % 28);
        std::snprintf(dob, sizeof dob, "%04d%02d%02d", y, m, d);
        r.SetName(BPersonName(i % 2 ? "Mason" : "Brandon", i % 3 ? "Ellie" : "Marco", "", "", ""));
        r.SetSexCode(rng() % 2 ? "F" : "M");
        r.SetDOB(BDate(static_cast<unsigned>(y), static_cast<unsigned>(m), static_cast<unsigned>(d)));
        if (i % 2 == 0 || created.empty()) {
            r.SetOrganizationKey(orgs[i % orgs.size()].c_str());
            r.SetPatientID(std::to_string(firstMrn + i).c_str());
            ACE_CString key;
            const auto start = Clock::now();
            const int rc = archive.Patients().CreatePatient(&r, key);
            times.push_back(Ms(start));
            if (rc == 0)
                created.push_back(key.c_str());
            else
                ++failed;
        } else {
            PatientDetailRecord existing;
            const std::string key = created[rng() % created.size()];
            archive.Patients().GetPatient(key.c_str(), &existing, ACE_CString());
            existing.SetName(BPersonName("Mason", i % 4 ? "Ellie" : "Marco", "", "", ""));
            existing.SetDOB(BDate(static_cast<unsigned>(y), static_cast<unsigned>(m), static_cast<unsigned>(d)));
            const auto start = Clock::now();
            if (archive.Patients().ModifyPatient(&existing) != 0)
                ++failed;
            times.push_back(Ms(start));
        }
    }
    // Every save syncs the log at commit (2 = FULL): the times include it.
    Figure("update_synchronous", static_cast<long long>(db.Handle().execAndGet("PRAGMA synchronous").getInt()));
    Figure("update_p50_ms", Percentile(times, 0.5));
    Figure("update_p99_ms", Percentile(times, 0.99));
    Figure("update_failures", failed);
}

} // namespace

int main(int argc, char** argv)
{
    int patients = 1000000;
    std::string archivePath;
    std::uint64_t seed = 1;
    int runs = 30;
    int naiveRuns = 1;
    double naiveLimit = 120.0;
    bool savesOnly = false;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        auto next = [&]() -> std::string { return i + 1 < argc ? argv[++i] : std::string(); };
        if (a == "--patients")
            patients = std::max(10, std::atoi(next().c_str()));
        else if (a == "--archive")
            archivePath = next();
        else if (a == "--seed")
            seed = std::strtoull(next().c_str(), nullptr, 10);
        else if (a == "--runs")
            runs = std::max(1, std::atoi(next().c_str()));
        else if (a == "--naive-runs")
            naiveRuns = std::max(0, std::atoi(next().c_str()));
        else if (a == "--naive-limit-s")
            naiveLimit = std::max(1.0, std::atof(next().c_str()));
        else if (a == "--saves-only")
            savesOnly = true;
        else {
            std::fprintf(stderr, "usage: bravik-bench-candidates [--patients N] [--archive FILE] [--seed S] [--runs R] "
                                 "[--naive-runs R] [--naive-limit-s T] [--saves-only]\n");
            return 2;
        }
    }
    bool temporary = false;
    if (archivePath.empty()) {
        // The process id keeps two runs on one machine off each other's archive.
        archivePath = (std::filesystem::temp_directory_path() /
                       ("bravik-bench-candidates-" + std::to_string(patients) + "-" + std::to_string(seed) + "-"
                        + std::to_string(getpid()) + ".db"))
                          .string();
        std::filesystem::remove(archivePath);
        temporary = true;
    }
    double seedSeconds = 0.0;
    {
        ArchiveDb db(archivePath);
        long long existing = db.Handle().execAndGet("SELECT count(*) FROM patients").getInt64();
        if (existing == 0) {
            const auto start = Clock::now();
            RegistrationSeeder::Seed(db, patients, seed);
            seedSeconds = Ms(start) / 1000.0;
            existing = patients;
        }
        patients = static_cast<int>(existing);
    }
    Figure("patients", static_cast<long long>(patients));
    Figure("seed_s", seedSeconds);

    auto archive = Archive::Open(archivePath);
    archive->SetUser(archive->DefaultUser());
    ArchiveDb& db = archive->Db();
    if (savesOnly) {
        SaveFigures(*archive, seed);
        return 0;
    }
    Figure("rebuild_s", TimedRebuild(*archive));
    BusyRebuildFigures(*archive, archivePath);
    IndexedCandidateSearch indexed(db);
    ScanCandidateSearch naive(db);

    long long pairs = 0;
    {
        std::vector<CandidatePair> rows;
        CandidateCriteria all;
        indexed.Find(all, rows, pairs);
    }
    Figure("pairs", pairs);
    Figure("pairs_per_record", static_cast<double>(pairs) / patients);
    if (db.Handle().tableExists("bench_duplicates")) {
        const double truthCount = db.Handle().execAndGet("SELECT count(*) FROM bench_duplicates").getDouble();
        const double found = db.Handle()
                                 .execAndGet("SELECT count(*) FROM bench_duplicates t JOIN candidate_pairs c "
                                             "ON c.key_a = t.key_a AND c.key_b = t.key_b")
                                 .getDouble();
        Figure("true_pairs", static_cast<long long>(truthCount));
        Figure("pair_completeness", truthCount > 0 ? found / truthCount : 0.0);
        Figure("pair_quality", pairs > 0 ? found / static_cast<double>(pairs) : 0.0);
        // Per kind of error, over the true pairs whose second registration has it.
        for (int kind = 0; kind < RegistrationSeeder::KindCount; ++kind) {
            SQLite::Statement k(db.Handle(), "SELECT count(*), sum(c.key_a IS NOT NULL) FROM bench_duplicates t "
                                             "LEFT JOIN candidate_pairs c ON c.key_a = t.key_a AND c.key_b = t.key_b "
                                             "WHERE t.errors & ?");
            k.bind(1, 1 << kind);
            if (k.executeStep())
                Figure(std::string("pair_completeness_") + RegistrationSeeder::KindName(kind),
                       k.getColumn(1).getDouble() / std::max(1.0, k.getColumn(0).getDouble()));
        }
        // By number of errors (the other organization is not one).
        SQLite::Statement n(db.Handle(), "SELECT t.errors, c.key_a IS NOT NULL FROM bench_duplicates t "
                                         "LEFT JOIN candidate_pairs c ON c.key_a = t.key_a AND c.key_b = t.key_b");
        std::map<int, std::pair<double, double>> byCount;
        while (n.executeStep()) {
            int bits = n.getColumn(0).getInt() & ~(1 << RegistrationSeeder::OtherOrganization);
            int count = 0;
            for (; bits; bits &= bits - 1)
                ++count;
            byCount[count].first += 1;
            byCount[count].second += n.getColumn(1).getInt();
        }
        for (const auto& [count, tally] : byCount)
            Figure("pair_completeness_errors" + std::to_string(count), tally.second / std::max(1.0, tally.first));
    }

    // The suite's parameters come from the data so every query has answers.
    std::string commonPrefix, rareLast, rareFirst, someOrg;
    {
        SQLite::Statement q(db.Handle(), "SELECT substr(a_last, 1, 3) AS p, count(*) AS n FROM candidate_pairs "
                                         "GROUP BY p ORDER BY n DESC LIMIT 1");
        if (q.executeStep())
            commonPrefix = q.getColumn(0).getString();
        SQLite::Statement r(db.Handle(), "SELECT a_last, a_first FROM candidate_pairs ORDER BY key_a DESC LIMIT 1");
        if (r.executeStep()) {
            rareLast = r.getColumn(0).getString();
            rareFirst = r.getColumn(1).getString();
        }
        SQLite::Statement o(db.Handle(), "SELECT org_key FROM organizations WHERE org_id = 'LAKEVIEW'");
        if (o.executeStep())
            someOrg = o.getColumn(0).getString();
    }
    std::vector<Query> suite;
    suite.push_back({"unfiltered", {}});
    {
        Query q{"last_prefix_1", {}};
        q.criteria.lastName = "M%";
        suite.push_back(q);
    }
    {
        Query q{"last_prefix_3", {}};
        q.criteria.lastName = commonPrefix + "%";
        suite.push_back(q);
    }
    {
        Query q{"rare_name", {}};
        q.criteria.lastName = rareLast + "%";
        q.criteria.firstName = rareFirst + "%";
        suite.push_back(q);
    }
    {
        Query q{"dob_range_sex", {}};
        q.criteria.dobBegin = "19600101";
        q.criteria.dobEnd = "19691231";
        q.criteria.sexCode = "F";
        suite.push_back(q);
    }
    {
        Query q{"one_org", {}};
        q.criteria.mergeOrgKeys = {someOrg};
        q.criteria.linkOrgKeys = {someOrg};
        suite.push_back(q);
    }
    {
        Query q{"merge_only", {}};
        q.criteria.linkOff = true;
        suite.push_back(q);
    }
    {
        Query q{"link_only", {}};
        q.criteria.mergeOff = true;
        suite.push_back(q);
    }
    {
        Query q{"one_reason", {}};
        q.criteria.reasonKind = CandidateRules::kDayMonthSwapped;
        suite.push_back(q);
    }

    double worst = 0.0, naiveWorst = 0.0;
    long long mismatches = 0, stopped = 0;
    // Interrupts the straightforward query when it runs past the limit.
    auto timedNaive = [&](const CandidateCriteria& c, std::vector<CandidatePair>& rows, long long& total) {
        std::mutex m;
        std::condition_variable cv;
        bool done = false;
        std::thread watchdog([&] {
            std::unique_lock<std::mutex> lock(m);
            if (!cv.wait_for(lock, std::chrono::duration<double>(naiveLimit), [&] { return done; }))
                sqlite3_interrupt(db.Handle().getHandle());
        });
        bool finished = true;
        try {
            naive.Find(c, rows, total);
        } catch (const std::exception&) {
            finished = false;
        }
        {
            std::lock_guard<std::mutex> lock(m);
            done = true;
        }
        cv.notify_all();
        watchdog.join();
        return finished;
    };
    for (const Query& q : suite) {
        std::vector<double> times;
        std::vector<CandidatePair> rows;
        long long total = 0;
        // One untimed run first: a site's hot index pages are in memory; the
        // figures are for answers, not for the first read from disk.
        indexed.Find(q.criteria, rows, total);
        for (int r = 0; r < runs; ++r) {
            rows.clear();
            const auto start = Clock::now();
            indexed.Find(q.criteria, rows, total);
            times.push_back(Ms(start));
        }
        const double p95 = Percentile(times, 0.95);
        Figure("query_" + q.name + "_p50_ms", Percentile(times, 0.5));
        Figure("query_" + q.name + "_p95_ms", p95);
        Figure("query_" + q.name + "_total", total);
        worst = std::max(worst, p95);
        if (naiveRuns > 0) {
            std::vector<double> naiveTimes;
            std::vector<CandidatePair> naiveRows;
            long long naiveTotal = 0;
            for (int r = 0; r < naiveRuns; ++r) {
                naiveRows.clear();
                const auto start = Clock::now();
                const bool finished = timedNaive(q.criteria, naiveRows, naiveTotal);
                naiveTimes.push_back(finished ? Ms(start) : naiveLimit * 1000.0);
                if (!finished) {
                    ++stopped;
                    break;
                }
            }
            if (stopped && naiveTimes.back() >= naiveLimit * 1000.0) {
                Figure("naive_" + q.name + "_p95_ms", naiveTimes.back());
                naiveWorst = std::max(naiveWorst, naiveTimes.back());
                continue;
            }
            const double naiveP95 = Percentile(naiveTimes, 0.95);
            Figure("naive_" + q.name + "_p95_ms", naiveP95);
            naiveWorst = std::max(naiveWorst, naiveP95);
            bool same = naiveTotal == total && naiveRows.size() == rows.size();
            for (size_t i = 0; same && i < rows.size(); ++i)
                same = rows[i].first.key == naiveRows[i].first.key && rows[i].second.key == naiveRows[i].second.key
                    && rows[i].reasonKind == naiveRows[i].reasonKind;
            if (!same) {
                ++mismatches;
                std::fprintf(stderr, "%s: kept pairs give %lld (%zu rows), the straightforward query %lld (%zu rows)\n",
                             q.name.c_str(), total, rows.size(), naiveTotal, naiveRows.size());
            }
        }
    }
    Figure("worst_query_p95_ms", worst);
    if (naiveRuns > 0) {
        Figure("naive_worst_p95_ms", naiveWorst);
        Figure("speedup_vs_naive", worst > 0 ? naiveWorst / worst : 0.0);
        Figure("naive_mismatching_queries", mismatches);
        Figure("naive_stopped_queries", stopped);
    }

    SaveFigures(*archive, seed);
    Figure("rss_mb", PeakRssMb());
    archive.reset();
    if (temporary) {
        std::filesystem::remove(archivePath);
        std::filesystem::remove(archivePath + "-wal");
        std::filesystem::remove(archivePath + "-shm");
    }
    return 0;
}
