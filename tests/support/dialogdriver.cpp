#include "dialogdriver.h"

#include "ccombobox.h"
#include "screenshot.h"
#include "uiinput.h"

#include <gtest/gtest.h>

#include <QApplication>

CWnd* DialogDriver::Item(int id) const
{
    CWnd* w = m_dlg.GetDlgItem(id);
    if (!w) {
        // Framed dialogs keep some controls in child windows (a footer's
        // buttons, a page's fields): any descendant with that control id,
        // preferring one the user can see.
        for (QWidget* child : m_dlg.findChildren<QWidget*>()) {
            if (GetDlgCtrlID(child) != id)
                continue;
            if (child->isVisibleTo(&m_dlg)) {
                w = child;
                break;
            }
            if (!w)
                w = child;
        }
    }
    if (!w)
        ADD_FAILURE() << "Dialog \"" << m_dlg.GetWindowText().GetString() << "\" has no control with id " << id;
    return w;
}

CWnd* DialogDriver::Item(const char* objectName) const
{
    CWnd* w = m_dlg.findChild<QWidget*>(QString::fromUtf8(objectName));
    if (!w)
        ADD_FAILURE() << "Dialog \"" << m_dlg.GetWindowText().GetString() << "\" has no control named " << objectName;
    return w;
}

bool DialogDriver::Type(int id, const QString& text)
{
    CWnd* w = Item(id);
    return w && TypeText(w, text);
}

bool DialogDriver::ReplaceText(int id, const QString& text)
{
    CWnd* w = Item(id);
    return w && ::ReplaceText(w, text);
}

bool DialogDriver::Choose(int comboId, int index)
{
    CWnd* w = Item(comboId);
    if (!w)
        return false;
    auto* cb = qobject_cast<CComboBox*>(w);
    if (!cb) {
        ADD_FAILURE() << "Control " << comboId << " is not a combo box";
        return false;
    }
    return ChooseComboItem(cb, index);
}

bool DialogDriver::Choose(int comboId, const QString& itemText)
{
    CWnd* w = Item(comboId);
    if (!w)
        return false;
    auto* cb = qobject_cast<CComboBox*>(w);
    if (!cb) {
        ADD_FAILURE() << "Control " << comboId << " is not a combo box";
        return false;
    }
    return ChooseComboItem(cb, itemText);
}

bool DialogDriver::Check(int id, bool checked)
{
    CWnd* w = Item(id);
    return w && SetCheckBox(w, checked);
}

bool DialogDriver::Click(int id)
{
    CWnd* w = Item(id);
    return w && ClickButton(w);
}

QWidget* DialogDriver::keyTarget() const
{
    QWidget* f = QApplication::focusWidget();
    if (f && (f == &m_dlg || m_dlg.isAncestorOf(f)))
        return f;
    return &m_dlg;
}

bool DialogDriver::PressEnter() { return PressKey(keyTarget(), Qt::Key_Return); }
bool DialogDriver::PressEscape() { return PressKey(keyTarget(), Qt::Key_Escape); }

CString DialogDriver::Text(int id) const
{
    const CWnd* w = Item(id);
    return w ? ::GetWindowText(w) : CString();
}

bool DialogDriver::IsShown(int id) const
{
    const CWnd* w = Item(id);
    return w && w->isVisibleTo(&m_dlg);
}

bool DialogDriver::IsEnabled(int id) const
{
    const CWnd* w = Item(id);
    return w && w->isEnabled();
}

bool DialogDriver::Screenshot(const char* name) const { return SaveScreenshot(&m_dlg, name); }
