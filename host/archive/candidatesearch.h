#pragma once

#include "bravik_archive_export.h"

#include <string>
#include <vector>

// What a merge/link candidate search asks, in the archive's own terms.
struct CandidateCriteria
{
    // LIKE patterns ('%', '_', escaped by '\'); empty means no criterion.
    std::string lastName;
    std::string firstName;
    std::string mrn;
    bool numericMrn = false;
    std::vector<std::string> globalIds;
    std::string sexCode;
    std::string dobBegin; // YYYYMMDD, empty = open
    std::string dobEnd;
    // Reason kind wanted: 0 any, a blocking rule's number (CandidateRules,
    // 1 to CandidateRules::kCount), or -1 for a reason no candidate can carry.
    int reasonKind = 0;
    bool mergeOff = false;
    std::vector<std::string> mergeOrgKeys; // empty = every organization
    bool linkOff = false;
    std::vector<std::string> linkOrgKeys;
    int rowLimit = 200; // 0: no limit
};

struct CandidatePatient
{
    std::string key, mrn, orgKey, orgId, sexCode, globalId, dob, lastName, firstName, middleName;
};

struct CandidatePair
{
    CandidatePatient first;
    CandidatePatient second;
    int reasonKind = 0; // the lowest blocking rule that pairs them (CandidateRules)
    bool merge = false; // same organization
};

// Finds pairs of patients that may be one person by the blocking rules of
// CandidateRules; within one organization they are merge candidates, across
// organizations (and not yet linked) link candidates; pairs the user ignored
// are left out. Rows come in the first patient's last name, first name, then
// key order. Two implementations: the kept pairs (the default) and the
// straightforward query they are checked against.
class BRAVIK_ARCHIVE_EXPORT CandidateSearch
{
public:
    virtual ~CandidateSearch() = default;
    // Fills at most criteria.rowLimit pairs; `total` is the number of pairs
    // matching, whatever the limit. Returns 0, or non-zero for criteria that
    // cannot be searched.
    virtual int Find(const CandidateCriteria& criteria, std::vector<CandidatePair>& pairs, long long& total) = 0;
};
