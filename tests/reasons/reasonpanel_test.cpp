#include "reasonfixture.h"

#include "dictionaryrecord.h"

#include "ccombobox.h"
#include "cedit.h"
#include "modulestate.h"

#include <stdexcept>

namespace {

class ReasonPanelTest : public ReasonTest
{
protected:
    ModuleResourceScope m_scope{BravikModuleState()};

    std::vector<DictionaryRecord*> Reasons(std::initializer_list<const char*> descriptions)
    {
        std::vector<DictionaryRecord*> out;
        for (const char* d : descriptions) {
            m_records.push_back(std::make_unique<DictionaryRecord>(ACE_CString("C"), ACE_CString(d)));
            out.push_back(m_records.back().get());
        }
        return out;
    }

    std::vector<std::unique_ptr<DictionaryRecord>> m_records;
};

TEST_F(ReasonPanelTest, NeedsTheModuleResources)
{
    ModuleResourceScope host(HostModuleState());
    EXPECT_THROW(ExamDeleteParamDlgImpl panel, std::logic_error);
}

TEST_F(ReasonPanelTest, TemplateIsArialTenPointAndItsControlsSitAtTheirPixelPositions)
{
    ExamDeleteParamDlgImpl panel;
    EXPECT_EQ(CString("Arial"), panel.Template().fontFace);
    EXPECT_EQ(10, panel.Template().fontPointSize);
    EXPECT_EQ(238, panel.Template().cx);
    EXPECT_EQ(110, panel.Template().cy);
    const CRect size = PanelControlPixels(0, 0, 238, 110);
    EXPECT_EQ(size.Width(), panel.width());
    EXPECT_EQ(size.Height(), panel.height());

    DialogDriver d(panel);
    auto rectOf = [&](int id) { return CRect::fromQRect(d.Item(id)->geometry()); };
    EXPECT_EQ(PanelControlPixels(7, 8, 79, 14), rectOf(IDC_PREDEFINED_REASONS_LABEL));
    EXPECT_EQ(PanelControlPixels(7, 25, 122, 8), rectOf(IDC_REASON_NOTE));
    EXPECT_EQ(PanelControlPixels(169, 25, 62, 10), rectOf(IDC_DELETE_STUDIES));
    EXPECT_EQ(PanelControlPixels(7, 25, 75, 10), rectOf(IDC_PERMANENT_DELETE));
    EXPECT_EQ(PanelControlPixels(7, 35, 224, 65), rectOf(IDC_REASON_EDIT));
    // A drop-down list is as high as its field; the template height is the dropped list's.
    const CRect list = rectOf(IDC_REASON_LIST);
    const CRect expected = PanelControlPixels(88, 8, 143, 95);
    EXPECT_EQ(expected.left, list.left);
    EXPECT_EQ(expected.top, list.top);
    EXPECT_EQ(expected.Width(), list.Width());
    EXPECT_LT(list.Height(), expected.Height());
}

TEST_F(ReasonPanelTest, ControlKindsAndStartingState)
{
    ExamDeleteParamDlgImpl panel;
    DialogDriver d(panel);
    auto* list = d.ItemAs<CComboBox>(IDC_REASON_LIST);
    ASSERT_NE(nullptr, list);
    EXPECT_TRUE(list->IsSorted());
    EXPECT_FALSE(list->isEditable());
    auto* edit = d.ItemAs<CEdit>(IDC_REASON_EDIT);
    ASSERT_NE(nullptr, edit);
    EXPECT_TRUE(edit->IsMultiLine());
    EXPECT_TRUE(edit->WantReturn());
    EXPECT_EQ(CString("Predefined Reason(s):"), d.Text(IDC_PREDEFINED_REASONS_LABEL));
    EXPECT_EQ(CString("Delete Studies"), d.Text(IDC_DELETE_STUDIES));
    EXPECT_EQ(CString("Permanent Delete"), d.Text(IDC_PERMANENT_DELETE));
    EXPECT_TRUE(d.IsShown(IDC_DELETE_STUDIES));
    EXPECT_FALSE(d.IsShown(IDC_PERMANENT_DELETE));
    EXPECT_EQ(0, panel.GetDeleteStudiesFlg());
    EXPECT_EQ(0, panel.GetPermanentDelete());
    EXPECT_EQ(CString(""), panel.GetReason());
}

TEST_F(ReasonPanelTest, ASortedListKeepsTheDictionaryOrderAndPointsAtTheRecords)
{
    const auto reasons = Reasons({"Zebra", "apple", "Mango", "banana"});
    QWidget host;
    ExamDeleteParamDlgImpl panel;
    panel.SetReasons(reasons);
    panel.Create(&host);
    DialogDriver d(panel);
    auto* list = d.ItemAs<CComboBox>(IDC_REASON_LIST);
    ASSERT_EQ(4, list->GetCount());
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(CString(reasons[static_cast<size_t>(i)]->GetDescription().c_str()), list->GetLBText(i));
        EXPECT_EQ(reasons[static_cast<size_t>(i)], list->GetItemDataPtr(i));
    }
    EXPECT_EQ(0, list->GetCurSel());
    EXPECT_EQ(CString("Zebra"), panel.GetReason());
    EXPECT_EQ(CString("Zebra"), d.Text(IDC_REASON_EDIT));
}

