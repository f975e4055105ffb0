#pragma once

#include "candidatesearch.h"

class ArchiveDb;

// The first implementation: one SQL self-join over the patient indexes.
class BRAVIK_ARCHIVE_EXPORT ScanCandidateSearch : public CandidateSearch
{
public:
    explicit ScanCandidateSearch(ArchiveDb& db);
    int Find(const CandidateCriteria& criteria, std::vector<CandidatePair>& pairs, long long& total) override;

private:
    ArchiveDb& m_db;
};
