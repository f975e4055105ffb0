#pragma once

#include "bravik_records_export.h"

// Product-wide switches (SitePolicy).
class BRAVIK_RECORDS_EXPORT ProductConfiguration
{
public:
    static ProductConfiguration& Instance();

    bool StudyDeletionEnabled() const;

private:
    ProductConfiguration() = default;
};
