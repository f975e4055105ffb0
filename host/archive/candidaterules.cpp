#include "candidaterules.h"

#include <algorithm>

namespace CandidateRules {

void Person::Derive()
{
    normLast = Normalize(last);
    normFirst = Normalize(first);
    phonetic = Phonetic(normLast);
}

std::string FoldCase(const std::string& text)
{
    std::string out = text;
    for (auto& ch : out)
        if (ch >= 'a' && ch <= 'z')
            ch = static_cast<char>(ch - 'a' + 'A');
    return out;
}

std::string BirthMonth(const std::string& dob)
{
    return dob.size() >= 6 ? dob.substr(0, 6) : std::string();
}

std::string Normalize(const std::string& text)
{
    std::string out;
    out.reserve(text.size());
    for (const char ch : text) {
        const auto c = static_cast<unsigned char>(ch);
        if (c >= 'a' && c <= 'z')
            out += static_cast<char>(c - 'a' + 'A');
        else if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c >= 0x80)
            out += ch;
    }
    return out;
}

std::string Phonetic(const std::string& text)
{
    // Letters sharing a sound share a digit; vowels separate, H and W do not.
    static const char kDigit[] = "01230120022455012623010202";
    std::string code;
    char last = 0;
    for (const char ch : text) {
        char c = ch;
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
        if (c < 'A' || c > 'Z')
            continue;
        const char d = kDigit[c - 'A'];
        if (code.empty()) {
            code += c;
            last = d;
            continue;
        }
        if (c == 'H' || c == 'W')
            continue;
        if (d != '0' && d != last)
            code += d;
        last = d;
        if (code.size() == 4)
            break;
    }
    if (code.empty())
        return code;
    code.resize(4, '0');
    return code;
}

std::string SwapDayMonth(const std::string& dob)
{
    if (dob.size() != 8 || !std::all_of(dob.begin(), dob.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::string();
    const std::string month = dob.substr(4, 2), day = dob.substr(6, 2);
    // Both halves must be months, so the swap is its own inverse.
    if (day == month || day < "01" || day > "12" || month < "01" || month > "12")
        return std::string();
    return dob.substr(0, 4) + day + month;
}

std::string BlockKey(int rule, const Person& p)
{
    const char sep = '\x1f';
    switch (rule) {
    case kSharedIdentifier:
        return p.gid;
    case kNameAndBirthDate:
        if (p.normLast.empty() || p.dob.empty())
            return std::string();
        return p.normLast + sep + p.normFirst + sep + p.dob;
    case kSoundAndBirthDate:
        if (p.phonetic.empty() || p.dob.empty())
            return std::string();
        return p.phonetic + sep + p.dob;
    case kFirstNameBirthSex:
        if (p.normFirst.empty() || p.dob.empty() || p.sex.empty())
            return std::string();
        return p.normFirst + sep + p.dob + sep + p.sex;
    case kDayMonthSwapped: {
        const std::string swapped = SwapDayMonth(p.dob);
        if (p.normLast.empty() || swapped.empty())
            return std::string();
        return p.normLast + sep + p.normFirst + sep + std::min(p.dob, swapped);
    }
    case kNamesSwapped:
        if (p.normLast.empty() || p.normFirst.empty() || p.normLast == p.normFirst || p.dob.empty())
            return std::string();
        return std::min(p.normLast, p.normFirst) + sep + std::max(p.normLast, p.normFirst) + sep + p.dob;
    case kNameBirthMonth: {
        // A mistyped birth day: the names must match as written, since the
        // birth date says less here than in the other rules.
        const std::string month = BirthMonth(p.dob);
        if (p.last.empty() || p.first.empty() || month.empty())
            return std::string();
        return FoldCase(p.last) + sep + FoldCase(p.first) + sep + month;
    }
    default:
        return std::string();
    }
}

bool PairHolds(int rule, const Person& x, const Person& y)
{
    switch (rule) {
    case kDayMonthSwapped:
        return x.dob != y.dob;
    case kNamesSwapped:
        return x.normLast == y.normFirst;
    default:
        return true;
    }
}

const char* ReasonCode(int rule)
{
    static const char* const kCodes[] = {"", "GID", "NAMEDOB", "SOUNDDOB", "FIRSTDOBSEX", "DOBSWAP", "NAMESWAP", "NAMEYM"};
    return rule >= 1 && rule <= kCount ? kCodes[rule] : "";
}

const char* DefaultReasonText(int rule)
{
    static const char* const kTexts[] = {"",
                                         "Same SSN",
                                         "Same Name and Date of Birth",
                                         "Similar Sounding Name and Date of Birth",
                                         "Same First Name, Date of Birth and Sex",
                                         "Same Name, Birth Day and Month Swapped",
                                         "First and Last Name Swapped",
                                         "Same Name, Birth Year and Month"};
    return rule >= 1 && rule <= kCount ? kTexts[rule] : "";
}

} // namespace CandidateRules
