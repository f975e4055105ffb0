// Merging patients: completeness, linked records re-paired, refusals.
#include <archivefixture.h>

#include <archiveerror.h>
#include <archivechecker.h>
#include <sqlitepatientservice.h>

#include <linkedpatientinfo.h>
#include <patientdetailrecord.h>

#include <memory>

namespace {

class MergeTest : public ArchiveFixture
{
protected:
    SqlitePatientService& Svc() { return Arc().Patients(); }

    std::string In(const std::string& org, const std::string& last, const std::string& group = std::string())
    {
        ArchiveBuilder::PatientFields s;
        s.orgKey = org;
        s.last = last;
        s.group = group;
        return Build().Patient(s);
    }
    PatientDetailRecord Load(const std::string& key)
    {
        PatientDetailRecord r;
        EXPECT_EQ(Svc().GetPatient(key.c_str(), &r, ""), 0);
        return r;
    }
    long long References(const std::string& key)
    {
        return Count("SELECT (SELECT count(*) FROM patients WHERE patient_key = '" + key + "')"
                     " + (SELECT count(*) FROM exams WHERE patient_key = '" + key + "')"
                     " + (SELECT count(*) FROM studies WHERE patient_key = '" + key + "')"
                     " + (SELECT count(*) FROM ignored_pairs WHERE key_a = '" + key + "' OR key_b = '" + key + "')");
    }
};

TEST_F(MergeTest, MergeMovesEveryExamAndStudyAndRemovesTheSource)
{
    const std::string target = In(m_north, "Smith");
    const std::string source = In(m_north, "Smyth");
    const std::string third = In(m_north, "Other");
    for (int i = 0; i < 3; ++i)
        Build().Study(Build().Exam(source), source);
    Build().Study("", source); // an unattached study of the source
    Build().Study(Build().Exam(target), target);
    Build().Ignore(source, third);
    const long long exams = Count("SELECT count(*) FROM exams");
    const long long studies = Count("SELECT count(*) FROM studies");

    PatientDetailRecord survivor = Load(target);
    survivor.SetFirstName("Johnny");
    ASSERT_EQ(Svc().MergePatients(source.c_str(), &survivor, m_north.c_str(), {}), 0);

    EXPECT_EQ(References(source), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM exams"), exams);
    EXPECT_EQ(Count("SELECT count(*) FROM studies"), studies);
    EXPECT_EQ(Count("SELECT count(*) FROM exams WHERE patient_key = '" + target + "'"), 4);
    EXPECT_EQ(Count("SELECT count(*) FROM studies WHERE patient_key = '" + target + "'"), 5);
    EXPECT_EQ(Text("SELECT first_name FROM patients WHERE patient_key = '" + target + "'"), "Johnny");
    EXPECT_EQ(Text("SELECT survivor_key FROM merged_patients WHERE old_key = '" + source + "'"), target);
    EXPECT_EQ(Text("SELECT reason FROM journal WHERE operation = 'merge'"), m_north);
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'exams'"), 3);
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'studies'"), 4);
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'ignored_pairs'"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM audit WHERE event_code = 4 AND record_key = '" + target + "'"), 1);
    EXPECT_TRUE(ArchiveChecker(Db()).Run().empty());

    // The merged-away key is now told apart from an unknown one.
    PatientDetailRecord r;
    EXPECT_EQ(Svc().GetPatient(source.c_str(), &r, ""), ArchiveResult::MergedAway);
    EXPECT_EQ(Svc().GetPatient("NEVER", &r, ""), ArchiveResult::NotFound);
}

TEST_F(MergeTest, TheSurvivorMayTakeOverTheSourcesMrn)
{
    const std::string target = In(m_north, "Smith");
    const std::string source = In(m_north, "Smyth");
    const std::string sourceMrn = Text("SELECT mrn FROM patients WHERE patient_key = '" + source + "'");
    PatientDetailRecord survivor = Load(target);
    survivor.SetPatientID(sourceMrn.c_str());
    ASSERT_EQ(Svc().MergePatients(source.c_str(), &survivor, "Duplicate", {}), 0);
    EXPECT_EQ(Text("SELECT mrn FROM patients WHERE patient_key = '" + target + "'"), sourceMrn);
}

