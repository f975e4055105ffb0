#pragma once

#include "bravik_records_export.h"

#include <string>

// The refusal codes the host's services return (0 is success). Callers test
// only for zero; where a failure is reported to a user, these words say why.
namespace ServiceResult {
constexpr int InvalidArgument = 1; // empty, over-long or malformed input
constexpr int NotFound = 2;        // the record is not there (any more)
constexpr int MergedAway = 3;      // the patient was merged into another
constexpr int NotPermitted = 4;    // the user lacks the right
constexpr int Conflict = 5;        // the change would break a rule, or the records changed meanwhile
constexpr int Unsupported = 6;     // the organization does not offer it

// A sentence for a non-zero result, fit to follow "Reason: ".
BRAVIK_RECORDS_EXPORT std::string Describe(int code);
}
