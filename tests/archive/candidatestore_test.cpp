// The kept merge/link candidate pairs: the blocking rules and their reasons,
// upkeep inside every write, the block cap, the indexed search against the
// straightforward query, and the rebuild command.
#include <archivefixture.h>
#include <otherworkstation.h>

#include <candidaterules.h>
#include <candidatestore.h>
#include <indexedcandidatesearch.h>
#include <scancandidatesearch.h>
#include <sqlitepatientservice.h>

#include <archivetool.h>

#include <bdatetime.h>
#include <bpersonname.h>
#include <duplicatepatientrecord.h>
#include <linkedpatientinfo.h>
#include <mergelinkcandidatesquerydataset.h>
#include <patientdetailrecord.h>
#include <server.h>

#include <SQLiteCpp/Statement.h>

#include <functional>
#include <random>
#include <sstream>

namespace {

class CandidateStoreTest : public ArchiveFixture
{
protected:
    SqlitePatientService& Svc() { return Arc().Patients(); }

    std::string P(const std::string& org, const std::string& last, const std::string& first, const std::string& sex,
                  const std::string& dob, const std::string& gid = std::string())
    {
        return Build().Patient(org, "", last, first, sex, dob, gid);
    }

    void Rebuild() { CandidateStore(Db()).Rebuild(); }
    bool Fresh() { return CandidateStore(Db()).Fresh(); }

    // "firstKey/secondKey/reason" per row, and the total.
    std::pair<std::vector<std::string>, int> Search(MergeLinkCandidatesQueryDataSet q)
    {
        std::vector<DuplicatePatientRecord*> out;
        int total = -1;
        Svc().GetLinkAndMergePatients(out, q, total);
        std::vector<std::string> rows;
        for (auto* d : out) {
            rows.push_back(std::string(d->GetFirstPatient().GetPatientKey().c_str()) + "/" +
                           d->GetSecondPatient().GetPatientKey().c_str() + "/" + d->GetDuplicateReason().c_str());
            delete d;
        }
        return {rows, total};
    }
    std::vector<std::string> Rows() { return Search(MergeLinkCandidatesQueryDataSet()).first; }
    static std::string Row(const std::string& a, const std::string& b, const std::string& reason)
    {
        return std::min(a, b) + "/" + std::max(a, b) + "/" + reason;
    }

    // The kept pairs and the kept totals, as texts.
    std::vector<std::string> Kept() { return KeptPairs(Db()); }

    // What the upkeep left equals what a full rebuild computes.
    void ExpectSameAsRebuild(const std::string& after)
    {
        EXPECT_TRUE(Fresh()) << after;
        const auto kept = Kept();
        Rebuild();
        EXPECT_EQ(kept, Kept()) << "after " << after;
    }

    PatientDetailRecord Record(const std::string& org, const std::string& mrn, const std::string& last,
                               const std::string& first, const std::string& sex, unsigned y, unsigned m, unsigned d,
                               const std::string& gid = std::string())
    {
        PatientDetailRecord r;
        r.SetOrganizationKey(org.c_str());
        r.SetPatientID(mrn.c_str());
        r.SetName(BPersonName(last.c_str(), first.c_str(), "", "", ""));
        r.SetSexCode(sex.c_str());
        r.SetDOB(BDate(y, m, d));
        r.SetPatientGID(gid.c_str());
        r.SetDateOfDeath(0, 0, 0);
        return r;
    }
    std::string Create(PatientDetailRecord r)
    {
        ACE_CString key;
        EXPECT_EQ(Svc().CreatePatient(&r, key), 0);
        return key.c_str();
    }
    PatientDetailRecord Get(const std::string& key)
    {
        PatientDetailRecord r;
        EXPECT_EQ(Svc().GetPatient(key.c_str(), &r, ACE_CString()), 0);
        return r;
    }

