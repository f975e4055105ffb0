#pragma once

#include "bravik_records_export.h"

// Site options, switched on by the host. All are off at start.
class BRAVIK_RECORDS_EXPORT Options
{
public:
    enum OptionsType
    {
        OPT_VIP_STATUS = 49 // VIP status codes are shown with the patient
    };

    static bool IsOptionSet(OptionsType option);
    static void SetOption(OptionsType option, bool on);
    static void Reset();
};
