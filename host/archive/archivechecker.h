#pragma once

#include "bravik_archive_export.h"

#include <string>
#include <vector>

class ArchiveDb;

// SQLite's own integrity check plus the archive's invariants: nothing points
// at a missing or merged-away patient, a link group holds at most one record
// per organization, and the audit trail is whole.
class BRAVIK_ARCHIVE_EXPORT ArchiveChecker
{
public:
    explicit ArchiveChecker(ArchiveDb& db);
    // One readable line per violation; empty when the archive is sound.
    std::vector<std::string> Run();

private:
    bool HasTable(const std::string& name);
    ArchiveDb& m_db;
};
