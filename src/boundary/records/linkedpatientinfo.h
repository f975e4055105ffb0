#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// One pairing chosen in the merge dialog for an organization where both
// patients have a linked record: the record merged away (source) and the one
// that survives (target). Both keys stay empty when one side had no record.
class BRAVIK_RECORDS_EXPORT LinkedPatientInfo
{
public:
    LinkedPatientInfo() = default;
    LinkedPatientInfo(const ACE_CString& sourceKey, const ACE_CString& targetKey)
        : m_sourcePatientKey(sourceKey), m_targetPatientKey(targetKey) {}

    const ACE_CString& GetSourcePatientKey() const { return m_sourcePatientKey; }
    const ACE_CString& GetTargetPatientKey() const { return m_targetPatientKey; }
    void SetSourcePatientKey(const ACE_CString& v) { m_sourcePatientKey = v; }
    void SetTargetPatientKey(const ACE_CString& v) { m_targetPatientKey = v; }

private:
    ACE_CString m_sourcePatientKey;
    ACE_CString m_targetPatientKey;
};
