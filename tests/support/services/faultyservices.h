#pragma once

#include "faultydictionaryservice.h"
#include "faultyexamservice.h"
#include "faultyorgoperationscollection.h"
#include "faultypatientmanagementservice.h"
#include "faultyproviderservice.h"
#include "scopedservices.h"
#include "servicefaults.h"

#include <memory>

// Wraps every service currently installed in the session's registry in a
// fault decorator and installs the decorators; the originals come back on
// destruction. Typical use, over an archive fixture:
//   FaultyServices faulty;
//   faulty.faults.ThrowOn("CreateExam", "disk full");
//   ... run the dialog ...
//   EXPECT_EQ(faulty.faults.Operations(), (std::vector<std::string>{...}));
class FaultyServices
{
public:
    FaultyServices();
    ~FaultyServices();

    ServiceFaults faults;

    FaultyPatientManagementService& Patients() { return *m_patients; }
    FaultyExamService& Exams() { return *m_exams; }
    FaultyDictionaryService& Dictionaries() { return *m_dictionaries; }
    FaultyProviderService& Providers() { return *m_providers; }
    FaultyOrgOperationsCollection& Organizations() { return *m_organizations; }

private:
    std::unique_ptr<FaultyPatientManagementService> m_patients;
    std::unique_ptr<FaultyExamService> m_exams;
    std::unique_ptr<FaultyDictionaryService> m_dictionaries;
    std::unique_ptr<FaultyProviderService> m_providers;
    std::unique_ptr<FaultyOrgOperationsCollection> m_organizations;
    std::unique_ptr<ScopedServices> m_scope;
};
