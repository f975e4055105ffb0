#include "sitepolicy.h"

#include <utility>

namespace {
SitePolicySettings& Current()
{
    static SitePolicySettings settings;
    return settings;
}
} // namespace

const SitePolicySettings& SitePolicy::Get()
{
    return Current();
}

SitePolicySettings SitePolicy::Set(const SitePolicySettings& settings)
{
    return std::exchange(Current(), settings);
}

void SitePolicy::Reset()
{
    Current() = SitePolicySettings();
}
