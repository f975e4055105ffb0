#include "candidaterebuild.h"

#include "archivedb.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

#include <ace/Log_Msg.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iterator>
#include <limits>
#include <exception>
#include <set>
#include <thread>
#include <unordered_set>

using CandidateRules::Person;

namespace {

const char* const kSide = "candidate_pairs_next";

// Another rebuild claimed the work since this one started.
struct Superseded
{
};

// Whether commits on the connection wait for the log to reach the disk, for
// the life of this object (they do again afterwards).
class SyncAtCommit
{
public:
    SyncAtCommit(ArchiveDb& db, bool sync)
        : m_db(db)
    {
        m_db.Exec(sync ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = NORMAL");
    }
    ~SyncAtCommit()
    {
        try {
            m_db.Exec("PRAGMA synchronous = FULL");
        } catch (...) {
            // Only a broken connection refuses; it syncs nothing more anyway.
        }
    }

private:
    ArchiveDb& m_db;
};

std::vector<std::string> Column(ArchiveDb& db, const std::string& sql)
{
    std::vector<std::string> out;
    SQLite::Statement q(db.Handle(), sql);
    while (q.executeStep())
        out.push_back(q.getColumn(0).getString());
    return out;
}

// "CREATE ... name ON table(columns)" and "CREATE TABLE name (columns)": the
// part from the first parenthesis on.
std::string FromParenthesis(const std::string& sql)
{
    const auto at = sql.find('(');
    return at == std::string::npos ? std::string() : sql.substr(at);
}

// The side table's indexes take the other of two names, so they never meet
// the kept table's; the search asks which is current (CandidateStore::IndexOfPairs).
std::string OtherIndexName(const std::string& name)
{
    const std::string suffix = "_next";
    if (name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0)
        return name.substr(0, name.size() - suffix.size());
    return name + suffix;
}

} // namespace

CandidateRebuild::CandidateRebuild(ArchiveDb& db, const CandidateStore::Progress& progress)
    : m_db(db), m_progress(progress)
{
}

long long CandidateRebuild::Run()
{
    try {
        for (int attempt = 0; attempt < kAttempts; ++attempt)
            if (Attempt() == Outcome::Swapped) {
                Report("done");
                return m_db.Handle().execAndGet("SELECT coalesce(sum(n), 0) FROM candidate_counts").getInt64();
            }
    } catch (const Superseded&) {
        return -1;
    } catch (...) {
        try {
            Release();
        } catch (...) {
            // The next rebuild clears what this one left.
        }
        throw;
    }
    Release();
    ACE_DEBUG((LM_WARNING, "CandidateRebuild: the patients kept changing; the candidate pairs were not rebuilt\n"));
    return -1;
}

CandidateRebuild::Outcome CandidateRebuild::Attempt()
{
    m_step = 0;
    Claim();
    Report("reading patients");
    ReadSnapshot();
    Block();
    {
        // What is written beside the kept pairs need not survive a power
        // failure (the next rebuild starts over): its commits skip the sync.
        // The swap syncs everything before it with its own commit.
        SyncAtCommit unsynced(m_db, false);
        Report("writing pairs");
        WritePairs();
        Report("indexing");
        Index();
    }
    Report("finishing");
    return Swap();
}

void CandidateRebuild::Report(const char* what)
{
    if (m_progress)
        m_progress(m_step, CandidateRules::kCount + 4, what);
    ++m_step;
}

// Takes the work over from any rebuild before (theirs is dropped) and starts
// noting changes.
void CandidateRebuild::Claim()
{
    WriteTransaction tx(m_db);
    m_db.Exec("UPDATE candidate_rebuild SET last = last + 1, running = last + 1 WHERE id = 1");
    m_token = m_db.Handle().execAndGet("SELECT running FROM candidate_rebuild WHERE id = 1").getInt64();
    m_db.Exec(std::string("DROP TABLE IF EXISTS ") + kSide);
    m_db.Exec("DELETE FROM candidate_changes");
    tx.Commit();
    ArchiveDb::LetOthersWrite();
}

bool CandidateRebuild::Ours()
{
    return m_db.Handle().execAndGet("SELECT running FROM candidate_rebuild WHERE id = 1").getInt64() == m_token;
}

void CandidateRebuild::ReadSnapshot()
{
    ReadTransaction snapshot(m_db);
    m_cap = CandidateStore(m_db).BlockCap();
    ReadPeople();
    m_ignored.clear();
    SQLite::Statement i(m_db.Handle(), "SELECT key_a, key_b FROM ignored_pairs");
    while (i.executeStep())
        m_ignored.emplace_back(i.getColumn(0).getString(), i.getColumn(1).getString());
    std::sort(m_ignored.begin(), m_ignored.end());
    i.reset();
}

// Two threads read half the rows each, on two connections. Their reads may
// begin at slightly different moments: both begin after the claim, so what
// changes in between is noted and brought in at the swap, from whatever state
// of it was read (what was written beside the kept pairs follows what was read).
void CandidateRebuild::ReadPeople()
{
    const std::string select = std::string("SELECT ") + CandidatePairing::kPersonColumns + " FROM patients WHERE ";
    auto read = [&](SQLite::Database& db, const std::string& range, long long middle, std::vector<Person>& into) {
        SQLite::Statement q(db, select + range);
        q.bind(1, static_cast<int64_t>(middle));
        while (q.executeStep())
            into.push_back(CandidatePairing::ReadPerson(q));
    };
    m_people.clear();
    // An archive held in memory has no file for a second connection.
    const char* file = sqlite3_db_filename(m_db.Handle().getHandle(), "main");
    if (!file || !*file) {
        read(m_db.Handle(), "rowid <= ?", std::numeric_limits<long long>::max(), m_people);
        return;
    }
    const long long middle = m_db.Handle().execAndGet("SELECT coalesce(max(rowid), 0) / 2 FROM patients").getInt64();
    std::vector<Person> upper;
    std::exception_ptr failed;
    {
        std::jthread other([&] {
            try {
                SQLite::Database db(file, SQLite::OPEN_READONLY | SQLITE_OPEN_NOMUTEX, 10000);
                SQLite::Transaction snapshot(db);
                read(db, "rowid > ?", middle, upper);
            } catch (...) {
                failed = std::current_exception();
            }
        });
        read(m_db.Handle(), "rowid <= ?", middle, m_people);
    }
    if (failed)
        std::rethrow_exception(failed);
    m_people.reserve(m_people.size() + upper.size());
    std::move(upper.begin(), upper.end(), std::back_inserter(m_people));
}

// The rules sharing a block are paired in one pass; the passes are shared
// between this thread and one more, the costly ones (the last rules) first.
void CandidateRebuild::Block()
{
    std::vector<int> passes;
    for (int rule = CandidateRules::kCount; rule >= 1; --rule)
        if (CandidateRules::SameBlockAs(rule) == rule)
            passes.push_back(rule);
    std::atomic<size_t> next{0};
    std::atomic<size_t> done{0};
    int reported = 0;
    auto catchUp = [&](size_t finished) {
        while (reported < static_cast<int>(finished * CandidateRules::kCount / passes.size())) {
            Report("blocking");
            ++reported;
        }
    };
    auto work = [&](CandidatePairing::Masks& masks, bool here) {
        for (size_t i; (i = next++) < passes.size();) {
            CandidatePairing::PairBlocks(passes[i], m_people, m_cap, masks);
            ++done;
            if (here)
                catchUp(done);
        }
    };
    m_masks.clear();
    CandidatePairing::Masks theirs;
    std::exception_ptr failed;
    {
        std::jthread helper([&] {
            try {
                work(theirs, false);
            } catch (...) {
                failed = std::current_exception();
            }
        });
        work(m_masks, true);
    }
    if (failed)
        std::rethrow_exception(failed);
    for (const auto& [id, mask] : theirs)
        m_masks[id] |= mask;
    catchUp(passes.size());
}

void CandidateRebuild::WritePairs()
{
    // Written in key order: the primary key's b-tree grows at its end.
    std::vector<std::pair<std::uint64_t, int>> list;
    list.reserve(m_masks.size());
    for (const auto& [id, mask] : m_masks) {
        const Person& x = m_people[id >> 32];
        const Person& y = m_people[id & 0xffffffffu];
        if (!x.group.empty() && x.group == y.group)
            continue;
        if (std::binary_search(m_ignored.begin(), m_ignored.end(), std::pair(std::min(x.key, y.key), std::max(x.key, y.key))))
            continue;
        list.emplace_back(id, mask);
    }
    m_masks.clear();
    auto lowKey = [&](const std::pair<std::uint64_t, int>& e) -> const std::string& {
        return std::min(m_people[e.first >> 32].key, m_people[e.first & 0xffffffffu].key);
    };
    std::sort(list.begin(), list.end(), [&](const auto& l, const auto& r) { return lowKey(l) < lowKey(r); });

    m_counts.clear();
    m_written = 0;
    for (size_t from = 0; from == 0 || from < list.size(); from += kRowsPerTransaction) {
        WriteTransaction tx(m_db);
        if (!Ours())
            throw Superseded();
        if (from == 0) {
            const auto table =
                Column(m_db, "SELECT sql FROM sqlite_master WHERE type = 'table' AND name = 'candidate_pairs'");
            m_db.Exec(std::string("CREATE TABLE ") + kSide + " " + FromParenthesis(table.at(0)));
        }
        SQLite::Statement st(m_db.Handle(), CandidatePairing::InsertSql(kSide));
        for (size_t i = from; i < std::min(list.size(), from + kRowsPerTransaction); ++i) {
            const Person& x = m_people[list[i].first >> 32];
            const Person& y = m_people[list[i].first & 0xffffffffu];
            CandidatePairing::BindPair(st, x, y, list[i].second);
            m_db.Write(st);
            st.reset();
            ++m_written;
            const Person& a = x.key < y.key ? x : y;
            const Person& b = x.key < y.key ? y : x;
            ++m_counts[{CandidatePairing::LowestRule(list[i].second), a.orgKey == b.orgKey ? 1 : 0, a.orgKey, b.orgKey}];
        }
        tx.Commit();
        ArchiveDb::LetOthersWrite();
    }
}

void CandidateRebuild::Index()
{
    // Sorting for an index may use a second thread.
    m_db.Exec("PRAGMA threads = 2");
    // The kept pairs' indexes are read inside each transaction that copies one.
    for (size_t i = 0;; ++i) {
        WriteTransaction tx(m_db);
        if (!Ours())
            throw Superseded();
        SQLite::Statement q(m_db.Handle(), "SELECT name, sql FROM sqlite_master WHERE type = 'index' AND "
                                           "tbl_name = 'candidate_pairs' AND sql IS NOT NULL ORDER BY name LIMIT 1 OFFSET ?");
        q.bind(1, static_cast<int64_t>(i));
        if (!q.executeStep())
            return;
        const std::string name = q.getColumn(0).getString(), sql = q.getColumn(1).getString();
        q.reset();
        m_db.Exec("CREATE INDEX " + OtherIndexName(name) + " ON " + kSide + FromParenthesis(sql));
        tx.Commit();
        ArchiveDb::LetOthersWrite();
    }
}

CandidateRebuild::Outcome CandidateRebuild::Swap()
{
    WriteTransaction tx(m_db);
    if (!Ours())
        throw Superseded();
    if (CandidateStore(m_db).BlockCap() != m_cap)
        return Outcome::Again;
    const auto changed = Column(m_db, "SELECT DISTINCT patient_key FROM candidate_changes LIMIT "
                                          + std::to_string(kMostChangesApplied + 1));
    if (static_cast<int>(changed.size()) > kMostChangesApplied)
        return Outcome::Again;
    const auto triggers =
        Column(m_db, "SELECT sql FROM sqlite_master WHERE type = 'trigger' AND tbl_name = 'candidate_pairs'");
    // The old pairs copy demographics the patients table still holds; their
    // pages go to the free list unwiped (the next rebuild writes over them)
    // rather than each written again as zeros inside this transaction.
    const int wiping = m_db.Handle().execAndGet("PRAGMA secure_delete").getInt();
    m_db.Exec("PRAGMA secure_delete = FAST");
    m_db.Exec("DROP TABLE candidate_pairs");
    m_db.Exec("PRAGMA secure_delete = " + std::to_string(wiping));
    m_db.Exec(std::string("ALTER TABLE ") + kSide + " RENAME TO candidate_pairs");
    for (const auto& trigger : triggers)
        m_db.Exec(trigger);
    m_db.Exec("DELETE FROM candidate_counts");
    SQLite::Statement count(m_db.Handle(),
                            "INSERT INTO candidate_counts(reason, merge, org_a, org_b, n) VALUES (?, ?, ?, ?, ?)");
    for (const auto& [k, n] : m_counts) {
        count.bind(1, std::get<0>(k));
        count.bind(2, std::get<1>(k));
        count.bind(3, std::string(std::get<2>(k)));
        count.bind(4, std::string(std::get<3>(k)));
        count.bind(5, static_cast<int64_t>(n));
        m_db.Write(count);
        count.reset();
    }
    ApplyChanges(changed);
    StopNoting();
    CandidateStore(m_db).MarkFresh();
    tx.Commit();
    return Outcome::Swapped;
}

// The pairs written are those of the snapshot: the patients changed since
// get the upkeep a save gives, from their state in the snapshot to now.
void CandidateRebuild::ApplyChanges(const std::vector<std::string>& changed)
{
    if (changed.empty())
        return;
    CandidateStore::Snapshot snapshot;
    snapshot.fresh = true;
    snapshot.keys = changed;
    const std::unordered_set<std::string> keys(changed.begin(), changed.end());
    for (const Person& p : m_people)
        if (keys.count(p.key))
            snapshot.before.push_back(p);
    CandidateStore(m_db).After(snapshot);
}

// Gives the work up: the side table goes and changes are no longer noted.
void CandidateRebuild::Release()
{
    WriteTransaction tx(m_db);
    if (!Ours())
        return;
    m_db.Exec(std::string("DROP TABLE IF EXISTS ") + kSide);
    StopNoting();
    tx.Commit();
}

// No rebuild under way: changes are no longer noted, and those noted go.
void CandidateRebuild::StopNoting()
{
    m_db.Exec("UPDATE candidate_rebuild SET running = 0 WHERE id = 1");
    m_db.Exec("DELETE FROM candidate_changes");
}
