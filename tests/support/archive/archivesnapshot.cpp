#include "archivesnapshot.h"

#include <archivedb.h>

#include <SQLiteCpp/Statement.h>

#include <algorithm>

ArchiveSnapshot TakeSnapshot(ArchiveDb& db)
{
    ArchiveSnapshot snapshot;
    for (const auto& table : db.TableNames()) {
        auto& rows = snapshot[table];
        SQLite::Statement q(db.Handle(), "SELECT * FROM \"" + table + "\"");
        while (q.executeStep()) {
            std::string row;
            for (int i = 0; i < q.getColumnCount(); ++i) {
                row += i ? "|" : "";
                row += q.getColumn(i).isNull() ? std::string("<null>") : q.getColumn(i).getString();
            }
            rows.push_back(std::move(row));
        }
        std::sort(rows.begin(), rows.end());
    }
    return snapshot;
}

std::string DescribeDifference(const ArchiveSnapshot& before, const ArchiveSnapshot& after)
{
    std::string out;
    for (const auto& [table, rows] : after) {
        auto it = before.find(table);
        if (it == before.end()) {
            out += "new table " + table + "; ";
        } else if (it->second != rows) {
            out += table + " (" + std::to_string(it->second.size()) + " -> " + std::to_string(rows.size()) + " rows); ";
        }
    }
    return out.empty() ? "no difference" : out;
}
