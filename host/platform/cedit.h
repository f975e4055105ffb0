#pragma once

// CEdit: an edit control. One class for both shapes so dialog code can say
// GetDlgItemAs<CEdit>(id) without knowing which it is: a single-line edit
// holds a QLineEdit, a multi-line edit (ControlKind::MultiLineEdit) a
// QPlainTextEdit. The inner editor fills the CEdit and takes its focus; reach
// it through lineEdit() / textEdit() / editor() for what only Qt offers.
//
// Texts are UTF-8 CStrings; line breaks are "\n" ("\r\n" given to
// SetWindowText becomes "\n"). Positions (SetSel) count UTF-16 units, as Qt does.
//
// Signals stand for the edit notifications: changed() (EN_CHANGE) after any
// change of the text, by the user or by SetWindowText; edited() only for the
// user's changes; gotFocus() / lostFocus() (EN_SETFOCUS / EN_KILLFOCUS).

#include "bravik_platform_export.h"
#include "cstring.h"
#include "controlstyles.h"
#include "cwnd.h"
#include "windefs.h"

#include <QWidget>

class QLineEdit;
class QPlainTextEdit;

class BRAVIK_PLATFORM_EXPORT CEdit : public QWidget, public WindowOps<CEdit>
{
    Q_OBJECT
public:
    explicit CEdit(QWidget* parent = nullptr, bool multiLine = false);
    ~CEdit() override;

    bool IsMultiLine() const { return m_text != nullptr; }
    QLineEdit* lineEdit() const { return m_line; }      // null for a multi-line edit
    QPlainTextEdit* textEdit() const { return m_text; } // null for a single-line edit
    QWidget* editor() const;

    void SetWindowText(const CString& text);
    void GetWindowText(CString& text) const;
    CString GetWindowText() const;
    // In UTF-8 bytes, like CString::GetLength.
    int GetWindowTextLength() const;

    // Limits what the user can type or paste, in characters (Unicode code
    // points); 0 removes the limit. SetWindowText is not limited (as on Windows).
    void SetLimitText(UINT maxChars);
    void LimitText(UINT maxChars = 0) { SetLimitText(maxChars); }
    UINT GetLimitText() const { return m_limit; }

    BOOL SetReadOnly(BOOL readOnly = TRUE);
    BOOL IsReadOnly() const;

    // start 0, end -1 selects everything; start -1 removes the selection.
    void SetSel(int start, int end, BOOL noScroll = FALSE);
    void GetSel(int& start, int& end) const;
    void ReplaceSel(const CString& text, BOOL canUndo = FALSE);
    void Clear() { ReplaceSel(CString()); }

    // Typing filters (ES_UPPERCASE, ES_LOWERCASE, ES_NUMBER), password echo,
    // and whether Enter inserts a line break in a multi-line edit (ES_WANTRETURN).
    void SetUpperCase(bool on);
    void SetLowerCase(bool on);
    void SetNumber(bool on);
    void SetPassword(bool on);
    void SetWantReturn(bool on) { m_wantReturn = on; }
    bool WantReturn() const { return m_wantReturn; }
    void SetBorder(bool on);
    // Applies the ES_* / WS_BORDER / WS_VSCROLL bits of a template style.
    void ApplyStyle(DWORD style);

    QSize sizeHint() const override;

signals:
    void changed();
    void edited();
    void gotFocus();
    void lostFocus();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString filtered(const QString& text) const;
    void onMultiLineChanged();

    QLineEdit* m_line = nullptr;
    QPlainTextEdit* m_text = nullptr;
    UINT m_limit = 0;
    bool m_upper = false;
    bool m_lower = false;
    bool m_number = false;
    bool m_wantReturn = false;
    bool m_programmatic = false;
    QString m_lastText; // multi-line: to undo a change the filters refuse
};
