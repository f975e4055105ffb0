#pragma once

#include "bravik_archive_export.h"
#include "candidaterules.h"

#include <functional>
#include <string>
#include <vector>

class ArchiveDb;
namespace SQLite {
class Statement;
}

// The kept merge/link candidate pairs. The services call Before() and
// After() around their writes, inside their own transaction, so the pairs
// change with the patients or not at all. When something wrote patients
// without them (a bulk load) the store is stale and Rebuild() recomputes it.
class BRAVIK_ARCHIVE_EXPORT CandidateStore
{
public:
    explicit CandidateStore(ArchiveDb& db);

    // Whether the pairs match the patients (false after writes that bypassed the upkeep).
    bool Fresh();

    // What the upkeep needs from before a change: the patients as they were.
    struct Snapshot
    {
        bool fresh = false;
        std::vector<CandidateRules::Person> before;
        std::vector<std::string> keys;
    };
    // Call inside the transaction, before writing; `keys` are the patients
    // whose pairs the change may alter.
    Snapshot Before(const std::vector<std::string>& keys);
    // Call after writing, before committing. Recomputes the pairs of the
    // snapshot's patients plus `moreKeys` (e.g. a merge survivor). Does
    // nothing when the store was stale before the change.
    void After(const Snapshot& snapshot, const std::vector<std::string>& moreKeys = {});

    // Recomputes every pair beside the kept ones and swaps them in (see
    // CandidateRebuild): the pairs kept, or -1 when another rebuild took the
    // work over or the patients kept changing. Progress: (step, of steps, what).
    using Progress = std::function<void(int, int, const char*)>;
    long long Rebuild(const Progress& progress = Progress());

    // Records that the pairs match the patients (inside the caller's transaction).
    void MarkFresh();

    // The name one of the pairs' indexes has now: a rebuild gives each index
    // the other of two names, `name` and `name`_next.
    std::string IndexOfPairs(const std::string& name);

    // The site's block cap (CandidateRules::kBlockCapSetting), at least 2.
    int BlockCap();
    // Stores a new cap (at least 2) and marks the pairs stale: they change
    // with it, so a rebuild must follow.
    void SetBlockCap(int cap);

private:
    bool LoadPerson(const std::string& key, CandidateRules::Person& p);
    // Patients that can share a block with `p`: same identifier, same or swapped
    // birth date, same names as written, one name as written born the same year
    // or day, one name as written with the other's first letter, the initials
    // of both names born in a near month or day.
    std::vector<CandidateRules::Person> Neighbours(const CandidateRules::Person& p);
    // Whether x and y share another block of `rule` than `block` that is within the cap.
    void NameInitialNeighbours(const CandidateRules::Person& p, const std::function<void(SQLite::Statement&)>& collect);
    void InitialsNeighbours(const CandidateRules::Person& p, const std::function<void(SQLite::Statement&)>& collect);
    bool HeldElsewhere(int rule, const CandidateRules::Person& x, const CandidateRules::Person& y,
                       const std::string& block, int cap);
    bool Excluded(const CandidateRules::Person& x, const CandidateRules::Person& y);
    void Upsert(const CandidateRules::Person& x, const CandidateRules::Person& y, int rules);
    void ClearRule(const CandidateRules::Person& x, const CandidateRules::Person& y, int rule);
    void RemovePairsOf(const std::string& key);

    ArchiveDb& m_db;
};
