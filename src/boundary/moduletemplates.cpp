#include "boundary/moduletemplates.h"

void AddModuleTemplates(ModuleState& state)
{
    AddReasonTemplates(state);
    AddExamTemplates(state);
}
