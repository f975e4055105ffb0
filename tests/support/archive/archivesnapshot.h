#pragma once

#include <map>
#include <string>
#include <vector>

class ArchiveDb;

// Every row of every table, as text, sorted: two snapshots are equal exactly
// when the archive holds the same data.
using ArchiveSnapshot = std::map<std::string, std::vector<std::string>>;

ArchiveSnapshot TakeSnapshot(ArchiveDb& db);
// The tables whose rows differ, for a readable failure message.
std::string DescribeDifference(const ArchiveSnapshot& before, const ArchiveSnapshot& after);
