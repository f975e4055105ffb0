#include "archivebackup.h"

#include "archivedb.h"
#include "archiveerror.h"

#include <server.h>

#include <ace/Log_Msg.h>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

namespace {

// Another connection may hold a lock for a moment (a checkpoint, a save);
// a step that meets one is tried again for this long.
constexpr auto kBusyPatience = std::chrono::seconds(10);

struct BackupHandle
{
    sqlite3_backup* handle;
    ~BackupHandle()
    {
        if (handle)
            sqlite3_backup_finish(handle);
    }
};

[[noreturn]] void Fail(const std::string& why)
{
    throw Framework::Server("backup failed: " + why);
}

long long CopyPages(SQLite::Database& from, SQLite::Database& to, const ArchiveBackup::Progress& progress,
                    int pagesPerStep)
{
    BackupHandle backup{sqlite3_backup_init(to.getHandle(), "main", from.getHandle(), "main")};
    if (!backup.handle)
        ThrowDbFault("starting the backup", SQLite::Exception(to.getHandle()));
    auto busySince = std::chrono::steady_clock::now();
    for (;;) {
        const int rc = sqlite3_backup_step(backup.handle, pagesPerStep);
        const long long total = sqlite3_backup_pagecount(backup.handle);
        const long long copied = total - sqlite3_backup_remaining(backup.handle);
        if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) {
            if (std::chrono::steady_clock::now() - busySince > kBusyPatience)
                throw Framework::Server(ArchiveFaultText::Busy, ArchiveFaultText::BusyCode);
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            continue;
        }
        // The database's own words go to the log; the caller gets a readable reason.
        if (rc != SQLITE_OK && rc != SQLITE_DONE)
            ThrowDbFault("copying pages", SQLite::Exception(sqlite3_errstr(rc), rc));
        busySince = std::chrono::steady_clock::now();
        if (progress)
            progress(copied, total);
        if (rc == SQLITE_DONE)
            return total;
    }
}

void Verify(const std::string& copy)
{
    SQLite::Database check(copy, SQLite::OPEN_READWRITE);
    const std::string verdict = check.execAndGet("PRAGMA quick_check").getString();
    if (verdict != "ok") {
        ACE_DEBUG((LM_ERROR, "ArchiveBackup: the copy %s fails the quick check: %s\n", copy.c_str(), verdict.c_str()));
        Fail("the copy is not sound. Check the archive with 'bravik-archive check' and try again");
    }
}

} // namespace

long long ArchiveBackup::Copy(const std::string& source, const std::string& destination, const Progress& progress,
                              int pagesPerStep)
{
    std::error_code ec;
    if (std::filesystem::exists(destination, ec))
        Fail("'" + destination + "' already exists");
    const std::string partial = destination + ".partial";
    std::filesystem::remove(partial, ec);
    try {
        long long pages = 0;
        {
            SQLite::Database from(source, SQLite::OPEN_READWRITE, 10000);
            SQLite::Database to(partial, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            // One read transaction over every step: the copy is the archive as
            // of its first step, whatever the workstations save meanwhile.
            from.exec("BEGIN");
            from.execAndGet("SELECT count(*) FROM sqlite_master");
            pages = CopyPages(from, to, progress, pagesPerStep);
            from.exec("COMMIT");
        }
        Verify(partial);
        std::filesystem::rename(partial, destination);
        return pages;
    } catch (const SQLite::Exception& e) {
        std::filesystem::remove(partial, ec);
        ThrowDbFault("backing up the archive", e);
    } catch (...) {
        std::filesystem::remove(partial, ec);
        throw;
    }
}
