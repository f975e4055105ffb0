#pragma once

class PatientManagementService;
class ExamService;
class DictionaryService;
class ProviderService;
class OrgOperationsCollection;
class ServiceRegistry;

// Installs services into the session's current ServiceRegistry for the
// lifetime of the object and puts the previous ones back on destruction.
// The constructor installs every non-null argument; the setters install
// one service each (null included, to take a service away).
class ScopedServices
{
public:
    explicit ScopedServices(PatientManagementService* patients = nullptr, ExamService* exams = nullptr,
                            DictionaryService* dictionaries = nullptr, ProviderService* providers = nullptr,
                            OrgOperationsCollection* organizations = nullptr);
    ~ScopedServices();
    ScopedServices(const ScopedServices&) = delete;
    ScopedServices& operator=(const ScopedServices&) = delete;

    ScopedServices& Patients(PatientManagementService* s);
    ScopedServices& Exams(ExamService* s);
    ScopedServices& Dictionaries(DictionaryService* s);
    ScopedServices& Providers(ProviderService* s);
    ScopedServices& Organizations(OrgOperationsCollection* s);

private:
    template <typename T> struct Slot
    {
        bool saved = false;
        T* previous = nullptr;
    };

    ServiceRegistry* m_registry;
    Slot<PatientManagementService> m_patients;
    Slot<ExamService> m_exams;
    Slot<DictionaryService> m_dictionaries;
    Slot<ProviderService> m_providers;
    Slot<OrgOperationsCollection> m_organizations;
};
