#include "clistbox.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

TEST(CListBox, SortedAddExplicitInsertFindAndData)
{
    CListBox lb(nullptr, true);
    EXPECT_EQ(0, lb.AddString("Melbourne"));
    EXPECT_EQ(0, lb.AddString("adelaide"));
    EXPECT_EQ(2, lb.InsertString(-1, "Alice Springs")); // explicit position, not sorted
    EXPECT_STREQ("Alice Springs", lb.GetText(2));
    EXPECT_EQ(2, lb.FindStringExact(0, "ALICE SPRINGS"));
    EXPECT_EQ(0, lb.FindString(0, "ad")); // wraps back to item 0
    EXPECT_EQ(LB_ERR, lb.FindStringExact(-1, "Perth"));
    int datum = 5;
    EXPECT_EQ(0, lb.SetItemDataPtr(1, &datum));
    EXPECT_EQ(&datum, lb.GetItemDataPtr(1));
    EXPECT_EQ(LB_ERR, lb.GetCurSel());
    EXPECT_EQ(1, lb.SetCurSel(1));
    EXPECT_EQ(1, lb.GetCurSel());
    EXPECT_EQ(LB_ERR, lb.SetCurSel(-1));
    EXPECT_EQ(LB_ERR, lb.GetCurSel());
    EXPECT_EQ(2, lb.DeleteString(0));
    lb.ResetContent();
    EXPECT_EQ(0, lb.GetCount());
}

TEST(CListBox, SelectionSignalOnlyForTheUser)
{
    CListBox lb;
    lb.AddString("a");
    lb.AddString("b");
    QSignalSpy spy(&lb, &CListBox::selectionChanged);
    lb.SetCurSel(1);
    EXPECT_EQ(0, spy.count());
    lb.setCurrentRow(0); // what a click does
    EXPECT_EQ(1, spy.count());
}
