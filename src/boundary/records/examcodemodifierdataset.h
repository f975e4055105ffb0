#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// One exam code modifier (e.g. "LT" left, "BI" bilateral).
class BRAVIK_RECORDS_EXPORT ExamCodeModifierDataSet
{
public:
    ExamCodeModifierDataSet() = default;

    const ACE_CString& GetKey() const { return m_key; }
    void SetKey(const ACE_CString& v) { m_key = v; }
    const ACE_CString& GetCode() const { return m_code; }
    void SetCode(const ACE_CString& v) { m_code = v; }
    const ACE_CString& GetDescription() const { return m_description; }
    void SetDescription(const ACE_CString& v) { m_description = v; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    // The code: what a picker shows for the modifier.
    ACE_CString GetDisplayText() const { return m_code; }

private:
    ACE_CString m_key;
    ACE_CString m_code;
    ACE_CString m_description;
    ACE_CString m_organizationKey;
};
