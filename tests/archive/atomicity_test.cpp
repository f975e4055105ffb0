// Every write operation is all or nothing: a fault at any one of its write
// statements leaves every table exactly as it was.
#include <archivefixture.h>

#include <sqliteexamservice.h>
#include <sqlitepatientservice.h>

#include <linkedpatientinfo.h>
#include <patientdetailrecord.h>
#include <server.h>

#include <functional>

namespace {

class AtomicityTest : public ArchiveFixture
{
protected:
    std::string In(const std::string& org, const std::string& last)
    {
        ArchiveBuilder::PatientFields s;
        s.orgKey = org;
        s.last = last;
        return Build().Patient(s);
    }

    // Fails the 1st, 2nd, ... write of `op` until it runs through; returns
    // how many writes it made.
    int ExpectAllOrNothing(const std::function<int()>& op)
    {
        for (int n = 1; n < 500; ++n) {
            const auto before = Snapshot();
            Db().FailAtWrite(n);
            bool threw = false;
            int rc = -1;
            try {
                rc = op();
            } catch (const Framework::Server& e) {
                threw = true;
                EXPECT_NE(std::string(e.what()).find("injected fault"), std::string::npos) << e.what();
            }
            Db().FailAtWrite(0);
            if (!threw) {
                EXPECT_EQ(rc, 0) << "the operation refused instead of running";
                EXPECT_FALSE(before == Snapshot()) << "the operation changed nothing";
                return n - 1;
            }
            const auto after = Snapshot();
            EXPECT_TRUE(before == after) << "fault at write " << n << ": " << DescribeDifference(before, after);
        }
        ADD_FAILURE() << "the operation never completed";
        return 0;
    }
};

TEST_F(AtomicityTest, Merge)
{
    const std::string s = In(m_north, "S"), s2 = In(m_south, "S2"), se = In(m_enterprise, "SE");
    const std::string t = In(m_north, "T"), t2 = In(m_south, "T2");
    const std::string g = Build().LinkGroup(s, s2);
    Build().AddToGroup(g, se);
    Build().LinkGroup(t, t2);
    Build().Study(Build().Exam(s), s);
    Build().Study(Build().Exam(s2), s2);
    Build().Ignore(s, t);
    const int writes = ExpectAllOrNothing([&] {
        PatientDetailRecord target;
        EXPECT_EQ(Arc().Patients().GetPatient(t.c_str(), &target, ""), 0);
        target.SetCity("Merged City");
        LinkedPatientInfo pair(s2.c_str(), t2.c_str());
        return Arc().Patients().MergePatients(s.c_str(), &target, "Duplicate", {&pair});
    });
    EXPECT_GE(writes, 15);
}

TEST_F(AtomicityTest, Link)
{
    const std::string a = In(m_north, "A"), a2 = In(m_enterprise, "A2");
    const std::string b = In(m_south, "B"), b2 = In(m_federated, "B2");
    Build().LinkGroup(a, a2);
    Build().LinkGroup(b, b2);
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Patients().LinkPatients(a.c_str(), "", b.c_str(), "", nullptr); }), 5);
}

TEST_F(AtomicityTest, LinkOfTwoUnlinkedRecords)
{
    const std::string a = In(m_north, "A"), b = In(m_south, "B");
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Patients().LinkPatients(a.c_str(), "", b.c_str(), "", nullptr); }), 4);
}

TEST_F(AtomicityTest, Unlink)
{
    const std::string a = In(m_north, "A"), b = In(m_south, "B");
    Build().LinkGroup(a, b);
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Patients().UnLinkPatient(a.c_str(), ""); }), 4);
}

TEST_F(AtomicityTest, DeletePatient)
{
    const std::string a = In(m_north, "A"), b = In(m_south, "B"), c = In(m_north, "C");
    Build().LinkGroup(a, b);
    Build().Study(Build().Exam(a), a);
    Build().Ignore(a, c);
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Patients().DeletePatient(a.c_str(), "", "Test patient"); }), 10);
}

TEST_F(AtomicityTest, Ignore)
{
    const std::string a = In(m_north, "A"), b = In(m_north, "B");
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Patients().IgnoreDuplicatePatients(a.c_str(), b.c_str()); }), 2);
}

TEST_F(AtomicityTest, CreateAndModifyPatient)
{
    EXPECT_GE(ExpectAllOrNothing([&] {
                  PatientDetailRecord r;
                  r.SetOrganizationKey(m_north.c_str());
                  r.SetPatientID("42");
                  r.SetName(BPersonName("New", "Person"));
                  ACE_CString key;
                  return Arc().Patients().CreatePatient(&r, key);
              }),
              2);
    const std::string a = In(m_north, "A");
    EXPECT_GE(ExpectAllOrNothing([&] {
                  PatientDetailRecord r;
                  Arc().Patients().GetPatient(a.c_str(), &r, "");
                  r.SetCity("Elsewhere");
                  return Arc().Patients().ModifyPatient(&r);
              }),
              2);
}

TEST_F(AtomicityTest, DeleteCancelAndDetach)
{
    const std::string a = In(m_north, "A");
    const std::string e1 = Build().Exam(a), e2 = Build().Exam(a), e3 = Build().Exam(a);
    Build().Study(e1, a);
    const std::string st = Build().Study(e3, a);
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Exams().DeleteExam(e1.c_str(), "", "Entered in error", true); }), 5);
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Exams().CancelExam(e2.c_str(), "", "Patient did not arrive"); }), 3);
    EXPECT_GE(ExpectAllOrNothing([&] { return Arc().Exams().DetachStudy(st.c_str(), "Study attached to wrong exam"); }), 3);
}

TEST_F(AtomicityTest, GeneratedNumbers)
{
    EXPECT_GE(ExpectAllOrNothing([&] {
                  ACE_CString mrn;
                  return Arc().Patients().GetAutogeneratedMRN(m_north.c_str(), mrn);
              }),
              1);
    EXPECT_GE(ExpectAllOrNothing([&] {
                  ACE_CString acc;
                  return Arc().Exams().GetAutogeneratedACC(m_north.c_str(), acc);
              }),
              1);
}

} // namespace
