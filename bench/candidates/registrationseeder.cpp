#include "registrationseeder.h"

#include <archivedb.h>
#include <demoseeder.h>
#include <keygenerator.h>

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <cstdio>
#include <cctype>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace RegistrationSeeder {

namespace {

// The rates, all in one place. Per patient of the base population:
constexpr double kIdentifierRecorded = 0.70; // a national identifier was taken
constexpr double kBaseSexMissing = 0.01;     // sex not recorded
constexpr double kBaseBirthMissing = 0.003;  // birth date not recorded
constexpr double kSecondRegistration = 0.05; // the person registers a second time
// Per second registration:
constexpr double kAtOtherOrganization = 0.30;
// Number of errors: one 60 %, two 30 %, three 10 %.
constexpr int kErrorCountWeights[] = {60, 30, 10};
// Which error, weights per error (ErrorKind order, OtherOrganization excluded).
// Typing errors in names dominate published error studies; about a third of
// them are substitutions of a neighbouring key.
constexpr int kErrorWeights[] = {
    14, // KeyboardSubstitution
    5,  // OcrSubstitution
    9,  // Insertion
    9,  // Deletion
    9,  // Transposition
    9,  // PhoneticRespelling
    10, // IdentifierDigit
    10, // IdentifierMissing
    8,  // BirthDateDigit
    5,  // BirthDayMonth
    3,  // BirthDateMissing
    5,  // SexMissing
    4,  // NamesSwapped
};
constexpr double kLastNameShare = 0.55; // a name error hits the last name, else the first

const char* const kKindNames[] = {"keyboard", "ocr", "insertion", "deletion", "transposition", "phonetic",
                                  "id_digit", "id_missing", "dob_digit", "dob_day_month", "dob_missing",
                                  "sex_missing", "names_swapped", "other_org"};

// Names built from syllables: thousands of last names with a realistic skew.
struct Names
{
    std::vector<std::string> last, female, male;
    explicit Names(std::mt19937_64& rng)
    {
        const char* onset[] = {"B", "C", "D", "F", "G", "H", "J", "K", "L", "M", "N", "P", "R", "S", "T", "V", "W",
                               "Br", "Ch", "Cl", "Dr", "Gr", "Kr", "Sh", "St", "Th", "Tr", "Wh"};
        const char* vowel[] = {"a", "e", "i", "o", "u", "ai", "ea", "ou", "y"};
        const char* coda[] = {"n", "r", "s", "l", "m", "t", "ck", "rd", "nd", "ll", "ns", "rt", "tt", "x", ""};
        const char* tail[] = {"son", "ton", "er", "man", "ley", "ford", "berg", "well", "ski", "ez", "o", "a", ""};
        auto pick = [&](auto& arr) { return std::string(arr[rng() % (sizeof(arr) / sizeof(arr[0]))]); };
        for (int i = 0; i < 6000; ++i)
            last.push_back(pick(onset) + pick(vowel) + pick(coda) + pick(tail));
        for (int i = 0; i < 400; ++i) {
            std::string f = pick(onset) + pick(vowel) + pick(coda);
            female.push_back(f + (i % 2 ? "a" : "ie"));
            male.push_back(f + (i % 2 ? "o" : "en"));
        }
    }
};

struct Person
{
    std::string last, first, sex, dob, gid;
    size_t org = 0;
};

class Errors
{
public:
    explicit Errors(std::mt19937_64& rng)
        : m_rng(rng)
    {
    }

    // Applies one error of `kind` to `p`; false when it cannot apply.
    bool Apply(int kind, Person& p)
    {
        switch (kind) {
        case IdentifierDigit: return !p.gid.empty() && IdentifierTypo(p.gid);
        case IdentifierMissing:
            if (p.gid.empty())
                return false;
            p.gid.clear();
            return true;
        case BirthDateDigit: return p.dob.size() == 8 && DigitTypo(p.dob);
        case BirthDayMonth:
            if (p.dob.size() != 8 || p.dob.substr(4, 2) == p.dob.substr(6, 2))
                return false;
            p.dob = p.dob.substr(0, 4) + p.dob.substr(6, 2) + p.dob.substr(4, 2);
            return true;
        case BirthDateMissing:
            if (p.dob.empty())
                return false;
            // Half left empty, half a text that is no date.
            p.dob = Chance(0.5) ? std::string() : p.dob.substr(0, 4) + "0000";
            return true;
        case SexMissing:
            if (p.sex.empty())
                return false;
            p.sex.clear();
            return true;
        case NamesSwapped: std::swap(p.first, p.last); return true;
        default: return NameTypo(kind, Chance(kLastNameShare) ? p.last : p.first);
        }
    }

private:
    bool Chance(double p) { return std::uniform_real_distribution<double>(0.0, 1.0)(m_rng) < p; }
    size_t Below(size_t n) { return static_cast<size_t>(m_rng() % n); }

