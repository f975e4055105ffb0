// Dictionaries, organizations and providers from the archive.
#include <archivefixture.h>

#include <archiveerror.h>
#include <dictionarytopic.h>
#include <sqlitedictionaryservice.h>
#include <sqliteorgcollection.h>
#include <sqliteproviderservice.h>

#include <bparser.h>
#include <dictionaryrecord.h>
#include <examcodemodifierdataset.h>
#include <examcoderecord.h>
#include <locationdataset.h>
#include <orgoperations.h>
#include <performingresourcedataset.h>
#include <providercollection.h>
#include <providerrecord.h>
#include <queryexamcodemodifiersrequestfacade.h>
#include <queryexamcodesrequestfacade.h>
#include <querylocationdatarequestfacade.h>

namespace {

class ReferenceTest : public ArchiveFixture
{
protected:
    static std::vector<std::string> Codes(const std::vector<DictionaryRecord*>& list)
    {
        std::vector<std::string> out;
        for (const auto* r : list)
            out.push_back(r->GetCode().c_str());
        return out;
    }
};

TEST_F(ReferenceTest, DictionariesInTheirOrderAndOwnedByTheService)
{
    auto& d = Arc().Dictionaries();
    EXPECT_EQ(Codes(d.GetDictionary(DictionaryService::eSEX)), (std::vector<std::string>{"M", "F", "U"}));
    EXPECT_EQ(Codes(d.GetDictionary(DictionaryService::eCOUNTRY)), (std::vector<std::string>{"US", "CA"}));
    EXPECT_EQ(Codes(d.GetDictionary(DictionaryService::eEXAM_STATUS)), (std::vector<std::string>{"SC", "CM"}));
    // Priorities in dictionary order; their ranks are a separate order.
    EXPECT_EQ(Codes(d.GetExamPriorityCodes()), (std::vector<std::string>{"R", "S", "A"}));
    const auto ranked = d.PriorityCodesByRank();
    ASSERT_EQ(ranked.size(), 3u);
    EXPECT_STREQ(ranked[0].c_str(), "S");
    EXPECT_STREQ(ranked[1].c_str(), "A");
    EXPECT_STREQ(ranked[2].c_str(), "R");
    EXPECT_EQ(Codes(d.GetLinkMergeReasonDictionary()), (std::vector<std::string>{"GID", "NAMEDOB", "DUP"}));
    EXPECT_STREQ(d.GetLinkMergeReasonDictionary()[2]->GetDescription().c_str(), "Duplicate");
    EXPECT_STREQ(d.GetDeleteExamReasonDictionary()[0]->GetDescription().c_str(), "Entered in error");
    EXPECT_STREQ(d.GetCancelExamReasonDictionary()[0]->GetDescription().c_str(), "Patient did not arrive");
    EXPECT_STREQ(d.GetDeletePatientsReasonDictionary()[0]->GetDescription().c_str(), "Test patient");
    EXPECT_STREQ(d.GetDetachStudyReasonDictionary()[0]->GetDescription().c_str(), "Study attached to wrong exam");
    EXPECT_STREQ(d.GetDiagnosticImageStatusCodes()[0]->GetDescription().c_str(), "Complete");
    // The same vector every time: the module keeps pointers into it.
    EXPECT_EQ(&d.GetDictionary(DictionaryService::eSEX), &d.GetDictionary(DictionaryService::eSEX));
    EXPECT_TRUE(d.GetDictionary(DictionaryService::eRACE).empty());
}

TEST_F(ReferenceTest, DescriptionsAndStates)
{
    auto& d = Arc().Dictionaries();
    EXPECT_STREQ(d.GetDescriptionForCode(DictionaryService::eSEX, "F", "").c_str(), "Female");
    EXPECT_STREQ(d.GetDescriptionForCode(DictionaryService::eSEX, "f", "").c_str(), "");
    EXPECT_STREQ(d.GetDescriptionForCode(DictionaryService::eSEX, "Q", "").c_str(), "");
    EXPECT_EQ(Codes(d.ListCountryStates("US")), (std::vector<std::string>{"IL", "WI"}));
    EXPECT_EQ(Codes(d.ListCountryStates("CA")), (std::vector<std::string>{"ON"}));
    EXPECT_TRUE(d.ListCountryStates("ZZ").empty());
    EXPECT_TRUE(d.ListCountryStates("").empty());
    EXPECT_EQ(d.GetDictionary(DictionaryService::eSTATE).size(), 3u);
}

TEST_F(ReferenceTest, AnOrganizationsOwnValueWinsForItsKey)
{
    Build().Dictionary(DictionaryTopic::Sex, "U", "Not recorded", "", 0, m_north);
    SqliteDictionaryService fresh(Arc().Context());
    EXPECT_STREQ(fresh.GetDescriptionForCode(DictionaryService::eSEX, "U", m_north.c_str()).c_str(), "Not recorded");
    EXPECT_STREQ(fresh.GetDescriptionForCode(DictionaryService::eSEX, "U", m_south.c_str()).c_str(), "Unknown");
    EXPECT_STREQ(fresh.GetDescriptionForCode(DictionaryService::eSEX, "U", "").c_str(), "Unknown");
}

TEST_F(ReferenceTest, ReferenceQueries)
{
    Build().ExamCode("CTHEAD", "CT HEAD");
    Build().ExamCode("CTCHEST", "CT CHEST");
    Build().ExamCode("MRKNEE", "MR KNEE", m_south);
    Build().Modifier("LT", "Left");
    Build().Modifier("RT", "Right");
    const std::string er = Build().Location("ER", "Emergency");
    Build().Location("OLD", "Closed ward", false);
    Build().Resource("CT1", "CT Scanner 1");
    auto& d = Arc().Dictionaries();

    QueryExamCodesRequestFacade codes;
    codes.SetExamCode("CT%");
    codes.SetOrganizationKey(m_north.c_str());
    std::vector<ExamCodeRecord*> found;
    ASSERT_EQ(d.QueryExamCodes(codes, found), 0);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_STREQ(found[0]->GetCode().c_str(), "CTCHEST");
    for (auto* r : found)
        delete r;
    found.clear();
    codes.SetExamCode("");
    ASSERT_EQ(d.QueryExamCodes(codes, found), 0);
    EXPECT_EQ(found.size(), 2u); // SOUTH's own code is not NORTH's
    for (auto* r : found)
        delete r;

    QueryExamCodeModifiersRequestFacade mods;
    mods.SetCode("R%");
    std::vector<ExamCodeModifierDataSet*> modifiers;
    ASSERT_EQ(d.QueryExamCodeModifiers(mods, modifiers), 0);
    ASSERT_EQ(modifiers.size(), 1u);
    EXPECT_STREQ(modifiers[0]->GetDescription().c_str(), "Right");
    delete modifiers[0];

    QueryLocationDataRequestFacade loc;
    std::vector<LocationDataSet*> locations;
    ASSERT_EQ(d.QueryLocationData(loc, locations, true), 0);
    ASSERT_EQ(locations.size(), 1u);
    EXPECT_STREQ(locations[0]->GetName().c_str(), "Emergency");
    delete locations[0];
    locations.clear();
    ASSERT_EQ(d.QueryLocationData(loc, locations, false), 0);
    EXPECT_EQ(locations.size(), 2u);
    for (auto* l : locations)
        delete l;
    locations.clear();
    loc.SetLocationKey(er.c_str());
    ASSERT_EQ(d.QueryLocationData(loc, locations, false), 0);
    ASSERT_EQ(locations.size(), 1u);
    EXPECT_STREQ(locations[0]->GetDisplayText().c_str(), "ER");
    delete locations[0];

    PerformingResourceDataSet t;
    t.SetAll();
    std::vector<PerformingResourceDataSet*> resources;
    ASSERT_EQ(d.QueryPerformingResources(&t, resources), 0);
    ASSERT_EQ(resources.size(), 1u);
    EXPECT_STREQ(resources[0]->GetName().c_str(), "CT Scanner 1");
    delete resources[0];
    EXPECT_EQ(d.QueryPerformingResources(nullptr, resources), ArchiveResult::InvalidArgument);
    codes.SetExamCode("\xff");
    EXPECT_EQ(d.QueryExamCodes(codes, found), ArchiveResult::InvalidArgument);
}

TEST_F(ReferenceTest, OrganizationsWithFlagsAndTheUsersRights)
{
    ArchiveBuilder::OrgFields lake{"LAKE", "Lakeview"};
    lake.acceptsDemographicsUpdate = false;
    lake.generatesMrn = false;
    lake.defaultState = "WI";
    lake.newExamStatus = "AR";
    const std::string lakeKey = Build().Org(lake);
    Build().User("clerk");
    Build().Grant("clerk", lakeKey, true, true, false);
    Arc().SetUser("clerk");
    auto& orgs = Arc().Organizations();
    const OrgOperations* o = orgs.GetOrgFromKey(lakeKey.c_str());
    ASSERT_NE(o, nullptr);
    EXPECT_STREQ(o->GetOrganizationID().c_str(), "LAKE");
    EXPECT_STREQ(o->GetName().c_str(), "Lakeview");
    EXPECT_FALSE(o->AcceptsDemographicsUpdate());
    EXPECT_FALSE(o->IsMRNAutoGenerated());
    EXPECT_TRUE(o->IsACCAutoGenerated());
    EXPECT_STREQ(o->GetDefaultCountryCode().c_str(), "US");
    EXPECT_STREQ(o->GetDefaultStateCode().c_str(), "WI");
    EXPECT_STREQ(o->GetDefaultExamStatusCode().c_str(), "AR");
    EXPECT_TRUE(o->CanCreatePatients());
    EXPECT_TRUE(o->CanLinkPatients());
    EXPECT_FALSE(o->CanMergePatients());
    const OrgOperations* north = orgs.GetOrgFromKey(m_north.c_str());
    ASSERT_NE(north, nullptr);
    EXPECT_FALSE(north->CanLinkPatients()); // the clerk holds nothing there
    EXPECT_EQ(orgs.GetOrgFromKey("GHOST"), nullptr);
    EXPECT_TRUE(orgs.GetOrgFromKey(m_enterprise.c_str())->IsEnterprise());
}

TEST_F(ReferenceTest, OrganizationListsTranslateBothWays)
{
    auto& orgs = Arc().Organizations();
    EXPECT_STREQ(orgs.OrganizationIDsToKeys(" north , south,,", OrgOperationsCollection::DROP_UNKNOWN).c_str(),
                 (m_north + "," + m_south).c_str());
    EXPECT_STREQ(orgs.OrganizationIDsToKeys("NORTH,NOPE", OrgOperationsCollection::DROP_UNKNOWN).c_str(), m_north.c_str());
    EXPECT_STREQ(orgs.OrganizationIDsToKeys("NORTH,NOPE", OrgOperationsCollection::KEEP_UNKNOWN).c_str(),
                 (m_north + ",NOPE").c_str());
    EXPECT_STREQ(orgs.OrganizationIDsToKeys("NOPE", OrgOperationsCollection::DROP_UNKNOWN).c_str(), "");
    EXPECT_STREQ(orgs.OrganizationKeysToIDs((m_south + ",GHOST," + m_north).c_str()).c_str(), "SOUTH,NORTH");
    EXPECT_STREQ(orgs.GetOrgIdFromKey(m_south.c_str()).c_str(), "SOUTH");
    EXPECT_STREQ(orgs.GetOrgIdFromKey("GHOST").c_str(), "");
    EXPECT_STREQ(orgs.GetFederatedOrgID().c_str(), "FED");
    const auto all = orgs.GetOrganizations();
    ASSERT_EQ(all.size(), 4u);
    for (size_t i = 1; i < all.size(); ++i)
        EXPECT_LT(std::string(all[i - 1]->GetOrganizationKey().c_str()), std::string(all[i]->GetOrganizationKey().c_str()));
}

TEST_F(ReferenceTest, NoFederatedOrganizationGivesAnEmptyId)
{
    Db().Handle().exec("UPDATE organizations SET is_federated = 0");
    Arc().Organizations().Reload();
    EXPECT_STREQ(Arc().Organizations().GetFederatedOrgID().c_str(), "");
}

TEST_F(ReferenceTest, Providers)
{
    const std::string house = Build().Provider("P1", "House", "Gregory");
    Build().Provider("P2", "Houseman", "Ann");
    Build().Provider("P3", "Wilson", "James");
    Build().Provider("P4", "Hou%se", "Odd", 4, m_south);
    auto& svc = Arc().Providers();
    ProviderRecord r;
    ASSERT_EQ(svc.GetProvider(house.c_str(), r, m_north.c_str()), 0);
    EXPECT_STREQ(r.GetProviderID().c_str(), "P1");
    EXPECT_EQ(r.GetProviderType(), ProviderRecord::eREFERRING);
    EXPECT_STREQ(r.GetAddress().GetCity().c_str(), "Springfield");
    EXPECT_STREQ(r.GetWorkPhone().c_str(), "555-0100");
    EXPECT_EQ(svc.GetProvider("GHOST", r, ""), ArchiveResult::NotFound);
    EXPECT_EQ(svc.GetProvider("", r, ""), ArchiveResult::InvalidArgument);

    ProviderRecord t;
    t.SetName(BPersonName("house", ""));
    t.SetOrganizationKey(m_north.c_str());
    ProviderCollection found(&t);
    ASSERT_EQ(svc.QueryProviders(&found), 0);
    ASSERT_EQ(found.GetCount(), 2);
    EXPECT_STREQ(found.GetProviders()[0]->GetName().GetLastName().c_str(), "House");
    EXPECT_STREQ(found.GetProviders()[1]->GetName().GetLastName().c_str(), "Houseman");

    ProviderRecord literal; // '%' typed by the user is a character, not a wildcard
    literal.SetName(BPersonName("Hou%", ""));
    ProviderCollection odd(&literal);
    ASSERT_EQ(svc.QueryProviders(&odd), 0);
    ASSERT_EQ(odd.GetCount(), 1);
    EXPECT_STREQ(odd.GetProviders()[0]->GetProviderID().c_str(), "P4");
    EXPECT_EQ(svc.QueryProviders(nullptr), ArchiveResult::InvalidArgument);
    EXPECT_TRUE(svc.CanAccessDictionaries(m_north.c_str()));
    EXPECT_FALSE(svc.CanAccessDictionaries("GHOST"));
    Arc().SetUser("nobody");
    EXPECT_FALSE(svc.CanAccessDictionaries(m_north.c_str()));
}

TEST_F(ReferenceTest, TooManyProvidersAskForANarrowerName)
{
    for (int i = 0; i <= SqliteProviderService::kMaxMatches; ++i)
        Build().Provider("X" + std::to_string(i), "Many", "Doc" + std::to_string(i));
    ProviderRecord t;
    t.SetName(BPersonName("Many", ""));
    ProviderCollection found(&t);
    EXPECT_EQ(Arc().Providers().QueryProviders(&found), ProviderService::TOO_MANY_MATCHES);
    EXPECT_EQ(found.GetCount(), 0);
}

} // namespace
