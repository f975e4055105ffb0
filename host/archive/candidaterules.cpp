#include "candidaterules.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace CandidateRules {

namespace {

// The characters present in a text, a bit per character code modulo 32: each
// typing error adds or removes at most two of them.
std::uint32_t Present(const std::string& text)
{
    std::uint32_t bits = 0;
    for (const char c : text)
        bits |= 1u << (static_cast<unsigned char>(c) % 32);
    return bits;
}

} // namespace

void Person::Derive()
{
    normLast = Normalize(last);
    normFirst = Normalize(first);
    phonetic = Phonetic(normLast);
    foldLast = FoldCase(last);
    foldFirst = FoldCase(first);
    lastBits = Present(normLast);
    firstBits = Present(normFirst);
    dobValid = ValidBirthDate(dob);
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

bool OneTypingErrorApart(const std::string& x, const std::string& y)
{
    if (x.empty() || x.size() != y.size())
        return false;
    size_t first = x.size(), count = 0;
    for (size_t i = 0; i < x.size(); ++i)
        if (x[i] != y[i]) {
            if (++count > 2)
                return false;
            if (first == x.size())
                first = i;
        }
    if (count == 1)
        return true;
    return count == 2 && first + 1 < x.size() && x[first] == y[first + 1] && x[first + 1] == y[first];
}

bool WithinEdits(const std::string& x, const std::string& y, int most)
{
    const int n = static_cast<int>(x.size()), m = static_cast<int>(y.size());
    if (n - m > most || m - n > most)
        return false;
    // Three rows of the alignment table; a row whose every cell is past
    // `most` ends the search. Names fit the rows on the stack.
    if (x == y)
        return true;
    // Each edit adds or removes at most two characters from the set of those
    // present, so a cheap look at the sets turns most strangers away.
    if (std::popcount(Present(x) ^ Present(y)) > 2 * most)
        return false;
    constexpr int kShort = 64;
    int stack[3][kShort + 1];
    std::vector<int> heap;
    int* before = stack[0];
    int* last = stack[1];
    int* row = stack[2];
    if (m > kShort) {
        heap.resize(3 * static_cast<size_t>(m + 1));
        before = heap.data();
        last = before + m + 1;
        row = last + m + 1;
    }
    for (int j = 0; j <= m; ++j)
        last[j] = j;
    for (int i = 1; i <= n; ++i) {
        row[0] = i;
        int best = row[0];
        for (int j = 1; j <= m; ++j) {
            const int cost = x[i - 1] == y[j - 1] ? 0 : 1;
            int v = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + cost});
            if (i > 1 && j > 1 && x[i - 1] == y[j - 2] && x[i - 2] == y[j - 1])
                v = std::min(v, before[j - 2] + 1);
            row[j] = v;
            best = std::min(best, v);
        }
        if (best > most)
            return false;
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[m] <= most;
}

