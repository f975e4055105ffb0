// Exams and studies: create, read, update, accession numbers, links, and the
// delete, cancel and detach operations that keep their reason.
#include <archivefixture.h>

#include <archiveerror.h>
#include <sqliteexamservice.h>

#include <examdataset.h>
#include <providerrecord.h>
#include <server.h>
#include <studyrecord.h>

namespace {

class ExamServiceTest : public ArchiveFixture
{
protected:
    SqliteExamService& Svc() { return Arc().Exams(); }
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        m_patient = NorthPatient("Smith", "Ann");
    }
    ExamDataSet NewExam(const std::string& acc = "A0001")
    {
        ExamDataSet e;
        e.SetPatientKey(m_patient.c_str());
        e.SetOrganizationKey(m_north.c_str());
        e.SetAccessionNumber(acc.c_str());
        e.SetPriorityCode("S");
        e.SetStatusCode("SC");
        e.SetScheduledDT(BDateTime(BDate(2024, 3, 4), BTime(9, 30, 0)));
        e.SetExamCode("CTHEAD");
        e.SetExamCodeKey("ECD-1");
        e.SetModality("CT");
        e.SetBodyPart("HEAD");
        e.SetDescription("CT HEAD WITHOUT CONTRAST");
        e.SetPerformingResourceKey("RES-1");
        e.SetPerformingResourceId("CT1");
        e.SetOrderingLocationKey("LOC-1");
        e.SetOrderingLocationId("ER");
        e.SetSignsAndSymptoms("headache");
        e.SetHistory("fall");
        e.SetComments("urgent read");
        ProviderRecord doctor;
        doctor.SetKey("PRV-9");
        doctor.SetProviderID("PRV0009");
        doctor.SetProviderType(ProviderRecord::eREFERRING);
        doctor.SetName(BPersonName("House", "Gregory", "", "Dr."));
        e.AddProvider(doctor);
        ExamCodeModifierDataSet left;
        left.SetKey("MOD-1");
        left.SetCode("LT");
        left.SetDescription("Left");
        e.GetExamCodeModifiers().push_back(left);
        return e;
    }
    std::string m_patient;
};

TEST_F(ExamServiceTest, CreateThenReadReturnsEveryField)
{
    ExamDataSet e = NewExam();
    ACE_CString key;
    ASSERT_EQ(Svc().CreateExam(&e, key), 0);
    ExamDataSet back;
    ASSERT_EQ(Svc().GetExamDataSet(key, &back), 0);
    EXPECT_EQ(back.GetKey(), key);
    EXPECT_STREQ(back.GetPatientKey().c_str(), m_patient.c_str());
    EXPECT_STREQ(back.GetOrganizationKey().c_str(), m_north.c_str());
    EXPECT_STREQ(back.GetAccessionNumber().c_str(), "A0001");
    EXPECT_STREQ(back.GetPriorityCode().c_str(), "S");
    EXPECT_STREQ(back.GetStatusCode().c_str(), "SC");
    EXPECT_EQ(back.GetScheduledDT(), BDateTime(BDate(2024, 3, 4), BTime(9, 30, 0)));
    EXPECT_FALSE(back.GetPerformedDT().IsValid());
    EXPECT_STREQ(back.GetExamCode().c_str(), "CTHEAD");
    EXPECT_STREQ(back.GetExamCodeKey().c_str(), "ECD-1");
    EXPECT_STREQ(back.GetModality().c_str(), "CT");
    EXPECT_STREQ(back.GetBodyPart().c_str(), "HEAD");
    EXPECT_STREQ(back.GetDescription().c_str(), "CT HEAD WITHOUT CONTRAST");
    EXPECT_STREQ(back.GetPerformingResourceKey().c_str(), "RES-1");
    EXPECT_STREQ(back.GetPerformingResourceId().c_str(), "CT1");
    EXPECT_STREQ(back.GetOrderingLocationKey().c_str(), "LOC-1");
    EXPECT_STREQ(back.GetOrderingLocationId().c_str(), "ER");
    EXPECT_STREQ(back.GetSignsAndSymptoms().c_str(), "headache");
    EXPECT_STREQ(back.GetHistory().c_str(), "fall");
    EXPECT_STREQ(back.GetComments().c_str(), "urgent read");
    EXPECT_STREQ(back.GetLinkedFlag().c_str(), "false");
    EXPECT_FALSE(back.IsMarkedRead());
    ASSERT_EQ(back.GetProviders().size(), 1u);
    const ProviderRecord* ref = back.FindProvider(ProviderRecord::eREFERRING);
    ASSERT_NE(ref, nullptr);
    EXPECT_STREQ(ref->GetProviderID().c_str(), "PRV0009");
    EXPECT_STREQ(ref->GetName().GetLastName().c_str(), "House");
    ASSERT_EQ(back.GetExamCodeModifiers().size(), 1u);
    EXPECT_STREQ(back.GetExamCodeModifiers()[0].GetCode().c_str(), "LT");
}

