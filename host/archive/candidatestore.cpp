#include "candidatestore.h"

#include "archivedb.h"

#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

using CandidateRules::Person;

namespace {

const char* const kPersonColumns =
    "patient_key, org_key, coalesce(link_group, ''), mrn, last_name, first_name, middle_name, sex_code, dob, global_id";

Person ReadPerson(SQLite::Statement& q)
{
    Person p;
    p.key = q.getColumn(0).getString();
    p.orgKey = q.getColumn(1).getString();
    p.group = q.getColumn(2).getString();
    p.mrn = q.getColumn(3).getString();
    p.last = q.getColumn(4).getString();
    p.first = q.getColumn(5).getString();
    p.middle = q.getColumn(6).getString();
    p.sex = q.getColumn(7).getString();
    p.dob = q.getColumn(8).getString();
    p.gid = q.getColumn(9).getString();
    p.Derive();
    return p;
}

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

int LowestRule(int rules)
{
    for (int r = 1; r <= CandidateRules::kCount; ++r)
        if (rules & (1 << r))
            return r;
    return 0;
}

const std::string kInsert =
    "INSERT INTO candidate_pairs(key_a, key_b, rules, reason, merge, org_a, org_b, a_last, a_first, a_middle, a_mrn, "
    "a_sex, a_dob, a_gid, b_last, b_first, b_middle, b_mrn, b_sex, b_dob, b_gid) "
    "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

void BindPair(SQLite::Statement& st, const Person& x, const Person& y, int rules)
{
    const Person& a = x.key < y.key ? x : y;
    const Person& b = x.key < y.key ? y : x;
    st.bind(1, a.key);
    st.bind(2, b.key);
    st.bind(3, rules);
    st.bind(4, LowestRule(rules));
    st.bind(5, a.orgKey == b.orgKey ? 1 : 0);
    st.bind(6, a.orgKey);
    st.bind(7, b.orgKey);
    int i = 8;
    for (const Person* p : {&a, &b}) {
        st.bind(i++, p->last);
        st.bind(i++, p->first);
        st.bind(i++, p->middle);
        st.bind(i++, p->mrn);
        st.bind(i++, p->sex);
        st.bind(i++, p->dob);
        st.bind(i++, p->gid);
    }
}

// A second hash of another kind than std::hash (FNV-1a).
std::uint64_t OtherHash(const std::string& text)
{
    std::uint64_t h = 14695981039346656037ull;
    for (const char c : text)
        h = (h ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    return h;
}

// Adds the pairs of one rule (and of the rules sharing its blocks) to
// `masks`, keyed by (lower index, higher index) of `people`. Blocks are found
// by sorting two unrelated 64-bit hashes of the block keys, so two blocks are
// joined only when both hashes of their keys collide at once.
void PairBlocks(int rule, const std::vector<Person>& people, int cap, std::unordered_map<std::uint64_t, int>& masks)
{
    std::vector<int> tests;
    for (int other = rule; other <= CandidateRules::kCount; ++other)
        if (CandidateRules::SameBlockAs(other) == rule)
            tests.push_back(other);
    std::vector<std::tuple<std::uint64_t, std::uint64_t, std::uint32_t>> hashed;
    hashed.reserve(people.size());
    const std::hash<std::string> hasher;
    for (std::uint32_t i = 0; i < people.size(); ++i)
        for (const auto& block : CandidateRules::BlockKeys(rule, people[i]))
            hashed.emplace_back(hasher(block), OtherHash(block), i);
    std::sort(hashed.begin(), hashed.end());
    for (size_t from = 0; from < hashed.size();) {
        size_t to = from + 1;
        while (to < hashed.size() && std::get<0>(hashed[to]) == std::get<0>(hashed[from])
               && std::get<1>(hashed[to]) == std::get<1>(hashed[from]))
            ++to;
        if (to - from >= 2 && static_cast<int>(to - from) <= cap) {
            for (size_t i = from; i < to; ++i)
                for (size_t j = i + 1; j < to; ++j) {
                    const std::uint32_t x = std::get<2>(hashed[i]), y = std::get<2>(hashed[j]);
                    if (x == y)
                        continue;
                    int mask = 0;
                    for (const int test : tests)
                        if (CandidateRules::PairHolds(test, people[x], people[y]))
                            mask |= 1 << test;
                    if (mask)
                        masks[(static_cast<std::uint64_t>(std::min(x, y)) << 32) | std::max(x, y)] |= mask;
                }
        }
        from = to;
    }
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
    std::vector<Person> out;
    out.reserve(found.size());
    for (auto& [key, person] : found)
        out.push_back(std::move(person));
    return out;
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
        auto& st = m_db.Prepare(kInsert);
        BindPair(st, x, y, rules);
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
    return GuardDb("rebuilding candidates", [&]() -> long long {
        // Reading, one step per rule, writing, indexing, finishing.
        const int steps = CandidateRules::kCount + 4;
        int step = 0;
        auto report = [&](const char* what) {
            if (progress)
                progress(step, steps, what);
            ++step;
        };
        WriteTransaction tx(m_db);
        const int cap = BlockCap();
        report("reading patients");
        std::vector<Person> people;
        {
            SQLite::Statement q(m_db.Handle(), std::string("SELECT ") + kPersonColumns + " FROM patients");
            while (q.executeStep())
                people.push_back(ReadPerson(q));
        }
        std::set<std::pair<std::string, std::string>> ignored;
        {
            SQLite::Statement q(m_db.Handle(), "SELECT key_a, key_b FROM ignored_pairs");
            while (q.executeStep())
                ignored.emplace(q.getColumn(0).getString(), q.getColumn(1).getString());
        }
        // Pair masks by (lower index, higher index) of `people`.
        std::unordered_map<std::uint64_t, int> masks;
        for (int rule = 1; rule <= CandidateRules::kCount; ++rule) {
            report("blocking");
            // Rules of one block are paired in the pass of the first of them.
            if (CandidateRules::SameBlockAs(rule) == rule)
                PairBlocks(rule, people, cap, masks);
        }
        report("writing pairs");
        // A bulk load is faster into a bare table: the secondary indexes and
        // the counting triggers are dropped here and made again below, all
        // inside this transaction; the totals are written once at the end.
        std::vector<std::string> rebuildAfter;
        {
            std::vector<std::string> names;
            SQLite::Statement q(m_db.Handle(), "SELECT type, name, sql FROM sqlite_master WHERE tbl_name = "
                                               "'candidate_pairs' AND type IN ('index', 'trigger') AND sql IS NOT NULL");
            while (q.executeStep()) {
                names.push_back(std::string("DROP ") + (q.getColumn(0).getString() == "index" ? "INDEX " : "TRIGGER ")
                                + q.getColumn(1).getString());
                rebuildAfter.push_back(q.getColumn(2).getString());
            }
            for (const auto& drop : names)
                m_db.Exec(drop);
        }
        m_db.Exec("DELETE FROM candidate_pairs");
        m_db.Exec("DELETE FROM candidate_counts");
        // Written in key order: the primary key's b-tree grows at its end.
        std::vector<std::pair<std::uint64_t, int>> list(masks.begin(), masks.end());
        masks.clear();
        auto lowKey = [&](const std::pair<std::uint64_t, int>& e) -> const std::string& {
            const Person& x = people[e.first >> 32];
            const Person& y = people[e.first & 0xffffffffu];
            return x.key < y.key ? x.key : y.key;
        };
        std::sort(list.begin(), list.end(), [&](const auto& l, const auto& r) { return lowKey(l) < lowKey(r); });
        long long written = 0;
        std::map<std::tuple<int, int, std::string, std::string>, long long> counts;
        SQLite::Statement st(m_db.Handle(), kInsert);
        for (const auto& [id, mask] : list) {
            const Person& x = people[id >> 32];
            const Person& y = people[id & 0xffffffffu];
            if (!x.group.empty() && x.group == y.group)
                continue;
            if (!ignored.empty() && ignored.count({std::min(x.key, y.key), std::max(x.key, y.key)}))
                continue;
            BindPair(st, x, y, mask);
            m_db.Write(st);
            st.reset();
            ++written;
            const Person& a = x.key < y.key ? x : y;
            const Person& b = x.key < y.key ? y : x;
            ++counts[{LowestRule(mask), a.orgKey == b.orgKey ? 1 : 0, a.orgKey, b.orgKey}];
        }
        SQLite::Statement count(m_db.Handle(),
                                "INSERT INTO candidate_counts(reason, merge, org_a, org_b, n) VALUES (?, ?, ?, ?, ?)");
        for (const auto& [k, n] : counts) {
            count.bind(1, std::get<0>(k));
            count.bind(2, std::get<1>(k));
            count.bind(3, std::get<2>(k));
            count.bind(4, std::get<3>(k));
            count.bind(5, static_cast<int64_t>(n));
            m_db.Write(count);
            count.reset();
        }
        report("indexing");
        for (const auto& ddl : rebuildAfter)
            m_db.Exec(ddl);
        report("finishing");
        MarkFresh();
        tx.Commit();
        report("done");
        return written;
    });
}
