#include "indexedcandidatesearch.h"

#include "archivedb.h"
#include "candidaterows.h"
#include "candidatestore.h"
#include "scancandidatesearch.h"

#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_set>

namespace {

using CandidateRows::Placeholders;
using CandidateRows::ReadPair;

// The literal start of a LIKE pattern ('\' escapes), up to its first wildcard.
std::string LiteralPrefix(const std::string& pattern)
{
    std::string out;
    for (size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '\\' && i + 1 < pattern.size()) {
            out += pattern[++i];
            continue;
        }
        if (c == '%' || c == '_')
            break;
        out += c;
    }
    return out;
}

struct Where
{
    std::string sql;
    std::vector<std::string> binds;
    void And(const std::string& condition)
    {
        sql += (sql.empty() ? "" : " AND ") + condition;
    }
};

// A LIKE on a NOCASE column, with the index range its literal prefix allows.
void AddLike(Where& w, const std::string& column, const std::string& pattern)
{
    w.And(column + " LIKE ? ESCAPE '\\'");
    w.binds.push_back(pattern);
    std::string low = LiteralPrefix(pattern);
    for (auto& ch : low)
        if (ch >= 'A' && ch <= 'Z')
            ch = static_cast<char>(ch - 'A' + 'a');
    if (low.empty() || static_cast<unsigned char>(low.back()) == 0xff)
        return;
    std::string high = low;
    high.back() = static_cast<char>(high.back() + 1);
    w.And(column + " >= ? AND " + column + " < ?");
    w.binds.push_back(low);
    w.binds.push_back(high);
}

Where SideCriteria(const CandidateCriteria& c, const std::string& s)
{
    Where w;
    if (!c.lastName.empty() && c.lastName != "%")
        AddLike(w, s + "_last", c.lastName);
    if (!c.firstName.empty() && c.firstName != "%")
        AddLike(w, s + "_first", c.firstName);
    if (!c.mrn.empty()) {
        if (c.numericMrn) {
            w.And("ltrim(" + s + "_mrn, '0') LIKE ltrim(?, '0') ESCAPE '\\'");
        } else if (c.mrn.find_first_of("%_\\") == std::string::npos) {
            w.And(s + "_mrn = ?"); // the usual case, exact and indexed
        } else {
            w.And(s + "_mrn LIKE ? ESCAPE '\\'");
        }
        w.binds.push_back(c.mrn);
    }
    if (!c.globalIds.empty()) {
        w.And(s + "_gid IN (" + Placeholders(c.globalIds.size()) + ")");
        w.binds.insert(w.binds.end(), c.globalIds.begin(), c.globalIds.end());
    }
    if (!c.sexCode.empty()) {
        w.And(s + "_sex = ?");
        w.binds.push_back(c.sexCode);
    }
    if (!c.dobBegin.empty()) {
        w.And(s + "_dob >= ? AND " + s + "_dob <> ''");
        w.binds.push_back(c.dobBegin);
    }
    if (!c.dobEnd.empty()) {
        w.And(s + "_dob <= ? AND " + s + "_dob <> ''");
        w.binds.push_back(c.dobEnd);
    }
    return w;
}

// The merge and link halves over columns merge, org_a, org_b (pairs and totals alike).
Where Halves(const CandidateCriteria& c)
{
    Where w;
    std::string merge = "0", link = "0";
    std::vector<std::string> binds;
    if (!c.mergeOff) {
        merge = "merge = 1";
        if (!c.mergeOrgKeys.empty()) {
            merge += " AND org_a IN (" + Placeholders(c.mergeOrgKeys.size()) + ")";
            binds.insert(binds.end(), c.mergeOrgKeys.begin(), c.mergeOrgKeys.end());
        }
    }
    if (!c.linkOff) {
        link = "merge = 0";
        if (!c.linkOrgKeys.empty()) {
            const std::string ph = Placeholders(c.linkOrgKeys.size());
            link += " AND (org_a IN (" + ph + ") OR org_b IN (" + ph + "))";
            binds.insert(binds.end(), c.linkOrgKeys.begin(), c.linkOrgKeys.end());
            binds.insert(binds.end(), c.linkOrgKeys.begin(), c.linkOrgKeys.end());
        }
    }
    if (c.mergeOff || c.linkOff || !c.mergeOrgKeys.empty() || !c.linkOrgKeys.empty()) {
        w.And("((" + merge + ") OR (" + link + "))");
        w.binds = binds;
    }
    if (c.reasonKind > 0)
        w.And("reason = " + std::to_string(c.reasonKind));
    return w;
}

