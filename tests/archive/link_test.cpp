// Link groups: linking, the one-record-per-organization rule, unlinking, rights.
#include <archivefixture.h>

#include <archiveerror.h>
#include <sqlitepatientservice.h>

#include <patientdetailrecord.h>

namespace {

class LinkTest : public ArchiveFixture
{
protected:
    SqlitePatientService& Svc() { return Arc().Patients(); }
    std::string In(const std::string& org, const std::string& last = "Smith", const std::string& group = std::string())
    {
        ArchiveBuilder::PatientFields s;
        s.orgKey = org;
        s.last = last;
        s.group = group;
        return Build().Patient(s);
    }
    std::string GroupOf(const std::string& p)
    {
        return Text("SELECT link_group FROM patients WHERE patient_key = '" + p + "'");
    }
};

TEST_F(LinkTest, LinkingTwoUnlinkedRecordsMakesAGroupAndReturnsItsKey)
{
    const std::string a = In(m_north), b = In(m_south);
    EXPECT_TRUE(Svc().CanLinkPatients(a.c_str(), b.c_str()));
    ACE_CString id;
    ASSERT_EQ(Svc().LinkPatients(a.c_str(), m_north.c_str(), b.c_str(), m_south.c_str(), &id), 0);
    EXPECT_FALSE(id.length() == 0);
    EXPECT_EQ(GroupOf(a), id.c_str());
    EXPECT_EQ(GroupOf(b), id.c_str());
    EXPECT_EQ(Count("SELECT count(*) FROM link_groups"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'link'"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM audit WHERE event_code = 5"), 1);
    std::vector<PatientDetailRecord*> linked;
    ASSERT_EQ(Svc().GetLinkedPatients(a.c_str(), "", linked), 0);
    ASSERT_EQ(linked.size(), 2u);
    EXPECT_STREQ(linked[0]->GetPatientKey().c_str(), a.c_str()); // the patient itself first
    EXPECT_STREQ(linked[1]->GetPatientKey().c_str(), b.c_str());
    for (auto* p : linked)
        delete p;
}

TEST_F(LinkTest, LinkingJoinsTwoGroups)
{
    const std::string a = In(m_north), b = In(m_enterprise);
    const std::string c = In(m_south), d = In(m_federated);
    const std::string g1 = Build().LinkGroup(a, b);
    Build().LinkGroup(c, d);
    ACE_CString id;
    ASSERT_EQ(Svc().LinkPatients(a.c_str(), "", c.c_str(), "", &id), 0);
    EXPECT_STREQ(id.c_str(), g1.c_str());
    for (const auto& p : {a, b, c, d})
        EXPECT_EQ(GroupOf(p), g1);
    EXPECT_EQ(Count("SELECT count(*) FROM link_groups"), 1);
}

TEST_F(LinkTest, TwoRecordsOfOneOrganizationCannotShareAGroup)
{
    const std::string a = In(m_north), b = In(m_north);
    EXPECT_FALSE(Svc().CanLinkPatients(a.c_str(), b.c_str()));
    const auto before = Snapshot();
    ACE_CString id;
    EXPECT_EQ(Svc().LinkPatients(a.c_str(), "", b.c_str(), "", &id), ArchiveResult::Conflict);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(LinkTest, GroupsWhoseUnionRepeatsAnOrganizationAreRefused)
{
    const std::string a = In(m_north), b = In(m_south);
    const std::string c = In(m_enterprise), d = In(m_south, "Other");
    Build().LinkGroup(a, b);
    Build().LinkGroup(c, d);
    EXPECT_FALSE(Svc().CanLinkPatients(a.c_str(), c.c_str()));
    const auto before = Snapshot();
    EXPECT_EQ(Svc().LinkPatients(a.c_str(), "", c.c_str(), "", nullptr), ArchiveResult::Conflict);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(LinkTest, InvalidLinkRequestsChangeNothing)
{
    const std::string a = In(m_north), b = In(m_south), c = In(m_enterprise);
    Build().LinkGroup(a, b);
    const auto before = Snapshot();
    ACE_CString id;
    struct Case { std::string first, firstOrg, second, secondOrg; };
    const std::vector<Case> cases = {
        {"", "", c, ""},
        {a, "", "", ""},
        {"GHOST", "", c, ""},
        {a, "", "GHOST", ""},
        {a, "", a, ""},
        {a, "", b, ""},                     // already linked
        {a, m_south, c, ""},                // wrong organization for the first
        {a, "", c, m_north},                // wrong organization for the second
        {a, "NOWHERE", c, ""},
        {std::string(70, 'k'), "", c, ""},
        {"\xff\xfe", "", c, ""},
        {"%", "", c, ""},
        {"_", "", c, ""},
        {"*", "", c, ""},
        {"' OR '1'='1", "", c, ""},
    };
    for (const auto& k : cases) {
        EXPECT_NE(Svc().LinkPatients(k.first.c_str(), k.firstOrg.c_str(), k.second.c_str(), k.secondOrg.c_str(), &id), 0)
            << k.first << " / " << k.second;
        EXPECT_FALSE(Svc().CanLinkPatients(k.first.c_str(), k.second.c_str()) && k.firstOrg.empty() && k.secondOrg.empty())
            << k.first << " / " << k.second;
    }
    EXPECT_EQ(id.length(), 0u);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(LinkTest, LinkNeedsTheLinkRightInBothOrganizations)
{
    const std::string a = In(m_north), b = In(m_south);
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, true);
    Build().Grant("clerk", m_south, true, false, true);
    Arc().SetUser("clerk");
    const auto before = Snapshot();
    EXPECT_EQ(Svc().LinkPatients(a.c_str(), "", b.c_str(), "", nullptr), ArchiveResult::NotPermitted);
    EXPECT_ARCHIVE_UNCHANGED(before);
    Build().Grant("clerk", m_south, true, true, false);
    EXPECT_EQ(Svc().LinkPatients(a.c_str(), "", b.c_str(), "", nullptr), 0);
}

TEST_F(LinkTest, UnlinkTakesOneRecordOutAndKeepsTheRestLinked)
{
    const std::string a = In(m_north), b = In(m_south), c = In(m_enterprise);
    const std::string g = Build().LinkGroup(a, b);
    Build().AddToGroup(g, c);
    ASSERT_EQ(Svc().UnLinkPatient(a.c_str(), m_north.c_str()), 0);
    EXPECT_EQ(GroupOf(a), "<none>");
    EXPECT_EQ(GroupOf(b), g);
    EXPECT_EQ(GroupOf(c), g);
    EXPECT_EQ(Count("SELECT count(*) FROM journal WHERE operation = 'unlink'"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'patients'"), 3);
}

TEST_F(LinkTest, UnlinkingFromAPairDissolvesTheGroup)
{
    const std::string a = In(m_north), b = In(m_south);
    Build().LinkGroup(a, b);
    ASSERT_EQ(Svc().UnLinkPatient(b.c_str(), ""), 0);
    EXPECT_EQ(GroupOf(a), "<none>");
    EXPECT_EQ(GroupOf(b), "<none>");
    EXPECT_EQ(Count("SELECT count(*) FROM link_groups"), 0);
}

TEST_F(LinkTest, UnlinkRefusals)
{
    const std::string a = In(m_north), b = In(m_south), lone = In(m_enterprise);
    Build().LinkGroup(a, b);
    const auto before = Snapshot();
    EXPECT_EQ(Svc().UnLinkPatient(lone.c_str(), ""), ArchiveResult::Conflict);
    EXPECT_EQ(Svc().UnLinkPatient("", ""), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().UnLinkPatient("GHOST", ""), ArchiveResult::NotFound);
    EXPECT_EQ(Svc().UnLinkPatient(a.c_str(), m_south.c_str()), ArchiveResult::InvalidArgument);
    Arc().SetUser("reader"); // known, but holds no right
    EXPECT_EQ(Svc().UnLinkPatient(a.c_str(), ""), ArchiveResult::NotPermitted);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(LinkTest, LinkedPatientsForMergeCandidatesListsEachGroupPatientFirst)
{
    const std::string a = In(m_north, "A"), a2 = In(m_south, "A2");
    const std::string b = In(m_north, "B");
    Build().LinkGroup(a, a2);
    std::vector<PatientDetailRecord*> first, second;
    ASSERT_EQ(Svc().GetLinkedPatientsForMergeCandidates(a.c_str(), b.c_str(), first, second), 0);
    ASSERT_EQ(first.size(), 2u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_STREQ(first[0]->GetLastName().c_str(), "A");
    EXPECT_STREQ(first[1]->GetLastName().c_str(), "A2");
    EXPECT_STREQ(second[0]->GetLastName().c_str(), "B");
    for (auto* p : first)
        delete p;
    for (auto* p : second)
        delete p;
    std::vector<PatientDetailRecord*> x, y;
    EXPECT_NE(Svc().GetLinkedPatientsForMergeCandidates(a.c_str(), "GHOST", x, y), 0);
    EXPECT_TRUE(x.empty());
    EXPECT_TRUE(y.empty());
}

} // namespace
