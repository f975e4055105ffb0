#include "cdialog.h"
#include "dialogtemplate.h"
#include "screenshot.h"
#include "scripteduser.h"
#include "testdialogs.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFontInfo>
#include <QImage>
#include <QTemporaryDir>

#include <stdexcept>

namespace {

// Restores the process-wide pre-processor whatever the test does.
struct PreprocessorGuard
{
    DialogTemplatePreprocessor previous = SetDialogTemplatePreprocessor({});
    ~PreprocessorGuard() { SetDialogTemplatePreprocessor(previous); }
};

} // namespace

TEST(DialogUnits, BaseUnitsOfArialAtEightNineAndTenPoints)
{
    const DialogUnits u8 = DialogUnits::FromFont(QFont("Arial", 8));
    const DialogUnits u9 = DialogUnits::FromFont(QFont("Arial", 9));
    const DialogUnits u10 = DialogUnits::FromFont(QFont("Arial", 10));
    EXPECT_EQ(6, u8.baseX);
    EXPECT_EQ(12, u8.baseY);
    EXPECT_EQ(7, u9.baseX);
    EXPECT_EQ(14, u9.baseY);
    EXPECT_EQ(8, u10.baseX);
    EXPECT_EQ(15, u10.baseY);
}

TEST(DialogUnits, ControlAtSevenEightInArialTenMapsToExactPixels)
{
    CDialog dlg(ReasonPanelTemplate());
    // 7,8 79x14 dialog units: x 7*8/4, y 8*15/8, cx 79*8/4, cy 14*15/8 (26.25).
    EXPECT_EQ(QRect(14, 15, 158, 26), dlg.GetDlgItem(IDC_LABEL)->geometry());
    // 7,35 224x65: 14, 65.625 -> 66, 448, 121.875 -> 122.
    EXPECT_EQ(QRect(14, 66, 448, 122), dlg.GetDlgItem(IDC_REASON_EDIT)->geometry());
    // Client area 238 x 130.
    EXPECT_EQ(QSize(476, 244), dlg.size());
}

TEST(DialogUnits, MapDialogRectMapsEachEdge)
{
    CDialog dlg(ReasonPanelTemplate());
    CRect r(7, 8, 7 + 79, 8 + 14);
    dlg.MapDialogRect(r);
    EXPECT_EQ(CRect(14, 15, 172, 41), r);
    EXPECT_EQ(8, dlg.Units().baseX);
    EXPECT_EQ(15, dlg.Units().baseY);
}

TEST(DialogUnits, ArialEightAndNineGiveTheirOwnPixels)
{
    DialogTemplate tpl = ReasonPanelTemplate();
    tpl.fontPointSize = 8;
    CDialog eight(tpl);
    EXPECT_EQ(QRect(11, 12, 119, 21), eight.GetDlgItem(IDC_LABEL)->geometry()); // 10.5->11, 12, 118.5->119, 21
    tpl.fontPointSize = 9;
    CDialog nine(tpl);
    EXPECT_EQ(QRect(12, 14, 138, 25), nine.GetDlgItem(IDC_LABEL)->geometry()); // 12.25, 14, 138.25, 24.5->25
}

TEST(DialogTemplate, ComboHeightIsTheFieldNotTheDroppedList)
{
    CDialog dlg(ReasonPanelTemplate());
    auto* cb = dlg.GetDlgItemAs<CComboBox>(IDC_REASONS);
    EXPECT_EQ(176, cb->x());
    EXPECT_EQ(286, cb->width());
    EXPECT_LT(cb->height(), 40);
    EXPECT_GT(cb->maxVisibleItems(), 3);
}

TEST(DialogTemplate, PreprocessorChangesTheTemplateBeforeTheBuild)
{
    PreprocessorGuard guard;
    std::vector<std::string> seen;
    SetDialogTemplatePreprocessor([&](DialogTemplate& tpl) {
        seen.push_back(tpl.caption.str());
        // What the module does on a 144 dpi screen: 10 * 96 / 144.
        tpl.fontPointSize = tpl.fontPointSize * 96 / 144;
    });
    CDialog dlg(ReasonPanelTemplate());
    ASSERT_EQ(1u, seen.size());
    EXPECT_EQ("Detach Study", seen[0]);
    EXPECT_EQ(6, dlg.Template().fontPointSize);
    EXPECT_EQ(6, dlg.font().pointSize());
    EXPECT_EQ(DialogUnits::FromFont(QFont("Arial", 6)).baseX, dlg.Units().baseX);
    EXPECT_NE(8, dlg.Units().baseX);
    const DialogUnits u6 = DialogUnits::FromFont(QFont("Arial", 6));
    EXPECT_EQ(u6.ToPixelsX(79), dlg.GetDlgItem(IDC_LABEL)->width());
}

