#pragma once

#include "bravik_records_export.h"
#include "cstring.h"

class BDate;
class COleDateTime;

// The host's locale library. The user's date pattern (default "MM/dd/yyyy")
// uses the letters yyyy (four-digit year), MM or M (month), dd or d (day);
// any other character stands for itself. Parsing accepts one or two digits
// for M/MM and d/dd and exactly four for yyyy.
namespace Locale {

enum EDateFormat
{
    eDICOM = 0,   // "YYYYMMDD"
    eShort = 1,   // the user's date pattern
    eLong = 2     // "January 5, 2024"
};

BRAVIK_RECORDS_EXPORT CString FormatDate(const BDate& date, EDateFormat format);
BRAVIK_RECORDS_EXPORT CString GetDatePattern();
BRAVIK_RECORDS_EXPORT void SetDatePattern(const char* pattern);

// Parses a date in the user's pattern, optionally followed by blanks and a
// 24-hour time "H:mm" or "H:mm:ss". Surrounding blanks are ignored. On
// failure returns false and leaves the value invalid.
BRAVIK_RECORDS_EXPORT bool ParseDateTime(COleDateTime& value, const CString& text);
// Parses exactly one date in the given pattern (no time, no blanks).
BRAVIK_RECORDS_EXPORT bool ParseDate(BDate& value, const char* text, const char* pattern);

// The message catalogue of the record and service libraries.
enum EMessageId : unsigned
{
    MSG_LINK_UNLINK_WARNING = 1001
};
// Empty for an unknown id.
BRAVIK_RECORDS_EXPORT CString LoadMessage(unsigned id);
// Replaces one message (the host may localise the catalogue).
BRAVIK_RECORDS_EXPORT void SetMessage(unsigned id, const char* text);

// Date pattern and catalogue back to their defaults.
BRAVIK_RECORDS_EXPORT void Reset();

} // namespace Locale
