#pragma once

// The module's dialog templates, added to its resources by id (resource.h).
// Each area keeps its templates with its code and registers them here.

class ModuleState;

void AddModuleTemplates(ModuleState& state);

// One registration function per area, defined in that area.
void AddReasonTemplates(ModuleState& state);
void AddPatientTemplates(ModuleState& state);
void AddExamTemplates(ModuleState& state);
