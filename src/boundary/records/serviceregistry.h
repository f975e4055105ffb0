#pragma once

#include "bravik_records_export.h"

class PatientManagementService;
class ExamService;
class DictionaryService;
class ProviderService;
class OrgOperationsCollection;

// Holds one instance of each service. The host (the workstation, the archive,
// a test) installs concrete services it owns; the registry never frees them.
// Each Set... returns the service it replaced, so a caller can restore it.
// Nobody should keep a service pointer beyond one call: fetch it anew.
class BRAVIK_RECORDS_EXPORT ServiceRegistry
{
public:
    ServiceRegistry() = default;
    ServiceRegistry(const ServiceRegistry&) = delete;
    ServiceRegistry& operator=(const ServiceRegistry&) = delete;

    PatientManagementService* GetPatientManagementService() const { return m_patients; }
    ExamService* GetExamService() const { return m_exams; }
    DictionaryService* GetDictionaryService() const { return m_dictionaries; }
    ProviderService* GetProviderService() const { return m_providers; }
    OrgOperationsCollection* GetOrgOperationsCollection() const { return m_organizations; }

    PatientManagementService* SetPatientManagementService(PatientManagementService* s);
    ExamService* SetExamService(ExamService* s);
    DictionaryService* SetDictionaryService(DictionaryService* s);
    ProviderService* SetProviderService(ProviderService* s);
    OrgOperationsCollection* SetOrgOperationsCollection(OrgOperationsCollection* s);

    // Forgets every service.
    void Clear();

private:
    PatientManagementService* m_patients = nullptr;
    ExamService* m_exams = nullptr;
    DictionaryService* m_dictionaries = nullptr;
    ProviderService* m_providers = nullptr;
    OrgOperationsCollection* m_organizations = nullptr;
};
