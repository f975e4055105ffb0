#pragma once

#include <string>

// Service result codes of the archive. Callers test only for zero; the codes
// are distinct so logs and tests can tell refusals apart.
namespace ArchiveResult {
constexpr int Ok = 0;
constexpr int InvalidArgument = 1;  // empty, over-long or malformed input
constexpr int NotFound = 2;         // unknown key
constexpr int MergedAway = 3;       // the key was merged into another patient
constexpr int NotPermitted = 4;     // the session user lacks the right
constexpr int Conflict = 5;         // the change would break a rule (duplicate MRN, two records of one organization in a link group...)
constexpr int Unsupported = 6;      // the organization does not offer it (no MRN generation...)
}
