#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// A performing resource (a modality room or device). As a query template,
// SetAll() asks for every attribute of the matching resources; the
// organization key and the key or ID that are set are the criteria.
class BRAVIK_RECORDS_EXPORT PerformingResourceDataSet
{
public:
    PerformingResourceDataSet() = default;

    void SetAll() { m_all = true; }
    bool IsAll() const { return m_all; }

    const ACE_CString& GetKey() const { return m_key; }
    void SetKey(const ACE_CString& v) { m_key = v; }
    const ACE_CString& GetResourceId() const { return m_id; }
    void SetResourceId(const ACE_CString& v) { m_id = v; }
    const ACE_CString& GetName() const { return m_name; }
    void SetName(const ACE_CString& v) { m_name = v; }
    const ACE_CString& GetModality() const { return m_modality; }
    void SetModality(const ACE_CString& v) { m_modality = v; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    // The resource ID: what a picker shows.
    ACE_CString GetDisplayText() const { return m_id; }

private:
    bool m_all = false;
    ACE_CString m_key;
    ACE_CString m_id;
    ACE_CString m_name;
    ACE_CString m_modality;
    ACE_CString m_organizationKey;
};
