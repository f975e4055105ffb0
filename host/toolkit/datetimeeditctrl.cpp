#include "datetimeeditctrl.h"

#include "dialogtemplate.h"
#include "dropdownfield.h"
#include "messagebox.h"
#include "qtconvert.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QWidgetAction>

const char* const DateTimeEditCtrl::ClassName = "ToolkitDateTimeEdit";

namespace {
const bool g_registered = RegisterControlClass(DateTimeEditCtrl::ClassName, [](QWidget* parent, const DialogControl&) -> QWidget* {
    return new DateTimeEditCtrl(parent);
});
} // namespace

DateTimeEditCtrl::DateTimeEditCtrl(QWidget* parent)
    : QWidget(parent), m_edit(new QLineEdit(this)), m_drop(new QToolButton(this))
{
    (void)g_registered;
    LayOutDropDownField(this, m_edit, m_drop);
    m_drop->setToolTip(tr("Choose from the calendar (F4)"));
    setFocusPolicy(Qt::StrongFocus);
    connect(m_edit, &QLineEdit::textChanged, this, &DateTimeEditCtrl::changed);
    connect(m_drop, &QToolButton::clicked, this, &DateTimeEditCtrl::DropDown);
}

DateTimeEditCtrl::~DateTimeEditCtrl() = default;

void DateTimeEditCtrl::SetDate(const QDate& date)
{
    m_edit->setText(date.isValid() ? date.toString(m_pattern) : QString());
}

bool DateTimeEditCtrl::parse(QDate& date) const
{
    date = QDate::fromString(m_edit->text().trimmed(), m_pattern);
    return date.isValid();
}

DWORD DateTimeEditCtrl::GetDate(QDate& date) const
{
    if (parse(date))
        return GDT_VALID;
    date = QDate();
    return GDT_NONE;
}

bool DateTimeEditCtrl::IsEmpty() const { return m_edit->text().trimmed().isEmpty(); }

bool DateTimeEditCtrl::IsValidDate() const
{
    QDate date;
    return IsEmpty() || parse(date);
}

void DateTimeEditCtrl::SetWindowText(const CString& text) { m_edit->setText(toQString(text)); }

CString DateTimeEditCtrl::GetWindowText() const { return fromQString(m_edit->text()); }

CString DateTimeEditCtrl::GetInvalidDateMessage() const
{
    return fromQString(tr("You must specify a valid date. Check your entry to make sure it represents "
                          "a valid date (%1).")
                           .arg(m_pattern));
}

void DateTimeEditCtrl::ShowInvalidDateMessage() const
{
    AfxMessageBox(GetInvalidDateMessage().GetString(), MB_OK | MB_ICONEXCLAMATION);
}

bool DateTimeEditCtrl::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_edit && e->type() == QEvent::KeyPress && m_edit->isEnabled() && !m_edit->isReadOnly()) {
        auto* key = static_cast<QKeyEvent*>(e);
        if (key->key() == Qt::Key_F4 || (key->key() == Qt::Key_Down && (key->modifiers() & Qt::AltModifier))) {
            DropDown();
            return true;
        }
    }
    return QWidget::eventFilter(watched, e);
}

void DateTimeEditCtrl::DropDown()
{
    QDate current;
    parse(current);
    QMenu menu(this);
    auto* calendar = new QCalendarWidget(&menu);
    calendar->setObjectName(QStringLiteral("calendar"));
    calendar->setSelectedDate(current.isValid() ? current : QDate::currentDate());
    connect(calendar, &QCalendarWidget::activated, &menu, [&](const QDate& d) {
        SetDate(d);
        menu.close();
    });
    connect(calendar, &QCalendarWidget::clicked, &menu, [&](const QDate& d) {
        SetDate(d);
        menu.close();
    });
    auto* action = new QWidgetAction(&menu);
    action->setDefaultWidget(calendar);
    menu.addAction(action);
    connect(&menu, &QMenu::aboutToShow, calendar, [calendar] { calendar->setFocus(Qt::PopupFocusReason); });
    menu.exec(mapToGlobal(QPoint(0, height())));
    m_edit->setFocus(Qt::PopupFocusReason);
}
