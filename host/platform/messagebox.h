#pragma once

// Message boxes. Every box the module shows goes through one process-wide
// MessagePresenter: production shows a QMessageBox; the test kit installs a
// scripted user that answers from a queue and records what was shown.

#include "bravik_platform_export.h"
#include "cstring.h"
#include "windefs.h"

class BRAVIK_PLATFORM_EXPORT MessagePresenter
{
public:
    virtual ~MessagePresenter();
    // type: MB_OK / MB_OKCANCEL / MB_YESNO / MB_YESNOCANCEL ... | MB_ICON* | MB_DEFBUTTON*.
    // Returns the button pressed: IDOK, IDCANCEL, IDYES, IDNO ...
    virtual int Show(CWnd* owner, const CString& text, const CString& caption, UINT type) = 0;
};

// The production presenter: a modal QMessageBox with the buttons and icon the
// type asks for. Closing the box without a button answers IDCANCEL (IDNO for
// MB_YESNO, which has no Cancel; IDOK for MB_OK).
class BRAVIK_PLATFORM_EXPORT QtMessagePresenter : public MessagePresenter
{
public:
    int Show(CWnd* owner, const CString& text, const CString& caption, UINT type) override;
};

// Installs a presenter (null restores the production one); returns the
// previous one. The presenter is not owned.
BRAVIK_PLATFORM_EXPORT MessagePresenter* SetMessagePresenter(MessagePresenter* presenter);
BRAVIK_PLATFORM_EXPORT MessagePresenter& CurrentMessagePresenter();

// The application's box: the caption is the current module's application
// name (ModuleState::AppName), the owner the active window.
BRAVIK_PLATFORM_EXPORT int AfxMessageBox(const char* text, UINT type = MB_OK);
// The text comes from the current module's string table.
BRAVIK_PLATFORM_EXPORT int AfxMessageBox(UINT stringId, UINT type = MB_OK);
// A window's box; a null caption reads "Error", as on Windows.
BRAVIK_PLATFORM_EXPORT int MessageBox(CWnd* owner, const char* text, const char* caption = nullptr, UINT type = MB_OK);
