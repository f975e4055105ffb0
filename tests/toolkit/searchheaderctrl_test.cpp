#include "notifyrecorder.h"

#include "colorschema.h"
#include "combobox.h"
#include "daterangectrl.h"
#include "headercheckcomboitem.h"
#include "headercomboitem.h"
#include "headeritemdobrange.h"
#include "listctrlex.h"
#include "listsorthelper.h"
#include "listtextsubitem.h"
#include "searchheaderctrl.h"
#include "searchheaderedititem.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

namespace {

class SearchHeaderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        list = new ListCtrlEx();
        list->Create(0, CRect(0, 0, 600, 300), &parent, 300);
        header = new SearchHeaderCtrl();
        header->Create(0, CRect(), list, 301);
        list->ApplyHeader(header);
        const int band = header->CalcHeaderHeight();
        header->SetHeights(band * 2 + 4, band * 2 + 4, (band * 2 + 4) / 2);
        const char* titles[] = {"Name", "Kind", "Type", "DOB"};
        header->AddItem(new SearchHeaderEditItem(titles[0]));
        combo = new HeaderComboItem(titles[1]);
        header->AddItem(combo);
        check = new HeaderCheckComboItem(titles[2]);
        header->AddItem(check);
        dob = new HeaderItemDOBRange(titles[3]);
        header->AddItem(dob);
        for (const char* t : titles)
            list->AddColumn(Column(t, 0.25, 18));
        combo->GetComboBox().AddString("Duplicate");
        combo->GetComboBox().AddString("Same SSN");
        check->GetComboBox().AddString("Merge");
        check->GetComboBox().AddString("Link");
        parent.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
        parent.activateWindow();
    }
    QWidget* Focus() const { return QApplication::focusWidget(); }
    void TypeInCell(int index, const char* text)
    {
        ASSERT_TRUE(header->BeginEditItem(index));
        QTest::keyClicks(Focus(), text);
    }
    NotifyRecorder parent;
    ListCtrlEx* list = nullptr;
    SearchHeaderCtrl* header = nullptr;
    HeaderComboItem* combo = nullptr;
    HeaderCheckComboItem* check = nullptr;
    HeaderItemDOBRange* dob = nullptr;
};

TEST_F(SearchHeaderTest, QueryParamsHoldEveryTitleWithItsCommittedText)
{
    TypeInCell(0, "Smi");
    // Not committed yet.
    EXPECT_EQ(CString(""), header->GetQueryParams()["Name"]);
    header->EndEditItem();
    TypeInCell(3, "01/01/1970");
    header->EndEditItem();
    const std::map<CString, CString> params = header->GetQueryParams();
    EXPECT_EQ((std::map<CString, CString>{{"DOB", "01/01/1970"}, {"Kind", ""}, {"Name", "Smi"}, {"Type", ""}}),
              params);
}

TEST_F(SearchHeaderTest, EscapeDropsTheEditAndEnterCommitsAndAsksForTheQuery)
{
    header->GetItem(0)->SetText("old");
    ASSERT_TRUE(header->BeginEditItem(0));
    QTest::keyClicks(Focus(), "new");
    QTest::keyClick(Focus(), Qt::Key_Escape);
    EXPECT_EQ(CString("old"), header->GetItem(0)->GetText());
    EXPECT_EQ(-1, header->GetEditItem());
    ASSERT_TRUE(header->BeginEditItem(0));
    QTest::keyClicks(Focus(), "Brown");
    QTest::keyClick(Focus(), Qt::Key_Return);
    EXPECT_EQ(CString("Brown"), header->GetItem(0)->GetText());
    EXPECT_EQ((std::vector<WPARAM>{301}), parent.MessagesOf(SearchHeaderCtrl::SHCNM_QUERYBUTTON_CLICKED));
}

TEST_F(SearchHeaderTest, TabWalksTheCellsAndReportsLeavingTheLast)
{
    ASSERT_TRUE(header->BeginEditItem(0));
    QTest::keyClicks(Focus(), "A");
    QTest::keyClick(Focus(), Qt::Key_Tab);
    EXPECT_EQ(CString("A"), header->GetItem(0)->GetText());
    EXPECT_EQ(1, header->GetEditItem());
    QTest::keyClick(Focus(), Qt::Key_Tab);
    EXPECT_EQ(2, header->GetEditItem());
    QTest::keyClick(Focus(), Qt::Key_Tab);
    EXPECT_EQ(3, header->GetEditItem());
    EXPECT_TRUE(parent.MessagesOf(SearchHeaderCtrl::SHCNM_LASTTABITEM).empty());
    QTest::keyClick(Focus(), Qt::Key_Tab);
    EXPECT_EQ(-1, header->GetEditItem());
    EXPECT_EQ((std::vector<WPARAM>{3}), parent.MessagesOf(SearchHeaderCtrl::SHCNM_LASTTABITEM));
}

