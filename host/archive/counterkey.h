#pragma once

#include "archivecontext.h"

#include <string>

// Where an organization's numbered keys (MRNs, accession numbers) are counted
// and where a value already in use would be found.
struct CounterKey
{
    bool ArchiveContext::Organization::*enabled;        // whether the organization hands these out
    std::string ArchiveContext::Organization::*prefix; // put in front of the number
    const char* counterColumn; // column of organizations holding the last number handed out
    const char* table;         // rows that carry the generated value
    const char* valueColumn;   // the column within `table` that must stay unique per organization
    int digits;                // zero-padded width of the number after the prefix
    ArchiveContext::Right right; // needed in the organization to be handed one
};

// The organization's next unused key (prefix + number), its counter advanced
// past every value already in use. Runs in its own write transaction, so two
// callers on two connections read and advance the counter one after the other.
// Returns an ArchiveResult: InvalidArgument for a malformed organization,
// NotFound for an unknown one, Unsupported when it does not generate these,
// NotPermitted (counter untouched) when the user lacks the kind's right there.
int NextCounterKey(ArchiveContext& ctx, const CounterKey& kind, const std::string& organization, std::string& value);
