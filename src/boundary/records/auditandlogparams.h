#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// One audit entry: the key of the audited record and the event code
// (50 an exam opened for editing, 51 a patient shown in the merge or link dialog).
class BRAVIK_RECORDS_EXPORT AuditAndLogParams
{
public:
    enum : unsigned long
    {
        EXAM_OPENED_FOR_EDIT = 50,
        PATIENT_SHOWN_FOR_MERGE_OR_LINK = 51
    };

    AuditAndLogParams(const char* key, unsigned long eventCode)
        : m_key(key ? key : ""), m_eventCode(eventCode) {}

    const ACE_CString& GetKey() const { return m_key; }
    unsigned long GetEventCode() const { return m_eventCode; }

private:
    ACE_CString m_key;
    unsigned long m_eventCode;
};
