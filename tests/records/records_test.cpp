#include "addressrecord.h"
#include "bpersonname.h"
#include "dictionaryrecord.h"
#include "examdataset.h"
#include "examqueryrecord.h"
#include "hoststate.h"
#include "mergelinkcandidatesquerydataset.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "providercollection.h"
#include "providerrecord.h"
#include "sitepolicy.h"
#include "viputil.h"
#include "worklistutils.h"

#include <gtest/gtest.h>

#include <string>

namespace {
std::string S(const ACE_CString& s)
{
    return std::string(s.c_str(), s.length());
}
} // namespace

TEST(BPersonName, DicomFormTrimsTrailingEmptyComponents)
{
    EXPECT_EQ(S(BPersonName("Smith", "John", "Q", "Dr", "Jr").ToDICOMName()), "Smith^John^Q^Dr^Jr");
    EXPECT_EQ(S(BPersonName("Smith", "John").ToDICOMName()), "Smith^John");
    EXPECT_EQ(S(BPersonName("Smith", "").ToDICOMName()), "Smith");
    EXPECT_EQ(S(BPersonName("Smith", "", "", "", "III").ToDICOMName()), "Smith^^^^III");
    EXPECT_EQ(S(BPersonName("", "John").ToDICOMName()), "^John");
    EXPECT_EQ(S(BPersonName().ToDICOMName()), "");
}

TEST(BPersonName, FromDicomName)
{
    const BPersonName n = BPersonName::FromDICOMName("Smith^John^Q^Dr^Jr^extra");
    EXPECT_EQ(S(n.GetLastName()), "Smith");
    EXPECT_EQ(S(n.GetFirstName()), "John");
    EXPECT_EQ(S(n.GetMiddleName()), "Q");
    EXPECT_EQ(S(n.GetPrefix()), "Dr");
    EXPECT_EQ(S(n.GetSuffix()), "Jr");
    EXPECT_EQ(BPersonName::FromDICOMName("Doe"), BPersonName("Doe", ""));
    EXPECT_TRUE(BPersonName::FromDICOMName("").IsEmpty());
}

TEST(BPersonName, DisplayName)
{
    EXPECT_EQ(S(BPersonName("Smith", "John", "Q").GetDisplayName()), "Smith, John Q");
    EXPECT_EQ(S(BPersonName("Smith", "").GetDisplayName()), "Smith");
    EXPECT_EQ(S(BPersonName("", "John").GetDisplayName()), "John");
}

TEST(PatientDetailRecord, NamePartsAndTitleSuffixLiveInTheName)
{
    PatientDetailRecord p;
    EXPECT_TRUE(p.IsNameNull());
    p.SetName(BPersonName("Smith", "Anna", "", "Mrs", "Sr"));
    EXPECT_EQ(S(p.GetTitle()), "Mrs");
    EXPECT_EQ(S(p.GetSuffix()), "Sr");
    p.SetSuffix("Jr");
    EXPECT_EQ(S(p.GetName().ToDICOMName()), "Smith^Anna^^Mrs^Jr");
    p.SetName(ACE_CString("Doe^Jane"));
    EXPECT_EQ(S(p.GetLastName()), "Doe");
    EXPECT_EQ(S(p.GetTitle()), "");
    EXPECT_FALSE(p.IsNameNull());
    PatientDetailRecord copy = p;
    copy.SetLastName("Other");
    EXPECT_EQ(S(p.GetLastName()), "Doe");
}

TEST(PatientDetailRecord, DateOfDeathParts)
{
    PatientDetailRecord p;
    EXPECT_FALSE(p.HasDateOfDeath());
    EXPECT_FALSE(p.GetDateOfDeath().IsValid());
    p.SetDateOfDeath(BDate(2020, 2, 29));
    EXPECT_TRUE(p.HasDateOfDeath());
    EXPECT_EQ(p.GetDeathYear(), 2020);
    EXPECT_EQ(p.GetDeathMonth(), 2);
    EXPECT_EQ(p.GetDeathDay(), 29);
    EXPECT_EQ(p.GetDateOfDeath(), BDate(2020, 2, 29));
    p.SetDateOfDeath(2021, 2, 29);
    EXPECT_FALSE(p.GetDateOfDeath().IsValid());
    p.ClearDateOfDeath();
    EXPECT_FALSE(p.HasDateOfDeath());
}

