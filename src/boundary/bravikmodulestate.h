#pragma once

// The module's own resources (texts, dialog templates, header icon) and the
// switch to them. Every exported operation begins with
//
//   BRAVIK_MANAGE_STATE();
//
// which makes the module's resources current until the operation returns
// (normally or by an exception) and then restores the caller's, so that the
// module's ids never resolve in the host's tables.

#include "bravik_export.h"

#include "modulestate.h"

#include <QPixmap>

BRAVIK_EXPORT ModuleState& BravikModuleState();

// The header icon from the current resources, size x size pixels.
BRAVIK_EXPORT QPixmap LoadHeaderIcon(int size = 32);

#define BRAVIK_MANAGE_STATE() ModuleResourceScope bravikModuleResources_(BravikModuleState())
