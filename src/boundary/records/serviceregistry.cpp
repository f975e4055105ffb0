#include "serviceregistry.h"

#include <utility>

PatientManagementService* ServiceRegistry::SetPatientManagementService(PatientManagementService* s)
{
    return std::exchange(m_patients, s);
}

ExamService* ServiceRegistry::SetExamService(ExamService* s)
{
    return std::exchange(m_exams, s);
}

DictionaryService* ServiceRegistry::SetDictionaryService(DictionaryService* s)
{
    return std::exchange(m_dictionaries, s);
}

ProviderService* ServiceRegistry::SetProviderService(ProviderService* s)
{
    return std::exchange(m_providers, s);
}

OrgOperationsCollection* ServiceRegistry::SetOrgOperationsCollection(OrgOperationsCollection* s)
{
    return std::exchange(m_organizations, s);
}

void ServiceRegistry::Clear()
{
    m_patients = nullptr;
    m_exams = nullptr;
    m_dictionaries = nullptr;
    m_providers = nullptr;
    m_organizations = nullptr;
}
