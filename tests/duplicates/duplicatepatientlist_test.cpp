#include "dupfixture.h"

#include "duplicates/duplicatepatientlist.h"
#include "duplicates/duppatientlistheaderctrl.h"

#include "colorschema.h"
#include "combobox.h"
#include "daterangectrl.h"
#include "duplicatepatientrecord.h"
#include "faultyservices.h"
#include "headercheckcomboitem.h"
#include "headercomboitem.h"
#include "headeritemdobrange.h"
#include "listtextsubitem.h"
#include "searchheaderedititem.h"
#include "toolkitnotify.h"
#include "windowmessage.h"
#include "cmenu.h"

#include <QToolButton>

#include <QApplication>
#include <QFontMetrics>

namespace {

class Parent : public WithRegisteredMessages<QWidget>
{
public:
    std::vector<std::pair<UINT, int>> notifies; // code, subItem
    std::vector<UINT> commands;

protected:
    LRESULT OnRegisteredMessage(UINT msg, WPARAM, LPARAM lParam) override
    {
        if (NMHDR* hdr = NotifyHeaderFrom(msg, lParam)) {
            const auto* lv = reinterpret_cast<NMLISTVIEW*>(hdr);
            notifies.emplace_back(hdr->code, hdr->code == LVN_COLUMNCLICK ? lv->iSubItem : -9);
        }
        return 0;
    }
    bool event(QEvent* e) override
    {
        if (e->type() == CommandEvent::EventType()) {
            commands.push_back(static_cast<CommandEvent*>(e)->Id());
            return true;
        }
        return WithRegisteredMessages<QWidget>::event(e);
    }
};

class ListTest : public DupFixture
{
protected:
    void SetUp() override
    {
        DupFixture::SetUp();
        // Keys are handed out in creation order.
        a1 = P(m_north, "0000101", "Smith", "John", "M", "19700101", "111111111");
        a2 = P(m_north, "0000102", "Smyth", "John", "M", "19700101", "111111111");
        b1 = P(m_north, "0000201", "Brown", "Ann", "F", "19800505", "");
        b2 = P(m_north, "0000202", "BROWN", "ann", "F", "19800505", "");
        c1 = P(m_south, "0000301", "Green", "Eve", "F", "19900909", "222222222");
        c2 = P(m_north, "0000302", "Adams", "Eve", "F", "19500909", "222222222");
        parent.resize(1000, 500);
        list = new CDuplicatePatientList();
        list->Create(0, CRect(0, 0, 1000, 500), &parent, 4242);
        parent.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    }
    int Search()
    {
        int total = -1;
        list->DisplayItems(200, total);
        return total;
    }
    CString Cell(int row, int column) const { return list->GetSubItemAt(row, column)->GetText(); }
    int RowOfFirstKey(const std::string& key) const
    {
        for (int r = 0; r < list->GetItemCount(); ++r)
            if (key == list->GetRecord(r)->GetFirstPatient().GetPatientKey().c_str())
                return r;
        return -1;
    }
    std::vector<std::string> FirstNames() const
    {
        std::vector<std::string> out;
        for (int r = 0; r < list->GetItemCount(); ++r)
            out.push_back(list->GetRecord(r)->GetFirstPatient().GetPatientName().c_str());
        return out;
    }
    void SetCriterion(int column, const char* text) { list->GetSearchHeader()->GetItem(column)->SetText(text); }

