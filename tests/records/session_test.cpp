#include "auditandlogparams.h"
#include "bsnmodifier.h"
#include "errormanager.h"
#include "hoststate.h"
#include "options.h"
#include "preferences.h"
#include "productconfiguration.h"
#include "server.h"
#include "serviceregistry.h"
#include "session.h"
#include "sitepolicy.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

class SessionTest : public ::testing::Test
{
protected:
    void SetUp() override { ResetHostState(); }
    void TearDown() override { ResetHostState(); }
};

// Any non-null address will do: the registry only stores the pointers.
template <typename T>
T* Fake(int n)
{
    return reinterpret_cast<T*>(static_cast<std::uintptr_t>(0x1000 * n));
}

} // namespace

TEST_F(SessionTest, AuditReachesTheInstalledSink)
{
    std::vector<std::pair<std::string, unsigned long>> seen;
    std::vector<std::string> comments;
    Session::Instance().SetAuditSink([&](const AuditAndLogParams& p, const ACE_CString& comment) {
        seen.emplace_back(p.GetKey().c_str(), p.GetEventCode());
        comments.emplace_back(comment.c_str());
        return 0;
    });
    EXPECT_EQ(Session::Instance().AuditAndLog(AuditAndLogParams("PK1", 51), ""), 0);
    EXPECT_EQ(Session::Instance().AuditAndLog(AuditAndLogParams("EX9", 50), ACE_CString("why")), 0);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0], std::make_pair(std::string("PK1"), 51ul));
    EXPECT_EQ(seen[1], std::make_pair(std::string("EX9"), 50ul));
    EXPECT_EQ(comments, (std::vector<std::string>{"", "why"}));
}

TEST_F(SessionTest, AuditSinkResultIsReturnedAndResetRemovesTheSink)
{
    int calls = 0;
    Session::Instance().SetAuditSink([&](const AuditAndLogParams&, const ACE_CString&) {
        ++calls;
        return 7;
    });
    EXPECT_EQ(Session::Instance().AuditAndLog(AuditAndLogParams("K", 51), ""), 7);
    ResetHostState();
    EXPECT_EQ(Session::Instance().AuditAndLog(AuditAndLogParams("K", 51), ""), 0);
    EXPECT_EQ(calls, 1);
}

TEST_F(SessionTest, RightsComeFromTheInstalledProvider)
{
    UserRights& rights = Session::Instance().GetUserRights();
    // Nothing installed: everything granted.
    EXPECT_TRUE(rights.HasLinkPatientRight("ORG1"));
    EXPECT_TRUE(rights.HasCreatePatientRight(ACE_CString("ORG1")));

    std::vector<std::string> asked;
    rights.SetProvider([&](UserRights::eRIGHT right, const ACE_CString& org) {
        asked.push_back(std::to_string(right) + ":" + org.c_str());
        return right == UserRights::eMERGE_PATIENT || org == "ORG2";
    });
    EXPECT_FALSE(rights.HasLinkPatientRight("ORG1"));
    EXPECT_TRUE(rights.HasLinkPatientRight(ACE_CString("ORG2")));
    EXPECT_TRUE(rights.HasMergePatientRight("ORG1"));
    EXPECT_FALSE(rights.HasCreatePatientRight("ORG1"));
    EXPECT_EQ(asked, (std::vector<std::string>{"0:ORG1", "0:ORG2", "1:ORG1", "2:ORG1"}));

    ResetHostState();
    EXPECT_TRUE(Session::Instance().GetUserRights().HasLinkPatientRight("ORG1"));
}

