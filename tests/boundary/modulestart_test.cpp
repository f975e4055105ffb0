// Module start: the density rule, the dialog manager's font rescaling, the
// application's look-and-feel answers and the unlink question.
#include "boundary/bravikapp.h"
#include "boundary/bravikmodulestate.h"
#include "boundary/cdlgoccmanager.h"
#include "boundary/detachstudyparamdlgcreator.h"

#include "scripteduser.h"
#include "dialogdriver.h"
#include "stubservices.h"
#include "scopedservices.h"

#include "basewinapp.h"
#include "cdialog.h"
#include "coccmanager.h"
#include "cwinapp.h"
#include "modulestate.h"
#include "screen.h"

#include <gtest/gtest.h>

namespace {

DialogTemplate Template(int points)
{
    DialogTemplate tpl;
    tpl.caption = "Sample";
    tpl.cx = 120;
    tpl.cy = 60;
    tpl.fontFace = "Arial";
    tpl.fontPointSize = points;
    tpl.controls = {{IDOK, "IDOK", ControlKind::DefPushButton, "OK", 10, 40, 50, 14}};
    return tpl;
}

class ModuleStart : public ::testing::Test
{
protected:
    void TearDown() override
    {
        AfxEnableControlContainer(nullptr);
        ClearScreenDpiOverride();
    }
};

TEST_F(ModuleStart, StandardDensityInstallsNoManagerAndKeepsTemplateFonts)
{
    SetScreenDpiOverride(96);
    CBravikApp app;
    EXPECT_EQ(1, app.InitInstance());
    EXPECT_EQ(nullptr, app.GetDlgOccManager());
    EXPECT_FALSE(AfxHasCustomOccManager());

    CDialog dlg(Template(8));
    EXPECT_EQ(8, dlg.Template().fontPointSize);
    EXPECT_EQ(8, dlg.font().pointSize());
    EXPECT_EQ(CString("Arial"), dlg.Template().fontFace);
}

TEST_F(ModuleStart, DenseScreenRescalesAnEightPointFontToSix)
{
    SetScreenDpiOverride(120);
    CBravikApp app;
    EXPECT_EQ(1, app.InitInstance());
    ASSERT_NE(nullptr, app.GetDlgOccManager());
    EXPECT_EQ(static_cast<COccManager*>(app.GetDlgOccManager()), AfxGetOccManager());

    // 8 x 96 / 120 = 6.4, truncated.
    CDialog dlg(Template(8));
    EXPECT_EQ(6, dlg.Template().fontPointSize);
    EXPECT_EQ(6, dlg.font().pointSize());
    EXPECT_EQ(CString("Arial"), dlg.Template().fontFace);
}

TEST_F(ModuleStart, NinetySevenIsTheFirstDensityThatRescales)
{
    SetScreenDpiOverride(97);
    CBravikApp app;
    app.InitInstance();
    ASSERT_NE(nullptr, app.GetDlgOccManager());
    CDialog dlg(Template(8));
    // 768 / 97 = 7.9, truncated.
    EXPECT_EQ(7, dlg.Template().fontPointSize);
}

TEST_F(ModuleStart, DensityRescalingTruncatesTowardZero)
{
    SetScreenDpiOverride(144);
    CBravikApp app;
    app.InitInstance();
    EXPECT_EQ(5, CDialog(Template(8)).Template().fontPointSize);   // 5.33
    EXPECT_EQ(10, CDialog(Template(15)).Template().fontPointSize); // 10.0
    EXPECT_EQ(6, CDialog(Template(10)).Template().fontPointSize);  // 6.67
}

TEST_F(ModuleStart, NoScreenDensityInstallsNoManager)
{
    SetScreenDpiOverride(-1);
    CBravikApp app;
    EXPECT_EQ(1, app.InitInstance());
    EXPECT_EQ(nullptr, app.GetDlgOccManager());
    EXPECT_EQ(9, CDialog(Template(9)).Template().fontPointSize);
}

TEST_F(ModuleStart, ManagerTakesStandardDensityWhenTheScreenCannotBeReadLater)
{
    SetScreenDpiOverride(120);
    CBravikApp app;
    app.InitInstance();
    ASSERT_NE(nullptr, app.GetDlgOccManager());

    SetScreenDpiOverride(-1);
    EXPECT_EQ(8, CDialog(Template(8)).Template().fontPointSize);
    SetScreenDpiOverride(192);
    EXPECT_EQ(4, CDialog(Template(8)).Template().fontPointSize);
}

TEST_F(ModuleStart, ManagerRescalesTheTemplateItIsGiven)
{
    SetScreenDpiOverride(120);
    CDlgOccManager manager;
    DialogTemplate tpl = Template(8);
    DialogTemplate* result = manager.PreCreateDialog(&tpl);
    EXPECT_EQ(&tpl, result);
    EXPECT_EQ(6, tpl.fontPointSize);
    EXPECT_EQ(CString("Arial"), tpl.fontFace);
}

TEST_F(ModuleStart, ModuleDialogsAreRescaledOnDenseScreens)
{
    SetScreenDpiOverride(120);
    CBravikApp app;
    app.InitInstance();

    StubDictionaryService dictionaries;
    ScopedServices services(nullptr, nullptr, &dictionaries);
    ScriptedUser user;
    int panelPoints = 0;
    int outerPoints = 0;
    user.OnNextDialog([&](CDialog& dlg) {
        outerPoints = dlg.Template().fontPointSize;
        // The reason panel is built from the module's own template (Arial 10).
        for (CDialog* child : dlg.findChildren<CDialog*>())
            if (child->Template().fontFace == CString("Arial") && child->Template().cx == 238)
                panelPoints = child->Template().fontPointSize;
        dlg.OnCancel();
    });
    TavCreator::DetachStudyParamDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayModal("Detach", "ACC1", nullptr));
    EXPECT_EQ(8, panelPoints); // 10 x 96 / 120
    EXPECT_GT(outerPoints, 0);
}

