// The demo-data generator: a believable, deterministic, sound site.
#include <archivefixture.h>

#include <archivechecker.h>
#include <archivecontext.h>
#include <demoseeder.h>
#include <dictionarytopic.h>
#include <sqlitepatientservice.h>

#include <duplicatepatientrecord.h>
#include <mergelinkcandidatesquerydataset.h>

#include <functional>

#include <unistd.h>

namespace {

class SeederTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = std::filesystem::temp_directory_path() / ("bravik-seed-" + std::to_string(getpid()) + "-" +
                                                          ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(m_dir);
        std::filesystem::create_directories(m_dir);
    }
    void TearDown() override { std::filesystem::remove_all(m_dir); }
    std::string File(const std::string& name) { return (m_dir / name).string(); }
    static long long Count(ArchiveDb& db, const std::string& sql) { return db.Handle().execAndGet(sql).getInt64(); }
    std::filesystem::path m_dir;
};

TEST_F(SeederTest, TheSiteHasOrganizationsUsersRightsAndEveryDictionary)
{
    ArchiveDb db(File("site.db"));
    EXPECT_TRUE(DemoSeeder(db).SeedSite());
    EXPECT_FALSE(DemoSeeder(db).SeedSite()); // only once
    EXPECT_EQ(Count(db, "SELECT count(*) FROM organizations WHERE org_id = 'Enterprise' AND is_enterprise = 1"), 1);
    EXPECT_EQ(Count(db, "SELECT count(*) FROM organizations WHERE is_federated = 1"), 1);
    EXPECT_EQ(Count(db, "SELECT count(*) FROM organizations WHERE accepts_demographics_update = 0"), 1);
    EXPECT_EQ(db.Handle().execAndGet("SELECT user_name FROM users WHERE is_default = 1").getString(), "admin");
    EXPECT_EQ(Count(db, "SELECT count(*) FROM user_rights WHERE user_name = 'admin' AND can_create AND can_link AND can_merge"),
              Count(db, "SELECT count(*) FROM organizations"));
    EXPECT_GT(Count(db, "SELECT count(*) FROM user_rights WHERE user_name = 'clerk' AND can_merge = 0"), 0);
    EXPECT_GT(Count(db, "SELECT count(*) FROM user_rights WHERE user_name = 'clerk' AND can_merge = 1"), 0);
    // Exam rights by role: the admin everything, the clerk creates and edits
    // exams only, the radiologist nothing.
    EXPECT_EQ(Count(db, "SELECT count(*) FROM exam_rights WHERE user_name = 'admin' AND can_edit_exams "
                        "AND can_delete_exams AND can_detach_studies"),
              Count(db, "SELECT count(*) FROM organizations"));
    EXPECT_EQ(Count(db, "SELECT count(*) FROM exam_rights WHERE user_name = 'clerk' AND can_edit_exams "
                        "AND NOT can_delete_exams AND NOT can_detach_studies"),
              Count(db, "SELECT count(*) FROM organizations"));
    EXPECT_EQ(Count(db, "SELECT count(*) FROM exam_rights WHERE user_name = 'radiologist' AND "
                        "(can_edit_exams OR can_delete_exams OR can_detach_studies)"),
              0);
    EXPECT_EQ(Count(db, "SELECT count(*) FROM user_rights WHERE user_name = 'radiologist' AND "
                        "(can_create OR can_link OR can_merge)"),
              0);
    for (int topic : {DictionaryTopic::Country, DictionaryTopic::State, DictionaryTopic::Sex, DictionaryTopic::Gender,
                      DictionaryTopic::ExamStatus, DictionaryTopic::Priority, DictionaryTopic::LinkMergeReason,
                      DictionaryTopic::DeleteExamReason, DictionaryTopic::CancelExamReason,
                      DictionaryTopic::DeletePatientReason, DictionaryTopic::DetachStudyReason,
                      DictionaryTopic::DiagnosticImageStatus})
        EXPECT_GT(Count(db, "SELECT count(*) FROM dictionary WHERE topic = " + std::to_string(topic)), 0) << topic;
    EXPECT_EQ(db.Handle().execAndGet("SELECT description FROM dictionary WHERE topic = 2 AND code = 'US'").getString(),
              "UNITED STATES");
    EXPECT_EQ(Count(db, "SELECT count(*) FROM dictionary WHERE topic = 3 AND parent_code = 'US'"), 51);
    EXPECT_EQ(Count(db, "SELECT count(DISTINCT rank) FROM dictionary WHERE topic = 7"),
              Count(db, "SELECT count(*) FROM dictionary WHERE topic = 7"));
    for (const char* table : {"providers", "exam_codes", "exam_code_modifiers", "locations", "performing_resources"})
        EXPECT_GT(Count(db, std::string("SELECT count(*) FROM ") + table), 0) << table;
    EXPECT_TRUE(ArchiveChecker(db).Run().empty());
}

