#pragma once

#include "bravik_export.h"

#include "cstring.h"

#include <ace/SString.h>

namespace TavCreator {

// Launches the link dialog for two patients once the service agrees they may
// be linked and both load. The link itself is the caller's: it passes the
// four getters' values to PatientManagementService::LinkPatients.
class BRAVIK_EXPORT LinkPatientsDlgCreator
{
public:
    LinkPatientsDlgCreator() = default;

    // The dialog's end code (1 confirmed), or 2 when a check failed.
    int DisplayDialog(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey);

    const CString& GetTargetPatientKey() const { return m_strTargetPatientKey; }
    const CString& GetTargetPatientOrgKey() const { return m_strTargetPatientOrgKey; }
    const CString& GetLinkPatientKey() const { return m_strLinkPatientKey; }
    const CString& GetLinkPatientOrgKey() const { return m_strLinkPatientOrgKey; }

    // "Error linking patients.  Reason: %s" with reason in place.
    CString GetReasonForLinkFailure(CString reason) const;

private:
    CString m_strTargetPatientKey;
    CString m_strTargetPatientOrgKey;
    CString m_strLinkPatientKey;
    CString m_strLinkPatientOrgKey;
};

} // namespace TavCreator
