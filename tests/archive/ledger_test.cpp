// The audit trail and journal as hash chains: every kind of tampering is
// found by the check, the heads are printed, and each audit record also goes
// to the system log once its transaction commits.
#include <archivefixture.h>

#include <archivechecker.h>
#include <archivetool.h>
#include <journal.h>
#include <ledger.h>
#include <schema.h>
#include <server.h>
#include <sha256.h>
#include <systemlog.h>

#include <sqlitepatientservice.h>

#include <patientdetailrecord.h>

#include <SQLiteCpp/Database.h>

#include <sstream>

namespace {

class LedgerTest : public ArchiveFixture
{
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        m_previousSink = SystemLog::SetSink([this](const std::string& line) { m_syslog.push_back(line); });
    }
    void TearDown() override
    {
        SystemLog::SetSink(m_previousSink);
        ArchiveFixture::TearDown();
    }

    std::string CreatePatient(const std::string& mrn)
    {
        PatientDetailRecord r;
        r.SetOrganizationKey(m_north.c_str());
        r.SetPatientID(mrn.c_str());
        r.SetName(BPersonName("Jansen", "Anouk", "", "", ""));
        r.SetSexCode("F");
        r.SetDOB(BDate(1984, 2, 29));
        ACE_CString key;
        EXPECT_EQ(Arc().Patients().CreatePatient(&r, key), 0);
        return key.c_str();
    }
    // Three audited creations and a journalled deletion.
    void Work()
    {
        CreatePatient("1001");
        CreatePatient("1002");
        const std::string gone = CreatePatient("1003");
        ASSERT_EQ(Arc().Patients().DeletePatient(gone.c_str(), m_north.c_str(), "Registered twice"), 0);
    }
    std::vector<std::string> Check() { return ArchiveChecker(Db()).Run(); }
    // What someone with the file and a SQLite shell could do: the triggers go,
    // the rows are changed, the triggers come back.
    void Tamper(const std::string& sql)
    {
        SQLite::Database raw(Path(), SQLite::OPEN_READWRITE);
        std::string triggers;
        SQLite::Statement q(raw, "SELECT group_concat(sql, ';') FROM sqlite_master WHERE type = 'trigger' AND "
                                 "(tbl_name IN ('audit', 'journal', 'journal_images', 'ledger'))");
        if (q.executeStep())
            triggers = q.getColumn(0).getString();
        q.reset();
        SQLite::Statement names(raw, "SELECT name FROM sqlite_master WHERE type = 'trigger' AND "
                                     "(tbl_name IN ('audit', 'journal', 'journal_images', 'ledger'))");
        std::vector<std::string> drop;
        while (names.executeStep())
            drop.push_back(names.getColumn(0).getString());
        for (const auto& name : drop)
            raw.exec("DROP TRIGGER " + name);
        raw.exec(sql);
        raw.exec(triggers);
    }
    static bool Has(const std::vector<std::string>& lines, const std::string& text)
    {
        for (const auto& line : lines)
            if (line.find(text) != std::string::npos)
                return true;
        return false;
    }
    static std::string Joined(const std::vector<std::string>& lines)
    {
        std::string out;
        for (const auto& line : lines)
            out += line + "\n";
        return out;
    }

    std::vector<std::string> m_syslog;
    SystemLog::Sink m_previousSink;
};