TEST(DialogTemplate, PreprocessorCanBeReplacedAndRemoved)
{
    PreprocessorGuard guard;
    int first = 0;
    SetDialogTemplatePreprocessor([&](DialogTemplate&) { ++first; });
    const DialogTemplatePreprocessor previous = SetDialogTemplatePreprocessor({});
    ASSERT_TRUE(previous);
    CDialog dlg(ReasonPanelTemplate());
    EXPECT_EQ(0, first);
    EXPECT_EQ(10, dlg.font().pointSize());
}

TEST(DialogTemplate, AnUnknownControlKindFailsLoudly)
{
    DialogTemplate tpl = ReasonPanelTemplate();
    tpl.controls.push_back({2001, "IDC_DATETIME", static_cast<ControlKind>(99), "", 0, 0, 10, 10});
    try {
        CDialog dlg(tpl);
        FAIL() << "an unknown control kind was built";
    } catch (const std::logic_error& e) {
        const std::string what = e.what();
        EXPECT_NE(std::string::npos, what.find("IDC_DATETIME")) << what;
        EXPECT_NE(std::string::npos, what.find("2001")) << what;
        EXPECT_NE(std::string::npos, what.find("kind 99")) << what;
    }
}

TEST(DialogTemplate, AnUnregisteredControlClassFailsLoudly)
{
    DialogTemplate tpl = ReasonPanelTemplate();
    tpl.controls.push_back({2002, "IDC_PICKER", ControlKind::Custom, "", 0, 0, 10, 10, 0, "NoSuchPicker"});
    EXPECT_THROW(CDialog dlg(tpl), std::logic_error);
}

TEST(DialogTemplate, RegisteredControlClassesBuildCustomControls)
{
    ASSERT_TRUE(RegisterControlClass("TestPicker", [](QWidget* parent, const DialogControl& c) {
        auto* w = new CStatic(parent);
        w->SetWindowText("picker:" + c.text);
        return w;
    }));
    EXPECT_FALSE(RegisterControlClass("TestPicker", [](QWidget*, const DialogControl&) { return nullptr; }));
    DialogTemplate tpl = ReasonPanelTemplate();
    tpl.controls.push_back({2003, "IDC_PICKER", ControlKind::Custom, "x", 7, 8, 79, 14, 0, "TestPicker"});
    CDialog dlg(tpl);
    auto* picker = dlg.GetDlgItemAs<CStatic>(2003);
    ASSERT_NE(nullptr, picker);
    EXPECT_STREQ("picker:x", picker->GetWindowText());
    EXPECT_EQ(QRect(14, 15, 158, 26), picker->geometry());
    EXPECT_TRUE(UnregisterControlClass("TestPicker"));
    EXPECT_FALSE(IsControlClassRegistered("TestPicker"));
    EXPECT_THROW(CDialog again(tpl), std::logic_error);
}

TEST(DialogTemplate, ScreenshotOfASampleDialog)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray saved = qgetenv("BRAVIK_SCREENSHOTS");
    const bool keep = !saved.isEmpty(); // an outer run wants to look at the pictures
    if (!keep)
        qputenv("BRAVIK_SCREENSHOTS", dir.path().toLocal8Bit());
    const QString where = QString::fromLocal8Bit(qgetenv("BRAVIK_SCREENSHOTS"));

    ScriptedUser user;
    user.OnNextDialog(
        [](CDialog& dlg) {
            auto* reasons = dlg.GetDlgItemAs<CComboBox>(IDC_REASONS);
            reasons->InsertString(0, "Wrong patient");
            reasons->SetCurSel(0);
            dlg.SetDlgItemText(IDC_NOTE, "Reason for Detach");
            dlg.SetDlgItemText(IDC_REASON_EDIT, "Wrong patient");
            EXPECT_TRUE(SaveScreenshot(&dlg, "platform_reason_panel"));
            dlg.EndDialog(IDCANCEL);
        },
        "platform_reason_panel_initial");
    CDialog dlg(ReasonPanelTemplate());
    EXPECT_EQ(IDCANCEL, dlg.DoModal());

    const QImage shot(QDir(where).filePath("platform_reason_panel.png"));
    EXPECT_EQ(QSize(476, 244), shot.size());
    EXPECT_TRUE(QFile::exists(QDir(where).filePath("platform_reason_panel_initial.png")));
    if (!keep)
        qunsetenv("BRAVIK_SCREENSHOTS");
}

TEST(DialogTemplate, NoScreenshotWithoutTheVariable)
{
    const QByteArray saved = qgetenv("BRAVIK_SCREENSHOTS");
    qunsetenv("BRAVIK_SCREENSHOTS");
    CDialog dlg(ReasonPanelTemplate());
    EXPECT_FALSE(SaveScreenshot(&dlg, "never"));
    if (!saved.isEmpty())
        qputenv("BRAVIK_SCREENSHOTS", saved);
}
