#pragma once

#include "candidatesearch.h"

#include <cstddef>
#include <string>

namespace SQLite {
class Statement;
}

// What both candidate searches share in their SQL and their rows.
namespace CandidateRows {

// "?, ?, ?" for an IN list of n values.
std::string Placeholders(std::size_t n);

// A pair from the current row of `q`, whose columns are: the reason kind, 1
// for a merge candidate, then for each patient key, MRN, organization key,
// organization id, sex, identifier, birth date, last, first and middle name.
CandidatePair ReadPair(SQLite::Statement& q);

} // namespace CandidateRows
