#include "dupfixture.h"

#include "duplicates/duplicatepatientlist.h"

#include "daterangectrl.h"
#include "mergelinkcandidatesquerydataset.h"

namespace {

using Params = std::map<CString, CString>;
const char* const kZero = "00000000-0000-0000-0000-000000000000";

std::string S(const ACE_CString& s)
{
    return std::string(s.c_str(), s.length());
}

std::string RefusedLine(const std::string& error)
{
    return "Function: CDuplicatePatientList::MLCDataSetBuilder::BuildFromParams, Line: 587: Failed to build "
           "MergeLink Candidate DataSet for query. Error: " +
           error + "\n";
}

class BuilderTest : public DupFixture
{
protected:
    bool BuildQuery(const Params& params)
    {
        CDuplicatePatientList::MLCDataSetBuilder builder(200);
        return builder.BuildFromParams(params, q);
    }
    std::vector<std::tuple<std::string, int, std::string>> Refused(const std::string& error) const
    {
        return {{"duplicatepatientlist", 587, RefusedLine(error)}};
    }
    MergeLinkCandidatesQueryDataSet q;
};

TEST_F(BuilderTest, NamesComeFromTheStringTable)
{
    CDuplicatePatientList::LoadNames();
    EXPECT_EQ(CString("Patient Name"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::ePATIENT_NAME));
    EXPECT_EQ(CString("SSN"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::ePATIENT_ID));
    EXPECT_EQ(CString("MRN"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::eMRN));
    EXPECT_EQ(CString("Organization"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::eORGANIZATION));
    EXPECT_EQ(CString("Type"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::eTYPE));
    EXPECT_EQ(CString("Reason"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::eREASON));
    EXPECT_EQ(CString("DOB"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::eDOB));
    EXPECT_EQ(CString("Sex"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::eSEX));
    EXPECT_EQ(CString("Merge"), CDuplicatePatientList::DUPTYPENAMES[0]);
    EXPECT_EQ(CString("Link"), CDuplicatePatientList::DUPTYPENAMES[1]);
    EXPECT_EQ(18, CDuplicatePatientList::MIN_DEFAULT_WIDTH);
}

TEST_F(BuilderTest, PatientIdTitleFollowsTheSite)
{
    SitePolicySettings site = SitePolicy::Get();
    site.patientIDColumnName = "BSN";
    SitePolicy::Set(site);
    CDuplicatePatientList::LoadNames();
    EXPECT_EQ(CString("BSN"), CDuplicatePatientList::GetColumnName(CDuplicatePatientList::ePATIENT_ID));
    ASSERT_TRUE(BuildQuery({{"BSN", " 1 , 2 "}}));
    EXPECT_EQ("1,2", S(q.GetSSN()));
    SitePolicy::Reset();
    CDuplicatePatientList::LoadNames();
}

TEST_F(BuilderTest, EmptyOrBlankCriteriaGiveAnOpenQueryWithTheRowLimit)
{
    ASSERT_TRUE(BuildQuery({}));
    EXPECT_EQ("", S(q.GetLastName()));
    EXPECT_EQ("", S(q.GetFirstName()));
    EXPECT_EQ("", S(q.GetSSN()));
    EXPECT_EQ("", S(q.GetMRN()));
    EXPECT_EQ("", S(q.GetReason()));
    EXPECT_EQ("", S(q.GetSexCode()));
    EXPECT_FALSE(q.GetBeginBirthDate().IsValid());
    EXPECT_FALSE(q.GetEndBirthDate().IsValid());
    EXPECT_EQ("", S(q.GetMergeOrganizationKeys()));
    EXPECT_EQ("", S(q.GetLinkOrganizationKeys()));
    EXPECT_EQ("200", S(q.GetRowCount()));

    MergeLinkCandidatesQueryDataSet blank;
    CDuplicatePatientList::MLCDataSetBuilder builder(200);
    ASSERT_TRUE(builder.BuildFromParams({{"Patient Name", "  "}, {"Type", " "}, {"Reason", "\t"}, {"DOB", ""},
                                         {"MRN", " "}, {"Organization", " "}, {"Sex", "   "}, {"SSN", ""}},
                                        blank));
    EXPECT_EQ("", S(blank.GetLastName()));
    EXPECT_EQ("", S(blank.GetMRN()));
    EXPECT_EQ("", S(blank.GetSexCode()));
    EXPECT_EQ("", S(blank.GetMergeOrganizationKeys()));
    EXPECT_EQ("", S(blank.GetLinkOrganizationKeys()));
    EXPECT_EQ("200", S(blank.GetRowCount()));
    EXPECT_TRUE(log->Lines().empty());
}

TEST_F(BuilderTest, RowLimitIsWrittenAsDecimalText)
{
    CDuplicatePatientList::MLCDataSetBuilder builder(17);
    ASSERT_TRUE(builder.BuildFromParams({}, q));
    EXPECT_EQ("17", S(q.GetRowCount()));
}

TEST_F(BuilderTest, TypeMergeAloneSwitchesTheLinkHalfOff)
{
    ASSERT_TRUE(BuildQuery({{"Type", "Merge"}}));
    EXPECT_EQ("", S(q.GetMergeOrganizationKeys()));
    EXPECT_EQ(kZero, S(q.GetLinkOrganizationKeys()));
}

TEST_F(BuilderTest, TypeLinkAloneSwitchesTheMergeHalfOff)
{
    ASSERT_TRUE(BuildQuery({{"Type", "Link"}, {"Organization", "north, SOUTH"}}));
    EXPECT_EQ(kZero, S(q.GetMergeOrganizationKeys()));
    EXPECT_EQ(m_north + "," + m_south, S(q.GetLinkOrganizationKeys()));
}

TEST_F(BuilderTest, BothTypesOrNoTypeSearchBothHalvesInTheOrganizations)
{
    ASSERT_TRUE(BuildQuery({{"Type", "Merge,Link"}, {"Organization", "NORTH"}}));
    EXPECT_EQ(m_north, S(q.GetMergeOrganizationKeys()));
    EXPECT_EQ(m_north, S(q.GetLinkOrganizationKeys()));
    MergeLinkCandidatesQueryDataSet noType;
    CDuplicatePatientList::MLCDataSetBuilder builder(200);
    ASSERT_TRUE(builder.BuildFromParams({{"Organization", "SOUTH"}}, noType));
    EXPECT_EQ(m_south, S(noType.GetMergeOrganizationKeys()));
    EXPECT_EQ(m_south, S(noType.GetLinkOrganizationKeys()));
}

TEST_F(BuilderTest, TypeIsComparedWithItsCase)
{
    EXPECT_FALSE(BuildQuery({{"Type", "merge"}}));
    EXPECT_EQ(Refused("Invalid parameter value for 'Type' field."), LogLines(LM_INFO));
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(BuilderTest, UnknownTypeAloneIsRefusedButBesideAKnownOneIsPassedOver)
{
    EXPECT_FALSE(BuildQuery({{"Type", "Foo"}}));
    EXPECT_EQ(Refused("Invalid parameter value for 'Type' field."), LogLines(LM_INFO));
    log->Clear();
    MergeLinkCandidatesQueryDataSet other;
    CDuplicatePatientList::MLCDataSetBuilder builder(200);
    ASSERT_TRUE(builder.BuildFromParams({{"Type", "Merge, Foo"}}, other));
    EXPECT_EQ("", S(other.GetMergeOrganizationKeys()));
    EXPECT_EQ(kZero, S(other.GetLinkOrganizationKeys()));
    EXPECT_TRUE(log->Lines().empty());
}

TEST_F(BuilderTest, PatientNameBecomesLastAndFirstNamePrefixes)
{
    ASSERT_TRUE(BuildQuery({{"Patient Name", "Smi"}}));
    EXPECT_EQ("Smi%", S(q.GetLastName()));
    EXPECT_EQ("", S(q.GetFirstName()));

    MergeLinkCandidatesQueryDataSet both;
    CDuplicatePatientList::MLCDataSetBuilder builder(200);
    ASSERT_TRUE(builder.BuildFromParams({{"Patient Name", "Smith,J,ignored"}}, both));
    EXPECT_EQ("Smith%", S(both.GetLastName()));
    EXPECT_EQ("J%", S(both.GetFirstName()));
}

TEST_F(BuilderTest, AnEmptyLastNameMatchesEveryLastName)
{
    ASSERT_TRUE(BuildQuery({{"Patient Name", ",John"}}));
    EXPECT_EQ("%", S(q.GetLastName()));
    EXPECT_EQ("John%", S(q.GetFirstName()));
}

TEST_F(BuilderTest, ATrailingWildcardIsNotDoubled)
{
    ASSERT_TRUE(BuildQuery({{"Patient Name", "Smith%"}}));
    // A typed "%" is literal for the service; the pattern still ends in one "%".
    const std::string last = S(q.GetLastName());
    EXPECT_EQ('%', last.back());
    EXPECT_NE("%%", last.substr(last.size() - 2));
    MergeLinkCandidatesQueryDataSet star;
    CDuplicatePatientList::MLCDataSetBuilder builder(200);
    ASSERT_TRUE(builder.BuildFromParams({{"Patient Name", "Sm*"}}, star));
    EXPECT_EQ("Sm%", S(star.GetLastName()));
}

TEST_F(BuilderTest, PatientIdsAreTrimmedTokens)
{
    ASSERT_TRUE(BuildQuery({{"SSN", "111111111 , ,222222222 ,"}}));
    EXPECT_EQ("111111111,222222222", S(q.GetSSN()));
}

TEST_F(BuilderTest, MrnIsCorrectedAndCarriesTheSitesNumericSetting)
{
    SitePolicySettings site = SitePolicy::Get();
    site.numericMRN = true;
    SitePolicy::Set(site);
    ASSERT_TRUE(BuildQuery({{"MRN", " 0000101 "}}));
    EXPECT_EQ("0000101", S(q.GetMRN()));
    EXPECT_TRUE(q.GetUseNumericMRN());
    SitePolicy::Reset();
}

TEST_F(BuilderTest, AnInvalidMrnFailsWithoutALogLine)
{
    SitePolicySettings site = SitePolicy::Get();
    site.numericMRN = true;
    SitePolicy::Set(site);
    EXPECT_FALSE(BuildQuery({{"MRN", "12A"}, {"Type", "Foo"}}));
    EXPECT_TRUE(log->Lines().empty());
    EXPECT_TRUE(user->Messages().empty());
    SitePolicy::Reset();
}

TEST_F(BuilderTest, ReasonMatchesADictionaryTextIgnoringCaseAndSendsItsOwnSpelling)
{
    ASSERT_TRUE(BuildQuery({{"Reason", "duplicate"}}));
    EXPECT_EQ("Duplicate", S(q.GetReason()));
}

TEST_F(BuilderTest, OnlyOneReasonMayBeSearched)
{
    EXPECT_FALSE(BuildQuery({{"Reason", "Duplicate,Same SSN"}}));
    EXPECT_EQ(Refused("Invalid parameter / non-dictionary values for 'Reason' field."), LogLines(LM_INFO));
}

TEST_F(BuilderTest, AReasonOutsideTheDictionaryIsRefused)
{
    EXPECT_FALSE(BuildQuery({{"Reason", "Because"}}));
    EXPECT_EQ(Refused("Invalid parameter / non-dictionary values for 'Reason' field."), LogLines(LM_INFO));
}

TEST_F(BuilderTest, SexLosesItsBlanksAndAnyTextIsAccepted)
{
    ASSERT_TRUE(BuildQuery({{"Sex", "  M "}}));
    EXPECT_EQ("M", S(q.GetSexCode()));
    MergeLinkCandidatesQueryDataSet any;
    CDuplicatePatientList::MLCDataSetBuilder builder(200);
    ASSERT_TRUE(builder.BuildFromParams({{"Sex", "X Y,Z"}}, any));
    EXPECT_EQ("XY,Z", S(any.GetSexCode()));
    EXPECT_TRUE(log->Lines().empty());
}

TEST_F(BuilderTest, DobRangeFromTheRangeCellBecomesTwoInstants)
{
    ASSERT_TRUE(BuildQuery({{"DOB", CString("01/01/1970") + DateRangeCtrl::DATE_SEP + "12/31/1980"}}));
    ASSERT_TRUE(q.GetBeginBirthDate().IsValid());
    ASSERT_TRUE(q.GetEndBirthDate().IsValid());
    EXPECT_EQ(BDate(1970, 1, 1), q.GetBeginBirthDate().GetDate());
    EXPECT_EQ(BDate(1980, 12, 31), q.GetEndBirthDate().GetDate());
}

TEST_F(BuilderTest, AnInvalidDobShowsTheDateMessageAndIsLogged)
{
    user->ExpectMessage(
        "You must spe"
        "cify a valid date. Check your entry to make sure it represents a valid date (MM/dd/yyyy).",
        IDOK);
    EXPECT_FALSE(BuildQuery({{"DOB", "13/45/1970"}}));
    ASSERT_EQ(1u, user->Messages().size());
    EXPECT_EQ(MB_OK, user->Messages()[0].type);
    EXPECT_EQ(Refused("Invalid parameter values for 'DOB' range."), LogLines(LM_INFO));
}

TEST_F(BuilderTest, UnknownOrganizationsAreRefusedAndEndTheWalk)
{
    // "Organization" comes before "Type" in the map: only its error is reported.
    EXPECT_FALSE(BuildQuery({{"Organization", "NOWHERE, ELSEWHERE"}, {"Type", "Foo"}}));
    EXPECT_EQ(Refused("Invalid parameter value for 'Organization' field."), LogLines(LM_INFO));
}

TEST_F(BuilderTest, TheFirstErrorInMapOrderWins)
{
    // "DOB" < "Reason" < "Type": the DOB is looked at first.
    user->ExpectMessage(IDOK);
    EXPECT_FALSE(BuildQuery({{"Type", "Foo"}, {"Reason", "a,b"}, {"DOB", "nonsense"}}));
    EXPECT_EQ(Refused("Invalid parameter values for 'DOB' range."), LogLines(LM_INFO));
    log->Clear();
    MergeLinkCandidatesQueryDataSet second;
    CDuplicatePatientList::MLCDataSetBuilder builder(200);
    EXPECT_FALSE(builder.BuildFromParams({{"Type", "Foo"}, {"Reason", "a,b"}}, second));
    EXPECT_EQ(Refused("Invalid parameter / non-dictionary values for 'Reason' field."), LogLines(LM_INFO));
}

TEST_F(BuilderTest, UnknownKeysAreIgnored)
{
    ASSERT_TRUE(BuildQuery({{"Colour", "Blue"}, {"patient name", "Smith"}}));
    EXPECT_EQ("", S(q.GetLastName()));
}

TEST_F(BuilderTest, WhatWasWrittenBeforeARefusalStaysInTheQuery)
{
    EXPECT_FALSE(BuildQuery({{"Patient Name", "Smith"}, {"Type", "Foo"}}));
    EXPECT_EQ("Smith%", S(q.GetLastName()));
    EXPECT_EQ("", S(q.GetRowCount()));
}

} // namespace
