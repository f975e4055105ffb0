#pragma once

#include "dictionaryservice.h"
#include "servicefaults.h"
#include "stubservices.h"

// Forwards every call to the wrapped service (a failing stub when none),
// recording it and injecting the faults set in the shared ServiceFaults. A
// failed dictionary getter answers an empty list.
class FaultyDictionaryService : public DictionaryService
{
public:
    FaultyDictionaryService(DictionaryService* inner, ServiceFaults& faults) : m_inner(inner), m_faults(faults) {}

    DictionaryService* GetInner() const { return m_inner; }

    const std::vector<DictionaryRecord*>& GetDictionary(eTOPICCODE topic) override;
    ACE_CString GetDescriptionForCode(eTOPICCODE topic, const ACE_CString& code,
                                      const ACE_CString& organizationKey) override;
    std::vector<DictionaryRecord*> ListCountryStates(const ACE_CString& countryCode) override;
    const std::vector<DictionaryRecord*>& GetDeleteExamReasonDictionary() override;
    const std::vector<DictionaryRecord*>& GetCancelExamReasonDictionary() override;
    const std::vector<DictionaryRecord*>& GetDeletePatientsReasonDictionary() override;
    const std::vector<DictionaryRecord*>& GetDetachStudyReasonDictionary() override;
    const std::vector<DictionaryRecord*>& GetLinkMergeReasonDictionary() override;
    const std::vector<DictionaryRecord*>& GetExamPriorityCodes() override;
    const std::vector<DictionaryRecord*>& GetDiagnosticImageStatusCodes() override;
    int QueryExamCodes(QueryExamCodesRequestFacade& request, std::vector<ExamCodeRecord*>& codes) override;
    int QueryExamCodeModifiers(QueryExamCodeModifiersRequestFacade& request,
                               std::vector<ExamCodeModifierDataSet*>& modifiers) override;
    int QueryLocationData(const QueryLocationDataRequestFacade& request, std::vector<LocationDataSet*>& locations,
                          bool activeOnly) override;
    int QueryPerformingResources(const PerformingResourceDataSet* queryTemplate,
                                 std::vector<PerformingResourceDataSet*>& resources) override;

private:
    DictionaryService& Inner() { return m_inner ? *m_inner : m_stub; }

    DictionaryService* m_inner;
    ServiceFaults& m_faults;
    StubDictionaryService m_stub;
    std::vector<DictionaryRecord*> m_empty;
};
