#include "logcapture.h"

#include <ace/Log_Msg.h>
#include <ace/Log_Msg_Backend.h>
#include <ace/Log_Record.h>
#include <ace/Thread.h>

#include <mutex>

class LogCapture::Backend : public ACE_Log_Msg_Backend
{
public:
    int open(const ACE_TCHAR*) override { return 0; }
    int reset() override { return 0; }
    int close() override { return 0; }

    ssize_t log(ACE_Log_Record& record) override
    {
        LogLine line;
        line.type = static_cast<ACE_Log_Priority>(record.type());
        line.text = record.msg_data() ? record.msg_data() : "";
        // The backend runs on the logging thread, so the thread's own log
        // object holds the location that thread set before logging.
        ACE_Log_Msg* msg = ACE_Log_Msg::instance();
        line.file = msg->file() ? msg->file() : "";
        line.line = msg->linenum();
        line.thread = static_cast<unsigned long long>(ACE_Thread::self());
        std::lock_guard lock(m_mutex);
        m_lines.push_back(std::move(line));
        return 0;
    }

    mutable std::mutex m_mutex;
    std::vector<LogLine> m_lines;
};

LogCapture::LogCapture() : m_backend(std::make_unique<Backend>())
{
    ACE_Log_Msg* msg = ACE_Log_Msg::instance();
    m_previousFlags = msg->flags();
    m_previousProcessMask = msg->priority_mask(ACE_Log_Msg::PROCESS);
    m_previousBackend = ACE_Log_Msg::msg_backend(m_backend.get());
    msg->open(ACE_TEXT("bravik-test"), ACE_Log_Msg::CUSTOM);
    msg->clr_flags(ACE_Log_Msg::STDERR);
    msg->priority_mask(LM_SHUTDOWN | LM_TRACE | LM_DEBUG | LM_INFO | LM_NOTICE | LM_WARNING | LM_STARTUP | LM_ERROR
                           | LM_CRITICAL | LM_ALERT | LM_EMERGENCY,
                       ACE_Log_Msg::PROCESS);
}

LogCapture::~LogCapture()
{
    ACE_Log_Msg* msg = ACE_Log_Msg::instance();
    msg->priority_mask(m_previousProcessMask, ACE_Log_Msg::PROCESS);
    msg->clr_flags(ACE_Log_Msg::CUSTOM);
    msg->set_flags(m_previousFlags);
    ACE_Log_Msg::msg_backend(static_cast<ACE_Log_Msg_Backend*>(m_previousBackend));
}

std::vector<LogLine> LogCapture::Lines() const
{
    std::lock_guard lock(m_backend->m_mutex);
    return m_backend->m_lines;
}

std::vector<LogLine> LogCapture::Lines(ACE_Log_Priority type) const
{
    std::vector<LogLine> out;
    for (LogLine& l : Lines())
        if (l.type == type)
            out.push_back(std::move(l));
    return out;
}

std::vector<std::string> LogCapture::Texts() const
{
    std::vector<std::string> out;
    for (LogLine& l : Lines())
        out.push_back(std::move(l.text));
    return out;
}

bool LogCapture::Contains(ACE_Log_Priority type, const std::string& text) const
{
    for (const LogLine& l : Lines())
        if (l.type == type && l.text == text)
            return true;
    return false;
}

void LogCapture::Clear()
{
    std::lock_guard lock(m_backend->m_mutex);
    m_backend->m_lines.clear();
}