TEST(AddressRecord, DisplayStringSingleAndMultiLine)
{
    PatientDetailRecord p;
    p.SetAddressLine1("12 Main St");
    p.SetAddressLine2("Apt 4");
    p.SetCity("Springfield");
    p.SetStateCode("IL");
    p.SetPostalCode("62701");
    p.SetCountryCode("US");
    AddressRecord a;
    a.FromPatientDetailRecord(&p);
    EXPECT_EQ(S(a.GenerateDisplayString(true)), "12 Main St Apt 4\nSpringfield, IL 62701\nUS");
    EXPECT_EQ(S(a.GenerateDisplayString(false)), "12 Main St Apt 4, Springfield, IL 62701, US");
    EXPECT_FALSE(a.IsEmpty());
}

TEST(AddressRecord, MissingPartsLeaveNoStraySeparators)
{
    AddressRecord a;
    EXPECT_EQ(S(a.GenerateDisplayString(true)), "");
    EXPECT_TRUE(a.IsEmpty());
    a.SetStateCode("ON");
    a.SetPostalCode("K1A 0B1");
    EXPECT_EQ(S(a.GenerateDisplayString(false)), "ON K1A 0B1");
    a.SetAddressLine2("Unit 9");
    a.SetCounty("Carleton");
    EXPECT_EQ(S(a.GenerateDisplayString(true)), "Unit 9\nON K1A 0B1\nCarleton");
    a.FromPatientDetailRecord(nullptr);
    EXPECT_TRUE(a.IsEmpty());
}

TEST(AddressRecord, CopiesTheWholeBlock)
{
    PatientDetailRecord p;
    p.SetAddressType("H");
    p.SetOtherDesignation("c/o Ann");
    p.SetCounty("Cook");
    AddressRecord a;
    a.FromPatientDetailRecord(&p);
    EXPECT_EQ(S(a.GetAddressType()), "H");
    EXPECT_EQ(S(a.GetOtherDesignation()), "c/o Ann");
    EXPECT_EQ(S(a.GetCounty()), "Cook");
}

TEST(FirstNamePolicy, FollowsSitePolicy)
{
    ResetHostState();
    PatientDetailRecord p;
    EXPECT_FALSE(PatientManagementService::IsEmptyPatientFirstNameAllowed());
    EXPECT_FALSE(PatientManagementService::IsPatientFirstNameValid(&p));
    p.SetFirstName("  ");
    EXPECT_FALSE(PatientManagementService::IsPatientFirstNameValid(&p));
    p.SetFirstName("Ann");
    EXPECT_TRUE(PatientManagementService::IsPatientFirstNameValid(&p));
    EXPECT_FALSE(PatientManagementService::IsPatientFirstNameValid(nullptr));

    SitePolicySettings s;
    s.emptyFirstNameAllowed = true;
    SitePolicy::Set(s);
    p.SetFirstName("");
    EXPECT_TRUE(PatientManagementService::IsEmptyPatientFirstNameAllowed());
    EXPECT_TRUE(PatientManagementService::IsPatientFirstNameValid(&p));
    ResetHostState();
    EXPECT_FALSE(PatientManagementService::IsPatientFirstNameValid(&p));
}

TEST(ProviderCollection, OwnsWhatAQueryReturns)
{
    ProviderRecord templ;
    templ.SetName(BPersonName("Wells", ""));
    ProviderCollection c(&templ);
    EXPECT_EQ(c.GetTemplate(), &templ);
    auto* p = new ProviderRecord;
    p->SetProviderType(ProviderRecord::eREFERRING);
    c.AddProvider(p);
    c.AddProvider(nullptr);
    EXPECT_EQ(c.GetCount(), 1);
    EXPECT_EQ(c.GetProviders()[0]->GetProviderType(), ProviderRecord::eREFERRING);
    EXPECT_EQ(int(ProviderRecord::eREFERRING), 4);
}

