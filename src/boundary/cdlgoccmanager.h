#pragma once

#include "bravik_export.h"

#include "coccmanager.h"

// The module's dialog manager on dense screens: dialog units derive from the
// template font, so a font that grows with the screen density would grow
// every dialog with it. Rescaling the template font by 96 / density keeps
// dialogs the size they have at 96 pixels per inch.
class BRAVIK_EXPORT CDlgOccManager : public COccManager
{
public:
    CDlgOccManager() = default;
    ~CDlgOccManager() override;

    DialogTemplate* PreCreateDialog(DialogTemplate* pTemplate) override;
};
