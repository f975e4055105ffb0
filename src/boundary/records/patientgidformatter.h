#pragma once

#include "bravik_records_export.h"
#include "cstring.h"

// Title and display form of the patient global identifier (SitePolicy).
class BRAVIK_RECORDS_EXPORT PatientGIDFormatter
{
public:
    // The site's column title, "SSN" by default.
    static CString GetPatientIDColumnName();
    // When the title is "SSN" and the identifier is exactly nine digits it is
    // shown as "123-45-6789"; anything else is left as it is.
    static void FormatPatientGID(CString& gid);
};
