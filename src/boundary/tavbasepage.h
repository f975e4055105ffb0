#pragma once

// TavBasePage: a page of the module's tabbed dialogs. It wraps one inner
// dialog that holds the page's fields and keeps it filling the page on every
// resize. Pages that need margins or scrolling override LayoutInnerDialog.

#include "bravik_export.h"

#include "basepage.h"
#include "crect.h"

class CDialog;

class BRAVIK_EXPORT TavBasePage : public BasePage
{
    Q_OBJECT
public:
    TavBasePage();
    ~TavBasePage() override;

    CDialog* GetInnerDialog() const { return m_pInnerDlg; }

    // Moves the inner dialog to rect; nothing while it has no window of its
    // own inside the page (not made yet, or not created as a child).
    virtual void LayoutInnerDialog(const CRect& rect);

protected:
    void OnSize(UINT type, int cx, int cy) override;
    // For pages whose inner dialog is made with the page: creates the page,
    // then the inner dialog as its child, filling it.
    BOOL CreateWithInnerDialog(CWnd* parent, const CRect& rect, UINT id);

    // Not owned.
    CDialog* m_pInnerDlg = nullptr;
};
