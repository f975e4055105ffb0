#pragma once

#include "bravik_records_export.h"
#include "bdate.h"

#include <ace/SString.h>

// The patient identity carried by one side of a duplicate-candidate row.
class BRAVIK_RECORDS_EXPORT PatientQueryRecord
{
public:
    PatientQueryRecord() = default;

    const ACE_CString& GetPatientKey() const { return m_patientKey; }
    const ACE_CString& GetPatientId() const { return m_patientId; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    const ACE_CString& GetOrganizationId() const { return m_organizationId; }
    // The name's single-string form.
    const ACE_CString& GetPatientName() const { return m_patientName; }
    const ACE_CString& GetPatientSexCode() const { return m_sexCode; }
    // The patient global identifier.
    const ACE_CString& GetSsn() const { return m_ssn; }
    const BDate& GetPatientBirthDate() const { return m_birthDate; }

    void SetPatientKey(const ACE_CString& v) { m_patientKey = v; }
    void SetPatientId(const ACE_CString& v) { m_patientId = v; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    void SetOrganizationId(const ACE_CString& v) { m_organizationId = v; }
    void SetPatientName(const ACE_CString& v) { m_patientName = v; }
    void SetPatientSexCode(const ACE_CString& v) { m_sexCode = v; }
    void SetSsn(const ACE_CString& v) { m_ssn = v; }
    void SetPatientBirthDate(const BDate& v) { m_birthDate = v; }

private:
    ACE_CString m_patientKey;
    ACE_CString m_patientId;
    ACE_CString m_organizationKey;
    ACE_CString m_organizationId;
    ACE_CString m_patientName;
    ACE_CString m_sexCode;
    ACE_CString m_ssn;
    BDate m_birthDate;
};
