#pragma once

#include "bravik_archive_export.h"

#include <functional>
#include <string>

// A consistent copy of a site's archive while workstations go on working on
// it: the copy is the archive as it was at one moment, read page by page
// through SQLite's online backup without holding up anyone's saves.
namespace ArchiveBackup {

// Called after each step with the pages copied so far and the total.
using Progress = std::function<void(long long copied, long long total)>;

// Copies `source` to `destination`, which must not exist yet; the copy is
// written beside it and only renamed into place once it is whole and passes
// SQLite's quick check. Returns the number of pages copied. Throws
// Framework::Server with a readable reason on failure (nothing is left at
// `destination` then).
BRAVIK_ARCHIVE_EXPORT long long Copy(const std::string& source, const std::string& destination,
                                     const Progress& progress = {}, int pagesPerStep = 1024);

} // namespace ArchiveBackup