TEST_F(MergeTest, LinkedRecordsArePairedAsChosenAndTheGroupsJoin)
{
    // Source: NORTH s, SOUTH s2, Enterprise se. Target: NORTH t, SOUTH t2, FED tf.
    const std::string s = In(m_north, "S"), s2 = In(m_south, "S2"), se = In(m_enterprise, "SE");
    const std::string t = In(m_north, "T"), t2 = In(m_south, "T2"), tf = In(m_federated, "TF");
    const std::string gs = Build().LinkGroup(s, s2);
    Build().AddToGroup(gs, se);
    const std::string gt = Build().LinkGroup(t, t2);
    Build().AddToGroup(gt, tf);
    Build().Study(Build().Exam(s2), s2);

    LinkedPatientInfo northPair(s.c_str(), t.c_str()); // the two patients themselves
    LinkedPatientInfo southPair(s2.c_str(), t2.c_str());
    LinkedPatientInfo nothing; // an organization where only one side had a record
    PatientDetailRecord survivor = Load(t);
    ASSERT_EQ(Svc().MergePatients(s.c_str(), &survivor, "Duplicate", {&northPair, &southPair, &nothing}), 0);

    EXPECT_EQ(References(s), 0);
    EXPECT_EQ(References(s2), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM exams WHERE patient_key = '" + t2 + "'"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM studies WHERE patient_key = '" + t2 + "'"), 1);
    // One group: t, t2, tf and the source's enterprise record.
    for (const auto& p : {t, t2, tf, se})
        EXPECT_EQ(Text("SELECT link_group FROM patients WHERE patient_key = '" + p + "'"), gt) << p;
    EXPECT_EQ(Count("SELECT count(*) FROM link_groups"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM merged_patients"), 2);
    EXPECT_TRUE(ArchiveChecker(Db()).Run().empty());
}

TEST_F(MergeTest, ASurvivorWithoutGroupJoinsTheSourcesGroup)
{
    const std::string s = In(m_north, "S"), s2 = In(m_south, "S2");
    const std::string t = In(m_north, "T");
    const std::string gs = Build().LinkGroup(s, s2);
    PatientDetailRecord survivor = Load(t);
    ASSERT_EQ(Svc().MergePatients(s.c_str(), &survivor, "", {}), 0);
    EXPECT_EQ(Text("SELECT link_group FROM patients WHERE patient_key = '" + t + "'"), gs);
    EXPECT_EQ(Text("SELECT link_group FROM patients WHERE patient_key = '" + s2 + "'"), gs);
}

TEST_F(MergeTest, UnpairedRecordsOfOneOrganizationInBothGroupsAreAConflict)
{
    const std::string s = In(m_north, "S"), s2 = In(m_south, "S2");
    const std::string t = In(m_north, "T"), t2 = In(m_south, "T2");
    Build().LinkGroup(s, s2);
    Build().LinkGroup(t, t2);
    const auto before = Snapshot();
    PatientDetailRecord survivor = Load(t);
    EXPECT_EQ(Svc().MergePatients(s.c_str(), &survivor, "", {}), ArchiveResult::Conflict);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(MergeTest, InvalidMergeRequestsChangeNothing)
{
    const std::string s = In(m_north, "S"), s2 = In(m_south, "S2");
    const std::string t = In(m_north, "T"), t2 = In(m_south, "T2");
    const std::string otherOrg = In(m_south, "Elsewhere");
    const std::string loose = In(m_enterprise, "Loose");
    const std::string third = In(m_north, "Third");
    Build().LinkGroup(s, s2);
    Build().LinkGroup(t, t2);
    Build().Exam(s);
    // An earlier merge leaves a merged-away key behind.
    const std::string gone = In(m_north, "Gone");
    {
        PatientDetailRecord keep = Load(t);
        ASSERT_EQ(Svc().MergePatients(gone.c_str(), &keep, "", {}), 0);
    }
    const auto before = Snapshot();
    const PatientDetailRecord good = Load(t);
    auto with = [&](auto change) {
        PatientDetailRecord r = good;
        change(r);
        return r;
    };
    LinkedPatientInfo pair(s2.c_str(), t2.c_str());
    LinkedPatientInfo self(s2.c_str(), s2.c_str());
    LinkedPatientInfo half(s2.c_str(), "");
    LinkedPatientInfo crossOrg(s2.c_str(), t.c_str());
    LinkedPatientInfo outsider(loose.c_str(), t2.c_str());
    LinkedPatientInfo ghost("GHOST", t2.c_str());
    LinkedPatientInfo chainA(s2.c_str(), t2.c_str());
    LinkedPatientInfo chainB(t2.c_str(), s2.c_str());
    LinkedPatientInfo sameGroup(s2.c_str(), s.c_str());
    LinkedPatientInfo backwards(t.c_str(), s.c_str());

    struct Case { const char* what; std::string source; PatientDetailRecord target; std::string reason;
                  std::vector<LinkedPatientInfo*> linked; };
    const std::vector<Case> cases = {
        {"self merge", t, good, "", {&pair}},
        {"empty source", "", good, "", {&pair}},
        {"unknown source", "GHOST", good, "", {&pair}},
        {"merged-away source", gone, good, "", {&pair}},
        {"merged-away target", s, with([&](auto& r) { r.SetPatientKey(gone.c_str()); }), "", {&pair}},
        {"unknown target", s, with([](auto& r) { r.SetPatientKey("GHOST"); }), "", {&pair}},
        {"empty target key", s, with([](auto& r) { r.SetPatientKey(""); }), "", {&pair}},
        {"across organizations", otherOrg, good, "", {}},
        {"target moved to another organization", s, with([&](auto& r) { r.SetOrganizationKey(m_south.c_str()); }), "", {&pair}},
        {"target without MRN", s, with([](auto& r) { r.SetPatientID(""); }), "", {&pair}},
        {"target without last name", s, with([](auto& r) { r.SetLastName(""); }), "", {&pair}},
        {"over-long name", s, with([](auto& r) { r.SetFirstName(std::string(60, 'n').c_str()); }), "", {&pair}},
        {"non-UTF-8 name", s, with([](auto& r) { r.SetFirstName("\xe9t\xe9"); }), "", {&pair}},
        {"over-long reason", s, good, std::string(300, 'r'), {&pair}},
        {"null pairing", s, good, "", {nullptr}},
        {"pairing with itself", s, good, "", {&self}},
        {"half a pairing", s, good, "", {&half}},
        {"pairing across organizations", s, good, "", {&crossOrg}},
        {"pairing with a record outside both groups", s, good, "", {&outsider}},
        {"pairing with an unknown record", s, good, "", {&ghost}},
        {"a cycle of pairings", s, good, "", {&chainA, &chainB}},
        {"the same record merged twice", s, good, "", {&pair, &pair}},
        {"pairing within one group", s, good, "", {&sameGroup}},
        {"the two patients paired the other way round", s, good, "", {&backwards}},
        {"no pairing where both groups hold SOUTH", s, good, "", {}},
        {"MRN taken by a third patient", s,
         with([&](auto& r) { r.SetPatientID(Text("SELECT mrn FROM patients WHERE patient_key = '" + third + "'").c_str()); }),
         "", {&pair}},
    };
    ASSERT_GE(cases.size(), 20u);
    for (const auto& c : cases) {
        PatientDetailRecord target = c.target;
        EXPECT_NE(Svc().MergePatients(c.source.c_str(), &target, c.reason.c_str(), c.linked), 0) << c.what;
    }
    EXPECT_NE(Svc().MergePatients(s.c_str(), nullptr, "", {&pair}), 0);
    EXPECT_ARCHIVE_UNCHANGED(before);
    // The request the cases spoil is itself a good one.
    PatientDetailRecord target = good;
    EXPECT_EQ(Svc().MergePatients(s.c_str(), &target, "", {&pair}), 0);
}

TEST_F(MergeTest, MergeNeedsTheMergeRightAndChangesNothingWithout)
{
    const std::string t = In(m_north, "T"), s = In(m_north, "S");
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, false);
    Arc().SetUser("clerk");
    const auto before = Snapshot();
    PatientDetailRecord survivor = Load(t);
    EXPECT_EQ(Svc().MergePatients(s.c_str(), &survivor, "", {}), ArchiveResult::NotPermitted);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(MergeTest, MergingLinkedRecordsNeedsTheMergeRightInTheirOrganization)
{
    const std::string s = In(m_north, "S"), s2 = In(m_south, "S2");
    const std::string t = In(m_north, "T"), t2 = In(m_south, "T2");
    Build().LinkGroup(s, s2);
    Build().LinkGroup(t, t2);
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, true);
    Build().Grant("clerk", m_south, true, true, false);
    Arc().SetUser("clerk");
    const auto before = Snapshot();
    LinkedPatientInfo pair(s2.c_str(), t2.c_str());
    PatientDetailRecord survivor = Load(t);
    EXPECT_EQ(Svc().MergePatients(s.c_str(), &survivor, "", {&pair}), ArchiveResult::NotPermitted);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(MergeTest, IgnoredPairsAreStoredOnceAndLeaveTheSearch)
{
    const std::string a = In(m_north, "A"), b = In(m_north, "B");
    ASSERT_EQ(Svc().IgnoreDuplicatePatients(b.c_str(), a.c_str()), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM ignored_pairs WHERE key_a = '" + std::min(a, b) + "'"), 1);
    const auto before = Snapshot();
    EXPECT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), b.c_str()), 0); // already ignored: nothing new
    EXPECT_ARCHIVE_UNCHANGED(before);
    EXPECT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), a.c_str()), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), "GHOST"), ArchiveResult::NotFound);
    EXPECT_EQ(Svc().IgnoreDuplicatePatients("", b.c_str()), ArchiveResult::InvalidArgument);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(MergeTest, IgnoringNeedsTheMergeRightWithinAndTheLinkRightAcrossOrganizations)
{
    const std::string a = In(m_north, "A"), b = In(m_north, "B"), c = In(m_south, "C");
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, false, false);
    Build().Grant("clerk", m_south, true, false, false);
    Arc().SetUser("clerk");
    const auto before = Snapshot();
    EXPECT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), b.c_str()), ArchiveResult::NotPermitted);
    EXPECT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), c.c_str()), ArchiveResult::NotPermitted);
    EXPECT_ARCHIVE_UNCHANGED(before);
    Build().Grant("clerk", m_north, true, false, true);
    EXPECT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), b.c_str()), 0);
    EXPECT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), c.c_str()), ArchiveResult::NotPermitted);
}

} // namespace