    const std::string kSsn = "Same SSN";
    const std::string kNameDob = "Same Name and Date of Birth";
    const std::string kSound = "Similar Sounding Name and Date of Birth";
    const std::string kFirstDobSex = "Same First Name, Date of Birth and Sex";
    const std::string kSwappedDate = "Same Name, Birth Day and Month Swapped";
    const std::string kSwappedNames = "First and Last Name Swapped";
    const std::string kNameMonth = "Same Name, Birth Year and Month";
    const std::string kNearIdDob = "Similar SSN and Same Date of Birth";
    const std::string kNearIdName = "Similar SSN and Same Name";
    const std::string kFirstDobNoSex = "Same First Name and Date of Birth, Sex Unknown";
    const std::string kNameNoDob = "Same Name, Date of Birth Missing or Invalid";
    const std::string kNameDobDigit = "Same Name, Date of Birth One Digit Apart";
    const std::string kSimilarNameDob = "Similar Name and Same Date of Birth";
    const std::string kLastNearDob = "Same Last Name, Similar First Name and Date of Birth";
    const std::string kFirstNearDob = "Same First Name, Similar Last Name and Date of Birth";
    const std::string kSwappedNearDob = "Names Swapped, Similar Date of Birth";
    const std::string kSimilarNameNoDob = "Similar Name, Date of Birth Missing or Invalid";
    const std::string kNameDobTwoApart = "Same Name, Date of Birth Two Errors Apart";
    const std::string kSimilarNameNearDob = "Similar Name and Similar Date of Birth";
};

TEST_F(CandidateStoreTest, RuleHelpers)
{
    EXPECT_EQ(CandidateRules::Normalize("O'Brien-Smith jr."), "OBRIENSMITHJR");
    EXPECT_EQ(CandidateRules::Phonetic("ROBERT"), "R163");
    EXPECT_EQ(CandidateRules::Phonetic("RUPERT"), "R163");
    EXPECT_EQ(CandidateRules::Phonetic("ASHCRAFT"), "A261"); // H does not separate S and C
    EXPECT_EQ(CandidateRules::Phonetic("TYMCZAK"), "T522");
    EXPECT_EQ(CandidateRules::Phonetic("LEE"), "L000");
    EXPECT_EQ(CandidateRules::Phonetic("123"), "");
    EXPECT_EQ(CandidateRules::SwapDayMonth("19800305"), "19800503");
    EXPECT_EQ(CandidateRules::SwapDayMonth("19800313"), ""); // 13 cannot be a month
    EXPECT_EQ(CandidateRules::SwapDayMonth("19800404"), ""); // swapping changes nothing
    EXPECT_EQ(CandidateRules::SwapDayMonth(""), "");
    EXPECT_EQ(CandidateRules::FoldCase("o'Brien-Smith \xc3\xa9"), "O'BRIEN-SMITH \xc3\xa9");
    EXPECT_EQ(CandidateRules::BirthMonth("19800305"), "198003");
    EXPECT_EQ(CandidateRules::BirthMonth("1980"), "");
}

TEST_F(CandidateStoreTest, EachRuleFindsItsPairsWithItsReason)
{
    const std::string g1 = P(m_north, "Alpha", "Ann", "F", "19500101", "900000001");
    const std::string g2 = P(m_north, "Omega", "Bob", "M", "19600202", "900000001");
    const std::string n1 = P(m_north, "O'Brien", "Mary", "F", "19610303");
    const std::string n2 = P(m_north, "OBRIEN", "mary", "F", "19610303");
    const std::string s1 = P(m_north, "Smith", "Carl", "M", "19620404");
    const std::string s2 = P(m_north, "Smyth", "Dora", "F", "19620404");
    const std::string f1 = P(m_north, "Adams", "Kate", "F", "19630505");
    const std::string f2 = P(m_north, "Zimmer", "Kate", "F", "19630505");
    const std::string d1 = P(m_north, "Lee", "Ann", "F", "19800306");
    const std::string d2 = P(m_north, "Lee", "Ann", "M", "19800603");
    const std::string w1 = P(m_north, "Grant", "Hugh", "M", "19640707");
    const std::string w2 = P(m_north, "Hugh", "Grant", "F", "19640707");
    const std::string m1 = P(m_north, "Nolan", "Ruth", "F", "19700310");
    const std::string m2 = P(m_north, "NOLAN", "ruth", "M", "19700322");
    P(m_north, "Lonely", "Luke", "M", "19640707");
    P(m_north, "Nolan", "Ruth", "F", "19701110"); // another month, three digits off
    P(m_north, "Nolan", "Rachel", "F", "19700311"); // another first name
    P(m_north, "No-lan", "Ruth", "F", "19700301"); // the names must match as written
    Rebuild();
    const auto [rows, total] = Search(MergeLinkCandidatesQueryDataSet());
    EXPECT_EQ(rows, (std::vector<std::string>{Row(f1, f2, kFirstDobSex), Row(g1, g2, kSsn), Row(w1, w2, kSwappedNames),
                                              Row(d1, d2, kSwappedDate), Row(m1, m2, kNameMonth), Row(n1, n2, kNameDob),
                                              Row(s1, s2, kSound)}));
    EXPECT_EQ(total, 7);

    // Every rule can be searched for by its dictionary text.
    MergeLinkCandidatesQueryDataSet sound;
    sound.SetReason("similar sounding name and date of birth");
    EXPECT_EQ(Search(sound).first, (std::vector<std::string>{Row(s1, s2, kSound)}));
    MergeLinkCandidatesQueryDataSet swapped;
    swapped.SetReason(kSwappedNames.c_str());
    EXPECT_EQ(Search(swapped).first, (std::vector<std::string>{Row(w1, w2, kSwappedNames)}));
    MergeLinkCandidatesQueryDataSet month;
    month.SetReason(kNameMonth.c_str());
    EXPECT_EQ(Search(month).first, (std::vector<std::string>{Row(m1, m2, kNameMonth)}));
}

TEST_F(CandidateStoreTest, RegistrationErrorHelpers)
{
    EXPECT_TRUE(CandidateRules::OneTypingErrorApart("123456789", "123456780"));
    EXPECT_TRUE(CandidateRules::OneTypingErrorApart("123456789", "123457689"));
    EXPECT_FALSE(CandidateRules::OneTypingErrorApart("123456789", "123456789")); // the same is another rule
    EXPECT_FALSE(CandidateRules::OneTypingErrorApart("123456789", "923456780"));
    EXPECT_FALSE(CandidateRules::OneTypingErrorApart("123456789", "123465798"));
    EXPECT_FALSE(CandidateRules::OneTypingErrorApart("123456789", "12345678"));
    EXPECT_FALSE(CandidateRules::OneTypingErrorApart("", ""));
    EXPECT_TRUE(CandidateRules::WithinEdits("MARIANNE", "MARYANNE", 2));
    EXPECT_TRUE(CandidateRules::WithinEdits("KOWALSKI", "KOWLASKI", 1)); // a swap is one edit
    EXPECT_TRUE(CandidateRules::WithinEdits("ANN", "ANNETT", 3));
    EXPECT_FALSE(CandidateRules::WithinEdits("ANN", "ANNETT", 2));
    EXPECT_FALSE(CandidateRules::WithinEdits("SMITH", "BROWN", 2));
    EXPECT_TRUE(CandidateRules::ValidBirthDate("20000229"));
    EXPECT_FALSE(CandidateRules::ValidBirthDate("19000229"));
    EXPECT_FALSE(CandidateRules::ValidBirthDate("19801305"));
    EXPECT_FALSE(CandidateRules::ValidBirthDate("19800431"));
    EXPECT_FALSE(CandidateRules::ValidBirthDate("19800000"));
    EXPECT_FALSE(CandidateRules::ValidBirthDate("1980"));
    EXPECT_FALSE(CandidateRules::ValidBirthDate(""));
    EXPECT_TRUE(CandidateRules::SexUnknown(""));
    EXPECT_TRUE(CandidateRules::SexUnknown("U"));
    EXPECT_FALSE(CandidateRules::SexUnknown("F"));
    EXPECT_TRUE(CandidateRules::BirthDatesNear("19800305", "19800503"));
    EXPECT_TRUE(CandidateRules::BirthDatesNear("19800305", "19800306"));
    EXPECT_TRUE(CandidateRules::BirthDatesNear("19800305", ""));
    EXPECT_TRUE(CandidateRules::BirthDatesNear("19800305", "19800000"));
    EXPECT_FALSE(CandidateRules::BirthDatesNear("19800305", "19800316"));
    EXPECT_EQ(CandidateRules::Initial("\xc3\xa9mile"), "\xc3\xa9");
    EXPECT_EQ(CandidateRules::Initial("emile"), "E");
    EXPECT_EQ(CandidateRules::Initial(""), "");
}

TEST_F(CandidateStoreTest, EachRegistrationErrorRuleFindsItsPairsWithItsReason)
{
    // Identifier digits swapped, or one digit wrong; names unlike.
    const std::string i1 = P(m_north, "Adler", "Anna", "F", "19550505", "123456789");
    const std::string i2 = P(m_north, "Zeller", "Bruno", "M", "19550505", "123456798");
    const std::string j1 = P(m_north, "Kovac", "Ivan", "M", "19570707", "222333444");
    const std::string j2 = P(m_south, "KOVAC", "ivan", "M", "19820203", "222333454");
    const std::string x1 = P(m_north, "Archer", "Lena", "", "19580808");
    const std::string x2 = P(m_north, "Zorn", "Lena", "F", "19580808");
    const std::string u1 = P(m_north, "Quist", "Alva", "U", "19580809");
    const std::string u2 = P(m_north, "Yates", "Alva", "F", "19580809");
    const std::string o1 = P(m_north, "Moreau", "Jules", "M", "19590909");
    const std::string o2 = P(m_north, "Moreau", "Jules", "M", "");
    const std::string v1 = P(m_north, "Petit", "Lou", "F", "19591340"); // no month 13
    const std::string v2 = P(m_north, "Petit", "Lou", "F", "19591204");
    const std::string t1 = P(m_north, "Novak", "Petra", "F", "19610101");
    const std::string t2 = P(m_north, "NOVAK", "petra", "F", "19710101");
    const std::string k1 = P(m_north, "Kowalski", "Annette", "F", "19620202");
    const std::string k2 = P(m_north, "Cowalski", "Anette", "F", "19620202");
    const std::string w1 = P(m_north, "Martin", "Hugo", "M", "19630303");
    const std::string w2 = P(m_north, "Hugo", "Martn", "M", "19630303"); // swapped, and a letter dropped
    const std::string h1 = P(m_north, "Hartley", "Rosalind", "F", "19660606");
    const std::string h2 = P(m_north, "HARTLEY", "Rosalin", "F", "19660609");
    const std::string s1 = P(m_north, "Hellie", "Rottford", "F", "20080220");
    const std::string s2 = P(m_north, "Rotford", "Hellie", "F", "20080222"); // swapped, a letter dropped, a digit off
    const std::string p1 = P(m_north, "Pemberton", "Giles", "M", "19670708");
    const std::string p2 = P(m_north, "Pemburton", "Giles", "M", "19670807");
    // Near misses that no rule takes.
    P(m_north, "Adler", "Otto", "M", "19550506", "123456788"); // identifier near, birth date and names not
    P(m_north, "Novak", "Petra", "F", "19720202");             // three digits off
    Rebuild();
    const auto [rows, total] = Search(MergeLinkCandidatesQueryDataSet());
    EXPECT_EQ(rows, (std::vector<std::string>{Row(i1, i2, kNearIdDob), Row(x1, x2, kFirstDobNoSex),
                                              Row(h1, h2, kLastNearDob), Row(s1, s2, kSwappedNearDob),
                                              Row(j1, j2, kNearIdName),
                                              Row(k1, k2, kSimilarNameDob), Row(w1, w2, kSimilarNameDob),
                                              Row(o1, o2, kNameNoDob), Row(t1, t2, kNameDobDigit),
                                              Row(p1, p2, kFirstNearDob), Row(v1, v2, kNameNoDob),
                                              Row(u1, u2, kFirstDobNoSex)}));
    EXPECT_EQ(total, 12);
    ExpectSameAsRebuild("rebuild");

    // Each can be searched for by its dictionary text.
    for (const auto& [reason, pairs] : std::vector<std::pair<std::string, size_t>>{
             {kNearIdDob, 1}, {kNearIdName, 1}, {kFirstDobNoSex, 2}, {kNameNoDob, 2}, {kNameDobDigit, 1}, {kSimilarNameDob, 2},
             {kLastNearDob, 1}, {kFirstNearDob, 1}, {kSwappedNearDob, 1}}) {
        MergeLinkCandidatesQueryDataSet q;
        q.SetReason(reason.c_str());
        EXPECT_EQ(Search(q).second, static_cast<int>(pairs)) << reason;
    }
    // The straightforward query agrees, reasons included.
    std::vector<CandidatePair> straight;
    long long straightTotal = -1;
    CandidateCriteria all;
    all.rowLimit = 0;
    ScanCandidateSearch(Db()).Find(all, straight, straightTotal);
    EXPECT_EQ(straightTotal, 12);
    std::vector<int> reasons;
    for (const auto& pair : straight)
        reasons.push_back(pair.reasonKind);
    EXPECT_EQ(reasons, (std::vector<int>{CandidateRules::kNearIdentifierBirth, CandidateRules::kFirstNameBirthNoSex,
                                         CandidateRules::kLastNameNearBirth, CandidateRules::kSwappedNearBirth,
                                         CandidateRules::kNearIdentifierName,
                                         CandidateRules::kSimilarNameBirth, CandidateRules::kSimilarNameBirth,
                                         CandidateRules::kNameBirthMissing, CandidateRules::kNameBirthDigit,
                                         CandidateRules::kFirstNameNearBirth, CandidateRules::kNameBirthMissing,
                                         CandidateRules::kFirstNameBirthNoSex}));
}

// No birth date to block on: one name as written (in either field) and the
// other within two typing errors, when a birth date is missing or no day.
TEST_F(CandidateStoreTest, SimilarNamesWithABirthDateMissingArePairedAndKept)
{
    const std::string n1 = P(m_north, "Lindqvist", "Maren", "F", "19700101");
    const std::string n2 = P(m_north, "Lindqvist", "Maran", "F", "");
    const std::string m1 = P(m_north, "Osei", "Kwame", "M", "19700102");
    const std::string m2 = P(m_south, "Kwame", "Osey", "M", ""); // names in each other's fields
    // Near misses: a name too far off, both birth dates real and far apart.
    P(m_north, "Lindqvist", "Mathilda", "F", "");
    P(m_north, "Brandt", "Olga", "F", "19600101");
    P(m_north, "Brandt", "Olgo", "F", "19900505");
    Rebuild();
    auto sorted = [](std::vector<std::string> v) {
        std::sort(v.begin(), v.end());
        return v;
    };
    const auto expected = sorted({Row(n1, n2, kSimilarNameNoDob), Row(m1, m2, kSimilarNameNoDob)});
    EXPECT_EQ(sorted(Rows()), expected);
    MergeLinkCandidatesQueryDataSet byReason;
    byReason.SetReason(kSimilarNameNoDob.c_str());
    EXPECT_EQ(Search(byReason).second, 2);
    std::vector<CandidatePair> straight;
    long long straightTotal = -1;
    CandidateCriteria all;
    ScanCandidateSearch(Db()).Find(all, straight, straightTotal);
    EXPECT_EQ(straightTotal, 2);
    for (const auto& pair : straight)
        EXPECT_EQ(pair.reasonKind, CandidateRules::kSimilarNameNoBirth);

    // The birth date recorded: the same day and a sound-alike name is another rule.
    PatientDetailRecord r = Get(n2);
    r.SetDOB(BDate(1970, 1, 1));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(sorted(Rows()), sorted({Row(n1, n2, kSound), Row(m1, m2, kSimilarNameNoDob)}));
    ExpectSameAsRebuild("birth date recorded");
    r = Get(n2);
    r.SetDOB(BDate(0, 0, 0));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(sorted(Rows()), expected);
    ExpectSameAsRebuild("birth date taken away");

    // A block over the cap pairs nobody.
    Build().Setting("policy", CandidateRules::kBlockCapSetting, "2");
    Rebuild();
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(m1, m2, kSimilarNameNoDob)}));
    const std::string m3 = Create(Record(m_north, "3003", "Oduya", "Kwame", "M", 1971, 1, 1));
    EXPECT_TRUE(Rows().empty()) << "Kwame/O now holds three";
    ExpectSameAsRebuild("block over the cap");
    Svc().DeletePatient(m3.c_str(), ACE_CString(), "Test patient");
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(m1, m2, kSimilarNameNoDob)}));
    ExpectSameAsRebuild("block back under the cap");
}