// Seeding is long work: another workstation writes between its transactions
// without waiting at all (a save that found the lock taken would fail).
TEST_F(SeederTest, AnotherWorkstationWritesBetweenTheBatches)
{
    ArchiveDb db(File("demo.db"));
    ArchiveDb other(File("demo.db"));
    other.SetBusyTimeout(0);
    other.Exec("CREATE TABLE IF NOT EXISTS other_writes (n INTEGER)");
    int writes = 0;
    std::function<void()> write = [&] {
        WriteTransaction tx(other);
        other.Exec("INSERT INTO other_writes VALUES (1)");
        tx.Commit();
        ++writes;
        db.BeforeNextWrite(write);
    };
    SeedOptions options;
    options.patients = 300;
    options.batchSize = 100;
    DemoSeeder(db).Seed(options, [&](int, int) { write(); });
    db.BeforeNextWrite({});
    EXPECT_GE(writes, 6) << "before each of the three batches and after each";
    EXPECT_EQ(Count(other, "SELECT count(*) FROM other_writes"), writes);
}

TEST_F(SeederTest, PatientsWithExamsStudiesDuplicatesAndLinksPassTheCheck)
{
    ArchiveDb db(File("demo.db"));
    SeedOptions options;
    options.patients = 1500;
    options.duplicateRate = 0.2;
    options.seed = 3;
    options.batchSize = 400;
    std::vector<std::pair<int, int>> progress;
    DemoSeeder(db).Seed(options, [&](int done, int total) { progress.emplace_back(done, total); });
    EXPECT_EQ(progress, (std::vector<std::pair<int, int>>{{400, 1500}, {800, 1500}, {1200, 1500}, {1500, 1500}}));

    const long long patients = Count(db, "SELECT count(*) FROM patients");
    EXPECT_GT(patients, 1500 + 200); // duplicates and linked records come on top
    EXPECT_GT(Count(db, "SELECT count(*) FROM exams"), 1000);
    EXPECT_GT(Count(db, "SELECT count(*) FROM studies"), 500);
    EXPECT_GT(Count(db, "SELECT count(*) FROM link_groups"), 20);
    EXPECT_EQ(Count(db, "SELECT count(*) FROM patients WHERE org_key IN (SELECT org_key FROM organizations "
                        "WHERE is_enterprise OR is_federated)"), 0);
    EXPECT_TRUE(ArchiveChecker(db).Run().empty());

    // The duplicates show up as candidates, both kinds and both reasons.
    ArchiveContext context(db);
    context.SetUser("admin");
    SqlitePatientService service(context);
    MergeLinkCandidatesQueryDataSet q;
    q.SetRowCount("100000");
    std::vector<DuplicatePatientRecord*> found;
    int total = 0;
    service.GetLinkAndMergePatients(found, q, total);
    EXPECT_GT(total, 150);
    int merge = 0, link = 0, ssn = 0, nameDob = 0;
    for (auto* d : found) {
        (d->GetFirstPatient().GetOrganizationKey() == d->GetSecondPatient().GetOrganizationKey() ? merge : link)++;
        const std::string reason = d->GetDuplicateReason().c_str();
        (reason == "Same SSN" ? ssn : nameDob)++;
        delete d;
    }
    EXPECT_GT(merge, 0);
    EXPECT_GT(link, 0);
    EXPECT_GT(ssn, 0);
    EXPECT_GT(nameDob, 0);
}

TEST_F(SeederTest, TheSameSeedGivesTheSameData)
{
    auto dump = [&](const std::string& file, std::uint64_t seed) {
        ArchiveDb db(File(file));
        SeedOptions options;
        options.patients = 300;
        options.seed = seed;
        DemoSeeder(db).Seed(options);
        ArchiveSnapshot s = TakeSnapshot(db);
        return s;
    };
    const auto a = dump("a.db", 11), b = dump("b.db", 11), c = dump("c.db", 12);
    EXPECT_TRUE(a == b) << DescribeDifference(a, b);
    EXPECT_FALSE(a == c);
}

TEST_F(SeederTest, SeedingAgainAddsMorePatientsWithFreshKeys)
{
    ArchiveDb db(File("twice.db"));
    SeedOptions options;
    options.patients = 200;
    DemoSeeder(db).Seed(options);
    const long long first = Count(db, "SELECT count(*) FROM patients");
    DemoSeeder(db).Seed(options);
    EXPECT_GT(Count(db, "SELECT count(*) FROM patients"), first + 199);
    EXPECT_TRUE(ArchiveChecker(db).Run().empty());
}

} // namespace
