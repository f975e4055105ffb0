// The host registers the picker control class through the module.
#include "boundary/bravikmodulestate.h"
#include "boundary/registercontrols.h"

#include "cdialog.h"
#include "dialogtemplate.h"
#include "modulestate.h"
#include "picker.h"
#include "toolkitnotify.h"
#include "windowmessage.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr int IDC_SAMPLE_PICKER = 900;

DialogTemplate PickerTemplate()
{
    DialogTemplate tpl;
    tpl.caption = "Pick";
    tpl.cx = 160;
    tpl.cy = 40;
    DialogControl c{IDC_SAMPLE_PICKER, "IDC_SAMPLE_PICKER", ControlKind::Custom, "", 7, 7, 140, 14};
    c.className = Picker::ClassName;
    tpl.controls.push_back(c);
    return tpl;
}

class RegisterControlsTest : public ::testing::Test
{
protected:
    void TearDown() override
    {
        while (TavCreator::RegisterControls::UnRegisterPicker())
            ;
    }
};

TEST_F(RegisterControlsTest, RegisterPickerMakesTemplatesBuildPickers)
{
    EXPECT_FALSE(Picker::IsRegistered());
    TavCreator::RegisterControls::RegisterPicker();
    EXPECT_TRUE(Picker::IsRegistered());
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());

    CDialog dlg(PickerTemplate());
    auto* picker = qobject_cast<Picker*>(dlg.GetDlgItem(IDC_SAMPLE_PICKER));
    ASSERT_NE(nullptr, picker);
    EXPECT_EQ(QStringLiteral("IDC_SAMPLE_PICKER"), picker->objectName());
}

TEST_F(RegisterControlsTest, UnRegisterPickerReturnsTheToolkitsResult)
{
    TavCreator::RegisterControls registration;
    registration.RegisterPicker();
    EXPECT_EQ(TRUE, registration.UnRegisterPicker());
    EXPECT_FALSE(Picker::IsRegistered());
    // Nothing left to unregister.
    EXPECT_EQ(FALSE, registration.UnRegisterPicker());
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());

    // Without the class a template that places a picker cannot be built.
    EXPECT_THROW(CDialog dlg(PickerTemplate()), std::logic_error);
}

TEST_F(RegisterControlsTest, RegisteringTwiceKeepsOneRegistration)
{
    TavCreator::RegisterControls::RegisterPicker();
    TavCreator::RegisterControls::RegisterPicker();
    EXPECT_EQ(TRUE, TavCreator::RegisterControls::UnRegisterPicker());
    EXPECT_EQ(FALSE, TavCreator::RegisterControls::UnRegisterPicker());
}

TEST_F(RegisterControlsTest, TheModuleCannotUnregisterAnotherModulesPicker)
{
    ModuleState other("other");
    ASSERT_EQ(TRUE, Picker::Register(&other));
    EXPECT_EQ(FALSE, TavCreator::RegisterControls::UnRegisterPicker());
    EXPECT_TRUE(Picker::IsRegistered());
    EXPECT_EQ(TRUE, Picker::UnRegister(&other));
}

TEST_F(RegisterControlsTest, PickerReportsPickAndResolveToItsParent)
{
    TavCreator::RegisterControls::RegisterPicker();
    CDialog dlg(PickerTemplate());
    auto* picker = qobject_cast<Picker*>(dlg.GetDlgItem(IDC_SAMPLE_PICKER));
    ASSERT_NE(nullptr, picker);

    std::vector<UINT> codes;
    std::vector<UINT> ids;
    InstallMessageHandler(&dlg, ToolkitNotifyMessage(), [&](WPARAM, LPARAM lParam) -> LRESULT {
        if (const NMHDR* hdr = NotifyHeaderFrom(ToolkitNotifyMessage(), lParam)) {
            codes.push_back(hdr->code);
            ids.push_back(hdr->idFrom);
        }
        return 0;
    });

    QSignalSpy picks(picker, &Picker::pickRequested);
    QSignalSpy resolves(picker, &Picker::resolveRequested);
    picker->PickButton()->click();
    EXPECT_EQ(1, picks.count());

    picker->Edit()->setFocus();
    QTest::keyClicks(picker->Edit(), "CT");
    QTest::keyClick(picker->Edit(), Qt::Key_Return);
    EXPECT_EQ(1, resolves.count());
    EXPECT_EQ(CString("CT"), picker->GetWindowText());

    QTest::keyClick(picker->Edit(), Qt::Key_F4);
    EXPECT_EQ(2, picks.count());

    ASSERT_EQ(3u, codes.size());
    EXPECT_EQ(Picker::PKN_PICK, codes[0]);
    EXPECT_EQ(Picker::PKN_RESOLVE, codes[1]);
    EXPECT_EQ(Picker::PKN_PICK, codes[2]);
    EXPECT_EQ(static_cast<UINT>(IDC_SAMPLE_PICKER), ids[0]);
}

TEST_F(RegisterControlsTest, RequiredPickerIsMarkedWhileEmpty)
{
    Picker picker;
    picker.SetRequiredFlag(true);
    EXPECT_TRUE(picker.GetRequiredFlag());
    EXPECT_TRUE(picker.Edit()->property("required").toBool());
    picker.SetWindowText("MR");
    EXPECT_FALSE(picker.Edit()->property("required").toBool());
    picker.SetReadOnly(true);
    EXPECT_FALSE(picker.PickButton()->isEnabled());
}

} // namespace
