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
        eCREATE_PATIENT
    };
    using Provider = std::function<bool(eRIGHT right, const ACE_CString& organizationID)>;

    bool HasLinkPatientRight(const ACE_CString& organizationID) const;
    bool HasLinkPatientRight(const char* organizationID) const;
    bool HasMergePatientRight(const ACE_CString& organizationID) const;
    bool HasMergePatientRight(const char* organizationID) const;
    bool HasCreatePatientRight(const ACE_CString& organizationID) const;
    bool HasCreatePatientRight(const char* organizationID) const;

    // Returns the provider it replaced. An empty provider grants everything.
    Provider SetProvider(Provider provider);
    void Reset() { m_provider = nullptr; }

private:
    bool Ask(eRIGHT right, const ACE_CString& organizationID) const;

    Provider m_provider;
};
