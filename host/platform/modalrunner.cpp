#include "modalrunner.h"

#include "cdialog.h"

ModalRunner::~ModalRunner() = default;

namespace {

ModalRunner*& installed()
{
    static ModalRunner* r = nullptr;
    return r;
}

QtModalRunner& production()
{
    static QtModalRunner r;
    return r;
}

} // namespace

int QtModalRunner::Run(CDialog& dlg)
{
    if (!dlg.EnsureInitDialog())
        return dlg.GetModalResult();
    return dlg.exec();
}

ModalRunner* SetModalRunner(ModalRunner* runner)
{
    ModalRunner* previous = installed();
    installed() = runner;
    return previous;
}

ModalRunner& CurrentModalRunner()
{
    ModalRunner* r = installed();
    return r ? *r : production();
}
