#include "localefunctions.h"

#include "bdate.h"
#include "coledatetime.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

namespace {

const char* const kDefaultPattern = "MM/dd/yyyy";

std::string& Pattern()
{
    static std::string pattern = kDefaultPattern;
    return pattern;
}

std::map<unsigned, std::string> DefaultMessages()
{
    return {
        {Locale::MSG_LINK_UNLINK_WARNING,
         "This exam has already been read. Changing its links may affect the report. Do you want to continue?"},
    };
}

std::map<unsigned, std::string>& Messages()
{
    static std::map<unsigned, std::string> messages = DefaultMessages();
    return messages;
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Reads between minDigits and maxDigits digits at p.
bool ReadNumber(const char*& p, int minDigits, int maxDigits, int& value)
{
    int n = 0;
    value = 0;
    while (n < maxDigits && IsDigit(*p)) {
        value = value * 10 + (*p - '0');
        ++p;
        ++n;
    }
    return n >= minDigits;
}

// Matches the date at p against the pattern; p advances past it.
bool MatchDate(const char*& p, const char* pattern, BDate& out)
{
    int year = -1, month = -1, day = -1;
    const char* q = pattern;
    while (*q) {
        if (std::strncmp(q, "yyyy", 4) == 0) {
            if (!ReadNumber(p, 4, 4, year))
                return false;
            q += 4;
        } else if (*q == 'M') {
            q += (q[1] == 'M') ? 2 : 1;
            if (!ReadNumber(p, 1, 2, month))
                return false;
        } else if (*q == 'd') {
            q += (q[1] == 'd') ? 2 : 1;
            if (!ReadNumber(p, 1, 2, day))
                return false;
        } else {
            if (*p != *q)
                return false;
            ++p;
            ++q;
        }
    }
    if (year < 0 || month < 0 || day < 0)
        return false;
    BDate d(static_cast<unsigned>(year), static_cast<unsigned>(month), static_cast<unsigned>(day));
    if (!d.IsValid())
        return false;
    out = d;
    return true;
}

const char* const kMonths[12] = {"January", "February", "March",     "April",   "May",      "June",
                                 "July",    "August",   "September", "October", "November", "December"};

} // namespace

namespace Locale {

CString GetDatePattern()
{
    return CString(Pattern());
}

void SetDatePattern(const char* pattern)
{
    Pattern() = (pattern && *pattern) ? pattern : kDefaultPattern;
}

CString FormatDate(const BDate& date, EDateFormat format)
{
    if (!date.IsValid())
        return CString();
    char buf[64];
    switch (format) {
    case eDICOM:
        return CString(date.ToString().c_str());
    case eLong:
        std::snprintf(buf, sizeof buf, "%s %u, %04u", kMonths[date.GetMonth() - 1], date.GetDay(), date.GetYear());
        return CString(buf);
    case eShort:
    default:
        break;
    }
    std::string out;
    const char* q = Pattern().c_str();
    while (*q) {
        if (std::strncmp(q, "yyyy", 4) == 0) {
            std::snprintf(buf, sizeof buf, "%04u", date.GetYear());
            out += buf;
            q += 4;
        } else if (*q == 'M' || *q == 'd') {
            const char letter = *q;
            const bool two = q[1] == letter;
            const unsigned v = letter == 'M' ? date.GetMonth() : date.GetDay();
            std::snprintf(buf, sizeof buf, two ? "%02u" : "%u", v);
            out += buf;
            q += two ? 2 : 1;
        } else {
            out += *q++;
        }
    }
    return CString(out);
}

bool ParseDate(BDate& value, const char* text, const char* pattern)
{
    if (!text || !pattern)
        return false;
    const char* p = text;
    BDate d;
    if (!MatchDate(p, pattern, d) || *p != '\0')
        return false;
    value = d;
    return true;
}

bool ParseDateTime(COleDateTime& value, const CString& text)
{
    value = COleDateTime();
    const char* p = text.GetString();
    while (*p == ' ' || *p == '\t')
        ++p;
    BDate date;
    if (!MatchDate(p, Pattern().c_str(), date))
        return false;
    int hour = 0, minute = 0, second = 0;
    const char* afterDate = p;
    while (*p == ' ' || *p == '\t')
        ++p;
    if (*p && p != afterDate) {
        if (!ReadNumber(p, 1, 2, hour) || *p != ':')
            return false;
        ++p;
        if (!ReadNumber(p, 2, 2, minute))
            return false;
        if (*p == ':') {
            ++p;
            if (!ReadNumber(p, 2, 2, second))
                return false;
        }
        while (*p == ' ' || *p == '\t')
            ++p;
    }
    if (*p != '\0')
        return false;
    return value.SetDateTime(static_cast<int>(date.GetYear()), static_cast<int>(date.GetMonth()),
                             static_cast<int>(date.GetDay()), hour, minute, second) == 0;
}

CString LoadMessage(unsigned id)
{
    auto it = Messages().find(id);
    return it == Messages().end() ? CString() : CString(it->second);
}

void SetMessage(unsigned id, const char* text)
{
    Messages()[id] = text ? text : "";
}

void Reset()
{
    Pattern() = kDefaultPattern;
    Messages() = DefaultMessages();
}

} // namespace Locale
