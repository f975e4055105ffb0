#include "coccmanager.h"

namespace {

COccManager& defaultManager()
{
    static COccManager manager;
    return manager;
}

// A plain pointer on purpose: it outlives every manager, so a manager that
// goes away late in process exit can still step down safely.
COccManager* g_enabled = nullptr;

} // namespace

COccManager::~COccManager()
{
    if (g_enabled == this)
        g_enabled = nullptr;
}

DialogTemplate* COccManager::PreCreateDialog(DialogTemplate* pTemplate) { return pTemplate; }

void AfxEnableControlContainer(COccManager* manager)
{
    g_enabled = manager;
    if (!manager) {
        // The default manager changes nothing, so no hook is needed at all.
        SetDialogTemplatePreprocessor({});
        return;
    }
    // The hook asks whichever manager is enabled when a dialog is built.
    SetDialogTemplatePreprocessor([](DialogTemplate& tpl) {
        if (!g_enabled)
            return;
        DialogTemplate* result = g_enabled->PreCreateDialog(&tpl);
        if (result && result != &tpl)
            tpl = *result;
    });
}

COccManager* AfxGetOccManager() { return g_enabled ? g_enabled : &defaultManager(); }

bool AfxHasCustomOccManager() { return g_enabled != nullptr; }
