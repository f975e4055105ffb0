#pragma once

#include "bravik_archive_export.h"

// The forward migrations of the archive schema; version N is reached by
// applying steps 1..N in order.
class BRAVIK_ARCHIVE_EXPORT Schema
{
public:
    static int Count();
    // SQL of the step that takes the schema from version-1 to version; null if none.
    static const char* Step(int version);
    // The step that starts the audit and journal chains; rows already there
    // are sealed right after it.
    static int LedgerVersion();
};
