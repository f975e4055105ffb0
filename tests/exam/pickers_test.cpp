// The toolkit's choosers over the archive's dictionaries and providers, and
// the small controls the exam pages are made of.
#include "examfixture.h"

#include "dialogdriver.h"
#include "uiinput.h"

#include "examcodemodifierdataset.h"
#include "examcoderecord.h"
#include "locationdataset.h"
#include "performingresourcedataset.h"
#include "providercollection.h"
#include "providerrecord.h"
#include "queryexamcodesrequestfacade.h"

#include "contactinfo.h"
#include "pickerdlg.h"
#include "pickersinterface.h"
#include "scrolledit.h"
#include "timeeditctrl.h"
#include "listctrlex.h"

#include <QTest>

#include <memory>

namespace {

class PickersTest : public ExamFixture
{
protected:
    template <class T>
    struct Chosen
    {
        std::vector<T*> items;
        ~Chosen()
        {
            for (T* t : items)
                delete t;
        }
    };

    PickersInterface::ParamMap CodeParams(const char* text)
    {
        return {{QueryExamCodesRequestFacade::ExamCodeParamName(), text},
                {QueryExamCodesRequestFacade::OrgKeyParamName(), m_north.c_str()}};
    }
};

TEST_F(PickersTest, TheExamCodeChooserStartsFromTheTypedTextAndMatchesAsYouType)
{
    std::vector<CString> atStart, narrowed;
    CString caption, search;
    int selected = -1;
    user->OnNextDialog([&](CDialog& dlg) {
        PickerForm p(dlg);
        caption = p.Caption();
        search = p.SearchText();
        atStart = p.FirstColumn();
        selected = p.SelectedRow();
        p.Type("W");
        narrowed = p.FirstColumn();

        p.Enter();
    });
    Chosen<ExamCodeRecord> chosen;
    EXPECT_TRUE(PickersInterface().SelectExamCodes(CodeParams("cthead"), nullptr, chosen.items));
    EXPECT_STREQ(caption, "Select Exam Code");
    EXPECT_STREQ(search, "cthead");
    EXPECT_EQ(atStart, (std::vector<CString>{"CTHEAD", "CTHEADW"}));
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(narrowed, (std::vector<CString>{"CTHEADW"}));
    ASSERT_EQ(chosen.items.size(), 1u);
    EXPECT_STREQ(chosen.items[0]->GetCode().c_str(), "CTHEADW");
    EXPECT_STREQ(chosen.items[0]->GetDescription().c_str(), "CT HEAD WITH CONTRAST");
}

TEST_F(PickersTest, ArrowKeysMoveThroughTheMatchesWithoutLeavingTheSearchField)
{
    int afterDown = -1, afterUp = -1, afterPageDown = -1;
    user->OnNextDialog([&](CDialog& dlg) {
        PickerForm p(dlg);
        p.Replace("");
        p.Key(Qt::Key_Down);
        afterDown = p.SelectedRow();
        p.Key(Qt::Key_Up);
        p.Key(Qt::Key_Up);
        afterUp = p.SelectedRow();
        p.Key(Qt::Key_PageDown);
        afterPageDown = p.SelectedRow();
        p.Enter();
    });
    Chosen<ExamCodeRecord> chosen;
    EXPECT_TRUE(PickersInterface().SelectExamCodes(CodeParams(""), nullptr, chosen.items));
    EXPECT_EQ(afterDown, 1);
    EXPECT_EQ(afterUp, 0);
    EXPECT_EQ(afterPageDown, 2); // the last of three
    ASSERT_EQ(chosen.items.size(), 1u);
    EXPECT_STREQ(chosen.items[0]->GetCode().c_str(), "MRKNEE");
}

TEST_F(PickersTest, EscapeCancelsAndReturnsNothing)
{
    user->OnNextDialog([](CDialog& dlg) { PickerForm(dlg).Escape(); });
    Chosen<ExamCodeRecord> chosen;
    EXPECT_FALSE(PickersInterface().SelectExamCodes(CodeParams("CT"), nullptr, chosen.items));
    EXPECT_TRUE(chosen.items.empty());
}

TEST_F(PickersTest, EnterWithNothingMatchingKeepsTheChooserOpen)
{
    CString note;
    bool ended = true;
    user->OnNextDialog([&](CDialog& dlg) {
        PickerForm p(dlg);
        p.Replace("ZZZ");
        p.Enter();
        ended = dlg.GetModalResult() != -1;
        note = p.Note();
        DialogDriver(dlg).Click(IDCANCEL);
    });
    Chosen<ExamCodeRecord> chosen;
    EXPECT_FALSE(PickersInterface().SelectExamCodes(CodeParams(""), nullptr, chosen.items));
    EXPECT_FALSE(ended);
    EXPECT_STREQ(note, "Nothing matches. Change the text to search again.");
}

TEST_F(PickersTest, TheTextsWildcardsAreTakenLiterally)
{
    EXPECT_STREQ(PickersInterface::PrefixPattern("C%_\\").c_str(), "C\\%\\_\\\\%");
    std::vector<CString> rows;
    user->OnNextDialog([&](CDialog& dlg) {
        rows = PickerForm(dlg).FirstColumn();
        DialogDriver(dlg).Click(IDCANCEL);
    });
    Chosen<ExamCodeRecord> chosen;
    PickersInterface().SelectExamCodes(CodeParams("%"), nullptr, chosen.items);
    EXPECT_TRUE(rows.empty());
}

TEST_F(PickersTest, SeveralModifiersMayBeTakenAtOnce)
{
    user->OnNextDialog([](CDialog& dlg) {
        PickerForm p(dlg);
        p.Replace("");
        p.Dlg().GetList()->SetItemSelected(1, true);
        p.Enter();
    });
    Chosen<ExamCodeModifierDataSet> chosen;
    PickersInterface::ParamMap params;
    EXPECT_TRUE(PickersInterface().SelectExamCodeModifiers(params, nullptr, chosen.items));
    ASSERT_EQ(chosen.items.size(), 2u);
    EXPECT_STREQ(chosen.items[0]->GetCode().c_str(), "LT");
    EXPECT_STREQ(chosen.items[1]->GetCode().c_str(), "RT");
}

TEST_F(PickersTest, LocationsAndResourcesStartFromTheCurrentId)
{
    CString locationSearch, resourceSearch;
    user->OnNextDialog([&](CDialog& dlg) {
        locationSearch = PickerForm(dlg).SearchText();
        PickerForm(dlg).Enter();
    });
    user->OnNextDialog([&](CDialog& dlg) {
        resourceSearch = PickerForm(dlg).SearchText();
        PickerForm(dlg).Enter();
    });
    LocationDataSet location;
    location.SetLocationId("IC");
    Chosen<LocationDataSet> locations;
    EXPECT_TRUE(PickersInterface().SelectOrderingLocation(nullptr, &location, locations.items));
    PerformingResourceDataSet resource;
    resource.SetResourceId("MR");
    Chosen<PerformingResourceDataSet> resources;
    EXPECT_TRUE(PickersInterface().SelectPerformingResources(nullptr, &resource, resources.items));
    EXPECT_STREQ(locationSearch, "IC");
    EXPECT_STREQ(resourceSearch, "MR");
    ASSERT_EQ(locations.items.size(), 1u);
    EXPECT_STREQ(locations.items[0]->GetLocationId().c_str(), "ICU");
    ASSERT_EQ(resources.items.size(), 1u);
    EXPECT_STREQ(resources.items[0]->GetResourceId().c_str(), "MR1");
}

TEST_F(PickersTest, TheProviderChooserSearchesLastCommaFirst)
{
    std::vector<CString> rows;
    user->OnNextDialog([&](CDialog& dlg) {
        PickerForm p(dlg);
        p.Replace("wilson, ja");
        rows = p.FirstColumn();
        p.Enter();
    });
    ProviderRecord query;
    ProviderCollection collection(&query);
    Chosen<ProviderRecord> chosen;
    EXPECT_TRUE(PickersInterface().SelectProviders(nullptr, &collection, chosen.items));
    EXPECT_EQ(rows, (std::vector<CString>{"Wilson, James"}));
    ASSERT_EQ(chosen.items.size(), 1u);
    EXPECT_STREQ(chosen.items[0]->GetProviderID().c_str(), "PRV2");
}

TEST_F(PickersTest, TooManyPhysiciansAskForMoreOfTheName)
{
    for (int i = 0; i < 510; ++i)
        Build().Provider("P" + std::to_string(i), "Many", "Doc" + std::to_string(i));
    CString note;
    size_t rows = 1;
    user->OnNextDialog([&](CDialog& dlg) {
        PickerForm p(dlg);
        note = p.Note();
        rows = p.FirstColumn().size();
        DialogDriver(dlg).Click(IDCANCEL);
    });
    ProviderRecord query;
    query.SetName(BPersonName("Many", ""));
    ProviderCollection collection(&query);
    Chosen<ProviderRecord> chosen;
    EXPECT_FALSE(PickersInterface().SelectProviders(nullptr, &collection, chosen.items));
    EXPECT_STREQ(note, "Too many physicians match. Type more of the name (Last, First).");
    EXPECT_EQ(rows, 0u);
}

TEST_F(PickersTest, ADoubleClickTakesTheRow)
{
    user->OnNextDialog([](CDialog& dlg) {
        PickerForm p(dlg);
        ListCtrlEx* list = p.Dlg().GetList();
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(1, 0)).center());
    });
    Chosen<ExamCodeRecord> chosen;
    EXPECT_TRUE(PickersInterface().SelectExamCodes(CodeParams("CTHEAD"), nullptr, chosen.items));
    ASSERT_EQ(chosen.items.size(), 1u);
    EXPECT_STREQ(chosen.items[0]->GetCode().c_str(), "CTHEADW");
}