// Two errors at once: the birth date's day and month swapped and a digit
// off under the same names, or both names mistyped and the birth date near.
TEST_F(CandidateStoreTest, TwoErrorsInTheNamesOrTheBirthDateArePairedAndKept)
{
    const std::string t1 = P(m_north, "Trattberg", "Braina", "F", "20210204");
    const std::string t2 = P(m_north, "Trattberg", "Braina", "F", "20210407");
    Rebuild();
    const std::string k1 = Create(Record(m_north, "2001", "Kindman", "Pouso", "M", 1990, 11, 6));
    const std::string k2 = Create(Record(m_south, "2002", "Kindrnan", "Povso", "M", 1090, 11, 6));
    // Near misses: the same names born too far apart, and a third name.
    Create(Record(m_north, "2003", "Kindman", "Pouso", "M", 1990, 12, 31));
    Create(Record(m_north, "2004", "Quist", "Pouso", "F", 1990, 11, 6));
    auto sorted = [](std::vector<std::string> v) {
        std::sort(v.begin(), v.end());
        return v;
    };
    const auto expected = sorted({Row(t1, t2, kNameDobTwoApart), Row(k1, k2, kSimilarNameNearDob)});
    EXPECT_EQ(sorted(Rows()), expected);
    ExpectSameAsRebuild("create");
    for (const auto& reason : {kNameDobTwoApart, kSimilarNameNearDob}) {
        MergeLinkCandidatesQueryDataSet q;
        q.SetReason(reason.c_str());
        EXPECT_EQ(Search(q).second, 1) << reason;
    }
    std::vector<CandidatePair> straight;
    long long straightTotal = -1;
    CandidateCriteria all;
    ScanCandidateSearch(Db()).Find(all, straight, straightTotal);
    EXPECT_EQ(straightTotal, 2);
    std::vector<int> reasons;
    for (const auto& pair : straight)
        reasons.push_back(pair.reasonKind);
    std::sort(reasons.begin(), reasons.end());
    EXPECT_EQ(reasons, (std::vector<int>{CandidateRules::kNameBirthTwoApart, CandidateRules::kSimilarNameNearBirth}));

    // A third typing error in a name ends the pair.
    PatientDetailRecord r = Get(k2);
    r.SetName(BPersonName("Kindrnan", "Povsky", "", "", ""));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(t1, t2, kNameDobTwoApart)}));
    ExpectSameAsRebuild("a third typing error");
}

