#pragma once

#include "candidatepairing.h"
#include "candidatestore.h"

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

class ArchiveDb;

// Recomputes every kept pair without keeping other workstations from saving.
// The patients are read under a snapshot that takes no lock; the pairs are
// written beside the kept ones (candidate_pairs_next) in short transactions,
// indexed one index a transaction, and swapped in with one short transaction.
// While it runs, triggers note every patient and ignored pair that changes;
// the swap brings the new pairs up to date for them with the ordinary upkeep.
// When too much changed meanwhile it starts again, a few times at most.
class CandidateRebuild
{
public:
    CandidateRebuild(ArchiveDb& db, const CandidateStore::Progress& progress);

    // The pairs swapped in, or -1 when none were: another rebuild started
    // since (it finishes the work), or the patients kept changing.
    long long Run();

    // Changes made during one attempt that the swap still applies; more
    // start the attempt again.
    static constexpr int kMostChangesApplied = 256;
    static constexpr int kAttempts = 3;
    // Pair rows a write transaction of the rebuild adds.
    static constexpr int kRowsPerTransaction = 10000;

private:
    enum class Outcome { Swapped, Again, Superseded };
    Outcome Attempt();
    void Claim();
    bool Ours();
    void ReadSnapshot();
    void ReadPeople();
    void Block();
    void WritePairs();
    void Index();
    Outcome Swap();
    void ApplyChanges(const std::vector<std::string>& changed);
    void Release();
    void StopNoting();
    void Report(const char* what);

    ArchiveDb& m_db;
    CandidateStore::Progress m_progress;
    int m_step = 0;
    long long m_token = 0;
    int m_cap = 0;
    std::vector<CandidateRules::Person> m_people;
    std::vector<std::pair<std::string, std::string>> m_ignored;
    CandidatePairing::Masks m_masks;
    long long m_written = 0;
    // Pairs per reason, half and organizations of what was written.
    std::map<std::tuple<int, int, std::string_view, std::string_view>, long long> m_counts;
};