    bool NameTypo(int kind, std::string& name)
    {
        if (name.size() < 2)
            return false;
        std::string s = name;
        for (auto& c : s)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        const size_t i = Below(s.size());
        switch (kind) {
        case KeyboardSubstitution: {
            const std::string near = Neighbours(s[i]);
            if (near.empty())
                return false;
            s[i] = near[Below(near.size())];
            break;
        }
        case OcrSubstitution:
            if (!Replace(s, {{"rn", "m"}, {"m", "rn"}, {"cl", "d"}, {"d", "cl"}, {"vv", "w"}, {"w", "vv"}, {"li", "h"},
                             {"h", "li"}, {"e", "c"}, {"c", "e"}, {"o", "a"}, {"a", "o"}, {"u", "v"}, {"i", "l"}, {"l", "i"}}))
                return false;
            break;
        case Insertion: s.insert(i, 1, Chance(0.5) ? s[i] : static_cast<char>('a' + Below(26))); break;
        case Deletion: s.erase(i, 1); break;
        case Transposition:
            if (i + 1 >= s.size() || s[i] == s[i + 1])
                return false;
            std::swap(s[i], s[i + 1]);
            break;
        default:
            if (!Replace(s, {{"ph", "f"}, {"f", "ph"}, {"ck", "k"}, {"k", "ck"}, {"c", "k"}, {"s", "z"}, {"z", "s"},
                             {"ie", "y"}, {"y", "ie"}, {"ea", "ee"}, {"ai", "ay"}, {"ou", "ow"}, {"th", "t"},
                             {"ll", "l"}, {"tt", "t"}, {"son", "sen"}, {"man", "mann"}, {"x", "ks"}, {"er", "a"}}))
                return false;
            break;
        }
        if (s.empty())
            return false;
        s[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(s[0])));
        name = s;
        return true;
    }

    // One of the applicable replacements, at one of its places.
    bool Replace(std::string& s, const std::vector<std::pair<std::string, std::string>>& pairs)
    {
        std::vector<std::pair<size_t, size_t>> places; // (pair, position)
        for (size_t k = 0; k < pairs.size(); ++k)
            for (size_t at = s.find(pairs[k].first); at != std::string::npos; at = s.find(pairs[k].first, at + 1))
                places.emplace_back(k, at);
        if (places.empty())
            return false;
        const auto [k, at] = places[Below(places.size())];
        s.replace(at, pairs[k].first.size(), pairs[k].second);
        return true;
    }

    static std::string Neighbours(char c)
    {
        static const char* const kRows[] = {"qwa",  "wqes", "ewrd", "retf", "tryg", "ytuh", "uyij", "iuok", "oipl",
                                            "pol",  "aqsz", "sawdz", "dsefx", "fdrgc", "gfthv", "hgyjb", "jhukn",
                                            "kjilm", "lkop", "zasx", "xzsdc", "cxdfv", "vcfgb", "bvghn", "nbhjm", "mnjk"};
        for (const char* row : kRows)
            if (row[0] == c)
                return row + 1;
        return std::string();
    }

    bool IdentifierTypo(std::string& id)
    {
        if (id.size() < 2)
            return false;
        const size_t i = Below(id.size());
        if (Chance(0.7) || i + 1 >= id.size() || id[i] == id[i + 1])
            return DigitAt(id, i);
        std::swap(id[i], id[i + 1]);
        return true;
    }

    bool DigitTypo(std::string& text) { return DigitAt(text, Below(text.size())); }

    bool DigitAt(std::string& text, size_t i)
    {
        const char was = text[i];
        while (text[i] == was)
            text[i] = static_cast<char>('0' + Below(10));
        return true;
    }

    std::mt19937_64& m_rng;
};

int DaysIn(int year, int month)
{
    static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

int Weighted(std::mt19937_64& rng, const int* weights, int count)
{
    int total = 0;
    for (int i = 0; i < count; ++i)
        total += weights[i];
    int roll = static_cast<int>(rng() % static_cast<unsigned>(total));
    for (int i = 0; i < count; ++i) {
        if (roll < weights[i])
            return i;
        roll -= weights[i];
    }
    return count - 1;
}

} // namespace