// The registration-error rules are kept as patients are created, changed,
// merged, linked, unlinked, ignored and deleted.
TEST_F(CandidateStoreTest, RegistrationErrorPairsAreKeptThroughEveryWrite)
{
    Rebuild();
    const std::string a = Create(Record(m_north, "1001", "Adler", "Anna", "F", 1955, 5, 5, "123456789"));
    const std::string b = Create(Record(m_north, "1002", "Zeller", "Bruno", "M", 1955, 5, 5, "123456798"));
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNearIdDob)}));
    ExpectSameAsRebuild("create");

    PatientDetailRecord r = Get(b);
    r.SetName(BPersonName("Edler", "Ana", "", "", ""));
    r.SetPatientGID("");
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kSimilarNameDob)}));
    ExpectSameAsRebuild("modify names");

    r = Get(b);
    r.SetName(BPersonName("Adler", "Anna", "", "", ""));
    r.SetSexCode("U");
    r.SetDOB(BDate(1955, 5, 6));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameMonth)}));
    r = Get(b);
    r.SetDOB(BDate(1965, 5, 5));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameDobDigit)}));
    ExpectSameAsRebuild("modify birth date");

    ASSERT_EQ(Svc().IgnoreDuplicatePatients(a.c_str(), b.c_str()), 0);
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("ignore");

    // Across organizations: link takes the pair out, unlink brings it back.
    const std::string c = Create(Record(m_south, "2001", "Zorn", "Anna", "", 1955, 5, 5));
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, c, kFirstDobNoSex)}));
    ASSERT_EQ(Svc().LinkPatients(a.c_str(), m_north.c_str(), c.c_str(), m_south.c_str(), nullptr), 0);
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("link");
    ASSERT_EQ(Svc().UnLinkPatient(c.c_str(), m_south.c_str()), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, c, kFirstDobNoSex)}));
    ExpectSameAsRebuild("unlink");

    // The source's pairs go with it; the survivor keeps its own.
    const std::string d = Create(Record(m_south, "2002", "Zorn", "Anna", "F", 1955, 5, 5));
    EXPECT_EQ(Rows().size(), 3u);
    PatientDetailRecord target = Get(c);
    ASSERT_EQ(Svc().MergePatients(d.c_str(), &target, "Duplicate", {}), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, c, kFirstDobNoSex)}));
    ExpectSameAsRebuild("merge");

    ASSERT_EQ(Svc().DeletePatient(c.c_str(), m_south.c_str(), "Test patient"), 0);
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("delete");
}

