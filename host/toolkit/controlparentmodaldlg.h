#pragma once

// ControlParentModalDlg: a modal dialog whose controls live in child windows
// (a frame, its bands and an inner panel) rather than in its own template.
// Keyboard navigation crosses into those children, Enter and Escape from a
// child panel come back here, and every resize arrives at OnSize so the
// dialog can lay its children out.

#include "bravik_toolkit_export.h"

#include "cdialog.h"

constexpr UINT SIZE_RESTORED_DLG = 0;

class BRAVIK_TOOLKIT_EXPORT ControlParentModalDlg : public CDialog
{
    Q_OBJECT
public:
    ControlParentModalDlg(const DialogTemplate& tpl, CWnd* parent = nullptr);
    ControlParentModalDlg(UINT templateId, CWnd* parent = nullptr);
    ~ControlParentModalDlg() override;

protected:
    explicit ControlParentModalDlg(CWnd* parent);

    virtual void OnSize(UINT type, int cx, int cy);
    void resizeEvent(QResizeEvent* event) override;
};
