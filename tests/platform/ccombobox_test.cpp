#include "ccombobox.h"
#include "qtconvert.h"
#include "uiinput.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>

namespace {

std::vector<std::string> items(const CComboBox& cb)
{
    std::vector<std::string> out;
    for (int i = 0; i < cb.GetCount(); ++i)
        out.push_back(cb.GetLBText(i).str());
    return out;
}

} // namespace

TEST(CComboBox, SortedAddStringInsertsInOrderAndReturnsTheIndex)
{
    CComboBox cb(nullptr, false, true);
    EXPECT_EQ(0, cb.AddString("Melbourne"));
    EXPECT_EQ(0, cb.AddString("adelaide")); // case-blind order
    EXPECT_EQ(2, cb.AddString("Sydney"));
    EXPECT_EQ(1, cb.AddString("Brisbane"));
    EXPECT_EQ((std::vector<std::string>{"adelaide", "Brisbane", "Melbourne", "Sydney"}), items(cb));
}

TEST(CComboBox, InsertStringUsesTheExplicitIndexEvenWhenSorted)
{
    CComboBox cb(nullptr, false, true);
    // Dictionary order kept despite the sorted style.
    EXPECT_EQ(0, cb.InsertString(0, "Wrong patient"));
    EXPECT_EQ(1, cb.InsertString(1, "Duplicate"));
    EXPECT_EQ(2, cb.InsertString(-1, "Artifact"));
    EXPECT_EQ(1, cb.InsertString(1, "Between"));
    EXPECT_EQ((std::vector<std::string>{"Wrong patient", "Between", "Duplicate", "Artifact"}), items(cb));
    EXPECT_EQ(CB_ERR, cb.InsertString(9, "Too far"));
    // AddString still sorts relative to what is there.
    EXPECT_EQ(0, cb.AddString("Abc"));
}

TEST(CComboBox, UnsortedAddStringAppends)
{
    CComboBox cb;
    EXPECT_EQ(0, cb.AddString("b"));
    EXPECT_EQ(1, cb.AddString("a"));
    EXPECT_EQ((std::vector<std::string>{"b", "a"}), items(cb));
}

TEST(CComboBox, FindStringExactStartsAfterStartAndWraps)
{
    CComboBox cb;
    cb.AddString("Alpha");
    cb.AddString("Beta");
    cb.AddString("alpha");
    cb.AddString("Gamma");
    EXPECT_EQ(0, cb.FindStringExact(-1, "ALPHA"));
    EXPECT_EQ(2, cb.FindStringExact(0, "alpha"));  // starts after item 0
    EXPECT_EQ(0, cb.FindStringExact(2, "alpha"));  // wraps round
    EXPECT_EQ(1, cb.FindStringExact(1, "beta"));   // and reaches start itself
    EXPECT_EQ(CB_ERR, cb.FindStringExact(-1, "Alph"));
    EXPECT_EQ(CB_ERR, cb.FindStringExact(-1, "Delta"));
}

TEST(CComboBox, FindStringExactWrapsBackToItemZero)
{
    CComboBox cb;
    cb.AddString("Only");
    cb.AddString("Other");
    EXPECT_EQ(0, cb.FindStringExact(0, "only"));
}

TEST(CComboBox, FindStringExactIgnoresCaseBeyondAscii)
{
    CComboBox cb;
    cb.AddString("Zürich");
    cb.AddString("ÉCOLE");
    cb.AddString("Ωmega");
    EXPECT_EQ(0, cb.FindStringExact(-1, "ZÜRICH"));
    EXPECT_EQ(1, cb.FindStringExact(-1, "école"));
    EXPECT_EQ(2, cb.FindStringExact(-1, "ωMEGA"));
    CComboBox empty;
    EXPECT_EQ(CB_ERR, empty.FindStringExact(-1, "x"));
}

TEST(CComboBox, FindStringMatchesPrefixes)
{
    CComboBox cb;
    cb.AddString("Referral");
    cb.AddString("Retake");
    cb.AddString("Other");
    EXPECT_EQ(0, cb.FindString(-1, "re"));
    EXPECT_EQ(1, cb.FindString(0, "RE"));
    EXPECT_EQ(0, cb.FindString(1, "re"));
    EXPECT_EQ(CB_ERR, cb.FindString(-1, "x"));
    EXPECT_EQ(2, cb.SelectString(-1, "oth"));
    EXPECT_EQ(2, cb.GetCurSel());
}

