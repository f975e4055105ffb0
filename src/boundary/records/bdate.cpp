#include "bdate.h"

#include <cstdio>
#include <cstring>
#include <ctime>

BDate::BDate(unsigned int year, unsigned int month, unsigned int day)
    : m_year(year), m_month(month), m_day(day)
{
}

bool BDate::IsLeapYear(unsigned int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

unsigned int BDate::DaysInMonth(unsigned int year, unsigned int month)
{
    static const unsigned int days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12)
        return 0;
    if (month == 2 && IsLeapYear(year))
        return 29;
    return days[month - 1];
}

bool BDate::IsValid() const
{
    return m_year >= 1 && m_year <= 9999 && m_month >= 1 && m_month <= 12 && m_day >= 1
        && m_day <= DaysInMonth(m_year, m_month);
}

ACE_CString BDate::ToString() const
{
    if (!IsValid())
        return ACE_CString();
    char buf[16];
    std::snprintf(buf, sizeof buf, "%04u%02u%02u", m_year, m_month, m_day);
    return ACE_CString(buf);
}

BDate BDate::FromString(const char* text)
{
    if (!text || std::strlen(text) != 8)
        return BDate();
    unsigned int v[8];
    for (int i = 0; i < 8; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return BDate();
        v[i] = static_cast<unsigned int>(text[i] - '0');
    }
    BDate d(v[0] * 1000 + v[1] * 100 + v[2] * 10 + v[3], v[4] * 10 + v[5], v[6] * 10 + v[7]);
    return d.IsValid() ? d : BDate();
}

BDate BDate::Today()
{
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return BDate(static_cast<unsigned int>(local.tm_year + 1900), static_cast<unsigned int>(local.tm_mon + 1),
                 static_cast<unsigned int>(local.tm_mday));
}

bool operator<(const BDate& a, const BDate& b)
{
    if (a.m_year != b.m_year)
        return a.m_year < b.m_year;
    if (a.m_month != b.m_month)
        return a.m_month < b.m_month;
    return a.m_day < b.m_day;
}
