// Merge/link candidates over a large archive. Seeds patients with known true
// duplicates (unless an archive seeded earlier is given), rebuilds the kept
// pairs, runs a fixed query suite against the kept pairs and against the
// straightforward query, and times creates and modifies with their upkeep.
// Prints one "name value" line per figure; times in milliseconds unless the
// name says seconds.
//
//   bravik-bench-candidates [--patients N] [--archive FILE] [--seed S]
//                           [--runs R] [--naive-runs R] [--naive-limit-s T]
//
// The straightforward query is stopped after T seconds (default 120); a
// stopped query counts as T, so naive figures and the speedup are then
// lower bounds (naive_stopped_queries says how many).

#include <archive.h>
#include <archivedb.h>
#include <candidaterules.h>
#include <candidatestore.h>
#include <demoseeder.h>
#include <indexedcandidatesearch.h>
#include <keygenerator.h>
#include <scancandidatesearch.h>
#include <sqlitepatientservice.h>
#include <walcheckpointer.h>

#include <bdatetime.h>
#include <bpersonname.h>
#include <patientdetailrecord.h>

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

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

// Names built from syllables: thousands of last names with a realistic skew.
struct Names
{
    std::vector<std::string> last, female, male;
    explicit Names(std::mt19937_64& rng)
    {
        const char* onset[] = {"B", "C", "D", "F", "G", "H", "J", "K", "L", "M", "N", "P", "R", "S", "T", "V", "W",
                               "Br", "Ch", "Cl", "Dr", "Gr", "Kr", "Sh", "St", "Th", "Tr", "Wh"};
        const char* vowel[] = {"a", "e", "i", "o", "u", "ai", "ea", "ou", "y"};
        const char* coda[] = {"n", "r", "s", "l", "m", "t", "ck", "rd", "nd", "ll", "ns", "rt", "tt", "x", ""};
        const char* tail[] = {"son", "ton", "er", "man", "ley", "ford", "berg", "well", "ski", "ez", "o", "a", ""};
        auto pick = [&](auto& arr) { return std::string(arr[rng() % (sizeof(arr) / sizeof(arr[0]))]); };
        for (int i = 0; i < 6000; ++i)
            last.push_back(pick(onset) + pick(vowel) + pick(coda) + pick(tail));
        for (int i = 0; i < 400; ++i) {
            std::string f = pick(onset) + pick(vowel) + pick(coda);
            female.push_back(f + (i % 2 ? "a" : "ie"));
            male.push_back(f + (i % 2 ? "o" : "en"));
        }
    }
};

struct Seeded
{
    std::string lastName, firstName; // of one patient that is in exactly one true pair
};

std::string Typo(std::string s, std::mt19937_64& rng)
{
    if (s.size() < 4)
        return s + "e";
    const size_t i = 1 + rng() % (s.size() - 2);
    switch (rng() % 3) {
    case 0: std::swap(s[i], s[i + 1]); break;
    case 1: s.erase(i, 1); break;
    default: s.insert(i, 1, s[i]); break;
    }
    return s;
}

