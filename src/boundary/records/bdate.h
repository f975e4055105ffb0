#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// A calendar date. Default-constructed (all parts 0) it is invalid; a date is
// valid for years 1..9999 with the Gregorian month lengths (29 February only
// in leap years). Text form is the DICOM date "YYYYMMDD".
class BRAVIK_RECORDS_EXPORT BDate
{
public:
    BDate() = default;
    BDate(unsigned int year, unsigned int month, unsigned int day);

    unsigned int GetYear() const { return m_year; }
    unsigned int GetMonth() const { return m_month; }
    unsigned int GetDay() const { return m_day; }

    bool IsValid() const;
    // "YYYYMMDD"; empty when the date is not valid.
    ACE_CString ToString() const;
    // Parses "YYYYMMDD" (exactly eight digits); an invalid text gives an invalid date.
    static BDate FromString(const char* dicomDate);
    // The local calendar date of today.
    static BDate Today();

    static bool IsLeapYear(unsigned int year);
    static unsigned int DaysInMonth(unsigned int year, unsigned int month);

    friend bool operator==(const BDate& a, const BDate& b)
    {
        return a.m_year == b.m_year && a.m_month == b.m_month && a.m_day == b.m_day;
    }
    friend bool operator!=(const BDate& a, const BDate& b) { return !(a == b); }
    friend BRAVIK_RECORDS_EXPORT bool operator<(const BDate& a, const BDate& b);

private:
    unsigned int m_year = 0;
    unsigned int m_month = 0;
    unsigned int m_day = 0;
};