TEST_F(CandidateStoreTest, ALowerRuleNamesAPairMatchedByMany)
{
    const std::string a = P(m_north, "Brown", "Ann", "F", "19800505", "111");
    const std::string b = P(m_north, "Brown", "Ann", "F", "19800505", "111");
    Rebuild();
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kSsn)}));
    EXPECT_EQ(Text("SELECT rules FROM candidate_pairs"), std::to_string((1 << 1) | (1 << 2) | (1 << 3) | (1 << 4) | (1 << 7)
                                                                        | (1 << 13) | (1 << 14) | (1 << 15) | (1 << 19)));
}

TEST_F(CandidateStoreTest, ReasonTextsFollowTheDictionary)
{
    Build().Dictionary(101, "SOUNDDOB", "Sounds alike, born the same day");
    const std::string s1 = P(m_north, "Smith", "Carl", "M", "19620404");
    const std::string s2 = P(m_north, "Smyth", "Dora", "F", "19620404");
    Rebuild();
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(s1, s2, "Sounds alike, born the same day")}));
}

TEST_F(CandidateStoreTest, AStaleStoreIsAnsweredByTheStraightQueryAndRebuiltOnOpen)
{
    const std::string a = P(m_north, "Brown", "Ann", "F", "19800505");
    EXPECT_FALSE(Fresh());
    const std::string b = P(m_north, "Brown", "Ann", "F", "19800505");
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameDob)}));
    EXPECT_EQ(Count("SELECT count(*) FROM candidate_pairs"), 0); // a search never writes
    auto reopened = Archive::Open(Path());
    EXPECT_TRUE(CandidateStore(reopened->Db()).Fresh());
    EXPECT_EQ(Count("SELECT count(*) FROM candidate_pairs"), 1);
}

TEST_F(CandidateStoreTest, CreateModifyAndDeleteKeepThePairs)
{
    Rebuild();
    const std::string a = Create(Record(m_north, "1001", "Brown", "Ann", "F", 1980, 5, 5));
    EXPECT_TRUE(Rows().empty());
    const std::string b = Create(Record(m_north, "1002", "Brown", "Ann", "F", 1980, 5, 5));
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameDob)}));
    ExpectSameAsRebuild("create");

    PatientDetailRecord r = Get(b);
    r.SetName(BPersonName("Green", "Zoe", "", "", ""));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("modify away");

    r = Get(b);
    r.SetName(BPersonName("Braun", "Zoe", "", "", ""));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kSound)}));
    // The kept row carries the patients as they are now.
    EXPECT_EQ(Text("SELECT CASE WHEN key_a = '" + b + "' THEN a_last ELSE b_last END FROM candidate_pairs"), "Braun");
    ExpectSameAsRebuild("modify back");

    ASSERT_EQ(Svc().DeletePatient(b.c_str(), m_north.c_str(), "Test patient"), 0);
    EXPECT_TRUE(Rows().empty());
    EXPECT_EQ(Search(MergeLinkCandidatesQueryDataSet()).second, 0);
    ExpectSameAsRebuild("delete");
}

// A mistyped birth day: the same names born in the same month are paired as
// the patients are created and changed, and let go when the month changes.
TEST_F(CandidateStoreTest, SameNamesBornInTheSameMonthAreKeptAsTheyChange)
{
    Rebuild();
    const std::string a = Create(Record(m_north, "1001", "Keller", "Rosa", "F", 1975, 8, 14));
    const std::string b = Create(Record(m_south, "2001", "keller", "ROSA", "F", 1975, 8, 17));
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameMonth)}));
    ExpectSameAsRebuild("create");

    PatientDetailRecord r = Get(b);
    r.SetDOB(BDate(1975, 8, 14));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameDob)})); // now the whole date matches
    ExpectSameAsRebuild("same day");

    r = Get(b);
    r.SetDOB(BDate(1975, 11, 24));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("another month");

    r = Get(b);
    r.SetDOB(BDate(1975, 8, 2));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameMonth)}));
    r = Get(a);
    r.SetName(BPersonName("Keller", "Rose", "", "", ""));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("another first name");
}

// An archive written before the month rule existed gets its pairs
// recomputed when this version first opens it.
TEST_F(CandidateStoreTest, AnArchiveFromBeforeTheMonthRuleIsRebuiltOnOpen)
{
    const std::string a = P(m_north, "Keller", "Rosa", "F", "19750814");
    const std::string b = P(m_north, "Keller", "Rosa", "F", "19750817");
    Rebuild();
    const std::string path = Path();
    // As the previous version left it: no month pairs, its own index shapes.
    Db().Handle().exec("DELETE FROM candidate_pairs; DELETE FROM candidate_counts;"
                       " CREATE INDEX candidate_pairs_by_half ON candidate_pairs(merge, a_last, a_first, key_a, key_b);"
                       " DROP INDEX candidate_pairs_by_a_dob;"
                       " CREATE INDEX candidate_pairs_by_a_dob ON candidate_pairs(a_dob, a_sex, a_last, a_first, key_a, key_b);"
                       " DROP TRIGGER patients_version_on_save; ALTER TABLE patients DROP COLUMN version;"
                       " PRAGMA user_version = 4");
    ASSERT_TRUE(Fresh());
    auto reopened = Archive::Open(path);
    EXPECT_TRUE(CandidateStore(reopened->Db()).Fresh());
    EXPECT_EQ(Count("SELECT count(*) FROM sqlite_master WHERE name = 'candidate_pairs_by_half'"), 0);
    const std::string byDob = CandidateStore(reopened->Db()).IndexOfPairs("candidate_pairs_by_a_dob");
    EXPECT_EQ(Count("SELECT count(*) FROM pragma_index_info('" + byDob + "')"), 4);
    EXPECT_EQ(Count("SELECT count(*) FROM candidate_pairs WHERE reason = 7"), 1);
    EXPECT_EQ(Text("SELECT key_a || '/' || key_b FROM candidate_pairs"), std::min(a, b) + "/" + std::max(a, b));
}

