#include "boundary/registercontrols.h"

#include "boundary/bravikmodulestate.h"

#include "picker.h"

namespace TavCreator {

void RegisterControls::RegisterPicker()
{
    BRAVIK_MANAGE_STATE();
    Picker::Register(&BravikModuleState());
}

int RegisterControls::UnRegisterPicker()
{
    BRAVIK_MANAGE_STATE();
    return Picker::UnRegister(&BravikModuleState());
}

} // namespace TavCreator
