#include "boundary/cdlgoccmanager.h"

#include "screen.h"

CDlgOccManager::~CDlgOccManager() = default;

DialogTemplate* CDlgOccManager::PreCreateDialog(DialogTemplate* pTemplate)
{
    if (!pTemplate)
        return COccManager::PreCreateDialog(pTemplate);

    int density = GetScreenLogicalDpiX();
    // No screen to ask: treat it as the standard density (no change). A zero
    // would only come from a broken screen report; it must not divide.
    if (density == -1 || density <= 0)
        density = 96;

    // Same face; integer arithmetic, truncating: 8 points at 120 pixels per
    // inch is 6.
    pTemplate->fontPointSize = pTemplate->fontPointSize * 96 / density;
    return COccManager::PreCreateDialog(pTemplate);
}
