#include "archivedb.h"

#include "archiveerror.h"
#include "ledger.h"
#include "schema.h"
#include "systemlog.h"

#include <SQLiteCpp/Exception.h>

#include <ace/Log_Msg.h>
#include <server.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <thread>

namespace {

// Every open connection, so that a fault met through one statement can mark
// the connection it came from as damaged.
std::mutex g_openMutex;
std::vector<ArchiveDb*> g_open;

bool IsDamageCode(int code)
{
    const int primary = code & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

void LogFault(const char* operation, const SQLite::Exception& e)
{
    ACE_DEBUG((LM_ERROR, "ArchiveDb: %s failed: %s (code %d)\n", operation, e.what(), e.getExtendedErrorCode()));
}

} // namespace

ArchiveDb::ArchiveDb(const std::string& path, Mode mode, int busyTimeoutMs)
    : m_path(path)
{
    // A connection serves one thread at a time: SQLite need not lock it per call.
    int flags = SQLite::OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    if (mode == Mode::OpenOrCreate)
        flags |= SQLite::OPEN_CREATE;
    if (mode == Mode::ReadOnly)
        flags = SQLite::OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
    RefuseEmptyFile(path);
    try {
        m_db = std::make_unique<SQLite::Database>(path, flags);
        SetBusyTimeout(busyTimeoutMs);
        Configure(mode);
    } catch (const SQLite::Exception& e) {
        // The caller reports this itself before anything else is shown, so
        // the readable reason is all it gets.
        const DbFault fault = ClassifyDbFault(e);
        const std::string why = fault == DbFault::Damaged ? "the file is not a database, or it is damaged"
                                : fault == DbFault::Busy  ? "it is busy: another workstation is saving. Try again"
                                                          : "the file cannot be read or written";
        ThrowServerFault("cannot open archive '" + path + "': " + why + ".");
    }
    std::lock_guard<std::mutex> lock(g_openMutex);
    g_open.push_back(this);
}

ArchiveDb::~ArchiveDb()
{
    {
        std::lock_guard<std::mutex> lock(g_openMutex);
        g_open.erase(std::remove(g_open.begin(), g_open.end(), this), g_open.end());
    }
    // Statements must go before the connection they belong to.
    m_cache.clear();
}

void ArchiveDb::SetBusyTimeout(int ms)
{
    m_busyTimeoutMs = ms;
    sqlite3_busy_handler(m_db->getHandle(), &ArchiveDb::OnBusy, this);
}

void ArchiveDb::LetOthersWrite()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
}

// SQLite's own handler sleeps longer and longer, up to 100 ms a try, so a
// workstation waiting behind a run of short transactions (a rebuild's) could
// sleep through every gap between them. This one looks again every
// millisecond until the timeout.
int ArchiveDb::OnBusy(void* self, int count)
{
    auto* me = static_cast<ArchiveDb*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (count == 0)
        me->m_busySince = now;
    if (now - me->m_busySince >= std::chrono::milliseconds(me->m_busyTimeoutMs))
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 1;
}

void ArchiveDb::NoteDamage()
{
    if (IsDamageCode(sqlite3_extended_errcode(m_db->getHandle())))
        m_damaged = true;
}

void ArchiveDb::NoteDamageEverywhere()
{
    std::lock_guard<std::mutex> lock(g_openMutex);
    for (ArchiveDb* db : g_open)
        db->NoteDamage();
}

void ArchiveDb::Configure(Mode mode)
{
    // Reading the schema fails early with "file is not a database" for a
    // file that is not SQLite at all.
    m_db->exec("SELECT count(*) FROM sqlite_master");
    m_db->exec("PRAGMA foreign_keys = ON");
    // The search's index pages stay in the process rather than being read
    // from the file again for every search (SQLite's default is 2 MB).
    m_db->exec("PRAGMA cache_size = -65536");
    // Everything that refuses the file comes before the first write (the
    // journal mode is one), so a refused file is left exactly as it was.
    RefuseForeignDatabase();
    if (mode == Mode::ReadOnly)
        return;
    m_db->exec("PRAGMA journal_mode = WAL");
    // The log is synced at every commit: a save that was reported done
    // survives a power failure, not only a crashed program.
    m_db->exec("PRAGMA synchronous = FULL");
    Migrate();
}

