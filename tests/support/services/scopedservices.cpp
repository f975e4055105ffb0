#include "scopedservices.h"

#include "serviceregistry.h"
#include "session.h"

#include <stdexcept>

ScopedServices::ScopedServices(PatientManagementService* patients, ExamService* exams,
                               DictionaryService* dictionaries, ProviderService* providers,
                               OrgOperationsCollection* organizations)
    : m_registry(Session::ServiceInstance())
{
    if (!m_registry)
        throw std::logic_error("ScopedServices: the session has no service registry");
    if (patients)
        Patients(patients);
    if (exams)
        Exams(exams);
    if (dictionaries)
        Dictionaries(dictionaries);
    if (providers)
        Providers(providers);
    if (organizations)
        Organizations(organizations);
}

ScopedServices::~ScopedServices()
{
    if (m_patients.saved)
        m_registry->SetPatientManagementService(m_patients.previous);
    if (m_exams.saved)
        m_registry->SetExamService(m_exams.previous);
    if (m_dictionaries.saved)
        m_registry->SetDictionaryService(m_dictionaries.previous);
    if (m_providers.saved)
        m_registry->SetProviderService(m_providers.previous);
    if (m_organizations.saved)
        m_registry->SetOrgOperationsCollection(m_organizations.previous);
}

// Only the first replacement of a slot remembers what was there before us.
#define BRAVIK_SCOPED_SET(slot, setter)          \
    do {                                         \
        auto* previous = m_registry->setter(s);  \
        if (!slot.saved) {                       \
            slot.saved = true;                   \
            slot.previous = previous;            \
        }                                        \
        return *this;                            \
    } while (0)

ScopedServices& ScopedServices::Patients(PatientManagementService* s)
{
    BRAVIK_SCOPED_SET(m_patients, SetPatientManagementService);
}

ScopedServices& ScopedServices::Exams(ExamService* s)
{
    BRAVIK_SCOPED_SET(m_exams, SetExamService);
}

ScopedServices& ScopedServices::Dictionaries(DictionaryService* s)
{
    BRAVIK_SCOPED_SET(m_dictionaries, SetDictionaryService);
}

ScopedServices& ScopedServices::Providers(ProviderService* s)
{
    BRAVIK_SCOPED_SET(m_providers, SetProviderService);
}

ScopedServices& ScopedServices::Organizations(OrgOperationsCollection* s)
{
    BRAVIK_SCOPED_SET(m_organizations, SetOrgOperationsCollection);
}
