#include "candidatepairing.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <functional>
#include <utility>

using CandidateRules::Person;

namespace CandidatePairing {

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

int LowestRule(int rules)
{
    for (int r = 1; r <= CandidateRules::kCount; ++r)
        if (rules & (1 << r))
            return r;
    return 0;
}

std::string InsertSql(const std::string& table)
{
    return "INSERT INTO " + table
           + "(key_a, key_b, rules, reason, merge, org_a, org_b, a_last, a_first, a_middle, a_mrn, "
             "a_sex, a_dob, a_gid, b_last, b_first, b_middle, b_mrn, b_sex, b_dob, b_gid) "
             "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";
}

void BindPair(SQLite::Statement& st, const Person& x, const Person& y, int rules)
{
    // The patients outlive the statement's execution: their texts need no copy.
    const Person& a = x.key < y.key ? x : y;
    const Person& b = x.key < y.key ? y : x;
    st.bindNoCopy(1, a.key);
    st.bindNoCopy(2, b.key);
    st.bind(3, rules);
    st.bind(4, LowestRule(rules));
    st.bind(5, a.orgKey == b.orgKey ? 1 : 0);
    st.bindNoCopy(6, a.orgKey);
    st.bindNoCopy(7, b.orgKey);
    int i = 8;
    for (const Person* p : {&a, &b}) {
        st.bindNoCopy(i++, p->last);
        st.bindNoCopy(i++, p->first);
        st.bindNoCopy(i++, p->middle);
        st.bindNoCopy(i++, p->mrn);
        st.bindNoCopy(i++, p->sex);
        st.bindNoCopy(i++, p->dob);
        st.bindNoCopy(i++, p->gid);
    }
}

namespace {

// A second hash of another kind than std::hash (FNV-1a), to tell apart the
// rare blocks whose first hashes collide.
std::uint32_t OtherHash(const std::string& text)
{
    std::uint32_t h = 2166136261u;
    for (const char c : text)
        h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
    return h;
}

// A block key of one patient, as two hashes.
struct Entry
{
    std::uint64_t hash;
    std::uint32_t check;
    std::uint32_t index;
};

// Orders by `hash`, 16 bits a pass (least significant first, each pass
// stable); entries of equal hash but another check are then put in order
// among themselves, so equal blocks lie side by side.
void SortByBlock(std::vector<Entry>& entries)
{
    constexpr int kBits = 16;
    constexpr std::size_t kBuckets = std::size_t(1) << kBits;
    std::vector<Entry> other(entries.size());
    std::vector<std::size_t> start(kBuckets);
    for (int shift = 0; shift < 64; shift += kBits) {
        std::fill(start.begin(), start.end(), 0);
        for (const Entry& e : entries)
            ++start[(e.hash >> shift) & (kBuckets - 1)];
        std::size_t at = 0;
        for (auto& n : start)
            at += std::exchange(n, at);
        for (const Entry& e : entries)
            other[start[(e.hash >> shift) & (kBuckets - 1)]++] = e;
        entries.swap(other);
    }
    for (std::size_t from = 0; from < entries.size();) {
        std::size_t to = from + 1;
        while (to < entries.size() && entries[to].hash == entries[from].hash)
            ++to;
        if (to - from > 1)
            std::sort(entries.begin() + static_cast<std::ptrdiff_t>(from), entries.begin() + static_cast<std::ptrdiff_t>(to),
                      [](const Entry& a, const Entry& b) { return a.check < b.check; });
        from = to;
    }
}

} // namespace

// Blocks are found by sorting two unrelated hashes of the block keys (96
// bits in all), so two blocks are joined only when both collide at once.
void PairBlocks(int rule, const std::vector<Person>& people, int cap, Masks& masks)
{
    std::vector<int> tests;
    for (int other = rule; other <= CandidateRules::kCount; ++other)
        if (CandidateRules::SameBlockAs(other) == rule)
            tests.push_back(other);
    std::vector<Entry> entries;
    entries.reserve(people.size());
    const std::hash<std::string> hasher;
    for (std::uint32_t i = 0; i < people.size(); ++i)
        for (const auto& block : CandidateRules::BlockKeys(rule, people[i]))
            entries.push_back({hasher(block), OtherHash(block), i});
    SortByBlock(entries);
    for (size_t from = 0; from < entries.size();) {
        size_t to = from + 1;
        while (to < entries.size() && entries[to].hash == entries[from].hash && entries[to].check == entries[from].check)
            ++to;
        if (to - from >= 2 && static_cast<int>(to - from) <= cap) {
            for (size_t i = from; i < to; ++i)
                for (size_t j = i + 1; j < to; ++j) {
                    const std::uint32_t x = entries[i].index, y = entries[j].index;
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

} // namespace CandidatePairing
