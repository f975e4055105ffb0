#include "patient/createlinkedpatientspage.h"

#include "patient/createlinkedpatientsimpl.h"

CreateLinkedPatientsPage::CreateLinkedPatientsPage() : m_pImpl(new CreateLinkedPatientsImpl)
{
    setObjectName(QStringLiteral("CreateLinkedPatientsPage"));
    m_pInnerDlg = m_pImpl;
}

CreateLinkedPatientsPage::~CreateLinkedPatientsPage()
{
    m_pInnerDlg = nullptr;
    delete m_pImpl;
}

BOOL CreateLinkedPatientsPage::Create(CWnd* parent, const CRect& rect, UINT id)
{
    return CreateWithInnerDialog(parent, rect, id);
}

BOOL CreateLinkedPatientsPage::ValidateData() { return m_pImpl->ValidateData(); }
