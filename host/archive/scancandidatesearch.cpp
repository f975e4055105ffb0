#include "scancandidatesearch.h"

#include "archivedb.h"

#include "candidaterows.h"
#include "candidaterules.h"
#include "candidatestore.h"

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <functional>
#include <vector>

namespace {

std::string Arg(sqlite3_value* v)
{
    const unsigned char* text = sqlite3_value_text(v);
    return text ? std::string(reinterpret_cast<const char*>(text), static_cast<size_t>(sqlite3_value_bytes(v)))
                : std::string();
}

template <std::string (*F)(const std::string&)>
void Call(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    const std::string out = F(Arg(argv[0]));
    sqlite3_result_text(ctx, out.c_str(), static_cast<int>(out.size()), SQLITE_TRANSIENT);
}

std::string Sound(const std::string& text)
{
    return CandidateRules::Phonetic(CandidateRules::Normalize(text));
}

void OneTypo(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    sqlite3_result_int(ctx, CandidateRules::OneTypingErrorApart(Arg(argv[0]), Arg(argv[1])) ? 1 : 0);
}

void TwoEdits(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    const std::string x = CandidateRules::Normalize(Arg(argv[0])), y = CandidateRules::Normalize(Arg(argv[1]));
    sqlite3_result_int(ctx, CandidateRules::WithinEdits(x, y, 2) ? 1 : 0);
}

// A YYYYMMDD text naming a real day: SQLite's date() moves a day past the
// month's end into the next month, so the round trip shows it.
std::string ValidDate(const std::string& column)
{
    const std::string iso = "substr(" + column + ", 1, 4) || '-' || substr(" + column + ", 5, 2) || '-' || substr(" + column
                          + ", 7, 2)";
    return "(length(" + column + ") = 8 AND " + column + " NOT GLOB '*[^0-9]*' AND substr(" + column
         + ", 1, 4) <> '0000' AND coalesce(date(" + iso + ") = " + iso + ", 0))";
}

// Two eight-character dates that differ at exactly one place.
std::string OneDigitApart(const std::string& a = "a.dob", const std::string& b = "b.dob")
{
    std::string differ;
    for (int i = 1; i <= 8; ++i)
        differ += std::string(i > 1 ? " + " : "") + "(substr(" + a + ", " + std::to_string(i) + ", 1) <> substr(" + b + ", "
                + std::to_string(i) + ", 1))";
    return "length(" + a + ") = 8 AND length(" + b + ") = 8 AND " + differ + " = 1";
}

} // namespace