TEST(CComboBox, ItemDataPointersAndValues)
{
    int a = 1;
    int b = 2;
    CComboBox cb(nullptr, false, true);
    cb.AddString("b");
    cb.AddString("a");
    EXPECT_EQ(0, cb.SetItemDataPtr(cb.FindStringExact(-1, "a"), &a));
    EXPECT_EQ(0, cb.SetItemDataPtr(cb.FindStringExact(-1, "b"), &b));
    EXPECT_EQ(&a, cb.GetItemDataPtr(0));
    EXPECT_EQ(&b, cb.GetItemDataPtr(1));
    // Data travel with their items when others are inserted.
    cb.InsertString(0, "first");
    EXPECT_EQ(nullptr, cb.GetItemDataPtr(0));
    EXPECT_EQ(&a, cb.GetItemDataPtr(1));
    EXPECT_EQ(0, cb.SetItemData(0, 4711));
    EXPECT_EQ(4711u, cb.GetItemData(0));
    EXPECT_EQ(static_cast<DWORD_PTR>(CB_ERR), cb.GetItemData(7));
    EXPECT_EQ(nullptr, cb.GetItemDataPtr(-1));
    EXPECT_EQ(CB_ERR, cb.SetItemData(3, 1));
}

TEST(CComboBox, AddingItemsSelectsNothing)
{
    CComboBox cb;
    cb.AddString("one");
    cb.AddString("two");
    EXPECT_EQ(CB_ERR, cb.GetCurSel());
    EXPECT_STREQ("", cb.GetWindowText());
}

TEST(CComboBox, SetCurSelMinusOneClearsTheSelection)
{
    CComboBox list;
    list.AddString("one");
    list.AddString("two");
    EXPECT_EQ(1, list.SetCurSel(1));
    EXPECT_STREQ("two", list.GetWindowText());
    EXPECT_EQ(CB_ERR, list.SetCurSel(-1));
    EXPECT_EQ(CB_ERR, list.GetCurSel());
    EXPECT_STREQ("", list.GetWindowText());
    EXPECT_EQ(QString(), list.currentText());

    CComboBox editable(nullptr, true);
    editable.AddString("one");
    editable.SetCurSel(0);
    EXPECT_STREQ("one", editable.GetWindowText());
    editable.SetCurSel(-1);
    EXPECT_STREQ("", editable.GetWindowText());
    EXPECT_EQ(QString(), editable.lineEdit()->text());
}

TEST(CComboBox, EditTextIsSeparateFromTheItems)
{
    CComboBox cb(nullptr, true);
    cb.AddString("Berlin");
    cb.SetWindowText("Genève");
    EXPECT_STREQ("Genève", cb.GetWindowText());
    EXPECT_EQ(CB_ERR, cb.GetCurSel());
    EXPECT_EQ(1, cb.GetCount());
    cb.show();
    ASSERT_TRUE(TypeText(&cb, QStringLiteral(" 東京\n")));
    EXPECT_STREQ("Genève 東京", cb.GetWindowText());
    EXPECT_EQ(1, cb.GetCount()); // Enter does not add the typed text as an item
}

TEST(CComboBox, DeleteAndReset)
{
    CComboBox cb;
    cb.AddString("a");
    cb.AddString("b");
    cb.AddString("c");
    cb.SetCurSel(1);
    EXPECT_EQ(2, cb.DeleteString(1));
    EXPECT_EQ(CB_ERR, cb.GetCurSel()); // the selected item went
    EXPECT_EQ(CB_ERR, cb.DeleteString(5));
    cb.ResetContent();
    EXPECT_EQ(0, cb.GetCount());
}

TEST(CComboBox, SelectionSignalFiresForTheUserNotForSetCurSel)
{
    CComboBox cb;
    cb.AddString("a");
    cb.AddString("b");
    cb.show();
    QSignalSpy spy(&cb, &CComboBox::selectionChanged);
    cb.SetCurSel(1);
    EXPECT_EQ(0, spy.count());
    ASSERT_TRUE(ChooseComboItem(&cb, 0));
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(0, spy.at(0).at(0).toInt());
    EXPECT_EQ(0, cb.GetCurSel());
    // Keyboard: Down moves the selection and counts as the user's choice.
    cb.setFocus();
    PressKey(&cb, Qt::Key_Down);
    EXPECT_EQ(1, cb.GetCurSel());
    EXPECT_EQ(2, spy.count());
}

TEST(CComboBox, Utf8RoundTrip)
{
    const CString texts[] = {"Müller-Lüdenscheidt", "東京都", "🙂 emoji 🚑", "Ωmega ñ ç"};
    CComboBox cb;
    for (const CString& t : texts)
        cb.AddString(t);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(texts[i], cb.GetLBText(i));
    cb.SetCurSel(2);
    EXPECT_STREQ("🙂 emoji 🚑", cb.GetWindowText());
}
