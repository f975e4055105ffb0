#include "faultydictionaryservice.h"

#include "faultmacros.h"
#include "performingresourcedataset.h"
#include "queryexamcodemodifiersrequestfacade.h"
#include "queryexamcodesrequestfacade.h"
#include "querylocationdatarequestfacade.h"

#include <string>

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetDictionary(eTOPICCODE topic)
{
    BRAVIK_FAULT("GetDictionary", m_empty, std::to_string(int(topic)));
    return Inner().GetDictionary(topic);
}

ACE_CString FaultyDictionaryService::GetDescriptionForCode(eTOPICCODE topic, const ACE_CString& code,
                                                           const ACE_CString& organizationKey)
{
    BRAVIK_FAULT("GetDescriptionForCode", ACE_CString(), std::to_string(int(topic)), Str(code), Str(organizationKey));
    return Inner().GetDescriptionForCode(topic, code, organizationKey);
}

std::vector<DictionaryRecord*> FaultyDictionaryService::ListCountryStates(const ACE_CString& countryCode)
{
    BRAVIK_FAULT("ListCountryStates", std::vector<DictionaryRecord*>(), Str(countryCode));
    return Inner().ListCountryStates(countryCode);
}

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetDeleteExamReasonDictionary()
{
    BRAVIK_FAULT("GetDeleteExamReasonDictionary", m_empty);
    return Inner().GetDeleteExamReasonDictionary();
}

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetCancelExamReasonDictionary()
{
    BRAVIK_FAULT("GetCancelExamReasonDictionary", m_empty);
    return Inner().GetCancelExamReasonDictionary();
}

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetDeletePatientsReasonDictionary()
{
    BRAVIK_FAULT("GetDeletePatientsReasonDictionary", m_empty);
    return Inner().GetDeletePatientsReasonDictionary();
}

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetDetachStudyReasonDictionary()
{
    BRAVIK_FAULT("GetDetachStudyReasonDictionary", m_empty);
    return Inner().GetDetachStudyReasonDictionary();
}

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetLinkMergeReasonDictionary()
{
    BRAVIK_FAULT("GetLinkMergeReasonDictionary", m_empty);
    return Inner().GetLinkMergeReasonDictionary();
}

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetExamPriorityCodes()
{
    BRAVIK_FAULT("GetExamPriorityCodes", m_empty);
    return Inner().GetExamPriorityCodes();
}

const std::vector<DictionaryRecord*>& FaultyDictionaryService::GetDiagnosticImageStatusCodes()
{
    BRAVIK_FAULT("GetDiagnosticImageStatusCodes", m_empty);
    return Inner().GetDiagnosticImageStatusCodes();
}

int FaultyDictionaryService::QueryExamCodes(QueryExamCodesRequestFacade& request, std::vector<ExamCodeRecord*>& codes)
{
    BRAVIK_FAULT_INT("QueryExamCodes", Str(request.GetExamCode()), Str(request.GetOrganizationKey()));
    return Inner().QueryExamCodes(request, codes);
}

int FaultyDictionaryService::QueryExamCodeModifiers(QueryExamCodeModifiersRequestFacade& request,
                                                    std::vector<ExamCodeModifierDataSet*>& modifiers)
{
    BRAVIK_FAULT_INT("QueryExamCodeModifiers", Str(request.GetCode()), Str(request.GetOrganizationKey()));
    return Inner().QueryExamCodeModifiers(request, modifiers);
}

int FaultyDictionaryService::QueryLocationData(const QueryLocationDataRequestFacade& request,
                                               std::vector<LocationDataSet*>& locations, bool activeOnly)
{
    BRAVIK_FAULT_INT("QueryLocationData", Str(request.GetLocationId()), Str(request.GetLocationKey()),
                     Str(request.GetOrganizationKey()), activeOnly ? "1" : "0");
    return Inner().QueryLocationData(request, locations, activeOnly);
}

int FaultyDictionaryService::QueryPerformingResources(const PerformingResourceDataSet* queryTemplate,
                                                      std::vector<PerformingResourceDataSet*>& resources)
{
    BRAVIK_FAULT_INT("QueryPerformingResources", queryTemplate ? Str(queryTemplate->GetKey()) : std::string("<null>"),
                     queryTemplate ? Str(queryTemplate->GetOrganizationKey()) : std::string());
    return Inner().QueryPerformingResources(queryTemplate, resources);
}
