#include "archivechecker.h"

#include "archivedb.h"
#include "ledger.h"
#include "schema.h"

#include <SQLiteCpp/Statement.h>

#include <map>
#include <set>

ArchiveChecker::ArchiveChecker(ArchiveDb& db)
    : m_db(db)
{
}

bool ArchiveChecker::HasTable(const std::string& name)
{
    SQLite::Statement q(m_db.Handle(), "SELECT 1 FROM sqlite_master WHERE type IN ('table', 'view') AND name = ?");
    q.bind(1, name);
    return q.executeStep();
}

std::vector<std::string> ArchiveChecker::Run()
{
    std::vector<std::string> out;
    auto each = [&](const std::string& sql, const auto& format) {
        SQLite::Statement q(m_db.Handle(), sql);
        while (q.executeStep())
            out.push_back(format(q));
    };
    auto text = [](SQLite::Statement& q, int i) { return q.getColumn(i).isNull() ? std::string("NULL") : q.getColumn(i).getString(); };

    GuardDb("checking the archive", [&] {
        each("PRAGMA integrity_check", [&](SQLite::Statement& q) { return "integrity: " + text(q, 0); });
        if (out.size() == 1 && out.front() == "integrity: ok")
            out.clear();
        if (!out.empty())
            out.insert(out.begin(), "integrity: the archive file is damaged; restore it from its last backup");

        each("PRAGMA foreign_key_check", [&](SQLite::Statement& q) {
            return "foreign key: row " + text(q, 1) + " of " + text(q, 0) + " refers to a missing row of " + text(q, 2);
        });

        const bool merged = HasTable("merged_patients");
        const std::string mergedJoin = merged ? " LEFT JOIN merged_patients m ON m.old_key = x.patient_key" : "";
        const std::string state = merged ? "CASE WHEN m.old_key IS NOT NULL THEN 'merged-away' ELSE 'missing' END"
                                         : "'missing'";
        for (const char* table : {"exams", "studies"}) {
            const std::string keyColumn = std::string(table) == "exams" ? "exam_key" : "study_key";
            const std::string noun = std::string(table) == "exams" ? "exam " : "study ";
            each("SELECT x." + keyColumn + ", x.patient_key, " + state + " FROM " + table + " x" + mergedJoin +
                     " WHERE NOT EXISTS (SELECT 1 FROM patients p WHERE p.patient_key = x.patient_key)"
                     " ORDER BY x." + keyColumn,
                 [&](SQLite::Statement& q) {
                     return noun + text(q, 0) + " points at " + text(q, 2) + " patient " + text(q, 1);
                 });
        }
        each("SELECT s.study_key, s.exam_key FROM studies s WHERE s.exam_key IS NOT NULL"
             " AND NOT EXISTS (SELECT 1 FROM exams e WHERE e.exam_key = s.exam_key) ORDER BY s.study_key",
             [&](SQLite::Statement& q) { return "study " + text(q, 0) + " points at missing exam " + text(q, 1); });
        each("SELECT x.exam_key, x.patient_key FROM studies x JOIN exams e ON e.exam_key = x.exam_key"
             " WHERE e.patient_key <> x.patient_key ORDER BY x.study_key",
             [&](SQLite::Statement& q) {
                 return "study of exam " + text(q, 0) + " belongs to patient " + text(q, 1) + ", the exam to another";
             });
        if (merged)
            each("SELECT m.old_key FROM merged_patients m JOIN patients p ON p.patient_key = m.old_key ORDER BY 1",
                 [&](SQLite::Statement& q) { return "merged-away patient " + text(q, 0) + " is still present"; });
        if (merged)
            CheckMergeChains(out);
        CheckGroupSizes(out);
        if (HasTable("journal"))
            CheckJournalSubjects(out);
        each("SELECT p.link_group, o.org_id, count(*) FROM patients p LEFT JOIN organizations o ON o.org_key = p.org_key"
             " WHERE p.link_group IS NOT NULL GROUP BY p.link_group, p.org_key HAVING count(*) > 1 ORDER BY 1, 2",
             [&](SQLite::Statement& q) {
                 return "link group " + text(q, 0) + " holds " + text(q, 2) + " records of organization " + text(q, 1);
             });

        for (const char* trigger : {"audit_no_update", "audit_no_delete"}) {
            SQLite::Statement q(m_db.Handle(), "SELECT 1 FROM sqlite_master WHERE type = 'trigger' AND name = ?");
            q.bind(1, trigger);
            if (!q.executeStep())
                out.push_back(std::string("audit: trigger ") + trigger + " is missing");
        }
        // Ids are handed out one by one and rows are never removed, so the
        // trail is whole exactly when it holds ids 1..n and the sequence agrees.
        SQLite::Statement a(m_db.Handle(),
                            "SELECT count(*), coalesce(max(audit_id), 0),"
                            " coalesce((SELECT seq FROM sqlite_sequence WHERE name = 'audit'), 0) FROM audit");
        if (a.executeStep()) {
            const long long rows = a.getColumn(0).getInt64();
            const long long highest = a.getColumn(1).getInt64();
            const long long sequence = a.getColumn(2).getInt64();
            if (rows != highest || sequence != highest)
                out.push_back("audit: " + std::to_string(rows) + " rows but ids up to " + std::to_string(highest) +
                              " (sequence " + std::to_string(sequence) + "): rows were removed");
        }
        CheckChains(out);
    });
    return out;
}

