#include "session.h"

#include "auditandlogparams.h"

#include <ace/Log_Msg.h>

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
    // ACE's %l is the line number, so the event code goes in as %u.
    ACE_DEBUG((LM_DEBUG, "Session::AuditAndLog no audit sink, event %u key %s\n",
               static_cast<unsigned>(params.GetEventCode()), params.GetKey().c_str()));
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