void ArchiveDb::RefuseEmptyFile(const std::string& path)
{
    // SQLite takes an empty file for an empty database and would turn it into
    // an archive; an empty file where an archive was expected is a mistake
    // (a failed copy, a truncated file) the user must see.
    std::error_code ec;
    if (std::filesystem::is_regular_file(path, ec) && std::filesystem::file_size(path, ec) == 0 && !ec)
        ThrowServerFault("cannot open archive '" + path + "': the file is empty, not an archive");
}

void ArchiveDb::RefuseForeignDatabase()
{
    const int version = SchemaVersion();
    if (version > CurrentSchemaVersion())
        ThrowServerFault("archive '" + m_path + "' has schema version " + std::to_string(version)
                         + ", newer than this program's " + std::to_string(CurrentSchemaVersion()));
    // Version 0 with tables in it is some other program's database.
    if (version == 0 && m_db->execAndGet("SELECT count(*) FROM sqlite_master").getInt() > 0)
        ThrowServerFault("cannot open archive '" + m_path + "': it is a database of another program, not an archive");
}

int ArchiveDb::SchemaVersion()
{
    return m_db->execAndGet("PRAGMA user_version").getInt();
}

int ArchiveDb::CurrentSchemaVersion()
{
    return Schema::Count();
}

void ArchiveDb::Migrate(int target)
{
    if (target < 0)
        target = CurrentSchemaVersion();
    const int version = SchemaVersion();
    if (version > CurrentSchemaVersion())
        ThrowServerFault("archive '" + m_path + "' has schema version " + std::to_string(version)
                         + ", newer than this program's " + std::to_string(CurrentSchemaVersion()));
    if (version >= target)
        return;
    GuardDb("schema migration", [&] {
        WriteTransaction tx(*this);
        // Another connection may have migrated while we waited for the lock.
        for (int v = SchemaVersion() + 1; v <= target; ++v) {
            m_db->exec(Schema::Step(v));
            if (v == Schema::LedgerVersion())
                Ledger(*this).SealAll();
            m_db->exec("PRAGMA user_version = " + std::to_string(v));
        }
        tx.Commit();
    });
}

SQLite::Statement& ArchiveDb::Prepare(const std::string& sql)
{
    for (auto& [text, statement] : m_cache) {
        if (text == sql) {
            statement->reset();
            statement->clearBindings();
            return *statement;
        }
    }
    m_cache.emplace_back(sql, std::make_unique<SQLite::Statement>(*m_db, sql));
    return *m_cache.back().second;
}

std::optional<std::string> ArchiveDb::SelectText(const std::string& sql, const std::string& key)
{
    auto& q = Prepare(sql);
    q.bind(1, key);
    std::optional<std::string> value;
    if (q.executeStep())
        value = q.getColumn(0).getString();
    q.reset();
    return value;
}

void ArchiveDb::CountWrite()
{
    if (m_failAt <= 0)
        return;
    ++m_writeCount;
    if (m_writeCount == m_failAt)
        ThrowServerFault("injected fault at write statement " + std::to_string(m_writeCount));
}

int ArchiveDb::Write(SQLite::Statement& statement)
{
    CountWrite();
    const int changed = statement.exec();
    statement.reset();
    return changed;
}

int ArchiveDb::Exec(const std::string& sql)
{
    CountWrite();
    return m_db->exec(sql);
}

void ArchiveDb::FailAtWrite(int n)
{
    m_failAt = n;
    m_writeCount = 0;
}

