#include "journal.h"

#include "archivedb.h"
#include "systemlog.h"

Journal::Journal(ArchiveDb& db)
    : m_db(db), m_ledger(db)
{
}

void Journal::Audit(const std::string& user, const std::string& recordKey, int eventCode, const std::string& comment)
{
    auto& st = m_db.Prepare("INSERT INTO audit(at, user_name, record_key, event_code, comment) VALUES (?, ?, ?, ?, ?)");
    const std::string now = ArchiveDb::NowText();
    st.bind(1, now);
    st.bind(2, user);
    st.bind(3, recordKey);
    st.bind(4, eventCode);
    st.bind(5, comment);
    m_db.Write(st);
    m_ledger.SealNew("audit");
    // A copy outside the archive file, sent once the transaction commits.
    m_db.AfterCommit(SystemLog::AuditLine(user, eventCode, recordKey, now));
}

long long Journal::Begin(const std::string& user, const std::string& operation, const std::string& subjectKey,
                         const std::string& otherKey, const std::string& reason)
{
    auto& st = m_db.Prepare("INSERT INTO journal(at, user_name, operation, subject_key, other_key, reason) "
                            "VALUES (?, ?, ?, ?, ?, ?)");
    st.bind(1, ArchiveDb::NowText());
    st.bind(2, user);
    st.bind(3, operation);
    st.bind(4, subjectKey);
    st.bind(5, otherKey);
    st.bind(6, reason);
    m_db.Write(st);
    const long long id = m_db.Handle().getLastInsertRowid();
    m_ledger.SealNew("journal");
    return id;
}

const std::string& Journal::JsonOf(const std::string& table)
{
    auto it = m_jsonExpr.find(table);
    if (it != m_jsonExpr.end())
        return it->second;
    std::string expr = "json_object(";
    SQLite::Statement info(m_db.Handle(), "SELECT name FROM pragma_table_info(?) ORDER BY cid");
    info.bind(1, table);
    bool first = true;
    while (info.executeStep()) {
        const std::string column = info.getColumn(0).getString();
        if (!first)
            expr += ", ";
        first = false;
        expr += "'" + column + "', \"" + column + "\"";
    }
    expr += ")";
    return m_jsonExpr.emplace(table, expr).first->second;
}

void Journal::Capture(long long journalId, const std::string& table, const std::string& keyColumn,
                      const std::string& where, const std::string& value)
{
    const std::string sql = "INSERT INTO journal_images(journal_id, seq, table_name, row_key, before_json) "
                            "SELECT :jid, (SELECT coalesce(max(seq), 0) FROM journal_images WHERE journal_id = :jid) "
                            "+ row_number() OVER (), '" + table + "', \"" + keyColumn + "\", " + JsonOf(table) +
                            " FROM \"" + table + "\" WHERE " + where;
    auto& st = m_db.Prepare(sql);
    st.bind(":jid", static_cast<int64_t>(journalId));
    st.bind("@v", value);
    m_db.Write(st);
    m_ledger.SealNew("journal_images");
}
