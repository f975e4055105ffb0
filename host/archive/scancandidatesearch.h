#pragma once

#include "candidatesearch.h"

class ArchiveDb;

// The straightforward search: the blocking rules as SQL self-joins over the
// patients, ignored and linked pairs taken out with anti-joins. Slow at scale;
// kept as the reference the kept pairs are checked against.
class BRAVIK_ARCHIVE_EXPORT ScanCandidateSearch : public CandidateSearch
{
public:
    explicit ScanCandidateSearch(ArchiveDb& db);
    int Find(const CandidateCriteria& criteria, std::vector<CandidatePair>& pairs, long long& total) override;

private:
    ArchiveDb& m_db;
};