void ArchiveChecker::CheckMergeChains(std::vector<std::string>& out)
{
    std::map<std::string, std::string> survivorOf;
    SQLite::Statement m(m_db.Handle(), "SELECT old_key, survivor_key FROM merged_patients ORDER BY old_key");
    while (m.executeStep())
        survivorOf[m.getColumn(0).getString()] = m.getColumn(1).getString();
    auto present = [&](const std::string& key) {
        // A survivor deleted later is gone on purpose: its journal says so.
        SQLite::Statement q(m_db.Handle(), "SELECT 1 FROM patients WHERE patient_key = ?1 UNION ALL "
                                           "SELECT 1 FROM journal WHERE operation = 'delete-patient' AND subject_key = ?1");
        q.bind(1, key);
        return q.executeStep();
    };
    for (const auto& [old, survivor] : survivorOf) {
        std::set<std::string> seen{old};
        std::string at = survivor;
        while (survivorOf.count(at) && seen.insert(at).second)
            at = survivorOf[at];
        if (seen.count(at))
            out.push_back("merge of " + old + " leads round in a cycle back to " + at);
        else if (!present(at))
            out.push_back("merge of " + old + " leads to missing patient " + at);
    }
}

void ArchiveChecker::CheckGroupSizes(std::vector<std::string>& out)
{
    SQLite::Statement q(m_db.Handle(),
                        "SELECT g.group_key, (SELECT count(*) FROM patients p WHERE p.link_group = g.group_key) AS n "
                        "FROM link_groups g WHERE n < 2 ORDER BY 1");
    while (q.executeStep())
        out.push_back("link group " + q.getColumn(0).getString() + " holds " + q.getColumn(1).getString() +
                      " record(s); a group needs two");
    SQLite::Statement e(m_db.Handle(), "SELECT link_group FROM exams WHERE link_group IS NOT NULL "
                                       "GROUP BY link_group HAVING count(*) < 2 ORDER BY 1");
    while (e.executeStep())
        out.push_back("exam link group " + e.getColumn(0).getString() + " holds only one exam");
}

void ArchiveChecker::CheckJournalSubjects(std::vector<std::string>& out)
{
    // Every journalled operation keeps the image of the record it acted on;
    // an entry without one acted on a record that was not there.
    SQLite::Statement q(m_db.Handle(),
                        "SELECT j.journal_id, j.operation, j.subject_key FROM journal j "
                        "WHERE NOT EXISTS (SELECT 1 FROM journal_images i "
                        "WHERE i.journal_id = j.journal_id AND i.row_key = j.subject_key) ORDER BY 1");
    while (q.executeStep())
        out.push_back("journal entry " + q.getColumn(0).getString() + " (" + q.getColumn(1).getString() +
                      ") is about " + q.getColumn(2).getString() + ", a record that did not exist");
}

void ArchiveChecker::CheckChains(std::vector<std::string>& out)
{
    if (m_db.SchemaVersion() < Schema::LedgerVersion())
        return;
    if (!HasTable("ledger") || !HasTable("ledger_heads")) {
        out.push_back("chain: the audit and journal chains are gone (their tables were dropped)");
        return;
    }
    for (const auto& problem : Ledger(m_db).Verify())
        out.push_back("chain: " + problem);
}

std::vector<std::string> ArchiveChecker::ChainHeads()
{
    std::vector<std::string> lines;
    if (m_db.SchemaVersion() < Schema::LedgerVersion() || !HasTable("ledger_heads"))
        return lines;
    GuardDb("reading the chain heads", [&] {
        for (const auto& h : Ledger(m_db).Heads())
            lines.push_back(h.table + " chain: " + std::to_string(h.rows) + " rows, last row " +
                            std::to_string(h.lastRow) + ", head " + (h.digest.empty() ? "(empty)" : h.digest));
    });
    return lines;
}
