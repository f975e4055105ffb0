// Rebuilding the kept candidate pairs while other workstations work: no
// write lock held between the rebuild's short transactions, every change made
// meanwhile in the result, a later rebuild taking the work over, too many
// changes starting it again, and nothing left behind.
#include <archivefixture.h>
#include <logcapture.h>
#include <otherworkstation.h>

#include <archivetool.h>
#include <candidaterebuild.h>
#include <candidaterules.h>
#include <candidatestore.h>

#include <bdatetime.h>
#include <bpersonname.h>
#include <duplicatepatientrecord.h>
#include <mergelinkcandidatesquerydataset.h>
#include <patientdetailrecord.h>

#include <functional>
#include <random>
#include <sstream>

namespace {

class CandidateRebuildTest : public TwoWorkstationFixture
{
protected:
    // Patients alike enough to pair by most rules, half of them in each hospital.
    std::vector<std::string> Populate(std::mt19937_64& rng, int count)
    {
        static const std::vector<std::string> lasts = {"Smith", "Smyth", "SMITH", "Brown", "Braun", "Lee"};
        static const std::vector<std::string> firsts = {"Ann", "Anne", "Lee", "Bob", ""};
        static const std::vector<std::string> dobs = {"19800305", "19800503", "19800306", "19810305", "", "19801305"};
        static const std::vector<std::string> gids = {"", "", "111", "112", "121"};
        std::vector<std::string> keys;
        for (int i = 0; i < count; ++i) {
            ArchiveBuilder::PatientFields f;
            f.orgKey = rng() % 2 ? m_north : m_south;
            f.last = lasts[rng() % lasts.size()];
            f.first = firsts[rng() % firsts.size()];
            f.sex = rng() % 3 ? "F" : "";
            f.dob = dobs[rng() % dobs.size()];
            f.globalId = gids[rng() % gids.size()];
            keys.push_back(Build().Patient(f));
        }
        return keys;
    }

    // One change through the other workstation's services, picked at random.
    void ChangeSomething(std::mt19937_64& rng, std::vector<std::string>& keys)
    {
        auto& svc = Other().patients;
        const std::string key = keys[rng() % keys.size()];
        const std::string other = keys[rng() % keys.size()];
        PatientDetailRecord r;
        switch (rng() % 6) {
        case 0:
            if (svc.GetPatient(key.c_str(), &r, "") == 0) {
                r.SetName(BPersonName(rng() % 2 ? "Smith" : "Brawn", rng() % 2 ? "Ann" : "Anna", "", "", ""));
                r.SetDOB(BDate(1980, 3, rng() % 2 ? 5 : 6));
                svc.ModifyPatient(&r);
            }
            break;
        case 1: {
            r.SetOrganizationKey(m_north.c_str());
            r.SetPatientID(("R" + std::to_string(rng() % 1000000)).c_str());
            r.SetName(BPersonName("Smith", "Ann", "", "", ""));
            r.SetSexCode("F");
            r.SetDOB(BDate(1980, 3, 5));
            ACE_CString created;
            if (svc.CreatePatient(&r, created) == 0)
                keys.push_back(created.c_str());
            break;
        }
        case 2: svc.DeletePatient(key.c_str(), "", "Entered in error"); break;
        case 3:
            if (key != other)
                svc.IgnoreDuplicatePatients(key.c_str(), other.c_str());
            break;
        case 4:
            if (key != other)
                svc.LinkPatients(key.c_str(), "", other.c_str(), "", nullptr);
            break;
        default:
            if (key != other && svc.GetPatient(other.c_str(), &r, "") == 0)
                svc.MergePatients(key.c_str(), &r, "Duplicate", {});
            break;
        }
    }

    // The rebuild left nothing of its own behind.
    void ExpectTidy()
    {
        EXPECT_EQ(Count("SELECT count(*) FROM sqlite_master WHERE name = 'candidate_pairs_next'"), 0);
        EXPECT_EQ(Count("SELECT running FROM candidate_rebuild"), 0);
        EXPECT_EQ(Count("SELECT count(*) FROM candidate_changes"), 0);
    }

    // The pairs kept equal what a rebuild with nothing going on computes.
    void ExpectSameAsQuietRebuild(const std::string& after)
    {
        EXPECT_TRUE(CandidateStore(Db()).Fresh()) << after;
        const auto kept = KeptPairs(Db());
        EXPECT_GE(CandidateStore(Db()).Rebuild(), 0);
        EXPECT_EQ(kept, KeptPairs(Db())) << after;
    }

