#include "boundary/moduletemplates.h"

void AddModuleTemplates(ModuleState& state)
{
    AddReasonTemplates(state);
    AddPatientTemplates(state);
    AddExamTemplates(state);
}
