#pragma once

#include "candidaterules.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace SQLite {
class Statement;
}

// What the upkeep and the rebuild of the kept pairs share: how a patient is
// read, how a pair row is written, and the blocking of many patients at once.
namespace CandidatePairing {

// The columns ReadPerson reads, in its order.
extern const char* const kPersonColumns;
CandidateRules::Person ReadPerson(SQLite::Statement& q);

// The rule that names a pair matched by `rules` (a bit per rule): the lowest.
int LowestRule(int rules);

// INSERT of a whole pair row into `table` (candidate_pairs or its stand-in).
std::string InsertSql(const std::string& table);
// Binds the pair (either order) to a statement made from InsertSql, without
// copying its texts: the patients must outlive the statement's next step.
void BindPair(SQLite::Statement& st, const CandidateRules::Person& x, const CandidateRules::Person& y, int rules);

// Pair masks keyed by (lower index << 32 | higher index) into a list of people.
using Masks = std::unordered_map<std::uint64_t, int>;
// Adds the pairs of one rule (and of the rules sharing its blocks) among
// `people` to `masks`; blocks larger than `cap` pair no one.
void PairBlocks(int rule, const std::vector<CandidateRules::Person>& people, int cap, Masks& masks);

} // namespace CandidatePairing