    // More new patients than a swap applies (none alike), written by the
    // other workstation past the upkeep (as a bulk load does).
    void BulkLoad(const std::string& tag)
    {
        WriteTransaction tx(Other().db);
        for (int i = 0; i <= CandidateRebuild::kMostChangesApplied; ++i)
            Other().db.Exec("INSERT INTO patients(patient_key, org_key, mrn, last_name, first_name, dob) VALUES ('" + tag
                            + "-" + std::to_string(i) + "', '" + m_north + "', '" + tag + "-" + std::to_string(i)
                            + "', 'Bulk" + tag + "', 'Number" + std::to_string(i) + "', '')");
        tx.Commit();
    }

    // Rebuilds, counting its attempts; `meanwhile(attempt)` runs whenever it reports `step`.
    long long RebuildCounting(const std::string& step, const std::function<void(int)>& meanwhile, int& attempts)
    {
        attempts = 0;
        return CandidateStore(Db()).Rebuild([&](int, int, const char* what) {
            if (std::string(what) == "reading patients")
                ++attempts;
            if (step == what)
                meanwhile(attempts);
        });
    }

    // Runs `meanwhile` when the rebuild reports `step` (its first time only).
    static CandidateStore::Progress At(const std::string& step, std::function<void()> meanwhile)
    {
        auto done = std::make_shared<bool>(false);
        return [=](int, int, const char* what) {
            if (!*done && step == what) {
                *done = true;
                meanwhile();
            }
        };
    }
};

TEST_F(CandidateRebuildTest, AnotherWorkstationSavesBeforeEachOfTheRebuildsTransactions)
{
    std::mt19937_64 rng(7);
    auto keys = Populate(rng, 30);
    // Not waiting at all: a save that found the lock taken would fail.
    Other().db.SetBusyTimeout(0);
    int saves = 0;
    std::function<void()> save = [&] {
        PatientDetailRecord r;
        ASSERT_EQ(Other().patients.GetPatient(keys[0].c_str(), &r, ""), 0);
        r.SetName(BPersonName("Smith", saves % 2 ? "Ann" : "Anne", "", "", ""));
        EXPECT_EQ(Other().patients.ModifyPatient(&r), 0) << "save " << saves;
        ++saves;
        Db().BeforeNextWrite(save);
    };
    Db().BeforeNextWrite(save);
    const long long wiping = Count("PRAGMA secure_delete");
    int steps = 0;
    const long long pairs = CandidateStore(Db()).Rebuild([&](int, int, const char*) {
        save();
        ++steps;
    });
    Db().BeforeNextWrite({});
    EXPECT_GT(pairs, 0);
    EXPECT_EQ(Count("PRAGMA secure_delete"), wiping) << "the connection's setting is as it was";
    EXPECT_EQ(steps, CandidateRules::kCount + 5);
    // The claim, the side table, each index and the swap are transactions of their own.
    const long long indexes =
        Count("SELECT count(*) FROM sqlite_master WHERE type = 'index' AND tbl_name = 'candidate_pairs' AND sql IS NOT NULL");
    EXPECT_GE(saves, steps + 3 + indexes);
    ExpectTidy();
    ExpectSameAsQuietRebuild("saves between every transaction");
}

TEST_F(CandidateRebuildTest, ChangesMadeWhileItRunsAreInItsResult)
{
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        Db().Handle().exec("DELETE FROM ignored_pairs; UPDATE patients SET link_group = NULL; DELETE FROM link_groups;"
                           " DELETE FROM patients");
        std::mt19937_64 rng(seed);
        auto keys = Populate(rng, 24);
        CandidateStore(Db()).Rebuild();
        // Every other round starts from a stale store (a bulk load).
        if (seed % 2)
            Populate(rng, 3);
        const char* const steps[] = {"blocking", "writing pairs", "indexing", "finishing"};
        const long long pairs = CandidateStore(Db()).Rebuild(At(steps[seed % 4], [&] {
            for (int i = 0; i < 12; ++i)
                ChangeSomething(rng, keys);
        }));
        EXPECT_GE(pairs, 0) << "seed " << seed;
        EXPECT_EQ(pairs, Count("SELECT count(*) FROM candidate_pairs")) << "seed " << seed;
        ExpectTidy();
        ExpectSameAsQuietRebuild("changes during the rebuild, seed " + std::to_string(seed));
    }
}

