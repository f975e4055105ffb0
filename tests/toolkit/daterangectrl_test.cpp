#include "daterangectrl.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

namespace {

TEST(DateRangeCtrlTest, WritesARangeWithTheSeparatorAndASingleDayAsOneDate)
{
    DateRangeCtrl ctrl;
    ctrl.SetRange(QDate(1970, 1, 1), QDate(1980, 12, 31));
    EXPECT_EQ(CString("01/01/1970") + DateRangeCtrl::DATE_SEP + "12/31/1980", ctrl.GetWindowText());
    ctrl.SetRange(QDate(1970, 1, 1), QDate(1970, 1, 1));
    EXPECT_EQ(CString("01/01/1970"), ctrl.GetWindowText());
    ctrl.SetRange(QDate(1970, 1, 1), QDate());
    EXPECT_EQ(CString("01/01/1970") + DateRangeCtrl::DATE_SEP, ctrl.GetWindowText());
    ctrl.SetRange(QDate(), QDate());
    EXPECT_EQ(CString(""), ctrl.GetWindowText());
}

TEST(DateRangeCtrlTest, ReadsTheRangeBack)
{
    DateRangeCtrl ctrl;
    ctrl.SetDatePattern("yyyy.MM.dd");
    ctrl.SetRange(QDate(2001, 2, 3), QDate(2002, 3, 4));
    QDate from, to;
    ASSERT_TRUE(ctrl.GetRange(from, to));
    EXPECT_EQ(QDate(2001, 2, 3), from);
    EXPECT_EQ(QDate(2002, 3, 4), to);
    ctrl.SetWindowText("not a date");
    EXPECT_FALSE(ctrl.GetRange(from, to));
}

TEST(DateRangeCtrlTest, FullDeleteOnlyClearsEverythingOnDelete)
{
    DateRangeCtrl ctrl;
    ctrl.SetEnableEdit(true);
    ctrl.SetWindowText("01/01/1970");
    ctrl.lineEdit()->setCursorPosition(10);
    ctrl.SetAllowFullDeleteOnly(false);
    QTest::keyClick(ctrl.lineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(CString("01/01/197"), ctrl.GetWindowText());
    ctrl.SetAllowFullDeleteOnly(true);
    QTest::keyClick(ctrl.lineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(CString(""), ctrl.GetWindowText());
}

TEST(DateRangeCtrlTest, EditingCanBeSwitchedOff)
{
    DateRangeCtrl ctrl;
    ctrl.SetEnableEdit(false);
    QTest::keyClicks(ctrl.lineEdit(), "01/01/1970");
    EXPECT_EQ(CString(""), ctrl.GetWindowText());
    ctrl.SetEnableEdit(true);
    QTest::keyClicks(ctrl.lineEdit(), "01/01/1970");
    EXPECT_EQ(CString("01/01/1970"), ctrl.GetWindowText());
}

} // namespace
