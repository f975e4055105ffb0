#include "cdialog.h"
#include "cmenu.h"
#include "scripteduser.h"
#include "testdialogs.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

namespace {

enum : UINT { ID_MERGE = 32771, ID_LINK = 32772, ID_IGNORE = 32773 };

void buildMenu(CMenu& menu)
{
    ASSERT_TRUE(menu.CreatePopupMenu());
    ASSERT_TRUE(menu.AppendMenu(MF_STRING, ID_MERGE, "Merge Patients"));
    ASSERT_TRUE(menu.AppendMenu(MF_STRING | MF_GRAYED, ID_LINK, "Link Patients"));
    ASSERT_TRUE(menu.AppendMenu(MF_SEPARATOR));
    ASSERT_TRUE(menu.AppendMenu(MF_STRING, ID_IGNORE, "Ignore"));
}

} // namespace

TEST(CMenu, EntriesAndEnabledStates)
{
    CMenu menu;
    buildMenu(menu);
    EXPECT_EQ(4, menu.GetMenuItemCount());
    EXPECT_TRUE(menu.IsItemEnabled(ID_MERGE));
    EXPECT_FALSE(menu.IsItemEnabled(ID_LINK));
    EXPECT_EQ(MF_GRAYED, menu.GetMenuState(ID_LINK));
    EXPECT_EQ(0xFFFFFFFFu, menu.GetMenuState(999));
    EXPECT_EQ(MF_ENABLED, menu.EnableMenuItem(ID_MERGE, MF_BYCOMMAND | MF_GRAYED));
    EXPECT_FALSE(menu.IsItemEnabled(ID_MERGE));
    EXPECT_EQ(MF_GRAYED, menu.EnableMenuItem(ID_LINK, MF_ENABLED));
    EXPECT_TRUE(menu.IsItemEnabled(ID_LINK));
    EXPECT_EQ(static_cast<UINT>(-1), menu.EnableMenuItem(999, MF_GRAYED));
    EXPECT_EQ(0u, menu.GetMenuItemID(2)); // separator
    CString text;
    menu.GetMenuString(3, text, MF_BYPOSITION);
    EXPECT_STREQ("Ignore", text);
}

TEST(CMenu, ScriptedChoiceIsReturnedWithReturnCmd)
{
    ScriptedUser user;
    user.ChooseNextMenu(ID_MERGE);
    CMenu menu;
    buildMenu(menu);
    QWidget owner;
    EXPECT_EQ(static_cast<BOOL>(ID_MERGE),
              menu.TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD, 100, 200, &owner));
    ASSERT_EQ(1u, user.Menus().size());
    const ShownMenu& shown = user.Menus()[0];
    EXPECT_EQ((std::vector<CString>{"Merge Patients", "Link Patients", "Ignore"}), shown.Texts());
    ASSERT_NE(nullptr, shown.Find(ID_LINK));
    EXPECT_FALSE(shown.Find(ID_LINK)->IsEnabled());
    EXPECT_TRUE(shown.Find(ID_MERGE)->IsEnabled());
    EXPECT_EQ(100, shown.x);
    EXPECT_EQ(200, shown.y);
    EXPECT_EQ(&owner, shown.owner);
    EXPECT_EQ(ID_MERGE, shown.choice);
}

TEST(CMenu, DismissingReturnsZero)
{
    ScriptedUser user;
    user.DismissNextMenu();
    CMenu menu;
    buildMenu(menu);
    EXPECT_EQ(0, menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, nullptr));
}

TEST(CMenu, WithoutReturnCmdTheCommandGoesToTheOwnerDialog)
{
    ScriptedUser user;
    user.ChooseNextMenu(ID_IGNORE);
    CDialog dlg(ReasonPanelTemplate());
    QSignalSpy spy(&dlg, &CDialog::command);
    CMenu menu;
    buildMenu(menu);
    EXPECT_EQ(TRUE, menu.TrackPopupMenu(TPM_LEFTALIGN, 0, 0, &dlg));
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(static_cast<int>(ID_IGNORE), spy.at(0).at(0).toInt());
}

TEST(CMenu, WithoutReturnCmdACommandHandlerGetsTheChoice)
{
    ScriptedUser user;
    user.ChooseNextMenu(ID_MERGE);
    CMenu menu;
    buildMenu(menu);
    UINT got = 0;
    menu.SetCommandHandler([&](UINT id) { got = id; });
    EXPECT_EQ(TRUE, menu.TrackPopupMenu(0, 0, 0, nullptr));
    EXPECT_EQ(ID_MERGE, got);
}

TEST(CMenu, ChoosingAGreyedEntryFailsTheTestAndChoosesNothing)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            user.ChooseNextMenu(ID_LINK);
            CMenu menu;
            buildMenu(menu);
            EXPECT_EQ(0, menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, nullptr));
        },
        "is not an enabled entry");
}

TEST(CMenu, AnUnscriptedMenuFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            CMenu menu;
            buildMenu(menu);
            EXPECT_EQ(0, menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, nullptr));
        },
        "A popup menu nobody scripted was shown: Merge Patients | Link Patients (disabled) | ---- | Ignore");
}