bool ValidBirthDate(const std::string& dob)
{
    if (dob.size() != 8 || !std::all_of(dob.begin(), dob.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    auto number = [&](size_t at, size_t length) {
        int n = 0;
        for (size_t i = at; i < at + length; ++i)
            n = n * 10 + (dob[i] - '0');
        return n;
    };
    const int year = number(0, 4), month = number(4, 2), day = number(6, 2);
    static const int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 1 || month < 1 || month > 12 || day < 1 || day > kDays[month - 1])
        return false;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month != 2 || day < 29 || leap;
}

std::string Initials(const std::string& last, const std::string& first)
{
    const std::string x = Initial(last), y = Initial(first);
    return std::min(x, y) + std::max(x, y);
}

std::string Initial(const std::string& text)
{
    size_t end = text.empty() ? 0 : 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        ++end;
    return FoldCase(text.substr(0, end));
}

std::string Final(const std::string& text)
{
    size_t start = text.size();
    while (start > 0 && (static_cast<unsigned char>(text[start - 1]) & 0xC0) == 0x80)
        --start;
    if (start > 0)
        --start;
    return FoldCase(text.substr(start));
}

bool SexUnknown(const std::string& sex)
{
    return sex.empty() || sex == "U";
}

namespace {

// The names as written, case ignored: the block of the rules that look at
// everything else.
std::string WrittenNames(const Person& p)
{
    if (p.last.empty() || p.first.empty())
        return std::string();
    return p.foldLast + '\x1f' + p.foldFirst;
}

bool OneDigitApart(const std::string& x, const std::string& y)
{
    if (x.size() != 8 || y.size() != 8)
        return false;
    int differ = 0;
    for (size_t i = 0; i < 8; ++i)
        differ += x[i] != y[i];
    return differ == 1;
}

// Either name as written, with the birth year in one block and the birth
// month and day in another: one wrong digit leaves one of the two. Each comes
// with the first letter of the other name, and again with its last letter:
// one typing error leaves one of them, and blocks of common names stay
// small. A name is the same block in either field, so names recorded in each
// other's fields meet too.
std::vector<std::string> NearBirthBlocks(const Person& p)
{
    std::vector<std::string> blocks;
    if (p.last.empty() || p.first.empty() || p.dob.size() < 4)
        return blocks;
    blocks.reserve(8);
    auto add = [&](const std::string& kept, char kind, const std::string& letter, char part, size_t from) {
        std::string key;
        key.reserve(kept.size() + letter.size() + 8);
        key.append(kept).append(1, '\x1f').append(1, kind).append(letter).append(1, '\x1f').append(1, part);
        key.append(p.dob, from, 4);
        if (std::find(blocks.begin(), blocks.end(), key) == blocks.end())
            blocks.push_back(std::move(key));
    };
    for (const auto& [kept, other] : {std::pair(&p.foldLast, &p.first), std::pair(&p.foldFirst, &p.last)})
        for (const auto& [kind, letter] : {std::pair('I', Initial(*other)), std::pair('F', Final(*other))}) {
            add(*kept, kind, letter, 'Y', 0);
            if (p.dob.size() >= 8)
                add(*kept, kind, letter, 'D', 4);
        }
    return blocks;
}

// The initials with four views of a real birth date: one wrong digit leaves
// one of the first three, day and month swapped leave the fourth.
std::vector<std::string> SimilarBirthBlocks(const Person& p)
{
    if (p.last.empty() || p.first.empty() || !p.dobValid)
        return {};
    const std::string initials = Initials(p.last, p.first) + '\x1f';
    const std::string& d = p.dob;
    const std::string month = d.substr(4, 2), day = d.substr(6, 2);
    return {initials + "M" + d.substr(0, 6), initials + "D" + d.substr(0, 4) + day, initials + "B" + d.substr(4, 4),
            initials + "S" + d.substr(0, 4) + std::min(month, day) + std::max(month, day)};
}

// Either name as written with the other name's first letter, whatever the
// birth date: a name is the same block in either field.
std::vector<std::string> NameInitialBlocks(const Person& p)
{
    if (p.last.empty() || p.first.empty())
        return {};
    std::vector<std::string> blocks = {p.foldLast + '\x1f' + Initial(p.first), p.foldFirst + '\x1f' + Initial(p.last)};
    if (blocks[0] == blocks[1])
        blocks.pop_back();
    return blocks;
}

// Two normalised names within two typing errors, with the cheap refusals
// (lengths, characters present) made on what each patient derived once.
bool TwoEditsApart(const std::string& x, std::uint32_t xBits, const std::string& y, std::uint32_t yBits)
{
    const auto n = x.size(), m = y.size();
    if ((n > m ? n - m : m - n) > 2 || std::popcount(xBits ^ yBits) > 4)
        return false;
    return WithinEdits(x, y, 2);
}
bool LastsNear(const Person& x, const Person& y)
{
    return TwoEditsApart(x.normLast, x.lastBits, y.normLast, y.lastBits);
}
bool FirstsNear(const Person& x, const Person& y)
{
    return TwoEditsApart(x.normFirst, x.firstBits, y.normFirst, y.firstBits);
}
// x's last name near y's first name, and x's first near y's last.
bool CrossedNear(const Person& x, const Person& y)
{
    return TwoEditsApart(x.normLast, x.lastBits, y.normFirst, y.firstBits)
        && TwoEditsApart(x.normFirst, x.firstBits, y.normLast, y.lastBits);
}

bool SimilarNames(const Person& x, const Person& y)
{
    if (x.normLast.empty() || x.normFirst.empty() || y.normLast.empty() || y.normFirst.empty())
        return false;
    return (LastsNear(x, y) && FirstsNear(x, y)) || CrossedNear(x, y);
}

} // namespace

bool BirthDatesNear(const std::string& x, const std::string& y)
{
    if (x == y || OneDigitApart(x, y))
        return true;
    if (x.size() == 8 && y.size() == 8 && x.compare(0, 4, y, 0, 4) == 0 && x.compare(4, 2, y, 6, 2) == 0
        && x.compare(6, 2, y, 4, 2) == 0)
        return true;
    return !ValidBirthDate(x) || !ValidBirthDate(y);
}

namespace {

// BirthDatesNear with the validity worked out once per patient.
bool BirthsNear(const Person& x, const Person& y)
{
    if (!x.dobValid || !y.dobValid)
        return true;
    const std::string& a = x.dob;
    const std::string& b = y.dob;
    return a == b || OneDigitApart(a, b)
        || (a.compare(0, 4, b, 0, 4) == 0 && a.compare(4, 2, b, 6, 2) == 0 && a.compare(6, 2, b, 4, 2) == 0);
}

} // namespace

int SameBlockAs(int rule)
{
    switch (rule) {
    case kSimilarNameBirth: return kNearIdentifierBirth;
    case kNameBirthMissing:
    case kNameBirthDigit:
    case kNameBirthTwoApart: return kNearIdentifierName;
    case kFirstNameNearBirth:
    case kSwappedNearBirth: return kLastNameNearBirth;
    default: return rule;
    }
}

namespace {

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
        return p.foldLast + sep + p.foldFirst + sep + month;
    }
    case kNearIdentifierBirth:
    case kSimilarNameBirth:
        return p.dob;
    case kNearIdentifierName:
    case kNameBirthMissing:
    case kNameBirthDigit:
    case kNameBirthTwoApart:
        return WrittenNames(p);
    case kFirstNameBirthNoSex:
        if (p.normFirst.empty() || p.dob.empty())
            return std::string();
        return p.normFirst + sep + p.dob;
    default:
        return std::string();
    }
}

} // namespace

