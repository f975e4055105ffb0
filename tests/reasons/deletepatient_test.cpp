#include "reasonfixture.h"

#include "boundary/patientdeleteparamdlgcreator.h"

namespace {

const char* const kPlainQuestion = "Are you sure you want to delete this patient? You cannot undo this operation.";
// Verbatim, with no blank after "archive." and a blank after the line break.
const char* const kPermanentQuestion =
    "Deletion of this patient will result in the permanent removal of all exams, studies and associated patient "
    "records within the Radiology archive.You cannot undo this operation.\n Are you sure you want to delete this "
    "patient?";
const char* const kEmpty = "Reason cannot be empty.";

class DeletePatientTest : public ReasonTest
{
protected:
    void SetUp() override
    {
        ReasonTest::SetUp();
        m_dictionaries.SetDeletePatient({"Test patient", "Duplicate registration"});
    }

    TavCreator::PatientDeleteParamDlgCreator creator;
};

TEST_F(DeletePatientTest, WithoutPermanentDeleteShowsThePlainDialogAndQuestion)
{
    ScriptedUser user;
    user.OnNextDialog(
        [](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_EQ(CString("Delete Patient"), f.Caption());
            EXPECT_EQ(CString("Delete the selected patient"), f.FirstHeaderText());
            EXPECT_EQ(CString("MRN: M-0042"), f.SecondHeaderText());
            EXPECT_EQ(CString("Delete"), f.OKText());
            EXPECT_EQ(CString("Cancel"), f.CancelText());
            EXPECT_EQ((std::vector<CString>{"Test patient", "Duplicate registration"}), f.ListItems());
            EXPECT_EQ(CString("Test patient"), f.ReasonText());
            EXPECT_FALSE(f.IsShown(IDC_DELETE_STUDIES));
            EXPECT_FALSE(f.IsShown(IDC_PERMANENT_DELETE));
            f.ClickOK();
        },
        "delete_patient");
    user.ExpectMessage(kPlainQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete the selected patient", "M-0042", false, nullptr));
    EXPECT_STREQ("Test patient", creator.GetReason());
    EXPECT_EQ(0, creator.GetPermanentDelete());
    ASSERT_EQ(1u, user.Messages().size());
    EXPECT_EQ(MB_YESNO, user.Messages()[0].type & MB_TYPEMASK);
}

TEST_F(DeletePatientTest, PermanentDeleteTickedAsksTheLongWarningAndRefusesABlankReason)
{
    ScriptedUser user;
    user.OnNextDialog(
        [&user](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_TRUE(f.IsShown(IDC_PERMANENT_DELETE));
            EXPECT_EQ(CString("Permanent Delete"), f.PanelDriver().Text(IDC_PERMANENT_DELETE));
            EXPECT_FALSE(f.IsChecked(IDC_PERMANENT_DELETE));
            EXPECT_FALSE(f.IsShown(IDC_DELETE_STUDIES));
            f.Check(IDC_PERMANENT_DELETE);
            f.TypeReason("");
            user.ExpectMessage(kPermanentQuestion, IDYES);
            user.ExpectMessage(kEmpty, IDOK);
            f.ClickOK();
            EXPECT_FALSE(dlg.HasEnded());
            f.TypeReason("Registered by mistake");
            user.ExpectMessage(kPermanentQuestion, IDYES);
            f.ClickOK();
        },
        "delete_patient_permanent");
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete", "M1", true, nullptr));
    EXPECT_EQ((std::vector<CString>{kPermanentQuestion, kEmpty, kPermanentQuestion}), user.MessageTexts());
    EXPECT_STREQ("Registered by mistake", creator.GetReason());
    EXPECT_EQ(1, creator.GetPermanentDelete());
}

TEST_F(DeletePatientTest, PermanentDeleteAllowedButNotTickedAsksThePlainQuestion)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) { ReasonForm(dlg).ClickOK(); });
    user.ExpectMessage(kPlainQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete", "M1", true, nullptr));
    EXPECT_EQ(0, creator.GetPermanentDelete());
}

TEST_F(DeletePatientTest, AnsweringNoReturnsCancelNoPermanentDeleteAndTheTypedReason)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Check(IDC_PERMANENT_DELETE);
        f.TypeReason("Typed before changing my mind");
        f.ClickOK();
        EXPECT_TRUE(dlg.HasEnded());
    });
    user.ExpectMessage(kPermanentQuestion, IDNO);
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Delete", "M1", true, nullptr));
    EXPECT_EQ(0, creator.GetPermanentDelete());
    EXPECT_STREQ("Typed before changing my mind", creator.GetReason());
}

TEST_F(DeletePatientTest, FooterCancelReturnsCancelAndNoPermanentDeleteEvenWhenTicked)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Choose(1);
        f.Check(IDC_PERMANENT_DELETE);
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Delete", "M1", true, nullptr));
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_EQ(0, creator.GetPermanentDelete());
    EXPECT_STREQ("Duplicate registration", creator.GetReason());
}

TEST_F(DeletePatientTest, ACancelledRunAfterAConfirmedOneResetsPermanentDelete)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Check(IDC_PERMANENT_DELETE);
        f.ClickOK();
    });
    user.ExpectMessage(kPermanentQuestion, IDYES);
    ASSERT_EQ(IDOK, creator.DisplayModal("Delete", "M1", true, nullptr));
    ASSERT_EQ(1, creator.GetPermanentDelete());
    user.OnNextDialog([](CDialog& dlg) { ReasonForm(dlg).ClickCancel(); });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Delete", "M1", true, nullptr));
    EXPECT_EQ(0, creator.GetPermanentDelete());
}

TEST_F(DeletePatientTest, SpacePaddedReasonIsKept)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.TypeReason(" duplicate ");
        f.ClickOK();
    });
    user.ExpectMessage(kPlainQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete", "M1", false, nullptr));
    EXPECT_STREQ(" duplicate ", creator.GetReason());
}

} // namespace
