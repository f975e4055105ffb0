#include "session.h"

#include "auditandlogparams.h"

#include <utility>

Session::Session() : m_registry(&m_ownRegistry)
{
}

Session& Session::Instance()
{
    static Session session;
    return session;
}

ServiceRegistry* Session::ServiceInstance()
{
    return Instance().m_registry;
}

int Session::AuditAndLog(const AuditAndLogParams& params, const ACE_CString& comment)
{
    if (m_auditSink)
        return m_auditSink(params, comment);
    // No trail installed (a bare workstation): nothing to record, and no log
    // line either, so hosts that watch the log see only their own lines.
    (void)comment;
    return 0;
}

int Session::AuditAndLog(const AuditAndLogParams& params, const char* comment)
{
    return AuditAndLog(params, ACE_CString(comment ? comment : ""));
}

Session::AuditSink Session::SetAuditSink(AuditSink sink)
{
    return std::exchange(m_auditSink, std::move(sink));
}

ServiceRegistry* Session::InstallServiceRegistry(ServiceRegistry* registry)
{
    return std::exchange(m_registry, registry);
}

void Session::Reset()
{
    m_ownRegistry.Clear();
    m_registry = &m_ownRegistry;
    m_rights.Reset();
    m_auditSink = nullptr;
    m_userName = ACE_CString();
}
