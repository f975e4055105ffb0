#pragma once

// ScrollEdit: a multi-line edit for free texts (history, comments): words
// wrap, a vertical scroll bar appears when the text grows past the box, Enter
// starts a new line, and the text is held to a limit in characters, for
// typing and pasting alike. Templates place it as a Custom control of class
// ScrollEdit::ClassName, registered when the toolkit loads (Register() puts
// it back after a test unregistered it).

#include "bravik_toolkit_export.h"

#include "cedit.h"

class BRAVIK_TOOLKIT_EXPORT ScrollEdit : public CEdit
{
    Q_OBJECT
public:
    static constexpr const char* ClassName = "BravikScrollEdit";
    static void Register();

    explicit ScrollEdit(QWidget* parent = nullptr);
    ~ScrollEdit() override;

    // 0 removes the limit. Text set by the program is cut to the limit too,
    // so what the box shows is what will be saved.
    void SetTextLimit(UINT maxChars);
    UINT GetTextLimit() const { return GetLimitText(); }
    void SetText(const CString& text);
};
