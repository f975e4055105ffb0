// Two workstations on one archive file. Each race puts the other
// workstation's whole operation between this workstation's call and its write
// transaction (the hook runs just before the lock is asked for), which is
// exactly where a check made before the transaction would go stale. The loser
// must get the ordinary refusal and change nothing.
#include <archivefixture.h>

#include <archivechecker.h>
#include <archivecontext.h>
#include <archiveerror.h>
#include <logcapture.h>
#include <otherworkstation.h>
#include <sqliteexamservice.h>
#include <sqlitepatientservice.h>

#include <patientdetailrecord.h>
#include <server.h>

#include <SQLiteCpp/Exception.h>

#include <examdataset.h>

#include <chrono>
#include <thread>

namespace {

bool Logged(const LogCapture& log, const std::string& words)
{
    for (const auto& text : log.Texts())
        if (text.find(words) != std::string::npos)
            return true;
    return false;
}

class RaceTest : public TwoWorkstationFixture
{
protected:
    SqlitePatientService& Patients() { return Arc().Patients(); }

    // Runs `other` on the other workstation just before this workstation's
    // next write transaction takes the lock; `other` must succeed.
    template <typename F>
    void Meanwhile(F other)
    {
        Db().BeforeNextWrite([other] { EXPECT_EQ(other(), 0) << "the other workstation's call was refused"; });
    }

