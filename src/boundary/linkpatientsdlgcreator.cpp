#include "boundary/linkpatientsdlgcreator.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "mergelink/linkpatientsdlg.h"

#include "messagebox.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "session.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <exception>

namespace TavCreator {

CString LinkPatientsDlgCreator::GetReasonForLinkFailure(CString reason) const
{
    BRAVIK_MANAGE_STATE();
    CString text;
    text.Format(LoadString(IDS_DUP_ERR_LINK).GetString(), reason.GetString());
    return text;
}

int LinkPatientsDlgCreator::DisplayDialog(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey)
{
    BRAVIK_MANAGE_STATE();
    try {
        ServiceRegistry* registry = Session::ServiceInstance();
        PatientManagementService* patients = registry ? registry->GetPatientManagementService() : nullptr;
        if (!patients) {
            AfxMessageBox(IDS_ERR_PATIENT_ACCESS, MB_OK);
            return IDCANCEL;
        }
        if (!patients->CanLinkPatients(firstPatientKey, secondPatientKey)) {
            AfxMessageBox(IDS_LINK_SAME_ORGANIZATION, MB_OK);
            return IDCANCEL;
        }

        // Both are loaded even when the first fails; one message covers both.
        PatientDetailRecord first;
        PatientDetailRecord second;
        const int firstResult = patients->GetPatient(firstPatientKey, &first, ACE_CString());
        const int secondResult = patients->GetPatient(secondPatientKey, &second, ACE_CString());
        if (firstResult != 0 || secondResult != 0) {
            AfxMessageBox(IDS_ERR_PATIENT_ACCESS, MB_OK);
            return IDCANCEL;
        }

        LinkPatientsDlg dlg(LoadString(IDS_LINK_HEADER_TEXT), &first, &second, nullptr);
        const int result = dlg.DoModal();
        // Whatever the result: the caller may word a refusal with them.
        m_strTargetPatientKey = dlg.GetTargetPatientKey();
        m_strTargetPatientOrgKey = dlg.GetTargetPatientOrgKey();
        m_strLinkPatientKey = dlg.GetLinkPatientKey();
        m_strLinkPatientOrgKey = dlg.GetLinkPatientOrgKey();
        return result;
    } catch (const std::exception& e) {
        ACE_LOG_MSG->file(__FILE__);
        ACE_LOG_MSG->linenum(__LINE__);
        ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the link could not start: %s\n"),
                   "TavCreator::LinkPatientsDlgCreator::DisplayDialog", __LINE__, e.what()));
        AfxMessageBox(IDS_ERR_PATIENT_ACCESS, MB_OK);
        return IDCANCEL;
    }
}

} // namespace TavCreator
