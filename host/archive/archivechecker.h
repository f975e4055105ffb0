#pragma once

#include "bravik_archive_export.h"

#include <string>
#include <vector>

class ArchiveDb;

// SQLite's own integrity check plus the archive's invariants: nothing points
// at a missing or merged-away patient, a link group holds two or more records
// and at most one per organization, every merge leads to a patient, every
// journal entry is about a record that existed, and the audit trail and
// journal chains are whole.
class BRAVIK_ARCHIVE_EXPORT ArchiveChecker
{
public:
    explicit ArchiveChecker(ArchiveDb& db);
    // One readable line per violation; empty when the archive is sound.
    std::vector<std::string> Run();
    // One line per chained table (audit, journal, journal images): rows, last
    // row and head digest, for the site to record outside the archive.
    std::vector<std::string> ChainHeads();

private:
    bool HasTable(const std::string& name);
    void CheckMergeChains(std::vector<std::string>& out);
    void CheckGroupSizes(std::vector<std::string>& out);
    void CheckJournalSubjects(std::vector<std::string>& out);
    void CheckChains(std::vector<std::string>& out);
    ArchiveDb& m_db;
};
