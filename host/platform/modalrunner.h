#pragma once

// How CDialog::DoModal runs a dialog. Production runs the Qt modal loop
// (QDialog::exec) after OnInitDialog; the test kit installs a scripted user
// that plays the user's part instead.

#include "bravik_platform_export.h"

class CDialog;

class BRAVIK_PLATFORM_EXPORT ModalRunner
{
public:
    virtual ~ModalRunner();
    // Runs dlg to its end and returns its result. An implementation calls
    // dlg.EnsureInitDialog() first (false: OnInitDialog already ended the
    // dialog, return dlg.GetModalResult() without showing it).
    virtual int Run(CDialog& dlg) = 0;
};

class BRAVIK_PLATFORM_EXPORT QtModalRunner : public ModalRunner
{
public:
    int Run(CDialog& dlg) override;
};

// Installs a runner (null: the production one); returns the previous one.
BRAVIK_PLATFORM_EXPORT ModalRunner* SetModalRunner(ModalRunner* runner);
BRAVIK_PLATFORM_EXPORT ModalRunner& CurrentModalRunner();
