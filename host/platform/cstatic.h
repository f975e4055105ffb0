#pragma once

// CStatic: static text over QLabel. Like a Windows static it draws its text
// top-left aligned and word-wrapped (SS_CENTER / SS_RIGHT / SS_CENTERIMAGE
// change that), and a single '&' marks a mnemonic and is not shown ("&&"
// shows one '&') unless SS_NOPREFIX. GetWindowText returns the text as set.

#include "bravik_platform_export.h"
#include "cstring.h"
#include "controlstyles.h"
#include "cwnd.h"
#include "windefs.h"

#include <QLabel>

class BRAVIK_PLATFORM_EXPORT CStatic : public QLabel, public WindowOps<CStatic>
{
    Q_OBJECT
public:
    explicit CStatic(QWidget* parent = nullptr);

    void SetWindowText(const CString& text);
    void GetWindowText(CString& text) const { text = m_raw; }
    CString GetWindowText() const { return m_raw; }

    void SetNoPrefix(bool on);
    void ApplyStyle(DWORD style);

private:
    CString m_raw;
    bool m_noPrefix = false;
};
