#include "cedit.h"
#include "qtconvert.h"
#include "uiinput.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>

TEST(QtConvert, Utf8RoundTripIsLossless)
{
    const CString texts[] = {"", "plain", "Zoë Ñúñez", "東京 大阪", "🙂🚑👩‍⚕️", "a\nb"};
    for (const CString& t : texts) {
        EXPECT_EQ(t, fromQString(toQString(t)));
    }
    EXPECT_EQ(QStringLiteral("é"), toQString(CString("\xC3\xA9")));
    EXPECT_EQ(2, fromQString(QStringLiteral("é")).GetLength());
    EXPECT_EQ(3, CodePointCount(QStringLiteral("a🙂é")));
}

TEST(CEdit, Utf8RoundTripThroughSingleAndMultiLineEdits)
{
    const CString texts[] = {"Zoë Ñúñez", "東京 大阪", "🙂 🚑", "Ärger über Ωmega"};
    CEdit line;
    CEdit multi(nullptr, true);
    for (const CString& t : texts) {
        line.SetWindowText(t);
        EXPECT_EQ(t, line.GetWindowText());
        multi.SetWindowText(t + "\nline two");
        EXPECT_EQ(t + "\nline two", multi.GetWindowText());
    }
    multi.SetWindowText("a\r\nb");
    EXPECT_STREQ("a\nb", multi.GetWindowText());
}

TEST(CEdit, TypingNonLatinTextArrivesIntact)
{
    CEdit line;
    CEdit multi(nullptr, true);
    multi.SetWantReturn(true);
    line.show();
    multi.show();
    ASSERT_TRUE(TypeText(&line, QStringLiteral("Zoë 東京 🙂")));
    EXPECT_STREQ("Zoë 東京 🙂", line.GetWindowText());
    ASSERT_TRUE(TypeText(&multi, QStringLiteral("Zoë\n東京 🙂")));
    EXPECT_STREQ("Zoë\n東京 🙂", multi.GetWindowText());
}

TEST(CEdit, ChangedFiresForProgramAndUserEditedOnlyForTheUser)
{
    CEdit line;
    line.show();
    QSignalSpy changed(&line, &CEdit::changed);
    QSignalSpy edited(&line, &CEdit::edited);
    line.SetWindowText("abc");
    EXPECT_EQ(1, changed.count());
    EXPECT_EQ(0, edited.count());
    TypeText(&line, QStringLiteral("d"));
    EXPECT_EQ(2, changed.count());
    EXPECT_EQ(1, edited.count());

    CEdit multi(nullptr, true);
    multi.show();
    QSignalSpy mChanged(&multi, &CEdit::changed);
    QSignalSpy mEdited(&multi, &CEdit::edited);
    multi.SetWindowText("x");
    EXPECT_EQ(1, mChanged.count());
    EXPECT_EQ(0, mEdited.count());
    TypeText(&multi, QStringLiteral("y"));
    EXPECT_EQ(2, mChanged.count());
    EXPECT_EQ(1, mEdited.count());
}

TEST(CEdit, LimitTextStopsTypingButNotSetWindowText)
{
    CEdit line;
    line.show();
    line.SetLimitText(3);
    TypeText(&line, QStringLiteral("ab🙂cd"));
    EXPECT_STREQ("ab🙂", line.GetWindowText()); // three characters, the emoji counting as one
    line.SetWindowText("longer than three");
    EXPECT_STREQ("longer than three", line.GetWindowText());

    CEdit multi(nullptr, true);
    multi.show();
    multi.SetLimitText(4);
    TypeText(&multi, QStringLiteral("東京大阪府"));
    EXPECT_STREQ("東京大阪", multi.GetWindowText());
}

TEST(CEdit, UpperCaseAndNumberStylesFilterTyping)
{
    CEdit upper;
    upper.ApplyStyle(ES_UPPERCASE | WS_BORDER);
    upper.show();
    TypeText(&upper, QStringLiteral("müller"));
    EXPECT_STREQ("MÜLLER", upper.GetWindowText());

    CEdit number;
    number.ApplyStyle(ES_NUMBER);
    number.show();
    TypeText(&number, QStringLiteral("1a2b3"));
    EXPECT_STREQ("123", number.GetWindowText());

    CEdit password;
    password.ApplyStyle(ES_PASSWORD);
    EXPECT_EQ(QLineEdit::Password, password.lineEdit()->echoMode());
}

TEST(CEdit, ReadOnlyRefusesTyping)
{
    CEdit line;
    line.show();
    line.SetWindowText("fixed");
    line.SetReadOnly(TRUE);
    EXPECT_TRUE(line.IsReadOnly());
    TypeText(&line, QStringLiteral("x"));
    EXPECT_STREQ("fixed", line.GetWindowText());
}

TEST(CEdit, SetSelZeroMinusOneSelectsAll)
{
    CEdit line;
    line.SetWindowText("Zoë 東京");
    line.SetSel(0, -1);
    int s = -1;
    int e = -1;
    line.GetSel(s, e);
    EXPECT_EQ(0, s);
    EXPECT_EQ(6, e);
    EXPECT_EQ(QStringLiteral("Zoë 東京"), line.lineEdit()->selectedText());
    line.ReplaceSel("new");
    EXPECT_STREQ("new", line.GetWindowText());

    CEdit multi(nullptr, true);
    multi.SetWindowText("one\ntwo");
    multi.SetSel(0, -1);
    multi.GetSel(s, e);
    EXPECT_EQ(0, s);
    EXPECT_EQ(7, e);
}

TEST(CEdit, WindowOperations)
{
    QWidget parent;
    auto* edit = new CEdit(&parent);
    parent.show();
    EXPECT_TRUE(edit->IsWindowVisible());
    EXPECT_TRUE(edit->ShowWindow(SW_HIDE)); // was visible
    EXPECT_FALSE(edit->IsWindowVisible());
    EXPECT_FALSE(edit->ShowWindow(SW_SHOW));
    EXPECT_TRUE(edit->IsWindowVisible());
    EXPECT_FALSE(edit->EnableWindow(FALSE)); // was enabled
    EXPECT_FALSE(edit->IsWindowEnabled());
    EXPECT_TRUE(edit->EnableWindow(TRUE));
    EXPECT_TRUE(edit->IsWindowEnabled());
}
