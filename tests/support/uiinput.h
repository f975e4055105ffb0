#pragma once

// Acting on widgets as a user would: real key and mouse events, so the
// widgets' own signals fire (textEdited, clicked, activated ...). Each helper
// fails the current test (ADD_FAILURE) and returns false when a user could not
// do it: the control is missing, disabled, or hidden.

#include "windefs.h"

#include <QString>

class CComboBox;
class QWidget;

// Types text at the caret of an edit (CEdit, QLineEdit, QPlainTextEdit, an
// editable CComboBox). One key event per character, any Unicode included;
// "\n" is the Enter key.
bool TypeText(QWidget* target, const QString& text);
// Selects everything in the edit, then types text (an empty text deletes).
bool ReplaceText(QWidget* target, const QString& text);
// Clicks a button (CButton or any QAbstractButton) with the mouse.
bool ClickButton(QWidget* button);
// Ticks or clears a check box by clicking it when its state differs.
bool SetCheckBox(QWidget* checkBox, bool checked);
// Chooses an item from the box's list as a user would (fires selectionChanged).
bool ChooseComboItem(CComboBox* combo, int index);
bool ChooseComboItem(CComboBox* combo, const QString& itemText);
// Presses and releases a key on the widget (or the focus widget when null).
bool PressKey(QWidget* target, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// Whether a user could act on w: enabled, and not hidden within its window.
bool UserCanReach(const QWidget* w);