    Parent parent;
    CDuplicatePatientList* list = nullptr;
    std::string a1, a2, b1, b2, c1, c2;
};

TEST_F(ListTest, HeaderCellsHaveTheirKindsTitlesAndLists)
{
    DupPatientListHeaderCtrl* header = list->GetSearchHeader();
    ASSERT_EQ(8, header->GetItemCount());
    ASSERT_EQ(8, list->GetColumnCount());
    const char* titles[] = {"Patient Name", "SSN", "MRN", "Organization", "Type", "Reason", "DOB", "Sex"};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(CString(titles[i]), header->GetItem(i)->GetTitle());
        EXPECT_EQ(CString(titles[i]), list->GetColumn(i)->GetTitle());
        EXPECT_EQ(18, list->GetColumn(i)->GetMinWidth());
    }
    EXPECT_NE(nullptr, dynamic_cast<SearchHeaderEditItem*>(header->GetItem(0)));
    EXPECT_NE(nullptr, dynamic_cast<SearchHeaderEditItem*>(header->GetItem(1)));
    EXPECT_NE(nullptr, dynamic_cast<SearchHeaderEditItem*>(header->GetItem(2)));
    auto* orgs = dynamic_cast<HeaderCheckComboItem*>(header->GetItem(3));
    auto* types = dynamic_cast<HeaderCheckComboItem*>(header->GetItem(4));
    auto* reasons = dynamic_cast<HeaderComboItem*>(header->GetItem(5));
    auto* dob = dynamic_cast<HeaderItemDOBRange*>(header->GetItem(6));
    auto* sex = dynamic_cast<HeaderCheckComboItem*>(header->GetItem(7));
    ASSERT_TRUE(orgs && types && reasons && dob && sex);
    auto texts = [](CComboBox& box) {
        std::vector<std::string> out;
        for (int i = 0; i < box.GetCount(); ++i)
            out.push_back(box.GetLBText(i).str());
        return out;
    };
    auto sorted = [](std::vector<std::string> v) {
        std::sort(v.begin(), v.end());
        return v;
    };
    EXPECT_EQ((std::vector<std::string>{"Enterprise", "FED", "NORTH", "SOUTH"}), sorted(texts(orgs->GetComboBox())));
    EXPECT_EQ((std::vector<std::string>{"Merge", "Link"}), texts(types->GetComboBox()));
    EXPECT_EQ((std::vector<std::string>{"Same SSN", "Same Name and Date of Birth", "Duplicate"}),
              texts(reasons->GetComboBox()));
    EXPECT_EQ((std::vector<std::string>{"M", "F", "U"}), texts(sex->GetComboBox()));
    EXPECT_TRUE(dob->GetDateRangeCtrl().IsEditEnabled());
    EXPECT_FALSE(dob->GetDateRangeCtrl().IsFullDeleteOnly());
}

TEST_F(ListTest, HeaderIsTwiceItsBandPlusFourWithHalfForTheTitles)
{
    DupPatientListHeaderCtrl* header = list->GetSearchHeader();
    const int expected = header->CalcHeaderHeight() * 2 + 4;
    EXPECT_EQ(expected, header->GetHeaderHeight());
    EXPECT_EQ(expected / 2, header->GetTitleButtonHeight());
    EXPECT_EQ(expected, header->height());
}

TEST_F(ListTest, RowsAreExactlyTwoLinesHigh)
{
    EXPECT_EQ(2 * QFontMetrics(list->font()).height(), list->GetItemHeight());
}

TEST_F(ListTest, EachRowShowsTheFirstPatientAboveTheSecond)
{
    EXPECT_EQ(3, Search());
    ASSERT_EQ(3, list->GetItemCount());
    const int r = RowOfFirstKey(a1);
    ASSERT_GE(r, 0);
    EXPECT_EQ(CString("Smith, John\nSmyth, John"), Cell(r, 0));
    EXPECT_EQ(CString("111-11-1111\n111-11-1111"), Cell(r, 1));
    EXPECT_EQ(CString("0000101\n0000102"), Cell(r, 2));
    EXPECT_EQ(CString("NORTH\nNORTH"), Cell(r, 3));
    EXPECT_EQ(CString("Merge"), Cell(r, 4));
    EXPECT_EQ(CString("Same SSN"), Cell(r, 5));
    EXPECT_EQ(CString("01/01/1970\n01/01/1970"), Cell(r, 6));
    EXPECT_EQ(CString("M\nM"), Cell(r, 7));
}

