#pragma once

#include "bravik_records_export.h"

// VIP status of a patient.
class BRAVIK_RECORDS_EXPORT VIPUtil
{
public:
    // Codes "0".."9" parse to 0..9; anything else fails.
    static bool StringToVIPStatusCode(const char* text, int& code);
};
