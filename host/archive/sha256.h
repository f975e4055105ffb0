#pragma once

#include "bravik_archive_export.h"

#include <string>

// SHA-256 of a byte string, as 64 lower-case hex digits. The archive's audit
// and journal chains need a digest and nothing else of a crypto library.
BRAVIK_ARCHIVE_EXPORT std::string Sha256Hex(const std::string& data);
