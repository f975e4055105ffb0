#pragma once

// The toolkit's push button. A click is sent to the parent as the button's
// command (CommandEvent with its control id), as a dialog button would; a
// key pressed on it is reported first as a BNM_KEYDOWN notification (NMKEY,
// see toolkitnotify.h). When the parent answers non-zero the key is
// consumed, so a page can, for instance, take Tab to move the focus its own
// way.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QPushButton>

class BRAVIK_TOOLKIT_EXPORT Button : public QPushButton, public WindowOps<Button>
{
    Q_OBJECT
public:
    // The registered notification code of a key going down on the button.
    static const UINT BNM_KEYDOWN;

    explicit Button(QWidget* parent = nullptr);

    BOOL Create(const CString& text, DWORD style, const CRect& rect, CWnd* parent, UINT id);
    void SetWindowText(const CString& text);
    CString GetWindowText() const;
    // The size that shows the text with the usual margins.
    CSize GetIdealSize() const;

signals:
    void keyDown(UINT virtualKey);

protected:
    bool event(QEvent* e) override;

private:
    void onClicked();
};
