#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// Criteria of PatientManagementService::QueryPatients (the workstation's
// patient browser). Name and MRN texts are in the service's wildcard form
// ('%' any run, '_' one character, '\' escapes the next character; see
// ParamUtils::ConvertToWildcardQueryString); an empty text is no criterion.
struct BRAVIK_RECORDS_EXPORT PatientSearchCriteria
{
    ACE_CString lastName;
    ACE_CString firstName;
    ACE_CString patientID;       // MRN
    ACE_CString organizationKey; // empty: every organization
    int maxRows = 0;             // 0: no limit
};
