#pragma once

// BaseWinApp: the toolkit's application base. A module that uses the toolkit
// derives its application object from it (through UIWinApp), tells the
// toolkit whose resources to use (InitializeResources) and runs the toolkit's
// start (InitInstance) from its own InitInstance.

#include "bravik_toolkit_export.h"

#include "cwinapp.h"

class BRAVIK_TOOLKIT_EXPORT BaseWinApp : public CWinApp
{
public:
    explicit BaseWinApp(const char* appName = nullptr);
    ~BaseWinApp() override;

    // Makes module the module whose resources the toolkit's controls use
    // (header icons, texts) and becomes its instance handle.
    void InitializeResources(HINSTANCE module);
    // The module the toolkit last initialised its resources for; null before.
    static HINSTANCE ResourceModule();

    // The toolkit's start: its colour scheme and shared fonts are set up.
    // FALSE when there is no GUI application yet to draw with.
    BOOL InitInstance() override;
};
