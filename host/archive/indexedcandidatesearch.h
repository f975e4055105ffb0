#pragma once

#include "candidatesearch.h"

#include <memory>
#include <string>
#include <vector>

class ArchiveDb;
class CandidateStore;

// Answers from the kept candidate pairs: index ranges for the name, birth
// date, MRN and identifier criteria, the pairs' sort order for the first
// rows, and the kept totals when no patient criterion is given. While the
// store is stale the straightforward search answers instead.
class BRAVIK_ARCHIVE_EXPORT IndexedCandidateSearch : public CandidateSearch
{
public:
    explicit IndexedCandidateSearch(ArchiveDb& db);
    ~IndexedCandidateSearch() override;
    int Find(const CandidateCriteria& criteria, std::vector<CandidatePair>& pairs, long long& total) override;

    // Up to this many matches one side of a patient search is read whole
    // rather than ordered and cut short by SQLite (tests set 0 to exercise
    // the second way on small archives).
    static constexpr long long kReadWhole = 2000;
    void SetReadWhole(long long matches) { m_readWhole = matches; }

private:
    // `sides`: conditions no pair meets twice, each with its bound values.
    int FindMatching(const std::vector<std::string>& sides, const std::vector<std::vector<std::string>>& binds,
                     int rowLimit, std::vector<CandidatePair>& pairs, long long& total);

    ArchiveDb& m_db;
    std::unique_ptr<CandidateSearch> m_fallback;
    long long m_readWhole = kReadWhole;
};
