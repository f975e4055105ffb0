#include "reasonfixture.h"

#include "boundary/detachstudyparamdlgcreator.h"

#include "faultyservices.h"
#include "logcapture.h"

#include "modulestate.h"

namespace {

const char* const kDetachQuestion = "Are you sure you want to detach this study? You cannot undo this operation.";
const char* const kAnnotationQuestion =
    "Previous user actions (annotations, KIN etc.) performed on these images will be lost. Do you want to continue?";
const char* const kEmpty = "Reason cannot be empty.";

class DetachStudyTest : public ReasonTest
{
protected:
    void SetUp() override
    {
        ReasonTest::SetUp();
        m_dictionaries.SetDetach({"Wrong exam", "Attached twice", "Belongs to another patient"});
    }

    TavCreator::DetachStudyParamDlgCreator creator;
};

TEST_F(DetachStudyTest, ShowsCaptionHeaderButtonsAndTheReasonsInDictionaryOrder)
{
    ScriptedUser user;
    user.OnNextDialog(
        [](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_EQ(CString("Detach Study"), f.Caption());
            EXPECT_EQ(CString("Detach the selected study from its exam"), f.FirstHeaderText());
            EXPECT_EQ(CString("Accession #: ACC-1001"), f.SecondHeaderText());
            EXPECT_EQ(CString("Detach"), f.OKText());
            EXPECT_EQ(CString("Cancel"), f.CancelText());
            EXPECT_EQ((std::vector<CString>{"Wrong exam", "Attached twice", "Belongs to another patient"}),
                      f.ListItems());
            EXPECT_EQ(0, f.ListSelection());
            EXPECT_EQ(CString("Wrong exam"), f.ReasonText());
            EXPECT_EQ(CString("Predefined Reason(s):"), f.PanelDriver().Text(IDC_PREDEFINED_REASONS_LABEL));
            EXPECT_FALSE(f.IsShown(IDC_DELETE_STUDIES));
            EXPECT_FALSE(f.IsShown(IDC_PERMANENT_DELETE));
            EXPECT_EQ(CString(""), f.Note());
            f.ClickOK();
        },
        "detach_study");
    user.ExpectMessage(kDetachQuestion, IDYES);

    EXPECT_EQ(IDOK, creator.DisplayModal("Detach the selected study from its exam", "ACC-1001", nullptr));
    EXPECT_STREQ("Wrong exam", creator.GetReason());
    ASSERT_EQ(1u, user.Messages().size());
    EXPECT_EQ(MB_YESNO, user.Messages()[0].type & MB_TYPEMASK);
}

TEST_F(DetachStudyTest, AsksTheAnnotationQuestionWhenThePreferenceIsSet)
{
    Preferences::Instance().SetDetachAnnotationWarning(true);
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) { ReasonForm(dlg).ClickOK(); });
    user.ExpectMessage(kAnnotationQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_EQ((std::vector<CString>{kAnnotationQuestion}), user.MessageTexts());
}

TEST_F(DetachStudyTest, TypedReasonIsReturned)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.TypeReason("Scanned under the wrong order");
        f.ClickOK();
    });
    user.ExpectMessage(kDetachQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Scanned under the wrong order", creator.GetReason());
}

TEST_F(DetachStudyTest, AnsweringNoReturnsCancelAndTheReasonThatWasShowing)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Choose(2);
        f.ClickOK();
        EXPECT_TRUE(dlg.HasEnded());
    });
    user.ExpectMessage(kDetachQuestion, IDNO);
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Belongs to another patient", creator.GetReason());
    EXPECT_EQ(1u, user.Messages().size());
}

TEST_F(DetachStudyTest, AnsweringNoKeepsTheReasonFieldNotTheUnsavedText)
{
    // No ends the dialog before any data exchange: what was typed after the
    // last choice never reaches the reason.
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.TypeReason("typed but not confirmed");
        f.ClickOK();
    });
    user.ExpectMessage(kDetachQuestion, IDNO);
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Wrong exam", creator.GetReason());
}

TEST_F(DetachStudyTest, EmptyDictionaryStartsEmptyAndRefusesAnEmptyReason)
{
    m_dictionaries.SetDetach({});
    ScriptedUser user;
    user.OnNextDialog(
        [&user](CDialog& dlg) {
            ReasonForm f(dlg);
            EXPECT_TRUE(f.ListItems().empty());
            EXPECT_EQ(-1, f.ListSelection());
            EXPECT_EQ(CString(""), f.ReasonText());
            user.ExpectMessage(kDetachQuestion, IDYES);
            user.ExpectMessage(kEmpty, IDOK);
            f.ClickOK();
            EXPECT_FALSE(dlg.HasEnded()) << "an empty reason keeps the dialog open";
            user.ExpectMessage(kDetachQuestion, IDYES);
            f.TypeReason("Duplicate study");
            f.ClickOK();
        },
        "detach_study_empty_dictionary");
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Duplicate study", creator.GetReason());
    EXPECT_EQ((std::vector<CString>{kDetachQuestion, kEmpty, kDetachQuestion}), user.MessageTexts());
}

