#pragma once

#include "bravik_records_export.h"
#include "bdate.h"
#include "btime.h"

#include <ace/SString.h>

#include <cstdint>

// A date and time. Stored values are UTC wall-clock instants; ToLocal() gives
// the same instant as local wall-clock time (used only for display).
// The 64-bit count is seconds since 1970-01-01 00:00:00 UTC.
// Default-constructed it is empty, which is the invalid value.
class BRAVIK_RECORDS_EXPORT BDateTime
{
public:
    BDateTime() = default;
    // Invalid when the date or the time is invalid.
    BDateTime(const BDate& date, const BTime& time);
    explicit BDateTime(std::int64_t secondsSinceEpoch);

    bool IsValid() const { return m_valid; }
    BDate GetDate() const;
    BTime GetTime() const;
    // Seconds since the epoch; 0 for the invalid value.
    std::int64_t ToInt64() const { return m_valid ? m_seconds : 0; }

    // The instant converted from UTC to local wall-clock time; invalid stays invalid.
    BDateTime ToLocal() const;
    // The reverse: treats this value as local wall-clock time and gives UTC.
    BDateTime ToUTC() const;

    // "YYYYMMDDHHMMSS"; empty when invalid.
    ACE_CString ToString() const;
    static BDateTime FromString(const char* dicomDateTime);
    // The current moment (UTC).
    static BDateTime Now();

    // An invalid value orders before every valid one.
    friend bool operator<(const BDateTime& a, const BDateTime& b)
    {
        if (!a.m_valid || !b.m_valid)
            return !a.m_valid && b.m_valid;
        return a.m_seconds < b.m_seconds;
    }
    friend bool operator==(const BDateTime& a, const BDateTime& b)
    {
        return a.m_valid == b.m_valid && (!a.m_valid || a.m_seconds == b.m_seconds);
    }
    friend bool operator!=(const BDateTime& a, const BDateTime& b) { return !(a == b); }

private:
    std::int64_t m_seconds = 0;
    bool m_valid = false;
};
