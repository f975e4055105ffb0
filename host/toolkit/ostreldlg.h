#pragma once

// OstrelDlg: a modal dialog that holds a header-footer frame over its whole
// client area. The frame is made with the dialog and follows its size; the
// derived dialog gives it a header, a body and a footer in OnInitDialog
// (after calling this one, which creates the frame's window).

#include "bravik_toolkit_export.h"

#include "controlparentmodaldlg.h"

class HFDlg;

class BRAVIK_TOOLKIT_EXPORT OstrelDlg : public ControlParentModalDlg
{
    Q_OBJECT
public:
    OstrelDlg(const DialogTemplate& tpl, CWnd* parent = nullptr);
    OstrelDlg(UINT templateId, CWnd* parent = nullptr);
    // Takes ownership of frame (a tabbed frame, say); null makes a plain HFDlg.
    OstrelDlg(const DialogTemplate& tpl, HFDlg* frame, CWnd* parent = nullptr);
    ~OstrelDlg() override;

    HFDlg* GetFrame() const { return m_pFrame; }

    BOOL OnInitDialog() override;

protected:
    void OnSize(UINT type, int cx, int cy) override;

private:
    HFDlg* m_pFrame;
};
