#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// Parameters of DictionaryService::QueryExamCodeModifiers.
class BRAVIK_RECORDS_EXPORT QueryExamCodeModifiersRequestFacade
{
public:
    static const char* CodeParamName() { return "Code"; }
    static const char* OrgKeyParamName() { return "OrganizationKey"; }

    void SetCode(const ACE_CString& v) { m_code = v; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    const ACE_CString& GetCode() const { return m_code; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }

private:
    ACE_CString m_code;
    ACE_CString m_organizationKey;
};