TEST_F(ListTest, PairsAcrossOrganizationsAreLinkCandidates)
{
    Search();
    const int r = RowOfFirstKey(c1);
    ASSERT_GE(r, 0);
    EXPECT_EQ(CString("Link"), Cell(r, 4));
    EXPECT_EQ(CString("SOUTH\nNORTH"), Cell(r, 3));
    EXPECT_EQ(CString("Link"), list->GetDupTypeStr(*list->GetRecord(r)));
}

TEST_F(ListTest, AnEmptyValueStillGivesATwoLineCell)
{
    Search();
    const int r = RowOfFirstKey(b1);
    ASSERT_GE(r, 0);
    EXPECT_EQ(CString("\n"), Cell(r, 1));
    auto* cell = static_cast<ListTextSubItem*>(list->GetSubItemAt(r, 1));
    EXPECT_EQ((std::vector<CString>{"", ""}), cell->GetLines());
}

TEST_F(ListTest, RowsAreSortedByTheFirstPatientsNameAtFirst)
{
    Search();
    EXPECT_EQ((std::vector<std::string>{"Brown, Ann", "Green, Eve", "Smith, John"}), FirstNames());
    EXPECT_EQ(CDuplicatePatientList::ePATIENT_NAME, list->GetSortHelper().GetCurrentSort());
    EXPECT_TRUE(list->GetSortHelper().IsAscending());
}

TEST_F(ListTest, SortingByDobUsesDatesOfTheFirstPatientOnly)
{
    // First patients: Brown 05/05/1980, Green 09/09/1990, Smith 01/01/1970.
    // As text "01/01/1970" < "05/05/1980" < "09/09/1990" too, so add a pair
    // whose first date sorts differently as text; Adams (second of Green's pair)
    // is older than everyone and must not matter.
    P(m_south, "0000401", "Young", "Yan", "M", "20011231", "333333333");
    P(m_north, "0000402", "Young", "Yan", "M", "19000101", "333333333");
    Search();
    QTest::mouseClick(list->GetSearchHeader(), Qt::LeftButton, {},
                      list->GetSearchHeader()->GetTitleRect(CDuplicatePatientList::eDOB).toQRect().center());
    EXPECT_EQ((std::vector<std::string>{"Smith, John", "Brown, Ann", "Green, Eve", "Young, Yan"}), FirstNames());
    // The title click reached the parent as an ordinary column click.
    EXPECT_EQ((std::vector<std::pair<UINT, int>>{{LVN_COLUMNCLICK, CDuplicatePatientList::eDOB}}), parent.notifies);
    QTest::mouseClick(list->GetSearchHeader(), Qt::LeftButton, {},
                      list->GetSearchHeader()->GetTitleRect(CDuplicatePatientList::eDOB).toQRect().center());
    EXPECT_EQ((std::vector<std::string>{"Young, Yan", "Green, Eve", "Brown, Ann", "Smith, John"}), FirstNames());
}

TEST_F(ListTest, DobSortIsByDateNotByText)
{
    Locale::SetDatePattern("dd.MM.yyyy");
    P(m_north, "0000501", "Late", "Lu", "M", "19991201", "444444444");
    P(m_north, "0000502", "Late", "Lu", "M", "19991201", "444444444");
    Search();
    list->GetSortHelper().SetCurrentSort(CDuplicatePatientList::eDOB, true);
    list->Sort();
    // As text "01.01.1970" < "01.12.1999" < "05.05.1980" < "09.09.1990".
    EXPECT_EQ((std::vector<std::string>{"Smith, John", "Brown, Ann", "Green, Eve", "Late, Lu"}), FirstNames());
    Locale::Reset();
}

TEST_F(ListTest, QueryButtonSendsThePagesSearchCommand)
{
    QTest::mouseClick(list->GetSearchHeader()->GetQueryButton(), Qt::LeftButton);
    ASSERT_EQ(1u, parent.commands.size());
    EXPECT_EQ(20001u, parent.commands[0]);
}

