#include "patient/linkedrecordspage.h"

#include "patient/clinkpatientimpl.h"

LinkedRecordsPage::LinkedRecordsPage(PatientDetailRecord* patient) : m_pImpl(new CLinkPatientImpl(patient))
{
    setObjectName(QStringLiteral("LinkedRecordsPage"));
    m_pInnerDlg = m_pImpl;
}

LinkedRecordsPage::~LinkedRecordsPage()
{
    m_pInnerDlg = nullptr;
    delete m_pImpl;
}

BOOL LinkedRecordsPage::Create(CWnd* parent, const CRect& rect, UINT id)
{
    return CreateWithInnerDialog(parent, rect, id);
}

BOOL LinkedRecordsPage::ValidateData() { return m_pImpl->ValidateData(); }
