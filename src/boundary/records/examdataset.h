#pragma once

#include "bravik_records_export.h"
#include "bdatetime.h"
#include "examcodemodifierdataset.h"
#include "providerrecord.h"

#include <ace/SString.h>

#include <vector>

// One exam (order). Copyable value; owns its provider and modifier lists.
// Date/times are UTC instants (see BDateTime).
class BRAVIK_RECORDS_EXPORT ExamDataSet
{
public:
    ExamDataSet() = default;

    ACE_CString GetKey() const { return m_key; }
    void SetKey(const ACE_CString& v) { m_key = v; }
    const ACE_CString& GetPatientKey() const { return m_patientKey; }
    void SetPatientKey(const ACE_CString& v) { m_patientKey = v; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }

    const ACE_CString& GetAccessionNumber() const { return m_accessionNumber; }
    void SetAccessionNumber(const ACE_CString& v) { m_accessionNumber = v; }
    const ACE_CString& GetPriorityCode() const { return m_priorityCode; }
    void SetPriorityCode(const ACE_CString& v) { m_priorityCode = v; }
    // Status code: its first character is matched against the diagnostic
    // image status codes.
    const ACE_CString& GetStatusCode() const { return m_statusCode; }
    void SetStatusCode(const ACE_CString& v) { m_statusCode = v; }

    const BDateTime& GetScheduledDT() const { return m_scheduledDT; }
    void SetScheduledDT(const BDateTime& v) { m_scheduledDT = v; }
    const BDateTime& GetPerformedDT() const { return m_performedDT; }
    void SetPerformedDT(const BDateTime& v) { m_performedDT = v; }

    // Exam code
    const ACE_CString& GetExamCode() const { return m_examCode; }
    void SetExamCode(const ACE_CString& v) { m_examCode = v; }
    const ACE_CString& GetExamCodeKey() const { return m_examCodeKey; }
    void SetExamCodeKey(const ACE_CString& v) { m_examCodeKey = v; }
    const ACE_CString& GetModality() const { return m_modality; }
    void SetModality(const ACE_CString& v) { m_modality = v; }
    const ACE_CString& GetBodyPart() const { return m_bodyPart; }
    void SetBodyPart(const ACE_CString& v) { m_bodyPart = v; }
    const ACE_CString& GetDescription() const { return m_description; }
    void SetDescription(const ACE_CString& v) { m_description = v; }

    const std::vector<ExamCodeModifierDataSet>& GetExamCodeModifiers() const { return m_modifiers; }
    std::vector<ExamCodeModifierDataSet>& GetExamCodeModifiers() { return m_modifiers; }
    void SetExamCodeModifiers(const std::vector<ExamCodeModifierDataSet>& v) { m_modifiers = v; }
    // The modifiers' codes joined by BParser::DEFAULT_SEP (what the modifier picker shows).
    ACE_CString GetExamCodeModifiersText() const;

    const ACE_CString& GetPerformingResourceKey() const { return m_performingResourceKey; }
    void SetPerformingResourceKey(const ACE_CString& v) { m_performingResourceKey = v; }
    const ACE_CString& GetPerformingResourceId() const { return m_performingResourceId; }
    void SetPerformingResourceId(const ACE_CString& v) { m_performingResourceId = v; }
    const ACE_CString& GetOrderingLocationKey() const { return m_orderingLocationKey; }
    void SetOrderingLocationKey(const ACE_CString& v) { m_orderingLocationKey = v; }
    const ACE_CString& GetOrderingLocationId() const { return m_orderingLocationId; }
    void SetOrderingLocationId(const ACE_CString& v) { m_orderingLocationId = v; }

    // Providers; the referring physician is the first entry of type
    // ProviderRecord::eREFERRING.
    const std::vector<ProviderRecord>& GetProviders() const { return m_providers; }
    std::vector<ProviderRecord>& GetProviders() { return m_providers; }
    void SetProviders(const std::vector<ProviderRecord>& v) { m_providers = v; }
    void AddProvider(const ProviderRecord& v) { m_providers.push_back(v); }
    // The first provider of the type, or null.
    const ProviderRecord* FindProvider(ProviderRecord::ePROVIDERTYPE type) const;
    // Removes every provider of the type.
    void RemoveProviders(ProviderRecord::ePROVIDERTYPE type);

    // History texts
    const ACE_CString& GetSignsAndSymptoms() const { return m_signsAndSymptoms; }
    void SetSignsAndSymptoms(const ACE_CString& v) { m_signsAndSymptoms = v; }
    const ACE_CString& GetHistory() const { return m_history; }
    void SetHistory(const ACE_CString& v) { m_history = v; }
    const ACE_CString& GetComments() const { return m_comments; }
    void SetComments(const ACE_CString& v) { m_comments = v; }

    // "true" when the exam belongs to a link group (any other text: not linked).
    const ACE_CString& GetLinkedFlag() const { return m_linkedFlag; }
    void SetLinkedFlag(const ACE_CString& v) { m_linkedFlag = v; }
    // True when the exam has been read (reported).
    bool IsMarkedRead() const { return m_markedRead; }
    void SetMarkedRead(bool v) { m_markedRead = v; }

    // The version the exam was read at; the service refuses a save whose
    // version is no longer the stored one (another workstation saved since).
    long long GetVersion() const { return m_version; }
    void SetVersion(long long v) { m_version = v; }

private:
    ACE_CString m_key;
    ACE_CString m_patientKey;
    ACE_CString m_organizationKey;
    ACE_CString m_accessionNumber;
    ACE_CString m_priorityCode;
    ACE_CString m_statusCode;
    BDateTime m_scheduledDT;
    BDateTime m_performedDT;
    ACE_CString m_examCode;
    ACE_CString m_examCodeKey;
    ACE_CString m_modality;
    ACE_CString m_bodyPart;
    ACE_CString m_description;
    std::vector<ExamCodeModifierDataSet> m_modifiers;
    ACE_CString m_performingResourceKey;
    ACE_CString m_performingResourceId;
    ACE_CString m_orderingLocationKey;
    ACE_CString m_orderingLocationId;
    std::vector<ProviderRecord> m_providers;
    ACE_CString m_signsAndSymptoms;
    ACE_CString m_history;
    ACE_CString m_comments;
    ACE_CString m_linkedFlag;
    bool m_markedRead = false;
    long long m_version = 0;
};
