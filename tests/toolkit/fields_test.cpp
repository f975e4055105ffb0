#include "combobox.h"
#include "datepickerctrl.h"
#include "datetimeeditctrl.h"
#include "edit.h"
#include "normaleditvalidator.h"
#include "requiredmark.h"

#include "cdialog.h"
#include "dialogtemplate.h"

#include "scripteduser.h"
#include "uiinput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

TEST(NormalEditValidatorTest, ARequiredFieldNeedsTextAndBlanksCountOnlyWhenNotTrimmed)
{
    NormalEditValidator optional(nullptr, false, true);
    EXPECT_TRUE(optional.IsValid(""));
    NormalEditValidator trimmed(nullptr, true, true);
    EXPECT_FALSE(trimmed.IsValid(""));
    EXPECT_FALSE(trimmed.IsValid("   "));
    EXPECT_TRUE(trimmed.IsValid(" x "));
    NormalEditValidator kept(nullptr, true, false);
    EXPECT_TRUE(kept.IsValid("   "));
    EXPECT_TRUE(kept.Validate()); // no window: nothing to refuse
}

TEST(EditTest, TheRequiredFlagShowsTheMarkAndReachesTheValidator)
{
    QWidget parent;
    auto* edit = new Edit(&parent);
    NormalEditValidator validator(nullptr, false, true);
    edit->SetValidator(&validator);
    EXPECT_EQ(edit, validator.GetWindow());
    EXPECT_FALSE(edit->IsRequiredMarkShown());
    EXPECT_TRUE(edit->IsValid());

    edit->SetRequiredFlag(true);
    parent.show();
    EXPECT_TRUE(edit->IsRequiredMarkShown());
    auto* mark = edit->findChild<RequiredMark*>("requiredMark");
    ASSERT_NE(nullptr, mark);
    EXPECT_TRUE(mark->isVisible());
    EXPECT_TRUE(validator.IsRequired());
    EXPECT_FALSE(edit->IsValid());
    TypeText(edit, "Smith");
    EXPECT_TRUE(edit->IsValid());

    edit->SetRequiredFlag(false);
    EXPECT_FALSE(mark->isVisible());
    EXPECT_FALSE(validator.IsRequired());
}

