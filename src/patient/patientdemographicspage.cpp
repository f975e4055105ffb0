#include "patient/patientdemographicspage.h"

#include "patient/patientdemographicsimpl.h"

PatientDemographicsPage::PatientDemographicsPage(PatientDetailRecord* record, bool editMode)
    : m_pImpl(new PatientDemographicsImpl(record, editMode))
{
    setObjectName(QStringLiteral("PatientDemographicsPage"));
    m_pInnerDlg = m_pImpl;
}

PatientDemographicsPage::~PatientDemographicsPage()
{
    m_pInnerDlg = nullptr;
    delete m_pImpl;
}

BOOL PatientDemographicsPage::Create(CWnd* parent, const CRect& rect, UINT id)
{
    return CreateWithInnerDialog(parent, rect, id);
}

BOOL PatientDemographicsPage::ValidateData() { return m_pImpl->ValidateData(); }

Publisher<long, long>& PatientDemographicsPage::GetPublisher() { return m_pImpl->GetPublisher(); }
