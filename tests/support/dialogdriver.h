#pragma once

// Acts on one dialog by control id, as a user would (see uiinput.h): used in
// ScriptedUser::OnNextDialog scripts and in tests that drive a dialog or page
// directly. Every action fails the test when the user could not do it.

#include "cdialog.h"
#include "cstring.h"
#include "windefs.h"

#include <QString>

class DialogDriver
{
public:
    explicit DialogDriver(CDialog& dlg) : m_dlg(dlg) {}

    CDialog& Dialog() const { return m_dlg; }

    // The control: the dialog's own (GetDlgItem), else any descendant window
    // with that control id (a footer's button, a page's field), visible ones
    // first. ADD_FAILURE and null when there is none.
    CWnd* Item(int id) const;
    // Any descendant with that objectName (controls are named after their id's symbol).
    CWnd* Item(const char* objectName) const;
    template <class T>
    T* ItemAs(int id) const
    {
        return qobject_cast<T*>(Item(id));
    }

    // Types at the caret / replaces all text of an edit or editable combo box.
    bool Type(int id, const QString& text);
    bool ReplaceText(int id, const QString& text);
    // Chooses a combo-box item by index or exact text (fires selectionChanged).
    bool Choose(int comboId, int index);
    bool Choose(int comboId, const QString& itemText);
    // Ticks (or clears) a check box, clicking it only when needed.
    bool Check(int id, bool checked = true);
    // Clicks a button: IDOK / IDCANCEL / any button id.
    bool Click(int id);
    // Enter / Escape on the focused control (the dialog when nothing has focus).
    bool PressEnter();
    bool PressEscape();

    // What the user sees.
    CString Text(int id) const;
    bool IsShown(int id) const;   // not hidden within the dialog
    bool IsEnabled(int id) const;
    CString Caption() const { return m_dlg.GetWindowText(); }

    // SaveScreenshot of the dialog.
    bool Screenshot(const char* name) const;

private:
    QWidget* keyTarget() const;
    CDialog& m_dlg;
};
