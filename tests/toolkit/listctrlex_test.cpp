#include "notifyrecorder.h"

#include "colorschema.h"
#include "listctrlex.h"
#include "listimagesubitem.h"
#include "listradiosubitem.h"
#include "listtextsubitem.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QPainter>
#include <QTest>

namespace {

std::vector<ListSubItemPtr> TextRow(std::initializer_list<const char*> texts)
{
    std::vector<ListSubItemPtr> cells;
    int c = 0;
    for (const char* t : texts)
        cells.push_back(std::make_unique<ListTextSubItem>(c++, t));
    return cells;
}

class ListCtrlExTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        list = new ListCtrlEx();
        list->Create(0, CRect(0, 0, 400, 300), &parent, 1001);
        list->AddColumn(Column("A", 0.5, 20));
        list->AddColumn(Column("B", 0.25, 20));
        list->AddColumn(Column("C", 0.25, 20));
        parent.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    }
    QPoint CellCenter(int row, int column) const
    {
        return list->visualRect(list->model()->index(row, column)).center();
    }
    NotifyRecorder parent;
    ListCtrlEx* list = nullptr;
};

TEST_F(ListCtrlExTest, InsertsRowsAtTheEndOrAtAnIndexAndKeepsItemData)
{
    EXPECT_EQ(0, list->InsertItem(TextRow({"a0", "b0", "c0"}), 10));
    EXPECT_EQ(1, list->InsertItem(TextRow({"a1", "b1", "c1"}), 11));
    EXPECT_EQ(0, list->InsertItemAt(0, TextRow({"first", "x", "y"}), 12));
    EXPECT_EQ(3, list->InsertItemAt(99, TextRow({"last", "x", "y"}), 13));
    ASSERT_EQ(4, list->GetItemCount());
    EXPECT_EQ(CString("first"), list->GetSubItemAt(0, 0)->GetText());
    EXPECT_EQ(CString("a0"), list->GetSubItemAt(1, 0)->GetText());
    EXPECT_EQ(CString("c1"), list->GetSubItemAt(2, 2)->GetText());
    EXPECT_EQ(CString("last"), list->GetSubItemAt(3, 0)->GetText());
    EXPECT_EQ(12u, list->GetItemData(0));
    EXPECT_EQ(13u, list->GetItemData(3));
    EXPECT_EQ(nullptr, list->GetSubItemAt(4, 0));
    EXPECT_EQ(nullptr, list->GetSubItemAt(0, 3));
    EXPECT_TRUE(list->SetItemData(1, 99));
    EXPECT_EQ(99u, list->GetItemData(1));
    // The model shows the same texts (what accessibility reads).
    EXPECT_EQ(QString("b0"), list->model()->index(1, 1).data().toString());
}

TEST_F(ListCtrlExTest, APlainListShowsItsColumnTitlesAboveTheFirstRow)
{
    list->InsertItem(TextRow({"a", "b", "c"}));
    QHeaderView* titles = list->horizontalHeader();
    ASSERT_FALSE(titles->isHidden());
    EXPECT_EQ(QString("A"), list->model()->headerData(0, Qt::Horizontal).toString());
    EXPECT_GT(titles->height(), 0);
    // The rows start below the titles, not behind them.
    EXPECT_GE(list->viewport()->geometry().top(), titles->geometry().bottom());
    titles->hide();
    list->UpdateHeaderLayout();
    EXPECT_LE(list->viewport()->geometry().top(), list->frameWidth());
}

TEST_F(ListCtrlExTest, CellsArePlacedByTheirOwnColumnAndMissingOnesStayEmpty)
{
    std::vector<ListSubItemPtr> cells;
    cells.push_back(std::make_unique<ListTextSubItem>(2, "third"));
    cells.push_back(std::make_unique<ListTextSubItem>(0, "first"));
    list->InsertItem(std::move(cells));
    EXPECT_EQ(CString("first"), list->GetSubItemAt(0, 0)->GetText());
    EXPECT_EQ(nullptr, list->GetSubItemAt(0, 1));
    EXPECT_EQ(CString("third"), list->GetSubItemAt(0, 2)->GetText());
}

