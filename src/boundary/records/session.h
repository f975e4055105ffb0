#pragma once

#include "bravik_records_export.h"
#include "serviceregistry.h"
#include "userrights.h"

#include <ace/SString.h>

#include <functional>

class AuditAndLogParams;

// The client session: the logged-in user, the user's rights, the registry of
// services and the audit trail. One per process.
class BRAVIK_RECORDS_EXPORT Session
{
public:
    // Receives every audit entry; returns 0 when it was recorded.
    using AuditSink = std::function<int(const AuditAndLogParams& params, const ACE_CString& comment)>;

    static Session& Instance();
    // The registry of services; null when the host has taken it away
    // (InstallServiceRegistry(nullptr)), which callers must tolerate.
    static ServiceRegistry* ServiceInstance();

    // Writes one audit entry through the installed sink and returns its
    // result. Without a sink nothing is written and 0 is returned.
    int AuditAndLog(const AuditAndLogParams& params, const ACE_CString& comment);
    int AuditAndLog(const AuditAndLogParams& params, const char* comment);

    UserRights& GetUserRights() { return m_rights; }
    const UserRights& GetUserRights() const { return m_rights; }

    const ACE_CString& GetUserName() const { return m_userName; }
    void SetUserName(const ACE_CString& v) { m_userName = v; }

    // Returns the sink it replaced.
    AuditSink SetAuditSink(AuditSink sink);
    // Makes ServiceInstance() return registry (the session's own one when
    // registry is the value of OwnRegistry()); returns the one it replaced.
    ServiceRegistry* InstallServiceRegistry(ServiceRegistry* registry);
    ServiceRegistry* OwnRegistry() { return &m_ownRegistry; }

    // Back to the start state: own registry emptied and current, no sink, no
    // rights provider, no user.
    void Reset();

private:
    Session();

    ServiceRegistry m_ownRegistry;
    ServiceRegistry* m_registry;
    UserRights m_rights;
    AuditSink m_auditSink;
    ACE_CString m_userName;
};