TEST(EditTest, TheMarkLetsClicksThroughToTheField)
{
    QWidget parent;
    auto* edit = new Edit(&parent);
    edit->resize(120, 22);
    edit->SetRequiredFlag(true);
    parent.show();
    QTest::mouseClick(edit->lineEdit(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    QTest::keyClicks(edit->lineEdit(), "A");
    EXPECT_EQ(CString("A"), edit->GetWindowText());
}

TEST(EditTest, TemplatesBuildToolkitFieldsByClassName)
{
    DialogTemplate tpl{"", 100, 60, "Arial", 8,
                       {{1, "IDC_NAME", ControlKind::Custom, "", 5, 5, 80, 12, ES_UPPERCASE, Edit::ClassName},
                        {2, "IDC_SEX", ControlKind::Custom, "", 5, 20, 80, 50, CBS_SORT, ComboBox::ClassName},
                        {3, "IDC_DOD", ControlKind::Custom, "", 5, 35, 80, 12, 0, DateTimeEditCtrl::ClassName},
                        {4, "IDC_DOB", ControlKind::Custom, "", 5, 48, 80, 12, 0, DatePickerCtrl::ClassName}}};
    CDialog dlg(tpl);
    auto* edit = dlg.GetDlgItemAs<Edit>(1);
    ASSERT_NE(nullptr, edit);
    edit->SetWindowText("abc");
    CString text;
    dlg.GetDlgItemText(1, text);
    EXPECT_EQ(CString("ABC"), text); // the template's ES_UPPERCASE applies
    auto* combo = dlg.GetDlgItemAs<ComboBox>(2);
    ASSERT_NE(nullptr, combo);
    EXPECT_TRUE(combo->IsSorted());
    EXPECT_NE(nullptr, dlg.GetDlgItemAs<DateTimeEditCtrl>(3));
    EXPECT_NE(nullptr, dlg.GetDlgItemAs<DatePickerCtrl>(4));
    EXPECT_EQ(QString("IDC_DOD"), dlg.GetDlgItem(3)->objectName());
}

TEST(ComboBoxTest, TheRequiredFlagShowsTheMark)
{
    QWidget parent;
    auto* box = new ComboBox(&parent);
    box->AddString("F-Female");
    parent.show();
    EXPECT_FALSE(box->IsRequiredMarkShown());
    box->SetRequiredFlag(true);
    EXPECT_TRUE(box->GetRequiredFlag());
    EXPECT_TRUE(box->findChild<RequiredMark*>("requiredMark")->isVisible());
    box->SetRequiredFlag(false);
    EXPECT_FALSE(box->IsRequiredMarkShown());
}

TEST(DateTimeEditCtrlTest, MayBeEmptyAndTellsADateFromOtherText)
{
    DateTimeEditCtrl ctrl;
    QDate date;
    EXPECT_TRUE(ctrl.IsEmpty());
    EXPECT_TRUE(ctrl.IsValidDate());
    EXPECT_EQ(GDT_NONE, ctrl.GetDate(date));
    EXPECT_FALSE(date.isValid());

    ctrl.SetDate(QDate(2020, 2, 29));
    EXPECT_EQ(CString("02/29/2020"), ctrl.GetWindowText());
    EXPECT_EQ(GDT_VALID, ctrl.GetDate(date));
    EXPECT_EQ(QDate(2020, 2, 29), date);

    ctrl.SetWindowText("02/30/2020");
    EXPECT_FALSE(ctrl.IsValidDate());
    EXPECT_EQ(GDT_NONE, ctrl.GetDate(date));
    ctrl.SetEmpty();
    EXPECT_EQ(CString(""), ctrl.GetWindowText());
}

TEST(DateTimeEditCtrlTest, TypedTextFollowsTheDatePatternGiven)
{
    DateTimeEditCtrl ctrl;
    ctrl.SetDatePattern("dd.MM.yyyy");
    QTest::keyClicks(ctrl.lineEdit(), "31.12.1999");
    QDate date;
    EXPECT_EQ(GDT_VALID, ctrl.GetDate(date));
    EXPECT_EQ(QDate(1999, 12, 31), date);
    ctrl.SetWindowText("12/31/1999");
    EXPECT_FALSE(ctrl.IsValidDate());
}

TEST(DateTimeEditCtrlTest, ItsOwnMessageNamesThePattern)
{
    ScriptedUser user;
    DateTimeEditCtrl ctrl;
    ctrl.SetDatePattern("yyyy-MM-dd");
    user.ExpectMessage("You must specify a valid date. Check your entry to make sure it represents a valid date "
                       "(yyyy-MM-dd).");
    ctrl.ShowInvalidDateMessage();
    EXPECT_EQ(1u, user.Messages().size());
}

TEST(DateTimeEditCtrlTest, TheCalendarPicksADateAndHasTheFocus)
{
    QWidget parent;
    auto* ctrl = new DateTimeEditCtrl(&parent);
    parent.show();
    ctrl->SetDate(QDate(2001, 5, 10));
    bool calendarHadFocus = false;
    QTimer::singleShot(0, [&] {
        QWidget* focused = QApplication::focusWidget();
        calendarHadFocus = focused && (qobject_cast<QCalendarWidget*>(focused)
                                       || qobject_cast<QCalendarWidget*>(focused->parentWidget()));
        auto* cal = qobject_cast<QCalendarWidget*>(QApplication::activePopupWidget()
                                                       ? QApplication::activePopupWidget()->findChild<QCalendarWidget*>()
                                                       : nullptr);
        ASSERT_NE(nullptr, cal);
        EXPECT_EQ(QDate(2001, 5, 10), cal->selectedDate());
        emit cal->clicked(QDate(2001, 5, 17));
    });
    ClickButton(ctrl->dropButton());
    EXPECT_TRUE(calendarHadFocus);
    EXPECT_EQ(CString("05/17/2001"), ctrl->GetWindowText());
}

TEST(DatePickerCtrlTest, HoldsADateInThePatternAndReachesBackTo1800)
{
    DatePickerCtrl picker;
    picker.SetDatePattern("dd/MM/yyyy");
    picker.SetDate(QDate(1800, 1, 1));
    EXPECT_EQ(QDate(1800, 1, 1), picker.GetDate());
    EXPECT_EQ(QString("01/01/1800"), picker.text());
    picker.SetDate(QDate());
    EXPECT_EQ(QDate(1800, 1, 1), picker.GetDate());
}

TEST(DatePickerCtrlTest, TheDropDownTakesTheKeyboardFocus)
{
    QWidget parent;
    auto* picker = new DatePickerCtrl(&parent);
    picker->SetDate(QDate(1970, 3, 4));
    parent.show();
    QApplication::setActiveWindow(&parent);
    picker->setFocus();
    QSignalSpy dropped(picker, &DatePickerCtrl::droppedDown);
    PressKey(picker, Qt::Key_F4);
    ASSERT_EQ(1, dropped.count());
    EXPECT_TRUE(picker->IsDroppedDown());
    ASSERT_NE(nullptr, picker->calendar());
    EXPECT_TRUE(picker->calendar()->hasFocus() || picker->calendar()->isAncestorOf(QApplication::focusWidget()));
    // Keys now move through the calendar's days.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(QDate(1970, 3, 5), picker->calendar()->selectedDate());
    picker->calendar()->window()->close();
}

} // namespace