// An archive written before the registration-error rules gets its pairs
// recomputed, and the upkeep's first-name index, when this version opens it.
TEST_F(CandidateStoreTest, AnArchiveFromBeforeTheRegistrationErrorRulesIsRebuiltOnOpen)
{
    const std::string a = P(m_north, "Novak", "Petra", "F", "19610101");
    const std::string b = P(m_north, "Novak", "Petra", "F", "19710101");
    Rebuild();
    const std::string path = Path();
    Db().Handle().exec("DELETE FROM candidate_pairs; DELETE FROM candidate_counts;"
                       " DROP INDEX patients_by_first_name;"
                       " DROP TRIGGER patients_version_on_save; ALTER TABLE patients DROP COLUMN version;"
                       " PRAGMA user_version = 5");
    ASSERT_TRUE(Fresh());
    auto reopened = Archive::Open(path);
    EXPECT_TRUE(CandidateStore(reopened->Db()).Fresh());
    EXPECT_EQ(Count("SELECT count(*) FROM sqlite_master WHERE name = 'patients_by_first_name'"), 1);
    EXPECT_EQ(Text("SELECT key_a || '/' || key_b || '/' || reason FROM candidate_pairs"),
              std::min(a, b) + "/" + std::max(a, b) + "/" + std::to_string(CandidateRules::kNameBirthDigit));
}

TEST_F(CandidateStoreTest, LinkAndUnlinkTakeOutAndBringBackCrossOrganizationPairs)
{
    const std::string n = P(m_north, "White", "Tom", "M", "19500101", "333");
    const std::string s = P(m_south, "White", "Tom", "M", "19500101", "333");
    const std::string other = P(m_north, "White", "Tom", "M", "19500101");
    Rebuild();
    EXPECT_EQ(Rows().size(), 3u);
    ASSERT_EQ(Svc().LinkPatients(n.c_str(), m_north.c_str(), s.c_str(), m_south.c_str(), nullptr), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(n, other, kNameDob), Row(s, other, kNameDob)}));
    ExpectSameAsRebuild("link");
    ASSERT_EQ(Svc().UnLinkPatient(s.c_str(), m_south.c_str()), 0);
    EXPECT_EQ(Rows().size(), 3u);
    EXPECT_NE(std::find(Rows().begin(), Rows().end(), Row(n, s, kSsn)), Rows().end());
    ExpectSameAsRebuild("unlink");
}

TEST_F(CandidateStoreTest, MergeRemovesTheSourcesPairsAndKeepsTheSurvivors)
{
    const std::string t = P(m_north, "Black", "Al", "M", "19600101");
    const std::string s = P(m_north, "Black", "Al", "M", "19600101");
    const std::string third = P(m_north, "Blak", "Xavier", "M", "19600101");
    Rebuild();
    EXPECT_EQ(Rows().size(), 3u);
    PatientDetailRecord target = Get(t);
    ASSERT_EQ(Svc().MergePatients(s.c_str(), &target, "Duplicate", {}), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(t, third, kSound)}));
    ExpectSameAsRebuild("merge");
}

TEST_F(CandidateStoreTest, AnIgnoredPairComesBackOnlyWhenAMatchingFieldChanges)
{
    Rebuild();
    const std::string a = Create(Record(m_north, "1001", "Brown", "Ann", "F", 1980, 5, 5));
    const std::string b = Create(Record(m_north, "1002", "Brown", "Ann", "F", 1980, 5, 5));
    ASSERT_EQ(Svc().IgnoreDuplicatePatients(b.c_str(), a.c_str()), 0);
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("ignore");

    // An address or phone change leaves the decision standing.
    PatientDetailRecord r = Get(b);
    r.SetCity("Elsewhere");
    r.SetHomeNumber("555-0199");
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_TRUE(Rows().empty());
    EXPECT_EQ(Count("SELECT count(*) FROM ignored_pairs"), 1);

    // A changed birth date asks the question again.
    r = Get(b);
    r.SetDOB(BDate(1981, 7, 9));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_TRUE(Rows().empty()); // no rule pairs them now
    EXPECT_EQ(Count("SELECT count(*) FROM ignored_pairs"), 0);
    r = Get(b);
    r.SetDOB(BDate(1980, 5, 5));
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kNameDob)}));
    ExpectSameAsRebuild("reopen");
}

TEST_F(CandidateStoreTest, OversizedBlocksAreCappedByTheSiteSetting)
{
    Build().Setting("policy", "CandidateBlockCap", "2");
    const std::string a = P(m_north, "Alpha", "Ann", "F", "19500101", "000000000");
    const std::string b = P(m_north, "Beta", "Bob", "M", "19600101", "000000000");
    const std::string c = P(m_north, "Gamma", "Cy", "M", "19700101", "000000000");
    Rebuild();
    EXPECT_TRUE(Rows().empty()); // three share the identifier: the block says nothing
    // The straightforward query holds blocks to the same cap.
    std::vector<CandidatePair> straight;
    long long total = -1;
    ScanCandidateSearch(Db()).Find(CandidateCriteria(), straight, total);
    EXPECT_EQ(total, 0);
    Build().Setting("policy", "CandidateBlockCap", "3");
    ScanCandidateSearch(Db()).Find(CandidateCriteria(), straight, total);
    EXPECT_EQ(total, 3);
    Build().Setting("policy", "CandidateBlockCap", "2");
    ASSERT_EQ(Svc().DeletePatient(c.c_str(), m_north.c_str(), "Test patient"), 0);
    EXPECT_EQ(Rows(), (std::vector<std::string>{Row(a, b, kSsn)}));
    ExpectSameAsRebuild("shrinking under the cap");
    const std::string d = Create(Record(m_north, "1009", "Delta", "Di", "F", 1990, 1, 1, "000000000"));
    EXPECT_TRUE(Rows().empty());
    ExpectSameAsRebuild("growing over the cap");
    (void)d;
}

