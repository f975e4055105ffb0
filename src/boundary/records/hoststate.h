#pragma once

#include "bravik_records_export.h"

// Puts every host singleton back to its start state: the session (registry,
// audit sink, rights, user), preferences, options, site policy, locale, the
// work-list ranking and the error manager's counters. For tests and for a
// host that opens another site.
BRAVIK_RECORDS_EXPORT void ResetHostState();