void SeedPatients(ArchiveDb& db, int patients, std::uint64_t seed)
{
    DemoSeeder(db).SeedSite(seed);
    std::mt19937_64 rng(seed);
    Names names(rng);
    KeyGenerator keys(seed * 7 + 3);
    std::vector<std::string> orgs;
    {
        SQLite::Statement q(db.Handle(), "SELECT org_key FROM organizations WHERE org_id IN ('NORTHSIDE', 'LAKEVIEW', "
                                         "'STMARY') ORDER BY org_id");
        while (q.executeStep())
            orgs.push_back(q.getColumn(0).getString());
    }
    db.Handle().exec("CREATE TABLE IF NOT EXISTS bench_true_pairs (key_a TEXT, key_b TEXT, kind INTEGER, "
                     "PRIMARY KEY (key_a, key_b))");
    SQLite::Statement ins(db.Handle(),
                          "INSERT INTO patients(patient_key, org_key, mrn, last_name, first_name, middle_name, sex_code, "
                          "dob, global_id, created, modified) VALUES (?, ?, ?, ?, ?, '', ?, ?, ?, '', '')");
    SQLite::Statement truth(db.Handle(), "INSERT INTO bench_true_pairs(key_a, key_b, kind) VALUES (?, ?, ?)");
    long long mrn = 0;
    struct P { std::string last, first, sex, dob, gid; size_t org; };
    auto insert = [&](const P& p) {
        const std::string key = keys.Next();
        ins.bind(1, key);
        ins.bind(2, orgs[p.org]);
        ins.bind(3, std::to_string(1000000 + ++mrn));
        ins.bind(4, p.last);
        ins.bind(5, p.first);
        ins.bind(6, p.sex);
        ins.bind(7, p.dob);
        ins.bind(8, p.gid);
        ins.exec();
        ins.reset();
        return key;
    };
    // Zipf-like skew: a few very common last names, a long tail.
    std::vector<double> weights(names.last.size());
    for (size_t i = 0; i < weights.size(); ++i)
        weights[i] = 1.0 / static_cast<double>(i + 10);
    std::discrete_distribution<size_t> lastDist(weights.begin(), weights.end());
    int written = 0;
    while (written < patients) {
        SQLite::Transaction tx(db.Handle());
        const int end = std::min(patients, written + 20000);
        while (written < end) {
            P p;
            p.sex = rng() % 2 ? "F" : "M";
            p.last = names.last[lastDist(rng)];
            p.first = p.sex == "F" ? names.female[rng() % names.female.size()] : names.male[rng() % names.male.size()];
            char dob[16];
            std::snprintf(dob, sizeof dob, "%04d%02d%02d", static_cast<int>(1925 + rng() % 98),
                          static_cast<int>(1 + rng() % 12), static_cast<int>(1 + rng() % 28));
            p.dob = dob;
            if (rng() % 10 < 7)
                p.gid = std::to_string(100000000 + (static_cast<long long>(written) * 7919 + 104729) % 899999999);
            p.org = rng() % orgs.size();
            const std::string key = insert(p);
            ++written;
            // About 5% get a second registration of the same person.
            if (written >= end || rng() % 100 >= 5)
                continue;
            P d = p;
            // The kinds of second registration and how often each happens.
            const int roll = static_cast<int>(rng() % 100);
            int kind = 0;
            if (roll < 15) {
                kind = 0; // registered twice
            } else if (roll < 30) {
                kind = 1; // at another hospital
                d.org = (p.org + 1) % orgs.size();
            } else if (roll < 45) {
                kind = 2; // last-name typo, same identifier
                d.last = Typo(d.last, rng);
            } else if (roll < 55) {
                kind = 3; // last-name typo, no identifier
                d.last = Typo(d.last, rng);
                d.gid.clear();
            } else if (roll < 65) {
                kind = 4; // day and month swapped (only possible when the day could be a month), no identifier
                if (d.dob.substr(6, 2) <= "12") {
                    std::swap(d.dob[4], d.dob[6]);
                    std::swap(d.dob[5], d.dob[7]);
                } else {
                    d.first = Typo(d.first, rng);
                }
                d.gid.clear();
            } else if (roll < 73) {
                kind = 5; // first and last name swapped, no identifier
                std::swap(d.first, d.last);
                d.gid.clear();
            } else if (roll < 85) {
                kind = 6; // first-name typo, no identifier
                d.first = Typo(d.first, rng);
                d.gid.clear();
            } else if (roll < 95) {
                kind = 7; // birth date off by a day, same identifier
                d.dob[7] = d.dob[7] == '1' ? '2' : '1';
            } else if (roll < 98) {
                kind = 8; // another hospital, no identifier
                d.gid.clear();
                d.org = (p.org + 1) % orgs.size();
            } else {
                kind = 9; // birth year and first name wrong, no identifier: no rule can see it
                d.dob[3] = d.dob[3] == '0' ? '1' : '0';
                d.first = Typo(d.first, rng);
                d.gid.clear();
            }
            const std::string other = insert(d);
            ++written;
            truth.bind(1, std::min(key, other));
            truth.bind(2, std::max(key, other));
            truth.bind(3, kind);
            truth.exec();
            truth.reset();
        }
        tx.commit();
        std::fprintf(stderr, "\rseeding: %d / %d patients", written, patients);
    }
    std::fprintf(stderr, "\n");
}

