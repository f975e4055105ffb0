#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "boundary/resource.h"
#include "boundary/tavbasepage.h"

#include "dialogdriver.h"
#include "scripteduser.h"
#include "uiinput.h"

#include "colorschema.h"
#include "drawmaster.h"
#include "hfdlg.h"
#include "stringtable.h"
#include "tabbutton.h"

#include <gtest/gtest.h>

#include <QImage>

#include <stdexcept>

namespace {

class ChromeTest : public ::testing::Test
{
protected:
    ModuleResourceScope m_scope{BravikModuleState()};
};

// --- module resources

TEST(ModuleResourcesTest, TextsResolveOnlyWhileTheModuleIsCurrent)
{
    EXPECT_EQ(CString(""), LoadString(IDS_REASON_EMPTY));
    {
        BRAVIK_MANAGE_STATE();
        EXPECT_EQ(&BravikModuleState(), &CurrentModuleState());
        EXPECT_EQ(CString("Reason cannot be empty."), LoadString(IDS_REASON_EMPTY));
        EXPECT_EQ(CString("OK"), LoadString(IDS_OK));
        EXPECT_FALSE(LoadHeaderIcon().isNull());
        EXPECT_EQ(QSize(32, 32), LoadHeaderIcon().size());
    }
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
    EXPECT_TRUE(LoadHeaderIcon().isNull()) << "the host has no header icon of ours";
}

TEST(ModuleResourcesTest, TheCallersResourcesComeBackAfterAnException)
{
    ModuleState caller("caller");
    ModuleResourceScope callerScope(caller);
    try {
        BRAVIK_MANAGE_STATE();
        throw std::runtime_error("boom");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(&caller, &CurrentModuleState());
}

TEST(ModuleResourcesTest, TheReasonPanelTemplateIsRegistered)
{
    const DialogTemplate* tpl = BravikModuleState().FindTemplate(IDD_EXAMDELETEPARAM);
    ASSERT_NE(nullptr, tpl);
    EXPECT_EQ(6u, tpl->controls.size());
    EXPECT_EQ(nullptr, HostModuleState().FindTemplate(IDD_EXAMDELETEPARAM));
}

// --- header

TEST_F(ChromeTest, HeaderStartsWithATabButtonAndNothingLaidOut)
{
    DialogHeader h;
    EXPECT_NE(nullptr, h.GetTabButton());
    EXPECT_EQ(CRect(0, 0, 0, 0), h.GetIconRect());
    EXPECT_EQ(CString(""), h.GetHeaderText());
    EXPECT_FALSE(h.RecalcLayout(400, 48)) << "no window yet";
    EXPECT_EQ(CRect(0, 0, 0, 0), h.GetIconRect());
}

TEST_F(ChromeTest, HeaderTabIsADisabledCaptionInTheDialogColours)
{
    QWidget parent;
    DialogHeader h;
    EXPECT_TRUE(h.Create(&parent));
    TabButton* tab = h.GetTabButton();
    EXPECT_EQ(&h, tab->parentWidget());
    EXPECT_EQ(CString("Selected Patient Information"), tab->GetWindowText());
    EXPECT_FALSE(tab->isEnabled());
    const ColorSchema& cs = ColorSchema::Instance();
    EXPECT_EQ(cs.GetDialogBkColor(), tab->GetSelectedBkColor());
    EXPECT_EQ(cs.GetDialogBkColor(), tab->GetUnselectedBkColor());
    EXPECT_EQ(cs.GetTextColorNormal(), tab->GetSelectedTextColor());
    EXPECT_EQ(cs.GetTextColorNormal(), tab->GetUnselectedTextColor());
    EXPECT_EQ(tab->sizeHint(), tab->size()) << "refreshed to its text";
}

TEST_F(ChromeTest, A48PixelHeaderPutsTheIconAt8And8AndTheTabBottomRight)
{
    QWidget parent;
    DialogHeader h;
    h.Create(&parent);
    const CSize tab = h.GetTabButton()->GetSize();
    EXPECT_TRUE(h.RecalcLayout(400, 48));
    EXPECT_EQ(8, h.GetIconRect().left);
    EXPECT_EQ(8, h.GetIconRect().top);
    EXPECT_EQ(0, h.GetIconRect().right);
    EXPECT_EQ(0, h.GetIconRect().bottom);
    EXPECT_EQ(QRect(400 - 8 - tab.cx, 48 - tab.cy, tab.cx, tab.cy), h.GetTabButton()->geometry());

    EXPECT_TRUE(h.RecalcLayout(600, 80));
    EXPECT_EQ(24, h.GetIconRect().left);
    EXPECT_EQ(24, h.GetIconRect().top);
    EXPECT_EQ(QRect(600 - 24 - tab.cx, 80 - tab.cy, tab.cx, tab.cy), h.GetTabButton()->geometry());

    // Odd spare space rounds toward zero.
    EXPECT_TRUE(h.RecalcLayout(300, 51));
    EXPECT_EQ(9, h.GetIconRect().left);
}

TEST_F(ChromeTest, AHeaderLowerThanTheIconGivesANegativeMarginAndClipsIt)
{
    QWidget parent;
    DialogHeader h;
    h.Create(&parent);
    EXPECT_TRUE(h.RecalcLayout(300, 20));
    EXPECT_EQ(-6, h.GetIconRect().left);
    EXPECT_EQ(-6, h.GetIconRect().top);
    EXPECT_TRUE(h.RecalcLayout(300, 31));
    EXPECT_EQ(0, h.GetIconRect().top) << "(31 - 32) / 2 truncates to 0";
    EXPECT_TRUE(h.RecalcLayout(300, 29));
    EXPECT_EQ(-1, h.GetIconRect().top);
}

TEST_F(ChromeTest, HeaderDrawsTheModuleIconAndTheWrappedText)
{
    QWidget parent;
    DialogHeader h;
    h.Create(&parent);
    h.SetHeaderText("Edit the patient's demographics and contact information before the exam is scheduled");
    h.resize(360, 48);
    const QImage img = h.grab().toImage();
    const QImage icon = LoadHeaderIcon().toImage();
    // The icon's centre pixel shows where the layout put it.
    EXPECT_EQ(icon.pixelColor(16, 16), img.pixelColor(8 + 16, 8 + 16));
    EXPECT_NE(img.pixelColor(8 + 16, 8 + 16), toQColor(h.m_clrBackground));
    const CRect text = h.GetTextRect();
    EXPECT_GE(text.left, 8 + 32);
    EXPECT_LE(text.right, h.GetTabButton()->x());
    EXPECT_GT(text.Height(), QFontMetrics(DrawMaster::GetNormalFont()).height()) << "wrapped onto two lines";
}

// --- footer

class OwnerDlg : public CDialog
{
public:
    explicit OwnerDlg(const DialogTemplate& tpl) : CDialog(tpl) {}
    int oks = 0;
    int cancels = 0;
    void OnOK() override
    {
        ++oks;
        CDialog::OnOK();
    }
    void OnCancel() override
    {
        ++cancels;
        CDialog::OnCancel();
    }
};

DialogTemplate ownerTemplate()
{
    return DialogTemplate{"Owner", 200, 100, "Arial", 10,
                          {{100, "IDC_NAME", ControlKind::Edit, "", 7, 7, 100, 12, WS_TABSTOP | WS_BORDER}}};
}

TEST_F(ChromeTest, FooterTextsAreLoadedAtConstruction)
{
    DialogFooter f(nullptr);
    EXPECT_EQ(CString("OK"), f.GetOKText());
    EXPECT_EQ(CString("Cancel"), f.GetCancelText());
    EXPECT_FALSE(f.GetCancelButton().IsCreated());
}

TEST_F(ChromeTest, FooterMakesOKAndCancelWithTheirTextsAndFont)
{
    QWidget parent;
    DialogFooter f(nullptr);
    f.SetOKText("Detach");
    ASSERT_TRUE(f.Create(&parent));
    EXPECT_EQ(CString("Detach"), f.GetOKButton().GetWindowText());
    EXPECT_EQ(CString("Cancel"), f.GetCancelButton().GetWindowText());
    EXPECT_EQ(IDOK, f.GetOKButton().GetDlgCtrlID());
    EXPECT_EQ(IDCANCEL, f.GetCancelButton().GetDlgCtrlID());
    EXPECT_EQ(DrawMaster::GetNormalFont(), f.GetCancelButton().font());
    f.SetCancelText("Close");
    EXPECT_EQ(CString("Close"), f.GetCancelButton().GetWindowText());
}

TEST_F(ChromeTest, FooterPlacesCancelRightmostAndOKBesideIt)
{
    QWidget parent;
    DialogFooter f(nullptr);
    f.Create(&parent);
    f.GetOKButton().resize(90, 23);
    f.GetCancelButton().resize(75, 23);
    f.resize(400, 44);
    f.RecalcLayout(CRect(0, 0, 400, 44));
    // Cancel: x = right - w - 7, y = 44/2 - 23/2 - 5 = 6, height 2 * (23/2) = 22.
    EXPECT_EQ(QRect(400 - 75 - 7, 6, 75, 22), f.GetCancelButton().geometry());
    // OK: x = right - w - 14 - w1, same y and height.
    EXPECT_EQ(QRect(400 - 75 - 14 - 90, 6, 90, 22), f.GetOKButton().geometry());

    f.RecalcLayout(CRect(0, 0, 640, 51));
    EXPECT_EQ(QRect(640 - 75 - 7, 25 - 11 - 5, 75, 22), f.GetCancelButton().geometry());
    EXPECT_EQ(QRect(640 - 75 - 14 - 90, 25 - 11 - 5, 90, 22), f.GetOKButton().geometry());
}

TEST_F(ChromeTest, FooterLayoutWaitsForTheCancelButton)
{
    DialogFooter f(nullptr);
    const QRect before = f.GetOKButton().geometry();
    f.RecalcLayout(CRect(0, 0, 400, 44));
    EXPECT_EQ(before, f.GetOKButton().geometry());
}

class FramedOwner : public OwnerDlg
{
public:
    FramedOwner() : OwnerDlg(ownerTemplate()), footer(this) {}
    BOOL OnInitDialog() override
    {
        OwnerDlg::OnInitDialog();
        footer.Create(this);
        footer.setGeometry(0, height() - footer.GetHeight(), width(), footer.GetHeight());
        footer.show();
        return TRUE;
    }
    DialogFooter footer;
};

TEST_F(ChromeTest, FooterCancelEndsTheOwnerWith2WithoutOnCancelEvenWithEdits)
{
    FramedOwner dlg;
    ScriptedUser user;
    user.OnNextDialog([&dlg](CDialog& d) {
        DialogDriver(d).Type(100, "unsaved edit");
        ClickButton(&dlg.footer.GetCancelButton());
    });
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_EQ(0, dlg.cancels);
    EXPECT_EQ(0, dlg.oks);
    EXPECT_TRUE(user.Messages().empty()) << "no confirmation";
}

TEST_F(ChromeTest, FooterOKCallsTheOwnersOwnOK)
{
    FramedOwner dlg;
    ScriptedUser user;
    user.OnNextDialog([&dlg](CDialog&) { ClickButton(&dlg.footer.GetOKButton()); });
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_EQ(1, dlg.oks);
    EXPECT_EQ(0, dlg.cancels);
}

TEST_F(ChromeTest, FooterWithoutAnOwnerDoesNothingOnClicks)
{
    QWidget parent;
    DialogFooter f(nullptr);
    f.Create(&parent);
    parent.show();
    f.show();
    EXPECT_TRUE(ClickButton(&f.GetOKButton()));
    EXPECT_TRUE(ClickButton(&f.GetCancelButton()));
}

// --- page

class InnerDlg : public CDialog
{
public:
    InnerDlg() : CDialog(ownerTemplate()) {}
};

class TestPage : public TavBasePage
{
public:
    void SetInner(CDialog* dlg) { m_pInnerDlg = dlg; }
};

class MarginPage : public TestPage
{
public:
    CRect given;
    void LayoutInnerDialog(const CRect& rect) override
    {
        given = rect;
        CRect inset = rect;
        inset.DeflateRect(10, 10);
        TavBasePage::LayoutInnerDialog(inset);
    }
};

TEST_F(ChromeTest, ResizingAPageBeforeItsInnerDialogExistsDoesNothing)
{
    QWidget parent;
    parent.show();
    TestPage page;
    page.Create(&parent);
    page.show();
    EXPECT_EQ(nullptr, page.GetInnerDialog());
    page.resize(300, 200);
    EXPECT_EQ(CSize(300, 200), page.GetLastSize());

    // Made but without its window inside the page yet: left where it is.
    InnerDlg inner;
    const QRect before = inner.geometry();
    page.SetInner(&inner);
    page.resize(320, 220);
    EXPECT_EQ(before, inner.geometry());
}

TEST_F(ChromeTest, APageKeepsItsInnerDialogFillingIt)
{
    QWidget parent;
    parent.show();
    TestPage page;
    page.Create(&parent);
    page.show();
    InnerDlg inner;
    inner.Create(&page);
    page.SetInner(&inner);
    page.resize(300, 200);
    EXPECT_EQ(QRect(0, 0, 300, 200), inner.geometry());
    page.resize(450, 120);
    EXPECT_EQ(QRect(0, 0, 450, 120), inner.geometry());
}

TEST_F(ChromeTest, DerivedPagesMayLayTheInnerDialogOutThemselves)
{
    QWidget parent;
    parent.show();
    MarginPage page;
    page.Create(&parent);
    page.show();
    InnerDlg inner;
    inner.Create(&page);
    page.SetInner(&inner);
    page.resize(300, 200);
    EXPECT_EQ(CRect(0, 0, 300, 200), page.given);
    EXPECT_EQ(QRect(10, 10, 280, 180), inner.geometry());
}

TEST_F(ChromeTest, TheFramePatternHeaderBodyFooter)
{
    QWidget host;
    host.show();
    OwnerDlg owner(ownerTemplate());
    HFDlg frame;
    DialogHeader header;
    DialogFooter footer(&owner);
    header.SetHeaderText("Create a new patient");
    frame.Create(&host, CRect(0, 0, 500, 300));
    frame.SetHeader(&header);
    frame.SetFooter(&footer);
    frame.show();
    EXPECT_EQ(QRect(0, 0, 500, 48), header.geometry());
    EXPECT_EQ(CString("Create a new patient"), header.GetHeaderText());
    EXPECT_EQ(8, header.GetIconRect().left);
    EXPECT_EQ(QRect(0, 300 - footer.GetHeight(), 500, footer.GetHeight()), footer.geometry());
    EXPECT_EQ(500 - 7, footer.GetCancelButton().geometry().right() + 1);
    EXPECT_EQ(footer.GetCancelButton().x() - 7, footer.GetOKButton().geometry().right() + 1);
}

} // namespace