TEST_F(DetachStudyTest, OnlySpacesAreRefused)
{
    ScriptedUser user;
    user.OnNextDialog([&user](CDialog& dlg) {
        ReasonForm f(dlg);
        f.TypeReason("    ");
        user.ExpectMessage(kDetachQuestion, IDYES);
        user.ExpectMessage(kEmpty, IDOK);
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_EQ((std::vector<CString>{kDetachQuestion, kEmpty}), user.MessageTexts());
}

TEST_F(DetachStudyTest, LineBreaksAndTabsAloneAreRefusedToo)
{
    ScriptedUser user;
    user.OnNextDialog([&user](CDialog& dlg) {
        ReasonForm f(dlg);
        f.TypeReason(" \n \n");
        user.ExpectMessage(kDetachQuestion, IDYES);
        user.ExpectMessage(kEmpty, IDOK);
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "A1", nullptr));
}

TEST_F(DetachStudyTest, SurroundingSpacesAreAcceptedAndKept)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.TypeReason("  wrong exam  ");
        f.ClickOK();
    });
    user.ExpectMessage(kDetachQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("  wrong exam  ", creator.GetReason());
}

TEST_F(DetachStudyTest, ChoosingAnotherReasonAfterTypingDiscardsTheTypedText)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.AppendReason(" - see ticket 42");
        EXPECT_EQ(CString("Wrong exam - see ticket 42"), f.ReasonText());
        f.Choose(1);
        EXPECT_EQ(CString("Attached twice"), f.ReasonText());
        f.ClickOK();
    });
    user.ExpectMessage(kDetachQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Attached twice", creator.GetReason());
}

TEST_F(DetachStudyTest, EditingAChosenReasonReturnsTheEditedText)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Choose(1);
        f.AppendReason(" (series 3)");
        f.ClickOK();
    });
    user.ExpectMessage(kDetachQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Attached twice (series 3)", creator.GetReason());
}

TEST_F(DetachStudyTest, FooterCancelReturnsCancelWithoutAsking)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Choose(1);
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_STREQ("Attached twice", creator.GetReason());
}

TEST_F(DetachStudyTest, WithoutADictionaryServiceTheListIsEmpty)
{
    ScopedServices none;
    none.Dictionaries(nullptr);
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        EXPECT_TRUE(f.ListItems().empty());
        f.TypeReason("Manual reason");
        f.ClickOK();
    });
    user.ExpectMessage(kDetachQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Manual reason", creator.GetReason());
}

TEST_F(DetachStudyTest, NullTextsShowAsEmpty)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        EXPECT_EQ(CString(""), f.FirstHeaderText());
        EXPECT_EQ(CString("Accession #: "), f.SecondHeaderText());
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal(nullptr, nullptr, nullptr));
}

TEST_F(DetachStudyTest, RunsWithTheModuleResourcesAndRestoresTheCallers)
{
    ModuleState caller("caller");
    ModuleResourceScope callerScope(caller);
    ScriptedUser user;
    const ModuleState* during = nullptr;
    user.OnNextDialog([&during](CDialog& dlg) {
        during = &CurrentModuleState();
        ReasonForm(dlg).ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_EQ(&BravikModuleState(), during);
    EXPECT_EQ(&caller, &CurrentModuleState());
}

TEST_F(DetachStudyTest, AFailingDictionaryCancelsLogsAndRestoresTheResources)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("GetDetachStudyReasonDictionary", "archive offline");
    LogCapture log;
    ScriptedUser user;
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
    EXPECT_TRUE(user.Dialogs().empty() || user.Dialogs().back().result == IDCANCEL);
    EXPECT_TRUE(user.Messages().empty());
    bool logged = false;
    for (const LogLine& line : log.Lines(LM_DEBUG))
        logged = logged || (line.text.rfind("Function: DetachStudyParamDlgCreator::DisplayModal, Line: ", 0) == 0
                            && line.text.find("archive offline") != std::string::npos
                            && line.text.back() == '\n');
    EXPECT_TRUE(logged);
    EXPECT_STREQ("", creator.GetReason());
}

TEST_F(DetachStudyTest, ACreatorCanRunAgainAndKeepsTheLastReason)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) { ReasonForm(dlg).ClickOK(); });
    user.ExpectMessage(kDetachQuestion, IDYES);
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        f.Choose(2);
        f.ClickOK();
    });
    user.ExpectMessage(kDetachQuestion, IDYES);
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A1", nullptr));
    EXPECT_STREQ("Wrong exam", creator.GetReason());
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "A2", nullptr));
    EXPECT_STREQ("Belongs to another patient", creator.GetReason());
}

} // namespace