struct Query
{
    std::string name;
    CandidateCriteria criteria;
};

} // namespace

int main(int argc, char** argv)
{
    int patients = 1000000;
    std::string archivePath;
    std::uint64_t seed = 1;
    int runs = 30;
    int naiveRuns = 1;
    double naiveLimit = 120.0;
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
        else {
            std::fprintf(stderr, "usage: bravik-bench-candidates [--patients N] [--archive FILE] [--seed S] [--runs R] "
                                 "[--naive-runs R]\n");
            return 2;
        }
    }
    bool temporary = false;
    if (archivePath.empty()) {
        archivePath = (std::filesystem::temp_directory_path() /
                       ("bravik-bench-candidates-" + std::to_string(patients) + "-" + std::to_string(seed) + ".db"))
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
            SeedPatients(db, patients, seed);
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
    {
        const auto start = Clock::now();
        CandidateStore(db).Rebuild();
        // Until the rebuilt pages have reached the file the log checkpoint
        // competes with every query; it is part of the rebuild's cost.
        archive->Checkpointer().WaitIdle();
        Figure("rebuild_s", Ms(start) / 1000.0);
    }
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
    const bool haveTruth = db.Handle().tableExists("bench_true_pairs");
    if (haveTruth) {
        const double truthCount = db.Handle().execAndGet("SELECT count(*) FROM bench_true_pairs").getDouble();
        const double found = db.Handle()
                                 .execAndGet("SELECT count(*) FROM bench_true_pairs t JOIN candidate_pairs c "
                                             "ON c.key_a = t.key_a AND c.key_b = t.key_b")
                                 .getDouble();
        Figure("true_pairs", static_cast<long long>(truthCount));
        Figure("pair_completeness", truthCount > 0 ? found / truthCount : 0.0);
        // Per kind of second registration (see SeedPatients), to show what the rules miss.
        SQLite::Statement k(db.Handle(), "SELECT t.kind, count(*), sum(c.key_a IS NOT NULL) FROM bench_true_pairs t "
                                         "LEFT JOIN candidate_pairs c ON c.key_a = t.key_a AND c.key_b = t.key_b "
                                         "GROUP BY t.kind ORDER BY t.kind");
        while (k.executeStep())
            Figure("pair_completeness_kind" + k.getColumn(0).getString(),
                   k.getColumn(2).getDouble() / std::max(1.0, k.getColumn(1).getDouble()));
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

    // Creates and modifies through the service, each committed with its upkeep.
    {
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
                const int rc = archive->Patients().CreatePatient(&r, key);
                times.push_back(Ms(start));
                if (rc == 0)
                    created.push_back(key.c_str());
                else
                    ++failed;
            } else {
                PatientDetailRecord existing;
                const std::string key = created[rng() % created.size()];
                archive->Patients().GetPatient(key.c_str(), &existing, ACE_CString());
                existing.SetName(BPersonName("Mason", i % 4 ? "Ellie" : "Marco", "", "", ""));
                existing.SetDOB(BDate(static_cast<unsigned>(y), static_cast<unsigned>(m), static_cast<unsigned>(d)));
                const auto start = Clock::now();
                if (archive->Patients().ModifyPatient(&existing) != 0)
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
    Figure("rss_mb", PeakRssMb());
    archive.reset();
    if (temporary) {
        std::filesystem::remove(archivePath);
        std::filesystem::remove(archivePath + "-wal");
        std::filesystem::remove(archivePath + "-shm");
    }
    return 0;
}