ScanCandidateSearch::ScanCandidateSearch(ArchiveDb& db)
    : m_db(db)
{
    // The rules' own normalising, sound and date functions, so this query
    // and the kept pairs agree by construction.
    sqlite3* h = m_db.Handle().getHandle();
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(h, "bravik_norm", 1, flags, nullptr, &Call<CandidateRules::Normalize>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(h, "bravik_sound", 1, flags, nullptr, &Call<Sound>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(h, "bravik_swap", 1, flags, nullptr, &Call<CandidateRules::SwapDayMonth>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(h, "bravik_one_typo", 2, flags, nullptr, &OneTypo, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(h, "bravik_two_edits", 2, flags, nullptr, &TwoEdits, nullptr, nullptr, nullptr);
}

namespace {

// Birth dates equal, one digit apart, day and month swapped, or either no date.
std::string BirthDatesNear()
{
    return "(a.dob = b.dob OR NOT " + ValidDate("a.dob") + " OR NOT " + ValidDate("b.dob") + " OR (" + OneDigitApart()
         + ") OR (substr(a.dob, 1, 4) = substr(b.dob, 1, 4) AND substr(a.dob, 5, 2) = substr(b.dob, 7, 2)"
           " AND substr(a.dob, 7, 2) = substr(b.dob, 5, 2)))";
}

// The first or the last letter of a name.
std::string Letter(const std::string& column, bool first)
{
    return "upper(substr(" + column + (first ? ", 1, 1))" : ", -1))");
}

// The three near-birth-date rules share their blocks: either name as written
// (in either field), with the other name's first or last letter, and the
// birth year (`from` 1) or birth month and day (`from` 5). A pair in a block
// takes the lowest of the three that holds.
std::string NearBirth(const std::function<std::string(const std::string&)>& within)
{
    const std::string why = "CASE WHEN a.last_name = b.last_name COLLATE NOCASE"
                            " AND bravik_two_edits(a.first_name, b.first_name) THEN 14"
                            " WHEN a.first_name = b.first_name COLLATE NOCASE"
                            " AND bravik_two_edits(a.last_name, b.last_name) THEN 15"
                            " WHEN bravik_two_edits(a.last_name, b.first_name)"
                            " AND bravik_two_edits(a.first_name, b.last_name) THEN 16 END";
    std::string out;
    for (const int from : {1, 5})
        for (const bool initial : {true, false})
            for (const auto& [name, other] : {std::pair<std::string, std::string>{"last_name", "first_name"},
                                              std::pair<std::string, std::string>{"first_name", "last_name"}}) {
                // a's block: a's `name` with the letter of a's `other`.
                const std::string part = std::to_string(from) + ", 4)";
                auto member = [&](const std::string& t) {
                    auto side = [&](const std::string& own, const std::string& rest) {
                        return "(" + t + "." + own + " = a." + name + " COLLATE NOCASE AND " + t + "." + rest
                             + " <> '' AND " + Letter(t + "." + rest, initial) + " = "
                             + Letter("a." + other, initial) + ")";
                    };
                    return "(" + side("last_name", "first_name") + " OR " + side("first_name", "last_name")
                         + ") AND substr(" + t + ".dob, " + part + " = substr(a.dob, " + part;
                };
                out += " UNION ALL SELECT a.patient_key, b.patient_key, " + why
                     + " FROM patients a JOIN patients b ON a.patient_key < b.patient_key AND " + member("b")
                     + " WHERE a." + name + " <> '' AND a." + other + " <> '' AND length(a.dob) >= "
                     + std::to_string(from + 3) + " AND " + why + " IS NOT NULL AND "
                     + BirthDatesNear() + within(member("z"));
            }
    return out;
}

// A name as written (in either field) with the other name's first letter,
// whatever the birth date; a birth date of either must be missing or no day.
std::string SimilarNameNoBirth(const std::function<std::string(const std::string&)>& within)
{
    auto asWritten = [](const std::string& x, const std::string& y) { return x + " = " + y + " COLLATE NOCASE"; };
    auto near = [](const std::string& x, const std::string& y) { return "bravik_two_edits(" + x + ", " + y + ")"; };
    const std::string holds =
        "(NOT " + ValidDate("a.dob") + " OR NOT " + ValidDate("b.dob") + ") AND (("
        + asWritten("a.last_name", "b.last_name") + " AND " + near("a.first_name", "b.first_name") + ") OR ("
        + asWritten("a.first_name", "b.first_name") + " AND " + near("a.last_name", "b.last_name") + ") OR ("
        + asWritten("a.last_name", "b.first_name") + " AND " + near("a.first_name", "b.last_name") + ") OR ("
        + asWritten("a.first_name", "b.last_name") + " AND " + near("a.last_name", "b.first_name") + "))";
    std::string out;
    for (const auto& [name, other] : {std::pair<std::string, std::string>{"last_name", "first_name"},
                                      std::pair<std::string, std::string>{"first_name", "last_name"}}) {
        // a's block: a's `name` with the first letter of a's `other`.
        auto member = [&](const std::string& t) {
            auto side = [&](const std::string& own, const std::string& rest) {
                return "(" + asWritten(t + "." + own, "a." + name) + " AND " + t + "." + rest + " <> '' AND "
                     + Letter(t + "." + rest, true) + " = " + Letter("a." + other, true) + ")";
            };
            return "(" + side("last_name", "first_name") + " OR " + side("first_name", "last_name") + ")";
        };
        out += " UNION ALL SELECT a.patient_key, b.patient_key, " + std::to_string(CandidateRules::kSimilarNameNoBirth)
             + " FROM patients a JOIN patients b ON a.patient_key < b.patient_key AND " + member("b") + " WHERE a."
             + name + " <> '' AND a." + other + " <> '' AND " + holds + within(member("z"));
    }
    return out;
}

// The initials of both names (lower first) with four views of a real birth
// date: year and month, year and day, month and day, year with month and day
// either way round.
std::string SimilarNameNearBirth(const std::function<std::string(const std::string&)>& within)
{
    auto initial = [](const std::string& t, const char* f) {
        return std::string(f) + "(upper(substr(" + t + ".last_name, 1, 1)), upper(substr(" + t + ".first_name, 1, 1)))";
    };
    auto near = [](const std::string& x, const std::string& y) { return "bravik_two_edits(" + x + ", " + y + ")"; };
    const std::string similar = "bravik_norm(a.last_name) <> '' AND bravik_norm(a.first_name) <> ''"
                                " AND bravik_norm(b.last_name) <> '' AND bravik_norm(b.first_name) <> '' AND (("
                              + near("a.last_name", "b.last_name") + " AND " + near("a.first_name", "b.first_name") + ") OR ("
                              + near("a.last_name", "b.first_name") + " AND " + near("a.first_name", "b.last_name") + "))";
    auto part = [](const std::string& t, int from, int length) {
        return "substr(" + t + ".dob, " + std::to_string(from) + ", " + std::to_string(length) + ")";
    };
    auto mmdd = [&](const std::string& t, const char* f) {
        return std::string(f) + "(" + part(t, 5, 2) + ", " + part(t, 7, 2) + ")";
    };
    const std::vector<std::function<std::string(const std::string&)>> views = {
        [&](const std::string& t) { return part(t, 1, 6) + " = " + part("a", 1, 6); },
        [&](const std::string& t) { return part(t, 1, 4) + " = " + part("a", 1, 4) + " AND " + part(t, 7, 2) + " = " + part("a", 7, 2); },
        [&](const std::string& t) { return part(t, 5, 4) + " = " + part("a", 5, 4); },
        [&](const std::string& t) {
            return part(t, 1, 4) + " = " + part("a", 1, 4) + " AND " + mmdd(t, "min") + " = " + mmdd("a", "min") + " AND "
                 + mmdd(t, "max") + " = " + mmdd("a", "max");
        }};
    std::string out;
    for (const auto& view : views) {
        // a's block: a's initials with this view of a's birth date.
        auto member = [&](const std::string& t) {
            return t + ".last_name <> '' AND " + t + ".first_name <> '' AND " + ValidDate(t + ".dob") + " AND "
                 + initial(t, "min") + " = " + initial("a", "min") + " AND " + initial(t, "max") + " = "
                 + initial("a", "max") + " AND " + view(t);
        };
        out += " UNION ALL SELECT a.patient_key, b.patient_key, " + std::to_string(CandidateRules::kSimilarNameNearBirth)
             + " FROM patients a JOIN patients b ON a.patient_key < b.patient_key AND " + member("b")
             + " WHERE a.last_name <> '' AND a.first_name <> '' AND " + ValidDate("a.dob") + " AND " + BirthDatesNear()
             + " AND " + similar + within(member("z"));
    }
    return out;
}

// The rules for typing errors, missing values and near identifiers.
std::string NewerRules(const std::string& same, const std::function<std::string(const std::string&)>& within)
{
    const std::string written = "b.last_name = a.last_name COLLATE NOCASE AND b.first_name = a.first_name COLLATE NOCASE"
                                "  WHERE a.last_name <> '' AND a.first_name <> ''";
    const std::string writtenBlock = within("z.last_name = a.last_name COLLATE NOCASE"
                                            " AND z.first_name = a.first_name COLLATE NOCASE");
    auto rule = [&](int why) { return " UNION ALL SELECT a.patient_key, b.patient_key, " + std::to_string(why) + " FROM patients a" + same; };
    auto near = [](const std::string& x, const std::string& y) { return "bravik_two_edits(" + x + ", " + y + ")"; };
    return rule(8) + "b.dob = a.dob WHERE a.dob <> '' AND bravik_one_typo(a.global_id, b.global_id)" + within("z.dob = a.dob")
         + rule(9) + written + " AND bravik_one_typo(a.global_id, b.global_id)" + writtenBlock
         + rule(10) + "b.dob = a.dob WHERE a.dob <> '' AND bravik_norm(a.first_name) <> ''"
           "  AND bravik_norm(a.first_name) = bravik_norm(b.first_name) AND (a.sex_code IN ('', 'U') OR b.sex_code IN ('', 'U'))"
         + within("z.dob = a.dob AND bravik_norm(z.first_name) = bravik_norm(a.first_name)")
         + rule(11) + written + " AND (NOT " + ValidDate("a.dob") + " OR NOT " + ValidDate("b.dob") + ")" + writtenBlock
         + rule(12) + written + " AND " + OneDigitApart() + writtenBlock
         + rule(13) + "b.dob = a.dob WHERE a.dob <> '' AND bravik_norm(a.last_name) <> '' AND bravik_norm(a.first_name) <> ''"
           "  AND bravik_norm(b.last_name) <> '' AND bravik_norm(b.first_name) <> '' AND (("
         + near("a.last_name", "b.last_name") + " AND " + near("a.first_name", "b.first_name") + ") OR ("
         + near("a.last_name", "b.first_name") + " AND " + near("a.first_name", "b.last_name") + "))" + within("z.dob = a.dob")
         + rule(18) + written + " AND " + ValidDate("a.dob") + " AND " + ValidDate("b.dob") + " AND "
         + OneDigitApart("a.dob", "(substr(b.dob, 1, 4) || substr(b.dob, 7, 2) || substr(b.dob, 5, 2))") + writtenBlock
         + NearBirth(within) + SimilarNameNoBirth(within) + SimilarNameNearBirth(within);
}

} // namespace

int ScanCandidateSearch::Find(const CandidateCriteria& c, std::vector<CandidatePair>& pairs, long long& total)
{
    total = 0;
    if (c.reasonKind < 0 || (c.mergeOff && c.linkOff))
        return 0;

    std::vector<std::string> binds;
    // The patient criteria: a pair qualifies when either of its two patients meets all of them.
    std::string who;
    auto add = [&](const std::string& condition) { who += (who.empty() ? "" : " AND ") + condition; };
    if (!c.lastName.empty()) {
        add("p.last_name LIKE ? ESCAPE '\\'");
        binds.push_back(c.lastName);
    }
    if (!c.firstName.empty()) {
        add("p.first_name LIKE ? ESCAPE '\\'");
        binds.push_back(c.firstName);
    }
    if (!c.mrn.empty()) {
        // A numeric site writes MRNs with or without leading zeros.
        add(c.numericMrn ? "ltrim(p.mrn, '0') LIKE ltrim(?, '0') ESCAPE '\\'" : "p.mrn LIKE ? ESCAPE '\\'");
        binds.push_back(c.mrn);
    }
    if (!c.globalIds.empty()) {
        add("p.global_id IN (" + CandidateRows::Placeholders(c.globalIds.size()) + ")");
        binds.insert(binds.end(), c.globalIds.begin(), c.globalIds.end());
    }
    if (!c.sexCode.empty()) {
        add("p.sex_code = ?");
        binds.push_back(c.sexCode);
    }
    if (!c.dobBegin.empty()) {
        add("p.dob <> '' AND p.dob >= ?");
        binds.push_back(c.dobBegin);
    }
    if (!c.dobEnd.empty()) {
        add("p.dob <> '' AND p.dob <= ?");
        binds.push_back(c.dobEnd);
    }

    // The blocking rules written out as self-joins, each with its block's
    // size held to the site's cap by a count over the same block.
    const std::string cap = std::to_string(CandidateStore(m_db).BlockCap());
    const std::string same = " JOIN patients b ON a.patient_key < b.patient_key AND ";
    auto within = [&](const std::string& block) {
        return " AND (SELECT count(*) FROM patients z WHERE " + block + ") <= " + cap;
    };
    const std::string names = "bravik_norm(z.last_name) = bravik_norm(a.last_name)"
                              " AND bravik_norm(z.first_name) = bravik_norm(a.first_name)";
    std::string sql =
        "WITH pairs(ka, kb, why) AS ("
        " SELECT a.patient_key, b.patient_key, 1 FROM patients a" + same + "b.global_id = a.global_id"
        "  WHERE a.global_id <> ''" + within("z.global_id = a.global_id") +
        " UNION ALL SELECT a.patient_key, b.patient_key, 2 FROM patients a" + same + "b.dob = a.dob"
        "  WHERE a.dob <> '' AND bravik_norm(a.last_name) <> '' AND bravik_norm(a.last_name) = bravik_norm(b.last_name)"
        "  AND bravik_norm(a.first_name) = bravik_norm(b.first_name)" + within("z.dob = a.dob AND " + names) +
        " UNION ALL SELECT a.patient_key, b.patient_key, 3 FROM patients a" + same + "b.dob = a.dob"
        "  WHERE a.dob <> '' AND bravik_sound(a.last_name) <> '' AND bravik_sound(a.last_name) = bravik_sound(b.last_name)"
        + within("z.dob = a.dob AND bravik_sound(z.last_name) = bravik_sound(a.last_name)") +
        " UNION ALL SELECT a.patient_key, b.patient_key, 4 FROM patients a" + same + "b.dob = a.dob"
        "  WHERE a.dob <> '' AND a.sex_code <> '' AND b.sex_code = a.sex_code AND bravik_norm(a.first_name) <> ''"
        "  AND bravik_norm(a.first_name) = bravik_norm(b.first_name)"
        + within("z.dob = a.dob AND z.sex_code = a.sex_code AND bravik_norm(z.first_name) = bravik_norm(a.first_name)") +
        " UNION ALL SELECT a.patient_key, b.patient_key, 5 FROM patients a" + same + "b.dob = bravik_swap(a.dob)"
        "  WHERE bravik_swap(a.dob) <> '' AND bravik_norm(a.last_name) <> ''"
        "  AND bravik_norm(a.last_name) = bravik_norm(b.last_name) AND bravik_norm(a.first_name) = bravik_norm(b.first_name)"
        + within("(z.dob = a.dob OR z.dob = bravik_swap(a.dob)) AND " + names) +
        " UNION ALL SELECT a.patient_key, b.patient_key, 6 FROM patients a" + same + "b.dob = a.dob"
        "  WHERE a.dob <> '' AND bravik_norm(a.last_name) <> '' AND bravik_norm(a.first_name) <> ''"
        "  AND bravik_norm(a.last_name) <> bravik_norm(a.first_name)"
        "  AND bravik_norm(a.last_name) = bravik_norm(b.first_name) AND bravik_norm(a.first_name) = bravik_norm(b.last_name)"
        + within("z.dob = a.dob AND (" + names + " OR (bravik_norm(z.last_name) = bravik_norm(a.first_name)"
                 " AND bravik_norm(z.first_name) = bravik_norm(a.last_name)))") +
        " UNION ALL SELECT a.patient_key, b.patient_key, 7 FROM patients a" + same + "b.last_name = a.last_name COLLATE NOCASE"
        "  AND b.first_name = a.first_name COLLATE NOCASE AND substr(b.dob, 1, 6) = substr(a.dob, 1, 6)"
        "  WHERE length(a.dob) >= 6 AND a.last_name <> '' AND a.first_name <> ''"
        + within("z.last_name = a.last_name COLLATE NOCASE AND z.first_name = a.first_name COLLATE NOCASE"
                 " AND substr(z.dob, 1, 6) = substr(a.dob, 1, 6)") +
        NewerRules(same, within) +
        "), best AS (SELECT ka, kb, min(why) AS why FROM pairs GROUP BY ka, kb)";
    if (!who.empty())
        sql += ", hits AS (SELECT p.patient_key FROM patients p WHERE " + who + ")";
    sql += " SELECT best.why, a.org_key = b.org_key,"
           " a.patient_key, a.mrn, a.org_key, oa.org_id, a.sex_code, a.global_id, a.dob, a.last_name, a.first_name, a.middle_name,"
           " b.patient_key, b.mrn, b.org_key, ob.org_id, b.sex_code, b.global_id, b.dob, b.last_name, b.first_name,"
           " b.middle_name"
           " FROM best JOIN patients a ON a.patient_key = best.ka JOIN patients b ON b.patient_key = best.kb"
           " JOIN organizations oa ON oa.org_key = a.org_key JOIN organizations ob ON ob.org_key = b.org_key"
           " WHERE NOT EXISTS (SELECT 1 FROM ignored_pairs i WHERE i.key_a = best.ka AND i.key_b = best.kb)";
    if (!who.empty())
        sql += " AND (best.ka IN (SELECT patient_key FROM hits) OR best.kb IN (SELECT patient_key FROM hits))";
    if (c.reasonKind > 0)
        sql += " AND best.why = " + std::to_string(c.reasonKind);

    std::string mergeHalf = "0";
    if (!c.mergeOff) {
        mergeHalf = "a.org_key = b.org_key";
        if (!c.mergeOrgKeys.empty()) {
            mergeHalf += " AND a.org_key IN (" + CandidateRows::Placeholders(c.mergeOrgKeys.size()) + ")";
            binds.insert(binds.end(), c.mergeOrgKeys.begin(), c.mergeOrgKeys.end());
        }
    }
    std::string linkHalf = "0";
    if (!c.linkOff) {
        linkHalf = "a.org_key <> b.org_key AND (a.link_group IS NULL OR b.link_group IS NULL"
                   " OR a.link_group <> b.link_group)";
        if (!c.linkOrgKeys.empty()) {
            const std::string ph = CandidateRows::Placeholders(c.linkOrgKeys.size());
            linkHalf += " AND (a.org_key IN (" + ph + ") OR b.org_key IN (" + ph + "))";
            binds.insert(binds.end(), c.linkOrgKeys.begin(), c.linkOrgKeys.end());
            binds.insert(binds.end(), c.linkOrgKeys.begin(), c.linkOrgKeys.end());
        }
    }
    sql += " AND ((" + mergeHalf + ") OR (" + linkHalf + "))";
    sql += " ORDER BY a.last_name COLLATE NOCASE, a.first_name COLLATE NOCASE, best.ka, best.kb";

    return GuardDb("candidate search", [&] {
        SQLite::Statement q(m_db.Handle(), sql);
        // Bindings follow the placeholders' order in the text: patient criteria
        // first (inside `hits`), then the organization halves.
        int index = 1;
        for (const auto& value : binds)
            q.bind(index++, value);
        while (q.executeStep()) {
            ++total;
            if (c.rowLimit > 0 && static_cast<long long>(pairs.size()) >= c.rowLimit)
                continue;
            pairs.push_back(CandidateRows::ReadPair(q));
        }
        return 0;
    });
}
