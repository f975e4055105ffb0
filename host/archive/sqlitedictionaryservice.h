#pragma once

#include "bravik_archive_export.h"

#include <dictionaryservice.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

class ArchiveContext;

// Dictionaries from the archive. Each topic is read once per service and kept:
// the module holds pointers to the records for the whole session.
class BRAVIK_ARCHIVE_EXPORT SqliteDictionaryService : public DictionaryService
{
public:
    explicit SqliteDictionaryService(ArchiveContext& context);
    ~SqliteDictionaryService() override;

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

    // Priority codes in rank order (for the work list's ranking).
    std::vector<ACE_CString> PriorityCodesByRank();
    // Forgets what was read, for a host that edits dictionaries.
    void Reload();

private:
    // parent: the country of states; "*" every parent.
    const std::vector<DictionaryRecord*>& Topic(int topic, const std::string& parent = std::string());

    ArchiveContext& m_ctx;
    std::vector<std::unique_ptr<DictionaryRecord>> m_records;
    std::map<std::pair<int, std::string>, std::vector<DictionaryRecord*>> m_topics;
};