TEST_F(CandidateRebuildTest, ARebuildStartedMeanwhileTakesTheWorkOver)
{
    std::mt19937_64 rng(3);
    Populate(rng, 20);
    long long theirs = -2;
    const long long mine = CandidateStore(Db()).Rebuild(At("indexing", [&] {
        theirs = CandidateStore(Other().db).Rebuild();
    }));
    EXPECT_EQ(mine, -1);
    EXPECT_GT(theirs, 0);
    EXPECT_EQ(theirs, Count("SELECT count(*) FROM candidate_pairs"));
    ExpectTidy();
    ExpectSameAsQuietRebuild("a rebuild taken over");
}

TEST_F(CandidateRebuildTest, TooManyChangesStartItAgain)
{
    std::mt19937_64 rng(5);
    Populate(rng, 20);
    int attempts = 0;
    const long long pairs = RebuildCounting("writing pairs", [&](int attempt) {
        if (attempt == 1)
            BulkLoad("first");
    }, attempts);
    EXPECT_EQ(attempts, 2);
    EXPECT_GT(pairs, 0);
    ExpectTidy();
    ExpectSameAsQuietRebuild("a second attempt");
}

TEST_F(CandidateRebuildTest, AnArchiveThatKeepsChangingIsLeftToTheStraightQuery)
{
    std::mt19937_64 rng(9);
    Populate(rng, 20);
    int attempts = 0;
    LogCapture log;
    const long long pairs =
        RebuildCounting("finishing", [&](int attempt) { BulkLoad("attempt" + std::to_string(attempt)); }, attempts);
    EXPECT_EQ(pairs, -1);
    EXPECT_EQ(attempts, CandidateRebuild::kAttempts);
    EXPECT_TRUE(log.Contains(LM_WARNING,
                             "CandidateRebuild: the patients kept changing; the candidate pairs were not rebuilt\n"));
    ExpectTidy();
    // The writes bypassed the upkeep: the store is stale and the worklist
    // comes from the straightforward query until the next rebuild.
    EXPECT_FALSE(CandidateStore(Db()).Fresh());
    std::vector<DuplicatePatientRecord*> rows;
    int total = -1;
    MergeLinkCandidatesQueryDataSet everyone;
    Arc().Patients().GetLinkAndMergePatients(rows, everyone, total);
    EXPECT_GT(total, 0);
    for (auto* row : rows)
        delete row;
}

TEST_F(CandidateRebuildTest, ABlockCapChangedMeanwhileStartsItAgainWithTheNewCap)
{
    for (int i = 0; i < 3; ++i)
        NorthPatient("Brown", "Ann", "19800505");
    int attempts = 0;
    const long long pairs = RebuildCounting("indexing", [&](int attempt) {
        if (attempt == 1)
            CandidateStore(Other().db).SetBlockCap(2);
    }, attempts);
    EXPECT_EQ(attempts, 2);
    EXPECT_EQ(pairs, 0);
    EXPECT_EQ(CandidateStore(Db()).BlockCap(), 2);
    ExpectTidy();
    ExpectSameAsQuietRebuild("a new cap");
}

TEST_F(CandidateRebuildTest, AFailedRebuildLeavesTheKeptPairsAsTheyWere)
{
    std::mt19937_64 rng(11);
    Populate(rng, 20);
    CandidateStore(Db()).Rebuild();
    const auto before = KeptPairs(Db());
    EXPECT_THROW(CandidateStore(Db()).Rebuild(At("indexing", [] { throw std::runtime_error("power cut"); })),
                 std::runtime_error);
    EXPECT_EQ(KeptPairs(Db()), before);
    EXPECT_TRUE(CandidateStore(Db()).Fresh());
    ExpectTidy();
    // A rebuild that died without a word (its process killed) is cleared by the next.
    Db().Handle().exec("UPDATE candidate_rebuild SET running = 99; CREATE TABLE candidate_pairs_next (x);"
                       " INSERT INTO candidate_changes VALUES ('gone')");
    EXPECT_GT(CandidateStore(Db()).Rebuild(), 0);
    ExpectTidy();
    EXPECT_EQ(KeptPairs(Db()), before);
}

} // namespace