const char* const kPairColumns =
    "p.reason, p.merge, p.key_a, p.a_mrn, p.org_a, coalesce(oa.org_id, ''), p.a_sex, p.a_gid, p.a_dob, p.a_last, "
    "p.a_first, p.a_middle, p.key_b, p.b_mrn, p.org_b, coalesce(ob.org_id, ''), p.b_sex, p.b_gid, p.b_dob, p.b_last, "
    "p.b_first, p.b_middle";
const std::string kOrgJoins =
    " LEFT JOIN organizations oa ON oa.org_key = p.org_a LEFT JOIN organizations ob ON ob.org_key = p.org_b";

// SQLite's NOCASE: ASCII letters folded to lower case, then bytes.
int CompareNoCase(const std::string& x, const std::string& y)
{
    const size_t n = std::min(x.size(), y.size());
    for (size_t i = 0; i < n; ++i) {
        unsigned char a = static_cast<unsigned char>(x[i]), b = static_cast<unsigned char>(y[i]);
        if (a >= 'A' && a <= 'Z')
            a = static_cast<unsigned char>(a - 'A' + 'a');
        if (b >= 'A' && b <= 'Z')
            b = static_cast<unsigned char>(b - 'A' + 'a');
        if (a != b)
            return a < b ? -1 : 1;
    }
    return x.size() == y.size() ? 0 : (x.size() < y.size() ? -1 : 1);
}

// One matching pair as the sides' indexes give it: its row and its sort
// names, folded as the NOCASE collation folds them and joined by a NUL, so
// plain byte order is the order of last name, then first name.
struct Match
{
    std::int64_t row = 0;
    std::string names;
};

void AppendFolded(std::string& out, const char* text, int size)
{
    for (int i = 0; i < size; ++i) {
        const char c = text[i];
        out += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
}

bool InNameOrder(const Match& x, const Match& y)
{
    if (const int c = x.names.compare(y.names))
        return c < 0;
    return x.row < y.row;
}

bool InOrder(const CandidatePair& x, const CandidatePair& y)
{
    if (const int c = CompareNoCase(x.first.lastName, y.first.lastName))
        return c < 0;
    if (const int c = CompareNoCase(x.first.firstName, y.first.firstName))
        return c < 0;
    if (x.first.key != y.first.key)
        return x.first.key < y.first.key;
    return x.second.key < y.second.key;
}

} // namespace

