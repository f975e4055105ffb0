#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// A time of day, 00:00:00 when default-constructed.
class BRAVIK_RECORDS_EXPORT BTime
{
public:
    BTime() = default;
    BTime(int hour, int minute, int second);

    int GetHour() const { return m_hour; }
    int GetMinute() const { return m_minute; }
    int GetSecond() const { return m_second; }

    // 0..23, 0..59, 0..59.
    bool IsValid() const;
    // "HHMMSS" (DICOM time); empty when not valid.
    ACE_CString ToString() const;

    friend bool operator==(const BTime& a, const BTime& b)
    {
        return a.m_hour == b.m_hour && a.m_minute == b.m_minute && a.m_second == b.m_second;
    }
    friend bool operator!=(const BTime& a, const BTime& b) { return !(a == b); }

private:
    int m_hour = 0;
    int m_minute = 0;
    int m_second = 0;
};
