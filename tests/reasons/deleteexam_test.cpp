#include "reasonfixture.h"

#include "boundary/deleteexamparamdlgcreator.h"

namespace {

const char* const kDeleteQuestion = "Are you sure you want to delete this exam? You cannot undo this operation.";
const char* const kEmpty = "Reason cannot be empty.";

class DeleteExamTest : public ReasonTest
{
protected:
    void SetUp() override
    {
        ReasonTest::SetUp();
        m_dictionaries.SetDeleteExam({"Ordered in error", "Duplicate order"});
        m_dictionaries.SetCancelExam({"Patient refused", "Patient did not arrive"});
    }

    TavCreator::DeleteExamParamDlgCreator creator;
};

TEST_F(DeleteExamTest, ModeValuesAreFixed)
{
    EXPECT_EQ(0, TavCreator::DELETE_EXAM);
    EXPECT_EQ(1, TavCreator::CANCEL_EXAM);
}

TEST_F(DeleteExamTest, DeleteModeShowsDeleteReasonsAndAnEnabledDeleteStudiesBox)
{
    ScriptedUser user;
    user.OnNextDialog(
        [](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_EQ(CString("Delete Exam"), f.Caption());
            EXPECT_EQ(CString("Delete the selected exam"), f.FirstHeaderText());
            EXPECT_EQ(CString("Accession #: ACC-7"), f.SecondHeaderText());
            EXPECT_EQ(CString("Delete"), f.OKText());
            EXPECT_EQ(CString("Cancel"), f.CancelText());
            EXPECT_EQ(CString("Reason for Deletion"), f.Note());
            EXPECT_EQ((std::vector<CString>{"Ordered in error", "Duplicate order"}), f.ListItems());
            EXPECT_EQ(CString("Ordered in error"), f.ReasonText());
            EXPECT_TRUE(f.IsShown(IDC_DELETE_STUDIES));
            EXPECT_TRUE(f.IsEnabled(IDC_DELETE_STUDIES));
            EXPECT_EQ(CString("Delete Studies"), f.PanelDriver().Text(IDC_DELETE_STUDIES));
            EXPECT_FALSE(f.IsChecked(IDC_DELETE_STUDIES));
            EXPECT_FALSE(f.IsShown(IDC_PERMANENT_DELETE));
            f.Check(IDC_DELETE_STUDIES);
            f.Choose(1);
            f.ClickOK();
        },
        "delete_exam_studies_enabled");
    user.ExpectMessage(kDeleteQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete the selected exam", "ACC-7", TavCreator::DELETE_EXAM, true, false,
                                         nullptr));
    EXPECT_STREQ("Duplicate order", creator.GetReason());
    EXPECT_EQ(1, creator.GetDeleteStudiesFlg());
    ASSERT_EQ(1u, user.Messages().size());
    EXPECT_EQ(MB_YESNO, user.Messages()[0].type & MB_TYPEMASK);
}

TEST_F(DeleteExamTest, SecondFlagIsTheInitialStateOfTheBox)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        EXPECT_TRUE(f.IsChecked(IDC_DELETE_STUDIES));
        f.Check(IDC_DELETE_STUDIES, false);
        f.ClickOK();
    });
    user.ExpectMessage(kDeleteQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete", "A", TavCreator::DELETE_EXAM, true, true, nullptr));
    EXPECT_EQ(0, creator.GetDeleteStudiesFlg());
}

