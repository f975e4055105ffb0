#include "coledatetime.h"

#include "bdate.h"

#include <tuple>

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second)
{
    SetDateTime(year, month, day, hour, minute, second);
}

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second)
{
    const bool ok = year >= 1 && year <= 9999 && month >= 1 && month <= 12 && day >= 1
        && day <= static_cast<int>(BDate::DaysInMonth(static_cast<unsigned>(year), static_cast<unsigned>(month)))
        && hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
    if (!ok) {
        *this = COleDateTime();
        return 1;
    }
    m_year = year;
    m_month = month;
    m_day = day;
    m_hour = hour;
    m_minute = minute;
    m_second = second;
    m_status = valid;
    return 0;
}

bool operator==(const COleDateTime& a, const COleDateTime& b)
{
    return std::tie(a.m_status, a.m_year, a.m_month, a.m_day, a.m_hour, a.m_minute, a.m_second)
        == std::tie(b.m_status, b.m_year, b.m_month, b.m_day, b.m_hour, b.m_minute, b.m_second);
}

bool operator<(const COleDateTime& a, const COleDateTime& b)
{
    // Invalid values order first, like an empty date.
    if (a.m_status != COleDateTime::valid || b.m_status != COleDateTime::valid)
        return a.m_status != COleDateTime::valid && b.m_status == COleDateTime::valid;
    return std::tie(a.m_year, a.m_month, a.m_day, a.m_hour, a.m_minute, a.m_second)
        < std::tie(b.m_year, b.m_month, b.m_day, b.m_hour, b.m_minute, b.m_second);
}
