#include "productconfiguration.h"

#include "sitepolicy.h"

ProductConfiguration& ProductConfiguration::Instance()
{
    static ProductConfiguration configuration;
    return configuration;
}

bool ProductConfiguration::StudyDeletionEnabled() const
{
    return SitePolicy::Get().studyDeletionEnabled;
}
