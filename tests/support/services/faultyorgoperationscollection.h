#pragma once

#include "orgoperationscollection.h"
#include "servicefaults.h"
#include "stubservices.h"

// Forwards every call to the wrapped collection (a failing stub when none),
// recording it and injecting the faults set in the shared ServiceFaults.
class FaultyOrgOperationsCollection : public OrgOperationsCollection
{
public:
    FaultyOrgOperationsCollection(OrgOperationsCollection* inner, ServiceFaults& faults)
        : m_inner(inner), m_faults(faults) {}

    OrgOperationsCollection* GetInner() const { return m_inner; }

    ACE_CString OrganizationIDsToKeys(const ACE_CString& ids, int flags) override;
    ACE_CString OrganizationKeysToIDs(const ACE_CString& keys) override;
    ACE_CString GetOrgIdFromKey(const ACE_CString& key) override;
    const OrgOperations* GetOrgFromKey(const ACE_CString& key) override;
    ACE_CString GetFederatedOrgID() override;
    std::vector<const OrgOperations*> GetOrganizations() override;

private:
    OrgOperationsCollection& Inner() { return m_inner ? *m_inner : m_stub; }

    OrgOperationsCollection* m_inner;
    ServiceFaults& m_faults;
    StubOrgOperationsCollection m_stub;
};