TEST_F(SessionTest, RegistryHoldsInstalledServicesAndRestores)
{
    ServiceRegistry* registry = Session::ServiceInstance();
    ASSERT_NE(registry, nullptr);
    EXPECT_EQ(registry->GetPatientManagementService(), nullptr);
    auto* first = Fake<PatientManagementService>(1);
    auto* second = Fake<PatientManagementService>(2);
    EXPECT_EQ(registry->SetPatientManagementService(first), nullptr);
    EXPECT_EQ(registry->SetPatientManagementService(second), first);
    EXPECT_EQ(Session::ServiceInstance()->GetPatientManagementService(), second);
    registry->SetExamService(Fake<ExamService>(3));
    registry->SetDictionaryService(Fake<DictionaryService>(4));
    registry->SetProviderService(Fake<ProviderService>(5));
    registry->SetOrgOperationsCollection(Fake<OrgOperationsCollection>(6));
    EXPECT_EQ(registry->GetExamService(), Fake<ExamService>(3));
    EXPECT_EQ(registry->GetOrgOperationsCollection(), Fake<OrgOperationsCollection>(6));
    ResetHostState();
    EXPECT_EQ(Session::ServiceInstance()->GetPatientManagementService(), nullptr);
    EXPECT_EQ(Session::ServiceInstance()->GetOrgOperationsCollection(), nullptr);
}

TEST_F(SessionTest, RegistryCanBeTakenAwayAndReplaced)
{
    ServiceRegistry other;
    ServiceRegistry* own = Session::Instance().InstallServiceRegistry(&other);
    EXPECT_EQ(Session::ServiceInstance(), &other);
    Session::Instance().InstallServiceRegistry(nullptr);
    EXPECT_EQ(Session::ServiceInstance(), nullptr);
    Session::Instance().InstallServiceRegistry(own);
    EXPECT_EQ(Session::ServiceInstance(), Session::Instance().OwnRegistry());
}

TEST_F(SessionTest, ErrorManagerCountsCommunicationSuccess)
{
    auto& em = Framework::ErrorManager::Instance();
    EXPECT_EQ(em.GetCommunicationSuccessCount(), 0);
    em.CommunicationSuccess();
    em.CommunicationSuccess();
    em.CommunicationFailure();
    EXPECT_EQ(em.GetCommunicationSuccessCount(), 2);
    EXPECT_EQ(em.GetCommunicationFailureCount(), 1);
    ResetHostState();
    EXPECT_EQ(em.GetCommunicationSuccessCount(), 0);
}

TEST_F(SessionTest, ServerExceptionCarriesItsDescription)
{
    try {
        throw Framework::Server("database is locked", 5);
    } catch (const std::exception& e) {
        EXPECT_STREQ(e.what(), "database is locked");
        const auto* server = dynamic_cast<const Framework::Server*>(&e);
        ASSERT_NE(server, nullptr);
        EXPECT_EQ(server->GetCode(), 5);
    }
    EXPECT_EQ(Framework::Server("x").GetCode(), -1);
}

TEST_F(SessionTest, PreferencesOptionsAndProductSwitches)
{
    EXPECT_FALSE(Preferences::Instance().DetachAnnotationWarning());
    Preferences::Instance().SetDetachAnnotationWarning(true);
    EXPECT_TRUE(Preferences::Instance().DetachAnnotationWarning());

    EXPECT_FALSE(Options::IsOptionSet(Options::OPT_VIP_STATUS));
    Options::SetOption(Options::OPT_VIP_STATUS, true);
    EXPECT_TRUE(Options::IsOptionSet(Options::OptionsType(49)));

    EXPECT_TRUE(ProductConfiguration::Instance().StudyDeletionEnabled());
    EXPECT_FALSE(Framework::BSNModifier::isEnableBsn());
    SitePolicySettings s;
    s.studyDeletionEnabled = false;
    s.bsnEnabled = true;
    s.bsnCreateEditEnabled = true;
    SitePolicy::Set(s);
    EXPECT_FALSE(ProductConfiguration::Instance().StudyDeletionEnabled());
    EXPECT_TRUE(Framework::BSNModifier::isEnableBsn());
    EXPECT_TRUE(Framework::BSNModifier::isEnableBsnCreateEdit());

    ResetHostState();
    EXPECT_FALSE(Preferences::Instance().DetachAnnotationWarning());
    EXPECT_FALSE(Options::IsOptionSet(Options::OPT_VIP_STATUS));
    EXPECT_TRUE(ProductConfiguration::Instance().StudyDeletionEnabled());
}
