#include "bdatetime.h"

#include <cstdio>
#include <cstring>
#include <ctime>

namespace {

// Days since 1970-01-01 of a proleptic Gregorian date (Howard Hinnant's algorithm).
std::int64_t DaysFromCivil(std::int64_t y, unsigned m, unsigned d)
{
    y -= m <= 2;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

void CivilFromDays(std::int64_t z, std::int64_t& y, unsigned& m, unsigned& d)
{
    z += 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    y = static_cast<std::int64_t>(yoe) + era * 400;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = doy - (153 * mp + 2) / 5 + 1;
    m = mp < 10 ? mp + 3 : mp - 9;
    y += m <= 2;
}

// Year 1..9999 only, as BDate.
const std::int64_t kMinSeconds = DaysFromCivil(1, 1, 1) * 86400;
const std::int64_t kMaxSeconds = DaysFromCivil(9999, 12, 31) * 86400 + 86399;

// Offset of local time from UTC at the given UTC instant, in seconds.
long LocalOffsetAt(std::int64_t utcSeconds)
{
    std::time_t t = static_cast<std::time_t>(utcSeconds);
    std::tm local{};
    if (!localtime_r(&t, &local))
        return 0;
    return local.tm_gmtoff;
}

} // namespace

BDateTime::BDateTime(const BDate& date, const BTime& time)
{
    if (!date.IsValid() || !time.IsValid())
        return;
    m_seconds = DaysFromCivil(date.GetYear(), date.GetMonth(), date.GetDay()) * 86400
        + time.GetHour() * 3600 + time.GetMinute() * 60 + time.GetSecond();
    m_valid = true;
}

BDateTime::BDateTime(std::int64_t secondsSinceEpoch)
{
    if (secondsSinceEpoch < kMinSeconds || secondsSinceEpoch > kMaxSeconds)
        return;
    m_seconds = secondsSinceEpoch;
    m_valid = true;
}

BDate BDateTime::GetDate() const
{
    if (!m_valid)
        return BDate();
    std::int64_t days = m_seconds >= 0 ? m_seconds / 86400 : -((-m_seconds + 86399) / 86400);
    std::int64_t y;
    unsigned m, d;
    CivilFromDays(days, y, m, d);
    return BDate(static_cast<unsigned>(y), m, d);
}

BTime BDateTime::GetTime() const
{
    if (!m_valid)
        return BTime();
    std::int64_t secs = m_seconds % 86400;
    if (secs < 0)
        secs += 86400;
    return BTime(static_cast<int>(secs / 3600), static_cast<int>(secs / 60 % 60), static_cast<int>(secs % 60));
}

BDateTime BDateTime::ToLocal() const
{
    if (!m_valid)
        return BDateTime();
    return BDateTime(m_seconds + LocalOffsetAt(m_seconds));
}

BDateTime BDateTime::ToUTC() const
{
    if (!m_valid)
        return BDateTime();
    // The offset is the one in force at the instant; two passes settle
    // instants next to a daylight-saving change.
    long offset = LocalOffsetAt(m_seconds);
    offset = LocalOffsetAt(m_seconds - offset);
    return BDateTime(m_seconds - offset);
}

ACE_CString BDateTime::ToString() const
{
    if (!m_valid)
        return ACE_CString();
    ACE_CString s = GetDate().ToString();
    s += GetTime().ToString();
    return s;
}

BDateTime BDateTime::FromString(const char* text)
{
    if (!text || std::strlen(text) != 14)
        return BDateTime();
    for (int i = 0; i < 14; ++i)
        if (text[i] < '0' || text[i] > '9')
            return BDateTime();
    BDate date = BDate::FromString(std::string(text, 8).c_str());
    auto two = [text](int at) { return (text[at] - '0') * 10 + (text[at + 1] - '0'); };
    return BDateTime(date, BTime(two(8), two(10), two(12)));
}

BDateTime BDateTime::Now()
{
    return BDateTime(static_cast<std::int64_t>(std::time(nullptr)));
}