// ---- controls

TEST(ExamControlsTest, AScrollEditCutsProgramTextToItsLimitToo)
{
    ScrollEdit edit;
    edit.SetTextLimit(5);
    edit.SetText("abcdefgh");
    EXPECT_STREQ(edit.GetWindowText(), "abcde");
    EXPECT_EQ(edit.GetTextLimit(), 5u);
    edit.SetText("äöüßé€x");
    EXPECT_STREQ(edit.GetWindowText(), "äöüßé");
}

TEST(ExamControlsTest, TheContactPanelShowsAddressAndWorkPhone)
{
    ContactInfo panel;
    panel.SetAddress("1 Main St\nSpringfield, IL 62701");
    panel.SetWPhone("(555) 123-4567");
    EXPECT_STREQ(panel.GetAddress(), "1 Main St\nSpringfield, IL 62701");
    EXPECT_STREQ(panel.GetWPhone(), "(555) 123-4567");
}

TEST(ExamControlsTest, TheTimeFieldKeepsHoursMinutesAndSeconds)
{
    TimeEditCtrl time;
    time.SetTime(13, 5, 9);
    EXPECT_EQ(time.GetHour(), 13);
    EXPECT_EQ(time.GetMinute(), 5);
    EXPECT_EQ(time.GetSecond(), 9);
    EXPECT_EQ(time.text(), QStringLiteral("13:05:09"));
}

} // namespace
