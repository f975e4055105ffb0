#pragma once

// The control-container manager: the object that prepares every dialog
// template before a dialog is built from it. One manager serves the process;
// AfxEnableControlContainer(manager) makes it current (null: the platform's
// default manager, which leaves templates as they are). A module derives its
// own manager and overrides PreCreateDialog to adjust templates, e.g. fonts.

#include "bravik_platform_export.h"
#include "dialogtemplate.h"

class BRAVIK_PLATFORM_EXPORT COccManager
{
public:
    COccManager() = default;
    virtual ~COccManager();
    COccManager(const COccManager&) = delete;
    COccManager& operator=(const COccManager&) = delete;

    // Called with the dialog's own copy of its template before any control is
    // created. Returns the template to build from (the base: pTemplate as it is).
    virtual DialogTemplate* PreCreateDialog(DialogTemplate* pTemplate);
};

// Makes manager the one that prepares dialog templates; null selects the
// platform's default manager. The manager is not owned: whoever enables it
// keeps it alive until another manager is enabled.
BRAVIK_PLATFORM_EXPORT void AfxEnableControlContainer(COccManager* manager = nullptr);
// The manager that prepares templates now (the default one when none was
// enabled); never null.
BRAVIK_PLATFORM_EXPORT COccManager* AfxGetOccManager();
// True when a manager other than the default one is enabled.
BRAVIK_PLATFORM_EXPORT bool AfxHasCustomOccManager();
