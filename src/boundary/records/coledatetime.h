#pragma once

#include "bravik_records_export.h"

// A calendar date and time with a validity status, as user-entered text
// parses into. Default-constructed it is invalid.
class BRAVIK_RECORDS_EXPORT COleDateTime
{
public:
    enum DateTimeStatus
    {
        valid = 0,
        invalid = 1,
        null = 2
    };

    COleDateTime() = default;
    COleDateTime(int year, int month, int day, int hour, int minute, int second);

    // Sets the value and returns 0, or marks it invalid and returns 1.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);
    int SetDate(int year, int month, int day) { return SetDateTime(year, month, day, 0, 0, 0); }
    void SetStatus(DateTimeStatus status) { m_status = status; }
    DateTimeStatus GetStatus() const { return m_status; }

    int GetYear() const { return m_year; }
    int GetMonth() const { return m_month; }
    int GetDay() const { return m_day; }
    int GetHour() const { return m_hour; }
    int GetMinute() const { return m_minute; }
    int GetSecond() const { return m_second; }

    friend BRAVIK_RECORDS_EXPORT bool operator==(const COleDateTime& a, const COleDateTime& b);
    friend BRAVIK_RECORDS_EXPORT bool operator<(const COleDateTime& a, const COleDateTime& b);

private:
    int m_year = 0;
    int m_month = 0;
    int m_day = 0;
    int m_hour = 0;
    int m_minute = 0;
    int m_second = 0;
    DateTimeStatus m_status = invalid;
};
