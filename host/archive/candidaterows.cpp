#include "candidaterows.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

namespace CandidateRows {

namespace {

void ReadPatient(SQLite::Statement& q, int col, CandidatePatient& p)
{
    p.key = q.getColumn(col + 0).getString();
    p.mrn = q.getColumn(col + 1).getString();
    p.orgKey = q.getColumn(col + 2).getString();
    p.orgId = q.getColumn(col + 3).getString();
    p.sexCode = q.getColumn(col + 4).getString();
    p.globalId = q.getColumn(col + 5).getString();
    p.dob = q.getColumn(col + 6).getString();
    p.lastName = q.getColumn(col + 7).getString();
    p.firstName = q.getColumn(col + 8).getString();
    p.middleName = q.getColumn(col + 9).getString();
}

} // namespace

std::string Placeholders(std::size_t n)
{
    std::string s;
    for (std::size_t i = 0; i < n; ++i)
        s += i ? ", ?" : "?";
    return s;
}

CandidatePair ReadPair(SQLite::Statement& q)
{
    CandidatePair pair;
    pair.reasonKind = q.getColumn(0).getInt();
    pair.merge = q.getColumn(1).getInt() != 0;
    ReadPatient(q, 2, pair.first);
    ReadPatient(q, 12, pair.second);
    return pair;
}

} // namespace CandidateRows
