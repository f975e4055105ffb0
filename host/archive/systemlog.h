#pragma once

#include "bravik_archive_export.h"

#include <functional>
#include <string>

// A copy of every audit record in the system log, one line each, so that the
// trail also lives outside the archive file. Where no system log runs the
// line is simply lost; nothing fails.
namespace SystemLog {

// "bravik audit: user=<who> event=<what> (<code>) patient=<key> at=<when>"
BRAVIK_ARCHIVE_EXPORT std::string AuditLine(const std::string& user, int eventCode, const std::string& recordKey,
                                            const std::string& at);
BRAVIK_ARCHIVE_EXPORT void Write(const std::string& line);

// Tests watch the lines instead of the system log; an empty function restores it.
using Sink = std::function<void(const std::string&)>;
BRAVIK_ARCHIVE_EXPORT Sink SetSink(Sink sink);

} // namespace SystemLog
