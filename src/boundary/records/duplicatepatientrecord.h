#pragma once

#include "bravik_records_export.h"
#include "patientqueryrecord.h"

#include <ace/SString.h>

// One row of the duplicate-patient worklist: two patients the server
// considers possible duplicates, and its reason.
class BRAVIK_RECORDS_EXPORT DuplicatePatientRecord
{
public:
    DuplicatePatientRecord() = default;

    const PatientQueryRecord& GetFirstPatient() const { return m_first; }
    const PatientQueryRecord& GetSecondPatient() const { return m_second; }
    PatientQueryRecord& GetFirstPatient() { return m_first; }
    PatientQueryRecord& GetSecondPatient() { return m_second; }
    void SetFirstPatient(const PatientQueryRecord& v) { m_first = v; }
    void SetSecondPatient(const PatientQueryRecord& v) { m_second = v; }

    const ACE_CString& GetDuplicateReason() const { return m_reason; }
    void SetDuplicateReason(const ACE_CString& v) { m_reason = v; }

private:
    PatientQueryRecord m_first;
    PatientQueryRecord m_second;
    ACE_CString m_reason;
};