const char* KindName(int kind)
{
    return kind >= 0 && kind < KindCount ? kKindNames[kind] : "";
}

void Seed(ArchiveDb& db, int patients, std::uint64_t seed)
{
    DemoSeeder(db).SeedSite(seed);
    std::mt19937_64 rng(seed);
    Names names(rng);
    Errors errors(rng);
    KeyGenerator keys(seed * 7 + 3);
    std::vector<std::string> orgs;
    {
        SQLite::Statement q(db.Handle(), "SELECT org_key FROM organizations WHERE org_id IN ('NORTHSIDE', 'LAKEVIEW', "
                                         "'STMARY') ORDER BY org_id");
        while (q.executeStep())
            orgs.push_back(q.getColumn(0).getString());
    }
    db.Handle().exec("CREATE TABLE IF NOT EXISTS bench_duplicates (key_a TEXT, key_b TEXT, errors INTEGER, "
                     "PRIMARY KEY (key_a, key_b))");
    SQLite::Statement ins(db.Handle(),
                          "INSERT INTO patients(patient_key, org_key, mrn, last_name, first_name, middle_name, sex_code, "
                          "dob, global_id, created, modified) VALUES (?, ?, ?, ?, ?, '', ?, ?, ?, '', '')");
    SQLite::Statement truth(db.Handle(), "INSERT INTO bench_duplicates(key_a, key_b, errors) VALUES (?, ?, ?)");
    long long mrn = 0;
    auto insert = [&](const Person& p) {
        const std::string key = keys.Next();
        ins.bind(1, key);
        ins.bind(2, orgs[p.org]);
        ins.bind(3, std::to_string(1000000 + ++mrn));
        ins.bind(4, p.last);
        ins.bind(5, p.first);
        ins.bind(6, p.sex);
        ins.bind(7, p.dob);
        ins.bind(8, p.gid);
        ins.exec();
        ins.reset();
        return key;
    };
    auto chance = [&](double p) { return std::uniform_real_distribution<double>(0.0, 1.0)(rng) < p; };
    // Zipf-like skew: a few very common last names, a long tail.
    std::vector<double> weights(names.last.size());
    for (size_t i = 0; i < weights.size(); ++i)
        weights[i] = 1.0 / static_cast<double>(i + 10);
    std::discrete_distribution<size_t> lastDist(weights.begin(), weights.end());
    int written = 0;
    while (written < patients) {
        SQLite::Transaction tx(db.Handle());
        const int end = std::min(patients, written + 20000);
        while (written < end) {
            Person p;
            const bool female = rng() % 2;
            p.sex = chance(kBaseSexMissing) ? "" : female ? "F" : "M";
            p.last = names.last[lastDist(rng)];
            p.first = female ? names.female[rng() % names.female.size()] : names.male[rng() % names.male.size()];
            const int year = 1925 + static_cast<int>(rng() % 98), month = 1 + static_cast<int>(rng() % 12);
            const int day = 1 + static_cast<int>(rng() % static_cast<unsigned>(DaysIn(year, month)));
            char dob[32];
            std::snprintf(dob, sizeof dob, "%04d%02d%02d", year, month, day);
            p.dob = chance(kBaseBirthMissing) ? "" : dob;
            if (chance(kIdentifierRecorded))
                p.gid = std::to_string(100000000 + rng() % 800000000);
            p.org = rng() % orgs.size();
            const std::string key = insert(p);
            ++written;
            if (written >= end || !chance(kSecondRegistration))
                continue;
            Person d = p;
            int mask = 0;
            if (chance(kAtOtherOrganization)) {
                d.org = (p.org + 1 + rng() % (orgs.size() - 1)) % orgs.size();
                mask |= 1 << OtherOrganization;
            }
            const int count = 1 + Weighted(rng, kErrorCountWeights, 3);
            for (int applied = 0, tries = 0; applied < count && tries < 50; ++tries) {
                const int kind = Weighted(rng, kErrorWeights, OtherOrganization);
                const bool isName = kind <= PhoneticRespelling;
                if ((!isName && (mask & (1 << kind))) || !errors.Apply(kind, d))
                    continue;
                mask |= 1 << kind;
                ++applied;
            }
            const std::string other = insert(d);
            ++written;
            truth.bind(1, std::min(key, other));
            truth.bind(2, std::max(key, other));
            truth.bind(3, mask);
            truth.exec();
            truth.reset();
        }
        tx.commit();
        std::fprintf(stderr, "\rseeding: %d / %d patients", written, patients);
    }
    std::fprintf(stderr, "\n");
}

} // namespace RegistrationSeeder
