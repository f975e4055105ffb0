// The merge/link candidate search behind GetLinkAndMergePatients.
#include <archivefixture.h>

#include <sqlitepatientservice.h>

#include <bdatetime.h>
#include <duplicatepatientrecord.h>
#include <mergelinkcandidatesquerydataset.h>

namespace {

class CandidateSearchTest : public ArchiveFixture
{
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        auto p = [&](const auto&... fields) { return Build().Patient(fields...); };
        // Keys are handed out in creation order, so the first of each pair is listed first.
        a1 = p(m_north, "0000101", "Smith", "John", "M", "19700101", "111111111");
        a2 = p(m_north, "0000102", "Smyth", "John", "M", "19700101", "111111111");
        b1 = p(m_north, "0000201", "Brown", "Ann", "F", "19800505", "");
        b2 = p(m_north, "0000202", "BROWN", "ann", "F", "19800505", "");
        c1 = p(m_south, "0000301", "Green", "Eve", "F", "19900909", "222222222");
        c2 = p(m_north, "0000302", "Green", "Eve", "F", "19900909", "222222222");
        d1 = p(m_north, "0000401", "White", "Tom", "M", "19500101", "333333333");
        d2 = p(m_south, "0000402", "White", "Tom", "M", "19500101", "333333333");
        Build().LinkGroup(d1, d2);
        e1 = p(m_north, "0000501", "Black", "Al", "M", "19600101", "444444444");
        e2 = p(m_north, "0000502", "Black", "Al", "M", "19600101", "444444444");
        Build().Ignore(e1, e2);
        p(m_south, "0000601", "Loner", "Lou", "M", "19700101", "555555555");
    }

    struct Result
    {
        std::vector<std::string> rows; // "firstKey/secondKey/reason"
        int total = -1;
    };

    Result Run(MergeLinkCandidatesQueryDataSet q)
    {
        std::vector<DuplicatePatientRecord*> out;
        Result r;
        Arc().Patients().GetLinkAndMergePatients(out, q, r.total);
        for (auto* d : out) {
            r.rows.push_back(std::string(d->GetFirstPatient().GetPatientKey().c_str()) + "/" +
                             d->GetSecondPatient().GetPatientKey().c_str() + "/" + d->GetDuplicateReason().c_str());
            delete d;
        }
        return r;
    }
    std::string Row(const std::string& a, const std::string& b, const std::string& reason) { return a + "/" + b + "/" + reason; }

    std::string a1, a2, b1, b2, c1, c2, d1, d2, e1, e2;
    const std::string kSsn = "Same SSN";
    const std::string kNameDob = "Same Name and Date of Birth";
};

TEST_F(CandidateSearchTest, EveryPairOnceMinusLinkedAndIgnoredWithItsReason)
{
    MergeLinkCandidatesQueryDataSet q;
    q.SetRowCount("200");
    const Result r = Run(q);
    // In the first patient's name order: Brown, Green, Smith.
    EXPECT_EQ(r.rows, (std::vector<std::string>{Row(b1, b2, kNameDob), Row(c1, c2, kSsn), Row(a1, a2, kSsn)}));
    EXPECT_EQ(r.total, 3);
}

TEST_F(CandidateSearchTest, RowsCarryBothPatientsIdentity)
{
    MergeLinkCandidatesQueryDataSet q;
    q.SetLastName("Smi%");
    std::vector<DuplicatePatientRecord*> out;
    int total = 0;
    Arc().Patients().GetLinkAndMergePatients(out, q, total);
    ASSERT_EQ(out.size(), 1u);
    const PatientQueryRecord& first = out[0]->GetFirstPatient();
    EXPECT_STREQ(first.GetPatientKey().c_str(), a1.c_str());
    EXPECT_STREQ(first.GetPatientId().c_str(), "0000101");
    EXPECT_STREQ(first.GetOrganizationKey().c_str(), m_north.c_str());
    EXPECT_STREQ(first.GetOrganizationId().c_str(), "NORTH");
    EXPECT_STREQ(first.GetPatientName().c_str(), "Smith, John");
    EXPECT_STREQ(first.GetPatientSexCode().c_str(), "M");
    EXPECT_STREQ(first.GetSsn().c_str(), "111111111");
    EXPECT_EQ(first.GetPatientBirthDate(), BDate(1970, 1, 1));
    EXPECT_STREQ(out[0]->GetSecondPatient().GetPatientName().c_str(), "Smyth, John");
    EXPECT_STREQ(out[0]->GetDuplicateReason().c_str(), "Same SSN");
    delete out[0];
}

