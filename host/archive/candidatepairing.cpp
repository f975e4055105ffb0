#include "candidatepairing.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <functional>
#include <tuple>

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

namespace {

// A second hash of another kind than std::hash (FNV-1a).
std::uint64_t OtherHash(const std::string& text)
{
    std::uint64_t h = 14695981039346656037ull;
    for (const char c : text)
        h = (h ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    return h;
}

} // namespace

// Blocks are found by sorting two unrelated 64-bit hashes of the block keys,
// so two blocks are joined only when both hashes of their keys collide at once.
void PairBlocks(int rule, const std::vector<Person>& people, int cap, Masks& masks)
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

} // namespace CandidatePairing