TEST_F(ListTest, ARefusedCriterionKeepsTheRowsAndRecords)
{
    ASSERT_EQ(3, Search());
    const auto records = list->GetRecords();
    SetCriterion(CDuplicatePatientList::eTYPE, "Foo");
    EXPECT_EQ(0, Search());
    EXPECT_EQ(3, list->GetItemCount());
    EXPECT_EQ(records, list->GetRecords());
}

TEST_F(ListTest, ZeroResultsClearThePreviousRows)
{
    ASSERT_EQ(3, Search());
    SetCriterion(CDuplicatePatientList::ePATIENT_NAME, "Nobody");
    EXPECT_EQ(0, Search());
    EXPECT_EQ(0, list->GetItemCount());
    EXPECT_TRUE(list->GetRecords().empty());
}

TEST_F(ListTest, CriteriaTypedInTheHeaderReachTheQuery)
{
    ASSERT_TRUE(list->GetSearchHeader()->BeginEditItem(CDuplicatePatientList::ePATIENT_NAME));
    QTest::keyClicks(QApplication::focusWidget(), "sm");
    // Still being edited: the search commits it.
    EXPECT_EQ(1, Search());
    EXPECT_EQ((std::vector<std::string>{"Smith, John"}), FirstNames());
    EXPECT_EQ(-1, list->GetSearchHeader()->GetEditItem());
}

TEST_F(ListTest, AThrowingServiceIsLoggedAndShowsNoNewRows)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("GetLinkAndMergePatients", "connection lost");
    // The total keeps what it held.
    int total = 7;
    list->DisplayItems(200, total);
    EXPECT_EQ(7, total);
    EXPECT_EQ(0, list->GetItemCount());
    const auto lines = LogLines(LM_DEBUG);
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(std::make_tuple(std::string("duplicatepatientlist"), 305,
                              std::string("Function: CDuplicatePatientList::RetrieveDuplicatePatients, Line: 305: "
                                          "connection lost\n")),
              lines[0]);
}

TEST_F(ListTest, AFailingServiceShowsNothing)
{
    FaultyServices faulty;
    faulty.faults.FailOn("GetLinkAndMergePatients", 1);
    EXPECT_EQ(0, Search());
    EXPECT_EQ(0, list->GetItemCount());
    EXPECT_EQ(1, faulty.faults.Count("GetLinkAndMergePatients"));
}

TEST_F(ListTest, RowColoursAlternateAndSelectionStandsOut)
{
    Search();
    list->SetFullRowSelection(true);
    list->SetItemSelected(2, true);
    const QImage shot = list->viewport()->grab().toImage();
    const auto colourOf = [&](int row) {
        const CRect r = list->GetItemRect(row);
        return shot.pixelColor(list->GetColumnWidth(0) - 3, r.top - list->viewport()->y() + 1);
    };
    const ColorSchema& colors = ColorSchema::Instance();
    EXPECT_EQ(toQColor(colors.GetListViewLightRowBkColor()), colourOf(0));
    EXPECT_EQ(toQColor(colors.GetListViewDarkRowBkColor()), colourOf(1));
    EXPECT_EQ(toQColor(colors.GetTextActiveSelectionBkColor()), colourOf(2));
    EXPECT_NE(colors.GetListViewLightRowBkColor(), colors.GetListViewDarkRowBkColor());
    // Without full-row selection the selected row keeps its stripe.
    list->SetFullRowSelection(false);
    const QImage plain = list->viewport()->grab().toImage();
    const CRect r2 = list->GetItemRect(2);
    EXPECT_EQ(toQColor(colors.GetListViewLightRowBkColor()),
              plain.pixelColor(list->GetColumnWidth(0) - 3, r2.top - list->viewport()->y() + 1));
}

TEST_F(ListTest, DestroyingTheItemsEmptiesRowsAndRecords)
{
    Search();
    list->DestoryAllItems(true);
    EXPECT_EQ(0, list->GetItemCount());
    EXPECT_TRUE(list->GetRecords().empty());
}

} // namespace
