#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// Parameters of DictionaryService::QueryLocationData; unset criteria match everything.
class BRAVIK_RECORDS_EXPORT QueryLocationDataRequestFacade
{
public:
    static const char* LocationIdParamName() { return "LocationId"; }
    static const char* LocationKeyParamName() { return "LocationKey"; }
    static const char* OrgKeyParamName() { return "OrganizationKey"; }

    void SetLocationId(const ACE_CString& v) { m_locationId = v; }
    void SetLocationKey(const ACE_CString& v) { m_locationKey = v; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    const ACE_CString& GetLocationId() const { return m_locationId; }
    const ACE_CString& GetLocationKey() const { return m_locationKey; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }

private:
    ACE_CString m_locationId;
    ACE_CString m_locationKey;
    ACE_CString m_organizationKey;
};
