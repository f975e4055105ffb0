#include "sqlitepatientservice.h"

#include "archivecontext.h"
#include "archiveerror.h"
#include "candidaterules.h"
#include "candidatestore.h"
#include "counterkey.h"
#include "dictionarytopic.h"
#include "keygenerator.h"
#include "patientrow.h"
#include "patientsavechecks.h"
#include "indexedcandidatesearch.h"

#include <bparser.h>
#include <bpersonname.h>
#include <duplicatepatientrecord.h>
#include <linkedpatientinfo.h>
#include <mergelinkcandidatesquerydataset.h>
#include <patientdetailrecord.h>
#include <patientsearchcriteria.h>
#include <sitepolicy.h>

#include <algorithm>
#include <cctype>
#include <limits>
#include <map>
#include <set>

using Right = ArchiveContext::Right;

namespace {

using Org = ArchiveContext::Organization;
const CounterKey kMrnCounter = {&Org::generatesMrn, &Org::mrnPrefix, "mrn_counter", "patients", "mrn", 7,
                             ArchiveContext::Right::Create};

std::string S(const ACE_CString& s)
{
    return std::string(s.c_str(), s.length());
}

bool IsDigits(const std::string& s)
{
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

SqlitePatientService::SqlitePatientService(ArchiveContext& context, std::unique_ptr<CandidateSearch> search)
    : m_ctx(context), m_search(std::move(search))
{
    if (!m_search)
        m_search = std::make_unique<IndexedCandidateSearch>(m_ctx.Db());
}

SqlitePatientService::~SqlitePatientService() = default;

int SqlitePatientService::Find(const std::string& key, Row& row)
{
    if (!FieldCheck::Key(key))
        return ArchiveResult::InvalidArgument;
    auto& db = m_ctx.Db();
    auto& q = db.Prepare("SELECT p.patient_key, p.org_key, o.org_id, coalesce(p.link_group, '') FROM patients p "
                         "JOIN organizations o ON o.org_key = p.org_key WHERE p.patient_key = ?");
    q.bind(1, key);
    if (q.executeStep()) {
        row = {q.getColumn(0).getString(), q.getColumn(1).getString(), q.getColumn(2).getString(),
               q.getColumn(3).getString()};
        q.reset();
        return ArchiveResult::Ok;
    }
    q.reset();
    auto& m = db.Prepare("SELECT 1 FROM merged_patients WHERE old_key = ?");
    m.bind(1, key);
    const bool merged = m.executeStep();
    m.reset();
    return merged ? ArchiveResult::MergedAway : ArchiveResult::NotFound;
}

std::vector<SqlitePatientService::Row> SqlitePatientService::GroupMembers(const std::string& group)
{
    std::vector<Row> rows;
    if (group.empty())
        return rows;
    auto& q = m_ctx.Db().Prepare("SELECT p.patient_key, p.org_key, o.org_id, p.link_group FROM patients p "
                                 "JOIN organizations o ON o.org_key = p.org_key WHERE p.link_group = ? "
                                 "ORDER BY o.org_id, p.patient_key");
    q.bind(1, group);
    while (q.executeStep())
        rows.push_back({q.getColumn(0).getString(), q.getColumn(1).getString(), q.getColumn(2).getString(),
                        q.getColumn(3).getString()});
    q.reset();
    return rows;
}

int SqlitePatientService::ReadPatient(const std::string& key, PatientDetailRecord& record)
{
    // The row and its version as of one moment.
    ReadTransaction together(m_ctx.Db());
    auto& q = m_ctx.Db().Prepare(PatientRow::Select() + "WHERE p.patient_key = ?");
    q.bind(1, key);
    const bool found = q.executeStep();
    if (found)
        PatientRow::Read(q, record);
    q.reset();
    if (found)
        PatientSaveChecks::ReadVersion(m_ctx.Db(), key, record);
    return found ? ArchiveResult::Ok : ArchiveResult::NotFound;
}

bool SqlitePatientService::SameOrg(const std::string& given, const Row& row)
{
    if (given.empty())
        return true;
    if (given == row.orgKey)
        return true;
    const auto org = m_ctx.OrgByKeyOrId(given);
    return org && org->key == row.orgKey;
}

std::vector<std::string> SqlitePatientService::GroupKeys(const std::vector<Row>& rows)
{
    std::set<std::string> keys;
    for (const Row& r : rows) {
        keys.insert(r.key);
        for (const Row& member : GroupMembers(r.group))
            keys.insert(member.key);
    }
    return {keys.begin(), keys.end()};
}

std::string SqlitePatientService::MatchingFields(const std::string& key)
{
    auto& q = m_ctx.Db().Prepare("SELECT last_name || char(31) || first_name || char(31) || dob || char(31) || sex_code"
                                 " || char(31) || global_id FROM patients WHERE patient_key = ?");
    q.bind(1, key);
    const std::string fields = q.executeStep() ? q.getColumn(0).getString() : std::string();
    q.reset();
    return fields;
}

void SqlitePatientService::CaptureGroup(long long journalId, const std::string& group)
{
    if (group.empty())
        return;
    m_ctx.Log().Capture(journalId, "patients", "patient_key", "link_group = @v", group);
    m_ctx.Log().Capture(journalId, "link_groups", "group_key", "group_key = @v", group);
}

void SqlitePatientService::TidyGroup(const std::string& group)
{
    if (group.empty())
        return;
    auto& db = m_ctx.Db();
    auto& count = db.Prepare("SELECT count(*) FROM patients WHERE link_group = ?");
    count.bind(1, group);
    count.executeStep();
    const int members = count.getColumn(0).getInt();
    count.reset();
    if (members >= 2)
        return;
    auto& clear = db.Prepare("UPDATE patients SET link_group = NULL WHERE link_group = ?");
    clear.bind(1, group);
    db.Write(clear);
    auto& drop = db.Prepare("DELETE FROM link_groups WHERE group_key = ?");
    drop.bind(1, group);
    db.Write(drop);
}

int SqlitePatientService::GetPatient(const ACE_CString& patientKey, PatientDetailRecord* record,
                                     const ACE_CString& organizationKey)
{
    if (!record)
        return ArchiveResult::InvalidArgument;
    return GuardDb("GetPatient", [&] {
        Row row;
        if (const int rc = Find(S(patientKey), row))
            return rc;
        std::string key = row.key;
        if (!SameOrg(S(organizationKey), row)) {
            // Another organization's view of the person: its record in the link group.
            const auto org = m_ctx.OrgByKeyOrId(S(organizationKey));
            key.clear();
            for (const auto& member : GroupMembers(row.group))
                if (org && member.orgKey == org->key)
                    key = member.key;
            if (key.empty())
                return ArchiveResult::NotFound;
        }
        return ReadPatient(key, *record);
    });
}

int SqlitePatientService::CheckIdentifierPolicy(const PatientDetailRecord& record, const std::string& key)
{
    const ArchiveContext::Policy policy = m_ctx.SitePolicy();
    if (policy.numericMRN && !IsDigits(S(record.GetPatientID())))
        return ArchiveResult::InvalidArgument;
    if (policy.bsnEditable)
        return ArchiveResult::Ok;
    const std::string stored =
        key.empty() ? std::string() : m_ctx.Db().SelectText("SELECT bsn FROM patients WHERE patient_key = ?", key).value_or("");
    return S(record.GetBSN()) == stored ? ArchiveResult::Ok : ArchiveResult::InvalidArgument;
}

int SqlitePatientService::CreatePatient(PatientDetailRecord* record, ACE_CString& newPatientKey)
{
    if (!record)
        return ArchiveResult::InvalidArgument;
    return GuardDb("CreatePatient", [&] {
        if (const int rc = PatientRow::Validate(*record))
            return rc;
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        const auto org = m_ctx.OrgByKeyOrId(S(record->GetOrganizationKey()).empty() ? S(record->GetOrganizationID())
                                                                                     : S(record->GetOrganizationKey()));
        if (!org)
            return ArchiveResult::NotFound;
        const std::string mrn = S(record->GetPatientID());
        if (mrn.empty() || S(record->GetLastName()).empty() || !m_ctx.FirstNameValid(S(record->GetFirstName())))
            return ArchiveResult::InvalidArgument;
        if (const int rc = CheckIdentifierPolicy(*record, std::string()))
            return rc;
        if (!m_ctx.HasRight(Right::Create, org->key))
            PatientSaveChecks::RefuseMissingRight(org->id);

        auto& dup = db.Prepare("SELECT 1 FROM patients WHERE org_key = ? AND mrn = ?");
        dup.bind(1, org->key);
        dup.bind(2, mrn);
        const bool taken = dup.executeStep();
        dup.reset();
        if (taken)
            PatientSaveChecks::RefuseTakenMrn(mrn, org->id);
        CandidateStore candidates(db);
        const auto kept = candidates.Before({});
        const std::string key = KeyGenerator::NewKey();
        auto& st = db.Prepare("INSERT INTO patients(patient_key, org_key, created, modified, " + PatientRow::Columns() +
                              ") VALUES (?, ?, ?, ?, " + PatientRow::Placeholders() + ")");
        const std::string now = ArchiveDb::NowText();
        st.bind(1, key);
        st.bind(2, org->key);
        st.bind(3, now);
        st.bind(4, now);
        PatientRow::Bind(st, *record, 5);
        db.Write(st);
        candidates.After(kept, {key});
        m_ctx.Log().Audit(m_ctx.User(), key, AuditEvent::PatientCreated);
        // The version the save gave it, read before another save can change it.
        PatientSaveChecks::ReadVersion(db, key, *record);
        tx.Commit();
        newPatientKey = key.c_str();
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::ModifyPatient(PatientDetailRecord* record)
{
    if (!record)
        return ArchiveResult::InvalidArgument;
    return GuardDb("ModifyPatient", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row row;
        if (const int rc = Find(S(record->GetPatientKey()), row))
            return PatientSaveChecks::RefuseGone(rc, *record);
        if (!SameOrg(S(record->GetOrganizationKey()), row))
            return ArchiveResult::InvalidArgument;
        if (const int rc = PatientRow::Validate(*record))
            return rc;
        const std::string mrn = S(record->GetPatientID());
        if (mrn.empty() || S(record->GetLastName()).empty() || !m_ctx.FirstNameValid(S(record->GetFirstName())))
            return ArchiveResult::InvalidArgument;
        if (const int rc = CheckIdentifierPolicy(*record, row.key))
            return rc;
        if (!m_ctx.HasRight(Right::Create, row.orgKey))
            PatientSaveChecks::RefuseMissingRight(row.orgId);

        PatientSaveChecks::RefuseStale(db, row.key, *record);
        auto& dup = db.Prepare("SELECT 1 FROM patients WHERE org_key = ? AND mrn = ? AND patient_key <> ?");
        dup.bind(1, row.orgKey);
        dup.bind(2, mrn);
        dup.bind(3, row.key);
        const bool taken = dup.executeStep();
        dup.reset();
        if (taken)
            PatientSaveChecks::RefuseTakenMrn(mrn, row.orgId);
        CandidateStore candidates(db);
        const auto kept = candidates.Before({row.key});
        const std::string matchedOn = MatchingFields(row.key);
        auto& st = db.Prepare("UPDATE patients SET " + PatientRow::Assignments() + ", modified = ? WHERE patient_key = ?");
        const int next = PatientRow::Bind(st, *record, 1);
        st.bind(next, ArchiveDb::NowText());
        st.bind(next + 1, row.key);
        db.Write(st);
        if (MatchingFields(row.key) != matchedOn) {
            // The user ignored a pair as the patients were; a change to what
            // pairs them asks the question again.
            auto& reopen = db.Prepare("DELETE FROM ignored_pairs WHERE key_a = ?1 OR key_b = ?1");
            reopen.bind(1, row.key);
            db.Write(reopen);
        }
        candidates.After(kept);
        m_ctx.Log().Audit(m_ctx.User(), row.key, AuditEvent::PatientModified);
        PatientSaveChecks::ReadVersion(db, row.key, *record);
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::DeletePatient(const ACE_CString& patientKey, const ACE_CString& organizationKey,
                                        const ACE_CString& reason)
{
    return GuardDb("DeletePatient", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row row;
        if (const int rc = Find(S(patientKey), row))
            return rc;
        if (!SameOrg(S(organizationKey), row) || !FieldCheck::Text(S(reason), FieldCheck::kReason))
            return ArchiveResult::InvalidArgument;
        FieldCheck::RefuseInvisible("reason", S(reason));
        if (!m_ctx.HasRight(Right::Create, row.orgKey))
            return ArchiveResult::NotPermitted;

        auto& log = m_ctx.Log();
        CandidateStore candidates(db);
        const auto kept = candidates.Before({row.key});
        const long long j = log.Begin(m_ctx.User(), "delete-patient", row.key, row.orgKey, S(reason));
        const std::string examsOf = "exam_key IN (SELECT exam_key FROM exams WHERE patient_key = @v)";
        log.Capture(j, "patients", "patient_key", "patient_key = @v", row.key);
        log.Capture(j, "exams", "exam_key", "patient_key = @v", row.key);
        log.Capture(j, "exam_providers", "exam_key", examsOf, row.key);
        log.Capture(j, "exam_modifiers", "exam_key", examsOf, row.key);
        log.Capture(j, "studies", "study_key", "patient_key = @v", row.key);
        log.Capture(j, "ignored_pairs", "key_a", "key_a = @v OR key_b = @v", row.key);
        CaptureGroup(j, row.group);

        for (const char* sql : {"DELETE FROM studies WHERE patient_key = ?",
                                "DELETE FROM exam_providers WHERE exam_key IN (SELECT exam_key FROM exams WHERE patient_key = ?)",
                                "DELETE FROM exam_modifiers WHERE exam_key IN (SELECT exam_key FROM exams WHERE patient_key = ?)",
                                "DELETE FROM exams WHERE patient_key = ?",
                                "DELETE FROM ignored_pairs WHERE key_a = ?1 OR key_b = ?1",
                                "DELETE FROM patients WHERE patient_key = ?"}) {
            auto& st = db.Prepare(sql);
            st.bind(1, row.key);
            db.Write(st);
        }
        TidyGroup(row.group);
        candidates.After(kept);
        log.Audit(m_ctx.User(), row.key, AuditEvent::PatientDeleted, S(reason));
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::GetAutogeneratedMRN(const ACE_CString& organization, ACE_CString& mrn)
{
    return GuardDb("GetAutogeneratedMRN", [&] {
        std::string value;
        if (const int rc = NextCounterKey(m_ctx, kMrnCounter, S(organization), value))
            return rc;
        mrn = value.c_str();
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::GetLinkedPatients(const ACE_CString& patientKey, const ACE_CString& organizationKey,
                                            std::vector<PatientDetailRecord*>& linked)
{
    return GuardDb("GetLinkedPatients", [&] {
        Row row;
        if (const int rc = Find(S(patientKey), row))
            return rc;
        if (!SameOrg(S(organizationKey), row))
            return ArchiveResult::InvalidArgument;
        std::vector<std::string> keys{row.key};
        for (const auto& member : GroupMembers(row.group))
            if (member.key != row.key)
                keys.push_back(member.key);
        std::vector<PatientDetailRecord*> out;
        for (const auto& key : keys) {
            auto record = std::make_unique<PatientDetailRecord>();
            if (ReadPatient(key, *record) == ArchiveResult::Ok)
                out.push_back(record.release());
        }
        linked.insert(linked.end(), out.begin(), out.end());
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::GetLinkedPatientsForMergeCandidates(const ACE_CString& firstPatientKey,
                                                              const ACE_CString& secondPatientKey,
                                                              std::vector<PatientDetailRecord*>& firstLinked,
                                                              std::vector<PatientDetailRecord*>& secondLinked)
{
    std::vector<PatientDetailRecord*> first, second;
    int rc = GetLinkedPatients(firstPatientKey, ACE_CString(), first);
    if (rc == 0)
        rc = GetLinkedPatients(secondPatientKey, ACE_CString(), second);
    if (rc != 0) {
        for (auto* p : first)
            delete p;
        for (auto* p : second)
            delete p;
        return rc;
    }
    firstLinked.insert(firstLinked.end(), first.begin(), first.end());
    secondLinked.insert(secondLinked.end(), second.begin(), second.end());
    return ArchiveResult::Ok;
}

bool SqlitePatientService::CanLinkPatients(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey)
{
    return GuardDb("CanLinkPatients", [&] {
        Row a, b;
        if (Find(S(firstPatientKey), a) || Find(S(secondPatientKey), b) || a.key == b.key)
            return false;
        if (!a.group.empty() && a.group == b.group)
            return false;
        // The joined group may hold one record per organization.
        std::set<std::string> orgs;
        std::vector<Row> all = a.group.empty() ? std::vector<Row>{a} : GroupMembers(a.group);
        const std::vector<Row> other = b.group.empty() ? std::vector<Row>{b} : GroupMembers(b.group);
        all.insert(all.end(), other.begin(), other.end());
        for (const auto& r : all)
            if (!orgs.insert(r.orgKey).second)
                return false;
        return true;
    });
}

int SqlitePatientService::LinkPatients(const ACE_CString& patientKey, const ACE_CString& organizationKey,
                                       const ACE_CString& linkedPatientKey, const ACE_CString& linkedOrganizationKey,
                                       ACE_CString* linkId)
{
    return GuardDb("LinkPatients", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row a, b;
        if (const int rc = Find(S(patientKey), a))
            return rc;
        if (const int rc = Find(S(linkedPatientKey), b))
            return rc;
        if (a.key == b.key || !SameOrg(S(organizationKey), a) || !SameOrg(S(linkedOrganizationKey), b))
            return ArchiveResult::InvalidArgument;
        if (!CanLinkPatients(patientKey, linkedPatientKey))
            return ArchiveResult::Conflict;
        if (!m_ctx.HasRight(Right::Link, a.orgKey) || !m_ctx.HasRight(Right::Link, b.orgKey))
            return ArchiveResult::NotPermitted;

        auto& log = m_ctx.Log();
        CandidateStore candidates(db);
        const auto kept = candidates.Before(GroupKeys({a, b}));
        const long long j = log.Begin(m_ctx.User(), "link", a.key, b.key, std::string());
        log.Capture(j, "patients", "patient_key", "patient_key = @v", a.key);
        log.Capture(j, "patients", "patient_key", "patient_key = @v", b.key);
        CaptureGroup(j, a.group);
        CaptureGroup(j, b.group);
        std::string group = !a.group.empty() ? a.group : b.group;
        if (group.empty()) {
            group = KeyGenerator::NewKey();
            auto& create = db.Prepare("INSERT INTO link_groups(group_key, created) VALUES (?, ?)");
            create.bind(1, group);
            create.bind(2, ArchiveDb::NowText());
            db.Write(create);
        }
        auto join = [&](const Row& r) {
            if (r.group == group)
                return;
            if (r.group.empty()) {
                auto& st = db.Prepare("UPDATE patients SET link_group = ? WHERE patient_key = ?");
                st.bind(1, group);
                st.bind(2, r.key);
                db.Write(st);
                return;
            }
            auto& st = db.Prepare("UPDATE patients SET link_group = ? WHERE link_group = ?");
            st.bind(1, group);
            st.bind(2, r.group);
            db.Write(st);
            auto& drop = db.Prepare("DELETE FROM link_groups WHERE group_key = ?");
            drop.bind(1, r.group);
            db.Write(drop);
        };
        join(a);
        join(b);
        candidates.After(kept);
        log.Audit(m_ctx.User(), a.key, AuditEvent::PatientsLinked, b.key);
        tx.Commit();
        if (linkId)
            *linkId = group.c_str();
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::UnLinkPatient(const ACE_CString& patientKey, const ACE_CString& organizationKey)
{
    return GuardDb("UnLinkPatient", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row row;
        if (const int rc = Find(S(patientKey), row))
            return rc;
        if (!SameOrg(S(organizationKey), row))
            return ArchiveResult::InvalidArgument;
        if (row.group.empty())
            return ArchiveResult::Conflict;
        if (!m_ctx.HasRight(Right::Link, row.orgKey))
            return ArchiveResult::NotPermitted;

        auto& log = m_ctx.Log();
        CandidateStore candidates(db);
        const auto kept = candidates.Before(GroupKeys({row}));
        const long long j = log.Begin(m_ctx.User(), "unlink", row.key, row.group, std::string());
        CaptureGroup(j, row.group);
        auto& st = db.Prepare("UPDATE patients SET link_group = NULL WHERE patient_key = ?");
        st.bind(1, row.key);
        db.Write(st);
        TidyGroup(row.group);
        candidates.After(kept);
        log.Audit(m_ctx.User(), row.key, AuditEvent::PatientUnlinked, row.group);
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::MergePatients(const ACE_CString& sourcePatientKey, PatientDetailRecord* target,
                                        const ACE_CString& reason, const std::vector<LinkedPatientInfo*>& linkedPatients)
{
    if (!target)
        return ArchiveResult::InvalidArgument;
    return GuardDb("MergePatients", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row source, survivor;
        if (const int rc = Find(S(sourcePatientKey), source))
            return rc;
        if (const int rc = Find(S(target->GetPatientKey()), survivor))
            return rc;
        if (source.key == survivor.key || source.orgKey != survivor.orgKey)
            return ArchiveResult::InvalidArgument;
        if (!SameOrg(S(target->GetOrganizationKey()), survivor))
            return ArchiveResult::InvalidArgument;
        if (!FieldCheck::Text(S(reason), FieldCheck::kReason))
            return ArchiveResult::InvalidArgument;
        FieldCheck::RefuseInvisible("reason", S(reason));
        if (const int rc = PatientRow::Validate(*target))
            return rc;
        const std::string mrn = S(target->GetPatientID());
        if (mrn.empty() || S(target->GetLastName()).empty() || !m_ctx.FirstNameValid(S(target->GetFirstName())))
            return ArchiveResult::InvalidArgument;

        // The pairs to merge: the two patients, then the linked records as chosen.
        std::vector<std::pair<Row, Row>> pairs{{source, survivor}};
        const std::vector<Row> sourceGroup = source.group.empty() ? std::vector<Row>{source} : GroupMembers(source.group);
        const std::vector<Row> targetGroup = survivor.group.empty() ? std::vector<Row>{survivor} : GroupMembers(survivor.group);
        auto inGroup = [](const std::vector<Row>& group, const std::string& key) {
            return std::any_of(group.begin(), group.end(), [&](const Row& r) { return r.key == key; });
        };
        std::set<std::string> away{source.key}, kept{survivor.key};
        for (const LinkedPatientInfo* info : linkedPatients) {
            if (!info)
                return ArchiveResult::InvalidArgument;
            const std::string from = S(info->GetSourcePatientKey()), to = S(info->GetTargetPatientKey());
            if (from.empty() && to.empty())
                continue;
            // The dialog may list the two patients themselves as their organization's pair.
            if (from == source.key && to == survivor.key)
                continue;
            Row f, t;
            if (const int rc = Find(from, f))
                return rc;
            if (const int rc = Find(to, t))
                return rc;
            if (f.key == t.key || f.orgKey != t.orgKey)
                return ArchiveResult::InvalidArgument;
            // One record of each patient's link group, in the same organization.
            const bool crossed = (inGroup(sourceGroup, f.key) && inGroup(targetGroup, t.key))
                || (inGroup(targetGroup, f.key) && inGroup(sourceGroup, t.key));
            if (!crossed || source.group.empty() || survivor.group.empty())
                return ArchiveResult::InvalidArgument;
            // A record merged away twice, or both merged away and kept, would
            // make a chain or a cycle.
            if (!away.insert(f.key).second || kept.count(f.key) || away.count(t.key))
                return ArchiveResult::Conflict;
            kept.insert(t.key);
            pairs.emplace_back(f, t);
        }
        // What stays must be one record per organization in the joined group.
        std::set<std::string> orgs;
        for (const auto* group : {&sourceGroup, &targetGroup})
            for (const auto& r : *group)
                if (!away.count(r.key) && !orgs.insert(r.orgKey).second)
                    return ArchiveResult::Conflict;
        for (const auto& [from, to] : pairs)
            if (!m_ctx.HasRight(Right::Merge, from.orgKey))
                return ArchiveResult::NotPermitted;
        if (!source.group.empty() && source.group != survivor.group) {
            for (const auto& r : sourceGroup)
                if (!away.count(r.key) && !m_ctx.HasRight(Right::Link, r.orgKey))
                    return ArchiveResult::NotPermitted;
        }
        {
            auto& dup = db.Prepare("SELECT 1 FROM patients WHERE org_key = ? AND mrn = ? AND patient_key NOT IN (?, ?)");
            dup.bind(1, survivor.orgKey);
            dup.bind(2, mrn);
            dup.bind(3, survivor.key);
            dup.bind(4, source.key);
            const bool taken = dup.executeStep();
            dup.reset();
            if (taken)
                return ArchiveResult::Conflict;
        }

        auto& log = m_ctx.Log();
        CandidateStore candidates(db);
        std::vector<Row> touched = {source, survivor};
        for (const auto& [from, to] : pairs) {
            touched.push_back(from);
            touched.push_back(to);
        }
        const auto candidatesBefore = candidates.Before(GroupKeys(touched));
        const long long j = log.Begin(m_ctx.User(), "merge", source.key, survivor.key, S(reason));
        for (const auto& [from, to] : pairs) {
            log.Capture(j, "patients", "patient_key", "patient_key = @v", from.key);
            log.Capture(j, "patients", "patient_key", "patient_key = @v", to.key);
            log.Capture(j, "exams", "exam_key", "patient_key = @v", from.key);
            log.Capture(j, "studies", "study_key", "patient_key = @v", from.key);
            log.Capture(j, "ignored_pairs", "key_a", "key_a = @v OR key_b = @v", from.key);
            log.Capture(j, "merged_patients", "old_key", "survivor_key = @v", from.key);
        }
        CaptureGroup(j, source.group);
        if (survivor.group != source.group)
            CaptureGroup(j, survivor.group);

        // The edited survivor; the source's MRN is freed first in case the
        // survivor takes it over.
        // The merged-away key is each statement's last parameter; a statement
        // with two takes the survivor first.
        const auto writeMoved = [&db](const char* sql, const std::string& to, const std::string& from) {
            auto& st = db.Prepare(sql);
            if (st.getBindParameterCount() > 1)
                st.bind(1, to);
            st.bind(st.getBindParameterCount(), from);
            db.Write(st);
        };
        for (const auto& [from, to] : pairs) {
            writeMoved("UPDATE exams SET patient_key = ?1 WHERE patient_key = ?2", to.key, from.key);
            writeMoved("UPDATE studies SET patient_key = ?1 WHERE patient_key = ?2", to.key, from.key);
            writeMoved("DELETE FROM ignored_pairs WHERE key_a = ?1 OR key_b = ?1", to.key, from.key);
            writeMoved("UPDATE merged_patients SET survivor_key = ?1 WHERE survivor_key = ?2", to.key, from.key);
            writeMoved("DELETE FROM patients WHERE patient_key = ?1", to.key, from.key);
            auto& tomb = db.Prepare("INSERT INTO merged_patients(old_key, survivor_key, journal_id) VALUES (?, ?, ?)");
            tomb.bind(1, from.key);
            tomb.bind(2, to.key);
            tomb.bind(3, static_cast<int64_t>(j));
            db.Write(tomb);
        }
        auto& edit = db.Prepare("UPDATE patients SET " + PatientRow::Assignments() + ", modified = ? WHERE patient_key = ?");
        const int next = PatientRow::Bind(edit, *target, 1);
        edit.bind(next, ArchiveDb::NowText());
        edit.bind(next + 1, survivor.key);
        db.Write(edit);

        // The two link groups become one: the survivor's, or the source's when
        // the survivor had none.
        if (!source.group.empty() && source.group != survivor.group) {
            if (survivor.group.empty()) {
                auto& st = db.Prepare("UPDATE patients SET link_group = ? WHERE patient_key = ?");
                st.bind(1, source.group);
                st.bind(2, survivor.key);
                db.Write(st);
                TidyGroup(source.group);
            } else {
                auto& st = db.Prepare("UPDATE patients SET link_group = ?1 WHERE link_group = ?2");
                st.bind(1, survivor.group);
                st.bind(2, source.group);
                db.Write(st);
                auto& drop = db.Prepare("DELETE FROM link_groups WHERE group_key = ?");
                drop.bind(1, source.group);
                db.Write(drop);
                TidyGroup(survivor.group);
            }
        } else {
            TidyGroup(survivor.group);
        }
        candidates.After(candidatesBefore);
        log.Audit(m_ctx.User(), survivor.key, AuditEvent::PatientsMerged, source.key);
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

void SqlitePatientService::GetLinkAndMergePatients(std::vector<DuplicatePatientRecord*>& candidates,
                                                   MergeLinkCandidatesQueryDataSet& query, int& total)
{
    total = 0;
    CandidateCriteria c;
    c.lastName = S(query.GetLastName());
    c.firstName = S(query.GetFirstName());
    c.mrn = S(query.GetMRN());
    c.numericMrn = query.GetUseNumericMRN();
    std::vector<ACE_CString> tokens;
    BParser::DeTokenizeEx(tokens, query.GetSSN().c_str(), BParser::DEFAULT_SEP);
    for (const auto& t : tokens) {
        const std::string id = S(BParser::Trim(t.c_str()));
        if (!id.empty())
            c.globalIds.push_back(id);
    }
    c.sexCode = S(query.GetSexCode());
    if (query.GetBeginBirthDate().IsValid())
        c.dobBegin = S(query.GetBeginBirthDate().GetDate().ToString());
    if (query.GetEndBirthDate().IsValid())
        c.dobEnd = S(query.GetEndBirthDate().GetDate().ToString());
    c.rowLimit = query.GetRowCountValue();
    if (c.rowLimit <= 0)
        c.rowLimit = std::numeric_limits<int>::max();

    auto orgList = [](const ACE_CString& text, bool& off, std::vector<std::string>& keys) {
        const std::string all = S(text);
        if (all == MergeLinkCandidatesQueryDataSet::NO_ORGANIZATIONS) {
            off = true;
            return;
        }
        std::vector<ACE_CString> parts;
        BParser::DeTokenizeEx(parts, text.c_str(), BParser::DEFAULT_SEP);
        for (const auto& p : parts) {
            const std::string key = S(BParser::Trim(p.c_str()));
            if (!key.empty())
                keys.push_back(key);
        }
    };
    orgList(query.GetMergeOrganizationKeys(), c.mergeOff, c.mergeOrgKeys);
    orgList(query.GetLinkOrganizationKeys(), c.linkOff, c.linkOrgKeys);

    GuardDb("GetLinkAndMergePatients", [&] {
        // The reasons a pair can carry are texts of the link/merge reason
        // dictionary, one per blocking rule; a site without a rule's entry
        // still gets a readable text.
        std::map<int, std::string> reasonText;
        for (int rule = 1; rule <= CandidateRules::kCount; ++rule) {
            reasonText[rule] = CandidateRules::DefaultReasonText(rule);
            auto& q = m_ctx.Db().Prepare("SELECT description FROM dictionary WHERE topic = ? AND code = ?");
            q.bind(1, DictionaryTopic::LinkMergeReason);
            q.bind(2, CandidateRules::ReasonCode(rule));
            if (q.executeStep())
                reasonText[rule] = q.getColumn(0).getString();
            q.reset();
        }
        const std::string wanted = S(query.GetReason());
        if (!wanted.empty()) {
            c.reasonKind = -1;
            for (const auto& [kind, text] : reasonText)
                if (text.size() == wanted.size()
                    && std::equal(text.begin(), text.end(), wanted.begin(),
                                  [](char x, char y) { return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y)); }))
                    c.reasonKind = kind;
        }

        std::vector<CandidatePair> pairs;
        long long found = 0;
        if (m_search->Find(c, pairs, found) != 0)
            return 0;
        auto fill = [](const CandidatePatient& p, PatientQueryRecord& r) {
            r.SetPatientKey(p.key.c_str());
            r.SetPatientId(p.mrn.c_str());
            r.SetOrganizationKey(p.orgKey.c_str());
            r.SetOrganizationId(p.orgId.c_str());
            r.SetPatientName(BPersonName(p.lastName.c_str(), p.firstName.c_str(), p.middleName.c_str()).GetDisplayName());
            r.SetPatientSexCode(p.sexCode.c_str());
            r.SetSsn(p.globalId.c_str());
            r.SetPatientBirthDate(BDate::FromString(p.dob.c_str()));
        };
        for (const auto& pair : pairs) {
            auto* row = new DuplicatePatientRecord();
            fill(pair.first, row->GetFirstPatient());
            fill(pair.second, row->GetSecondPatient());
            row->SetDuplicateReason(reasonText[pair.reasonKind].c_str());
            candidates.push_back(row);
        }
        total = found > std::numeric_limits<int>::max() ? std::numeric_limits<int>::max() : static_cast<int>(found);
        return 0;
    });
}

int SqlitePatientService::IgnoreDuplicatePatients(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey)
{
    return GuardDb("IgnoreDuplicatePatients", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row a, b;
        if (const int rc = Find(S(firstPatientKey), a))
            return rc;
        if (const int rc = Find(S(secondPatientKey), b))
            return rc;
        if (a.key == b.key)
            return ArchiveResult::InvalidArgument;
        // Ignoring a pair is the merge decision within one organization and the
        // link decision across two.
        const Right right = a.orgKey == b.orgKey ? Right::Merge : Right::Link;
        if (!m_ctx.HasRight(right, a.orgKey) || !m_ctx.HasRight(right, b.orgKey))
            return ArchiveResult::NotPermitted;
        const std::string& low = std::min(a.key, b.key);
        const std::string& high = std::max(a.key, b.key);
        CandidateStore candidates(db);
        const auto kept = candidates.Before({});
        auto& exists = db.Prepare("SELECT 1 FROM ignored_pairs WHERE key_a = ? AND key_b = ?");
        exists.bind(1, low);
        exists.bind(2, high);
        const bool already = exists.executeStep();
        exists.reset();
        if (already)
            return ArchiveResult::Ok;
        auto& st = db.Prepare("INSERT INTO ignored_pairs(key_a, key_b, user_name, created) VALUES (?, ?, ?, ?)");
        st.bind(1, low);
        st.bind(2, high);
        st.bind(3, m_ctx.User());
        st.bind(4, ArchiveDb::NowText());
        db.Write(st);
        candidates.After(kept, {low, high});
        m_ctx.Log().Audit(m_ctx.User(), low, AuditEvent::DuplicatesIgnored, high);
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqlitePatientService::QueryPatients(const PatientSearchCriteria& criteria, std::vector<PatientDetailRecord*>& patients)
{
    return GuardDb("QueryPatients", [&] {
        std::string where = "WHERE 1";
        std::vector<std::string> binds;
        auto like = [&](const char* column, const ACE_CString& pattern) {
            if (pattern.length() == 0)
                return;
            where += std::string(" AND ") + column + " LIKE ? ESCAPE '\\'";
            binds.push_back(S(pattern));
        };
        like("p.last_name", criteria.lastName);
        like("p.first_name", criteria.firstName);
        like("p.mrn", criteria.patientID);
        if (criteria.organizationKey.length() > 0) {
            const auto org = m_ctx.OrgByKeyOrId(S(criteria.organizationKey));
            if (!org)
                return ArchiveResult::Ok;
            where += " AND p.org_key = ?";
            binds.push_back(org->key);
        }
        std::string sql = PatientRow::Select() + where +
                          " ORDER BY p.last_name COLLATE NOCASE, p.first_name COLLATE NOCASE, p.mrn, p.patient_key";
        if (criteria.maxRows > 0)
            sql += " LIMIT " + std::to_string(criteria.maxRows);
        SQLite::Statement q(m_ctx.Db().Handle(), sql);
        int i = 1;
        for (const auto& b : binds)
            q.bind(i++, b);
        while (q.executeStep()) {
            auto* record = new PatientDetailRecord();
            PatientRow::Read(q, *record);
            patients.push_back(record);
        }
        return ArchiveResult::Ok;
    });
}
