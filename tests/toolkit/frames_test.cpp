#include "basepage.h"
#include "basetabfooter.h"
#include "basetabheader.h"
#include "colorschema.h"
#include "controlparentmodaldlg.h"
#include "drawmaster.h"
#include "hfdlg.h"
#include "hftabbeddlg.h"
#include "ostreldlg.h"
#include "tabbutton.h"
#include "xpbutton.h"

#include "scripteduser.h"
#include "uiinput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

namespace {

double luminance(COLORREF c)
{
    auto channel = [](int v) {
        const double s = v / 255.0;
        return s <= 0.03928 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(GetRValue(c)) + 0.7152 * channel(GetGValue(c)) + 0.0722 * channel(GetBValue(c));
}

double contrast(COLORREF a, COLORREF b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// --- colour scheme and fonts

TEST(ColorSchemaTest, IsOneInstance)
{
    EXPECT_EQ(&ColorSchema::Instance(), &ColorSchema::Instance());
}

TEST(ColorSchemaTest, TextReadsWellOnEveryBackgroundItIsDrawnOn)
{
    const ColorSchema& cs = ColorSchema::Instance();
    for (COLORREF bk : {cs.GetDialogBkColor(), cs.GetPageBkColor(), cs.GetHeaderBkColor(), cs.GetFooterBkColor(),
                        cs.GetListCtrlBkColor(), cs.GetListViewDarkRowBkColor(), cs.GetButtonBkColor()})
        EXPECT_GE(contrast(cs.GetTextColorNormal(), bk), 7.0) << std::hex << bk;
    EXPECT_GE(contrast(cs.GetTextActiveSelectionColor(), cs.GetTextActiveSelectionBkColor()), 4.5);
    EXPECT_GE(contrast(cs.GetTextColorHeader(), cs.GetHeaderBkColor()), 7.0);
    EXPECT_GE(contrast(cs.GetTabSelectedTextColor(), cs.GetTabSelectedBkColor()), 7.0);
    EXPECT_GE(contrast(cs.GetTabUnselectedTextColor(), cs.GetTabUnselectedBkColor()), 4.5);
}

TEST(ColorSchemaTest, AlternateRowsAndBandsAreDistinctButCalm)
{
    const ColorSchema& cs = ColorSchema::Instance();
    EXPECT_NE(cs.GetListCtrlBkColor(), cs.GetListViewDarkRowBkColor());
    EXPECT_LT(contrast(cs.GetListCtrlBkColor(), cs.GetListViewDarkRowBkColor()), 1.3);
    EXPECT_NE(cs.GetDialogBkColor(), cs.GetPageBkColor());
    EXPECT_GE(cs.GetListCtrlItemHeightAdjustment(), 0);
}

TEST(DrawMasterTest, FontsFollowTheApplicationFont)
{
    DrawMaster::ResetFonts();
    EXPECT_EQ(QApplication::font().family(), DrawMaster::GetNormalFont().family());
    EXPECT_EQ(QApplication::font().pointSizeF(), DrawMaster::GetNormalFont().pointSizeF());
    EXPECT_TRUE(DrawMaster::GetBoldFont().bold());
    EXPECT_FALSE(DrawMaster::GetNormalFont().bold());
    EXPECT_GT(DrawMaster::GetHeaderFont().pointSizeF(), DrawMaster::GetNormalFont().pointSizeF());
    EXPECT_LT(DrawMaster::GetSmallFont().pointSizeF(), DrawMaster::GetNormalFont().pointSizeF());
    EXPECT_GT(DrawMaster::GetFontHeight(DrawMaster::GetNormalFont()), 0);
}

TEST(DrawMasterTest, FillAndFrameDrawTheColourGiven)
{
    QImage img(20, 10, QImage::Format_RGB32);
    img.fill(Qt::white);
    QPainter p(&img);
    DrawMaster::FillSolidRect(p, CRect(2, 2, 6, 6), RGB(0x15, 0x27, 0x40));
    DrawMaster::DrawFrameRect(p, CRect(10, 0, 20, 10), RGB(255, 0, 0));
    DrawMaster::DrawHLine(p, 0, 20, 9, RGB(0, 0, 255));
    p.end();
    EXPECT_EQ(QColor(0x15, 0x27, 0x40), img.pixelColor(2, 2));
    EXPECT_EQ(QColor(0x15, 0x27, 0x40), img.pixelColor(5, 5));
    EXPECT_EQ(QColor(Qt::white), img.pixelColor(6, 6)) << "right and bottom are exclusive";
    EXPECT_EQ(QColor(255, 0, 0), img.pixelColor(10, 4));
    EXPECT_EQ(QColor(255, 0, 0), img.pixelColor(19, 4));
    EXPECT_EQ(QColor(Qt::white), img.pixelColor(15, 4));
    EXPECT_EQ(QColor(0, 0, 255), img.pixelColor(3, 9));
}

// --- buttons

TEST(XPButtonTest, CreateGivesIdTextAndDefaultSizeAndClicksReportTheId)
{
    QWidget parent;
    XPButton b;
    EXPECT_FALSE(b.IsCreated());
    b.Create("Detach", &parent, 7);
    EXPECT_TRUE(b.IsCreated());
    EXPECT_EQ(&parent, b.parentWidget());
    EXPECT_EQ(7, b.GetDlgCtrlID());
    EXPECT_EQ(CString("Detach"), b.GetWindowText());
    EXPECT_EQ(QSize(XPButton::DEFAULT_WIDTH, XPButton::DEFAULT_HEIGHT), b.size());
    parent.show();
    QSignalSpy spy(&b, &XPButton::command);
    ClickButton(&b);
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(7, spy.at(0).at(0).toInt());
}

TEST(XPButtonTest, CreateWithARectanglePlacesIt)
{
    QWidget parent;
    XPButton b;
    b.Create("OK", &parent, IDOK, CRect(10, 5, 100, 30));
    EXPECT_EQ(QRect(10, 5, 90, 25), b.geometry());
}

TEST(TabButtonTest, SizesItselfToItsTextAndReportsThatSize)
{
    QWidget parent;
    TabButton shortTab, longTab;
    shortTab.Create("A", &parent, 1);
    longTab.Create("Selected Patient Information", &parent, 2);
    EXPECT_EQ(CSize(shortTab.width(), shortTab.height()), shortTab.GetSize());
    EXPECT_GT(longTab.GetSize().cx, shortTab.GetSize().cx);
    EXPECT_GE(longTab.GetSize().cx, QFontMetrics(longTab.font()).horizontalAdvance("Selected Patient Information"));
}

TEST(TabButtonTest, PaintsItsColoursAndADisabledTabIsACaption)
{
    QWidget parent;
    TabButton tab;
    tab.Create("Caption", &parent, 3);
    tab.SetBkColors(RGB(10, 20, 30), RGB(200, 100, 50));
    tab.SetTextColors(RGB(1, 2, 3), RGB(4, 5, 6));
    tab.EnableWindow(FALSE);
    tab.Refresh();
    EXPECT_EQ(RGB(200, 100, 50), tab.GetUnselectedBkColor());
    const QImage unselected = tab.grab().toImage();
    EXPECT_EQ(QColor(200, 100, 50), unselected.pixelColor(tab.width() / 2, tab.height() - 2));
    tab.SetSelected(true);
    const QImage selected = tab.grab().toImage();
    EXPECT_EQ(QColor(10, 20, 30), selected.pixelColor(tab.width() / 2, tab.height() - 2));

    parent.show();
    QSignalSpy spy(&tab, &TabButton::clicked);
    QTest::mouseClick(&tab, Qt::LeftButton);
    EXPECT_EQ(0, spy.count()) << "a disabled tab cannot be clicked";
}

// --- header and footer bands

class IconHeader : public BaseTabHeader
{
public:
    int icons = 0;
    int paints = 0;

protected:
    void DrawIcon(QPainter& dc) override
    {
        ++icons;
        BaseTabHeader::DrawIcon(dc);
    }
    void OnPaint(QPainter&) override { ++paints; }
};

TEST(BaseTabHeaderTest, LaysOutOnlyOnceItHasAWindow)
{
    QWidget parent;
    IconHeader h;
    EXPECT_EQ(48, BaseTabHeader::DEFAULT_HEIGHT);
    EXPECT_EQ(BaseTabHeader::DEFAULT_HEIGHT, h.GetHeight());
    EXPECT_EQ(ColorSchema::Instance().GetHeaderBkColor(), h.m_clrBackground);
    EXPECT_EQ(ColorSchema::Instance().GetTextColorHeader(), h.m_clrText);
    EXPECT_FALSE(h.RecalcLayout(300, 48));
    EXPECT_TRUE(h.Create(&parent, 5));
    EXPECT_EQ(5, h.GetDlgCtrlID());
    EXPECT_TRUE(h.RecalcLayout(300, 60));
    EXPECT_EQ(CPoint(8, 14), h.GetIconPos());
}

TEST(BaseTabHeaderTest, PaintsBackgroundThenIconThenTheDerivedDrawing)
{
    QWidget parent;
    IconHeader h;
    h.Create(&parent);
    h.m_clrBackground = RGB(0x20, 0x40, 0x60);
    QPixmap icon(32, 32);
    icon.fill(QColor(255, 0, 0));
    h.SetIcon(icon);
    h.resize(200, 48);
    const QImage img = h.grab().toImage();
    EXPECT_EQ(1, h.icons);
    EXPECT_EQ(1, h.paints);
    EXPECT_EQ(QColor(0x20, 0x40, 0x60), img.pixelColor(150, 10));
    EXPECT_EQ(QColor(255, 0, 0), img.pixelColor(8 + 16, 8 + 16));
}

TEST(BaseTabFooterTest, CreatesTheOKButtonAndReportsItsCommand)
{
    QWidget parent;
    parent.show();
    BaseTabFooter f;
    EXPECT_FALSE(f.GetOKButton().IsCreated());
    ASSERT_TRUE(f.Create(&parent));
    f.show();
    EXPECT_TRUE(f.GetOKButton().IsCreated());
    EXPECT_EQ(CString("OK"), f.GetOKButton().GetWindowText());
    EXPECT_EQ(IDOK, f.GetOKButton().GetDlgCtrlID());
    EXPECT_EQ(&f, f.GetOKButton().parentWidget());

    f.resize(300, BaseTabFooter::DEFAULT_HEIGHT);
    const QRect ok = f.GetOKButton().geometry();
    EXPECT_EQ(300 - BaseTabFooter::BUTTON_MARGIN, ok.x() + ok.width());

    parent.show();
    f.show();
    QSignalSpy spy(&f, &BaseTabFooter::command);
    ClickButton(&f.GetOKButton());
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(IDOK, spy.at(0).at(0).toInt());
}

class ExtraFooter : public BaseTabFooter
{
public:
    XPButton extra;

protected:
    BOOL CreateButtons() override
    {
        BaseTabFooter::CreateButtons();
        extra.Create("Help", this, 9);
        RouteCommands(extra);
        return TRUE;
    }
    void RecalcLayout(const CRect& client) override
    {
        BaseTabFooter::RecalcLayout(client);
        if (extra.IsCreated())
            extra.move(client.left + 7, 0);
    }
};

TEST(BaseTabFooterTest, DerivedFootersAddButtonsAndLayout)
{
    QWidget parent;
    parent.show();
    ExtraFooter f;
    f.Create(&parent);
    f.show();
    f.resize(300, 40);
    EXPECT_EQ(7, f.extra.x());
    parent.show();
    f.show();
    QSignalSpy spy(&f, &BaseTabFooter::command);
    ClickButton(&f.extra);
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(9, spy.at(0).at(0).toInt());
}

// --- frames and pages

class CountingPage : public BasePage
{
public:
    int sizes = 0;
    int activations = 0;
    bool mayLeave = true;
    BOOL OnSetActive() override
    {
        ++activations;
        return TRUE;
    }
    BOOL OnKillActive() override { return mayLeave ? TRUE : FALSE; }

protected:
    void OnSize(UINT type, int cx, int cy) override
    {
        BasePage::OnSize(type, cx, cy);
        ++sizes;
    }
};

TEST(BasePageTest, ResizesArriveAsOnSize)
{
    QWidget parent;
    parent.show();
    CountingPage page;
    page.Create(&parent, CRect(0, 0, 120, 80));
    page.show();
    EXPECT_EQ(CSize(120, 80), page.GetLastSize());
    page.resize(200, 90);
    EXPECT_EQ(CSize(200, 90), page.GetLastSize());
    EXPECT_GE(page.sizes, 2);
    page.SetTitle("Details");
    EXPECT_EQ(CString("Details"), page.GetTitle());
}

TEST(HFDlgTest, StacksHeaderBodyAndFooter)
{
    QWidget parent;
    parent.show();
    HFDlg frame;
    BaseTabHeader header;
    BaseTabFooter footer;
    QWidget body;
    frame.Create(&parent, CRect(0, 0, 400, 300));
    frame.show();
    frame.SetHeader(&header);
    frame.SetBody(&body);
    frame.SetFooter(&footer);
    EXPECT_TRUE(header.IsCreated());
    EXPECT_TRUE(footer.IsCreated());
    EXPECT_EQ(QRect(0, 0, 400, BaseTabHeader::DEFAULT_HEIGHT), header.geometry());
    EXPECT_EQ(QRect(0, 300 - BaseTabFooter::DEFAULT_HEIGHT, 400, BaseTabFooter::DEFAULT_HEIGHT), footer.geometry());
    EXPECT_EQ(QRect(0, 48, 400, 300 - 48 - 44), body.geometry());

    frame.resize(500, 200);
    EXPECT_EQ(500, header.width());
    EXPECT_EQ(QRect(0, 200 - 44, 500, 44), footer.geometry());
    EXPECT_EQ(QRect(0, 48, 500, 200 - 48 - 44), body.geometry());
    EXPECT_EQ(CRect(0, 48, 500, 200 - 44), frame.GetBodyRect());
}

TEST(HFDlgTest, TooSmallAFrameNeverGivesANegativeBody)
{
    QWidget parent;
    HFDlg frame;
    BaseTabHeader header;
    BaseTabFooter footer;
    frame.Create(&parent, CRect(0, 0, 100, 50));
    frame.SetHeader(&header);
    frame.SetFooter(&footer);
    EXPECT_GE(frame.GetBodyRect().Height(), 0);
}

TEST(HFTabbedDlgTest, TabsSwitchPagesAndAPageMayRefuseToLeave)
{
    QWidget parent;
    HFTabbedDlg frame;
    BaseTabHeader header;
    CountingPage first, second;
    first.SetTitle("Demographics");
    frame.Create(&parent, CRect(0, 0, 500, 400));
    frame.SetHeader(&header);
    EXPECT_EQ(0, frame.AddPage(&first));
    EXPECT_EQ(1, frame.AddPage(&second, "Contact"));
    parent.show();
    frame.show();

    EXPECT_EQ(2, frame.GetPageCount());
    EXPECT_EQ(CString("Demographics"), frame.GetTab(0)->GetWindowText());
    EXPECT_EQ(CString("Contact"), frame.GetTab(1)->GetWindowText());
    EXPECT_EQ(0, frame.GetActiveIndex());
    EXPECT_TRUE(frame.GetTab(0)->IsSelected());
    EXPECT_TRUE(first.isVisible());
    EXPECT_FALSE(second.isVisible());
    const CRect body = frame.GetBodyRect();
    EXPECT_EQ(48 + HFTabbedDlg::TAB_STRIP_HEIGHT, body.top);
    EXPECT_EQ(body.toQRect(), first.geometry());
    EXPECT_EQ(body.top, frame.GetTab(0)->y() + frame.GetTab(0)->height());

    QSignalSpy changed(&frame, &HFTabbedDlg::pageChanged);
    ClickButton(frame.GetTab(1));
    EXPECT_EQ(1, frame.GetActiveIndex());
    EXPECT_TRUE(second.isVisible());
    EXPECT_FALSE(first.isVisible());
    EXPECT_EQ(1, second.activations);
    EXPECT_EQ(body.toQRect(), second.geometry());
    EXPECT_EQ(1, changed.count());

    second.mayLeave = false;
    EXPECT_FALSE(frame.SetActivePage(0));
    EXPECT_EQ(1, frame.GetActiveIndex());
    EXPECT_FALSE(frame.SetActivePage(5));
}

TEST(HFTabbedDlgTest, APageIsActivatedByItsTabName)
{
    QWidget parent;
    HFTabbedDlg frame;
    CountingPage first, second, third;
    frame.Create(&parent, CRect(0, 0, 500, 400));
    frame.AddPage(&first, "Demographics");
    frame.AddPage(&second, "Contact Info");
    frame.AddPage(&third, "Links");
    parent.show();
    frame.show();

    EXPECT_EQ(2, frame.FindPage("Links"));
    EXPECT_EQ(-1, frame.FindPage("links")); // the name must match exactly
    EXPECT_TRUE(frame.ActivatePage("Contact Info"));
    EXPECT_EQ(1, frame.GetActiveIndex());
    EXPECT_TRUE(second.isVisible());
    EXPECT_FALSE(frame.ActivatePage("Exam"));
    EXPECT_EQ(1, frame.GetActiveIndex());
    second.mayLeave = false;
    EXPECT_FALSE(frame.ActivatePage("Demographics"));
    EXPECT_EQ(1, frame.GetActiveIndex());
}

TEST(OstrelDlgTest, TheFrameCoversTheClientAreaAndFollowsIt)
{
    DialogTemplate tpl;
    tpl.cx = 200;
    tpl.cy = 100;
    OstrelDlg dlg(tpl);
    ASSERT_TRUE(dlg.EnsureInitDialog());
    dlg.show();
    ASSERT_NE(nullptr, dlg.GetFrame());
    EXPECT_TRUE(dlg.GetFrame()->IsCreated());
    EXPECT_EQ(QRect(QPoint(0, 0), dlg.size()), dlg.GetFrame()->geometry());
    dlg.resize(640, 480);
    EXPECT_EQ(QRect(0, 0, 640, 480), dlg.GetFrame()->geometry());
}

class SizedDlg : public ControlParentModalDlg
{
public:
    using ControlParentModalDlg::ControlParentModalDlg;
    CSize last;

protected:
    void OnSize(UINT, int cx, int cy) override { last = CSize(cx, cy); }
};

TEST(ControlParentModalDlgTest, ResizesArriveAtOnSizeAndTheDialogRunsModally)
{
    DialogTemplate tpl;
    tpl.caption = "Frame";
    tpl.cx = 100;
    tpl.cy = 50;
    SizedDlg dlg(tpl);
    ScriptedUser user;
    user.OnNextDialog([&dlg](CDialog& d) {
        d.resize(300, 200);
        EXPECT_EQ(CSize(300, 200), dlg.last);
        d.EndDialog(IDOK);
    });
    EXPECT_EQ(IDOK, dlg.DoModal());
}

} // namespace