TEST_F(ListCtrlExTest, DeletesOneRowOrAll)
{
    list->InsertItem(TextRow({"a0"}));
    list->InsertItem(TextRow({"a1"}));
    list->InsertItem(TextRow({"a2"}));
    EXPECT_TRUE(list->DeleteItem(1));
    EXPECT_FALSE(list->DeleteItem(5));
    ASSERT_EQ(2, list->GetItemCount());
    EXPECT_EQ(CString("a2"), list->GetSubItemAt(1, 0)->GetText());
    list->DeleteAllItems();
    EXPECT_EQ(0, list->GetItemCount());
}

TEST_F(ListCtrlExTest, TextCellSplitsIntoLinesAtLineFeeds)
{
    ListTextSubItem two(0, "Smith, John\nSmyth, John");
    EXPECT_EQ((std::vector<CString>{"Smith, John", "Smyth, John"}), two.GetLines());
    ListTextSubItem emptyFirst(0, "\nSecond");
    EXPECT_EQ((std::vector<CString>{"", "Second"}), emptyFirst.GetLines());
    ListTextSubItem emptySecond(0, "First\n");
    EXPECT_EQ((std::vector<CString>{"First", ""}), emptySecond.GetLines());
    ListTextSubItem one(0, "Merge");
    EXPECT_EQ((std::vector<CString>{"Merge"}), one.GetLines());
}

TEST_F(ListCtrlExTest, ColumnWidthsAreFractionsOfTheListWidthWithAMinimum)
{
    const int w = list->viewport()->width();
    EXPECT_EQ(w / 2, list->GetColumnWidth(0));
    EXPECT_EQ(w, list->GetColumnWidth(0) + list->GetColumnWidth(1) + list->GetColumnWidth(2));
    list->resize(800, 300);
    const int w2 = list->viewport()->width();
    EXPECT_EQ(w2 / 2, list->GetColumnWidth(0));
    // Narrower than the minimum: the minimum holds.
    list->resize(60, 300);
    EXPECT_EQ(20, list->GetColumnWidth(1));
    EXPECT_EQ(20, list->GetColumnWidth(2));
}

TEST_F(ListCtrlExTest, SettingAColumnWidthKeepsItsShareAfterAResize)
{
    const int w = list->viewport()->width();
    list->SetColumnWidth(1, w / 5);
    EXPECT_EQ(w / 5, list->GetColumnWidth(1));
    list->resize(list->width() * 2, 300);
    EXPECT_NEAR(list->viewport()->width() / 5, list->GetColumnWidth(1), 1);
}

TEST_F(ListCtrlExTest, ItemHeightAppliesToEveryRow)
{
    list->InsertItem(TextRow({"a"}));
    list->SetItemHeight(37);
    list->InsertItem(TextRow({"b"}));
    EXPECT_EQ(37, list->GetItemHeight());
    EXPECT_EQ(37, list->rowHeight(0));
    EXPECT_EQ(37, list->rowHeight(1));
    EXPECT_EQ(37, list->GetItemRect(1).Height());
}

TEST_F(ListCtrlExTest, RadioCellsOfARowAreExclusiveOnClick)
{
    std::vector<ListSubItemPtr> cells;
    cells.push_back(std::make_unique<ListTextSubItem>(0, "Name"));
    cells.push_back(std::make_unique<ListRadioSubItem>(1, true, "Left"));
    cells.push_back(std::make_unique<ListRadioSubItem>(2, false, "Right"));
    list->InsertItem(std::move(cells));
    list->InsertItem(TextRow({"other"}));
    auto* left = static_cast<ListRadioSubItem*>(list->GetSubItemAt(0, 1));
    auto* right = static_cast<ListRadioSubItem*>(list->GetSubItemAt(0, 2));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellCenter(0, 2));
    EXPECT_FALSE(left->GetCheck());
    EXPECT_TRUE(right->GetCheck());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellCenter(0, 1));
    EXPECT_TRUE(left->GetCheck());
    EXPECT_FALSE(right->GetCheck());
    // A disabled mark cannot be chosen.
    right->SetEnabled(false);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellCenter(0, 2));
    EXPECT_TRUE(left->GetCheck());
    EXPECT_FALSE(right->GetCheck());
}

