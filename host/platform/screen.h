#pragma once

// Screen density, as the module's font rescaling reads it.

#include "bravik_platform_export.h"

// Logical dots per inch of the primary screen (QScreen::logicalDotsPerInchX,
// rounded), or the override when one is set; -1 when there is no screen.
BRAVIK_PLATFORM_EXPORT int GetScreenLogicalDpiX();
// For tests: every later GetScreenLogicalDpiX returns dpi.
BRAVIK_PLATFORM_EXPORT void SetScreenDpiOverride(int dpi);
BRAVIK_PLATFORM_EXPORT void ClearScreenDpiOverride();
