#include "datepickerctrl.h"

#include "dialogtemplate.h"

#include <QCalendarWidget>
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>

const char* const DatePickerCtrl::ClassName = "ToolkitDatePicker";

namespace {
const bool g_registered = RegisterControlClass(DatePickerCtrl::ClassName, [](QWidget* parent, const DialogControl&) -> QWidget* {
    return new DatePickerCtrl(parent);
});
} // namespace

DatePickerCtrl::DatePickerCtrl(QWidget* parent) : QDateEdit(parent)
{
    (void)g_registered;
    setCalendarPopup(true);
    // Birth dates reach back well before the default earliest date.
    setMinimumDate(QDate(1600, 1, 1));
    SetDatePattern(QStringLiteral("MM/dd/yyyy"));
    watchPopup();
}

DatePickerCtrl::~DatePickerCtrl() = default;

void DatePickerCtrl::SetDatePattern(const QString& pattern)
{
    setDisplayFormat(pattern);
    watchPopup();
}

void DatePickerCtrl::SetDate(const QDate& d)
{
    if (d.isValid())
        setDate(d);
}

void DatePickerCtrl::watchPopup()
{
    QCalendarWidget* cal = calendarWidget();
    QWidget* popup = cal ? cal->window() : nullptr;
    if (popup == m_popup || !popup)
        return;
    m_popup = popup;
    popup->installEventFilter(this);
}

bool DatePickerCtrl::IsDroppedDown() const { return m_popup && m_popup->isVisible(); }

void DatePickerCtrl::DropDown()
{
    if (IsDroppedDown() || !isEnabled())
        return;
    // The arrow's own way of opening the calendar: a click on the drop-down
    // part of the control, at its right end.
    const QPoint at(width() - 4, height() / 2);
    QMouseEvent move(QEvent::MouseMove, at, mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    mouseMoveEvent(&move);
    QMouseEvent press(QEvent::MouseButtonPress, at, mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    mousePressEvent(&press);
    watchPopup();
}

void DatePickerCtrl::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_F4 || (e->key() == Qt::Key_Down && (e->modifiers() & Qt::AltModifier))) {
        DropDown();
        e->accept();
        return;
    }
    QDateEdit::keyPressEvent(e);
}

bool DatePickerCtrl::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_popup && e->type() == QEvent::Show) {
        if (QCalendarWidget* cal = calendarWidget()) {
            cal->setFocus(Qt::PopupFocusReason);
            emit droppedDown();
        }
    }
    return QDateEdit::eventFilter(watched, e);
}