class ExpandList : public ListCtrlEx
{
public:
    std::vector<std::pair<int, bool>> toggled;
    void OnExpandToggled(int row, int, bool expanded) override { toggled.emplace_back(row, expanded); }
};

TEST(ListCtrlExExpand, AClickOnTheExpandMarkTogglesIt)
{
    NotifyRecorder parent;
    auto* list = new ExpandList();
    list->Create(0, CRect(0, 0, 400, 300), &parent, 7);
    list->AddColumn(Column("A", 1.0));
    auto cell = std::make_unique<ListTextSubItem>(0, "Linked records");
    cell->SetExpandable(true);
    std::vector<ListSubItemPtr> cells;
    cells.push_back(std::move(cell));
    list->InsertItem(std::move(cells));
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    const CRect rc = CRect::fromQRect(list->visualRect(list->model()->index(0, 0)));
    const CRect mark = list->GetSubItemAt(0, 0)->GetExpandMarkRect(rc);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, mark.toQRect().center());
    EXPECT_TRUE(list->GetSubItemAt(0, 0)->IsExpanded());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, mark.toQRect().center());
    EXPECT_FALSE(list->GetSubItemAt(0, 0)->IsExpanded());
    // A click elsewhere in the cell leaves it.
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(rc.right - 10, rc.top + 5));
    EXPECT_FALSE(list->GetSubItemAt(0, 0)->IsExpanded());
    EXPECT_EQ((std::vector<std::pair<int, bool>>{{0, true}, {0, false}}), list->toggled);
}

TEST_F(ListCtrlExTest, ClicksAreReportedToTheParentWithRowAndColumn)
{
    list->InsertItem(TextRow({"a0", "b0", "c0"}));
    list->InsertItem(TextRow({"a1", "b1", "c1"}));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellCenter(1, 2));
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, CellCenter(0, 1));
    // Below the rows.
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, QPoint(10, list->viewport()->height() - 5));
    ASSERT_EQ(1u, parent.NotifiesOf(NM_CLICK).size());
    EXPECT_EQ(1, parent.NotifiesOf(NM_CLICK)[0].item);
    EXPECT_EQ(2, parent.NotifiesOf(NM_CLICK)[0].subItem);
    EXPECT_EQ(1001u, parent.NotifiesOf(NM_CLICK)[0].idFrom);
    const auto right = parent.NotifiesOf(NM_RCLICK);
    ASSERT_EQ(2u, right.size());
    EXPECT_EQ(0, right[0].item);
    EXPECT_EQ(-1, right[1].item);
}

TEST_F(ListCtrlExTest, RightClickSelectsAnUnselectedRowAndKeepsASelectionItHits)
{
    for (int i = 0; i < 3; ++i)
        list->InsertItem(TextRow({"a", "b", "c"}));
    list->SetItemSelected(0, true);
    list->SetItemSelected(2, true);
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, CellCenter(2, 0));
    EXPECT_EQ((std::vector<int>{0, 2}), list->GetSelectedItems());
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, CellCenter(1, 0));
    EXPECT_EQ((std::vector<int>{1}), list->GetSelectedItems());
    EXPECT_EQ(1, list->GetSelectedCount());
    EXPECT_EQ(1, list->GetFirstSelectedItem());
    // Empty space leaves the selection alone.
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, QPoint(10, list->viewport()->height() - 5));
    EXPECT_EQ((std::vector<int>{1}), list->GetSelectedItems());
}

