#include "otherworkstation.h"

#include <SQLiteCpp/Statement.h>

std::vector<std::string> KeptPairs(ArchiveDb& db)
{
    std::vector<std::string> rows;
    SQLite::Statement q(db.Handle(), "SELECT key_a || '|' || key_b || '|' || rules || '|' || reason || '|' || merge"
                                     " || '|' || org_a || '|' || org_b || '|' || a_last || '|' || a_first || '|' ||"
                                     " a_mrn || '|' || a_dob || '|' || b_last || '|' || b_first || '|' || b_mrn ||"
                                     " '|' || b_dob FROM candidate_pairs ORDER BY 1");
    while (q.executeStep())
        rows.push_back(q.getColumn(0).getString());
    SQLite::Statement c(db.Handle(), "SELECT reason || '|' || merge || '|' || org_a || '|' || org_b || '=' || n"
                                     " FROM candidate_counts WHERE n <> 0 ORDER BY 1");
    while (c.executeStep())
        rows.push_back("count " + c.getColumn(0).getString());
    return rows;
}
