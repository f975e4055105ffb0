#include "daterangectrl.h"

#include "dropdownfield.h"

#include "qtconvert.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QWidgetAction>

const char* const DateRangeCtrl::DATE_SEP = " - ";

DateRangeCtrl::DateRangeCtrl(QWidget* parent) : QWidget(parent), m_edit(new QLineEdit(this)), m_drop(new QToolButton(this))
{
    LayOutDropDownField(this, m_edit, m_drop);
    m_drop->setAutoRaise(true);
    connect(m_edit, &QLineEdit::textChanged, this, &DateRangeCtrl::changed);
    connect(m_drop, &QToolButton::clicked, this, &DateRangeCtrl::openPicker);
}

DateRangeCtrl::~DateRangeCtrl() = default;

void DateRangeCtrl::SetEnableEdit(bool on)
{
    m_editEnabled = on;
    m_edit->setReadOnly(!on);
}

void DateRangeCtrl::SetWindowText(const CString& text)
{
    m_edit->setText(toQString(text));
}

CString DateRangeCtrl::GetWindowText() const
{
    return fromQString(m_edit->text());
}

void DateRangeCtrl::SetRange(const QDate& from, const QDate& to)
{
    const QString a = from.isValid() ? from.toString(m_pattern) : QString();
    const QString b = to.isValid() ? to.toString(m_pattern) : QString();
    if (a.isEmpty() && b.isEmpty())
        m_edit->clear();
    else if (from.isValid() && to.isValid() && from == to)
        m_edit->setText(a);
    else
        m_edit->setText(a + QString::fromUtf8(DATE_SEP) + b);
}

bool DateRangeCtrl::GetRange(QDate& from, QDate& to) const
{
    from = QDate();
    to = QDate();
    const QString text = m_edit->text().trimmed();
    if (text.isEmpty())
        return false;
    const int sep = text.indexOf(QString::fromUtf8(DATE_SEP).trimmed());
    if (sep < 0) {
        from = to = QDate::fromString(text, m_pattern);
        return from.isValid();
    }
    const QString a = text.left(sep).trimmed();
    const QString b = text.mid(sep + 1).trimmed();
    if (!a.isEmpty())
        from = QDate::fromString(a, m_pattern);
    if (!b.isEmpty())
        to = QDate::fromString(b, m_pattern);
    return (a.isEmpty() || from.isValid()) && (b.isEmpty() || to.isValid()) && !(a.isEmpty() && b.isEmpty());
}

bool DateRangeCtrl::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_edit && e->type() == QEvent::KeyPress && m_fullDeleteOnly && m_editEnabled) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
            m_edit->clear();
            return true;
        }
    }
    return QWidget::eventFilter(watched, e);
}

void DateRangeCtrl::openPicker()
{
    QDate from;
    QDate to;
    GetRange(from, to);
    QMenu menu(this);
    auto* panel = new QWidget(&menu);
    auto* form = new QFormLayout(panel);
    auto* fromEdit = new QDateEdit(from.isValid() ? from : QDate::currentDate(), panel);
    auto* toEdit = new QDateEdit(to.isValid() ? to : QDate::currentDate(), panel);
    for (QDateEdit* d : {fromEdit, toEdit}) {
        d->setDisplayFormat(m_pattern);
        d->setCalendarPopup(true);
    }
    form->addRow(tr("From"), fromEdit);
    form->addRow(tr("To"), toEdit);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, panel);
    form->addRow(buttons);
    bool accepted = false;
    connect(buttons, &QDialogButtonBox::accepted, &menu, [&] { accepted = true; menu.close(); });
    connect(buttons, &QDialogButtonBox::rejected, &menu, &QMenu::close);
    auto* action = new QWidgetAction(&menu);
    action->setDefaultWidget(panel);
    menu.addAction(action);
    menu.exec(mapToGlobal(QPoint(0, height())));
    if (accepted)
        SetRange(fromEdit->date(), toEdit->date());
}
