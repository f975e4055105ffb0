// Checkpoints of the write-ahead log run on their own thread: a commit that
// grows the log past the threshold wakes it, the pages reach the archive
// file, and a log far past the second threshold is checkpointed by the
// committing connection itself.
#include <archive.h>
#include <archivedb.h>
#include <walcheckpointer.h>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>

namespace {

std::string Rows(const std::string& table, int rows)
{
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(rows) +
        ") INSERT INTO " + table + " SELECT zeroblob(3500) FROM n";
}

class WalCheckpointerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = std::filesystem::temp_directory_path() /
            ("bravik-wal-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
             ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(m_dir);
        std::filesystem::create_directories(m_dir);
        ASSERT_EQ(sqlite3_open((m_dir / "w.db").string().c_str(), &m_db), SQLITE_OK);
        Exec("PRAGMA journal_mode = WAL; CREATE TABLE t (v BLOB)");
    }
    void TearDown() override
    {
        sqlite3_close_v2(m_db);
        std::filesystem::remove_all(m_dir);
    }
    void Exec(const std::string& sql) { ASSERT_EQ(sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql; }
    // About one page per row.
    void Write(int rows) { Exec(Rows("t", rows)); }
    // Frames in the log and frames already copied into the file, as another connection sees them.
    std::pair<int, int> Log()
    {
        sqlite3* other = nullptr;
        sqlite3_open((m_dir / "w.db").string().c_str(), &other);
        int log = -1, done = -1;
        sqlite3_wal_checkpoint_v2(other, "main", SQLITE_CHECKPOINT_PASSIVE, &log, &done);
        sqlite3_close_v2(other);
        return {log, done};
    }
    std::uintmax_t FileSize() { return std::filesystem::file_size(m_dir / "w.db"); }

    std::filesystem::path m_dir;
    sqlite3* m_db = nullptr;
};

TEST_F(WalCheckpointerTest, ASmallCommitLeavesTheLogAlone)
{
    WalCheckpointer c(m_db, 100, 1000);
    const auto before = FileSize();
    Write(20);
    c.WaitIdle();
    EXPECT_EQ(c.Completed(), 0);
    EXPECT_EQ(FileSize(), before); // nothing copied yet
}

TEST_F(WalCheckpointerTest, ALargeCommitIsCheckpointedOnTheThread)
{
    WalCheckpointer c(m_db, 100, 100000);
    const auto before = FileSize();
    Write(300);
    c.WaitIdle();
    EXPECT_EQ(c.Completed(), 1);
    EXPECT_GT(FileSize(), before + 300u * 3500u); // the rows are in the file itself
    // The next write starts the log from its beginning again.
    Write(1);
    const auto [log, done] = Log();
    EXPECT_LT(log, 100);
    EXPECT_EQ(log, done);
}

TEST_F(WalCheckpointerTest, AFarLargerCommitIsCheckpointedBeforeItReturns)
{
    WalCheckpointer c(m_db, 100, 200);
    const auto before = FileSize();
    Write(300);
    EXPECT_GT(FileSize(), before + 300u * 3500u); // already copied when the commit returned
    c.WaitIdle();
    EXPECT_EQ(c.Completed(), 0);
}

TEST_F(WalCheckpointerTest, TheWriterChecksItselfAgainOnceItIsGone)
{
    {
        WalCheckpointer c(m_db, 100, 100000);
        Write(10);
    }
    // SQLite's own threshold of 1000 pages applies again.
    const auto before = FileSize();
    Write(1100);
    EXPECT_GT(FileSize(), before + 1000u * 3500u);
}

TEST_F(WalCheckpointerTest, AnInMemoryDatabaseHasNothingToWatch)
{
    sqlite3* memory = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &memory), SQLITE_OK);
    {
        WalCheckpointer c(memory, 1, 2);
        sqlite3_exec(memory, "CREATE TABLE t (v); INSERT INTO t VALUES (1)", nullptr, nullptr, nullptr);
        c.WaitIdle();
        EXPECT_EQ(c.Completed(), 0);
    }
    sqlite3_close_v2(memory);
}

// The archive's own connection is watched: a bulk write ends up in the file
// without the writer's commit copying it.
TEST_F(WalCheckpointerTest, AnOpenArchiveCheckpointsOnItsThread)
{
    const std::string path = (m_dir / "archive.db").string();
    auto archive = Archive::Open(path);
    archive->Db().Handle().exec("CREATE TABLE bulk (v BLOB)");
    archive->Db().Handle().exec(Rows("bulk", 1200));
    archive->Checkpointer().WaitIdle();
    EXPECT_GE(archive->Checkpointer().Completed(), 1);
}

} // namespace
