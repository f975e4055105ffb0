#pragma once

#include "bravik_archive_export.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

struct sqlite3;

// Moves committed pages from the write-ahead log into the archive file on a
// thread of its own, so that no user's save waits for it. It watches the
// commits of one connection; when the log has grown past a threshold it wakes
// its thread, which checkpoints through a connection of its own without
// blocking readers or writers. Should the thread fall far behind, the
// committing connection checkpoints itself as SQLite would by default.
class BRAVIK_ARCHIVE_EXPORT WalCheckpointer
{
public:
    static constexpr int kWakePages = 1000;    // SQLite's own default threshold
    static constexpr int kInlinePages = 20000; // about 80 MB of log with 4 KiB pages

    // `writer` must outlive this object. Without a file (an in-memory
    // database) nothing is watched.
    explicit WalCheckpointer(sqlite3* writer, int wakePages = kWakePages, int inlinePages = kInlinePages);
    ~WalCheckpointer();
    WalCheckpointer(const WalCheckpointer&) = delete;
    WalCheckpointer& operator=(const WalCheckpointer&) = delete;

    // Checkpoints the thread has completed, every committed page copied.
    long long Completed() const;
    // Blocks until no wake-up is pending or running.
    void WaitIdle();

private:
    static constexpr int kAttempts = 100;
    static constexpr int kRetryMs = 10;

    static int OnCommit(void* self, sqlite3* db, const char* schema, int pages);
    void Wake();
    void Run();

    sqlite3* m_writer = nullptr;
    int m_wakePages;
    int m_inlinePages;
    sqlite3* m_own = nullptr;
    mutable std::mutex m_mutex;
    std::condition_variable m_cv;
    bool m_pending = false;
    bool m_running = false;
    bool m_stop = false;
    long long m_completed = 0;
    std::thread m_thread;
};