TEST_F(CandidateSearchTest, TheAllZeroKeySwitchesAHalfOff)
{
    MergeLinkCandidatesQueryDataSet merge;
    merge.SetLinkOrganizationKeys(MergeLinkCandidatesQueryDataSet::NO_ORGANIZATIONS);
    EXPECT_EQ(Run(merge).rows, (std::vector<std::string>{Row(b1, b2, kNameDob), Row(a1, a2, kSsn)}));

    MergeLinkCandidatesQueryDataSet link;
    link.SetMergeOrganizationKeys("00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(Run(link).rows, (std::vector<std::string>{Row(c1, c2, kSsn)}));

    MergeLinkCandidatesQueryDataSet none;
    none.SetMergeOrganizationKeys(MergeLinkCandidatesQueryDataSet::NO_ORGANIZATIONS);
    none.SetLinkOrganizationKeys(MergeLinkCandidatesQueryDataSet::NO_ORGANIZATIONS);
    const Result r = Run(none);
    EXPECT_TRUE(r.rows.empty());
    EXPECT_EQ(r.total, 0);
}

TEST_F(CandidateSearchTest, OrganizationListsLimitEachHalf)
{
    MergeLinkCandidatesQueryDataSet southOnly;
    southOnly.SetMergeOrganizationKeys(m_south.c_str());
    southOnly.SetLinkOrganizationKeys(m_south.c_str());
    EXPECT_EQ(Run(southOnly).rows, (std::vector<std::string>{Row(c1, c2, kSsn)}));

    MergeLinkCandidatesQueryDataSet both;
    both.SetMergeOrganizationKeys((m_south + "," + m_north).c_str());
    both.SetLinkOrganizationKeys(MergeLinkCandidatesQueryDataSet::NO_ORGANIZATIONS);
    EXPECT_EQ(Run(both).total, 2);

    MergeLinkCandidatesQueryDataSet unknown;
    unknown.SetMergeOrganizationKeys("NOT-AN-ORG");
    unknown.SetLinkOrganizationKeys("NOT-AN-ORG");
    EXPECT_EQ(Run(unknown).total, 0);
}

TEST_F(CandidateSearchTest, NameCriteriaMatchEitherPatientOfAPair)
{
    MergeLinkCandidatesQueryDataSet smyth;
    smyth.SetLastName("smy%");
    EXPECT_EQ(Run(smyth).rows, (std::vector<std::string>{Row(a1, a2, kSsn)}));

    MergeLinkCandidatesQueryDataSet ann;
    ann.SetLastName("%");
    ann.SetFirstName("Ann%");
    EXPECT_EQ(Run(ann).rows, (std::vector<std::string>{Row(b1, b2, kNameDob)}));
}

TEST_F(CandidateSearchTest, MrnSsnSexAndBirthDateCriteria)
{
    MergeLinkCandidatesQueryDataSet mrn;
    mrn.SetMRN("0000202");
    EXPECT_EQ(Run(mrn).rows, (std::vector<std::string>{Row(b1, b2, kNameDob)}));

    MergeLinkCandidatesQueryDataSet numeric;
    numeric.SetMRN("202");
    EXPECT_EQ(Run(numeric).total, 0);
    numeric.SetUseNumericMRN(true); // leading zeros do not count at a numeric site
    EXPECT_EQ(Run(numeric).rows, (std::vector<std::string>{Row(b1, b2, kNameDob)}));

    MergeLinkCandidatesQueryDataSet ssn;
    ssn.SetSSN(" 222222222 , 999999999,");
    EXPECT_EQ(Run(ssn).rows, (std::vector<std::string>{Row(c1, c2, kSsn)}));

    MergeLinkCandidatesQueryDataSet sex;
    sex.SetSexCode("F");
    EXPECT_EQ(Run(sex).rows, (std::vector<std::string>{Row(b1, b2, kNameDob), Row(c1, c2, kSsn)}));

    MergeLinkCandidatesQueryDataSet dob;
    dob.SetBeginBirthDate(BDateTime(BDate(1979, 1, 1), BTime(0, 0, 0)));
    dob.SetEndBirthDate(BDateTime(BDate(1980, 5, 5), BTime(23, 59, 59)));
    EXPECT_EQ(Run(dob).rows, (std::vector<std::string>{Row(b1, b2, kNameDob)}));

    MergeLinkCandidatesQueryDataSet openEnd;
    openEnd.SetBeginBirthDate(BDateTime(BDate(1985, 1, 1), BTime(0, 0, 0)));
    EXPECT_EQ(Run(openEnd).rows, (std::vector<std::string>{Row(c1, c2, kSsn)}));
}

TEST_F(CandidateSearchTest, ReasonIsADictionaryTextIgnoringCase)
{
    MergeLinkCandidatesQueryDataSet nameDob;
    nameDob.SetReason("Same Name and Date of Birth");
    EXPECT_EQ(Run(nameDob).rows, (std::vector<std::string>{Row(b1, b2, kNameDob)}));
    MergeLinkCandidatesQueryDataSet ssn;
    ssn.SetReason("same ssn");
    EXPECT_EQ(Run(ssn).total, 2);
    MergeLinkCandidatesQueryDataSet other;
    other.SetReason("Duplicate"); // a dictionary text no search result carries
    EXPECT_EQ(Run(other).total, 0);
    MergeLinkCandidatesQueryDataSet nonsense;
    nonsense.SetReason("Nonsense");
    EXPECT_EQ(Run(nonsense).total, 0);
}

TEST_F(CandidateSearchTest, RowCountLimitsRowsButTheTotalIsTrue)
{
    MergeLinkCandidatesQueryDataSet q;
    q.SetRowCount("1");
    const Result r = Run(q);
    EXPECT_EQ(r.rows.size(), 1u);
    EXPECT_EQ(r.total, 3);
    MergeLinkCandidatesQueryDataSet junk;
    junk.SetRowCount("abc"); // not a number: no limit
    EXPECT_EQ(Run(junk).rows.size(), 3u);
}

TEST_F(CandidateSearchTest, IgnoringAPairTakesItOutOfTheSearch)
{
    ASSERT_EQ(Arc().Patients().IgnoreDuplicatePatients(a2.c_str(), a1.c_str()), 0);
    MergeLinkCandidatesQueryDataSet q;
    EXPECT_EQ(Run(q).rows, (std::vector<std::string>{Row(b1, b2, kNameDob), Row(c1, c2, kSsn)}));
}

TEST_F(CandidateSearchTest, ReasonTextsComeFromTheDictionary)
{
    Db().Handle().exec("UPDATE dictionary SET description = 'Identical social security number' WHERE code = 'GID'");
    MergeLinkCandidatesQueryDataSet q;
    q.SetLastName("Smith");
    EXPECT_EQ(Run(q).rows, (std::vector<std::string>{Row(a1, a2, "Identical social security number")}));
}

TEST_F(CandidateSearchTest, BadInputGivesAnEmptyResultAndChangesNothing)
{
    const auto before = Snapshot();
    for (const std::string& last : {std::string("*"), std::string("O'Brien"), std::string("\"; DROP TABLE patients; --"),
                                   std::string("_"), std::string("\xff\xfe\xfd"), std::string(10000, 'x'),
                                   std::string("Smith\\%")}) {
        MergeLinkCandidatesQueryDataSet q;
        q.SetLastName(last.c_str());
        const Result r = Run(q);
        EXPECT_TRUE(r.rows.empty()) << last;
        EXPECT_EQ(r.total, 0) << last;
    }
    MergeLinkCandidatesQueryDataSet ssn;
    ssn.SetSSN("%");
    EXPECT_EQ(Run(ssn).total, 0); // identifiers match exactly
    MergeLinkCandidatesQueryDataSet sex;
    sex.SetSexCode("%");
    EXPECT_EQ(Run(sex).total, 0);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

} // namespace