std::vector<std::string> BlockKeys(int rule, const Person& p)
{
    if (SameBlockAs(rule) == kLastNameNearBirth)
        return NearBirthBlocks(p);
    if (rule == kSimilarNameNoBirth)
        return NameInitialBlocks(p);
    if (rule == kSimilarNameNearBirth)
        return SimilarBirthBlocks(p);
    std::string block = BlockKey(rule, p);
    if (block.empty())
        return {};
    return {std::move(block)};
}

bool PairHolds(int rule, const Person& x, const Person& y)
{
    switch (rule) {
    case kDayMonthSwapped:
        return x.dob != y.dob;
    case kNamesSwapped:
        return x.normLast == y.normFirst;
    case kNearIdentifierBirth:
    case kNearIdentifierName:
        return OneTypingErrorApart(x.gid, y.gid);
    case kFirstNameBirthNoSex:
        return SexUnknown(x.sex) || SexUnknown(y.sex);
    case kNameBirthMissing:
        return !x.dobValid || !y.dobValid;
    case kNameBirthDigit:
        return OneDigitApart(x.dob, y.dob);
    case kSimilarNameBirth:
        return SimilarNames(x, y);
    // The birth dates first: most patients of a near-birth block differ there.
    case kLastNameNearBirth:
        return BirthsNear(x, y) && x.foldLast == y.foldLast && FirstsNear(x, y);
    case kFirstNameNearBirth:
        return BirthsNear(x, y) && x.foldFirst == y.foldFirst && LastsNear(x, y);
    case kSwappedNearBirth:
        return BirthsNear(x, y) && CrossedNear(x, y);
    case kNameBirthTwoApart:
        return x.dobValid && y.dobValid && OneDigitApart(x.dob, y.dob.substr(0, 4) + y.dob.substr(6, 2) + y.dob.substr(4, 2));
    case kSimilarNameNearBirth:
        return x.dobValid && y.dobValid && BirthsNear(x, y) && SimilarNames(x, y);
    case kSimilarNameNoBirth:
        return (!x.dobValid || !y.dobValid)
            && ((x.foldLast == y.foldLast && FirstsNear(x, y)) || (x.foldFirst == y.foldFirst && LastsNear(x, y))
                || (x.foldLast == y.foldFirst && TwoEditsApart(x.normFirst, x.firstBits, y.normLast, y.lastBits))
                || (x.foldFirst == y.foldLast && TwoEditsApart(x.normLast, x.lastBits, y.normFirst, y.firstBits)));
    default:
        return true;
    }
}

const char* ReasonCode(int rule)
{
    static const char* const kCodes[] = {"", "GID", "NAMEDOB", "SOUNDDOB", "FIRSTDOBSEX", "DOBSWAP", "NAMESWAP", "NAMEYM",
                                         "GIDDOB", "GIDNAME", "FIRSTDOBNOSEX", "NAMENODOB", "NAMEDOBDIGIT", "SIMNAMEDOB",
                                         "LASTNEARDOB", "FIRSTNEARDOB", "SWAPNEARDOB", "SIMNAMENODOB", "NAMEDOBTWO",
                                         "SIMNAMENEARDOB"};
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
                                         "Same Name, Birth Year and Month",
                                         "Similar SSN and Same Date of Birth",
                                         "Similar SSN and Same Name",
                                         "Same First Name and Date of Birth, Sex Unknown",
                                         "Same Name, Date of Birth Missing or Invalid",
                                         "Same Name, Date of Birth One Digit Apart",
                                         "Similar Name and Same Date of Birth",
                                         "Same Last Name, Similar First Name and Date of Birth",
                                         "Same First Name, Similar Last Name and Date of Birth",
                                         "Names Swapped, Similar Date of Birth",
                                         "Similar Name, Date of Birth Missing or Invalid",
                                         "Same Name, Date of Birth Two Errors Apart",
                                         "Similar Name and Similar Date of Birth"};
    return rule >= 1 && rule <= kCount ? kTexts[rule] : "";
}

} // namespace CandidateRules