TEST_F(DeleteExamTest, StudiesNotDeletableShowsTheTickedBoxDisabledAndReturnsIt)
{
    ScriptedUser user;
    user.OnNextDialog(
        [](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_TRUE(f.IsShown(IDC_DELETE_STUDIES));
            EXPECT_FALSE(f.IsEnabled(IDC_DELETE_STUDIES));
            EXPECT_TRUE(f.IsChecked(IDC_DELETE_STUDIES));
            f.ClickOK();
        },
        "delete_exam_studies_disabled");
    user.ExpectMessage(kDeleteQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete", "A", TavCreator::DELETE_EXAM, false, true, nullptr));
    EXPECT_EQ(1, creator.GetDeleteStudiesFlg());
}

TEST_F(DeleteExamTest, StudyDeletionSwitchedOffHidesTheBoxAndReturnsTheSecondFlag)
{
    SetStudyDeletionEnabled(false);
    for (const bool second : {true, false}) {
        ScriptedUser user;
        user.OnNextDialog(
            [](CDialog& dlg) {
                ReasonForm f(dlg);
                EXPECT_FALSE(f.IsShown(IDC_DELETE_STUDIES));
                EXPECT_EQ(CString("Delete"), f.OKText());
                EXPECT_EQ(CString("Reason for Deletion"), f.Note());
                f.ClickOK();
            },
            second ? "delete_exam_studies_hidden" : nullptr);
        user.ExpectMessage(kDeleteQuestion, IDYES);
        EXPECT_EQ(IDOK, creator.DisplayModal("Delete", "A", TavCreator::DELETE_EXAM, true, second, nullptr));
        EXPECT_EQ(second ? 1 : 0, creator.GetDeleteStudiesFlg());
    }
}

TEST_F(DeleteExamTest, CancelModeShowsCancelReasonsNoBoxAndAsksNothing)
{
    ScriptedUser user;
    user.OnNextDialog(
        [](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_EQ(CString("Cancel Exam"), f.Caption());
            EXPECT_EQ(CString("OK"), f.OKText());
            EXPECT_EQ(CString("Cancel"), f.CancelText());
            EXPECT_EQ(CString("Reason for Cancellation"), f.Note());
            EXPECT_EQ((std::vector<CString>{"Patient refused", "Patient did not arrive"}), f.ListItems());
            EXPECT_FALSE(f.IsShown(IDC_DELETE_STUDIES));
            EXPECT_FALSE(f.IsShown(IDC_PERMANENT_DELETE));
            f.Choose(1);
            f.ClickOK();
        },
        "cancel_exam");
    EXPECT_EQ(IDOK, creator.DisplayModal("Cancel the exam", "A", TavCreator::CANCEL_EXAM, true, true, nullptr));
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_STREQ("Patient did not arrive", creator.GetReason());
    // The hidden box still carries the creator's own flag back.
    EXPECT_EQ(1, creator.GetDeleteStudiesFlg());
}

TEST_F(DeleteExamTest, CancelModeStillRefusesABlankReason)
{
    m_dictionaries.SetCancelExam({});
    ScriptedUser user;
    user.OnNextDialog([&user](CDialog& dlg) {
        ReasonForm f(dlg);
        user.ExpectMessage(kEmpty, IDOK);
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        f.TypeReason("No longer needed");
        f.ClickOK();
    });
    EXPECT_EQ(IDOK, creator.DisplayModal("Cancel", "A", TavCreator::CANCEL_EXAM, true, false, nullptr));
    EXPECT_STREQ("No longer needed", creator.GetReason());
    EXPECT_EQ(0, creator.GetDeleteStudiesFlg());
    EXPECT_EQ((std::vector<CString>{kEmpty}), user.MessageTexts());
}

TEST_F(DeleteExamTest, AnUnknownModeShowsNoCaptionNoReasonsTheDeleteButtonAndNoQuestion)
{
    ScriptedUser user;
    user.OnNextDialog(
        [&user](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_EQ(CString(""), f.Caption());
            EXPECT_TRUE(f.ListItems().empty());
            EXPECT_EQ(CString(""), f.ReasonText());
            EXPECT_EQ(CString("Delete"), f.OKText());
            EXPECT_EQ(CString("Reason for Deletion"), f.Note());
            EXPECT_TRUE(f.IsShown(IDC_DELETE_STUDIES));
            user.ExpectMessage(kEmpty, IDOK);
            f.ClickOK();
            EXPECT_FALSE(dlg.HasEnded());
            f.TypeReason("Other");
            f.ClickOK();
        },
        "delete_exam_unknown_mode");
    EXPECT_EQ(IDOK, creator.DisplayModal("Exam", "A", static_cast<TavCreator::eDLGCODE>(2), true, false, nullptr));
    EXPECT_EQ((std::vector<CString>{kEmpty}), user.MessageTexts());
    EXPECT_STREQ("Other", creator.GetReason());
}

TEST_F(DeleteExamTest, AnsweringNoReturnsCancelAndKeepsTheEarlierReasonAndFlag)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Check(IDC_DELETE_STUDIES);
        f.ClickOK();
    });
    user.ExpectMessage(kDeleteQuestion, IDYES);
    ASSERT_EQ(IDOK, creator.DisplayModal("Delete", "A", TavCreator::DELETE_EXAM, true, false, nullptr));
    ASSERT_STREQ("Ordered in error", creator.GetReason());
    ASSERT_EQ(1, creator.GetDeleteStudiesFlg());

    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Choose(1);
        f.Check(IDC_DELETE_STUDIES, false);
        f.ClickOK();
        EXPECT_TRUE(dlg.HasEnded()) << "No closes the dialog instead of returning to it";
    });
    user.ExpectMessage(kDeleteQuestion, IDNO);
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Delete", "B", TavCreator::DELETE_EXAM, true, false, nullptr));
    EXPECT_STREQ("Ordered in error", creator.GetReason());
    EXPECT_EQ(1, creator.GetDeleteStudiesFlg());
}

TEST_F(DeleteExamTest, BlankReasonAfterYesKeepsTheDialogOpen)
{
    ScriptedUser user;
    user.OnNextDialog([&user](CDialog& dlg) {
        ReasonForm f(dlg);
        f.TypeReason("   ");
        user.ExpectMessage(kDeleteQuestion, IDYES);
        user.ExpectMessage(kEmpty, IDOK);
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Delete", "A", TavCreator::DELETE_EXAM, true, false, nullptr));
    EXPECT_EQ((std::vector<CString>{kDeleteQuestion, kEmpty}), user.MessageTexts());
    EXPECT_STREQ("", creator.GetReason());
}

TEST_F(DeleteExamTest, FooterCancelReturnsCancelWithoutAskingAndSetsNothing)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Check(IDC_DELETE_STUDIES);
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Delete", "A", TavCreator::DELETE_EXAM, true, false, nullptr));
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_STREQ("", creator.GetReason());
    EXPECT_EQ(0, creator.GetDeleteStudiesFlg());
}

TEST_F(DeleteExamTest, ResourcesAreRestoredAfterTheRun)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) { ReasonForm(dlg).ClickCancel(); });
    creator.DisplayModal("Delete", "A", TavCreator::DELETE_EXAM, true, false, nullptr);
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
}

} // namespace
