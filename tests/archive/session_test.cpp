// Installing the archive into the host's session and taking it out again.
#include <archivefixture.h>

#include <sqlitedictionaryservice.h>
#include <sqliteexamservice.h>
#include <sqliteorgcollection.h>
#include <sqlitepatientservice.h>
#include <sqliteproviderservice.h>

#include <options.h>
#include <preferences.h>
#include <serviceregistry.h>
#include <session.h>
#include <sitepolicy.h>
#include <userrights.h>
#include <worklistutils.h>
#include <server.h>

namespace {

class SessionTest : public ArchiveFixture
{
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        Build().User("clerk");
        Build().Grant("clerk", m_north, true, true, false);
        Build().Setting("policy", "NumericMRN", "1");
        Build().Setting("policy", "EmptyFirstNameAllowed", "1");
        Build().Setting("policy", "PatientIDColumnName", "BSN");
        Build().Setting("product", "StudyDeletionEnabled", "0");
        Build().Setting("option", std::to_string(Options::OPT_VIP_STATUS), "1");
        Build().Preference("clerk", "DetachAnnotationWarning", "1");
    }
};

TEST_F(SessionTest, InstallPutsTheServicesAndTheUsersPoliciesIntoTheSession)
{
    ASSERT_TRUE(Arc().InstallIntoSession("CLERK"));
    ServiceRegistry* registry = Session::ServiceInstance();
    ASSERT_NE(registry, nullptr);
    EXPECT_EQ(registry->GetPatientManagementService(), &Arc().Patients());
    EXPECT_EQ(registry->GetExamService(), &Arc().Exams());
    EXPECT_EQ(registry->GetDictionaryService(), &Arc().Dictionaries());
    EXPECT_EQ(registry->GetProviderService(), &Arc().Providers());
    EXPECT_EQ(registry->GetOrgOperationsCollection(), &Arc().Organizations());
    EXPECT_STREQ(Session::Instance().GetUserName().c_str(), "clerk");
    EXPECT_EQ(Arc().User(), "clerk");

    const UserRights& rights = Session::Instance().GetUserRights();
    EXPECT_TRUE(rights.HasCreatePatientRight("NORTH"));
    EXPECT_TRUE(rights.HasLinkPatientRight("NORTH"));
    EXPECT_FALSE(rights.HasMergePatientRight("NORTH"));
    EXPECT_FALSE(rights.HasLinkPatientRight("SOUTH"));
    EXPECT_FALSE(rights.HasLinkPatientRight("NOWHERE"));

    EXPECT_TRUE(SitePolicy::Get().numericMRN);
    EXPECT_TRUE(SitePolicy::Get().emptyFirstNameAllowed);
    EXPECT_EQ(SitePolicy::Get().patientIDColumnName, "BSN");
    EXPECT_FALSE(SitePolicy::Get().studyDeletionEnabled);
    EXPECT_TRUE(Options::IsOptionSet(Options::OPT_VIP_STATUS));
    EXPECT_TRUE(Preferences::Instance().DetachAnnotationWarning());
    // Priorities rank S, A, R whatever the dictionary order.
    EXPECT_EQ(WorkListUtils::GetPriorityCodeIndex("S"), 0);
    EXPECT_EQ(WorkListUtils::GetPriorityCodeIndex("A"), 1);
    EXPECT_EQ(WorkListUtils::GetPriorityCodeIndex("R"), 2);
}

TEST_F(SessionTest, UninstallRestoresWhatWasThere)
{
    SitePolicySettings before;
    before.patientIDColumnName = "GID";
    SitePolicy::Set(before);
    Session::Instance().SetUserName("host-user");
    ASSERT_TRUE(Arc().InstallIntoSession("admin"));
    Arc().Uninstall();
    ServiceRegistry* registry = Session::ServiceInstance();
    ASSERT_NE(registry, nullptr);
    EXPECT_EQ(registry->GetPatientManagementService(), nullptr);
    EXPECT_EQ(registry->GetOrgOperationsCollection(), nullptr);
    EXPECT_STREQ(Session::Instance().GetUserName().c_str(), "host-user");
    EXPECT_EQ(SitePolicy::Get().patientIDColumnName, "GID");
    EXPECT_FALSE(Arc().Installed());
}

TEST_F(SessionTest, AnUnknownUserIsRefusedAndTheSessionIsUntouched)
{
    EXPECT_FALSE(Arc().InstallIntoSession("mallory"));
    EXPECT_EQ(Session::ServiceInstance()->GetPatientManagementService(), nullptr);
    EXPECT_STREQ(Session::Instance().GetUserName().c_str(), "");
    EXPECT_FALSE(Arc().Installed());
}

TEST_F(SessionTest, TheDefaultUser)
{
    EXPECT_EQ(Arc().DefaultUser(), "admin");
}

TEST_F(SessionTest, ArchiveOpenOfAnUnusablePathThrows)
{
    EXPECT_THROW(Archive::Open((Dir() / "no-such-dir" / "x.db").string()), Framework::Server);
}

} // namespace
