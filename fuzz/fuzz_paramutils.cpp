// Fuzzes the conversion of user search input: wildcards, MRN check, date ranges.
// The first byte chooses the operation and the site settings; the rest is the text.
#include "fuzzcheck.h"

#include "bdatetime.h"
#include "hoststate.h"
#include "localefunctions.h"
#include "paramutils.h"
#include "sitepolicy.h"

#include <cstdint>
#include <string>

namespace {

void CheckWildcards(const std::string& text)
{
    ACE_CString out;
    FUZZ_CHECK(ParamUtils::ConvertToWildcardQueryString(text.c_str(), out));
    // Undo the conversion: escapes give their character, '%' and '_' the
    // user's wildcards. Without quotes this must give the input back.
    std::string back;
    const char* p = out.c_str();
    for (; *p; ++p) {
        if (*p == '\\') {
            ++p;
            FUZZ_CHECK(*p == '%' || *p == '_' || *p == '\\');
            back += *p;
        } else if (*p == '%') {
            back += '*';
        } else if (*p == '_') {
            back += '?';
        } else {
            back += *p;
        }
    }
    if (text.find('"') == std::string::npos)
        FUZZ_CHECK(back == text);
}

void CheckMrn(const std::string& text, bool numeric)
{
    SitePolicySettings s;
    s.numericMRN = numeric;
    SitePolicy::Set(s);
    CString mrn(text.c_str());
    const bool ok = ParamUtils::VerifyAndCorrectMRN(mrn);
    const std::string fixed = mrn.GetString();
    if (!fixed.empty()) {
        FUZZ_CHECK(fixed.front() != ' ' && fixed.front() != '\t');
        FUZZ_CHECK(fixed.back() != ' ' && fixed.back() != '\t');
    }
    if (ok && numeric)
        for (char c : fixed)
            FUZZ_CHECK(c >= '0' && c <= '9');
    if (!numeric)
        FUZZ_CHECK(ok);
}

void CheckDateRange(const std::string& text, unsigned patternChoice)
{
    static const char* const patterns[] = {"MM/dd/yyyy", "dd.MM.yyyy", "yyyy-MM-dd", "d/M/yyyy"};
    Locale::SetDatePattern(patterns[patternChoice % 4]);
    BDateTime begin, end;
    const bool ok = ParamUtils::GenerateDateRangeFromStringForCustomFilter(text.c_str(), begin, end, false);
    if (!ok) {
        FUZZ_CHECK(!begin.IsValid() && !end.IsValid());
        return;
    }
    FUZZ_CHECK(begin.IsValid() || end.IsValid());
    if (begin.IsValid())
        FUZZ_CHECK(begin.GetTime() == BTime(0, 0, 0));
    if (end.IsValid())
        FUZZ_CHECK(end.GetTime() == BTime(23, 59, 59));
    if (begin.IsValid() && end.IsValid())
        FUZZ_CHECK(!(end < begin));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const unsigned selector = data[0];
    std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    text = text.substr(0, text.find('\0'));
    ResetHostState();
    switch (selector % 3) {
    case 0:
        CheckWildcards(text);
        break;
    case 1:
        CheckMrn(text, (selector / 3) % 2 == 1);
        break;
    default:
        CheckDateRange(text, selector / 3);
        break;
    }
    ResetHostState();
    return 0;
}
