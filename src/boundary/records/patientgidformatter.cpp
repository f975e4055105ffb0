#include "patientgidformatter.h"

#include "sitepolicy.h"

CString PatientGIDFormatter::GetPatientIDColumnName()
{
    return CString(SitePolicy::Get().patientIDColumnName);
}

void PatientGIDFormatter::FormatPatientGID(CString& gid)
{
    if (SitePolicy::Get().patientIDColumnName != "SSN" || gid.GetLength() != 9)
        return;
    for (int i = 0; i < 9; ++i)
        if (gid.GetAt(i) < '0' || gid.GetAt(i) > '9')
            return;
    gid = gid.Left(3) + "-" + gid.Mid(3, 2) + "-" + gid.Mid(5);
}
