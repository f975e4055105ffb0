#include "patient/contactinfopage.h"

#include "patient/contactpageimpl.h"

ContactInfoPage::ContactInfoPage(PatientDetailRecord* record, bool editMode)
    : m_pImpl(new ContactPageImpl(record, editMode))
{
    setObjectName(QStringLiteral("ContactInfoPage"));
    m_pInnerDlg = m_pImpl;
}

ContactInfoPage::~ContactInfoPage()
{
    m_pInnerDlg = nullptr;
    delete m_pImpl;
}

BOOL ContactInfoPage::Create(CWnd* parent, const CRect& rect, UINT id)
{
    return CreateWithInnerDialog(parent, rect, id);
}

BOOL ContactInfoPage::ValidateData() { return m_pImpl->ValidateData(); }

void ContactInfoPage::ApplyOrganizationDefaults(const ACE_CString& organizationKey)
{
    m_pImpl->ApplyOrganizationDefaults(organizationKey);
}
