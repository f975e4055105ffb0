#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// The exam attributes work-list rules look at.
class BRAVIK_RECORDS_EXPORT ExamQueryRecord
{
public:
    ExamQueryRecord() = default;

    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    const ACE_CString& GetExamKey() const { return m_examKey; }
    void SetExamKey(const ACE_CString& v) { m_examKey = v; }
    const ACE_CString& GetStatusCode() const { return m_statusCode; }
    void SetStatusCode(const ACE_CString& v) { m_statusCode = v; }
    bool IsMarkedRead() const { return m_markedRead; }
    void SetMarkedRead(bool v) { m_markedRead = v; }
    // "true" when the exam is linked.
    const ACE_CString& GetLinkedFlag() const { return m_linkedFlag; }
    void SetLinkedFlag(const ACE_CString& v) { m_linkedFlag = v; }

private:
    ACE_CString m_organizationKey;
    ACE_CString m_examKey;
    ACE_CString m_statusCode;
    bool m_markedRead = false;
    ACE_CString m_linkedFlag;
};
