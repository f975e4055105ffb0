#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

#include <functional>

// The logged-in user's rights, by organization ID. The host installs a
// provider that decides; with none installed every right is granted (a
// workstation without rights administration).
class BRAVIK_RECORDS_EXPORT UserRights
{
public:
    enum eRIGHT
    {
        eLINK_PATIENT,
        eMERGE_PATIENT,
        eCREATE_PATIENT,
        // The host's exam commands: create and edit exams, delete or cancel
        // exams, detach studies.
        eEDIT_EXAM,
        eDELETE_EXAM,
        eDETACH_STUDY
    };
    using Provider = std::function<bool(eRIGHT right, const ACE_CString& organizationID)>;

    bool HasLinkPatientRight(const ACE_CString& organizationID) const;
    bool HasLinkPatientRight(const char* organizationID) const;
    bool HasMergePatientRight(const ACE_CString& organizationID) const;
    bool HasMergePatientRight(const char* organizationID) const;
    bool HasCreatePatientRight(const ACE_CString& organizationID) const;
    bool HasCreatePatientRight(const char* organizationID) const;

    // Any right by its code (the host asks for the exam rights this way).
    bool Has(eRIGHT right, const ACE_CString& organizationID) const { return Ask(right, organizationID); }

    // Returns the provider it replaced. An empty provider grants everything.
    Provider SetProvider(Provider provider);
    void Reset() { m_provider = nullptr; }

private:
    bool Ask(eRIGHT right, const ACE_CString& organizationID) const;

    Provider m_provider;
};
