#pragma once

// NormalEditValidator: the toolkit's plain validator of a text field. It
// knows whether its field is required and whether blanks around the text
// count; Edit and ComboBox show the required mark from it.
//
//   NormalEditValidator(window, required, trimBlanks)
// window may be null and attached later (Edit::SetValidator attaches).
// A required field is valid when it holds text; with trimBlanks a text of
// blanks only counts as empty. A field that is not required is always valid.

#include "bravik_toolkit_export.h"

#include "cstring.h"
#include "cwnd.h"

class BRAVIK_TOOLKIT_EXPORT NormalEditValidator
{
public:
    explicit NormalEditValidator(CWnd* window = nullptr, bool required = false, bool trimBlanks = true);
    NormalEditValidator(const NormalEditValidator&) = delete;
    NormalEditValidator& operator=(const NormalEditValidator&) = delete;
    virtual ~NormalEditValidator();

    CWnd* GetWindow() const { return m_window; }
    void Attach(CWnd* window) { m_window = window; }

    bool IsRequired() const { return m_required; }
    void SetRequired(bool required) { m_required = required; }
    bool IsTrimBlanks() const { return m_trimBlanks; }

    virtual bool IsValid(const CString& text) const;
    // Reads the attached window's text; true without a window.
    bool Validate() const;

private:
    CWnd* m_window;
    bool m_required;
    bool m_trimBlanks;
};
