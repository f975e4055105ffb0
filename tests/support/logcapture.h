#pragma once

// Captures ACE log output for a test (RAII). While it lives, every line any
// thread logs through ACE_Log_Msg is recorded with its priority type
// (LM_DEBUG, LM_INFO ...), its text as logged (trailing "\n" included) and the
// source location the logging code set (ACE_LOG_MSG->file / linenum, or the
// ACE_DEBUG macros). Lines do not go to stderr meanwhile. On destruction the
// previous backend, flags and priority mask come back.

#include <ace/Log_Priority.h>

#include <memory>
#include <string>
#include <vector>

struct LogLine
{
    ACE_Log_Priority type = LM_DEBUG;
    std::string text;
    std::string file;
    int line = 0;
    unsigned long long thread = 0; // the logging thread's id, for grouping only
};

class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<LogLine> Lines() const;
    std::vector<std::string> Texts() const;
    // Lines of that priority type only.
    std::vector<LogLine> Lines(ACE_Log_Priority type) const;
    // Whether a line of that type has exactly this text.
    bool Contains(ACE_Log_Priority type, const std::string& text) const;
    void Clear();

    class Backend;

private:
    std::unique_ptr<Backend> m_backend;
    void* m_previousBackend;
    unsigned long m_previousFlags;
    unsigned long m_previousProcessMask;
};