int IndexedCandidateSearch::FindMatching(const std::vector<std::string>& sides,
                                         const std::vector<std::vector<std::string>>& binds, int rowLimit,
                                         std::vector<CandidatePair>& pairs, long long& total)
{
    auto bound = [&](const std::string& sql, size_t side,
                     const std::vector<std::string>& more = {}) -> SQLite::Statement& {
        auto& q = m_db.Prepare(sql);
        int i = 1;
        for (const auto& v : binds[side])
            q.bind(i++, v);
        for (const auto& v : more)
            q.bind(i++, v);
        return q;
    };
    // The sides exclude each other, so their counts add up; each is counted
    // on its own index without reading the rows.
    total = 0;
    std::vector<long long> counts(sides.size(), 0);
    for (size_t side = 0; side < sides.size(); ++side) {
        auto& q = bound("SELECT count(*) FROM candidate_pairs WHERE " + sides[side], side);
        if (q.executeStep())
            counts[side] = q.getColumn(0).getInt64();
        q.reset();
        total += counts[side];
    }
    if (total == 0)
        return 0;

    // The first rows of each side, in name order; together they hold the
    // first rows of the whole answer. A side with few matches is read whole
    // from its most selective index; a large one is ordered and cut short
    // by SQLite, reading as few rows as its indexes allow.
    const std::string limit = rowLimit > 0 ? " LIMIT " + std::to_string(rowLimit) : std::string();
    std::vector<Match> found;
    // Per side: the names of its last row when its limit cut it short.
    std::vector<std::optional<std::string>> cutAt(sides.size());
    auto readInto = [&](SQLite::Statement& q) {
        while (q.executeStep()) {
            Match m{q.getColumn(0).getInt64(), std::string()};
            const SQLite::Column last = q.getColumn(1), first = q.getColumn(2);
            AppendFolded(m.names, last.getText(), last.getBytes());
            m.names += '\0';
            AppendFolded(m.names, first.getText(), first.getBytes());
            found.push_back(std::move(m));
        }
        q.reset();
    };
    for (size_t side = 0; side < sides.size(); ++side) {
        if (counts[side] == 0)
            continue;
        if (rowLimit <= 0 || counts[side] <= m_readWhole) {
            readInto(bound("SELECT rowid, a_last, a_first FROM candidate_pairs WHERE " + sides[side], side));
            continue;
        }
        const size_t before = found.size();
        readInto(bound("SELECT rowid, a_last, a_first FROM candidate_pairs WHERE " + sides[side] +
                           " ORDER BY a_last, a_first, rowid" + limit,
                       side));
        if (rowLimit > 0 && found.size() - before == static_cast<size_t>(rowLimit))
            cutAt[side] = found.back().names;
    }
    const size_t wanted = rowLimit > 0 ? std::min(found.size(), static_cast<size_t>(rowLimit)) : found.size();
    const bool anyCut = std::any_of(cutAt.begin(), cutAt.end(), [](const auto& names) { return names.has_value(); });
    if (wanted > 0 && (wanted < found.size() || anyCut)) {
        const auto at = found.begin() + static_cast<std::ptrdiff_t>(wanted - 1);
        std::nth_element(found.begin(), at, found.end(), InNameOrder);
        const std::string boundary = at->names;
        // The keys settle the order among equal names, so every row with the
        // names at the limit is needed: a side cut off inside those names
        // gives the rest of them. (A side cut off later has none left.)
        std::unordered_set<std::int64_t> have;
        for (const Match& m : found)
            have.insert(m.row);
        const size_t split = boundary.find('\0');
        for (size_t side = 0; side < sides.size(); ++side) {
            if (!cutAt[side] || *cutAt[side] != boundary)
                continue;
            auto& q = bound("SELECT rowid FROM candidate_pairs WHERE " + sides[side] + " AND a_last = ? AND a_first = ?",
                            side, {boundary.substr(0, split), boundary.substr(split + 1)});
            while (q.executeStep()) {
                const std::int64_t row = q.getColumn(0).getInt64();
                if (have.insert(row).second)
                    found.push_back({row, boundary});
            }
            q.reset();
        }
        found.erase(std::partition(found.begin(), found.end(), [&](const Match& m) { return m.names <= boundary; }),
                    found.end());
    }
    const size_t base = pairs.size();
    auto& q = m_db.Prepare("SELECT " + std::string(kPairColumns) + " FROM candidate_pairs p" + kOrgJoins +
                           " WHERE p.rowid = ?");
    for (const Match& m : found) {
        q.bind(1, m.row);
        if (q.executeStep())
            pairs.push_back(ReadPair(q));
        q.reset();
    }
    std::sort(pairs.begin() + static_cast<std::ptrdiff_t>(base), pairs.end(), InOrder);
    if (pairs.size() > base + wanted)
        pairs.resize(base + wanted);
    return 0;
}