    PatientDetailRecord Load(SqlitePatientService& svc, const std::string& key)
    {
        PatientDetailRecord r;
        EXPECT_EQ(svc.GetPatient(key.c_str(), &r, ""), 0);
        return r;
    }
    std::string In(const std::string& org, const std::string& last)
    {
        ArchiveBuilder::PatientFields s;
        s.orgKey = org;
        s.last = last;
        return Build().Patient(s);
    }
    long long Rows(const std::string& table, const std::string& where)
    {
        return Count("SELECT count(*) FROM " + table + " WHERE " + where);
    }
    void ExpectSound()
    {
        const auto findings = ArchiveChecker(Db()).Run();
        EXPECT_TRUE(findings.empty()) << findings.front();
    }
};

TEST_F(RaceTest, TwoMergesOfOnePairInOppositeDirectionsKeepOnePatient)
{
    const std::string x = In(m_north, "Smith"), y = In(m_north, "Smyth");
    Build().Exam(x);
    Build().Exam(y);
    PatientDetailRecord keepY = Load(Other().patients, y);
    PatientDetailRecord keepX = Load(Patients(), x);
    Meanwhile([&] { return Other().patients.MergePatients(x.c_str(), &keepY, "Duplicate", {}); });

    EXPECT_EQ(Patients().MergePatients(y.c_str(), &keepX, "Duplicate", {}), ArchiveResult::MergedAway);

    EXPECT_EQ(Rows("patients", "patient_key = '" + y + "'"), 1);
    EXPECT_EQ(Rows("patients", "patient_key = '" + x + "'"), 0);
    EXPECT_EQ(Rows("exams", "patient_key = '" + y + "'"), 2);
    EXPECT_EQ(Count("SELECT count(*) FROM merged_patients"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'merge'"), 1);
    ExpectSound();
}

TEST_F(RaceTest, TheSameMergeFromTwoWorkstationsHappensOnce)
{
    const std::string source = In(m_north, "Smith"), target = In(m_north, "Smyth");
    PatientDetailRecord theirs = Load(Other().patients, target);
    PatientDetailRecord ours = Load(Patients(), target);
    Meanwhile([&] { return Other().patients.MergePatients(source.c_str(), &theirs, "Duplicate", {}); });

    EXPECT_EQ(Patients().MergePatients(source.c_str(), &ours, "Duplicate", {}), ArchiveResult::MergedAway);

    EXPECT_EQ(Count("SELECT count(*) FROM merged_patients"), 1);
    EXPECT_EQ(Rows("audit", "event_code = 4"), 1);
    ExpectSound();
}

TEST_F(RaceTest, TwoDeletesOfOnePatientJournalOnce)
{
    const std::string patient = In(m_north, "Smith");
    Build().Exam(patient);
    Meanwhile([&] { return Other().patients.DeletePatient(patient.c_str(), "", "Entered in error"); });

    EXPECT_EQ(Patients().DeletePatient(patient.c_str(), "", "Duplicate"), ArchiveResult::NotFound);

    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'delete-patient'"), 1);
    EXPECT_EQ(Text("SELECT reason FROM journal WHERE operation = 'delete-patient'"), "Entered in error");
    ExpectSound();
}

TEST_F(RaceTest, AMergeIntoAPatientDeletedMeanwhileIsRefusedAndKeepsTheSource)
{
    const std::string source = In(m_north, "Smith"), target = In(m_north, "Smyth");
    Build().Exam(source);
    PatientDetailRecord survivor = Load(Patients(), target);
    survivor.SetFirstName("Johnny");
    Meanwhile([&] { return Other().patients.DeletePatient(target.c_str(), "", "Entered in error"); });

    EXPECT_EQ(Patients().MergePatients(source.c_str(), &survivor, "Duplicate", {}), ArchiveResult::NotFound);

    EXPECT_EQ(Rows("patients", "patient_key = '" + source + "'"), 1);
    EXPECT_EQ(Rows("exams", "patient_key = '" + source + "'"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM merged_patients"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'merge'"), 0);
    ExpectSound();
}

TEST_F(RaceTest, AnEditOfAPatientMergedAwayMeanwhileIsRefusedAndNotAudited)
{
    const std::string source = In(m_north, "Smith"), target = In(m_north, "Smyth");
    PatientDetailRecord edited = Load(Patients(), source);
    edited.SetFirstName("Edited");
    PatientDetailRecord survivor = Load(Other().patients, target);
    Meanwhile([&] { return Other().patients.MergePatients(source.c_str(), &survivor, "Duplicate", {}); });

    // A refusal the clerk can act on: a readable reason, not a bare code.
    try {
        Patients().ModifyPatient(&edited);
        ADD_FAILURE() << "the edit of a merged-away patient was not refused";
    } catch (const Framework::Server& e) {
        EXPECT_EQ(std::string(e.what()).rfind("This patient was merged into another patient on another workstation", 0),
                  0u)
            << e.what();
    }

    EXPECT_EQ(Rows("audit", "event_code = 2"), 0);
    EXPECT_EQ(Rows("patients", "first_name = 'Edited'"), 0);
    ExpectSound();
}

TEST_F(RaceTest, TwoLinksOfOneRecordIntoOneOrganizationLeaveOneWholeGroup)
{
    const std::string a = In(m_north, "Smith"), b1 = In(m_south, "Smith"), b2 = In(m_south, "Smyth");
    Meanwhile([&] { return Other().patients.LinkPatients(a.c_str(), "", b1.c_str(), "", nullptr); });

    EXPECT_EQ(Patients().LinkPatients(a.c_str(), "", b2.c_str(), "", nullptr), ArchiveResult::Conflict);

    const std::string group = Text("SELECT link_group FROM patients WHERE patient_key = '" + a + "'");
    EXPECT_FALSE(group.empty());
    EXPECT_EQ(Rows("patients", "link_group = '" + group + "'"), 2);
    EXPECT_EQ(Text("SELECT link_group FROM patients WHERE patient_key = '" + b1 + "'"), group);
    EXPECT_EQ(Rows("patients", "patient_key = '" + b2 + "' AND link_group IS NULL"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM link_groups"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'link'"), 1);
    ExpectSound();
}

TEST_F(RaceTest, ACancelOfAnExamDeletedMeanwhileIsRefusedAndJournalsNothing)
{
    const std::string patient = In(m_north, "Smith");
    const std::string exam = Build().Exam(patient);
    Meanwhile([&] { return Other().exams.DeleteExam(exam.c_str(), "", "Duplicate order", false); });

    EXPECT_EQ(Arc().Exams().CancelExam(exam.c_str(), "", "Patient left"), ArchiveResult::NotFound);

    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'cancel-exam'"), 0);
    EXPECT_EQ(Rows("audit", "event_code = 13"), 0);
    ExpectSound();
}

TEST_F(RaceTest, AnExamForAPatientMergedAwayMeanwhileIsRefused)
{
    const std::string source = In(m_north, "Smith"), target = In(m_north, "Smyth");
    PatientDetailRecord survivor = Load(Other().patients, target);
    Meanwhile([&] { return Other().patients.MergePatients(source.c_str(), &survivor, "Duplicate", {}); });
    ExamDataSet exam;
    exam.SetPatientKey(source.c_str());
    exam.SetAccessionNumber("ACC-RACE");
    ACE_CString key;

    EXPECT_EQ(Arc().Exams().CreateExam(&exam, key), ArchiveResult::MergedAway);

    EXPECT_EQ(Rows("exams", "accession = 'ACC-RACE'"), 0);
    ExpectSound();
}

TEST_F(RaceTest, AnUnlinkOfARecordMergedAwayMeanwhileIsRefused)
{
    const std::string source = In(m_north, "Smith"), target = In(m_north, "Smyth"), south = In(m_south, "Smith");
    Build().LinkGroup(source, south);
    PatientDetailRecord survivor = Load(Other().patients, target);
    Meanwhile([&] { return Other().patients.MergePatients(source.c_str(), &survivor, "Duplicate", {}); });

    EXPECT_EQ(Patients().UnLinkPatient(source.c_str(), ""), ArchiveResult::MergedAway);

    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'unlink'"), 0);
    ExpectSound();
}

TEST_F(RaceTest, TwoWorkstationsTakingAnMrnGetTwoNumbers)
{
    ACE_CString theirs, ours;
    Meanwhile([&] { return Other().patients.GetAutogeneratedMRN("NORTH", theirs); });

    ASSERT_EQ(Patients().GetAutogeneratedMRN("NORTH", ours), 0);

    EXPECT_STRNE(ours.c_str(), theirs.c_str());
    EXPECT_EQ(Count("SELECT mrn_counter FROM organizations WHERE org_id = 'NORTH'"), 2);
}

TEST_F(RaceTest, AnArchiveHeldByAnotherWorkstationIsWaitedFor)
{
    const std::string patient = In(m_north, "Smith");
    PatientDetailRecord edited = Load(Patients(), patient);
    edited.SetFirstName("Waited");
    ArchiveDb holder(Path());
    auto hold = std::make_unique<WriteTransaction>(holder);
    std::thread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        hold->Commit();
    });

    const int rc = Patients().ModifyPatient(&edited);
    release.join();

    EXPECT_EQ(rc, 0);
    EXPECT_EQ(Rows("patients", "first_name = 'Waited'"), 1);
}

TEST_F(RaceTest, AnArchiveThatStaysBusyIsAReadableServerException)
{
    const std::string patient = In(m_north, "Smith");
    PatientDetailRecord edited = Load(Patients(), patient);
    edited.SetFirstName("Never");
    ArchiveDb holder(Path());
    WriteTransaction hold(holder);
    Db().SetBusyTimeout(50);
    LogCapture log;
    const auto before = TakeSnapshot(holder);
    try {
        Patients().ModifyPatient(&edited);
        FAIL() << "a busy archive was not reported";
    } catch (const Framework::Server& e) {
        EXPECT_STREQ(e.what(), "The archive is busy: another workstation is saving. Try again.");
        EXPECT_EQ(e.GetCode(), ArchiveFaultText::BusyCode);
    }
    // The database's own words go to the log only.
    EXPECT_TRUE(Logged(log, "database is locked"));
    hold.Commit();
    Db().SetBusyTimeout(10000);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(RaceTest, ABrokenRuleTheChecksMissedIsARefusalWithoutDatabaseText)
{
    LogCapture log;
    const int rc = GuardDb("writing an orphan exam", [&] {
        WriteTransaction tx(Db());
        Db().Handle().exec("INSERT INTO exams(exam_key, patient_key, org_key, accession) "
                           "VALUES ('E1', 'NOBODY', '" + m_north + "', 'A1')");
        tx.Commit();
        return 0;
    });
    EXPECT_EQ(rc, ArchiveResult::Conflict);
    EXPECT_EQ(Count("SELECT count(*) FROM exams"), 0);
    EXPECT_TRUE(Logged(log, "FOREIGN KEY constraint failed"));
}

TEST_F(RaceTest, AnyOtherDatabaseFaultIsAReadableServerException)
{
    try {
        GuardDb("reading a missing table", [&] {
            Db().Handle().exec("SELECT * FROM no_such_table");
            return std::string();
        });
        FAIL() << "no exception";
    } catch (const Framework::Server& e) {
        EXPECT_STREQ(e.what(), "The archive could not complete the operation. The details are in the log.");
    }
}

} // namespace
