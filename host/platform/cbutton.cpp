#include "cbutton.h"

#include "qtconvert.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>

CButton::CButton(QWidget* parent, Kind kind) : QWidget(parent), m_kind(kind)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    switch (kind) {
    case Kind::PushButton:
    case Kind::DefPushButton: {
        auto* b = new QPushButton(this);
        b->setDefault(kind == Kind::DefPushButton);
        m_button = b;
        break;
    }
    case Kind::CheckBox:
        m_button = new QCheckBox(this);
        break;
    case Kind::RadioButton:
        m_button = new QRadioButton(this);
        break;
    }
    layout->addWidget(m_button);
    setFocusProxy(m_button);
    setFocusPolicy(m_button->focusPolicy());
    connect(m_button, &QAbstractButton::clicked, this, [this] { emit clicked(); });
}

CButton::~CButton() = default;

QPushButton* CButton::pushButton() const { return qobject_cast<QPushButton*>(m_button); }
QCheckBox* CButton::checkBox() const { return qobject_cast<QCheckBox*>(m_button); }
QRadioButton* CButton::radioButton() const { return qobject_cast<QRadioButton*>(m_button); }

void CButton::SetWindowText(const CString& text) { m_button->setText(toQString(text)); }
void CButton::GetWindowText(CString& text) const { text = GetWindowText(); }
CString CButton::GetWindowText() const { return fromQString(m_button->text()); }

int CButton::GetCheck() const
{
    if (QCheckBox* c = checkBox()) {
        switch (c->checkState()) {
        case Qt::Checked: return BST_CHECKED;
        case Qt::PartiallyChecked: return BST_INDETERMINATE;
        default: return BST_UNCHECKED;
        }
    }
    if (m_kind == Kind::RadioButton)
        return m_button->isChecked() ? BST_CHECKED : BST_UNCHECKED;
    return BST_UNCHECKED;
}

void CButton::SetCheck(int state)
{
    if (QCheckBox* c = checkBox()) {
        if (state == BST_INDETERMINATE) {
            c->setTristate(true);
            c->setCheckState(Qt::PartiallyChecked);
        } else {
            c->setCheckState(state == BST_UNCHECKED ? Qt::Unchecked : Qt::Checked);
        }
        return;
    }
    if (m_kind == Kind::RadioButton)
        m_button->setChecked(state != BST_UNCHECKED);
}

void CButton::SetDefault(bool on)
{
    if (QPushButton* b = pushButton())
        b->setDefault(on);
}

bool CButton::IsDefault() const
{
    const QPushButton* b = pushButton();
    return b && b->isDefault();
}

void CButton::Click() { m_button->click(); }

QSize CButton::sizeHint() const { return m_button->sizeHint(); }
