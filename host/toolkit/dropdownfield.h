#pragma once

// A text field with a drop-down arrow beside it, as the date fields show it:
// the edit takes the room and the keyboard focus, the arrow is clicked only.

class QLineEdit;
class QToolButton;
class QWidget;

// Lays `edit` and `drop` out in `field` and makes `field` watch the edit's
// keys (its eventFilter sees them).
void LayOutDropDownField(QWidget* field, QLineEdit* edit, QToolButton* drop);
