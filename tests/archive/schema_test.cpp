// The archive file itself: schema version and migrations, connection set-up,
// the append-only audit trail and journal, faults as server exceptions.
#include <archivefixture.h>

#include <archivedb.h>
#include <journal.h>
#include <schema.h>
#include <server.h>

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <fstream>
#include <unistd.h>

namespace {

class SchemaTest : public ArchiveFixture
{
};

TEST_F(SchemaTest, FreshArchiveIsAtTheCurrentVersionWithWalAndForeignKeys)
{
    EXPECT_EQ(Db().SchemaVersion(), ArchiveDb::CurrentSchemaVersion());
    EXPECT_EQ(Db().SchemaVersion(), Schema::Count());
    EXPECT_EQ(Text("PRAGMA journal_mode"), "wal");
    EXPECT_EQ(Count("PRAGMA foreign_keys"), 1);
}

TEST_F(SchemaTest, ForeignKeysRefuseAnExamOfAMissingPatient)
{
    EXPECT_THROW(Db().Handle().exec("INSERT INTO exams(exam_key, patient_key, org_key, accession) "
                                    "VALUES ('E1', 'NOBODY', '" + m_north + "', 'A1')"),
                 SQLite::Exception);
    EXPECT_EQ(Count("SELECT count(*) FROM exams"), 0);
}

TEST_F(SchemaTest, AuditRowsCannotBeUpdatedOrDeleted)
{
    Journal journal(Db());
    journal.Audit("admin", "PAT-1", 1, "created");
    const auto before = Snapshot();
    try {
        Db().Handle().exec("UPDATE audit SET comment = 'forged'");
        FAIL() << "update of an audit row was accepted";
    } catch (const SQLite::Exception& e) {
        EXPECT_NE(std::string(e.what()).find("audit rows are append-only"), std::string::npos) << e.what();
    }
    try {
        Db().Handle().exec("DELETE FROM audit");
        FAIL() << "delete of an audit row was accepted";
    } catch (const SQLite::Exception& e) {
        EXPECT_NE(std::string(e.what()).find("audit rows are append-only"), std::string::npos) << e.what();
    }
    EXPECT_ARCHIVE_UNCHANGED(before);
    EXPECT_EQ(Text("SELECT comment FROM audit"), "created");
}

TEST_F(SchemaTest, JournalRowsCannotBeUpdatedOrDeleted)
{
    Journal journal(Db());
    const long long id = journal.Begin("admin", "delete-patient", "PAT-1", "", "Test patient");
    EXPECT_GT(id, 0);
    EXPECT_THROW(Db().Handle().exec("UPDATE journal SET reason = 'other'"), SQLite::Exception);
    EXPECT_THROW(Db().Handle().exec("DELETE FROM journal"), SQLite::Exception);
    EXPECT_EQ(Text("SELECT reason FROM journal"), "Test patient");
}

TEST_F(SchemaTest, CaptureKeepsAJsonImageOfEachRow)
{
    const std::string p = NorthPatient("O'Brien", "Siobhan", "19800212", "123456789");
    Journal journal(Db());
    const long long id = journal.Begin("admin", "test", p, "", "");
    journal.Capture(id, "patients", "patient_key", "patient_key = @v", p);
    EXPECT_EQ(Text("SELECT json_extract(before_json, '$.last_name') FROM journal_images"), "O'Brien");
    EXPECT_EQ(Text("SELECT json_extract(before_json, '$.global_id') FROM journal_images"), "123456789");
    EXPECT_EQ(Text("SELECT row_key FROM journal_images"), p);
}

TEST(ArchiveDbTest, MigratesAnOlderSchemaKeepingItsRows)
{
    const auto dir = std::filesystem::temp_directory_path() / ("bravik-migrate-" + std::to_string(getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "old.db").string();
    {
        // A version-1 archive as an early program left it.
        SQLite::Database raw(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        raw.exec(Schema::Step(1));
        raw.exec("PRAGMA user_version = 1");
        raw.exec("INSERT INTO organizations(org_key, org_id) VALUES ('O1', 'NORTH')");
        raw.exec("INSERT INTO patients(patient_key, org_key, mrn, last_name) VALUES ('P1', 'O1', '0001', 'Smith')");
        raw.exec("INSERT INTO exams(exam_key, patient_key, org_key, accession) VALUES ('E1', 'P1', 'O1', 'A1')");
    }
    {
        ArchiveDb db(path);
        EXPECT_EQ(db.SchemaVersion(), ArchiveDb::CurrentSchemaVersion());
        EXPECT_EQ(db.Handle().execAndGet("SELECT last_name FROM patients WHERE patient_key = 'P1'").getString(), "Smith");
        // Columns and tables of later steps are there, with their defaults.
        EXPECT_EQ(db.Handle().execAndGet("SELECT cancelled FROM exams WHERE exam_key = 'E1'").getInt(), 0);
        EXPECT_EQ(db.Handle().execAndGet("SELECT count(*) FROM journal").getInt(), 0);
        EXPECT_EQ(db.Handle().execAndGet("SELECT count(*) FROM sqlite_master WHERE name = 'patients_by_name_dob'").getInt(), 1);
    }
    std::filesystem::remove_all(dir);
}

TEST(ArchiveDbTest, MigrateStopsAtTheAskedVersion)
{
    const auto dir = std::filesystem::temp_directory_path() / ("bravik-migrate2-" + std::to_string(getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "steps.db").string();
    {
        SQLite::Database raw(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        raw.exec(Schema::Step(1));
        raw.exec("PRAGMA user_version = 1");
    }
    {
        ArchiveDb db(path, ArchiveDb::Mode::ReadOnly);
        EXPECT_EQ(db.SchemaVersion(), 1); // read-only never migrates
    }
    ArchiveDb db(path);
    EXPECT_EQ(db.SchemaVersion(), ArchiveDb::CurrentSchemaVersion());
    std::filesystem::remove_all(dir);
}

TEST(ArchiveDbTest, NewerSchemaIsRefusedWithAServerException)
{
    const auto dir = std::filesystem::temp_directory_path() / ("bravik-newer-" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "newer.db").string();
    {
        SQLite::Database raw(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        raw.exec("PRAGMA user_version = 99");
    }
    try {
        ArchiveDb db(path);
        FAIL() << "a newer archive was opened";
    } catch (const Framework::Server& e) {
        EXPECT_NE(std::string(e.what()).find("schema version 99"), std::string::npos) << e.what();
    }
    std::filesystem::remove_all(dir);
}

TEST(ArchiveDbTest, AFileThatIsNotAnArchiveGivesAReadableServerException)
{
    const auto dir = std::filesystem::temp_directory_path() / ("bravik-junk-" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "junk.db").string();
    std::ofstream(path) << "this is not a database, just some text that is long enough to be a header";
    try {
        ArchiveDb db(path);
        FAIL() << "junk opened as an archive";
    } catch (const Framework::Server& e) {
        EXPECT_NE(std::string(e.what()).find("cannot open archive"), std::string::npos) << e.what();
        EXPECT_NE(std::string(e.what()).find("not a database"), std::string::npos) << e.what();
    }
    std::filesystem::remove_all(dir);
}

// A file the archive refuses is left exactly as it was: no journal-mode
// switch, no migration, nothing written before the refusal.
class RefusedFileTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = std::filesystem::temp_directory_path() /
                ("bravik-refused-" + std::to_string(getpid()) + "-" +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(m_dir);
        std::filesystem::create_directories(m_dir);
        m_path = (m_dir / "site.db").string();
    }
    void TearDown() override { std::filesystem::remove_all(m_dir); }

    std::string Bytes() const
    {
        std::ifstream in(m_path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    // Opens in every mode; each must throw the server exception naming `expected`.
    void ExpectEveryOpenRefused(const std::string& expected)
    {
        for (const auto mode : {ArchiveDb::Mode::OpenOrCreate, ArchiveDb::Mode::OpenExisting, ArchiveDb::Mode::ReadOnly}) {
            try {
                ArchiveDb db(m_path, mode);
                ADD_FAILURE() << "the file was opened in mode " << static_cast<int>(mode);
            } catch (const Framework::Server& e) {
                EXPECT_NE(std::string(e.what()).find(expected), std::string::npos) << e.what();
            }
        }
        EXPECT_THROW(Archive::Open(m_path), Framework::Server);
    }

    std::filesystem::path m_dir;
    std::string m_path;
};

TEST_F(RefusedFileTest, ANewerArchiveInRollbackModeKeepsEveryByte)
{
    {
        SQLite::Database raw(m_path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        raw.exec("CREATE TABLE patients(patient_key TEXT)");
        raw.exec("PRAGMA user_version = 99");
    }
    const std::string before = Bytes();
    ExpectEveryOpenRefused("schema version 99");
    EXPECT_EQ(Bytes(), before);
    SQLite::Database raw(m_path, SQLite::OPEN_READONLY);
    EXPECT_EQ(raw.execAndGet("PRAGMA journal_mode").getString(), "delete");
}

TEST_F(RefusedFileTest, AnotherProgramsDatabaseIsNotTurnedIntoAnArchive)
{
    {
        SQLite::Database raw(m_path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        raw.exec("CREATE TABLE recipes(name TEXT); INSERT INTO recipes VALUES ('bread')");
    }
    const std::string before = Bytes();
    ExpectEveryOpenRefused("a database of another program, not an archive");
    EXPECT_EQ(Bytes(), before);
}

TEST_F(RefusedFileTest, AnEmptyFileIsRefusedAndStaysEmpty)
{
    std::ofstream(m_path).close();
    ExpectEveryOpenRefused("the file is empty, not an archive");
    EXPECT_TRUE(std::filesystem::exists(m_path));
    EXPECT_EQ(std::filesystem::file_size(m_path), 0u);
}

TEST_F(RefusedFileTest, AMissingFileIsStillCreatedAsANewArchive)
{
    ArchiveDb db(m_path);
    EXPECT_EQ(db.SchemaVersion(), ArchiveDb::CurrentSchemaVersion());
}

TEST(ArchiveDbTest, MissingFileIsRefusedWhenItMustExist)
{
    EXPECT_THROW(ArchiveDb("/nonexistent-dir/none.db", ArchiveDb::Mode::OpenExisting), Framework::Server);
}

TEST_F(SchemaTest, InjectedFaultThrowsAndRollsBack)
{
    const auto before = Snapshot();
    Db().FailAtWrite(2);
    try {
        WriteTransaction tx(Db());
        Journal journal(Db());
        journal.Audit("admin", "K", 1);
        journal.Audit("admin", "K", 2); // the second write fails
        tx.Commit();
        FAIL() << "no fault";
    } catch (const Framework::Server& e) {
        EXPECT_NE(std::string(e.what()).find("injected fault at write statement 2"), std::string::npos);
    }
    Db().FailAtWrite(0);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

} // namespace
