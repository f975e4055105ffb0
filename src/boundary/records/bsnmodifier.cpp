#include "bsnmodifier.h"

#include "sitepolicy.h"

namespace Framework {

bool BSNModifier::isEnableBsn()
{
    return SitePolicy::Get().bsnEnabled;
}

bool BSNModifier::isEnableBsnCreateEdit()
{
    return SitePolicy::Get().bsnCreateEditEnabled;
}

} // namespace Framework
