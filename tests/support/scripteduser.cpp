#include "scripteduser.h"

#include "qtconvert.h"
#include "screenshot.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>

#include <exception>

namespace {

bool answerFits(UINT type, int answer)
{
    switch (type & MB_TYPEMASK) {
    case MB_OK: return answer == IDOK;
    case MB_OKCANCEL: return answer == IDOK || answer == IDCANCEL;
    case MB_ABORTRETRYIGNORE: return answer == IDABORT || answer == IDRETRY || answer == IDIGNORE;
    case MB_YESNOCANCEL: return answer == IDYES || answer == IDNO || answer == IDCANCEL;
    case MB_YESNO: return answer == IDYES || answer == IDNO;
    case MB_RETRYCANCEL: return answer == IDRETRY || answer == IDCANCEL;
    default: return true;
    }
}

std::string menuText(const CMenu& menu)
{
    std::string s;
    for (const MenuEntry& e : menu.Entries()) {
        if (!s.empty())
            s += " | ";
        s += e.IsSeparator() ? std::string("----") : std::string(e.text.GetString()) + (e.IsEnabled() ? "" : " (disabled)");
    }
    return s;
}

} // namespace

const MenuEntry* ShownMenu::Find(UINT id) const
{
    for (const MenuEntry& e : entries)
        if (!e.IsSeparator() && e.id == id)
            return &e;
    return nullptr;
}

std::vector<CString> ShownMenu::Texts() const
{
    std::vector<CString> texts;
    for (const MenuEntry& e : entries)
        if (!e.IsSeparator())
            texts.push_back(e.text);
    return texts;
}

ScriptedUser::ScriptedUser()
    : m_previousPresenter(SetMessagePresenter(this)), m_previousRunner(SetModalRunner(this)),
      m_previousMenuPresenter(SetMenuPresenter(this))
{
}

ScriptedUser::~ScriptedUser()
{
    VerifyAllConsumed();
    SetMessagePresenter(m_previousPresenter);
    SetModalRunner(m_previousRunner);
    SetMenuPresenter(m_previousMenuPresenter);
}

void ScriptedUser::VerifyAllConsumed()
{
    for (const MessageStep& s : m_messageSteps)
        ADD_FAILURE() << "An expected message box was never shown"
                      << (s.text ? std::string(": \"") + s.text->GetString() + "\"" : std::string())
                      << " (answer " << s.answer << ")";
    if (!m_dialogSteps.empty())
        ADD_FAILURE() << m_dialogSteps.size() << " scripted dialog(s) never opened";
    for (UINT id : m_menuSteps)
        ADD_FAILURE() << "A scripted popup-menu choice (" << id << ") was never used: no menu was shown";
    m_messageSteps.clear();
    m_dialogSteps.clear();
    m_menuSteps.clear();
}

void ScriptedUser::ExpectMessage(int answer) { m_messageSteps.push_back({answer, std::nullopt}); }

void ScriptedUser::ExpectMessage(const CString& text, int answer) { m_messageSteps.push_back({answer, text}); }

std::vector<CString> ScriptedUser::MessageTexts() const
{
    std::vector<CString> texts;
    for (const ShownMessage& m : m_messages)
        texts.push_back(m.text);
    return texts;
}

int ScriptedUser::Show(CWnd* owner, const CString& text, const CString& caption, UINT type)
{
    ShownMessage shown{text, caption, type, owner, IDCANCEL};
    if (m_messageSteps.empty()) {
        ADD_FAILURE() << "A message box nobody scripted was shown: \"" << text.GetString() << "\"";
    } else {
        const MessageStep step = m_messageSteps.front();
        m_messageSteps.pop_front();
        if (step.text && *step.text != text)
            ADD_FAILURE() << "Message box text differs.\n  expected: \"" << step.text->GetString()
                          << "\"\n  shown:    \"" << text.GetString() << "\"";
        if (!answerFits(type, step.answer))
            ADD_FAILURE() << "The scripted answer " << step.answer << " is not a button of the box \""
                          << text.GetString() << "\" (type 0x" << std::hex << type << std::dec << ")";
        shown.answer = step.answer;
    }
    m_messages.push_back(shown);
    return shown.answer;
}

void ScriptedUser::OnNextDialog(DialogScript script, const char* screenshotName)
{
    m_dialogSteps.push_back({std::move(script), screenshotName ? screenshotName : ""});
}

int ScriptedUser::Run(CDialog& dlg)
{
    ShownDialog shown;
    shown.className = dlg.metaObject()->className();
    if (!dlg.EnsureInitDialog()) {
        // OnInitDialog ended it: never shown, nothing for the user to do.
        shown.caption = dlg.GetWindowText();
        shown.result = dlg.GetModalResult();
        m_dialogs.push_back(shown);
        return shown.result;
    }
    shown.caption = dlg.GetWindowText();
    if (m_dialogSteps.empty()) {
        ADD_FAILURE() << "A dialog nobody scripted was opened: \"" << shown.caption.GetString() << "\" ("
                      << shown.className << ")";
        dlg.EndDialog(IDCANCEL);
        shown.result = dlg.GetModalResult();
        m_dialogs.push_back(shown);
        return shown.result;
    }
    DialogStep step = std::move(m_dialogSteps.front());
    m_dialogSteps.pop_front();

    QPointer<QWidget> previousActive = QApplication::activeWindow();
    dlg.show();
    QApplication::setActiveWindow(&dlg);
    QApplication::processEvents();
    if (!step.screenshot.empty())
        SaveScreenshot(&dlg, step.screenshot.c_str());
    try {
        step.script(dlg);
    } catch (const std::exception& e) {
        ADD_FAILURE() << "The script of dialog \"" << shown.caption.GetString() << "\" threw: " << e.what();
    } catch (...) {
        ADD_FAILURE() << "The script of dialog \"" << shown.caption.GetString() << "\" threw";
    }
    if (!dlg.HasEnded()) {
        ADD_FAILURE() << "The script of dialog \"" << shown.caption.GetString()
                      << "\" returned without ending the dialog";
        dlg.EndDialog(IDCANCEL);
    }
    dlg.hide();
    if (previousActive)
        QApplication::setActiveWindow(previousActive);
    shown.result = dlg.GetModalResult();
    m_dialogs.push_back(shown);
    return shown.result;
}

void ScriptedUser::ChooseNextMenu(UINT id) { m_menuSteps.push_back(id); }

UINT ScriptedUser::Track(const CMenu& menu, UINT flags, int x, int y, CWnd* owner)
{
    ShownMenu shown{menu.Entries(), flags, x, y, owner, 0};
    if (m_menuSteps.empty()) {
        ADD_FAILURE() << "A popup menu nobody scripted was shown: " << menuText(menu);
    } else {
        const UINT id = m_menuSteps.front();
        m_menuSteps.pop_front();
        if (id != 0 && !menu.IsItemEnabled(id))
            ADD_FAILURE() << "The scripted menu choice " << id << " is not an enabled entry of: " << menuText(menu);
        else
            shown.choice = id;
    }
    m_menus.push_back(shown);
    return shown.choice;
}