TEST_F(CandidateStoreTest, TheRowLimitKeepsTheTrueTotal)
{
    for (int i = 0; i < 5; ++i) {
        // One shared identifier per pair; birth years all differ.
        const std::string last = "Same" + std::string(1, static_cast<char>('a' + i));
        const std::string day = "0" + std::to_string(i + 1) + "1" + std::to_string(i + 2);
        P(m_north, last, "Name", "F", std::to_string(1950 + 7 * i) + day, std::to_string(500 + i));
        P(m_south, last, "Other", "M", std::to_string(1951 + 7 * i) + day, std::to_string(500 + i));
    }
    Rebuild();
    MergeLinkCandidatesQueryDataSet q;
    q.SetRowCount("2");
    const auto [rows, total] = Search(q);
    EXPECT_EQ(rows.size(), 2u);
    EXPECT_EQ(total, 5);
    q.SetLastName("samec%");
    EXPECT_EQ(Search(q).second, 1);
}

// Every write's upkeep is inside its transaction: a fault at any write
// leaves every table, the kept pairs included, as it was.
TEST_F(CandidateStoreTest, UpkeepIsAllOrNothing)
{
    const std::string a = P(m_north, "Brown", "Ann", "F", "19800505");
    const std::string b = P(m_north, "Brown", "Ann", "F", "19800505");
    const std::string s = P(m_south, "Brown", "Ann", "F", "19800505");
    Rebuild();
    auto allOrNothing = [&](const std::function<int()>& op) {
        for (int n = 1; n < 500; ++n) {
            const auto before = Snapshot();
            Db().FailAtWrite(n);
            bool threw = false;
            try {
                EXPECT_EQ(op(), 0);
            } catch (const Framework::Server&) {
                threw = true;
            }
            Db().FailAtWrite(0);
            if (!threw)
                return;
            EXPECT_ARCHIVE_UNCHANGED(before);
        }
        ADD_FAILURE() << "never completed";
    };
    allOrNothing([&] {
        PatientDetailRecord r = Record(m_north, "2001", "Brown", "Ann", "F", 1980, 5, 5);
        ACE_CString key;
        return Svc().CreatePatient(&r, key);
    });
    allOrNothing([&] { return Svc().IgnoreDuplicatePatients(a.c_str(), b.c_str()); });
    allOrNothing([&] {
        PatientDetailRecord r = Get(a);
        r.SetName(BPersonName("Braun", "Ann", "", "", ""));
        return Svc().ModifyPatient(&r);
    });
    allOrNothing([&] { return Svc().LinkPatients(b.c_str(), m_north.c_str(), s.c_str(), m_south.c_str(), nullptr); });
    ExpectSameAsRebuild("the injected faults");
}

// The kept pairs answer exactly as the straightforward query, over random
// small archives, random criteria and random writes.
TEST_F(CandidateStoreTest, SameAnswersAsTheStraightQueryOnRandomArchives)
{
    IndexedCandidateSearch indexed(Db());
    // Small archives: this one orders and cuts every side in SQLite, as a
    // large archive does with its broad searches.
    IndexedCandidateSearch ordered(Db());
    ordered.SetReadWhole(0);
    ScanCandidateSearch scan(Db());
    const std::vector<std::string> lasts = {"Smith", "Smyth", "SMITH", "Smit-h", "Brown", "Braun", "Ann", "Lee", "O'Neil"};
    const std::vector<std::string> firsts = {"Ann", "ann", "Anne", "Lee", "Smith", "Bob", ""};
    // Dates one digit apart, swapped, not a date, missing.
    const std::vector<std::string> dobs = {"19800305", "19800503", "19800303", "19810305", "19911212", "20000131",
                                           "19801305", ""};
    // Identifiers one digit apart or with two digits swapped.
    const std::vector<std::string> gids = {"", "", "", "111", "222", "333", "112", "121"};
    const std::vector<std::string> sexes = {"F", "M", "", "U"};
    const std::vector<BDate> dates = {BDate(1980, 3, 5), BDate(1980, 5, 3), BDate(1981, 3, 5), BDate(1980, 3, 6)};
    int serial = 0;
    for (std::uint64_t seed = 1; seed <= 8; ++seed) {
        std::mt19937_64 rng(seed);
        auto pick = [&](const std::vector<std::string>& v) { return v[rng() % v.size()]; };
        // Every other archive has a tiny cap, so blocks cross it as patients change.
        Build().Setting("policy", CandidateRules::kBlockCapSetting, seed % 2 ? "50" : "3");
        Db().Handle().exec("DELETE FROM ignored_pairs; UPDATE patients SET link_group = NULL; DELETE FROM link_groups;"
                           " DELETE FROM patients");
        std::vector<std::string> keys;
        for (int i = 0; i < 24; ++i)
            keys.push_back(P(rng() % 2 ? m_north : m_south, pick(lasts), pick(firsts), pick(sexes), pick(dobs), pick(gids)));
        for (int i = 0; i < 3; ++i) {
            const std::string x = keys[rng() % keys.size()], y = keys[rng() % keys.size()];
            if (x != y && Svc().CanLinkPatients(x.c_str(), y.c_str()))
                Build().LinkGroup(x, y);
        }
        Build().Ignore(std::min(keys[0], keys[1]), std::max(keys[0], keys[1]));
        Rebuild();

        auto compare = [&](const std::string& stage) {
            for (int k = 0; k < 40; ++k) {
                CandidateCriteria c;
                switch (rng() % 4) {
                case 0: c.lastName = pick({"S%", "sm%", "Smith", "%", "b%", "O\\'%", "Smi_h", "Z%"}); break;
                case 1: c.firstName = pick({"A%", "ann", "%", "L%"}); break;
                default: break;
                }
                if (rng() % 4 == 0)
                    c.sexCode = pick({"F", "M"});
                if (rng() % 4 == 0)
                    c.dobBegin = "19800401";
                if (rng() % 4 == 0)
                    c.dobEnd = "19991231";
                if (rng() % 6 == 0)
                    c.globalIds = {"111", "333"};
                if (rng() % 8 == 0)
                    c.mrn = "0000001";
                if (rng() % 3 == 0)
                    c.reasonKind = static_cast<int>(rng() % (CandidateRules::kCount + 1));
                switch (rng() % 5) {
                case 0: c.mergeOff = true; break;
                case 1: c.linkOff = true; break;
                case 2: c.mergeOrgKeys = {m_north}; c.linkOrgKeys = {m_south}; break;
                default: break;
                }
                c.rowLimit = rng() % 3 == 0 ? 3 : 200;
                std::vector<CandidatePair> x, y, z;
                long long tx = -1, ty = -2, tz = -3;
                ASSERT_EQ(indexed.Find(c, x, tx), 0);
                ASSERT_EQ(scan.Find(c, y, ty), 0);
                ASSERT_EQ(ordered.Find(c, z, tz), 0);
                ASSERT_EQ(tz, ty) << "seed " << seed << " " << stage << " query " << k << " (ordered)";
                ASSERT_EQ(z.size(), y.size()) << "seed " << seed << " " << stage << " (ordered)";
                for (size_t i = 0; i < z.size(); ++i)
                    EXPECT_TRUE(z[i].first.key == y[i].first.key && z[i].second.key == y[i].second.key)
                        << "seed " << seed << " " << stage << " query " << k << " row " << i << " (ordered)";
                ASSERT_EQ(tx, ty) << "seed " << seed << " " << stage << " query " << k << " last '" << c.lastName << "'";
                ASSERT_EQ(x.size(), y.size()) << "seed " << seed << " " << stage;
                for (size_t i = 0; i < x.size(); ++i) {
                    EXPECT_EQ(x[i].first.key, y[i].first.key) << "seed " << seed << " " << stage << " row " << i;
                    EXPECT_EQ(x[i].second.key, y[i].second.key) << "seed " << seed << " " << stage;
                    EXPECT_EQ(x[i].reasonKind, y[i].reasonKind) << "seed " << seed << " " << stage;
                    EXPECT_EQ(x[i].merge, y[i].merge);
                    EXPECT_EQ(x[i].first.orgId, y[i].first.orgId);
                    EXPECT_EQ(x[i].second.dob, y[i].second.dob);
                }
            }
        };
        compare("after rebuild");
        // Writes through the service keep the pairs without a rebuild.
        for (int w = 0; w < 8; ++w) {
            const std::string key = keys[rng() % keys.size()];
            switch (rng() % 4) {
            case 0: {
                PatientDetailRecord r;
                if (Svc().GetPatient(key.c_str(), &r, ACE_CString()) != 0)
                    break;
                r.SetName(BPersonName(pick(lasts).c_str(), pick(firsts).c_str(), "", "", ""));
                r.SetPatientGID(pick(gids).c_str());
                if (rng() % 2)
                    r.SetDOB(dates[rng() % dates.size()]);
                if (rng() % 2)
                    r.SetSexCode(pick(sexes).c_str());
                Svc().ModifyPatient(&r);
                break;
            }
            case 1: {
                PatientDetailRecord r = Record(rng() % 2 ? m_north : m_south, std::to_string(90000 + ++serial), pick(lasts),
                                               pick(firsts), pick(sexes), 1980, 3, 5, pick(gids));
                ACE_CString k;
                if (Svc().CreatePatient(&r, k) == 0)
                    keys.push_back(k.c_str());
                break;
            }
            case 2: {
                const std::string other = keys[rng() % keys.size()];
                if (other != key)
                    Svc().IgnoreDuplicatePatients(key.c_str(), other.c_str());
                break;
            }
            default:
                Svc().DeletePatient(key.c_str(), ACE_CString(), "Test patient");
                break;
            }
        }
        EXPECT_TRUE(Fresh());
        compare("after writes");
        ExpectSameAsRebuild("random writes, seed " + std::to_string(seed));
    }
}

