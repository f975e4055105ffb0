#include "ledger.h"

#include "archivedb.h"
#include "sha256.h"

#include <SQLiteCpp/Statement.h>

#include <map>

namespace {

// The row as stored, every column with its type and length, so that no two
// different rows read alike.
std::string RowText(SQLite::Statement& q)
{
    std::string text;
    for (int i = 0; i < q.getColumnCount(); ++i) {
        const auto column = q.getColumn(i);
        const std::string value = column.isNull() ? std::string() : column.getString();
        text += std::to_string(column.getType()) + ":" + std::to_string(value.size()) + ":" + value + ";";
    }
    return text;
}

std::string Digest(const std::string& previous, const std::string& table, const std::string& rowText)
{
    return Sha256Hex(previous + "|" + table + "|" + rowText);
}

std::string RowsAfter(const std::string& table)
{
    return "SELECT rowid, * FROM \"" + table + "\" WHERE rowid > ? ORDER BY rowid";
}

struct Seal
{
    std::string previous, digest;
};

} // namespace

const std::vector<std::string>& Ledger::Tables()
{
    static const std::vector<std::string> tables = {"audit", "journal", "journal_images"};
    return tables;
}

Ledger::Ledger(ArchiveDb& db)
    : m_db(db)
{
}

void Ledger::SealNew(const std::string& table)
{
    auto& head = m_db.Prepare("SELECT row_count, last_row, head FROM ledger_heads WHERE table_name = ?");
    head.bind(1, table);
    if (!head.executeStep()) {
        head.reset();
        return;
    }
    long long rows = head.getColumn(0).getInt64(), last = head.getColumn(1).getInt64();
    std::string digest = head.getColumn(2).getString();
    head.reset();

    auto& fresh = m_db.Prepare(RowsAfter(table));
    fresh.bind(1, static_cast<int64_t>(last));
    std::vector<std::pair<long long, std::string>> sealed;
    while (fresh.executeStep()) {
        const long long rowid = fresh.getColumn(0).getInt64();
        const std::string next = Digest(digest, table, RowText(fresh));
        sealed.emplace_back(rowid, digest);
        digest = next;
        last = rowid;
        ++rows;
    }
    fresh.reset();
    if (sealed.empty())
        return;
    // Each entry keeps the digest it follows, so the check can tell a changed
    // row from a gap in the chain.
    for (size_t i = 0; i < sealed.size(); ++i) {
        const std::string& own = i + 1 < sealed.size() ? sealed[i + 1].second : digest;
        auto& put = m_db.Prepare("INSERT INTO ledger(table_name, row_id, previous, digest) VALUES (?, ?, ?, ?)");
        put.bind(1, table);
        put.bind(2, static_cast<int64_t>(sealed[i].first));
        put.bind(3, sealed[i].second);
        put.bind(4, own);
        m_db.Write(put);
    }
    auto& move = m_db.Prepare("UPDATE ledger_heads SET row_count = ?, last_row = ?, head = ? WHERE table_name = ?");
    move.bind(1, static_cast<int64_t>(rows));
    move.bind(2, static_cast<int64_t>(last));
    move.bind(3, digest);
    move.bind(4, table);
    m_db.Write(move);
}

void Ledger::SealAll()
{
    for (const auto& table : Tables())
        SealNew(table);
}

std::vector<Ledger::Head> Ledger::Heads()
{
    std::vector<Head> heads;
    for (const auto& table : Tables()) {
        SQLite::Statement q(m_db.Handle(), "SELECT row_count, last_row, head FROM ledger_heads WHERE table_name = ?");
        q.bind(1, table);
        Head h;
        h.table = table;
        if (q.executeStep()) {
            h.rows = q.getColumn(0).getInt64();
            h.lastRow = q.getColumn(1).getInt64();
            h.digest = q.getColumn(2).getString();
        }
        heads.push_back(h);
    }
    return heads;
}

std::vector<std::string> Ledger::Verify()
{
    std::vector<std::string> problems;
    for (const auto& table : Tables()) {
        auto found = VerifyTable(table);
        problems.insert(problems.end(), found.begin(), found.end());
    }
    return problems;
}

std::vector<std::string> Ledger::VerifyTable(const std::string& table)
{
    std::vector<std::string> problems;
    const auto say = [&](long long row, const std::string& what) {
        problems.push_back(table + " row " + std::to_string(row) + " " + what);
    };
    std::map<long long, Seal> seals;
    SQLite::Statement s(m_db.Handle(), "SELECT row_id, previous, digest FROM ledger WHERE table_name = ?");
    s.bind(1, table);
    while (s.executeStep())
        seals[s.getColumn(0).getInt64()] = {s.getColumn(1).getString(), s.getColumn(2).getString()};

    std::string previous;
    long long rows = 0, last = 0;
    SQLite::Statement q(m_db.Handle(), RowsAfter(table));
    q.bind(1, static_cast<int64_t>(0));
    while (q.executeStep()) {
        const long long rowid = q.getColumn(0).getInt64();
        const auto seal = seals.find(rowid);
        if (seal == seals.end()) {
            say(rowid, "is not in the chain: it was written outside the archive");
            continue;
        }
        if (seal->second.previous != previous)
            say(rowid, "does not follow the row before it: rows were removed or inserted before it");
        if (Digest(seal->second.previous, table, RowText(q)) != seal->second.digest)
            say(rowid, "was changed after it was written");
        previous = seal->second.digest;
        last = rowid;
        ++rows;
        seals.erase(seal);
    }
    for (const auto& [rowid, seal] : seals)
        say(rowid, "was removed");

    for (const auto& h : Heads()) {
        if (h.table != table)
            continue;
        if (h.rows != rows || h.lastRow != last || h.digest != previous)
            problems.push_back(table + " chain ends at row " + std::to_string(last) + " after " +
                               std::to_string(rows) + " rows, but its head says " + std::to_string(h.rows) +
                               " rows ending at row " + std::to_string(h.lastRow) +
                               ": rows at its end were removed or the head was changed");
    }
    SQLite::Statement seq(m_db.Handle(), "SELECT seq FROM sqlite_sequence WHERE name = ?");
    seq.bind(1, table);
    if (seq.executeStep() && seq.getColumn(0).getInt64() > last)
        problems.push_back(table + " rows up to " + std::to_string(seq.getColumn(0).getInt64()) +
                           " were written, the last one left is row " + std::to_string(last));
    return problems;
}
