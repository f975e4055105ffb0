#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// An ordering location.
class BRAVIK_RECORDS_EXPORT LocationDataSet
{
public:
    LocationDataSet() = default;

    const ACE_CString& GetLocationKey() const { return m_key; }
    void SetLocationKey(const ACE_CString& v) { m_key = v; }
    const ACE_CString& GetLocationId() const { return m_id; }
    void SetLocationId(const ACE_CString& v) { m_id = v; }
    const ACE_CString& GetName() const { return m_name; }
    void SetName(const ACE_CString& v) { m_name = v; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    bool IsActive() const { return m_active; }
    void SetActive(bool v) { m_active = v; }
    // The location ID: what a picker shows.
    ACE_CString GetDisplayText() const { return m_id; }

private:
    ACE_CString m_key;
    ACE_CString m_id;
    ACE_CString m_name;
    ACE_CString m_organizationKey;
    bool m_active = true;
};
