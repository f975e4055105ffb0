// From the user's hands to the archive and back: an exam created with a
// picked code and physician, edited, taken out of its link group; refusals
// the user can act on arrive with their reason and change nothing.
#include "examfixture.h"

#include "boundary/examdlgcreator.h"
#include "exam/examdlg.h"

#include "dialogdriver.h"

#include "examservice.h"
#include "providerrecord.h"
#include "serviceregistry.h"
#include "session.h"

namespace {

class ExamArchiveTest : public ExamFixture
{
protected:
    TavCreator::ExamDlgCreator creator;
};

TEST_F(ExamArchiveTest, AnExamCreatedWithAPickedCodeAndPhysicianIsInTheArchive)
{
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("E2E-1");
        form.TypeInPicker(IDC_EXAM_CODE, "MR");
        user->OnNextDialog(ChooseInPicker("MRK"));
        form.Pick(IDC_EXAM_CODE);
        form.Tab(IDS_TAB_PROVIDERS);
        form.TypeInPicker(IDC_PROVIDER_PICKER, "House");
        user->OnNextDialog(ChooseInPicker("House"));
        form.Pick(IDC_PROVIDER_PICKER);
        form.Tab(IDS_TAB_HISTORY);
        form.TypeText(IDC_HISTORY_SIGNS, "knee pain");
        form.ClickOK();
    });
    ASSERT_EQ(creator.DisplayExamDlg(m_patient.c_str(), "", nullptr), IDOK);
    const std::string key = creator.GetExamDataSet()->GetKey().c_str();
    EXPECT_EQ(Text("SELECT accession || '/' || exam_code || '/' || modality || '/' || description || '/' || "
                   "signs_symptoms || '/' || patient_key FROM exams WHERE exam_key = '" + key + "'"),
              "E2E-1/MRKNEE/CT/MR KNEE/knee pain/" + m_patient);
    EXPECT_EQ(Text("SELECT provider_id || '/' || provider_type FROM exam_providers WHERE exam_key = '" + key + "'"),
              "PRV1/4");
}

TEST_F(ExamArchiveTest, AnEditedExamIsSavedAndItsOpeningAudited)
{
    const std::string exam = SavedExam("ACC1");
    user->OnNextDialog([](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("ACC1-B");
        form.ChoosePriority("A-ASAP");
        form.ClickOK();
    });
    ASSERT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDOK);
    const ExamDataSet saved = Stored(exam);
    EXPECT_STREQ(saved.GetAccessionNumber().c_str(), "ACC1-B");
    EXPECT_STREQ(saved.GetPriorityCode().c_str(), "A");
    EXPECT_STREQ(creator.GetExamDataSet()->GetAccessionNumber().c_str(), "ACC1-B");
    EXPECT_EQ(Count("SELECT count(*) FROM audit WHERE event_code = 50 AND record_key = '" + exam + "'"), 1);
}

TEST_F(ExamArchiveTest, AnExamTakenOutOfItsLinkGroupIsSavedAsItNowStands)
{
    const std::string a = SavedExam("ACC1"), b = SavedExam("ACC2");
    LinkExams(a, b);
    user->ExpectMessage("Are you sure you want to remove the current link for the exam? ACC1", IDYES);
    user->OnNextDialog([](CDialog& dlg) {
        ExamForm form(dlg);
        form.RemoveFromLink();
        form.ClickOK();
    });
    ASSERT_EQ(creator.DisplayExamDlg(a.c_str(), nullptr), IDOK);
    EXPECT_EQ(Count("SELECT count(*) FROM exams WHERE link_group IS NOT NULL"), 0);
    EXPECT_STREQ(creator.GetExamDataSet()->GetLinkedFlag().c_str(), "false");
}

TEST_F(ExamArchiveTest, ADuplicateAccessionNumberIsRefusedWithAReadableReasonAndNothingChanges)
{
    SavedExam("TAKEN");
    const auto before = Snapshot();
    user->ExpectMessage("Error creating exam with Accession Number TAKEN.  Reason: The accession number TAKEN is "
                        "already used by another exam of organization NORTH.");
    bool ended = true;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("TAKEN");
        form.TypeInPicker(IDC_EXAM_CODE, "CTHEAD");
        form.EnterInPicker(IDC_EXAM_CODE);
        form.ClickOK();
        ended = dlg.GetModalResult() != -1;
        form.Cancel();
    });
    EXPECT_EQ(creator.DisplayExamDlg(m_patient.c_str(), "", nullptr), IDCANCEL);
    EXPECT_FALSE(ended);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(ExamArchiveTest, AnExamChangedOnAnotherWorkstationMeanwhileIsNotOverwritten)
{
    const std::string exam = SavedExam("ACC1");
    user->ExpectMessage("Error updating exam with Accession Number ACC1.  Reason: The exam was changed on another "
                        "workstation since it was opened. Close it and open it again to see the changes.");
    user->OnNextDialog([&](CDialog& dlg) {
        // Another workstation saves while this dialog is open.
        ExamDataSet other = Stored(exam);
        other.SetComments("saved elsewhere");
        ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&other), 0);
        ExamForm form(dlg);
        form.Tab(IDS_TAB_HISTORY);
        form.TypeText(IDC_HISTORY_COMMENTS, "saved here");
        form.ClickOK();
        form.Cancel();
    });
    EXPECT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDCANCEL);
    EXPECT_STREQ(Stored(exam).GetComments().c_str(), "saved elsewhere");
}

TEST_F(ExamArchiveTest, AUserWithoutTheRightIsToldWhy)
{
    Build().User("viewer");
    Build().Grant("viewer", m_north, false, false, false);
    Arc().Uninstall();
    ASSERT_TRUE(Arc().InstallIntoSession("viewer"));
    const auto before = Snapshot();
    user->ExpectMessage("Error creating exam with Accession Number V1.  Reason: You do not have the right to create "
                        "or edit exams in organization NORTH.");
    user->OnNextDialog([](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("V1");
        form.TypeInPicker(IDC_EXAM_CODE, "CTHEAD");
        form.EnterInPicker(IDC_EXAM_CODE);
        form.ClickOK();
        form.Cancel();
    });
    EXPECT_EQ(creator.DisplayExamDlg(m_patient.c_str(), "", nullptr), IDCANCEL);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

} // namespace