TEST_F(ListCtrlExTest, HitTestFindsTheRowUnderAPointOrNone)
{
    list->InsertItem(TextRow({"a"}));
    list->InsertItem(TextRow({"b"}));
    const CRect second = list->GetItemRect(1);
    EXPECT_EQ(1, list->HitTest(CPoint(second.left + 5, second.top + 2)));
    EXPECT_EQ(0, list->HitTest(list->GetItemRect(0).CenterPoint()));
    EXPECT_EQ(-1, list->HitTest(CPoint(5, list->height() - 8)));
}

class ColourList : public ListCtrlEx
{
public:
    struct Call
    {
        UINT row;
        DWORD state;
    };
    std::vector<Call> calls;
    void SetItemTextAndBkgndColor(QPainter& dc, const CRect& rect, DWORD state, UINT row) override
    {
        calls.push_back({row, state});
        dc.fillRect(rect.toQRect(), (state & LVIS_SELECTED) ? Qt::red : (row % 2 ? Qt::green : Qt::blue));
        dc.setPen(Qt::black);
    }
};

TEST(ListCtrlExColours, TheListAsksForEachCellsColoursWithTheRowAndItsState)
{
    NotifyRecorder parent;
    auto* list = new ColourList();
    list->Create(0, CRect(0, 0, 300, 200), &parent, 5);
    list->AddColumn(Column("A", 0.5));
    list->AddColumn(Column("B", 0.5));
    for (int i = 0; i < 3; ++i)
        list->InsertItem(TextRow({"", ""}));
    list->SetItemSelected(1, true);
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    const QImage shot = list->viewport()->grab().toImage();
    bool sawSelected = false;
    for (const auto& c : list->calls) {
        EXPECT_EQ(c.row == 1, (c.state & LVIS_SELECTED) != 0) << "row " << c.row;
        sawSelected = sawSelected || c.row == 1;
    }
    EXPECT_TRUE(sawSelected);
    // What the hook painted is what the user sees.
    const auto at = [&](int row) { return shot.pixelColor(list->GetItemRect(row).left + 40, list->GetItemRect(row).top + 2 - list->viewport()->y()); };
    EXPECT_EQ(QColor(Qt::blue), at(0));
    EXPECT_EQ(QColor(Qt::red), at(1));
    EXPECT_EQ(QColor(Qt::blue), at(2));
}

TEST_F(ListCtrlExTest, BaseColoursUseTheSchemeForSelectedRows)
{
    list->InsertItem(TextRow({"a", "b", "c"}));
    list->InsertItem(TextRow({"a", "b", "c"}));
    list->SetItemSelected(1, true);
    const QImage shot = list->viewport()->grab().toImage();
    const int y0 = list->GetItemRect(0).top - list->viewport()->y() + 1;
    const int y1 = list->GetItemRect(1).top - list->viewport()->y() + 1;
    EXPECT_EQ(toQColor(ColorSchema::Instance().GetListCtrlBkColor()), shot.pixelColor(list->GetColumnWidth(0) - 2, y0));
    EXPECT_EQ(toQColor(ColorSchema::Instance().GetTextActiveSelectionBkColor()),
              shot.pixelColor(list->GetColumnWidth(0) - 2, y1));
}

TEST(ListImageSubItemTest, KeepsItsImageAndSortText)
{
    QPixmap px(8, 8);
    px.fill(Qt::red);
    ListImageSubItem item(3, px, "red");
    EXPECT_EQ(3, item.GetColumn());
    EXPECT_EQ(CString("red"), item.GetText());
    EXPECT_EQ(QSize(8, 8), item.GetImage().size());
    QImage canvas(20, 20, QImage::Format_ARGB32);
    canvas.fill(Qt::white);
    {
        QPainter p(&canvas);
        item.Draw(p, CRect(0, 0, 20, 20));
    }
    EXPECT_EQ(QColor(Qt::red), canvas.pixelColor(10, 10));
    EXPECT_EQ(QColor(Qt::white), canvas.pixelColor(1, 1));
}

} // namespace
