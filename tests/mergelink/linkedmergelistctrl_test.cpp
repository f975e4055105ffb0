// The linked organizations list on its own: expand and collapse with the four
// detail rows, the click log line, tooltips and label alignment.

#include "mergelinkfixture.h"

#include "mergelink/linkedmergelistctrl.h"

#include "drawmaster.h"
#include "listradiosubitem.h"
#include "listtextsubitem.h"
#include "localefunctions.h"

#include <QFontMetrics>
#include <QTest>
#include <QWidget>

namespace {

class LinkedListTest : public MergeLinkFixture
{
protected:
    void SetUp() override
    {
        MergeLinkFixture::SetUp();
        a = lists.AddFirst(Record("PK1", "M100", "NORTH"));
        s1 = lists.AddFirst(Record("L1S", "S1", "SOUTH", "Smith", "Ann"));
        b = lists.AddSecond(Record("PK2", "M200", "NORTH"));
        s2 = lists.AddSecond(Record("L2S", "S2", "SOUTH", "Smyth", "Anne"));
        lists.AddSecond(Record("L2W", "W2", "WESTERN REGION"));
        s1->SetMiddleName("B");
        s1->SetSexCode("F");
        s1->SetDOB(BDate(1980, 5, 6));
        s1->SetAddressLine1("1 Main St");
        s1->SetAddressLine2("Apt 2");
        s1->SetCity("Springfield");
        s1->SetStateCode("IL");
        s1->SetCountryCode("US");
        s1->SetPostalCode("62701");
        // s2: no sex, no birth date, a city only.
        s2->SetCity("Shelbyville");

        window = std::make_unique<QWidget>();
        window->resize(700, 300);
        list = new LinkedMergeListCtrl(lists.first, lists.second);
        list->Create(0, CRect(0, 0, 700, 300), window.get(), 1);
        list->InsertColumn(0, Column("Linked Organization", 0.25));
        list->InsertColumn(1, Column("Linked Patient Record 1", 0.3));
        list->InsertColumn(2, Column("Linked Patient Record 2", 0.3));
        AddRow("MRN(SOUTH):", "S1", "S2", true);
        AddRow("MRN(WESTERN REGION):", "", "W2", false);
        list->RecalcLayout();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void TearDown() override
    {
        window.reset();
        MergeLinkFixture::TearDown();
    }
    void AddRow(const CString& label, const CString& v1, const CString& v2, bool radios)
    {
        std::vector<ListSubItemPtr> cells;
        auto org = std::make_unique<LinkedOrganizationSubItem>(0, label);
        org->SetDrawFormat(6);
        cells.push_back(std::move(org));
        if (radios) {
            cells.push_back(std::make_unique<ListRadioSubItem>(1, false, v1));
            cells.push_back(std::make_unique<ListRadioSubItem>(2, false, v2));
        } else {
            cells.push_back(std::make_unique<ListTextSubItem>(1, v1));
            cells.push_back(std::make_unique<ListTextSubItem>(2, v2));
        }
        list->InsertItem(std::move(cells));
    }
    std::vector<CString> RowTexts(int row) const
    {
        return {MergeForm::Text(*list, row, 0), MergeForm::Text(*list, row, 1), MergeForm::Text(*list, row, 2)};
    }
    CPoint CellCenter(int row, int column) const
    {
        const QRect r = list->visualRect(list->model()->index(row, column));
        return CPoint::fromQPoint(list->viewport()->mapTo(list, r.center()));
    }

    RecordLists lists;
    PatientDetailRecord *a = nullptr, *b = nullptr, *s1 = nullptr, *s2 = nullptr;
    std::unique_ptr<QWidget> window;
    LinkedMergeListCtrl* list = nullptr;
};

TEST_F(LinkedListTest, ExpandAddsFourDetailRowsAndCollapseTakesExactlyThoseAway)
{
    log->Clear();
    MergeForm::ClickCell(*list, 0, 0);
    ASSERT_EQ(6, list->GetItemCount());
    EXPECT_TRUE(list->GetSubItemAt(0, 0)->IsExpanded());
    const CString dob = Locale::FormatDate(BDate(1980, 5, 6), Locale::eShort);
    EXPECT_EQ((std::vector<CString>{"", "Smith, Ann B", "Smyth, Anne"}), RowTexts(1));
    EXPECT_EQ((std::vector<CString>{"", "F," + dob, "N/A"}), RowTexts(2));
    EXPECT_EQ((std::vector<CString>{"", "1 Main St Apt 2", ""}), RowTexts(3));
    // A comma for the empty county all the same, and a blank before the postal code.
    EXPECT_EQ((std::vector<CString>{"", "Springfield,IL,,US 62701", "Shelbyville,, "}), RowTexts(4));
    EXPECT_EQ(CString("MRN(WESTERN REGION):"), MergeForm::Text(*list, 5, 0));
    for (int r = 1; r <= 4; ++r) {
        EXPECT_FALSE(MergeForm::IsRadio(*list, r, 1));
        ASSERT_NE(nullptr, list->GetSubItemAt(r, 1)->GetFont());
        EXPECT_EQ(DrawMaster::GetNormalFont(), *list->GetSubItemAt(r, 1)->GetFont());
    }
    EXPECT_TRUE(log->Contains(LM_DEBUG, "LinkedMergeListCtrl::OnItemClick Item:0 SubItem:0)\n"));

    MergeForm::ClickCell(*list, 0, 0);
    EXPECT_EQ(2, list->GetItemCount());
    EXPECT_FALSE(list->GetSubItemAt(0, 0)->IsExpanded());
    EXPECT_EQ(CString("MRN(WESTERN REGION):"), MergeForm::Text(*list, 1, 0));

    // Twice over: still exactly four rows each way.
    MergeForm::ClickCell(*list, 0, 0);
    MergeForm::ClickCell(*list, 0, 0);
    MergeForm::ClickCell(*list, 0, 0);
    EXPECT_EQ(6, list->GetItemCount());
    MergeForm::ClickCell(*list, 0, 0);
    EXPECT_EQ(2, list->GetItemCount());
}

TEST_F(LinkedListTest, MissingRecordGivesAnEmptySide)
{
    EXPECT_TRUE(list->OnItemClick(1, 0));
    ASSERT_EQ(6, list->GetItemCount());
    // Record 1 has nothing in WESTERN REGION; record 2 has no sex and no birth date.
    EXPECT_EQ((std::vector<CString>{"", "", "Doe, John"}), RowTexts(2));
    EXPECT_EQ((std::vector<CString>{"", "", "N/A"}), RowTexts(3));
    EXPECT_EQ((std::vector<CString>{"", "", ""}), RowTexts(4));
    EXPECT_EQ((std::vector<CString>{"", "", ""}), RowTexts(5));
}

TEST_F(LinkedListTest, ClicksOutsideALabelAreNotHandledHere)
{
    ASSERT_TRUE(list->OnItemClick(0, 0));
    log->Clear();
    // A detail row's empty column 0 is no label.
    EXPECT_FALSE(list->OnItemClick(1, 0));
    EXPECT_FALSE(list->OnItemClick(0, 1));
    EXPECT_EQ(6, list->GetItemCount());
    EXPECT_TRUE(log->Contains(LM_DEBUG, "LinkedMergeListCtrl::OnItemClick Item:1 SubItem:0)\n"));
    EXPECT_TRUE(log->Contains(LM_DEBUG, "LinkedMergeListCtrl::OnItemClick Item:0 SubItem:1)\n"));
    // A click in a value column reaches the toolkit, which checks the radio.
    MergeForm::ClickCell(*list, 0, 2);
    EXPECT_TRUE(MergeForm::Checked(*list, 0, 2));
    EXPECT_EQ(6, list->GetItemCount());
}

TEST_F(LinkedListTest, TooltipShowsTheHoveredCellsText)
{
    EXPECT_FALSE(list->IsToolTipActive());
    EXPECT_EQ(400, list->GetToolTipMaxWidth());
    list->OnMouseMove(CellCenter(1, 0));
    EXPECT_TRUE(list->IsToolTipActive());
    EXPECT_EQ(CString("MRN(WESTERN REGION):"), list->GetToolTipText());
    list->OnMouseMove(CellCenter(1, 2));
    EXPECT_EQ(CString("W2"), list->GetToolTipText());
    // An empty text cell: no tip.
    list->OnMouseMove(CellCenter(1, 1));
    EXPECT_FALSE(list->IsToolTipActive());
    // Radio cells carry no tip.
    list->OnMouseMove(CellCenter(0, 1));
    EXPECT_FALSE(list->IsToolTipActive());
    // Through real mouse moves.
    QTest::mouseMove(list->viewport(), list->visualRect(list->model()->index(0, 0)).center());
    EXPECT_TRUE(list->IsToolTipActive());
    EXPECT_EQ(CString("MRN(SOUTH):"), list->GetToolTipText());
}

TEST_F(LinkedListTest, LabelBoxesTakeTheWidestLabelsWidth)
{
    const auto* first = dynamic_cast<LinkedOrganizationSubItem*>(list->GetSubItemAt(0, 0));
    const auto* second = dynamic_cast<LinkedOrganizationSubItem*>(list->GetSubItemAt(1, 0));
    ASSERT_TRUE(first && second);
    const QFontMetrics metrics(DrawMaster::GetNormalFont());
    EXPECT_EQ(first->GetLabelWidth(), second->GetLabelWidth());
    EXPECT_GE(first->GetLabelWidth(), metrics.horizontalAdvance(QStringLiteral("MRN(WESTERN REGION):")));
    EXPECT_LT(first->GetLabelWidth(), metrics.horizontalAdvance(QStringLiteral("MRN(WESTERN REGION):")) + 16);
}

TEST_F(LinkedListTest, DetailTextsOfARecord)
{
    PatientDetailRecord r;
    r.SetName(BPersonName("Doe", "Jane"));
    r.SetSexCode("F");
    r.SetCity("Town");
    r.SetPostalCode("12345");
    const auto texts = LinkedMergeListCtrl::DetailTexts(&r);
    EXPECT_EQ((std::vector<CString>{"Doe, Jane", "F,N/A", "", "Town,, 12345"}), texts);
    EXPECT_EQ((std::vector<CString>{"", "", "", ""}), LinkedMergeListCtrl::DetailTexts(nullptr));
}

} // namespace