std::vector<std::string> ArchiveDb::TableNames()
{
    std::vector<std::string> names;
    SQLite::Statement q(*m_db, "SELECT name FROM sqlite_master WHERE type = 'table' "
                               "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name");
    while (q.executeStep())
        names.push_back(q.getColumn(0).getString());
    return names;
}

std::vector<std::pair<std::string, long long>> ArchiveDb::TableRowCounts()
{
    std::vector<std::pair<std::string, long long>> counts;
    for (const auto& name : TableNames()) {
        const long long n = m_db->execAndGet("SELECT count(*) FROM \"" + name + "\"").getInt64();
        counts.emplace_back(name, n);
    }
    return counts;
}

void ArchiveDb::CommitDone(bool committed)
{
    std::vector<std::string> lines;
    lines.swap(m_afterCommit);
    if (committed)
        for (const auto& line : lines)
            SystemLog::Write(line);
}

std::string ArchiveDb::NowText()
{
    const auto now = std::chrono::system_clock::now();
    const std::time_t t = std::chrono::system_clock::to_time_t(now);
    std::tm tm{};
    gmtime_r(&t, &tm);
    char buf[32];
    std::strftime(buf, sizeof buf, "%Y-%m-%dT%H:%M:%SZ", &tm);
    return buf;
}

DbFault ClassifyDbFault(const SQLite::Exception& e)
{
    const int code = e.getErrorCode() & 0xff;
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        return DbFault::Busy;
    if (code == SQLITE_CONSTRAINT)
        return DbFault::Constraint;
    if (IsDamageCode(code))
        return DbFault::Damaged;
    return DbFault::Other;
}

void ThrowDbFault(const char* operation, const SQLite::Exception& e)
{
    LogFault(operation, e);
    switch (ClassifyDbFault(e)) {
    case DbFault::Busy:
        throw Framework::Server(ArchiveFaultText::Busy, ArchiveFaultText::BusyCode);
    case DbFault::Damaged:
        ArchiveDb::NoteDamageEverywhere();
        throw Framework::Server(ArchiveFaultText::Damaged, ArchiveFaultText::DamagedCode);
    default:
        throw Framework::Server(ArchiveFaultText::Failed, ArchiveFaultText::FailedCode);
    }
}

int RefuseBrokenRule(const char* operation, const SQLite::Exception& e)
{
    LogFault(operation, e);
    return ArchiveResult::Conflict;
}

ReadTransaction::ReadTransaction(ArchiveDb& db)
    : m_db(db)
{
    m_db.Handle().exec("SAVEPOINT read_transaction");
}

ReadTransaction::~ReadTransaction()
{
    try {
        m_db.Handle().exec("RELEASE read_transaction");
    } catch (...) {
        // Nothing was written: there is nothing to keep.
    }
}

WriteTransaction::WriteTransaction(ArchiveDb& db)
    : m_db(db)
{
    if (auto hook = m_db.TakeBeforeWriteHook())
        hook();
    if (m_db.Damaged())
        throw Framework::Server(ArchiveFaultText::Damaged, ArchiveFaultText::DamagedCode);
    try {
        m_db.Handle().exec("BEGIN IMMEDIATE");
    } catch (const SQLite::Exception& e) {
        ThrowDbFault("starting a write transaction", e);
    }
    m_open = true;
}

WriteTransaction::~WriteTransaction()
{
    if (!m_open)
        return;
    // Before the rollback clears what the failed statement met.
    m_db.NoteDamage();
    m_db.CommitDone(false);
    try {
        m_db.Handle().exec("ROLLBACK");
    } catch (...) {
        // A failed statement may already have rolled the transaction back.
    }
}

void WriteTransaction::Commit()
{
    try {
        m_db.Handle().exec("COMMIT");
    } catch (const SQLite::Exception& e) {
        ThrowDbFault("committing", e);
    }
    m_open = false;
    m_db.CommitDone(true);
}
