#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

#include <vector>

class OrgOperations;

// The site's organizations. Lists travel as one string joined by
// BParser::DEFAULT_SEP; the translations trim every token and skip empty ones.
class BRAVIK_RECORDS_EXPORT OrgOperationsCollection
{
public:
    // flags of OrganizationIDsToKeys.
    enum
    {
        DROP_UNKNOWN = 0, // unknown IDs are left out of the result
        KEEP_UNKNOWN = 1  // unknown IDs are passed through unchanged
    };

    virtual ~OrgOperationsCollection();

    // IDs are matched ignoring case; the keys come back in the order of the IDs.
    virtual ACE_CString OrganizationIDsToKeys(const ACE_CString& ids, int flags) = 0;
    // Unknown keys are left out.
    virtual ACE_CString OrganizationKeysToIDs(const ACE_CString& keys) = 0;
    // Empty for an unknown key.
    virtual ACE_CString GetOrgIdFromKey(const ACE_CString& key) = 0;
    // Null for an unknown key; the object belongs to the collection.
    virtual const OrgOperations* GetOrgFromKey(const ACE_CString& key) = 0;
    // Empty when the site has no federated organization.
    virtual ACE_CString GetFederatedOrgID() = 0;
    // Every organization, in key order (byte-wise); the objects belong to the collection.
    virtual std::vector<const OrgOperations*> GetOrganizations() = 0;
};
