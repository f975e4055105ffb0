#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// One coded value of a dictionary. Dictionaries hand out pointers to records
// they own; callers never free them.
class BRAVIK_RECORDS_EXPORT DictionaryRecord
{
public:
    DictionaryRecord() = default;
    DictionaryRecord(const ACE_CString& code, const ACE_CString& description,
                     const ACE_CString& organizationKey = ACE_CString())
        : m_code(code), m_description(description), m_organizationKey(organizationKey) {}

    const ACE_CString& GetCode() const { return m_code; }
    const ACE_CString& GetDescription() const { return m_description; }
    // Empty for a value shared by every organization.
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetCode(const ACE_CString& v) { m_code = v; }
    void SetDescription(const ACE_CString& v) { m_description = v; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }

private:
    ACE_CString m_code;
    ACE_CString m_description;
    ACE_CString m_organizationKey;
};
