#include "faultyorgoperationscollection.h"

#include "faultmacros.h"

#include <string>

ACE_CString FaultyOrgOperationsCollection::OrganizationIDsToKeys(const ACE_CString& ids, int flags)
{
    BRAVIK_FAULT("OrganizationIDsToKeys", ACE_CString(), Str(ids), std::to_string(flags));
    return Inner().OrganizationIDsToKeys(ids, flags);
}

ACE_CString FaultyOrgOperationsCollection::OrganizationKeysToIDs(const ACE_CString& keys)
{
    BRAVIK_FAULT("OrganizationKeysToIDs", ACE_CString(), Str(keys));
    return Inner().OrganizationKeysToIDs(keys);
}

ACE_CString FaultyOrgOperationsCollection::GetOrgIdFromKey(const ACE_CString& key)
{
    BRAVIK_FAULT("GetOrgIdFromKey", ACE_CString(), Str(key));
    return Inner().GetOrgIdFromKey(key);
}

const OrgOperations* FaultyOrgOperationsCollection::GetOrgFromKey(const ACE_CString& key)
{
    BRAVIK_FAULT("GetOrgFromKey", nullptr, Str(key));
    return Inner().GetOrgFromKey(key);
}

ACE_CString FaultyOrgOperationsCollection::GetFederatedOrgID()
{
    BRAVIK_FAULT("GetFederatedOrgID", ACE_CString());
    return Inner().GetFederatedOrgID();
}

std::vector<const OrgOperations*> FaultyOrgOperationsCollection::GetOrganizations()
{
    BRAVIK_FAULT("GetOrganizations", std::vector<const OrgOperations*>());
    return Inner().GetOrganizations();
}
