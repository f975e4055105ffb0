#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// One entry of the exam-code dictionary.
class BRAVIK_RECORDS_EXPORT ExamCodeRecord
{
public:
    ExamCodeRecord() = default;

    const ACE_CString& GetKey() const { return m_key; }
    void SetKey(const ACE_CString& v) { m_key = v; }
    const ACE_CString& GetCode() const { return m_code; }
    void SetCode(const ACE_CString& v) { m_code = v; }
    const ACE_CString& GetDescription() const { return m_description; }
    void SetDescription(const ACE_CString& v) { m_description = v; }
    const ACE_CString& GetModality() const { return m_modality; }
    void SetModality(const ACE_CString& v) { m_modality = v; }
    const ACE_CString& GetBodyPart() const { return m_bodyPart; }
    void SetBodyPart(const ACE_CString& v) { m_bodyPart = v; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }

private:
    ACE_CString m_key;
    ACE_CString m_code;
    ACE_CString m_description;
    ACE_CString m_modality;
    ACE_CString m_bodyPart;
    ACE_CString m_organizationKey;
};