TEST_F(ModuleStart, ReplacesTheManagerWhenStartedAgain)
{
    SetScreenDpiOverride(120);
    CBravikApp app;
    app.InitInstance();
    ASSERT_NE(nullptr, app.GetDlgOccManager());
    SetScreenDpiOverride(96);
    app.InitInstance();
    EXPECT_EQ(nullptr, app.GetDlgOccManager());
    EXPECT_FALSE(AfxHasCustomOccManager());
    EXPECT_EQ(8, CDialog(Template(8)).Template().fontPointSize);
}

TEST_F(ModuleStart, ManagerStepsDownWhenTheApplicationGoes)
{
    SetScreenDpiOverride(120);
    {
        CBravikApp app;
        app.InitInstance();
        ASSERT_TRUE(AfxHasCustomOccManager());
    }
    EXPECT_FALSE(AfxHasCustomOccManager());
    EXPECT_EQ(8, CDialog(Template(8)).Template().fontPointSize);
}

TEST_F(ModuleStart, ExitInstanceRemovesTheManager)
{
    SetScreenDpiOverride(120);
    CBravikApp app;
    app.InitInstance();
    EXPECT_EQ(0, app.ExitInstance());
    EXPECT_FALSE(AfxHasCustomOccManager());
    EXPECT_EQ(8, CDialog(Template(8)).Template().fontPointSize);
}

TEST_F(ModuleStart, InitialisesTheToolkitResourcesForTheModule)
{
    SetScreenDpiOverride(96);
    CBravikApp app;
    app.InitInstance();
    EXPECT_EQ(&BravikModuleState(), BaseWinApp::ResourceModule());
    EXPECT_EQ(&BravikModuleState(), app.m_hInstance);
}

TEST_F(ModuleStart, TheModulesApplicationStartsWithTheHost)
{
    SetScreenDpiOverride(96);
    CBravikApp& module = BravikApp();
    EXPECT_FALSE(module.IsStarted());
    EXPECT_EQ(0, AfxStartModules());
    EXPECT_TRUE(module.IsStarted());
    EXPECT_EQ(&BravikModuleState(), module.m_hInstance);
    AfxStopModules();
    EXPECT_FALSE(module.IsStarted());
}

TEST(BravikAppFlags, SevenOverridesAnswerFromTheFlagsWord)
{
    CBravikApp app;
    UIWinApp& base = app;
    EXPECT_EQ(5000u, base.GetToolTipDisplayTime());
    EXPECT_EQ(1u, base.UseFlatButtons());
    EXPECT_EQ(2u, base.UseGradientHeaders());
    EXPECT_EQ(4u, base.UseStripedLists());
    EXPECT_EQ(8u, base.UseHotTracking());
    EXPECT_EQ(16u, base.UseKeyboardCues());
    EXPECT_EQ(32u, base.UseHeaderIcons());

    app.SetUIFlags(UIF_STRIPED_LISTS | UIF_HEADER_ICONS);
    EXPECT_EQ(5000u, base.GetToolTipDisplayTime());
    EXPECT_EQ(0u, base.UseFlatButtons());
    EXPECT_EQ(0u, base.UseGradientHeaders());
    EXPECT_EQ(4u, base.UseStripedLists());
    EXPECT_EQ(0u, base.UseHotTracking());
    EXPECT_EQ(0u, base.UseKeyboardCues());
    EXPECT_EQ(32u, base.UseHeaderIcons());
}

TEST(BravikAppFlags, TheToolkitBaseAnswersWithItsPlainLook)
{
    UIWinApp plain;
    EXPECT_EQ(3000u, plain.GetToolTipDisplayTime());
    EXPECT_EQ(0u, plain.UseFlatButtons() | plain.UseGradientHeaders() | plain.UseStripedLists() |
                      plain.UseHotTracking() | plain.UseKeyboardCues() | plain.UseHeaderIcons());
}

TEST(BravikAppTexts, UnlinkConfirmationText)
{
    EXPECT_EQ(CString("Are you sure you want to remove the current link for the patient?"),
              CBravikApp::GetUnlinkPatientConfirmationMsg());
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
}

} // namespace
