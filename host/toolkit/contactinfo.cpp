#include "contactinfo.h"

#include "cstatic.h"
#include "drawmaster.h"
#include "qtconvert.h"

#include <QGridLayout>
#include <QGroupBox>

ContactInfo::ContactInfo(QWidget* parent)
    : QWidget(parent), m_pAddress(new CStatic(this)), m_pWPhone(new CStatic(this))
{
    setObjectName(QStringLiteral("ContactInfo"));
    auto* box = new QGroupBox(tr("Contact Information"), this);
    auto* grid = new QGridLayout(box);
    auto* addressLabel = new CStatic(box);
    addressLabel->SetWindowText("Address:");
    auto* phoneLabel = new CStatic(box);
    phoneLabel->SetWindowText("Work Phone:");
    m_pAddress->setParent(box);
    m_pWPhone->setParent(box);
    m_pAddress->setObjectName(QStringLiteral("IDC_CONTACT_ADDRESS"));
    m_pWPhone->setObjectName(QStringLiteral("IDC_CONTACT_WPHONE"));
    m_pAddress->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pWPhone->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addWidget(addressLabel, 0, 0, Qt::AlignTop);
    grid->addWidget(m_pAddress, 0, 1, Qt::AlignTop);
    grid->addWidget(phoneLabel, 1, 0, Qt::AlignTop);
    grid->addWidget(m_pWPhone, 1, 1, Qt::AlignTop);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
    auto* outer = new QGridLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(box, 0, 0);
}

ContactInfo::~ContactInfo() = default;

BOOL ContactInfo::Create(CWnd* parent, const CRect& rect)
{
    setParent(parent);
    setGeometry(rect.toQRect());
    show();
    return TRUE;
}

void ContactInfo::SetBkColor(COLORREF color)
{
    QPalette pal = palette();
    pal.setColor(QPalette::Window, toQColor(color));
    setPalette(pal);
    setAutoFillBackground(true);
}

void ContactInfo::SetAddress(const CString& address) { m_pAddress->SetWindowText(address); }
void ContactInfo::SetWPhone(const CString& phone) { m_pWPhone->SetWindowText(phone); }
CString ContactInfo::GetAddress() const { return m_pAddress->GetWindowText(); }
CString ContactInfo::GetWPhone() const { return m_pWPhone->GetWindowText(); }
