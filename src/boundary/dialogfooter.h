#pragma once

// DialogFooter: the module's footer band with OK and Cancel, right-aligned.
// OK calls the owner dialog's OnOK (which validates and saves); Cancel ends
// the owner at once with IDCANCEL. Cancel deliberately bypasses the owner's
// OnCancel: a dialog that must act on cancel does so when it ends.

#include "bravik_export.h"

#include "basetabfooter.h"
#include "cstring.h"
#include "xpbutton.h"

class CDialog;

class BRAVIK_EXPORT DialogFooter : public BaseTabFooter
{
    Q_OBJECT
public:
    explicit DialogFooter(CDialog* owner);
    ~DialogFooter() override;

    void SetOwner(CDialog* owner) { m_pOwner = owner; }
    CDialog* GetOwner() const { return m_pOwner; }

    // The button texts; they apply at once when the buttons exist.
    void SetOKText(const CString& text);
    void SetCancelText(const CString& text);
    const CString& GetOKText() const { return m_strOK; }
    const CString& GetCancelText() const { return m_strCancel; }

    XPButton& GetCancelButton() { return m_btnCancel; }

    // Cancel at right - w - 7, OK 7 pixels to its left, both 5 pixels above
    // the vertical centre and 2 * (h / 2) high. Nothing before Cancel exists.
    void RecalcLayout(const CRect& client) override;

protected:
    BOOL CreateButtons() override;
    void OnCommand(UINT id) override;
    virtual void OnOK();
    virtual void OnCancel();

private:
    CString m_strOK;
    CString m_strCancel;
    XPButton m_btnCancel;
    CDialog* m_pOwner;
};
