#pragma once

#include "bravik_records_export.h"
#include "cstring.h"

#include <ace/SString.h>

class BDateTime;

// Turning user search input into service parameters.
//
// Wildcards: users type '*' (any run) and '?' (one character); the service's
// forms are '%' and '_'. A '%', '_' or '\' typed by the user is literal and is
// escaped with '\' (services match with LIKE ... ESCAPE '\'). Text between
// double quotes is literal, '*' and '?' included; the quotes are dropped and
// an unclosed quote runs to the end. Single quotes are ordinary characters.
//
// MRNs: leading and trailing white space is removed; an empty MRN is
// acceptable (no criterion); at a numeric-MRN site only the digits 0-9 are
// accepted. No padding is applied.
//
// Date ranges: one date, or "from,to" (BParser::DEFAULT_SEP) with either end
// open (",to", "from,"); '-' separates as well when the user's date pattern
// contains no '-'. Dates are in the user's date pattern (Locale). The begin is
// the first date at 00:00:00, the end the last date at 23:59:59; an open end
// stays empty (invalid). Blanks around the dates are ignored; a range whose
// begin is after its end, text that is not a date, or an empty text fails.
class BRAVIK_RECORDS_EXPORT ParamUtils
{
public:
    static const char WILDCARD_ESCAPE = '\\';

    static bool UseNumericMRN();
    // Trims mrn in place; returns whether it is acceptable.
    static bool VerifyAndCorrectMRN(CString& mrn);
    // Returns false (and an empty result) only for null text.
    static bool ConvertToWildcardQueryString(const char* text, ACE_CString& result);
    // toUTC converts the two local instants to UTC as well; on failure both
    // outputs are left invalid.
    static bool GenerateDateRangeFromStringForCustomFilter(const char* text, BDateTime& begin, BDateTime& end,
                                                           bool toUTC);
};
