#include "candidatestore.h"

#include "archivedb.h"
#include "candidatepairing.h"
#include "candidaterebuild.h"

#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

using CandidateRules::Person;
using CandidatePairing::kPersonColumns;
using CandidatePairing::LowestRule;
using CandidatePairing::ReadPerson;

namespace {

bool Has(const std::vector<std::string>& blocks, const std::string& block)
{
    return std::find(blocks.begin(), blocks.end(), block) != blocks.end();
}

// The blocks of `rule` of each patient of `around`.
std::vector<std::vector<std::string>> BlocksOf(const std::vector<Person>& around, int rule)
{
    std::vector<std::vector<std::string>> out;
    out.reserve(around.size());
    for (const auto& n : around)
        out.push_back(CandidateRules::BlockKeys(rule, n));
    return out;
}

// The blocks of each patient of `around`, worked out once for the rules
// that share them.
class BlockCache
{
public:
    explicit BlockCache(const std::vector<Person>& around)
        : m_around(around)
    {
    }
    const std::vector<std::vector<std::string>>& Of(int rule)
    {
        auto [it, added] = m_blocks.try_emplace(CandidateRules::SameBlockAs(rule));
        if (added)
            it->second = BlocksOf(m_around, rule);
        return it->second;
    }

private:
    const std::vector<Person>& m_around;
    std::map<int, std::vector<std::vector<std::string>>> m_blocks;
};

// The patients of `around` in `block`, given their blocks.
std::vector<const Person*> Members(const std::vector<Person>& around, const std::vector<std::vector<std::string>>& blocks,
                                   const std::string& block)
{
    std::vector<const Person*> out;
    for (size_t i = 0; i < around.size(); ++i)
        if (Has(blocks[i], block))
            out.push_back(&around[i]);
    return out;
}

} // namespace

CandidateStore::CandidateStore(ArchiveDb& db)
    : m_db(db)
{
}

bool CandidateStore::Fresh()
{
    auto& q = m_db.Prepare("SELECT fresh FROM candidate_state WHERE id = 1");
    const bool fresh = q.executeStep() && q.getColumn(0).getInt() != 0;
    q.reset();
    return fresh;
}

int CandidateStore::BlockCap()
{
    auto& q = m_db.Prepare("SELECT value FROM site_settings WHERE scope = 'policy' AND name = ?");
    q.bind(1, CandidateRules::kBlockCapSetting);
    int cap = CandidateRules::kDefaultBlockCap;
    if (q.executeStep()) {
        try {
            cap = std::stoi(q.getColumn(0).getString());
        } catch (...) {
            cap = CandidateRules::kDefaultBlockCap;
        }
    }
    q.reset();
    return cap < 2 ? 2 : cap;
}

void CandidateStore::SetBlockCap(int cap)
{
    GuardDb("setting the block cap", [&] {
        WriteTransaction tx(m_db);
        auto& st = m_db.Prepare("INSERT INTO site_settings(scope, name, value) VALUES ('policy', ?1, ?2) "
                                "ON CONFLICT (scope, name) DO UPDATE SET value = excluded.value");
        st.bind(1, CandidateRules::kBlockCapSetting);
        st.bind(2, std::to_string(cap < 2 ? 2 : cap));
        m_db.Write(st);
        m_db.Exec("UPDATE candidate_state SET fresh = 0");
        tx.Commit();
        return 0;
    });
}

std::string CandidateStore::IndexOfPairs(const std::string& name)
{
    auto& q = m_db.Prepare("SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = 'candidate_pairs' "
                           "AND name IN (?1, ?1 || '_next')");
    q.bind(1, name);
    const std::string found = q.executeStep() ? q.getColumn(0).getString() : name;
    q.reset();
    return found;
}

bool CandidateStore::LoadPerson(const std::string& key, Person& p)
{
    auto& q = m_db.Prepare(std::string("SELECT ") + kPersonColumns + " FROM patients WHERE patient_key = ?");
    q.bind(1, key);
    const bool found = q.executeStep();
    if (found)
        p = ReadPerson(q);
    q.reset();
    return found;
}

