#pragma once

#include "bravik_records_export.h"
#include "bdatetime.h"

#include <ace/SString.h>

// The query for merge and link candidates. Name and MRN criteria are in the
// service's wildcard form (see ParamUtils::ConvertToWildcardQueryString).
// Organization key lists are separated by BParser::DEFAULT_SEP; an empty list
// means every organization and the all-zero key NO_ORGANIZATIONS switches that
// half (merge or link) of the search off. An empty begin/end birth date means
// an open end.
class BRAVIK_RECORDS_EXPORT MergeLinkCandidatesQueryDataSet
{
public:
    static const char* const NO_ORGANIZATIONS; // "00000000-0000-0000-0000-000000000000"

    MergeLinkCandidatesQueryDataSet() = default;

    void SetLastName(const ACE_CString& v) { m_lastName = v; }
    void SetFirstName(const ACE_CString& v) { m_firstName = v; }
    void SetMRN(const ACE_CString& v) { m_mrn = v; }
    // The patient global identifiers, a separated list.
    void SetSSN(const ACE_CString& v) { m_ssn = v; }
    void SetSexCode(const ACE_CString& v) { m_sexCode = v; }
    void SetReason(const ACE_CString& v) { m_reason = v; }
    void SetMergeOrganizationKeys(const ACE_CString& v) { m_mergeOrganizationKeys = v; }
    void SetLinkOrganizationKeys(const ACE_CString& v) { m_linkOrganizationKeys = v; }
    // The row limit as decimal text.
    void SetRowCount(const ACE_CString& v) { m_rowCount = v; }
    void SetBeginBirthDate(const BDateTime& v) { m_beginBirthDate = v; }
    void SetEndBirthDate(const BDateTime& v) { m_endBirthDate = v; }
    void SetUseNumericMRN(bool v) { m_useNumericMRN = v; }

    const ACE_CString& GetLastName() const { return m_lastName; }
    const ACE_CString& GetFirstName() const { return m_firstName; }
    const ACE_CString& GetMRN() const { return m_mrn; }
    const ACE_CString& GetSSN() const { return m_ssn; }
    const ACE_CString& GetSexCode() const { return m_sexCode; }
    const ACE_CString& GetReason() const { return m_reason; }
    const ACE_CString& GetMergeOrganizationKeys() const { return m_mergeOrganizationKeys; }
    const ACE_CString& GetLinkOrganizationKeys() const { return m_linkOrganizationKeys; }
    const ACE_CString& GetRowCount() const { return m_rowCount; }
    // The row limit as a number; 0 (no limit) when the text is empty or not a number.
    int GetRowCountValue() const;
    const BDateTime& GetBeginBirthDate() const { return m_beginBirthDate; }
    const BDateTime& GetEndBirthDate() const { return m_endBirthDate; }
    bool GetUseNumericMRN() const { return m_useNumericMRN; }

private:
    ACE_CString m_lastName;
    ACE_CString m_firstName;
    ACE_CString m_mrn;
    ACE_CString m_ssn;
    ACE_CString m_sexCode;
    ACE_CString m_reason;
    ACE_CString m_mergeOrganizationKeys;
    ACE_CString m_linkOrganizationKeys;
    ACE_CString m_rowCount;
    BDateTime m_beginBirthDate;
    BDateTime m_endBirthDate;
    bool m_useNumericMRN = false;
};
