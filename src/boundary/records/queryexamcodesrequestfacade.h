#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// Parameters of DictionaryService::QueryExamCodes. The exam code may carry
// the service's wildcards.
class BRAVIK_RECORDS_EXPORT QueryExamCodesRequestFacade
{
public:
    static const char* ExamCodeParamName() { return "ExamCode"; }
    static const char* OrgKeyParamName() { return "OrganizationKey"; }

    void SetExamCode(const ACE_CString& v) { m_examCode = v; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    const ACE_CString& GetExamCode() const { return m_examCode; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }

private:
    ACE_CString m_examCode;
    ACE_CString m_organizationKey;
};