TEST_F(SearchHeaderTest, CellsThatTakeNoFocusAreSkipped)
{
    EXPECT_EQ(0, header->GetNextTabIndex(0));
    EXPECT_EQ(2, header->GetNextTabIndex(2));
    EXPECT_EQ(-1, header->GetNextTabIndex(4));
    header->GetItem(1)->SetTabStop(false);
    EXPECT_EQ(2, header->GetNextTabIndex(1));
    EXPECT_FALSE(header->BeginEditItem(1));
    ASSERT_TRUE(header->BeginEditItem(0));
    QTest::keyClick(Focus(), Qt::Key_Tab);
    EXPECT_EQ(2, header->GetEditItem());
}

TEST_F(SearchHeaderTest, ACollapsedHeaderShowsNoCells)
{
    header->SetState(SearchHeaderCtrl::STATE_COLLAPSED);
    EXPECT_TRUE(header->GetCellRect(0).IsRectEmpty());
    EXPECT_FALSE(header->BeginEditItem(0));
    header->SetState(SearchHeaderCtrl::STATE_EXPANDED);
    EXPECT_TRUE(header->BeginEditItem(0));
}

TEST_F(SearchHeaderTest, CellsAreDrawnUnderTheirTitlesWithTheirText)
{
    header->GetItem(0)->SetText("Smith");
    const QImage shot = header->grab().toImage();
    const CRect cell = header->GetCellRect(1);
    EXPECT_EQ(toQColor(ColorSchema::Instance().GetListCtrlBkColor()), shot.pixelColor(cell.CenterPoint().toQPoint()));
    EXPECT_NE(toQColor(ColorSchema::Instance().GetListCtrlBkColor()), shot.pixelColor(header->GetTitleRect(1).CenterPoint().toQPoint()));
    // Some ink in the first cell: its text.
    const CRect first = header->GetCellRect(0);
    bool ink = false;
    for (int x = first.left + 3; x < first.left + 40; ++x)
        ink = ink || shot.pixelColor(x, first.CenterPoint().y) != toQColor(ColorSchema::Instance().GetListCtrlBkColor());
    EXPECT_TRUE(ink);
}

TEST_F(SearchHeaderTest, AClickOnACellStartsEditingIt)
{
    QTest::mouseClick(header, Qt::LeftButton, {}, header->GetCellRect(2).toQRect().center());
    EXPECT_EQ(2, header->GetEditItem());
    EXPECT_TRUE(check->GetEditor()->isVisible());
    EXPECT_EQ(header->GetCellRect(2).left + 1, check->GetEditor()->geometry().left());
}

TEST_F(SearchHeaderTest, TitleClickIsReportedAndSortsTheList)
{
    ListSortHelper helper(list);
    list->SetSortHelper(&helper);
    for (const char* n : {"b", "c", "a"}) {
        std::vector<ListSubItemPtr> cells;
        cells.push_back(std::make_unique<ListTextSubItem>(0, n));
        list->InsertItem(std::move(cells));
    }
    QTest::mouseClick(header, Qt::LeftButton, {}, header->GetTitleRect(0).toQRect().center());
    const auto clicks = parent.NotifiesOf(LVN_COLUMNCLICK);
    ASSERT_EQ(1u, clicks.size());
    EXPECT_EQ(-1, clicks[0].item);
    EXPECT_EQ(0, clicks[0].subItem);
    EXPECT_EQ(300u, clicks[0].idFrom);
    EXPECT_EQ(CString("a"), list->GetSubItemAt(0, 0)->GetText());
    QTest::mouseClick(header, Qt::LeftButton, {}, header->GetTitleRect(0).toQRect().center());
    EXPECT_EQ(CString("c"), list->GetSubItemAt(0, 0)->GetText());
    list->SetSortHelper(nullptr);
}

