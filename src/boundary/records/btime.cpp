#include "btime.h"

#include <cstdio>

BTime::BTime(int hour, int minute, int second) : m_hour(hour), m_minute(minute), m_second(second)
{
}

bool BTime::IsValid() const
{
    return m_hour >= 0 && m_hour <= 23 && m_minute >= 0 && m_minute <= 59 && m_second >= 0 && m_second <= 59;
}

ACE_CString BTime::ToString() const
{
    if (!IsValid())
        return ACE_CString();
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d%02d%02d", m_hour, m_minute, m_second);
    return ACE_CString(buf);
}
