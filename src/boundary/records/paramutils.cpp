#include "paramutils.h"

#include "bdatetime.h"
#include "bparser.h"
#include "localefunctions.h"
#include "sitepolicy.h"

#include <string>

bool ParamUtils::UseNumericMRN()
{
    return SitePolicy::Get().numericMRN;
}

bool ParamUtils::VerifyAndCorrectMRN(CString& mrn)
{
    mrn.Trim();
    if (mrn.IsEmpty() || !UseNumericMRN())
        return true;
    for (int i = 0; i < mrn.GetLength(); ++i)
        if (mrn.GetAt(i) < '0' || mrn.GetAt(i) > '9')
            return false;
    return true;
}

bool ParamUtils::ConvertToWildcardQueryString(const char* text, ACE_CString& result)
{
    result = ACE_CString();
    if (!text)
        return false;
    std::string out;
    bool quoted = false;
    for (const char* p = text; *p; ++p) {
        const char c = *p;
        if (c == '"') {
            quoted = !quoted;
        } else if (c == '%' || c == '_' || c == WILDCARD_ESCAPE) {
            out += WILDCARD_ESCAPE;
            out += c;
        } else if (c == '*' && !quoted) {
            out += '%';
        } else if (c == '?' && !quoted) {
            out += '_';
        } else {
            out += c;
        }
    }
    result = ACE_CString(out.c_str(), static_cast<ACE_CString::size_type>(out.size()));
    return true;
}

bool ParamUtils::GenerateDateRangeFromStringForCustomFilter(const char* text, BDateTime& begin, BDateTime& end,
                                                            bool toUTC)
{
    begin = BDateTime();
    end = BDateTime();
    if (!text)
        return false;

    const std::string value(text);
    const CString pattern = Locale::GetDatePattern();
    char sep = BParser::DEFAULT_SEP;
    if (value.find(sep) == std::string::npos && pattern.Find('-') < 0)
        sep = '-';

    std::string fromText = value;
    std::string toText;
    const size_t at = value.find(sep);
    const bool isRange = at != std::string::npos;
    if (isRange) {
        if (value.find(sep, at + 1) != std::string::npos)
            return false;
        fromText = value.substr(0, at);
        toText = value.substr(at + 1);
    }
    const ACE_CString from = BParser::Trim(fromText.c_str());
    const ACE_CString to = BParser::Trim(toText.c_str());

    BDate fromDate;
    BDate toDate;
    if (from.length() && !Locale::ParseDate(fromDate, from.c_str(), pattern))
        return false;
    if (to.length() && !Locale::ParseDate(toDate, to.c_str(), pattern))
        return false;
    if (!isRange)
        toDate = fromDate;
    if (!fromDate.IsValid() && !toDate.IsValid())
        return false;
    if (fromDate.IsValid() && toDate.IsValid() && toDate < fromDate)
        return false;

    BDateTime b = fromDate.IsValid() ? BDateTime(fromDate, BTime(0, 0, 0)) : BDateTime();
    BDateTime e = toDate.IsValid() ? BDateTime(toDate, BTime(23, 59, 59)) : BDateTime();
    if (toUTC) {
        b = b.ToUTC();
        e = e.ToUTC();
    }
    begin = b;
    end = e;
    return true;
}