TEST_F(SearchHeaderTest, QueryButtonIsReportedWithTheHeadersId)
{
    ASSERT_TRUE(header->GetQueryButton()->isVisible());
    QTest::mouseClick(header->GetQueryButton(), Qt::LeftButton);
    EXPECT_EQ((std::vector<WPARAM>{301}), parent.MessagesOf(SearchHeaderCtrl::SHCNM_QUERYBUTTON_CLICKED));
    // The query button does not cover a title.
    EXPECT_LE(header->GetTitleRect(3).right, header->GetQueryButton()->geometry().left());
}

TEST_F(SearchHeaderTest, CellsStayAlignedWithColumnsThroughResizeAndScroll)
{
    auto aligned = [&] {
        for (int i = 0; i < 4; ++i) {
            const CRect cell = header->GetCellRect(i);
            const CRect column = list->GetColumnRect(i);
            if (cell.left != column.left || cell.Width() != column.Width())
                return false;
        }
        return true;
    };
    EXPECT_TRUE(aligned());
    EXPECT_EQ(list->viewport()->geometry().left(), header->geometry().left());
    EXPECT_EQ(list->viewport()->geometry().top(), header->geometry().bottom() + 1);
    // The header sits inside the list's frame, above the rows, fully visible.
    EXPECT_EQ(list->frameWidth(), header->geometry().top());
    EXPECT_TRUE(header->isVisible());
    list->resize(900, 300);
    EXPECT_TRUE(aligned());
    EXPECT_EQ(list->viewport()->width(), header->width());
    // Too narrow for the minimum widths: the list scrolls sideways and the header follows.
    list->SetColumnWidth(0, 500);
    list->resize(300, 300);
    ASSERT_GT(list->horizontalScrollBar()->maximum(), 0);
    const int scrolled = std::min(60, list->horizontalScrollBar()->maximum());
    list->horizontalScrollBar()->setValue(scrolled);
    EXPECT_TRUE(aligned());
    EXPECT_EQ(-scrolled, header->GetCellRect(0).left);
}

TEST_F(SearchHeaderTest, DraggingATitleEdgeResizesItsColumn)
{
    const CRect title = header->GetTitleRect(0);
    const int before = list->GetColumnWidth(0);
    QTest::mousePress(header, Qt::LeftButton, {}, QPoint(title.right, title.top + 3));
    QMouseEvent move(QEvent::MouseMove, QPointF(title.right + 40, title.top + 3), header->mapToGlobal(QPointF(title.right + 40, title.top + 3)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(header, &move);
    QTest::mouseRelease(header, Qt::LeftButton, {}, QPoint(title.right + 40, title.top + 3));
    EXPECT_NEAR(before + 40, list->GetColumnWidth(0), 1);
    EXPECT_EQ(list->GetColumnRect(1).left, header->GetCellRect(1).left);
    // A drag is no title click.
    EXPECT_TRUE(parent.NotifiesOf(LVN_COLUMNCLICK).empty());
}

TEST_F(SearchHeaderTest, CheckComboJoinsTheCheckedItemsAndReadsTextBack)
{
    ASSERT_TRUE(header->BeginEditItem(2));
    check->SetItemChecked(1, true);
    check->SetItemChecked(0, true);
    header->EndEditItem();
    EXPECT_EQ(CString("Merge,Link"), check->GetText());
    check->SetText("link");
    ASSERT_TRUE(header->BeginEditItem(2));
    EXPECT_FALSE(check->IsItemChecked(0));
    EXPECT_TRUE(check->IsItemChecked(1));
    header->EndEditItem();
    EXPECT_EQ(CString("link"), check->GetText());
}

TEST_F(SearchHeaderTest, ComboCellTakesAChosenOrTypedValue)
{
    ASSERT_TRUE(header->BeginEditItem(1));
    combo->GetComboBox().SetCurSel(1);
    header->EndEditItem();
    EXPECT_EQ(CString("Same SSN"), combo->GetText());
    ASSERT_TRUE(header->BeginEditItem(1));
    combo->GetComboBox().SetWindowText("");
    QTest::keyClicks(Focus(), "dup");
    header->EndEditItem();
    EXPECT_EQ(CString("dup"), combo->GetText());
}

TEST(ComboBoxTest, FindsCodesInCodeDescriptionItems)
{
    ComboBox box;
    box.AddString("M-Male");
    box.AddString("F-Female");
    EXPECT_EQ(CB_ERR, box.FindCode("F"));
    box.SetCodeDescription(true);
    EXPECT_TRUE(box.IsCodeDescription());
    EXPECT_EQ(1, box.FindCode("f"));
    EXPECT_EQ(CB_ERR, box.FindCode("U"));
}

} // namespace
