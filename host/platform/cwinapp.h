#pragma once

// CWinApp: the application object of a module. Each loadable module defines
// one (usually a static object); its constructor registers it with the
// platform. After the host has created its QApplication it starts the
// registered modules (AfxStartModules), which runs each one's InitInstance
// once; AfxStopModules runs ExitInstance in reverse order.
//
// HINSTANCE, the module's instance handle, is the module's resource state:
// what Windows resolves through the handle (texts, templates, registered
// window classes) lives there.

#include "bravik_platform_export.h"
#include "cstring.h"
#include "windefs.h"

class ModuleState;
using HINSTANCE = ModuleState*;

// Runs InitInstance on every registered module application not started yet,
// in registration order. Returns how many reported failure (FALSE).
BRAVIK_PLATFORM_EXPORT int AfxStartModules();
// Runs ExitInstance on every started module application, last started first.
BRAVIK_PLATFORM_EXPORT void AfxStopModules();

class BRAVIK_PLATFORM_EXPORT CWinApp
{
public:
    explicit CWinApp(const char* appName = nullptr);
    virtual ~CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    // Module start; FALSE means the module could not start.
    virtual BOOL InitInstance();
    // Module end; the value is the module's exit code.
    virtual int ExitInstance();

    bool IsStarted() const { return m_started; }

    CString m_pszAppName;
    // The module's resources; the host's own state until the module sets its own.
    HINSTANCE m_hInstance = nullptr;

private:
    friend int AfxStartModules();
    friend void AfxStopModules();
    bool m_started = false;
};

// The application object registered first (the host's view of "the"
// application); null when there is none.
BRAVIK_PLATFORM_EXPORT CWinApp* AfxGetApp();
