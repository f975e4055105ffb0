#include "notifyrecorder.h"

#include "listctrlex.h"
#include "listsorthelper.h"
#include "listtextsubitem.h"

#include <gtest/gtest.h>

namespace {

class SortTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        list = new ListCtrlEx();
        list->Create(0, CRect(0, 0, 300, 200), &parent, 1);
        list->AddColumn(Column("Name", 0.5));
        list->AddColumn(Column("DOB", 0.5));
        helper = std::make_unique<ListSortHelper>(list);
        list->SetSortHelper(helper.get());
        helper->AddSortColumn(1, ListSortHelper::eDate);
    }
    void Add(const char* name, const char* dob, DWORD_PTR data)
    {
        std::vector<ListSubItemPtr> cells;
        cells.push_back(std::make_unique<ListTextSubItem>(0, name));
        cells.push_back(std::make_unique<ListTextSubItem>(1, dob));
        list->InsertItem(std::move(cells), data);
    }
    std::vector<std::string> Column0() const
    {
        std::vector<std::string> out;
        for (int r = 0; r < list->GetItemCount(); ++r)
            out.push_back(list->GetSubItemAt(r, 0)->GetText().str());
        return out;
    }
    NotifyRecorder parent;
    ListCtrlEx* list = nullptr;
    std::unique_ptr<ListSortHelper> helper;
};

TEST_F(SortTest, NoCurrentSortLeavesTheRowsAlone)
{
    Add("b", "", 1);
    Add("a", "", 2);
    EXPECT_EQ(-1, helper->GetCurrentSort());
    helper->Sort();
    EXPECT_EQ((std::vector<std::string>{"b", "a"}), Column0());
}

TEST_F(SortTest, TextColumnsSortCaseBlindAndToggleReversesTheOrder)
{
    Add("charlie", "", 3);
    Add("Alpha", "", 1);
    Add("bravo", "", 2);
    helper->SetCurrentSort(0, true);
    helper->Sort();
    EXPECT_EQ((std::vector<std::string>{"Alpha", "bravo", "charlie"}), Column0());
    // Item data travels with its row.
    EXPECT_EQ(1u, list->GetItemData(0));
    EXPECT_EQ(3u, list->GetItemData(2));
    helper->ToggleSort(0);
    EXPECT_FALSE(helper->IsAscending());
    helper->Sort();
    EXPECT_EQ((std::vector<std::string>{"charlie", "bravo", "Alpha"}), Column0());
}

TEST_F(SortTest, ToggleOnAnotherColumnSortsItAscending)
{
    helper->SetCurrentSort(0, false);
    helper->ToggleSort(1);
    EXPECT_EQ(1, helper->GetCurrentSort());
    EXPECT_TRUE(helper->IsAscending());
    EXPECT_EQ(ListSortHelper::eDate, helper->GetSortType(1));
    EXPECT_EQ(ListSortHelper::eText, helper->GetSortType(0));
    EXPECT_EQ(ListSortHelper::eText, helper->GetSortType(7));
}

TEST_F(SortTest, DateColumnsSortAsDatesNotAsText)
{
    Add("x", "12/31/1969", 1);
    Add("y", "01/02/2001", 2);
    Add("z", "02/15/1980", 3);
    Add("w", "", 4);
    helper->SetCurrentSort(1, true);
    helper->Sort();
    // As text "01/02/2001" would come first.
    EXPECT_EQ((std::vector<std::string>{"w", "x", "z", "y"}), Column0());
}

TEST_F(SortTest, ColumnClickTogglesAndSortsThroughTheList)
{
    Add("b", "", 2);
    Add("a", "", 1);
    Add("c", "", 3);
    list->HandleColumnClicked(0);
    EXPECT_EQ((std::vector<std::string>{"a", "b", "c"}), Column0());
    list->HandleColumnClicked(0);
    EXPECT_EQ((std::vector<std::string>{"c", "b", "a"}), Column0());
}

TEST_F(SortTest, SelectionFollowsItsRowThroughASort)
{
    Add("b", "", 2);
    Add("a", "", 1);
    list->SetItemSelected(0, true); // "b"
    helper->SetCurrentSort(0, true);
    helper->Sort();
    EXPECT_EQ((std::vector<int>{1}), list->GetSelectedItems());
    EXPECT_EQ(CString("b"), list->GetSubItemAt(1, 0)->GetText());
}

} // namespace
