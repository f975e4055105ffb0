// The archive check finds what lost races leave behind.
#include <archivefixture.h>

#include <archivechecker.h>
#include <archiveerror.h>
#include <sqliteexamservice.h>
#include <sqlitepatientservice.h>

#include <patientdetailrecord.h>

#include <algorithm>

namespace {

class CheckerTest : public ArchiveFixture
{
protected:
    std::vector<std::string> Findings() { return ArchiveChecker(Db()).Run(); }
    bool Found(const std::string& line)
    {
        const auto all = Findings();
        return std::find(all.begin(), all.end(), line) != all.end();
    }
    // What only a program with the archive's rules switched off could write.
    void Raw(const std::string& sql)
    {
        Db().Handle().exec("PRAGMA foreign_keys = OFF");
        Db().Handle().exec(sql);
        Db().Handle().exec("PRAGMA foreign_keys = ON");
    }
    void Tombstone(const std::string& old, const std::string& survivor)
    {
        Raw("INSERT OR IGNORE INTO journal(journal_id, at, operation, subject_key) VALUES (900, 'x', 'merge', 'none')");
        Raw("INSERT INTO journal_images(journal_id, seq, table_name, row_key, before_json) "
            "SELECT 900, coalesce(max(seq), 0) + 1, 'patients', 'none', '{}' FROM journal_images WHERE journal_id = 900");
        Raw("INSERT INTO merged_patients(old_key, survivor_key, journal_id) VALUES ('" + old + "', '" + survivor +
            "', 900)");
    }
};

TEST_F(CheckerTest, AnArchiveWorkedOnByTheServicesIsSound)
{
    const std::string a = NorthPatient("Smith", "John"), b = NorthPatient("Smyth", "John");
    const std::string c = NorthPatient("Other", "Ann");
    PatientDetailRecord survivor;
    ASSERT_EQ(Arc().Patients().GetPatient(a.c_str(), &survivor, ""), 0);
    ASSERT_EQ(Arc().Patients().MergePatients(b.c_str(), &survivor, "Duplicate", {}), 0);
    ASSERT_EQ(Arc().Patients().DeletePatient(a.c_str(), "", "Entered in error"), 0);
    const std::string exam = Build().Exam(c);
    ASSERT_EQ(Arc().Exams().CancelExam(exam.c_str(), "", "Patient left"), 0);
    const auto findings = Findings();
    EXPECT_TRUE(findings.empty()) << findings.front();
}

TEST_F(CheckerTest, MergesThatLeadRoundInACycleAreReported)
{
    Tombstone("P-X", "P-Y");
    Tombstone("P-Y", "P-X");
    EXPECT_TRUE(Found("merge of P-X leads round in a cycle back to P-X"));
    EXPECT_TRUE(Found("merge of P-Y leads round in a cycle back to P-Y"));
}

TEST_F(CheckerTest, AMergeIntoAPatientThatIsGoneWithoutADeleteIsReported)
{
    const std::string kept = NorthPatient("Smith", "John");
    Tombstone("P-OLD", "P-NEVER");
    Tombstone("P-FINE", kept);
    EXPECT_TRUE(Found("merge of P-OLD leads to missing patient P-NEVER"));
    for (const auto& line : Findings())
        EXPECT_EQ(line.find("P-FINE"), std::string::npos) << line;
}

TEST_F(CheckerTest, ALinkGroupOfOneRecordIsReported)
{
    const std::string a = NorthPatient("Smith", "John");
    Raw("INSERT INTO link_groups(group_key, created) VALUES ('G-LONE', 'x')");
    Raw("UPDATE patients SET link_group = 'G-LONE' WHERE patient_key = '" + a + "'");
    Raw("INSERT INTO link_groups(group_key, created) VALUES ('G-EMPTY', 'x')");
    EXPECT_TRUE(Found("link group G-LONE holds 1 record(s); a group needs two"));
    EXPECT_TRUE(Found("link group G-EMPTY holds 0 record(s); a group needs two"));
}

TEST_F(CheckerTest, AnExamLinkGroupOfOneExamIsReported)
{
    const std::string exam = Build().Exam(NorthPatient("Smith", "John"));
    Raw("UPDATE exams SET link_group = 'EG-LONE' WHERE exam_key = '" + exam + "'");
    EXPECT_TRUE(Found("exam link group EG-LONE holds only one exam"));
}

TEST_F(CheckerTest, TwoRecordsOfOneOrganizationInAGroupAreReported)
{
    const std::string a = NorthPatient("Smith", "John"), b = NorthPatient("Smyth", "John");
    Raw("DROP INDEX patients_one_per_org_in_group");
    Raw("INSERT INTO link_groups(group_key, created) VALUES ('G-TWO', 'x')");
    Raw("UPDATE patients SET link_group = 'G-TWO' WHERE patient_key IN ('" + a + "', '" + b + "')");
    EXPECT_TRUE(Found("link group G-TWO holds 2 records of organization NORTH"));
}

TEST_F(CheckerTest, AJournalEntryForARecordThatNeverExistedIsReported)
{
    Raw("INSERT INTO journal(journal_id, at, operation, subject_key) VALUES (77, 'x', 'cancel-exam', 'E-NEVER')");
    EXPECT_TRUE(Found("journal entry 77 (cancel-exam) is about E-NEVER, a record that did not exist"));
}

} // namespace
