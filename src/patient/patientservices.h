#pragma once

// The services the patient pages call, fetched from the session at each call
// (never kept); null when the host installed none.

#include "orgoperationscollection.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "session.h"

namespace PatientServices {

inline PatientManagementService* Patients()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetPatientManagementService() : nullptr;
}

inline OrgOperationsCollection* Organizations()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetOrgOperationsCollection() : nullptr;
}

} // namespace PatientServices
