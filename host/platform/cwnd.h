#pragma once

// Window operations on any QWidget (CWnd is QWidget). Code that holds a CWnd*
// uses the free functions: EnableWindow(GetDlgItem(IDC_X), FALSE). The
// platform's control classes and CDialog also have them as members through
// WindowOps, so ported code keeps its pCtrl->EnableWindow(FALSE) shape.

#include "bravik_platform_export.h"
#include "crect.h"
#include "cstring.h"
#include "windefs.h"

// Returns TRUE if the window was disabled before (as Windows does).
BRAVIK_PLATFORM_EXPORT BOOL EnableWindow(CWnd* w, BOOL enable = TRUE);
// SW_HIDE hides, anything else shows. Returns TRUE if it was visible before.
BRAVIK_PLATFORM_EXPORT BOOL ShowWindow(CWnd* w, int cmdShow);
// Visible on screen: the window and all its parents are shown (Windows'
// meaning). Before a dialog is shown its controls are not visible yet; use
// IsWindowHidden for "was this control hidden".
BRAVIK_PLATFORM_EXPORT BOOL IsWindowVisible(const CWnd* w);
// TRUE when the window itself was hidden (SW_HIDE or WS_HIDDEN), whatever its parents.
BRAVIK_PLATFORM_EXPORT BOOL IsWindowHidden(const CWnd* w);
BRAVIK_PLATFORM_EXPORT BOOL IsWindowEnabled(const CWnd* w);
BRAVIK_PLATFORM_EXPORT void SetFocus(CWnd* w);
BRAVIK_PLATFORM_EXPORT CWnd* GetFocus();

// Text of any window: the platform's controls, labels, buttons, line edits,
// group boxes, and a top-level window's caption.
BRAVIK_PLATFORM_EXPORT void SetWindowText(CWnd* w, const CString& text);
BRAVIK_PLATFORM_EXPORT void GetWindowText(const CWnd* w, CString& text);
BRAVIK_PLATFORM_EXPORT CString GetWindowText(const CWnd* w);

// Geometry in the parent's client coordinates (the screen for top-level windows).
BRAVIK_PLATFORM_EXPORT void MoveWindow(CWnd* w, const CRect& r, BOOL repaint = TRUE);
BRAVIK_PLATFORM_EXPORT void MoveWindow(CWnd* w, int x, int y, int width, int height, BOOL repaint = TRUE);
BRAVIK_PLATFORM_EXPORT void GetClientRect(const CWnd* w, CRect& r);
// In screen coordinates.
BRAVIK_PLATFORM_EXPORT void GetWindowRect(const CWnd* w, CRect& r);
BRAVIK_PLATFORM_EXPORT void ScreenToClient(const CWnd* w, CRect& r);
BRAVIK_PLATFORM_EXPORT void ScreenToClient(const CWnd* w, CPoint& p);
BRAVIK_PLATFORM_EXPORT void ClientToScreen(const CWnd* w, CRect& r);
BRAVIK_PLATFORM_EXPORT void ClientToScreen(const CWnd* w, CPoint& p);
BRAVIK_PLATFORM_EXPORT void Invalidate(CWnd* w, BOOL erase = TRUE);
BRAVIK_PLATFORM_EXPORT void UpdateWindow(CWnd* w);

// The control id a dialog gave the widget (0 when none).
BRAVIK_PLATFORM_EXPORT int GetDlgCtrlID(const CWnd* w);
BRAVIK_PLATFORM_EXPORT void SetDlgCtrlID(CWnd* w, int id);

// The member forms, mixed into the platform's window classes.
template <class Self>
class WindowOps
{
public:
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(self(), enable); }
    BOOL ShowWindow(int cmdShow) { return ::ShowWindow(self(), cmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(cself()); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(cself()); }
    void SetFocus() { ::SetFocus(self()); }
    void MoveWindow(const CRect& r, BOOL repaint = TRUE) { ::MoveWindow(self(), r, repaint); }
    void MoveWindow(int x, int y, int w, int h, BOOL repaint = TRUE) { ::MoveWindow(self(), x, y, w, h, repaint); }
    void GetClientRect(CRect& r) const { ::GetClientRect(cself(), r); }
    void GetWindowRect(CRect& r) const { ::GetWindowRect(cself(), r); }
    void ScreenToClient(CRect& r) const { ::ScreenToClient(cself(), r); }
    void ScreenToClient(CPoint& p) const { ::ScreenToClient(cself(), p); }
    void ClientToScreen(CRect& r) const { ::ClientToScreen(cself(), r); }
    void ClientToScreen(CPoint& p) const { ::ClientToScreen(cself(), p); }
    void Invalidate(BOOL erase = TRUE) { ::Invalidate(self(), erase); }
    void UpdateWindow() { ::UpdateWindow(self()); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(cself()); }
    CWnd* GetParent() const { return cself()->parentWidget(); }

    // The free functions stay callable unqualified from member code
    // (EnableWindow(GetDlgItem(IDC_X), FALSE)) despite the members' names.
    static BOOL EnableWindow(CWnd* w, BOOL enable = TRUE) { return ::EnableWindow(w, enable); }
    static BOOL ShowWindow(CWnd* w, int cmdShow) { return ::ShowWindow(w, cmdShow); }
    static BOOL IsWindowVisible(const CWnd* w) { return ::IsWindowVisible(w); }
    static BOOL IsWindowEnabled(const CWnd* w) { return ::IsWindowEnabled(w); }
    static void SetFocus(CWnd* w) { ::SetFocus(w); }
    static void MoveWindow(CWnd* w, const CRect& r, BOOL repaint = TRUE) { ::MoveWindow(w, r, repaint); }
    static void GetClientRect(const CWnd* w, CRect& r) { ::GetClientRect(w, r); }
    static void GetWindowRect(const CWnd* w, CRect& r) { ::GetWindowRect(w, r); }
    static int GetDlgCtrlID(const CWnd* w) { return ::GetDlgCtrlID(w); }

private:
    QWidget* self() { return static_cast<Self*>(this); }
    const QWidget* cself() const { return static_cast<const Self*>(this); }
};
