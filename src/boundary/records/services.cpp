// Out-of-line destructors anchor the service interfaces' vtables in this library.
#include "dictionaryservice.h"
#include "examservice.h"
#include "orgoperations.h"
#include "orgoperationscollection.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "providerservice.h"
#include "sitepolicy.h"

#include <cstring>

PatientManagementService::~PatientManagementService() = default;
ExamService::~ExamService() = default;
DictionaryService::~DictionaryService() = default;
ProviderService::~ProviderService() = default;
OrgOperationsCollection::~OrgOperationsCollection() = default;
OrgOperations::~OrgOperations() = default;

bool PatientManagementService::IsEmptyPatientFirstNameAllowed()
{
    return SitePolicy::Get().emptyFirstNameAllowed;
}

bool PatientManagementService::IsPatientFirstNameValid(const PatientDetailRecord* record)
{
    if (!record)
        return false;
    const char* first = record->GetFirstName().c_str();
    for (const char* p = first; *p; ++p)
        if (!std::strchr(" \t\r\n", *p))
            return true;
    return IsEmptyPatientFirstNameAllowed();
}
