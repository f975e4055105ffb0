#pragma once

#include "bravik_archive_export.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// One connection to a site's archive file. Owns the SQLite handle, brings the
// schema up to date on open, and is the only way services write: every write
// statement goes through Write()/Exec() so that a test can make the Nth one fail
// and watch the surrounding transaction leave every table as it was.
class BRAVIK_ARCHIVE_EXPORT ArchiveDb
{
public:
    enum class Mode { OpenOrCreate, OpenExisting, ReadOnly };

    // Throws Framework::Server when the file cannot be opened, is not an
    // archive, or carries a schema newer than this program knows.
    explicit ArchiveDb(const std::string& path, Mode mode = Mode::OpenOrCreate, int busyTimeoutMs = 10000);
    ~ArchiveDb();

    ArchiveDb(const ArchiveDb&) = delete;
    ArchiveDb& operator=(const ArchiveDb&) = delete;

    SQLite::Database& Handle() { return *m_db; }
    const std::string& Path() const { return m_path; }

    // Statements are prepared once per connection and reused.
    SQLite::Statement& Prepare(const std::string& sql);

    // The first column of the first row `sql` yields with `key` bound to its
    // one parameter; nothing when no row matches.
    std::optional<std::string> SelectText(const std::string& sql, const std::string& key);

    // Runs one write statement (counted for fault injection). Returns the
    // number of changed rows.
    int Write(SQLite::Statement& statement);
    // Runs one write SQL text (counted for fault injection).
    int Exec(const std::string& sql);

    int SchemaVersion();
    static int CurrentSchemaVersion();
    // Applies forward migrations up to `target` (default: current).
    void Migrate(int target = -1);

    // Test hook: the Nth write statement from now (1-based) throws instead of
    // running. 0 disarms. Counting continues across transactions.
    void FailAtWrite(int n);
    int WritesSinceArmed() const { return m_writeCount; }

    // Rows per user table, in name order (for the tool's stats).
    std::vector<std::pair<std::string, long long>> TableRowCounts();
    std::vector<std::string> TableNames();

    // Lines for the system log, sent when the surrounding transaction commits
    // and dropped when it rolls back.
    void AfterCommit(const std::string& systemLogLine) { m_afterCommit.push_back(systemLogLine); }
    void CommitDone(bool committed);

    // The ISO time used in audit and journal rows.
    static std::string NowText();

    // How long a statement waits for another connection's write lock before
    // the archive is reported busy.
    void SetBusyTimeout(int ms);
    // A pause for long work between its write transactions, long enough for
    // a workstation waiting to save to take the lock (it looks again every
    // millisecond, see OnBusy).
    static void LetOthersWrite();

    // Once a read or write has found damaged pages, the connection takes no
    // more writes: carrying on could spread the damage.
    bool Damaged() const { return m_damaged; }
    // Marks this connection when its last statement met damaged pages.
    void NoteDamage();
    // The same for every open connection.
    static void NoteDamageEverywhere();

    // Test hook: runs once, on this connection, just before its next write
    // transaction asks for the lock. Lets a test put another workstation's
    // whole operation between a caller's request and its transaction.
    void BeforeNextWrite(std::function<void()> hook) { m_beforeWrite = std::move(hook); }
    std::function<void()> TakeBeforeWriteHook() { return std::exchange(m_beforeWrite, {}); }

private:
    void Configure(Mode mode);
    static void RefuseEmptyFile(const std::string& path);
    void RefuseForeignDatabase();
    void CountWrite();
    static int OnBusy(void* self, int count);

    std::string m_path;
    std::unique_ptr<SQLite::Database> m_db;
    std::vector<std::pair<std::string, std::unique_ptr<SQLite::Statement>>> m_cache;
    int m_failAt = 0;
    int m_writeCount = 0;
    bool m_damaged = false;
    int m_busyTimeoutMs = 0;
    std::chrono::steady_clock::time_point m_busySince;
    std::function<void()> m_beforeWrite;
    std::vector<std::string> m_afterCommit;
};

// BEGIN IMMEDIATE ... COMMIT, rolled back by the destructor unless committed:
// taking the write lock up front means two connections never deadlock on an
// upgrade, they wait for each other within the busy timeout.
class BRAVIK_ARCHIVE_EXPORT WriteTransaction
{
public:
    explicit WriteTransaction(ArchiveDb& db);
    ~WriteTransaction();
    WriteTransaction(const WriteTransaction&) = delete;
    WriteTransaction& operator=(const WriteTransaction&) = delete;

    void Commit();

private:
    ArchiveDb& m_db;
    bool m_open = false;
};

// A read transaction for the scope (nested in the caller's, if any): what is
// read inside it is one state of the archive, and it keeps no one from writing.
class BRAVIK_ARCHIVE_EXPORT ReadTransaction
{
public:
    explicit ReadTransaction(ArchiveDb& db);
    ~ReadTransaction();
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

private:
    ArchiveDb& m_db;
};

// Throws the framework's server exception with `what` as its description.
[[noreturn]] BRAVIK_ARCHIVE_EXPORT void ThrowServerFault(const std::string& what);

// What a database fault means to a caller.
enum class DbFault { Busy, Constraint, Damaged, Other };
BRAVIK_ARCHIVE_EXPORT DbFault ClassifyDbFault(const SQLite::Exception& e);
// Logs the database's own text and throws the server exception with a
// sentence a user can read instead (busy, damaged, or a general failure).
[[noreturn]] BRAVIK_ARCHIVE_EXPORT void ThrowDbFault(const char* operation, const SQLite::Exception& e);
// Logs a broken rule the checks did not catch and returns the Conflict code.
BRAVIK_ARCHIVE_EXPORT int RefuseBrokenRule(const char* operation, const SQLite::Exception& e);

// Runs `body`; a database fault never leaves as database text. A broken rule
// in an operation that returns a result code is an ordinary refusal; every
// other fault becomes the framework's server exception with a readable reason.
template <typename F>
auto GuardDb(const char* operation, F&& body) -> decltype(body())
{
    try {
        return body();
    } catch (const SQLite::Exception& e) {
        if constexpr (std::is_same_v<decltype(body()), int>) {
            if (ClassifyDbFault(e) == DbFault::Constraint)
                return RefuseBrokenRule(operation, e);
        }
        ThrowDbFault(operation, e);
    }
}
