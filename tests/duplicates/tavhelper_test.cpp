#include "dupfixture.h"

#include "boundary/tavhelper.h"

#include "combobox.h"
#include "dictionaryrecord.h"
#include "scopedservices.h"
#include "session.h"
#include "stubservices.h"
#include "worklistutils.h"

#include <dictionarytopic.h>

namespace {

std::vector<std::string> Texts(const CComboBox& box)
{
    std::vector<std::string> out;
    for (int i = 0; i < box.GetCount(); ++i)
        out.push_back(box.GetLBText(i).str());
    return out;
}

class TavHelperTest : public DupFixture
{
protected:
    TavHelper helper;
    ComboBox box;
};

TEST_F(TavHelperTest, SexCombosByCodeAndByDescription)
{
    EXPECT_EQ(1, helper.InitSexCombo(box));
    EXPECT_EQ((std::vector<std::string>{"M", "F", "U"}), Texts(box));
    EXPECT_EQ(CString("M"), CString(static_cast<DictionaryRecord*>(box.GetItemDataPtr(0))->GetCode().c_str()));
    EXPECT_FALSE(box.IsCodeDescription());
    EXPECT_EQ(1, helper.InitSexDescriptionCombo(box));
    EXPECT_EQ((std::vector<std::string>{"Male", "Female", "Unknown"}), Texts(box));
}

TEST_F(TavHelperTest, ExamStatusReadsCodeDashDescriptionAndMarksTheToolkitBox)
{
    EXPECT_EQ(1, helper.InitExamStatusCombo(box));
    EXPECT_EQ((std::vector<std::string>{"SC-Scheduled", "CM-Completed"}), Texts(box));
    EXPECT_TRUE(box.IsCodeDescription());
    CComboBox plain;
    EXPECT_EQ(1, helper.InitExamStatusCombo(plain));
    EXPECT_EQ(2, plain.GetCount());
}

TEST_F(TavHelperTest, CountryComboSelectsUnitedStates)
{
    helper.InitCountryCombo(box);
    EXPECT_EQ((std::vector<std::string>{"UNITED STATES", "CANADA"}), Texts(box));
    EXPECT_EQ(0, box.GetCurSel());
}

TEST_F(TavHelperTest, CountryComboMatchesUnitedStatesInAnyCase)
{
    Db().Handle().exec("UPDATE dictionary SET description = 'United States' WHERE description = 'UNITED STATES'");
    helper.InitCountryCombo(box);
    EXPECT_EQ(CString("United States"), box.GetLBText(box.GetCurSel()));
}

TEST_F(TavHelperTest, CountryComboWithoutUnitedStatesSelectsNothing)
{
    Db().Handle().exec("DELETE FROM dictionary WHERE description = 'UNITED STATES'");
    helper.InitCountryCombo(box);
    EXPECT_EQ((std::vector<std::string>{"CANADA"}), Texts(box));
    EXPECT_EQ(-1, box.GetCurSel());
}

TEST_F(TavHelperTest, ProvincesOfOneCountryWithoutSelection)
{
    box.AddString("stale");
    helper.UpdateProvinceCombo(box, "US");
    EXPECT_EQ((std::vector<std::string>{"Illinois", "Wisconsin"}), Texts(box));
    EXPECT_EQ(-1, box.GetCurSel());
    helper.UpdateProvinceCombo(box, "CA");
    EXPECT_EQ((std::vector<std::string>{"Ontario"}), Texts(box));
}

TEST_F(TavHelperTest, PrioritiesInRankOrderAndASecondCallListsThemTwice)
{
    EXPECT_EQ(1, helper.InitPriorityCombo(box));
    EXPECT_EQ((std::vector<std::string>{"S-STAT", "A-ASAP", "R-Routine"}), Texts(box));
    EXPECT_EQ(std::string("S"), static_cast<const char*>(box.GetItemDataPtr(0)));
    EXPECT_TRUE(box.IsCodeDescription());
    helper.InitPriorityCombo(box);
    EXPECT_EQ(6, box.GetCount());
}

TEST_F(TavHelperTest, APriorityWithoutARankIsLeftOut)
{
    WorkListUtils::SetPriorityRanking({"A", "S"});
    helper.InitPriorityCombo(box);
    EXPECT_EQ((std::vector<std::string>{"A-ASAP", "S-STAT"}), Texts(box));
}

class TwinPriorities : public StubDictionaryService
{
public:
    TwinPriorities() : a("S", "STAT one"), b("S", "STAT two"), c("R", "Routine"), list{&a, &b, &c} {}
    const std::vector<DictionaryRecord*>& GetExamPriorityCodes() override { return list; }
    DictionaryRecord a, b, c;
    std::vector<DictionaryRecord*> list;
};

TEST_F(TavHelperTest, TwoCodesOfOneRankTheLaterWinsAndThePositionLeftEmptyShowsNothing)
{
    TwinPriorities twins;
    ScopedServices scope;
    scope.Dictionaries(&twins);
    WorkListUtils::SetPriorityRanking({"S", "X", "R"});
    helper.InitPriorityCombo(box);
    EXPECT_EQ((std::vector<std::string>{"S-STAT two", "R-Routine"}), Texts(box));
}

TEST_F(TavHelperTest, MergeLinkReasonsKeepTheBoxAndAppend)
{
    box.AddString("first");
    helper.InitMergeLinkReasonCombo(box);
    EXPECT_EQ((std::vector<std::string>{"first", "Same SSN", "Same Name and Date of Birth", "Duplicate"}), Texts(box));
}

TEST_F(TavHelperTest, OrganizationsWithOrWithoutEnterprise)
{
    EXPECT_EQ(1, helper.InitOrganizationCombo(box, true));
    std::vector<std::string> all = Texts(box);
    EXPECT_NE(all.end(), std::find(all.begin(), all.end(), "Enterprise"));
    EXPECT_EQ(4u, all.size());
    ComboBox without;
    helper.InitOrganizationCombo(without, false);
    std::vector<std::string> some = Texts(without);
    EXPECT_EQ(some.end(), std::find(some.begin(), some.end(), "Enterprise"));
    EXPECT_EQ(3u, some.size());
    const int north = without.FindStringExact(-1, "NORTH");
    EXPECT_EQ(m_north, static_cast<const char*>(without.GetItemDataPtr(north)));
}

TEST_F(TavHelperTest, LinkMergeOrganizationsNeedARight)
{
    Session::Instance().GetUserRights().SetProvider([](UserRights::eRIGHT right, const ACE_CString& org) {
        if (org == "NORTH")
            return right == UserRights::eMERGE_PATIENT;
        return org == "FED" && right == UserRights::eLINK_PATIENT;
    });
    helper.InitLinkMergeOrganizationCombo(box);
    std::vector<std::string> t = Texts(box);
    std::sort(t.begin(), t.end());
    EXPECT_EQ((std::vector<std::string>{"FED", "NORTH"}), t);
    Session::Instance().GetUserRights().Reset();
}

TEST_F(TavHelperTest, SelectByCodeIsCaseSensitive)
{
    ComboBox empty;
    EXPECT_EQ(-1, helper.SetCurSelDictionaryCombo(empty, "M"));
    helper.InitSexDescriptionCombo(box);
    EXPECT_EQ(1, helper.SetCurSelDictionaryCombo(box, "F"));
    EXPECT_EQ(1, box.GetCurSel());
    EXPECT_EQ(-1, helper.SetCurSelDictionaryCombo(box, "m"));
    EXPECT_EQ(1, box.GetCurSel());
}

TEST_F(TavHelperTest, SexDescriptionAndOrganizationTranslations)
{
    EXPECT_EQ(CString("Female"), helper.GetSexCodeDescription("F"));
    EXPECT_EQ(CString(""), helper.GetSexCodeDescription("Q"));
    EXPECT_EQ(CString((m_north + "," + m_south).c_str()), helper.OrganizationIDsToKeys("NORTH,SOUTH,NOWHERE"));
    EXPECT_EQ(CString("SOUTH"), helper.OrganizationKeysToIDs(m_south.c_str()));
    EXPECT_TRUE(helper.IsFederatedPatient("FED"));
    EXPECT_FALSE(helper.IsFederatedPatient("NORTH"));
    EXPECT_FALSE(helper.IsFederatedPatient(""));
}

} // namespace
