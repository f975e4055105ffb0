#include "messagebox.h"
#include "modulestate.h"
#include "scripteduser.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <QCoreApplication>

namespace {

class RecordingPresenter : public MessagePresenter
{
public:
    int Show(CWnd* owner, const CString& text, const CString& caption, UINT type) override
    {
        m_owner = owner;
        m_text = text;
        m_caption = caption;
        m_type = type;
        return IDRETRY;
    }
    CWnd* m_owner = nullptr;
    CString m_text;
    CString m_caption;
    UINT m_type = 0;
};

} // namespace

TEST(MessageBox, YesNoAnswersAreReturnedAndRecorded)
{
    ScriptedUser user;
    user.ExpectMessage("Are you sure you want to delete this exam? You cannot undo this operation.", IDYES);
    user.AnswerNextMessage(IDNO);
    EXPECT_EQ(IDYES, AfxMessageBox("Are you sure you want to delete this exam? You cannot undo this operation.",
                                   MB_YESNO));
    EXPECT_EQ(IDNO, AfxMessageBox("Second?", MB_YESNO | MB_ICONQUESTION));
    ASSERT_EQ(2u, user.Messages().size());
    EXPECT_STREQ("Are you sure you want to delete this exam? You cannot undo this operation.",
                 user.Messages()[0].text);
    EXPECT_EQ(MB_YESNO, user.Messages()[0].type);
    EXPECT_EQ(IDYES, user.Messages()[0].answer);
    EXPECT_STREQ("Second?", user.Messages()[1].text);
    EXPECT_EQ(MB_YESNO | MB_ICONQUESTION, user.Messages()[1].type);
    EXPECT_EQ(IDNO, user.Messages()[1].answer);
    EXPECT_EQ((std::vector<CString>{"Are you sure you want to delete this exam? You cannot undo this operation.",
                                    "Second?"}),
              user.MessageTexts());
}

TEST(MessageBox, MessageBoxCarriesOwnerAndCaption)
{
    ScriptedUser user;
    user.ExpectMessage(IDOK);
    user.ExpectMessage(IDOK);
    QWidget owner;
    EXPECT_EQ(IDOK, MessageBox(&owner, "Reason cannot be empty.", "Detach Study", MB_OK | MB_ICONSTOP));
    EXPECT_EQ(IDOK, MessageBox(&owner, "No caption"));
    ASSERT_EQ(2u, user.Messages().size());
    EXPECT_EQ(&owner, user.Messages()[0].owner);
    EXPECT_STREQ("Detach Study", user.Messages()[0].caption);
    EXPECT_EQ(MB_OK | MB_ICONSTOP, user.Messages()[0].type);
    EXPECT_STREQ("Error", user.Messages()[1].caption); // as Windows titles a box without caption
}

TEST(MessageBox, AfxMessageBoxTakesTheModuleCaptionAndStrings)
{
    ModuleState module("caption-test", "CaptionTest", "Patient Management");
    module.Strings().Add(12, "Reason cannot be empty.");
    ScriptedUser user;
    user.ExpectMessage(IDOK);
    user.ExpectMessage(IDOK);
    {
        ModuleResourceScope scope(module);
        AfxMessageBox(12u, MB_ICONSTOP);
    }
    AfxMessageBox("host box");
    ASSERT_EQ(2u, user.Messages().size());
    EXPECT_STREQ("Reason cannot be empty.", user.Messages()[0].text);
    EXPECT_STREQ("Patient Management", user.Messages()[0].caption);
    EXPECT_EQ(MB_ICONSTOP, user.Messages()[0].type);
    EXPECT_EQ(QCoreApplication::applicationName().toStdString(), user.Messages()[1].caption.str());
}

TEST(MessageBox, PresenterReplacementReturnsThePrevious)
{
    RecordingPresenter mine;
    MessagePresenter* previous = SetMessagePresenter(&mine);
    EXPECT_EQ(&mine, &CurrentMessagePresenter());
    EXPECT_EQ(IDRETRY, AfxMessageBox("through mine", MB_RETRYCANCEL));
    EXPECT_STREQ("through mine", mine.m_text);
    EXPECT_EQ(MB_RETRYCANCEL, mine.m_type);
    EXPECT_EQ(&mine, SetMessagePresenter(previous));
    EXPECT_EQ(previous, &CurrentMessagePresenter());
}

TEST(MessageBox, AnUnscriptedBoxFailsTheTestAndAnswersCancel)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            EXPECT_EQ(IDCANCEL, AfxMessageBox("Nobody expects this", MB_YESNO));
            ASSERT_EQ(1u, user.Messages().size());
            EXPECT_STREQ("Nobody expects this", user.Messages()[0].text);
        },
        "A message box nobody scripted was shown: \"Nobody expects this\"");
}

TEST(MessageBox, ADifferentTextThanExpectedFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            user.ExpectMessage("Reason cannot be empty.", IDOK);
            AfxMessageBox("Reason cannot be empty");
        },
        "Message box text differs");
}

TEST(MessageBox, AnAnswerTheBoxDoesNotOfferFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            user.ExpectMessage(IDYES);
            AfxMessageBox("Only OK here", MB_OK);
        },
        "is not a button of the box");
}

TEST(MessageBox, AnExpectedBoxNeverShownFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            user.ExpectMessage("Never shown", IDOK);
        },
        "An expected message box was never shown: \"Never shown\"");
}

TEST(MessageBox, NestedUsersRestoreTheOuterOne)
{
    ScriptedUser outer;
    {
        ScriptedUser inner;
        inner.ExpectMessage(IDOK);
        AfxMessageBox("inner");
        EXPECT_EQ(1u, inner.Messages().size());
    }
    outer.ExpectMessage(IDOK);
    AfxMessageBox("outer");
    ASSERT_EQ(1u, outer.Messages().size());
    EXPECT_STREQ("outer", outer.Messages()[0].text);
}
