#pragma once

#include "bravik_export.h"

namespace TavCreator {

// The control classes the module's dialogs use that the host registers: the
// toolkit's picker. The host registers before the first dialog with a picker
// opens and unregisters when it unloads the module.
class BRAVIK_EXPORT RegisterControls
{
public:
    // Registers the picker class for this module.
    static void RegisterPicker();
    // Unregisters it; non-zero when it was registered by this module.
    static int UnRegisterPicker();
};

} // namespace TavCreator