TEST(ExamDataSet, ProvidersAndModifiers)
{
    ExamDataSet e;
    EXPECT_EQ(e.FindProvider(ProviderRecord::eREFERRING), nullptr);
    ProviderRecord r;
    r.SetProviderType(ProviderRecord::eREFERRING);
    r.SetProviderID("P1");
    ProviderRecord o;
    o.SetProviderType(ProviderRecord::eORDERING);
    e.AddProvider(o);
    e.AddProvider(r);
    ASSERT_NE(e.FindProvider(ProviderRecord::eREFERRING), nullptr);
    EXPECT_EQ(S(e.FindProvider(ProviderRecord::eREFERRING)->GetProviderID()), "P1");
    e.RemoveProviders(ProviderRecord::eREFERRING);
    EXPECT_EQ(e.GetProviders().size(), 1u);

    ExamCodeModifierDataSet lt, bi;
    lt.SetCode("LT");
    bi.SetCode("BI");
    e.SetExamCodeModifiers({lt, bi});
    EXPECT_EQ(S(e.GetExamCodeModifiersText()), "LT,BI");

    ExamDataSet copy = e;
    copy.SetKey("K2");
    EXPECT_EQ(S(e.GetKey()), "");
    EXPECT_FALSE(e.IsMarkedRead());
}

TEST(MergeLinkCandidatesQueryDataSet, SettersAndGetters)
{
    MergeLinkCandidatesQueryDataSet q;
    EXPECT_EQ(q.GetRowCountValue(), 0);
    q.SetRowCount("200");
    q.SetLinkOrganizationKeys(MergeLinkCandidatesQueryDataSet::NO_ORGANIZATIONS);
    q.SetUseNumericMRN(true);
    q.SetBeginBirthDate(BDateTime(BDate(1970, 1, 1), BTime(0, 0, 0)));
    EXPECT_EQ(q.GetRowCountValue(), 200);
    EXPECT_EQ(S(q.GetLinkOrganizationKeys()), "00000000-0000-0000-0000-000000000000");
    EXPECT_TRUE(q.GetUseNumericMRN());
    EXPECT_TRUE(q.GetBeginBirthDate().IsValid());
    EXPECT_FALSE(q.GetEndBirthDate().IsValid());
    q.SetRowCount("12x");
    EXPECT_EQ(q.GetRowCountValue(), 0);
}

TEST(VIPUtil, ParsesSingleDigits)
{
    int code = -1;
    EXPECT_TRUE(VIPUtil::StringToVIPStatusCode("3", code));
    EXPECT_EQ(code, 3);
    EXPECT_FALSE(VIPUtil::StringToVIPStatusCode("12", code));
    EXPECT_FALSE(VIPUtil::StringToVIPStatusCode("V", code));
    EXPECT_FALSE(VIPUtil::StringToVIPStatusCode("", code));
    EXPECT_FALSE(VIPUtil::StringToVIPStatusCode(nullptr, code));
}

TEST(WorkListUtils, PriorityRankingAndWarnableRule)
{
    ResetHostState();
    // No ranking and no dictionary service: no rank.
    EXPECT_EQ(WorkListUtils::GetPriorityCodeIndex("S"), -1);
    WorkListUtils::SetPriorityRanking({ACE_CString("S"), ACE_CString("A"), ACE_CString("R")});
    EXPECT_EQ(WorkListUtils::GetPriorityCodeIndex("S"), 0);
    EXPECT_EQ(WorkListUtils::GetPriorityCodeIndex("R"), 2);
    EXPECT_EQ(WorkListUtils::GetPriorityCodeIndex("X"), -1);

    ExamQueryRecord q;
    q.SetStatusCode("S");
    EXPECT_FALSE(WorkListUtils::IsLinkUnlinkWarnable(q, false));
    q.SetLinkedFlag("true");
    q.SetMarkedRead(true);
    EXPECT_TRUE(WorkListUtils::IsLinkUnlinkWarnable(q, false));
    q.SetMarkedRead(false);
    q.SetStatusCode("F");
    EXPECT_TRUE(WorkListUtils::IsLinkUnlinkWarnable(q, false));
    q.SetStatusCode("I");
    EXPECT_FALSE(WorkListUtils::IsLinkUnlinkWarnable(q, false));
    EXPECT_TRUE(WorkListUtils::IsLinkUnlinkWarnable(q, true));
    ResetHostState();
}