TEST_F(ReasonPanelTest, ChoosingAReasonReplacesFieldAndText)
{
    const auto reasons = Reasons({"First", "Second"});
    QWidget host;
    ExamDeleteParamDlgImpl panel;
    panel.SetReasons(reasons);
    panel.Create(&host);
    host.show();
    DialogDriver d(panel);
    d.ReplaceText(IDC_REASON_EDIT, "my own words");
    d.Choose(IDC_REASON_LIST, 1);
    EXPECT_EQ(CString("Second"), d.Text(IDC_REASON_EDIT));
    EXPECT_EQ(CString("Second"), panel.GetReason());
}

TEST_F(ReasonPanelTest, ValidationTestsATrimmedCopyOnly)
{
    QWidget host;
    ExamDeleteParamDlgImpl panel;
    panel.Create(&host);
    DialogDriver d(panel);
    ScriptedUser user;

    panel.SetDlgItemText(IDC_REASON_EDIT, "  padded  ");
    EXPECT_TRUE(panel.ExchangeData(TRUE, true));
    EXPECT_EQ(CString("  padded  "), panel.GetReason());

    panel.SetDlgItemText(IDC_REASON_EDIT, " \t ");
    user.ExpectMessage("Reason cannot be empty.", IDOK);
    EXPECT_FALSE(panel.ExchangeData(TRUE, true));

    // Without validation a blank reason moves into the field silently.
    EXPECT_TRUE(panel.ExchangeData(TRUE, false));
    EXPECT_EQ(CString(" \t "), panel.GetReason());
    EXPECT_EQ((std::vector<CString>{"Reason cannot be empty."}), user.MessageTexts());
}

TEST_F(ReasonPanelTest, LoadingPutsTheFlagsIntoTheBoxes)
{
    QWidget host;
    ExamDeleteParamDlgImpl panel;
    panel.SetDeleteStudiesFlg(1);
    panel.Create(&host);
    EXPECT_EQ(static_cast<UINT>(BST_CHECKED), panel.IsDlgButtonChecked(IDC_DELETE_STUDIES));
    EXPECT_EQ(static_cast<UINT>(BST_UNCHECKED), panel.IsDlgButtonChecked(IDC_PERMANENT_DELETE));
}

TEST_F(ReasonPanelTest, ResizingStretchesTheTextAndKeepsDeleteStudiesRightAligned)
{
    QWidget host;
    ExamDeleteParamDlgImpl panel;
    host.show();
    panel.Create(&host);
    DialogDriver d(panel);
    const CRect edit0 = PanelControlPixels(7, 35, 224, 65);
    const CRect box0 = PanelControlPixels(169, 25, 62, 10);
    const int rightMargin = PanelControlPixels(0, 0, 238, 110).Width() - box0.right;
    const CRect label0 = CRect::fromQRect(d.Item(IDC_PREDEFINED_REASONS_LABEL)->geometry());

    for (const CSize size : {CSize(640, 420), CSize(520, 260), CSize(900, 300)}) {
        panel.resize(size.cx, size.cy);
        const CRect edit = CRect::fromQRect(d.Item(IDC_REASON_EDIT)->geometry());
        EXPECT_EQ(edit0.left, edit.left);
        EXPECT_EQ(edit0.top, edit.top);
        EXPECT_EQ(size.cx - edit0.left, edit.right) << "left margin repeated on the right";
        EXPECT_EQ(size.cy - edit0.left, edit.bottom) << "left margin repeated at the bottom";
        const CRect box = CRect::fromQRect(d.Item(IDC_DELETE_STUDIES)->geometry());
        EXPECT_EQ(size.cx - rightMargin, box.right);
        EXPECT_EQ(box0.top, box.top);
        EXPECT_EQ(box0.Width(), box.Width());
        EXPECT_EQ(label0, CRect::fromQRect(d.Item(IDC_PREDEFINED_REASONS_LABEL)->geometry()));
    }
}

TEST_F(ReasonPanelTest, ResizingSmallerThanTheMarginsNeverInvertsTheText)
{
    ExamDeleteParamDlgImpl panel;
    panel.show();
    panel.resize(10, 10);
    const QRect edit = DialogDriver(panel).Item(IDC_REASON_EDIT)->geometry();
    EXPECT_GE(edit.width(), 0);
    EXPECT_GE(edit.height(), 0);
}

TEST_F(ReasonPanelTest, ShowAndEnableHelpers)
{
    ExamDeleteParamDlgImpl panel;
    DialogDriver d(panel);
    panel.ShowDeleteStudies(false);
    EXPECT_FALSE(d.IsShown(IDC_DELETE_STUDIES));
    panel.ShowDeleteStudies(true);
    EXPECT_TRUE(d.IsShown(IDC_DELETE_STUDIES));
    panel.EnableDeleteStudies(false);
    EXPECT_FALSE(d.IsEnabled(IDC_DELETE_STUDIES));
    panel.ShowPermanentDelete(true);
    EXPECT_TRUE(d.IsShown(IDC_PERMANENT_DELETE));
    panel.SetNoteText("Reason for Deletion");
    EXPECT_EQ(CString("Reason for Deletion"), d.Text(IDC_REASON_NOTE));
}

} // namespace
