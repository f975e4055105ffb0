#include "boundary/patientdlgcreator.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "patient/patientdlg.h"

#include "messagebox.h"
#include "patientdetailrecord.h"

#include <ace/Log_Msg.h>

#include <exception>
#include <new>

namespace TavCreator {

PatientDlgCreator::~PatientDlgCreator()
{
    delete m_pPatientData;
    delete m_pDlg;
}

PatientDlgCreator::PatientDlgCreator(const PatientDlgCreator& other)
    : m_pPatientData(other.m_pPatientData ? new PatientDetailRecord(*other.m_pPatientData) : nullptr)
{
}

PatientDlgCreator& PatientDlgCreator::operator=(const PatientDlgCreator& other)
{
    if (this != &other) {
        delete m_pPatientData;
        m_pPatientData = other.m_pPatientData ? new PatientDetailRecord(*other.m_pPatientData) : nullptr;
    }
    return *this;
}

int PatientDlgCreator::DisplayPatientDlg(const char* patientKey, CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    try {
        return Run(patientKey, parent);
    } catch (const std::exception& e) {
        // Nothing crosses into the host: the run reads as cancelled.
        ACE_LOG_MSG->file(__FILE__);
        ACE_LOG_MSG->linenum(__LINE__);
        ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the patient dialog failed: %s\n"),
                   "TavCreator::PatientDlgCreator::DisplayPatientDlg", __LINE__, e.what()));
        return IDCANCEL;
    }
}

int PatientDlgCreator::Run(const char* patientKey, CWnd* parent)
{
    if (!m_pDlg)
        m_pDlg = new PatientDlg(IDD_PATIENT_DLG, patientKey, parent);
    if (patientKey && *patientKey) {
        bool loaded = false;
        try {
            loaded = m_pDlg->Load();
        } catch (const std::exception&) {
            loaded = false;
        }
        if (!loaded) {
            AfxMessageBox(IDS_ERR_PATIENT_ACCESS, MB_OK);
            return IDCANCEL;
        }
    }
    const int result = m_pDlg->DoModal();
    if (result != IDOK)
        return result;
    delete m_pPatientData;
    m_pPatientData = new (std::nothrow) PatientDetailRecord(m_pDlg->GetPatientRecord());
    return IDOK;
}

bool PatientDlgCreator::GetHasRemovedLink() const { return m_pDlg && m_pDlg->HasRemovedLink(); }

void PatientDlgCreator::GetLinkedPatientKeys(std::set<ACE_CString>& keys) const
{
    if (m_pDlg)
        m_pDlg->GetLinkedPatientKeys(keys);
}

} // namespace TavCreator
