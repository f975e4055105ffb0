#pragma once

#include "bravik_archive_export.h"
#include "ledger.h"

#include <map>
#include <string>

class ArchiveDb;

// Audit events the archive itself writes (the module's own dialog events,
// 50 and 51, arrive through the session with the caller's code).
namespace AuditEvent {
constexpr int PatientCreated = 1;
constexpr int PatientModified = 2;
constexpr int PatientDeleted = 3;
constexpr int PatientsMerged = 4;
constexpr int PatientsLinked = 5;
constexpr int PatientUnlinked = 6;
constexpr int DuplicatesIgnored = 7;
constexpr int ExamCreated = 10;
constexpr int ExamUpdated = 11;
constexpr int ExamDeleted = 12;
constexpr int ExamCancelled = 13;
constexpr int ExamUnlinked = 14;
constexpr int StudyDetached = 15;
}

// Writes the append-only audit trail and the journal of destructive
// operations. Every call is a counted write on the caller's transaction.
class BRAVIK_ARCHIVE_EXPORT Journal
{
public:
    explicit Journal(ArchiveDb& db);

    void Audit(const std::string& user, const std::string& recordKey, int eventCode,
               const std::string& comment = std::string());

    // Starts one journal entry; returns its id for Capture.
    long long Begin(const std::string& user, const std::string& operation, const std::string& subjectKey,
                    const std::string& otherKey, const std::string& reason);

    // Keeps a JSON image of every row of `table` matching `where` (its `@v`
    // bound to `value`) as it is now, before the caller changes it.
    void Capture(long long journalId, const std::string& table, const std::string& keyColumn,
                 const std::string& where, const std::string& value);

private:
    const std::string& JsonOf(const std::string& table);

    ArchiveDb& m_db;
    Ledger m_ledger;
    std::map<std::string, std::string> m_jsonExpr;
};
