#pragma once

#include "bravik_archive_export.h"

#include <orgoperations.h>
#include <orgoperationscollection.h>

#include <map>
#include <memory>
#include <string>

class ArchiveContext;

// The site's organizations, with the session user's rights in each. Read
// once; Reload() after organizations or rights change.
class BRAVIK_ARCHIVE_EXPORT SqliteOrgCollection : public OrgOperationsCollection
{
public:
    explicit SqliteOrgCollection(ArchiveContext& context);
    ~SqliteOrgCollection() override;

    ACE_CString OrganizationIDsToKeys(const ACE_CString& ids, int flags) override;
    ACE_CString OrganizationKeysToIDs(const ACE_CString& keys) override;
    ACE_CString GetOrgIdFromKey(const ACE_CString& key) override;
    const OrgOperations* GetOrgFromKey(const ACE_CString& key) override;
    ACE_CString GetFederatedOrgID() override;
    std::vector<const OrgOperations*> GetOrganizations() override;

    void Reload();

private:
    void Load();

    ArchiveContext& m_ctx;
    bool m_loaded = false;
    // By key, so iteration is in byte-wise key order.
    std::map<std::string, std::unique_ptr<OrgOperations>> m_byKey;
    // Objects handed out stay valid after a reload.
    std::vector<std::unique_ptr<OrgOperations>> m_retired;
};