std::vector<Person> CandidateStore::Neighbours(const Person& p)
{
    std::map<std::string, Person> found;
    auto collect = [&](SQLite::Statement& q) {
        while (q.executeStep()) {
            Person n = ReadPerson(q);
            if (n.key != p.key)
                found.emplace(n.key, std::move(n));
        }
        q.reset();
    };
    auto run = [&](const std::string& sql, const std::string& value) {
        if (value.empty())
            return;
        auto& q = m_db.Prepare(sql);
        q.bind(1, value);
        collect(q);
    };
    run(std::string("SELECT ") + kPersonColumns + " FROM patients WHERE global_id = ? AND global_id <> ''", p.gid);
    const std::string byDob = std::string("SELECT ") + kPersonColumns + " FROM patients WHERE dob = ? AND dob <> ''";
    run(byDob, p.dob);
    run(byDob, CandidateRules::SwapDayMonth(p.dob));
    // The same names as written, whatever the birth date (the name index, case-blind).
    if (!p.last.empty() && !p.first.empty()) {
        auto& q = m_db.Prepare(std::string("SELECT ") + kPersonColumns + " FROM patients WHERE last_name = ?1 COLLATE "
                               "NOCASE AND first_name = ?2 COLLATE NOCASE");
        q.bind(1, p.last);
        q.bind(2, p.first);
        collect(q);
    }
    // One name as written, the same birth year or the same birth month and
    // day (a name index each, case-blind).
    auto nearBirth = [&](const char* column, const std::string& name) {
        if (name.empty() || p.last.empty() || p.first.empty() || p.dob.size() < 4)
            return;
        auto& q = m_db.Prepare(std::string("SELECT ") + kPersonColumns + " FROM patients WHERE " + column
                               + " = ?1 COLLATE NOCASE AND (substr(dob, 1, 4) = ?2 OR substr(dob, 5, 4) = ?3)");
        q.bind(1, name);
        q.bind(2, p.dob.substr(0, 4));
        q.bind(3, p.dob.size() >= 8 ? p.dob.substr(4, 4) : std::string("-"));
        collect(q);
    };
    // Either name in either field, for names recorded in each other's fields.
    for (const char* column : {"last_name", "first_name"}) {
        nearBirth(column, p.last);
        nearBirth(column, p.first);
    }
    NameInitialNeighbours(p, collect);
    InitialsNeighbours(p, collect);
    std::vector<Person> out;
    out.reserve(found.size());
    for (auto& [key, person] : found)
        out.push_back(std::move(person));
    return out;
}

// The blocks of a name as written with the other name's first letter hold
// whole families of common names; a block with more than cap + 1 others pairs
// nobody, so no more of it than that is read (a name index range each).
void CandidateStore::NameInitialNeighbours(const Person& p, const std::function<void(SQLite::Statement&)>& collect)
{
    if (p.last.empty() || p.first.empty())
        return;
    const int most = BlockCap() + 2; // p itself may be among them
    for (const auto& [kept, other] : {std::pair(&p.last, &p.first), std::pair(&p.first, &p.last)}) {
        const std::string letter = CandidateRules::Initial(*other);
        for (const auto& [column, rest] : {std::pair("last_name", "first_name"), std::pair("first_name", "last_name")}) {
            auto& q = m_db.Prepare(std::string("SELECT ") + kPersonColumns + " FROM patients WHERE " + column
                                   + " = ?1 COLLATE NOCASE AND " + rest + " >= ?2 COLLATE NOCASE AND " + rest
                                   + " < ?3 COLLATE NOCASE LIMIT ?4");
            q.bind(1, *kept);
            q.bind(2, letter);
            q.bind(3, letter + '\xff');
            q.bind(4, most);
            collect(q);
        }
    }
}