TEST_F(ExamServiceTest, ANewExamTakesItsOrganizationsStatus)
{
    ArchiveBuilder::OrgFields fields{"CLINIC", "Clinic"};
    fields.newExamStatus = "AR";
    const std::string clinic = Build().Org(fields);
    Build().Grant("admin", clinic, true, false, false);
    ArchiveBuilder::PatientFields p;
    p.orgKey = clinic;
    const std::string patient = Build().Patient(p);
    ExamDataSet e = NewExam();
    e.SetPatientKey(patient.c_str());
    e.SetOrganizationKey("");
    ACE_CString key;
    ASSERT_EQ(Svc().CreateExam(&e, key), 0);
    EXPECT_EQ(Text("SELECT status_code || '/' || org_key FROM exams WHERE exam_key = '" + std::string(key.c_str()) + "'"),
              "AR/" + clinic);
}

// A refusal the user can act on arrives as the framework's server exception with a readable reason.
template <class F>
void ExpectRefusal(F&& save, const char* reason)
{
    try {
        save();
        ADD_FAILURE() << "no refusal: " << reason;
    } catch (const Framework::Server& e) {
        EXPECT_STREQ(e.what(), reason);
    }
}

TEST_F(ExamServiceTest, CreateRefusals)
{
    ExamDataSet first = NewExam();
    ACE_CString key;
    ASSERT_EQ(Svc().CreateExam(&first, key), 0);
    const auto before = Snapshot();
    ExamDataSet dup = NewExam();
    ExpectRefusal([&] { Svc().CreateExam(&dup, key); },
                  "The accession number A0001 is already used by another exam of organization NORTH.");
    ExamDataSet noAcc = NewExam("");
    EXPECT_EQ(Svc().CreateExam(&noAcc, key), ArchiveResult::InvalidArgument);
    ExamDataSet longAcc = NewExam(std::string(21, '1'));
    EXPECT_EQ(Svc().CreateExam(&longAcc, key), ArchiveResult::InvalidArgument);
    ExamDataSet ghost = NewExam("A2");
    ghost.SetPatientKey("GHOST");
    EXPECT_EQ(Svc().CreateExam(&ghost, key), ArchiveResult::NotFound);
    ExamDataSet wrongOrg = NewExam("A3");
    wrongOrg.SetOrganizationKey(m_south.c_str());
    EXPECT_EQ(Svc().CreateExam(&wrongOrg, key), ArchiveResult::InvalidArgument);
    ExamDataSet longComment = NewExam("A4");
    longComment.SetComments(std::string(2049, 'c').c_str());
    EXPECT_EQ(Svc().CreateExam(&longComment, key), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().CreateExam(nullptr, key), ArchiveResult::InvalidArgument);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(ExamServiceTest, UpdateReplacesFieldsProvidersAndModifiers)
{
    ExamDataSet e = NewExam();
    ACE_CString key;
    ASSERT_EQ(Svc().CreateExam(&e, key), 0);
    ExamDataSet back;
    ASSERT_EQ(Svc().GetExamDataSet(key, &back), 0);
    back.SetPerformedDT(BDateTime(BDate(2024, 3, 4), BTime(10, 0, 0)));
    back.SetStatusCode("CM");
    back.RemoveProviders(ProviderRecord::eREFERRING);
    back.GetExamCodeModifiers().clear();
    ASSERT_EQ(Svc().UpdateExam(&back), 0);
    ExamDataSet again;
    ASSERT_EQ(Svc().GetExamDataSet(key, &again), 0);
    EXPECT_STREQ(again.GetStatusCode().c_str(), "CM");
    EXPECT_EQ(again.GetPerformedDT(), BDateTime(BDate(2024, 3, 4), BTime(10, 0, 0)));
    EXPECT_TRUE(again.GetProviders().empty());
    EXPECT_TRUE(again.GetExamCodeModifiers().empty());
    ExamDataSet missing = again;
    missing.SetKey("GHOST");
    ExpectRefusal([&] { Svc().UpdateExam(&missing); },
                  "The exam was deleted on another workstation since it was opened.");
}

TEST_F(ExamServiceTest, ASaveFromAStaleCopyIsRefusedAndChangesNothing)
{
    ExamDataSet e = NewExam();
    ACE_CString key;
    ASSERT_EQ(Svc().CreateExam(&e, key), 0);
    ExamDataSet here, there;
    ASSERT_EQ(Svc().GetExamDataSet(key, &here), 0);
    ASSERT_EQ(Svc().GetExamDataSet(key, &there), 0);
    there.SetComments("saved elsewhere");
    ASSERT_EQ(Svc().UpdateExam(&there), 0);
    const auto before = Snapshot();
    here.SetComments("saved here");
    ExpectRefusal([&] { Svc().UpdateExam(&here); },
                  "The exam was changed on another workstation since it was opened. "
                  "Close it and open it again to see the changes.");
    EXPECT_ARCHIVE_UNCHANGED(before);
    // The workstation that saved keeps saving from its updated copy.
    there.SetComments("and again");
    EXPECT_EQ(Svc().UpdateExam(&there), 0);
}

TEST_F(ExamServiceTest, AnAccessionNumberTakenByAnotherExamIsRefusedOnUpdate)
{
    ExamDataSet a = NewExam("A1"), b = NewExam("B1");
    ACE_CString ka, kb;
    ASSERT_EQ(Svc().CreateExam(&a, ka), 0);
    ASSERT_EQ(Svc().CreateExam(&b, kb), 0);
    ExamDataSet edit;
    ASSERT_EQ(Svc().GetExamDataSet(kb, &edit), 0);
    const auto before = Snapshot();
    edit.SetAccessionNumber("A1");
    ExpectRefusal([&] { Svc().UpdateExam(&edit); },
                  "The accession number A1 is already used by another exam of organization NORTH.");
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(ExamServiceTest, AUserWithoutTheRightCannotCreateOrEditExams)
{
    ExamDataSet e = NewExam();
    ACE_CString key;
    ASSERT_EQ(Svc().CreateExam(&e, key), 0);
    ExamDataSet back;
    ASSERT_EQ(Svc().GetExamDataSet(key, &back), 0);
    Arc().SetUser("reader");
    const auto before = Snapshot();
    ExamDataSet other = NewExam("A9");
    ExpectRefusal([&] { Svc().CreateExam(&other, key); },
                  "You do not have the right to create or edit exams in organization NORTH.");
    ExpectRefusal([&] { Svc().UpdateExam(&back); },
                  "You do not have the right to create or edit exams in organization NORTH.");
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(ExamServiceTest, AutogeneratedAccessionNumbersUseThePrefixAndSkipTakenValues)
{
    ArchiveBuilder::OrgFields fields{"IMG", "Imaging"};
    fields.accPrefix = "IMG";
    const std::string org = Build().Org(fields);
    Build().Grant("admin", org, true, true, true);
    ACE_CString a, b;
    ASSERT_EQ(Svc().GetAutogeneratedACC("IMG", a), 0);
    ASSERT_EQ(Svc().GetAutogeneratedACC(org.c_str(), b), 0);
    EXPECT_STREQ(a.c_str(), "IMG00000001");
    EXPECT_STREQ(b.c_str(), "IMG00000002");
    ArchiveBuilder::OrgFields none{"NOACC", "No numbers"};
    none.generatesAcc = false;
    Build().Grant("admin", Build().Org(none), true, true, true);
    ACE_CString c;
    EXPECT_EQ(Svc().GetAutogeneratedACC("NOACC", c), ArchiveResult::Unsupported);
    EXPECT_EQ(Svc().GetAutogeneratedACC("", c), ArchiveResult::InvalidArgument);
}

TEST_F(ExamServiceTest, LinkedExams)
{
    const std::string e1 = Build().Exam(m_patient, "L1"), e2 = Build().Exam(m_patient, "L2"), e3 = Build().Exam(m_patient, "L3");
    ASSERT_EQ(Svc().LinkExams(e1.c_str(), "", e2.c_str(), ""), 0);
    ASSERT_EQ(Svc().LinkExams(e3.c_str(), "", e1.c_str(), ""), 0);
    std::vector<ExamDataSet*> linked;
    ASSERT_EQ(Svc().GetLinkedExams(e1.c_str(), m_north.c_str(), linked), 0);
    ASSERT_EQ(linked.size(), 2u);
    for (auto* e : linked) {
        EXPECT_STREQ(e->GetLinkedFlag().c_str(), "true");
        delete e;
    }
    ASSERT_EQ(Svc().UnLinkExam(e1.c_str(), ""), 0);
    linked.clear();
    ASSERT_EQ(Svc().GetLinkedExams(e2.c_str(), "", linked), 0);
    ASSERT_EQ(linked.size(), 1u);
    EXPECT_STREQ(linked[0]->GetAccessionNumber().c_str(), "L3");
    delete linked[0];
    EXPECT_EQ(Svc().UnLinkExam(e1.c_str(), ""), ArchiveResult::Conflict);
    EXPECT_EQ(Svc().LinkExams(e2.c_str(), "", e2.c_str(), ""), ArchiveResult::InvalidArgument);
    const std::string other = NorthPatient("Jones", "Al");
    const std::string foreign = Build().Exam(other, "F1");
    EXPECT_EQ(Svc().LinkExams(e2.c_str(), "", foreign.c_str(), ""), ArchiveResult::InvalidArgument);
}

TEST_F(ExamServiceTest, DeleteExamKeepsOrRemovesStudiesAndKeepsTheReason)
{
    const std::string keep = Build().Exam(m_patient, "K1");
    const std::string keptStudy = Build().Study(keep, m_patient);
    const std::string drop = Build().Exam(m_patient, "D1");
    Build().Study(drop, m_patient);
    ASSERT_EQ(Svc().DeleteExam(keep.c_str(), m_north.c_str(), "Entered in error", false), 0);
    EXPECT_EQ(Text("SELECT coalesce(exam_key, 'detached') FROM studies WHERE study_key = '" + keptStudy + "'"), "detached");
    ASSERT_EQ(Svc().DeleteExam(drop.c_str(), "", "Duplicate order", true), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM exams"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM studies"), 1);
    EXPECT_EQ(Text("SELECT group_concat(reason, '|') FROM journal"), "Entered in error|Duplicate order");
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'exams'"), 2);
    const auto before = Snapshot();
    EXPECT_EQ(Svc().DeleteExam(drop.c_str(), "", "again", true), ArchiveResult::NotFound);
    EXPECT_EQ(Svc().DeleteExam("", "", "r", true), ArchiveResult::InvalidArgument);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(ExamServiceTest, CancelExamMarksItCancelledOnce)
{
    const std::string exam = Build().Exam(m_patient, "C1");
    ASSERT_EQ(Svc().CancelExam(exam.c_str(), "", "Patient did not arrive"), 0);
    EXPECT_EQ(Text("SELECT status_code || '/' || cancelled FROM exams"), "CA/1");
    EXPECT_EQ(Text("SELECT reason FROM journal WHERE operation = 'cancel-exam'"), "Patient did not arrive");
    EXPECT_EQ(Text("SELECT json_extract(before_json, '$.status_code') FROM journal_images"), "SC");
    const auto before = Snapshot();
    EXPECT_EQ(Svc().CancelExam(exam.c_str(), "", "again"), ArchiveResult::Conflict);
    EXPECT_EQ(Svc().CancelExam(exam.c_str(), m_south.c_str(), "x"), ArchiveResult::InvalidArgument);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(ExamServiceTest, DetachStudyKeepsTheReason)
{
    const std::string exam = Build().Exam(m_patient, "S1");
    const std::string study = Build().Study(exam, m_patient);
    std::vector<StudyRecord*> studies;
    ASSERT_EQ(Svc().QueryExamStudies(exam.c_str(), studies), 0);
    ASSERT_EQ(studies.size(), 1u);
    EXPECT_STREQ(studies[0]->GetStudyKey().c_str(), study.c_str());
    delete studies[0];
    ASSERT_EQ(Svc().DetachStudy(study.c_str(), "Study attached to wrong exam"), 0);
    EXPECT_EQ(Text("SELECT coalesce(exam_key, 'none') FROM studies"), "none");
    EXPECT_EQ(Text("SELECT reason FROM journal WHERE operation = 'detach-study'"), "Study attached to wrong exam");
    const auto before = Snapshot();
    EXPECT_EQ(Svc().DetachStudy(study.c_str(), "again"), ArchiveResult::Conflict);
    EXPECT_EQ(Svc().DetachStudy("GHOST", "r"), ArchiveResult::NotFound);
    EXPECT_EQ(Svc().DetachStudy(study.c_str(), std::string(256, 'x').c_str()), ArchiveResult::InvalidArgument);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(ExamServiceTest, PatientExamsNewestFirst)
{
    ExamDataSet older = NewExam("O1");
    older.SetScheduledDT(BDateTime(BDate(2020, 1, 1), BTime(8, 0, 0)));
    ExamDataSet newer = NewExam("N1");
    newer.SetScheduledDT(BDateTime(BDate(2023, 1, 1), BTime(8, 0, 0)));
    ACE_CString k1, k2;
    ASSERT_EQ(Svc().CreateExam(&older, k1), 0);
    ASSERT_EQ(Svc().CreateExam(&newer, k2), 0);
    std::vector<ExamDataSet*> exams;
    ASSERT_EQ(Svc().QueryPatientExams(m_patient.c_str(), exams), 0);
    ASSERT_EQ(exams.size(), 2u);
    EXPECT_STREQ(exams[0]->GetAccessionNumber().c_str(), "N1");
    EXPECT_STREQ(exams[1]->GetAccessionNumber().c_str(), "O1");
    for (auto* e : exams)
        delete e;
    std::vector<ExamDataSet*> none;
    EXPECT_EQ(Svc().QueryPatientExams("", none), ArchiveResult::InvalidArgument);
}

} // namespace