TEST_F(CandidateStoreTest, ToolRebuildsWithProgress)
{
    P(m_north, "Brown", "Ann", "F", "19800505");
    P(m_north, "Brown", "Ann", "F", "19800505");
    std::ostringstream out, err;
    EXPECT_EQ(RunArchiveTool({"rebuild-candidates", Path()}, out, err), 0);
    EXPECT_NE(out.str().find("Rebuilt 1 candidate pairs in " + Path()), std::string::npos) << out.str();
    const std::string steps = std::to_string(CandidateRules::kCount + 4);
    for (const std::string& step : {"step 0 / " + steps + " (reading patients)", "step 1 / " + steps + " (blocking)",
                                     "step " + std::to_string(CandidateRules::kCount + 1) + " / " + steps + " (writing pairs)",
                                     "step " + steps + " / " + steps + " (done)"})
        EXPECT_NE(err.str().find("rebuilding candidates: " + step), std::string::npos) << err.str();
    EXPECT_TRUE(Fresh());
    std::ostringstream out2, err2;
    EXPECT_EQ(RunArchiveTool({"rebuild-candidates", (Dir() / "missing.db").string()}, out2, err2), 1);
    EXPECT_EQ(RunArchiveTool({"rebuild-candidates"}, out2, err2), 2);
}

TEST_F(CandidateStoreTest, ToolSetsTheBlockCapAndRebuildsWithIt)
{
    for (int i = 0; i < 3; ++i)
        P(m_north, "Brown", "Ann", "F", "19800505");
    Rebuild();
    EXPECT_EQ(Count("SELECT count(*) FROM candidate_pairs"), 3);
    std::ostringstream out, err;
    EXPECT_EQ(RunArchiveTool({"rebuild-candidates", Path(), "--block-cap", "2"}, out, err), 0) << err.str();
    EXPECT_NE(out.str().find("Block cap set to 2\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("Rebuilt 0 candidate pairs in " + Path()), std::string::npos) << out.str();
    EXPECT_EQ(CandidateStore(Db()).BlockCap(), 2);
    EXPECT_EQ(Count("SELECT count(*) FROM candidate_pairs"), 0);
    EXPECT_TRUE(Fresh());

    for (const std::string bad : {"1", "x", "1000001"}) {
        std::ostringstream o, e;
        EXPECT_EQ(RunArchiveTool({"rebuild-candidates", Path(), "--block-cap", bad}, o, e), 2);
        EXPECT_NE(e.str().find("bravik-archive: rebuild-candidates: --block-cap wants a whole number from 2 to 1000000, not '" +
                               bad + "'"), std::string::npos) << e.str();
    }
    std::ostringstream o, e;
    EXPECT_EQ(RunArchiveTool({"rebuild-candidates", Path(), "--block-cap"}, o, e), 2);
    EXPECT_NE(e.str().find("--block-cap wants a whole number from 2 to 1000000, not ''"), std::string::npos);
    EXPECT_EQ(CandidateStore(Db()).BlockCap(), 2); // bad input changes nothing
}

} // namespace
