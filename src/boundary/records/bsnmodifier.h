#pragma once

#include "bravik_records_export.h"

namespace Framework {

// Whether the BSN (citizen service number) is used at this site (SitePolicy).
class BRAVIK_RECORDS_EXPORT BSNModifier
{
public:
    static bool isEnableBsn();
    static bool isEnableBsnCreateEdit();
};

} // namespace Framework
