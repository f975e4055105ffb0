#include "dupfixture.h"

#include "duplicates/duplicatepatientlist.h"
#include "duplicates/duplicatepatientpage.h"
#include "duplicates/duppatientlistheaderctrl.h"

#include "button.h"
#include "duplicatepatientrecord.h"
#include "faultyservices.h"
#include "linkedpatientinfo.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "screenshot.h"
#include "serviceregistry.h"
#include "session.h"
#include "searchheaderitem.h"
#include "qtconvert.h"

#include <QToolButton>

#include <QApplication>
#include <QMenu>
#include <QPainter>

#include <cstdlib>

namespace {

const CString kNarrow = "Additional results that match your criteria are available. Please narrow your search.";
const CString kNone = "No merge/link candidates found that match the current search criteria.";
const CString kIgnoreQuestion = "Are you sure you want to ignore the selected duplicate patient records?";
constexpr UINT kMerge = 20010;
constexpr UINT kLink = 20011;
constexpr UINT kIgnore = 20012;

// The page with its merge and link dialogs answered by the test.
class TestPage : public CDuplicatePatientPage
{
public:
    int mergeAnswer = IDCANCEL;
    int linkAnswer = IDCANCEL;
    std::vector<std::pair<std::string, std::string>> mergeAsked, linkAsked;
    std::string mergeSource, linkTarget, linkTargetOrg, linkOther, linkOtherOrg;

protected:
    int DisplayMergeDialog(const ACE_CString& first, const ACE_CString& second, ACE_CString& source,
                           PatientDetailRecord& target, std::vector<LinkedPatientInfo*>&) override
    {
        mergeAsked.emplace_back(first.c_str(), second.c_str());
        source = mergeSource.c_str();
        // The surviving record as the dialog would hand it over.
        Session::ServiceInstance()->GetPatientManagementService()->GetPatient(first, &target, ACE_CString());
        return mergeAnswer;
    }
    int DisplayLinkDialog(const ACE_CString& first, const ACE_CString& second, ACE_CString& targetKey,
                          ACE_CString& targetOrg, ACE_CString& linkKey, ACE_CString& linkOrg) override
    {
        linkAsked.emplace_back(first.c_str(), second.c_str());
        targetKey = linkTarget.c_str();
        targetOrg = linkTargetOrg.c_str();
        linkKey = linkOther.c_str();
        linkOrg = linkOtherOrg.c_str();
        return linkAnswer;
    }
};

class PageTest : public DupFixture
{
protected:
    void SetUp() override
    {
        DupFixture::SetUp();
        a1 = P(m_north, "0000101", "Smith", "John", "M", "19700101", "111111111");
        a2 = P(m_north, "0000102", "Smyth", "John", "M", "19700101", "111111111");
        c1 = P(m_south, "0000301", "Green", "Eve", "F", "19900909", "222222222");
        c2 = P(m_north, "0000302", "Green", "Eve", "F", "19900909", "222222222");
    }
    void TearDown() override
    {
        window.reset();
        DupFixture::TearDown();
    }
    void Open()
    {
        window = std::make_unique<QWidget>();
        window->resize(1100, 420);
        page = new TestPage();
        page->Create(window.get(), CRect(0, 0, 1100, 420), 77);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        window->activateWindow();
    }
    CDuplicatePatientList& List() const { return *page->GetList(); }
    int Row(const std::string& firstKey) const
    {
        for (int r = 0; r < List().GetItemCount(); ++r)
            if (firstKey == List().GetRecord(r)->GetFirstPatient().GetPatientKey().c_str())
                return r;
        return -1;
    }
    void RightClick(int row)
    {
        const QRect cell = List().visualRect(List().model()->index(row, 0));
        QTest::mouseClick(List().viewport(), Qt::RightButton, {}, cell.center());
    }
    void RightClickBelowRows()
    {
        QTest::mouseClick(List().viewport(), Qt::RightButton, {}, QPoint(20, List().viewport()->height() - 4));
    }
    CString Results(int shown, int total) const
    {
        CString s;
        s.Format("Results: %d of %d", shown, total);
        return s;
    }
    std::unique_ptr<QWidget> window;
    TestPage* page = nullptr;
    std::string a1, a2, c1, c2;
};

TEST_F(PageTest, ShowingThePageSearches)
{
    Open();
    EXPECT_EQ(2, List().GetItemCount());
    EXPECT_EQ(Results(2, 2), page->GetResultsText());
    EXPECT_EQ(CString(""), page->GetMessageLine());
    EXPECT_EQ(CString("search"), page->GetSearchButton()->GetWindowText());
    // The button at (2, 2) with its ideal size; the strip above the list.
    EXPECT_EQ(QPoint(2, 2), page->GetSearchButton()->pos());
    EXPECT_EQ(page->GetSearchButton()->sizeHint(), page->GetSearchButton()->size());
    EXPECT_EQ(page->GetResultsRect().bottom, List().y());
    EXPECT_EQ(page->width(), List().width());
    EXPECT_TRUE(List().HasFullRowSelection());
}

TEST_F(PageTest, EachShowingSearchesAgain)
{
    Open();
    FaultyServices faulty;
    page->hide();
    page->show();
    EXPECT_EQ(1, faulty.faults.Count("GetLinkAndMergePatients"));
}

TEST_F(PageTest, NoCandidatesSaysSo)
{
    Build().Ignore(a1, a2);
    Build().LinkGroup(c1, c2);
    Open();
    EXPECT_EQ(0, List().GetItemCount());
    EXPECT_EQ(Results(0, 0), page->GetResultsText());
    EXPECT_EQ(kNone, page->GetMessageLine());
}

TEST_F(PageTest, ExactlyTwoHundredMatchesNeedNoNarrowing)
{
    Build().Ignore(a1, a2);
    Build().LinkGroup(c1, c2);
    ManyPairs(200);
    Open();
    EXPECT_EQ(200, List().GetItemCount());
    EXPECT_EQ(Results(200, 200), page->GetResultsText());
    EXPECT_EQ(CString(""), page->GetMessageLine());
}

TEST_F(PageTest, TwoHundredAndOneMatchesAskToNarrowTheSearch)
{
    Build().Ignore(a1, a2);
    Build().LinkGroup(c1, c2);
    ManyPairs(201);
    Open();
    EXPECT_EQ(200, List().GetItemCount());
    EXPECT_EQ(Results(200, 201), page->GetResultsText());
    EXPECT_EQ(kNarrow, page->GetMessageLine());
}

TEST_F(PageTest, ARefusedCriterionKeepsTheOldRowsAndReportsNoCandidates)
{
    Open();
    List().GetSearchHeader()->GetItem(CDuplicatePatientList::eTYPE)->SetText("Foo");
    QTest::mouseClick(page->GetSearchButton(), Qt::LeftButton);
    EXPECT_EQ(2, List().GetItemCount());
    EXPECT_EQ(Results(2, 0), page->GetResultsText());
    EXPECT_EQ(kNone, page->GetMessageLine());
}

TEST_F(PageTest, SearchButtonAndQueryButtonRunTheSearch)
{
    Open();
    const std::string d1 = P(m_north, "0000901", "Doe", "Dan", "M", "19550505", "999999999");
    P(m_north, "0000902", "Doe", "Dan", "M", "19550505", "999999999");
    QTest::mouseClick(page->GetSearchButton(), Qt::LeftButton);
    EXPECT_EQ(3, List().GetItemCount());
    List().GetSearchHeader()->GetItem(CDuplicatePatientList::ePATIENT_NAME)->SetText("Doe");
    QTest::mouseClick(List().GetSearchHeader()->GetQueryButton(), Qt::LeftButton);
    ASSERT_EQ(1, List().GetItemCount());
    EXPECT_EQ(d1, List().GetRecord(0)->GetFirstPatient().GetPatientKey().c_str());
    EXPECT_EQ(Results(1, 1), page->GetResultsText());
}

TEST_F(PageTest, TabCyclesHeaderCellsSearchButtonAndBack)
{
    Open();
    DupPatientListHeaderCtrl* header = List().GetSearchHeader();
    page->GetSearchButton()->setFocus();
    QTest::keyClick(page->GetSearchButton(), Qt::Key_Tab);
    EXPECT_EQ(0, header->GetEditItem());
    for (int i = 1; i < 8; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(i, header->GetEditItem());
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(-1, header->GetEditItem());
    EXPECT_EQ(page->GetSearchButton(), QApplication::focusWidget());
    QTest::keyClick(page->GetSearchButton(), Qt::Key_Tab);
    EXPECT_EQ(0, header->GetEditItem());
}

TEST_F(PageTest, MenuOffersMergeAndIgnoreForOneOrganization)
{
    Open();
    user->DismissNextMenu();
    RightClick(Row(a1));
    ASSERT_EQ(1u, user->Menus().size());
    const ShownMenu& menu = user->Menus()[0];
    EXPECT_EQ((std::vector<CString>{"Merge Patients", "Link Patients", "Ignore Patients"}), menu.Texts());
    EXPECT_TRUE(menu.Find(kMerge)->IsEnabled());
    EXPECT_FALSE(menu.Find(kLink)->IsEnabled());
    EXPECT_TRUE(menu.Find(kIgnore)->IsEnabled());
}

TEST_F(PageTest, MenuOffersLinkAndIgnoreAcrossOrganizations)
{
    Open();
    user->DismissNextMenu();
    RightClick(Row(c1));
    ASSERT_EQ(1u, user->Menus().size());
    const ShownMenu& menu = user->Menus()[0];
    EXPECT_FALSE(menu.Find(kMerge)->IsEnabled());
    EXPECT_TRUE(menu.Find(kLink)->IsEnabled());
    EXPECT_TRUE(menu.Find(kIgnore)->IsEnabled());
}

TEST_F(PageTest, TwoSelectedRowsShowTheMenuAllDisabled)
{
    Open();
    List().SetItemSelected(0, true);
    List().SetItemSelected(1, true);
    user->DismissNextMenu();
    RightClick(1);
    ASSERT_EQ(1u, user->Menus().size());
    for (const MenuEntry& e : user->Menus()[0].entries)
        EXPECT_FALSE(e.IsEnabled()) << e.text.str();
}

TEST_F(PageTest, RightClickBelowTheRowsShowsNoMenu)
{
    Open();
    List().SetItemSelected(0, true);
    RightClickBelowRows();
    EXPECT_TRUE(user->Menus().empty());
}

TEST_F(PageTest, IgnoreRemovesThePairAfterAFreshSearch)
{
    Open();
    user->ChooseNextMenu(kIgnore);
    user->ExpectMessage(kIgnoreQuestion, IDYES);
    RightClick(Row(a1));
    EXPECT_EQ(MB_YESNO, user->Messages().at(0).type & MB_TYPEMASK);
    EXPECT_EQ(1, Count("SELECT COUNT(*) FROM ignored_pairs"));
    EXPECT_EQ(1, List().GetItemCount());
    EXPECT_EQ(-1, Row(a1));
    EXPECT_EQ(Results(1, 1), page->GetResultsText());
}

TEST_F(PageTest, AnsweringNoIgnoresNothing)
{
    Open();
    FaultyServices faulty;
    user->ChooseNextMenu(kIgnore);
    user->ExpectMessage(kIgnoreQuestion, IDNO);
    RightClick(Row(a1));
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM ignored_pairs"));
    EXPECT_EQ(0, faulty.faults.Count("IgnoreDuplicatePatients"));
    EXPECT_EQ(2, List().GetItemCount());
}

TEST_F(PageTest, AFailedIgnoreLeavesTheListAsItWas)
{
    Open();
    FaultyServices faulty;
    faulty.faults.FailOn("IgnoreDuplicatePatients", 5);
    user->ChooseNextMenu(kIgnore);
    user->ExpectMessage(kIgnoreQuestion, IDYES);
    RightClick(Row(a1));
    EXPECT_EQ((std::vector<std::string>{"IgnoreDuplicatePatients(" + a1 + "," + a2 + ")"}), faulty.faults.CallStrings());
    EXPECT_EQ(2, List().GetItemCount());
    EXPECT_EQ(1u, user->Messages().size());
}

TEST_F(PageTest, AThrowingIgnoreIsLoggedAndLeavesTheList)
{
    Open();
    FaultyServices faulty;
    faulty.faults.ThrowOn("IgnoreDuplicatePatients", "server gone");
    user->ChooseNextMenu(kIgnore);
    user->ExpectMessage(kIgnoreQuestion, IDYES);
    RightClick(Row(a1));
    EXPECT_EQ(2, List().GetItemCount());
    EXPECT_EQ(0, faulty.faults.Count("GetLinkAndMergePatients"));
    bool logged = false;
    for (const LogLine& l : log->Lines(LM_DEBUG))
        logged = logged || l.text.find("server gone") != std::string::npos;
    EXPECT_TRUE(logged);
}

TEST_F(PageTest, ConfirmedMergeMergesTheSecondIntoTheFirstAndSearchesAgain)
{
    Open();
    page->mergeAnswer = IDOK;
    page->mergeSource = a2;
    FaultyServices faulty;
    user->ChooseNextMenu(kMerge);
    RightClick(Row(a1));
    EXPECT_EQ((std::vector<std::pair<std::string, std::string>>{{a1, a2}}), page->mergeAsked);
    // (GetPatient is the stand-in dialog's own load.)
    EXPECT_EQ((std::vector<std::string>{"GetPatient", "MergePatients", "GetLinkAndMergePatients"}),
              faulty.faults.Operations());
    EXPECT_EQ(a2, faulty.faults.Calls().at(1).args.at(0));
    EXPECT_EQ(a1, faulty.faults.Calls().at(1).args.at(1));
    // The first patient's organization key travels in the reason argument.
    EXPECT_EQ(m_north, faulty.faults.Calls().at(1).args.at(2));
    EXPECT_EQ(1, List().GetItemCount());
    EXPECT_EQ(-1, Row(a1));
}

TEST_F(PageTest, CancelledMergeDoesNothing)
{
    Open();
    FaultyServices faulty;
    user->ChooseNextMenu(kMerge);
    RightClick(Row(a1));
    EXPECT_EQ(1u, page->mergeAsked.size());
    EXPECT_EQ((std::vector<std::string>{"GetPatient"}), faulty.faults.Operations());
    EXPECT_EQ(2, List().GetItemCount());
}

TEST_F(PageTest, AFailedMergeLeavesTheListAsItWas)
{
    Open();
    page->mergeAnswer = IDOK;
    page->mergeSource = a2;
    FaultyServices faulty;
    faulty.faults.FailOn("MergePatients", 3);
    user->ChooseNextMenu(kMerge);
    RightClick(Row(a1));
    EXPECT_EQ((std::vector<std::string>{"GetPatient", "MergePatients"}), faulty.faults.Operations());
    EXPECT_EQ(2, List().GetItemCount());
}

TEST_F(PageTest, ConfirmedLinkLinksAndSearchesAgain)
{
    Open();
    page->linkAnswer = IDOK;
    page->linkTarget = c2;
    page->linkTargetOrg = m_north;
    page->linkOther = c1;
    page->linkOtherOrg = m_south;
    user->ChooseNextMenu(kLink);
    RightClick(Row(c1));
    EXPECT_EQ((std::vector<std::pair<std::string, std::string>>{{c1, c2}}), page->linkAsked);
    EXPECT_EQ(1, List().GetItemCount());
    EXPECT_EQ(-1, Row(c1));
}

TEST_F(PageTest, CancelledLinkDoesNothing)
{
    Open();
    FaultyServices faulty;
    user->ChooseNextMenu(kLink);
    RightClick(Row(c1));
    EXPECT_EQ(1u, page->linkAsked.size());
    EXPECT_TRUE(faulty.faults.Calls().empty());
}

TEST_F(PageTest, Screenshots)
{
    ManyPairs(12);
    Open();
    List().GetSearchHeader()->GetItem(CDuplicatePatientList::eTYPE)->SetText("Merge,Link");
    QTest::mouseClick(page->GetSearchButton(), Qt::LeftButton);
    List().SetItemSelected(2, true);
    SaveScreenshot(window.get(), "duplicate_patient_page");
    user->DismissNextMenu();
    RightClick(1);
    ASSERT_EQ(1u, user->Menus().size());
    // The menu as the user sees it, beside the page.
    QMenu shown;
    for (const MenuEntry& e : user->Menus()[0].entries)
        shown.addAction(toQString(e.text))->setEnabled(e.IsEnabled());
    shown.popup(window->mapToGlobal(QPoint(200, 150)));
    QTest::qWait(50);
    QPixmap pageShot = window->grab();
    {
        QPainter p(&pageShot);
        p.drawPixmap(200, 150, shown.grab());
    }
    if (const char* dir = std::getenv("BRAVIK_SCREENSHOTS"))
        pageShot.save(QString::fromUtf8(dir) + "/duplicate_patient_page_menu.png");
    shown.close();
    EXPECT_FALSE(pageShot.isNull());
}

} // namespace
