#include "systemlog.h"

#include "journal.h"

#include <mutex>
#include <syslog.h>

namespace {

std::mutex g_mutex;
SystemLog::Sink g_sink;

const char* EventName(int code)
{
    switch (code) {
    case AuditEvent::PatientCreated: return "patient created";
    case AuditEvent::PatientModified: return "patient modified";
    case AuditEvent::PatientDeleted: return "patient deleted";
    case AuditEvent::PatientsMerged: return "patients merged";
    case AuditEvent::PatientsLinked: return "patients linked";
    case AuditEvent::PatientUnlinked: return "patient unlinked";
    case AuditEvent::DuplicatesIgnored: return "duplicates ignored";
    case AuditEvent::ExamCreated: return "exam created";
    case AuditEvent::ExamUpdated: return "exam updated";
    case AuditEvent::ExamDeleted: return "exam deleted";
    case AuditEvent::ExamCancelled: return "exam cancelled";
    case AuditEvent::ExamUnlinked: return "exam unlinked";
    case AuditEvent::StudyDetached: return "study detached";
    case 50: return "exam opened for editing";
    case 51: return "patient shown for merge or link";
    default: return "event";
    }
}

// Control characters would let a crafted name start a forged line.
std::string OneLine(const std::string& text)
{
    std::string out = text;
    for (char& c : out)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = ' ';
    return out;
}

} // namespace

namespace SystemLog {

std::string AuditLine(const std::string& user, int eventCode, const std::string& recordKey, const std::string& at)
{
    return "bravik audit: user=" + OneLine(user) + " event=" + EventName(eventCode) + " (" + std::to_string(eventCode) +
           ") record=" + OneLine(recordKey) + " at=" + at;
}

void Write(const std::string& line)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    if (g_sink) {
        g_sink(line);
        return;
    }
    // syslog() never reports failure: without a running log daemon the line is dropped.
    syslog(LOG_AUTHPRIV | LOG_INFO, "%s", line.c_str());
}

Sink SetSink(Sink sink)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    std::swap(g_sink, sink);
    return sink;
}

} // namespace SystemLog
