#include "faultyservices.h"

#include "serviceregistry.h"
#include "session.h"

#include <stdexcept>

FaultyServices::FaultyServices()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    if (!registry)
        throw std::logic_error("FaultyServices: the session has no service registry");
    m_patients = std::make_unique<FaultyPatientManagementService>(registry->GetPatientManagementService(), faults);
    m_exams = std::make_unique<FaultyExamService>(registry->GetExamService(), faults);
    m_dictionaries = std::make_unique<FaultyDictionaryService>(registry->GetDictionaryService(), faults);
    m_providers = std::make_unique<FaultyProviderService>(registry->GetProviderService(), faults);
    m_organizations = std::make_unique<FaultyOrgOperationsCollection>(registry->GetOrgOperationsCollection(), faults);
    m_scope = std::make_unique<ScopedServices>(m_patients.get(), m_exams.get(), m_dictionaries.get(),
                                               m_providers.get(), m_organizations.get());
}

FaultyServices::~FaultyServices()
{
    // Restore the originals before the decorators go away.
    m_scope.reset();
}