IndexedCandidateSearch::IndexedCandidateSearch(ArchiveDb& db)
    : m_db(db), m_fallback(std::make_unique<ScanCandidateSearch>(db))
{
}

IndexedCandidateSearch::~IndexedCandidateSearch() = default;

int IndexedCandidateSearch::Find(const CandidateCriteria& c, std::vector<CandidatePair>& pairs, long long& total)
{
    total = 0;
    if (c.reasonKind < 0 || (c.mergeOff && c.linkOff))
        return 0;
    // A search never writes: until the store is rebuilt after writes that
    // bypassed it, the straightforward query answers.
    if (!GuardDb("candidate search", [&] { return CandidateStore(m_db).Fresh(); }))
        return m_fallback->Find(c, pairs, total);

    const Where a = SideCriteria(c, "a"), b = SideCriteria(c, "b");
    const Where halves = Halves(c);
    Where where;
    if (!halves.sql.empty()) {
        where.And(halves.sql);
        where.binds = halves.binds;
    }
    // With patient criteria, either patient of a pair may meet them: the
    // pairs whose first patient does, and those whose second patient does
    // and first does not, each read from that side's index.
    std::vector<std::string> sides;
    std::vector<std::vector<std::string>> sideBinds;
    if (!a.sql.empty()) {
        Where first = a, second = b;
        second.And("NOT (" + a.sql + ")");
        second.binds.insert(second.binds.end(), a.binds.begin(), a.binds.end());
        for (Where* side : {&first, &second}) {
            if (!halves.sql.empty()) {
                side->And(halves.sql);
                side->binds.insert(side->binds.end(), halves.binds.begin(), halves.binds.end());
            }
            sides.push_back(side->sql);
            sideBinds.push_back(side->binds);
        }
    }
    const std::string whereSql = where.sql.empty() ? std::string() : " WHERE " + where.sql;

    return GuardDb("candidate search", [&] {
        // The count and the rows come from several statements: one read
        // snapshot keeps them in agreement while others write.
        ReadTransaction snapshot(m_db);
        auto bindAll = [](SQLite::Statement& q, const std::vector<std::string>& binds) {
            int i = 1;
            for (const auto& v : binds)
                q.bind(i++, v);
        };
        if (a.sql.empty()) {
            // No patient criterion: the kept totals answer.
            SQLite::Statement q(m_db.Handle(), "SELECT coalesce(sum(n), 0) FROM candidate_counts" +
                                                   (halves.sql.empty() ? std::string() : " WHERE " + halves.sql));
            bindAll(q, halves.binds);
            if (q.executeStep())
                total = q.getColumn(0).getInt64();
        } else {
            return FindMatching(sides, sideBinds, c.rowLimit, pairs, total);
        }
        if (total == 0)
            return 0;

        // The rows come straight off an index in the wanted order; the
        // planner would otherwise sort every pair of a broad half.
        const long long limit = c.rowLimit > 0 ? c.rowLimit : -1;
        std::string first = "SELECT key_a, key_b FROM candidate_pairs";
        first += " INDEXED BY "
                 + CandidateStore(m_db).IndexOfPairs(c.reasonKind > 0 ? "candidate_pairs_by_reason" : "candidate_pairs_in_order");
        first += whereSql + " ORDER BY a_last, a_first, key_a, key_b LIMIT " + std::to_string(limit);
        SQLite::Statement q(m_db.Handle(), "SELECT " + std::string(kPairColumns) + " FROM (" + first + ") t"
                                               " JOIN candidate_pairs p ON p.key_a = t.key_a AND p.key_b = t.key_b"
                                               + kOrgJoins + " ORDER BY p.a_last, p.a_first, p.key_a, p.key_b");
        bindAll(q, where.binds);
        while (q.executeStep())
            pairs.push_back(ReadPair(q));
        return 0;
    });
}
