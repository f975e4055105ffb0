#pragma once

// The scripted user: plays the user's part in a test. One per test, on the
// stack; it installs itself as the message presenter, modal runner and menu
// presenter, and restores the previous ones when it goes.
//
//   ScriptedUser user;
//   user.ExpectMessage("Are you sure you want to detach this study? You cannot undo this operation.", IDYES);
//   user.OnNextDialog([](CDialog& dlg) {
//       DialogDriver d(dlg);
//       d.ReplaceText(IDC_REASON_EDIT, "Wrong patient");
//       d.Click(IDOK);
//   });
//   EXPECT_EQ(IDOK, creator.DisplayModal(...));
//   EXPECT_EQ(1u, user.Messages().size());
//
// Message boxes are answered from a queue, in order; every box shown is
// recorded (text, caption, type, owner, answer). Modal dialogs run a queued
// script after OnInitDialog, while the dialog is shown; the script must end
// the dialog (Click(IDOK), Click(IDCANCEL), EndDialog ...), otherwise the test
// fails and the dialog ends with IDCANCEL. Popup menus are answered with
// queued command ids; every menu shown is recorded with its entries.
//
// Anything nobody scripted fails the test (ADD_FAILURE naming the text or
// caption) and is answered IDCANCEL / 2 / no choice. Expectations left over
// when the user goes fail the test as well.

#include "cdialog.h"
#include "cmenu.h"
#include "cstring.h"
#include "messagebox.h"
#include "modalrunner.h"
#include "windefs.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

struct ShownMessage
{
    CString text;
    CString caption;
    UINT type = 0;
    CWnd* owner = nullptr;
    int answer = 0;
};

struct ShownDialog
{
    CString caption;      // after OnInitDialog
    std::string className;
    int result = -1;
};

struct ShownMenu
{
    std::vector<MenuEntry> entries;
    UINT flags = 0;
    int x = 0;
    int y = 0;
    CWnd* owner = nullptr;
    UINT choice = 0;

    const MenuEntry* Find(UINT id) const;
    // The texts of the entries, separators left out.
    std::vector<CString> Texts() const;
};

class ScriptedUser : public MessagePresenter, public ModalRunner, public MenuPresenter
{
public:
    using DialogScript = std::function<void(CDialog&)>;

    ScriptedUser();
    ~ScriptedUser() override;
    ScriptedUser(const ScriptedUser&) = delete;
    ScriptedUser& operator=(const ScriptedUser&) = delete;

    // --- message boxes
    // The next box is answered with answer.
    void ExpectMessage(int answer = IDOK);
    // The next box must show exactly text (compared verbatim); answered with answer.
    void ExpectMessage(const CString& text, int answer = IDOK);
    void AnswerNextMessage(int answer) { ExpectMessage(answer); }
    const std::vector<ShownMessage>& Messages() const { return m_messages; }
    std::vector<CString> MessageTexts() const;

    // --- modal dialogs
    // The next dialog run modally runs script. With screenshotName, the dialog
    // is saved as a screenshot (SaveScreenshot) just before the script runs.
    void OnNextDialog(DialogScript script, const char* screenshotName = nullptr);
    const std::vector<ShownDialog>& Dialogs() const { return m_dialogs; }

    // --- popup menus
    // The next menu is answered with id (0: the user dismisses it).
    void ChooseNextMenu(UINT id);
    void DismissNextMenu() { ChooseNextMenu(0); }
    const std::vector<ShownMenu>& Menus() const { return m_menus; }

    // Fails the test for every expectation not used yet, and forgets them.
    void VerifyAllConsumed();

    // The presenter / runner interfaces.
    int Show(CWnd* owner, const CString& text, const CString& caption, UINT type) override;
    int Run(CDialog& dlg) override;
    UINT Track(const CMenu& menu, UINT flags, int x, int y, CWnd* owner) override;

private:
    struct MessageStep
    {
        int answer;
        std::optional<CString> text;
    };
    struct DialogStep
    {
        DialogScript script;
        std::string screenshot;
    };

    std::deque<MessageStep> m_messageSteps;
    std::deque<DialogStep> m_dialogSteps;
    std::deque<UINT> m_menuSteps;
    std::vector<ShownMessage> m_messages;
    std::vector<ShownDialog> m_dialogs;
    std::vector<ShownMenu> m_menus;

    MessagePresenter* m_previousPresenter;
    ModalRunner* m_previousRunner;
    MenuPresenter* m_previousMenuPresenter;
};
