// How the merge panel turns the user's choices into the surviving record,
// the key merged away and the pairing of the linked records.

#include "mergelinkfixture.h"

#include "mergelink/linkedmergelistctrl.h"
#include "mergelink/mergepatientsdlgimpl.h"

#include "listctrlex.h"

namespace {

using Row = MergePatientsDlgImpl;
using Pairs = std::vector<std::pair<std::string, std::string>>;

std::string T(const ACE_CString& s) { return std::string(s.c_str(), s.length()); }

class MergeAssemblyTest : public MergeLinkFixture
{
protected:
    // Two NORTH records that differ in every field.
    void DifferentRecords()
    {
        p1 = lists.AddFirst(Record("PK1", "M100", "NORTH", "Smith", "John"));
        p2 = lists.AddSecond(Record("PK2", "M200", "NORTH", "Smyth", "Jon"));
        Fill(*p1, "1");
        Fill(*p2, "2");
        p1->SetDOB(BDate(1970, 1, 1));
        p2->SetDOB(BDate(1971, 2, 2));
        p1->SetDateOfDeath(2020, 1, 1);
        p2->SetDateOfDeath(2021, 2, 2);
        p1->SetSexCode("M");
        p2->SetSexCode("F");
    }
    static void Fill(PatientDetailRecord& r, const std::string& n)
    {
        auto v = [&](const char* what) { return ACE_CString((what + n).c_str()); };
        r.SetMiddleName(v("Mid"));
        r.SetGenderCode(v("G"));
        r.SetPatientGID(v("GID"));
        r.SetMothersMaidenName(v("Maiden"));
        r.SetWorkNumber(v("Work"));
        r.SetHomeNumber(v("Home"));
        r.SetEmailAddress(v("mail@"));
        r.SetTitle(v("Title"));
        r.SetSuffix(v("Suffix"));
        r.SetAliasFirstName(v("AliasF"));
        r.SetAliasMiddleName(v("AliasM"));
        r.SetAliasLastName(v("AliasL"));
        r.SetAddressType(v("Type"));
        r.SetOtherDesignation(v("Other"));
        r.SetAddressLine1(v("Line1-"));
        r.SetAddressLine2(v("Line2-"));
        r.SetCounty(v("County"));
        r.SetCity(v("City"));
        r.SetStateCode(v("ST"));
        r.SetPostalCode(v("Zip"));
        r.SetCountryCode(v("C"));
        r.SetEmailAddress(v("mail@"));
    }
    RecordLists lists;
    PatientDetailRecord* p1 = nullptr;
    PatientDetailRecord* p2 = nullptr;
};

TEST_F(MergeAssemblyTest, RecordTwosMrnMakesRecordTwoTheSurvivor)
{
    DifferentRecords();
    const auto out = RunMergeDialog(lists, [](MergeForm& f) {
        f.SelectAll(2);
        f.ChooseField(Row::ROW_LAST_NAME, 1);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ("PK2", T(out.target.GetPatientKey()));
    EXPECT_EQ("PK1", out.source);
    EXPECT_EQ("M200", T(out.target.GetPatientID()));
    EXPECT_EQ("Smith", T(out.target.GetLastName()));
    EXPECT_EQ("Jon", T(out.target.GetFirstName()));
    EXPECT_EQ("AliasF2", T(out.target.GetAliasFirstName()));
    EXPECT_EQ("City2", T(out.target.GetCity()));
}

TEST_F(MergeAssemblyTest, EveryOtherFieldComesFromTheOtherRecordButThePhones)
{
    DifferentRecords();
    const auto out = RunMergeDialog(lists, [](MergeForm& f) {
        f.SelectAll(2);
        f.ChooseField(Row::ROW_MRN, 1);
        f.ClickCancel();
    }, *user);
    const PatientDetailRecord& t = out.target;
    EXPECT_EQ("PK1", T(t.GetPatientKey()));
    EXPECT_EQ("PK2", out.source);
    EXPECT_EQ("M100", T(t.GetPatientID()));
    EXPECT_EQ("K-NORTH", T(t.GetOrganizationKey()));
    EXPECT_EQ("Smyth", T(t.GetLastName()));
    EXPECT_EQ("Jon", T(t.GetFirstName()));
    EXPECT_EQ("Mid2", T(t.GetMiddleName()));
    EXPECT_EQ("F", T(t.GetSexCode()));
    EXPECT_EQ("G2", T(t.GetGenderCode()));
    EXPECT_TRUE(t.GetDOB() == BDate(1971, 2, 2));
    EXPECT_EQ(2021, t.GetDeathYear());
    EXPECT_EQ(2, t.GetDeathMonth());
    EXPECT_EQ(2, t.GetDeathDay());
    EXPECT_EQ("GID2", T(t.GetPatientGID()));
    EXPECT_EQ("Maiden2", T(t.GetMothersMaidenName()));
    EXPECT_EQ("mail@2", T(t.GetEmailAddress()));
    EXPECT_EQ("Title2", T(t.GetTitle()));
    EXPECT_EQ("Suffix2", T(t.GetSuffix()));
    EXPECT_EQ("AliasF2", T(t.GetAliasFirstName()));
    EXPECT_EQ("AliasM2", T(t.GetAliasMiddleName()));
    EXPECT_EQ("AliasL2", T(t.GetAliasLastName()));
    // The whole address block.
    EXPECT_EQ("Type2", T(t.GetAddressType()));
    EXPECT_EQ("Other2", T(t.GetOtherDesignation()));
    EXPECT_EQ("Line1-2", T(t.GetAddressLine1()));
    EXPECT_EQ("Line2-2", T(t.GetAddressLine2()));
    EXPECT_EQ("County2", T(t.GetCounty()));
    EXPECT_EQ("City2", T(t.GetCity()));
    EXPECT_EQ("ST2", T(t.GetStateCode()));
    EXPECT_EQ("Zip2", T(t.GetPostalCode()));
    EXPECT_EQ("C2", T(t.GetCountryCode()));
    // The survivor keeps its own phone numbers.
    EXPECT_EQ("Work1", T(t.GetWorkNumber()));
    EXPECT_EQ("Home1", T(t.GetHomeNumber()));
}

TEST_F(MergeAssemblyTest, PhoneRowsCopyTheOtherRecordsSuffixAndKeepThePhones)
{
    DifferentRecords();
    for (int phoneRow : {int(Row::ROW_WORK_PHONE), int(Row::ROW_HOME_PHONE)}) {
        const auto out = RunMergeDialog(lists, [&](MergeForm& f) {
            f.SelectAll(1);
            f.ChooseField(phoneRow, 2);
            f.ClickCancel();
        }, *user);
        EXPECT_EQ("PK1", T(out.target.GetPatientKey()));
        // The suffix row chose record 1, yet the suffix is record 2's.
        EXPECT_EQ("Suffix2", T(out.target.GetSuffix())) << phoneRow;
        EXPECT_EQ("Work1", T(out.target.GetWorkNumber()));
        EXPECT_EQ("Home1", T(out.target.GetHomeNumber()));
    }
    // Nothing from the other record: its own suffix stays.
    const auto plain = RunMergeDialog(lists, [&](MergeForm& f) {
        f.SelectAll(1);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ("Suffix1", T(plain.target.GetSuffix()));
}

TEST_F(MergeAssemblyTest, EmptyGenderFallsBackToTheChosenRecordsSexCode)
{
    DifferentRecords();
    p1->SetGenderCode("");
    p2->SetGenderCode("");
    // Record 1 survives; the gender row shows record 2's sex "F" and is chosen.
    const auto fromTwo = RunMergeDialog(lists, [](MergeForm& f) {
        f.SelectAll(1);
        f.ChooseField(Row::ROW_GENDER, 2);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ("PK1", T(fromTwo.target.GetPatientKey()));
    EXPECT_EQ("F", T(fromTwo.target.GetGenderCode()));
    EXPECT_EQ("M", T(fromTwo.target.GetSexCode()));

    const auto fromOne = RunMergeDialog(lists, [](MergeForm& f) {
        f.SelectAll(1);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ("M", T(fromOne.target.GetGenderCode()));

    // Record 2's own gender code when it has one.
    p2->SetGenderCode("X");
    const auto withGender = RunMergeDialog(lists, [](MergeForm& f) {
        f.SelectAll(2);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ("X", T(withGender.target.GetGenderCode()));
}

TEST_F(MergeAssemblyTest, NamePartsAreReplacedOneByOne)
{
    DifferentRecords();
    const auto out = RunMergeDialog(lists, [](MergeForm& f) {
        f.SelectAll(1);
        f.ChooseField(Row::ROW_MIDDLE_NAME, 2);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ("Smith", T(out.target.GetLastName()));
    EXPECT_EQ("John", T(out.target.GetFirstName()));
    EXPECT_EQ("Mid2", T(out.target.GetMiddleName()));
    EXPECT_EQ("Title1", T(out.target.GetTitle()));
    EXPECT_EQ("Smith^John^Mid2^Title1^Suffix1", T(out.target.GetName().ToDICOMName()));
}

TEST_F(MergeAssemblyTest, LinkedChoicesAndTheFederatedPair)
{
    p1 = lists.AddFirst(Record("PK1", "M100", "NORTH"));
    lists.AddFirst(Record("L1S", "S1", "SOUTH"));
    lists.AddFirst(Record("L1F", "F1", "FED"));
    p2 = lists.AddSecond(Record("PK2", "M200", "NORTH"));
    lists.AddSecond(Record("L2S", "S2", "SOUTH"));
    lists.AddSecond(Record("L2E", "E2", "EAST"));
    lists.AddSecond(Record("L2F", "F2", "FED"));
    std::vector<CString> labels;
    std::vector<bool> radio;
    const auto out = RunMergeDialog(lists, [&](MergeForm& f) {
        for (int r = 0; r < f.LinkedList().GetItemCount(); ++r) {
            labels.push_back(MergeForm::Text(f.LinkedList(), r, 0));
            radio.push_back(MergeForm::IsRadio(f.LinkedList(), r, 1));
        }
        f.SelectAll(1);
        f.ChooseLinked(0, 2);
        f.ClickCancel();
    }, *user);
    // The federated organization has no row; EAST has one record only.
    EXPECT_EQ((std::vector<CString>{"MRN(SOUTH):", "MRN(EAST):"}), labels);
    EXPECT_EQ((std::vector<bool>{true, false}), radio);
    // SOUTH: record 2's kept; FED: paired with the survivor's side kept.
    EXPECT_EQ((Pairs{{"L1S", "L2S"}, {"L2F", "L1F"}}), out.linked);
}

TEST_F(MergeAssemblyTest, FederatedPairFollowsTheSurvivor)
{
    p1 = lists.AddFirst(Record("PK1", "M100", "NORTH"));
    lists.AddFirst(Record("L1F", "F1", "FED"));
    p2 = lists.AddSecond(Record("PK2", "M200", "NORTH"));
    lists.AddSecond(Record("L2F", "F2", "FED"));
    const auto out = RunMergeDialog(lists, [&](MergeForm& f) {
        EXPECT_EQ(0, f.LinkedList().GetItemCount());
        f.SelectAll(2);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ("PK2", T(out.target.GetPatientKey()));
    EXPECT_EQ((Pairs{{"L1F", "L2F"}}), out.linked);
}

TEST_F(MergeAssemblyTest, BlockedOrganizationLabelStillParses)
{
    p1 = lists.AddFirst(Record("PK1", "M100", "NORTH"));
    lists.AddFirst(Record("L1S", "S1", "SOUTH"));
    p2 = lists.AddSecond(Record("PK2", "M200", "NORTH"));
    lists.AddSecond(Record("L2S", "S2", "SOUTH"));
    lists.blocked.push_back("SOUTH");
    EXPECT_EQ("SOUTH", T(LinkedMergeListCtrl::OrganizationIdFromLabel("! MRN(SOUTH):")));
    EXPECT_EQ("ST (A)", T(LinkedMergeListCtrl::OrganizationIdFromLabel("! MRN(ST (A)):")));
    CString label;
    const auto out = RunMergeDialog(lists, [&](MergeForm& f) {
        label = MergeForm::Text(f.LinkedList(), 0, 0);
        f.SelectAll(1);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ(CString("! MRN(SOUTH):"), label);
    EXPECT_EQ((Pairs{{"L2S", "L1S"}}), out.linked);
}

TEST_F(MergeAssemblyTest, LinkedOrganizationsInOrderOfFirstAppearance)
{
    p1 = lists.AddFirst(Record("PK1", "M100", "NORTH"));
    lists.AddFirst(Record("A1", "1", "WEST"));
    lists.AddFirst(Record("B1", "2", "SOUTH"));
    p2 = lists.AddSecond(Record("PK2", "M200", "NORTH"));
    lists.AddSecond(Record("C2", "3", "EAST"));
    lists.AddSecond(Record("D2", "4", "WEST"));
    std::vector<ACE_CString> orgs;
    RunMergeDialog(lists, [&](MergeForm& f) {
        orgs = f.Panel().GetLinkedOrganizations();
        f.ClickCancel();
    }, *user);
    EXPECT_EQ((std::vector<ACE_CString>{"WEST", "SOUTH", "EAST"}), orgs);
}

} // namespace
