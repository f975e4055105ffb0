#pragma once

#include "bravik_archive_export.h"

#include <string>
#include <vector>

class ArchiveDb;

// The audit trail and the journal as hash chains. Every row written to one of
// them is sealed in the same transaction: its digest covers the row as stored
// and the digest of the row before it, and the chain's head (rows, last row,
// last digest) is kept apart. A row rewritten, removed or slipped in later
// breaks the chain where it happened; a site that records the heads printed by
// the check elsewhere also notices a chain rewritten from start to end.
class BRAVIK_ARCHIVE_EXPORT Ledger
{
public:
    struct Head
    {
        std::string table;
        long long rows = 0;
        long long lastRow = 0;
        std::string digest;
    };

    // The chained tables, in the order their heads are printed.
    static const std::vector<std::string>& Tables();

    explicit Ledger(ArchiveDb& db);

    // Seals the rows of `table` written since its last sealed row. Runs on the
    // caller's transaction.
    void SealNew(const std::string& table);
    void SealAll();

    std::vector<Head> Heads();
    // One readable line per break found; empty when every chain is whole.
    std::vector<std::string> Verify();

private:
    std::vector<std::string> VerifyTable(const std::string& table);
    ArchiveDb& m_db;
};
