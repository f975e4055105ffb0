#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

#include <vector>

class DictionaryRecord;
class ExamCodeRecord;
class ExamCodeModifierDataSet;
class LocationDataSet;
class PerformingResourceDataSet;
class QueryExamCodesRequestFacade;
class QueryExamCodeModifiersRequestFacade;
class QueryLocationDataRequestFacade;

// Dictionaries of coded values. Getters returning a vector by reference give
// records the service owns, valid for the session; callers never free them.
// Query results (the four Query... operations) are allocated for the caller,
// who frees them.
class BRAVIK_RECORDS_EXPORT DictionaryService
{
public:
    enum eTOPICCODE
    {
        eMARITAL_STATUS = 0,
        eLANGUAGE = 1,
        eCOUNTRY = 2,
        eSTATE = 3,
        eSEX = 4,
        eRACE = 5,
        eEXAM_STATUS = 6,
        eEXAM_PRIORITY = 7,
        eVIP_STATUS = 8
    };

    // Item text forms of the combo-box fillers.
    enum eFORMAT
    {
        eCODE = 0,
        eDESCRIPTION = 1,
        eCODE_DESCRIPTION = 2
    };

    virtual ~DictionaryService();

    virtual const std::vector<DictionaryRecord*>& GetDictionary(eTOPICCODE topic) = 0;
    // Empty when the code is unknown. An empty organization key means the
    // values shared by every organization.
    virtual ACE_CString GetDescriptionForCode(eTOPICCODE topic, const ACE_CString& code,
                                              const ACE_CString& organizationKey) = 0;
    // The states or provinces of a country; the records stay the service's.
    virtual std::vector<DictionaryRecord*> ListCountryStates(const ACE_CString& countryCode) = 0;

    virtual const std::vector<DictionaryRecord*>& GetDeleteExamReasonDictionary() = 0;
    virtual const std::vector<DictionaryRecord*>& GetCancelExamReasonDictionary() = 0;
    virtual const std::vector<DictionaryRecord*>& GetDeletePatientsReasonDictionary() = 0;
    virtual const std::vector<DictionaryRecord*>& GetDetachStudyReasonDictionary() = 0;
    virtual const std::vector<DictionaryRecord*>& GetLinkMergeReasonDictionary() = 0;

    virtual const std::vector<DictionaryRecord*>& GetExamPriorityCodes() = 0;
    virtual const std::vector<DictionaryRecord*>& GetDiagnosticImageStatusCodes() = 0;

    virtual int QueryExamCodes(QueryExamCodesRequestFacade& request, std::vector<ExamCodeRecord*>& codes) = 0;
    virtual int QueryExamCodeModifiers(QueryExamCodeModifiersRequestFacade& request,
                                       std::vector<ExamCodeModifierDataSet*>& modifiers) = 0;
    // activeOnly leaves out locations that are no longer in use.
    virtual int QueryLocationData(const QueryLocationDataRequestFacade& request,
                                  std::vector<LocationDataSet*>& locations, bool activeOnly) = 0;
    virtual int QueryPerformingResources(const PerformingResourceDataSet* queryTemplate,
                                         std::vector<PerformingResourceDataSet*>& resources) = 0;
};
