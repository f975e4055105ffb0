#pragma once

#include <string>

class ArchiveDb;

// Where an organization's numbered keys (MRNs, accession numbers) are counted
// and where a value already in use would be found.
struct CounterKey
{
    const char* counterColumn; // column of organizations holding the last number handed out
    const char* table;         // rows that carry the generated value
    const char* valueColumn;   // the column within `table` that must stay unique per organization
    int digits;                // zero-padded width of the number after the prefix
};

// Advances the organization's counter past every value already in use and
// returns prefix + number. Runs in its own write transaction, so two callers
// on two connections read and advance the counter one after the other.
std::string NextCounterKey(ArchiveDb& db, const CounterKey& kind, const std::string& orgKey,
                           const std::string& prefix);