// The initials of both names with the birth year and month, year and day, or
// month and day (the initials index); the same or swapped birth date is read above.
void CandidateStore::InitialsNeighbours(const Person& p, const std::function<void(SQLite::Statement&)>& collect)
{
    if (p.last.empty() || p.first.empty() || !p.dobValid)
        return;
    const std::string initials = CandidateRules::Initials(p.last, p.first);
    const std::string lower = initials.substr(0, CandidateRules::Initial(initials).size());
    const std::string upper = initials.substr(lower.size());
    const std::string select = std::string("SELECT ") + kPersonColumns
                             + " FROM patients WHERE min(upper(substr(last_name, 1, 1)), upper(substr(first_name, 1, 1)))"
                               " = ?1 AND max(upper(substr(last_name, 1, 1)), upper(substr(first_name, 1, 1))) = ?2"
                               " AND dob <> '' AND ";
    auto run = [&](const std::string& condition, const std::vector<std::string>& values) {
        auto& q = m_db.Prepare(select + condition);
        q.bind(1, lower);
        q.bind(2, upper);
        for (size_t i = 0; i < values.size(); ++i)
            q.bind(static_cast<int>(i + 3), values[i]);
        collect(q);
    };
    const std::string& d = p.dob;
    run("dob >= ?3 AND dob < ?4", {d.substr(0, 6), d.substr(0, 6) + ":"});
    run("dob >= ?3 AND dob < ?4 AND substr(dob, 7, 2) = ?5", {d.substr(0, 4), d.substr(0, 4) + ":", d.substr(6, 2)});
    run("substr(dob, 5, 4) = ?3", {d.substr(4, 4)});
}

bool CandidateStore::HeldElsewhere(int rule, const Person& x, const Person& y, const std::string& block, int cap)
{
    const auto theirs = CandidateRules::BlockKeys(rule, y);
    for (const auto& other : CandidateRules::BlockKeys(rule, x))
        if (other != block && Has(theirs, other)) {
            const auto around = Neighbours(x);
            if (static_cast<int>(Members(around, BlocksOf(around, rule), other).size()) < cap)
                return true;
        }
    return false;
}

bool CandidateStore::Excluded(const Person& x, const Person& y)
{
    // Already linked across organizations: nothing left to decide.
    if (!x.group.empty() && x.group == y.group)
        return true;
    auto& q = m_db.Prepare("SELECT 1 FROM ignored_pairs WHERE key_a = ? AND key_b = ?");
    q.bind(1, std::min(x.key, y.key));
    q.bind(2, std::max(x.key, y.key));
    const bool ignored = q.executeStep();
    q.reset();
    return ignored;
}

void CandidateStore::Upsert(const Person& x, const Person& y, int rules)
{
    if (Excluded(x, y))
        return;
    auto& q = m_db.Prepare("SELECT rules FROM candidate_pairs WHERE key_a = ? AND key_b = ?");
    q.bind(1, std::min(x.key, y.key));
    q.bind(2, std::max(x.key, y.key));
    const int had = q.executeStep() ? q.getColumn(0).getInt() : -1;
    q.reset();
    if (had < 0) {
        auto& st = m_db.Prepare(CandidatePairing::InsertSql("candidate_pairs"));
        CandidatePairing::BindPair(st, x, y, rules);
        m_db.Write(st);
        return;
    }
    if ((had | rules) == had)
        return;
    auto& st = m_db.Prepare("UPDATE candidate_pairs SET rules = ?1, reason = ?2 WHERE key_a = ?3 AND key_b = ?4");
    st.bind(1, had | rules);
    st.bind(2, LowestRule(had | rules));
    st.bind(3, std::min(x.key, y.key));
    st.bind(4, std::max(x.key, y.key));
    m_db.Write(st);
}

void CandidateStore::ClearRule(const Person& x, const Person& y, int rule)
{
    auto& q = m_db.Prepare("SELECT rules FROM candidate_pairs WHERE key_a = ? AND key_b = ?");
    q.bind(1, std::min(x.key, y.key));
    q.bind(2, std::max(x.key, y.key));
    const int had = q.executeStep() ? q.getColumn(0).getInt() : 0;
    q.reset();
    if (!(had & (1 << rule)))
        return;
    const int left = had & ~(1 << rule);
    if (left == 0) {
        auto& st = m_db.Prepare("DELETE FROM candidate_pairs WHERE key_a = ? AND key_b = ?");
        st.bind(1, std::min(x.key, y.key));
        st.bind(2, std::max(x.key, y.key));
        m_db.Write(st);
        return;
    }
    auto& st = m_db.Prepare("UPDATE candidate_pairs SET rules = ?1, reason = ?2 WHERE key_a = ?3 AND key_b = ?4");
    st.bind(1, left);
    st.bind(2, LowestRule(left));
    st.bind(3, std::min(x.key, y.key));
    st.bind(4, std::max(x.key, y.key));
    m_db.Write(st);
}

