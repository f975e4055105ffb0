#include "walcheckpointer.h"

#include <sqlite3.h>

#include <chrono>

WalCheckpointer::WalCheckpointer(sqlite3* writer, int wakePages, int inlinePages)
    : m_writer(writer), m_wakePages(wakePages), m_inlinePages(inlinePages)
{
    const char* file = sqlite3_db_filename(writer, "main");
    if (!file || !*file)
        return;
    // A connection learns that the file keeps a log when it first reads it.
    // Without a second connection the writer keeps checkpointing itself.
    if (sqlite3_open_v2(file, &m_own, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK
        || sqlite3_busy_timeout(m_own, 5000) != SQLITE_OK
        || sqlite3_exec(m_own, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr) != SQLITE_OK) {
        sqlite3_close_v2(m_own);
        m_own = nullptr;
        return;
    }
    m_thread = std::thread([this] { Run(); });
    // Replaces the writer's own automatic checkpoint.
    sqlite3_wal_hook(m_writer, &WalCheckpointer::OnCommit, this);
}

WalCheckpointer::~WalCheckpointer()
{
    if (!m_own)
        return;
    sqlite3_wal_autocheckpoint(m_writer, kWakePages); // SQLite's own hook again
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
    }
    m_cv.notify_all();
    m_thread.join();
    sqlite3_close_v2(m_own);
}

int WalCheckpointer::OnCommit(void* self, sqlite3* db, const char* schema, int pages)
{
    auto* me = static_cast<WalCheckpointer*>(self);
    if (pages >= me->m_inlinePages)
        sqlite3_wal_checkpoint_v2(db, schema, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    else if (pages >= me->m_wakePages)
        me->Wake();
    return SQLITE_OK;
}

void WalCheckpointer::Wake()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_pending = true;
    }
    m_cv.notify_all();
}

void WalCheckpointer::Run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_cv.wait(lock, [this] { return m_stop || m_pending; });
        if (m_stop)
            return;
        m_pending = false;
        m_running = true;
        // Passive: copies what no reader still needs and never waits on a
        // lock. The committing connection may still be finishing its read
        // when it wakes us, so what could not be copied is tried again
        // shortly, for a while.
        for (int attempt = 0; attempt < kAttempts && !m_stop; ++attempt) {
            lock.unlock();
            int log = 0, copied = 0;
            const int rc = sqlite3_wal_checkpoint_v2(m_own, "main", SQLITE_CHECKPOINT_PASSIVE, &log, &copied);
            lock.lock();
            if (rc == SQLITE_OK && log >= 0 && copied >= log) {
                ++m_completed;
                break;
            }
            m_cv.wait_for(lock, std::chrono::milliseconds(kRetryMs), [this] { return m_stop; });
        }
        m_running = false;
        m_cv.notify_all();
    }
}

long long WalCheckpointer::Completed() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_completed;
}

void WalCheckpointer::WaitIdle()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_cv.wait(lock, [this] { return m_stop || !m_thread.joinable() || (!m_pending && !m_running); });
}