TEST(Sha256Test, KnownDigests)
{
    EXPECT_EQ(Sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Sha256Hex("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(Sha256Hex(std::string(1000, 'a')), "41edece42d63e8d9bf515a9ba6932e1c20cbc9f5a5d134645adb5db1b9737ea3");
}

TEST_F(LedgerTest, EveryAuditAndJournalRowIsChainedAndTheCheckPasses)
{
    Work();
    EXPECT_TRUE(Check().empty()) << Joined(Check());
    const auto heads = Ledger(Db()).Heads();
    ASSERT_EQ(heads.size(), 3u);
    EXPECT_EQ(heads[0].table, "audit");
    EXPECT_EQ(heads[0].rows, Count("SELECT count(*) FROM audit"));
    EXPECT_EQ(heads[0].lastRow, Count("SELECT max(audit_id) FROM audit"));
    EXPECT_EQ(heads[0].digest, Text("SELECT digest FROM ledger WHERE table_name = 'audit' ORDER BY row_id DESC LIMIT 1"));
    EXPECT_EQ(heads[1].rows, Count("SELECT count(*) FROM journal"));
    EXPECT_EQ(heads[2].rows, Count("SELECT count(*) FROM journal_images"));
    EXPECT_GT(heads[2].rows, 0);
}

TEST_F(LedgerTest, ARewrittenAuditRowIsFound)
{
    Work();
    const long long row = Count("SELECT min(audit_id) FROM audit") + 1;
    Tamper("UPDATE audit SET user_name = 'nobody' WHERE audit_id = " + std::to_string(row));
    const auto problems = Check();
    EXPECT_TRUE(Has(problems, "chain: audit row " + std::to_string(row) + " was changed after it was written"))
        << Joined(problems);
}

TEST_F(LedgerTest, ARewrittenJournalReasonIsFound)
{
    Work();
    Tamper("UPDATE journal SET reason = 'Patient asked for it'");
    EXPECT_TRUE(Has(Check(), "chain: journal row 1 was changed after it was written")) << Joined(Check());
}

TEST_F(LedgerTest, ARowRemovedFromTheMiddleIsFound)
{
    Work();
    const long long row = Count("SELECT min(audit_id) FROM audit") + 1;
    Tamper("DELETE FROM audit WHERE audit_id = " + std::to_string(row));
    EXPECT_TRUE(Has(Check(), "chain: audit row " + std::to_string(row) + " was removed")) << Joined(Check());
}

TEST_F(LedgerTest, RowsRemovedFromTheTailWithTheirSealsAreFound)
{
    Work();
    const long long last = Count("SELECT max(audit_id) FROM audit");
    Tamper("DELETE FROM audit WHERE audit_id = " + std::to_string(last) +
           "; DELETE FROM ledger WHERE table_name = 'audit' AND row_id = " + std::to_string(last));
    const auto problems = Check();
    EXPECT_TRUE(Has(problems, "rows at its end were removed or the head was changed")) << Joined(problems);
}

TEST_F(LedgerTest, ATrailWipedEntirelyIsFound)
{
    Work();
    Tamper("DELETE FROM audit; DELETE FROM ledger WHERE table_name = 'audit'; "
           "UPDATE ledger_heads SET row_count = 0, last_row = 0, head = '' WHERE table_name = 'audit'");
    const auto problems = Check();
    EXPECT_TRUE(Has(problems, "chain: audit rows up to ")) << Joined(problems);
}

TEST_F(LedgerTest, ARowWrittenOutsideTheArchiveIsFound)
{
    Work();
    Tamper("INSERT INTO audit(at, user_name, record_key, event_code, comment) VALUES ('2020-01-01T00:00:00Z', 'x', 'k', 1, '')");
    const long long row = Count("SELECT max(audit_id) FROM audit");
    EXPECT_TRUE(Has(Check(), "chain: audit row " + std::to_string(row) + " is not in the chain")) << Joined(Check());
}

TEST_F(LedgerTest, ARowSlippedInBetweenIsFound)
{
    Work();
    const long long row = Count("SELECT min(audit_id) FROM audit") + 1;
    // The seal of the row before is kept, the row itself is replaced by another.
    Tamper("DELETE FROM audit WHERE audit_id = " + std::to_string(row) +
           "; INSERT INTO audit(audit_id, at, user_name, record_key, event_code, comment) VALUES (" +
           std::to_string(row) + ", '2020-01-01T00:00:00Z', 'x', 'k', 1, '')");
    EXPECT_TRUE(Has(Check(), "chain: audit row " + std::to_string(row) + " was changed")) << Joined(Check());
}

TEST_F(LedgerTest, DroppedChainTablesAreFound)
{
    Work();
    SQLite::Database raw(Path(), SQLite::OPEN_READWRITE);
    raw.exec("DROP TRIGGER ledger_no_update; DROP TRIGGER ledger_no_delete; DROP TABLE ledger");
    EXPECT_TRUE(Has(Check(), "chain: the audit and journal chains are gone")) << Joined(Check());
}

TEST_F(LedgerTest, TheToolPrintsTheHeadsAndFailsOnTampering)
{
    Work();
    const std::string head = Ledger(Db()).Heads()[0].digest;
    std::ostringstream out, err;
    EXPECT_EQ(RunArchiveTool({"check", Path()}, out, err), 0);
    EXPECT_NE(out.str().find("audit chain: " + std::to_string(Count("SELECT count(*) FROM audit")) + " rows, last row " +
                             std::to_string(Count("SELECT max(audit_id) FROM audit")) + ", head " + head),
              std::string::npos)
        << out.str();
    Tamper("UPDATE audit SET comment = 'x'");
    std::ostringstream out2, err2;
    EXPECT_EQ(RunArchiveTool({"check", Path()}, out2, err2), 1);
    EXPECT_NE(out2.str().find("was changed after it was written"), std::string::npos) << out2.str();
}

TEST_F(LedgerTest, EachCommittedAuditRecordGoesToTheSystemLogAsOneLine)
{
    const std::string key = CreatePatient("2001");
    ASSERT_EQ(m_syslog.size(), 1u);
    EXPECT_EQ(m_syslog[0].rfind("bravik audit: user=admin event=patient created (1) record=" + key + " at=", 0), 0u)
        << m_syslog[0];
    EXPECT_EQ(m_syslog[0].substr(m_syslog[0].find(" at=") + 4),
              Text("SELECT at FROM audit WHERE record_key = '" + key + "'"));
}

TEST_F(LedgerTest, ARolledBackOperationLeavesNothingInTheSystemLog)
{
    const std::string key = CreatePatient("2002");
    m_syslog.clear();
    Db().FailAtWrite(2);
    EXPECT_THROW(Arc().Patients().DeletePatient(key.c_str(), m_north.c_str(), "Registered twice"), Framework::Server);
    Db().FailAtWrite(0);
    EXPECT_TRUE(m_syslog.empty()) << m_syslog.front();
    EXPECT_TRUE(Check().empty()) << Joined(Check());
}

TEST(LedgerMigrationTest, RowsOfAnOlderArchiveAreSealedWhenItIsMigrated)
{
    const auto dir = std::filesystem::temp_directory_path() / ("bravik-ledger-" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "old.db").string();
    {
        // An archive of the version before the chains, with an audit trail.
        SQLite::Database raw(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        for (int v = 1; v < Schema::LedgerVersion(); ++v)
            raw.exec(Schema::Step(v));
        raw.exec("PRAGMA user_version = " + std::to_string(Schema::LedgerVersion() - 1));
        raw.exec("INSERT INTO audit(at, user_name, record_key, event_code) VALUES ('2025-01-01T00:00:00Z', 'a', 'k1', 1),"
                 " ('2025-01-02T00:00:00Z', 'a', 'k2', 2)");
    }
    ArchiveDb db(path);
    EXPECT_TRUE(ArchiveChecker(db).Run().empty());
    EXPECT_EQ(Ledger(db).Heads()[0].rows, 2);
    std::filesystem::remove_all(dir);
}

} // namespace
