#pragma once

// The dialog benchmarks' side of Qt: an offscreen application and a stand-in
// user that notes when a dialog is ready for input.

#include "benchsupport.h"

#include "cdialog.h"
#include "modalrunner.h"

#include <QApplication>

#include <cstdlib>
#include <functional>

namespace Bench {

// Dialogs are timed offscreen unless the caller chose a platform.
inline void UseOffscreenUnlessSet()
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

// Stands in for the user: shows the dialog, notes when it is painted, runs
// the bench's script on it (which may end it), then cancels what is open.
class StopwatchRunner : public ModalRunner
{
public:
    Clock::time_point ready;
    std::function<void(CDialog&)> script;
    int Run(CDialog& dlg) override
    {
        if (!dlg.EnsureInitDialog())
            return dlg.GetModalResult();
        dlg.show();
        QApplication::processEvents();
        ready = Clock::now();
        if (script)
            script(dlg);
        if (!dlg.HasEnded())
            dlg.EndDialog(IDCANCEL);
        return dlg.GetModalResult();
    }
};

} // namespace Bench