void CandidateStore::RemovePairsOf(const std::string& key)
{
    for (const char* sql : {"DELETE FROM candidate_pairs WHERE key_a = ?", "DELETE FROM candidate_pairs WHERE key_b = ?"}) {
        auto& st = m_db.Prepare(sql);
        st.bind(1, key);
        m_db.Write(st);
    }
}

void CandidateStore::MarkFresh()
{
    auto& st = m_db.Prepare("UPDATE candidate_state SET fresh = 1 WHERE id = 1");
    m_db.Write(st);
}

CandidateStore::Snapshot CandidateStore::Before(const std::vector<std::string>& keys)
{
    Snapshot s;
    s.fresh = Fresh();
    if (!s.fresh)
        return s;
    s.keys = keys;
    for (const auto& key : keys) {
        Person p;
        if (LoadPerson(key, p))
            s.before.push_back(std::move(p));
    }
    return s;
}

void CandidateStore::After(const Snapshot& snapshot, const std::vector<std::string>& moreKeys)
{
    if (!snapshot.fresh)
        return;
    const int cap = BlockCap();
    std::set<std::string> keys(snapshot.keys.begin(), snapshot.keys.end());
    keys.insert(moreKeys.begin(), moreKeys.end());
    std::map<std::string, Person> now;
    for (const auto& key : keys) {
        Person p;
        if (LoadPerson(key, p))
            now.emplace(key, std::move(p));
    }
    for (const auto& key : keys)
        RemovePairsOf(key);

    // Pairs between two other patients change only when a block crosses the
    // cap; those pairs are set or cleared for that rule alone (cleared only
    // when no other block of the rule still pairs them).
    auto eachOtherPair = [&](const std::vector<const Person*>& in, int rule, const std::string& block, bool set) {
        for (size_t i = 0; i < in.size(); ++i)
            for (size_t j = i + 1; j < in.size(); ++j) {
                const Person& x = *in[i];
                const Person& y = *in[j];
                if (keys.count(x.key) || keys.count(y.key) || !CandidateRules::PairHolds(rule, x, y))
                    continue;
                if (set)
                    Upsert(x, y, 1 << rule);
                else if (!HeldElsewhere(rule, x, y, block, cap))
                    ClearRule(x, y, rule);
            }
    };
    for (const Person& old : snapshot.before) {
        const auto it = now.find(old.key);
        const std::vector<Person> around = Neighbours(old);
        BlockCache cache(around);
        for (int rule = 1; rule <= CandidateRules::kCount; ++rule) {
            const auto kept = it != now.end() ? CandidateRules::BlockKeys(rule, it->second) : std::vector<std::string>();
            for (const auto& block : CandidateRules::BlockKeys(rule, old)) {
                if (Has(kept, block))
                    continue;
                const auto in = Members(around, cache.Of(rule), block);
                if (static_cast<int>(in.size()) == cap) // it held cap + 1 with this patient
                    eachOtherPair(in, rule, block, true);
            }
        }
    }
    for (const auto& [key, p] : now) {
        const Person* old = nullptr;
        for (const auto& b : snapshot.before)
            if (b.key == key)
                old = &b;
        const std::vector<Person> around = Neighbours(p);
        BlockCache cache(around);
        std::unordered_map<std::string, int> masks;
        for (int rule = 1; rule <= CandidateRules::kCount; ++rule) {
            const auto mine = CandidateRules::BlockKeys(rule, p);
            if (mine.empty())
                continue;
            const auto had = old ? CandidateRules::BlockKeys(rule, *old) : std::vector<std::string>();
            const auto& blocks = cache.Of(rule);
            for (const auto& block : mine) {
                const auto in = Members(around, blocks, block);
                if (!Has(had, block) && static_cast<int>(in.size()) == cap) // it now holds cap + 1
                    eachOtherPair(in, rule, block, false);
                if (static_cast<int>(in.size()) + 1 > cap)
                    continue;
                for (const Person* n : in)
                    if (CandidateRules::PairHolds(rule, p, *n))
                        masks[n->key] |= 1 << rule;
            }
        }
        for (const Person& n : around) {
            const auto m = masks.find(n.key);
            if (m != masks.end())
                Upsert(p, n, m->second);
        }
    }
    MarkFresh();
}

long long CandidateStore::Rebuild(const Progress& progress)
{
    return GuardDb("rebuilding candidates", [&] { return CandidateRebuild(m_db, progress).Run(); });
}
