#include "sqliteexamservice.h"

#include "archivecontext.h"
#include "archiveerror.h"
#include "counterkey.h"
#include "keygenerator.h"

#include <bpersonname.h>
#include <examdataset.h>
#include <providerrecord.h>
#include <studyrecord.h>

#include <SQLiteCpp/Statement.h>

#include <server.h>

#include <cstdio>
#include <memory>

namespace {

using Org = ArchiveContext::Organization;
using Right = ArchiveContext::Right;
const CounterKey kAccessionCounter = {&Org::generatesAcc, &Org::accPrefix, "acc_counter", "exams", "accession", 8,
                                   ArchiveContext::Right::EditExams};

std::string S(const ACE_CString& s)
{
    return std::string(s.c_str(), s.length());
}

std::string When(const BDateTime& t)
{
    return t.IsValid() ? S(t.ToString()) : std::string();
}

const char* const kExamColumns =
    "SELECT exam_key, patient_key, org_key, accession, priority_code, status_code, scheduled_dt, performed_dt, "
    "exam_code, exam_code_key, modality, body_part, description, performing_resource_key, performing_resource_id, "
    "ordering_location_key, ordering_location_id, signs_symptoms, history, comments, marked_read, "
    "link_group IS NOT NULL, "
    "coalesce((SELECT version FROM exam_versions v WHERE v.exam_key = exams.exam_key), 0) FROM exams ";

// The editable columns, in bind order.
const char* const kEditable =
    "accession = ?, priority_code = ?, status_code = ?, scheduled_dt = ?, performed_dt = ?, exam_code = ?, "
    "exam_code_key = ?, modality = ?, body_part = ?, description = ?, performing_resource_key = ?, "
    "performing_resource_id = ?, ordering_location_key = ?, ordering_location_id = ?, signs_symptoms = ?, "
    "history = ?, comments = ?, marked_read = ?";

int BindEditable(SQLite::Statement& st, const ExamDataSet& e, const std::string& status, int i)
{
    st.bind(i++, S(e.GetAccessionNumber()));
    st.bind(i++, S(e.GetPriorityCode()));
    st.bind(i++, status);
    st.bind(i++, When(e.GetScheduledDT()));
    st.bind(i++, When(e.GetPerformedDT()));
    st.bind(i++, S(e.GetExamCode()));
    st.bind(i++, S(e.GetExamCodeKey()));
    st.bind(i++, S(e.GetModality()));
    st.bind(i++, S(e.GetBodyPart()));
    st.bind(i++, S(e.GetDescription()));
    st.bind(i++, S(e.GetPerformingResourceKey()));
    st.bind(i++, S(e.GetPerformingResourceId()));
    st.bind(i++, S(e.GetOrderingLocationKey()));
    st.bind(i++, S(e.GetOrderingLocationId()));
    st.bind(i++, S(e.GetSignsAndSymptoms()));
    st.bind(i++, S(e.GetHistory()));
    st.bind(i++, S(e.GetComments()));
    st.bind(i++, e.IsMarkedRead() ? 1 : 0);
    return i;
}

// A refusal the user can act on: raised as the framework's server exception
// so the dialog shows the reason; the open transaction rolls back.
[[noreturn]] void Refuse(int code, const std::string& reason)
{
    throw Framework::Server(reason, code);
}

} // namespace

SqliteExamService::SqliteExamService(ArchiveContext& context)
    : m_ctx(context)
{
}

int SqliteExamService::Find(const std::string& key, const std::string& org, Row& row)
{
    if (!FieldCheck::Key(key) || !FieldCheck::Text(org, 64))
        return ArchiveResult::InvalidArgument;
    auto& q = m_ctx.Db().Prepare("SELECT exam_key, patient_key, org_key, coalesce(link_group, ''), cancelled "
                                 "FROM exams WHERE exam_key = ?");
    q.bind(1, key);
    if (!q.executeStep()) {
        q.reset();
        return ArchiveResult::NotFound;
    }
    row = {q.getColumn(0).getString(), q.getColumn(1).getString(), q.getColumn(2).getString(),
           q.getColumn(3).getString(), q.getColumn(4).getInt() != 0};
    q.reset();
    if (!org.empty() && org != row.orgKey) {
        const auto o = m_ctx.OrgByKeyOrId(org);
        if (!o || o->key != row.orgKey)
            return ArchiveResult::InvalidArgument;
    }
    return ArchiveResult::Ok;
}

int SqliteExamService::Read(const std::string& key, ExamDataSet& e)
{
    auto& q = m_ctx.Db().Prepare(std::string(kExamColumns) + "WHERE exam_key = ?");
    q.bind(1, key);
    if (!q.executeStep()) {
        q.reset();
        return ArchiveResult::NotFound;
    }
    e = ExamDataSet();
    e.SetKey(q.getColumn(0).getText());
    e.SetPatientKey(q.getColumn(1).getText());
    e.SetOrganizationKey(q.getColumn(2).getText());
    e.SetAccessionNumber(q.getColumn(3).getText());
    e.SetPriorityCode(q.getColumn(4).getText());
    e.SetStatusCode(q.getColumn(5).getText());
    e.SetScheduledDT(BDateTime::FromString(q.getColumn(6).getText()));
    e.SetPerformedDT(BDateTime::FromString(q.getColumn(7).getText()));
    e.SetExamCode(q.getColumn(8).getText());
    e.SetExamCodeKey(q.getColumn(9).getText());
    e.SetModality(q.getColumn(10).getText());
    e.SetBodyPart(q.getColumn(11).getText());
    e.SetDescription(q.getColumn(12).getText());
    e.SetPerformingResourceKey(q.getColumn(13).getText());
    e.SetPerformingResourceId(q.getColumn(14).getText());
    e.SetOrderingLocationKey(q.getColumn(15).getText());
    e.SetOrderingLocationId(q.getColumn(16).getText());
    e.SetSignsAndSymptoms(q.getColumn(17).getText());
    e.SetHistory(q.getColumn(18).getText());
    e.SetComments(q.getColumn(19).getText());
    e.SetMarkedRead(q.getColumn(20).getInt() != 0);
    e.SetLinkedFlag(q.getColumn(21).getInt() != 0 ? "true" : "false");
    e.SetVersion(q.getColumn(22).getInt64());
    q.reset();

    auto& p = m_ctx.Db().Prepare("SELECT provider_key, provider_type, provider_id, org_key, dicom_name, work_phone "
                                 "FROM exam_providers WHERE exam_key = ? ORDER BY position");
    p.bind(1, key);
    while (p.executeStep()) {
        ProviderRecord r;
        r.SetKey(p.getColumn(0).getText());
        r.SetProviderType(static_cast<ProviderRecord::ePROVIDERTYPE>(p.getColumn(1).getInt()));
        r.SetProviderID(p.getColumn(2).getText());
        r.SetOrganizationKey(p.getColumn(3).getText());
        r.SetName(BPersonName::FromDICOMName(p.getColumn(4).getText()));
        r.SetWorkPhone(p.getColumn(5).getText());
        e.AddProvider(r);
    }
    p.reset();
    auto& m = m_ctx.Db().Prepare("SELECT modifier_key, code, description FROM exam_modifiers WHERE exam_key = ? "
                                 "ORDER BY position");
    m.bind(1, key);
    while (m.executeStep()) {
        ExamCodeModifierDataSet d;
        d.SetKey(m.getColumn(0).getText());
        d.SetCode(m.getColumn(1).getText());
        d.SetDescription(m.getColumn(2).getText());
        d.SetOrganizationKey(e.GetOrganizationKey());
        e.GetExamCodeModifiers().push_back(d);
    }
    m.reset();
    return ArchiveResult::Ok;
}

int SqliteExamService::Validate(const ExamDataSet& e)
{
    using namespace FieldCheck;
    const std::string acc = S(e.GetAccessionNumber());
    if (acc.empty() || !Text(acc, kAccession))
        return ArchiveResult::InvalidArgument;
    RefuseInvisible("accession number", acc);
    for (const auto& text : {e.GetPriorityCode(), e.GetStatusCode(), e.GetExamCode(), e.GetModality(), e.GetBodyPart()})
        if (!Text(S(text), kIdentifier))
            return ArchiveResult::InvalidArgument;
    for (const auto& text : {e.GetExamCodeKey(), e.GetPerformingResourceKey(), e.GetPerformingResourceId(),
                             e.GetOrderingLocationKey(), e.GetOrderingLocationId()})
        if (!Text(S(text), 64))
            return ArchiveResult::InvalidArgument;
    if (!Text(S(e.GetDescription()), kAddress) || !Text(S(e.GetSignsAndSymptoms()), 255)
        || !Text(S(e.GetHistory()), 1024) || !Text(S(e.GetComments()), kComment))
        return ArchiveResult::InvalidArgument;
    for (const auto& p : e.GetProviders())
        if (!Text(S(p.GetKey()), 64) || !Text(S(p.GetProviderID()), 64) || !Text(S(p.GetName().ToDICOMName()), 255))
            return ArchiveResult::InvalidArgument;
    for (const auto& m : e.GetExamCodeModifiers())
        if (!Text(S(m.GetCode()), kIdentifier) || !Text(S(m.GetDescription()), kAddress) || !Text(S(m.GetKey()), 64))
            return ArchiveResult::InvalidArgument;
    return ArchiveResult::Ok;
}

void SqliteExamService::WriteChildren(const std::string& key, const ExamDataSet& e)
{
    auto& db = m_ctx.Db();
    auto& clearP = db.Prepare("DELETE FROM exam_providers WHERE exam_key = ?");
    clearP.bind(1, key);
    db.Write(clearP);
    int position = 0;
    for (const auto& p : e.GetProviders()) {
        auto& st = db.Prepare("INSERT INTO exam_providers(exam_key, position, provider_key, provider_type, provider_id, "
                              "org_key, dicom_name, work_phone) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
        st.bind(1, key);
        st.bind(2, position++);
        st.bind(3, S(p.GetKey()));
        st.bind(4, static_cast<int>(p.GetProviderType()));
        st.bind(5, S(p.GetProviderID()));
        st.bind(6, S(p.GetOrganizationKey()));
        st.bind(7, S(p.GetName().ToDICOMName()));
        st.bind(8, S(p.GetWorkPhone()));
        db.Write(st);
    }
    auto& clearM = db.Prepare("DELETE FROM exam_modifiers WHERE exam_key = ?");
    clearM.bind(1, key);
    db.Write(clearM);
    position = 0;
    for (const auto& m : e.GetExamCodeModifiers()) {
        auto& st = db.Prepare("INSERT INTO exam_modifiers(exam_key, position, modifier_key, code, description) "
                              "VALUES (?, ?, ?, ?, ?)");
        st.bind(1, key);
        st.bind(2, position++);
        st.bind(3, S(m.GetKey()));
        st.bind(4, S(m.GetCode()));
        st.bind(5, S(m.GetDescription()));
        db.Write(st);
    }
}

void SqliteExamService::TidyGroup(const std::string& group)
{
    if (group.empty())
        return;
    auto& db = m_ctx.Db();
    auto& count = db.Prepare("SELECT count(*) FROM exams WHERE link_group = ?");
    count.bind(1, group);
    count.executeStep();
    const int members = count.getColumn(0).getInt();
    count.reset();
    if (members >= 2)
        return;
    auto& clear = db.Prepare("UPDATE exams SET link_group = NULL WHERE link_group = ?");
    clear.bind(1, group);
    db.Write(clear);
}

int SqliteExamService::GetExamDataSet(const ACE_CString& examKey, ExamDataSet* exam)
{
    if (!exam)
        return ArchiveResult::InvalidArgument;
    return GuardDb("GetExamDataSet", [&] {
        if (!FieldCheck::Key(S(examKey)))
            return ArchiveResult::InvalidArgument;
        return Read(S(examKey), *exam);
    });
}

int SqliteExamService::CreateExam(ExamDataSet* exam, ACE_CString& newExamKey)
{
    if (!exam)
        return ArchiveResult::InvalidArgument;
    return GuardDb("CreateExam", [&] {
        if (const int rc = Validate(*exam))
            return rc;
        const std::string patientKey = S(exam->GetPatientKey());
        if (!FieldCheck::Key(patientKey))
            return ArchiveResult::InvalidArgument;
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        const auto owner = db.SelectText("SELECT org_key FROM patients WHERE patient_key = ?", patientKey);
        if (!owner)
            return db.SelectText("SELECT 1 FROM merged_patients WHERE old_key = ?", patientKey) ? ArchiveResult::MergedAway
                                                                                                : ArchiveResult::NotFound;
        const std::string& patientOrg = *owner;
        // An exam belongs to its patient's organization.
        const std::string given = S(exam->GetOrganizationKey());
        const auto org = m_ctx.OrgByKeyOrId(given.empty() ? patientOrg : given);
        if (!org || org->key != patientOrg)
            return ArchiveResult::InvalidArgument;
        m_ctx.RequireRight(Right::EditExams, org->key);
        CheckAccessionFree(org->key, org->id, S(exam->GetAccessionNumber()), std::string());
        const std::string status = org->newExamStatus.empty() ? S(exam->GetStatusCode()) : org->newExamStatus;
        const std::string key = KeyGenerator::NewKey();
        const std::string now = ArchiveDb::NowText();
        auto& st = db.Prepare("INSERT INTO exams(exam_key, patient_key, org_key, accession, created, modified) "
                              "VALUES (?, ?, ?, ?, ?, ?)");
        st.bind(1, key);
        st.bind(2, patientKey);
        st.bind(3, org->key);
        st.bind(4, S(exam->GetAccessionNumber()));
        st.bind(5, now);
        st.bind(6, now);
        db.Write(st);
        auto& fields = db.Prepare(std::string("UPDATE exams SET ") + kEditable + " WHERE exam_key = ?");
        const int next = BindEditable(fields, *exam, status, 1);
        fields.bind(next, key);
        db.Write(fields);
        WriteChildren(key, *exam);
        m_ctx.Log().Audit(m_ctx.User(), key, AuditEvent::ExamCreated);
        tx.Commit();
        newExamKey = key.c_str();
        exam->SetVersion(0);
        return ArchiveResult::Ok;
    });
}

void SqliteExamService::CheckAccessionFree(const std::string& orgKey, const std::string& orgId,
                                           const std::string& accession, const std::string& examKey)
{
    auto& dup = m_ctx.Db().Prepare("SELECT 1 FROM exams WHERE org_key = ? AND accession = ? AND exam_key <> ?");
    dup.bind(1, orgKey);
    dup.bind(2, accession);
    dup.bind(3, examKey);
    const bool taken = dup.executeStep();
    dup.reset();
    if (taken)
        Refuse(ArchiveResult::Conflict, "The accession number " + accession
                                            + " is already used by another exam of organization " + orgId + ".");
}

void SqliteExamService::CheckVersion(const std::string& examKey, long long version)
{
    auto& q = m_ctx.Db().Prepare("SELECT coalesce(v.version, 0) FROM exams e "
                                 "LEFT JOIN exam_versions v ON v.exam_key = e.exam_key WHERE e.exam_key = ?");
    q.bind(1, examKey);
    const bool found = q.executeStep();
    const long long stored = found ? q.getColumn(0).getInt64() : 0;
    q.reset();
    if (!found)
        Refuse(ArchiveResult::NotFound, "The exam was deleted on another workstation since it was opened.");
    if (stored != version)
        Refuse(ArchiveResult::Conflict, "The exam was changed on another workstation since it was opened. "
                                        "Close it and open it again to see the changes.");
}

int SqliteExamService::UpdateExam(ExamDataSet* exam)
{
    if (!exam)
        return ArchiveResult::InvalidArgument;
    return GuardDb("UpdateExam", [&] {
        if (const int rc = Validate(*exam))
            return rc;
        if (!FieldCheck::Key(S(exam->GetKey())))
            return ArchiveResult::InvalidArgument;
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        // Checked inside the transaction: the loser of a race sees the winner's save.
        CheckVersion(S(exam->GetKey()), exam->GetVersion());
        Row row;
        if (const int rc = Find(S(exam->GetKey()), S(exam->GetOrganizationKey()), row))
            return rc;
        const auto org = m_ctx.OrgByKey(row.orgKey);
        const std::string orgId = org ? org->id : row.orgKey;
        m_ctx.RequireRight(Right::EditExams, row.orgKey);
        CheckAccessionFree(row.orgKey, orgId, S(exam->GetAccessionNumber()), row.key);
        auto& st = db.Prepare(std::string("UPDATE exams SET ") + kEditable + ", modified = ? WHERE exam_key = ?");
        const int next = BindEditable(st, *exam, S(exam->GetStatusCode()), 1);
        st.bind(next, ArchiveDb::NowText());
        st.bind(next + 1, row.key);
        db.Write(st);
        WriteChildren(row.key, *exam);
        auto& bump = db.Prepare("INSERT INTO exam_versions(exam_key, version) VALUES (?, 1) "
                                "ON CONFLICT(exam_key) DO UPDATE SET version = version + 1");
        bump.bind(1, row.key);
        db.Write(bump);
        m_ctx.Log().Audit(m_ctx.User(), row.key, AuditEvent::ExamUpdated);
        tx.Commit();
        exam->SetVersion(exam->GetVersion() + 1);
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::GetAutogeneratedACC(const ACE_CString& organization, ACE_CString& accessionNumber)
{
    return GuardDb("GetAutogeneratedACC", [&] {
        std::string value;
        if (const int rc = NextCounterKey(m_ctx, kAccessionCounter, S(organization), value))
            return rc;
        accessionNumber = value.c_str();
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::GetLinkedExams(const ACE_CString& examKey, const ACE_CString& organizationKey,
                                      std::vector<ExamDataSet*>& linkedExams)
{
    return GuardDb("GetLinkedExams", [&] {
        Row row;
        if (const int rc = Find(S(examKey), S(organizationKey), row))
            return rc;
        if (row.group.empty())
            return ArchiveResult::Ok;
        std::vector<std::string> keys;
        auto& q = m_ctx.Db().Prepare("SELECT exam_key FROM exams WHERE link_group = ? AND exam_key <> ? "
                                     "ORDER BY scheduled_dt, accession");
        q.bind(1, row.group);
        q.bind(2, row.key);
        while (q.executeStep())
            keys.push_back(q.getColumn(0).getString());
        q.reset();
        for (const auto& key : keys) {
            auto e = std::make_unique<ExamDataSet>();
            if (Read(key, *e) == ArchiveResult::Ok)
                linkedExams.push_back(e.release());
        }
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::UnLinkExam(const ACE_CString& examKey, const ACE_CString& organizationKey)
{
    return GuardDb("UnLinkExam", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row row;
        if (const int rc = Find(S(examKey), S(organizationKey), row))
            return rc;
        if (row.group.empty())
            return ArchiveResult::Conflict;
        auto& log = m_ctx.Log();
        const long long j = log.Begin(m_ctx.User(), "unlink-exam", row.key, row.group, std::string());
        log.Capture(j, "exams", "exam_key", "link_group = @v", row.group);
        auto& st = db.Prepare("UPDATE exams SET link_group = NULL WHERE exam_key = ?");
        st.bind(1, row.key);
        db.Write(st);
        TidyGroup(row.group);
        log.Audit(m_ctx.User(), row.key, AuditEvent::ExamUnlinked, row.group);
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::LinkExams(const ACE_CString& examKey, const ACE_CString& organizationKey,
                                 const ACE_CString& linkedExamKey, const ACE_CString& linkedOrganizationKey)
{
    return GuardDb("LinkExams", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row a, b;
        if (const int rc = Find(S(examKey), S(organizationKey), a))
            return rc;
        if (const int rc = Find(S(linkedExamKey), S(linkedOrganizationKey), b))
            return rc;
        // Linked exams are orders of one patient in one organization.
        if (a.key == b.key || a.patientKey != b.patientKey || a.orgKey != b.orgKey)
            return ArchiveResult::InvalidArgument;
        if (!a.group.empty() && a.group == b.group)
            return ArchiveResult::Conflict;
        std::string group = !a.group.empty() ? a.group : (!b.group.empty() ? b.group : KeyGenerator::NewKey());
        for (const Row* r : {&a, &b}) {
            if (r->group == group)
                continue;
            auto& st = db.Prepare(r->group.empty() ? "UPDATE exams SET link_group = ?1 WHERE exam_key = ?2"
                                                   : "UPDATE exams SET link_group = ?1 WHERE link_group = ?3");
            st.bind(1, group);
            if (r->group.empty())
                st.bind(2, r->key);
            else
                st.bind(3, r->group);
            db.Write(st);
        }
        m_ctx.Log().Audit(m_ctx.User(), a.key, AuditEvent::ExamUpdated, "linked with " + b.key);
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::DeleteExam(const ACE_CString& examKey, const ACE_CString& organizationKey,
                                  const ACE_CString& reason, bool deleteStudies)
{
    return GuardDb("DeleteExam", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row row;
        if (const int rc = Find(S(examKey), S(organizationKey), row))
            return rc;
        if (!FieldCheck::Text(S(reason), FieldCheck::kReason))
            return ArchiveResult::InvalidArgument;
        FieldCheck::RefuseInvisible("reason", S(reason));
        if (!m_ctx.HasRight(Right::DeleteExams, row.orgKey))
            return ArchiveResult::NotPermitted;
        auto& log = m_ctx.Log();
        const long long j = log.Begin(m_ctx.User(), deleteStudies ? "delete-exam-and-studies" : "delete-exam",
                                      row.key, row.patientKey, S(reason));
        log.Capture(j, "exams", "exam_key", "exam_key = @v", row.key);
        log.Capture(j, "exam_providers", "exam_key", "exam_key = @v", row.key);
        log.Capture(j, "exam_modifiers", "exam_key", "exam_key = @v", row.key);
        log.Capture(j, "studies", "study_key", "exam_key = @v", row.key);
        for (const char* sql : {deleteStudies ? "DELETE FROM studies WHERE exam_key = ?"
                                              : "UPDATE studies SET exam_key = NULL WHERE exam_key = ?",
                                "DELETE FROM exam_providers WHERE exam_key = ?",
                                "DELETE FROM exam_modifiers WHERE exam_key = ?",
                                "DELETE FROM exams WHERE exam_key = ?"}) {
            auto& st = db.Prepare(sql);
            st.bind(1, row.key);
            db.Write(st);
        }
        TidyGroup(row.group);
        log.Audit(m_ctx.User(), row.key, AuditEvent::ExamDeleted, S(reason));
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::CancelExam(const ACE_CString& examKey, const ACE_CString& organizationKey,
                                  const ACE_CString& reason)
{
    return GuardDb("CancelExam", [&] {
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        Row row;
        if (const int rc = Find(S(examKey), S(organizationKey), row))
            return rc;
        if (!FieldCheck::Text(S(reason), FieldCheck::kReason))
            return ArchiveResult::InvalidArgument;
        if (row.cancelled)
            return ArchiveResult::Conflict;
        FieldCheck::RefuseInvisible("reason", S(reason));
        if (!m_ctx.HasRight(Right::DeleteExams, row.orgKey))
            return ArchiveResult::NotPermitted;
        auto& log = m_ctx.Log();
        const long long j = log.Begin(m_ctx.User(), "cancel-exam", row.key, row.patientKey, S(reason));
        log.Capture(j, "exams", "exam_key", "exam_key = @v", row.key);
        auto& st = db.Prepare("UPDATE exams SET cancelled = 1, status_code = ?, modified = ? WHERE exam_key = ?");
        st.bind(1, kCancelledStatus);
        st.bind(2, ArchiveDb::NowText());
        st.bind(3, row.key);
        db.Write(st);
        log.Audit(m_ctx.User(), row.key, AuditEvent::ExamCancelled, S(reason));
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::DetachStudy(const ACE_CString& studyKey, const ACE_CString& reason)
{
    return GuardDb("DetachStudy", [&] {
        const std::string key = S(studyKey);
        if (!FieldCheck::Key(key) || !FieldCheck::Text(S(reason), FieldCheck::kReason))
            return ArchiveResult::InvalidArgument;
        auto& db = m_ctx.Db();
        WriteTransaction tx(db);
        const auto attached = db.SelectText("SELECT coalesce(exam_key, '') FROM studies WHERE study_key = ?", key);
        if (!attached)
            return ArchiveResult::NotFound;
        const std::string& exam = *attached;
        if (exam.empty())
            return ArchiveResult::Conflict;
        FieldCheck::RefuseInvisible("reason", S(reason));
        auto& log = m_ctx.Log();
        const auto owner = db.SelectText("SELECT p.org_key FROM studies s JOIN patients p ON p.patient_key = s.patient_key "
                                         "WHERE s.study_key = ?", key);
        if (!owner || !m_ctx.HasRight(Right::DetachStudies, *owner))
            return ArchiveResult::NotPermitted;
        const long long j = log.Begin(m_ctx.User(), "detach-study", key, exam, S(reason));
        log.Capture(j, "studies", "study_key", "study_key = @v", key);
        auto& st = db.Prepare("UPDATE studies SET exam_key = NULL WHERE study_key = ?");
        st.bind(1, key);
        db.Write(st);
        log.Audit(m_ctx.User(), key, AuditEvent::StudyDetached, S(reason));
        tx.Commit();
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::QueryPatientExams(const ACE_CString& patientKey, std::vector<ExamDataSet*>& exams)
{
    return GuardDb("QueryPatientExams", [&] {
        if (!FieldCheck::Key(S(patientKey)))
            return ArchiveResult::InvalidArgument;
        std::vector<std::string> keys;
        auto& q = m_ctx.Db().Prepare("SELECT exam_key FROM exams WHERE patient_key = ? "
                                     "ORDER BY scheduled_dt DESC, accession");
        q.bind(1, S(patientKey));
        while (q.executeStep())
            keys.push_back(q.getColumn(0).getString());
        q.reset();
        for (const auto& key : keys) {
            auto e = std::make_unique<ExamDataSet>();
            if (Read(key, *e) == ArchiveResult::Ok)
                exams.push_back(e.release());
        }
        return ArchiveResult::Ok;
    });
}

int SqliteExamService::QueryExamStudies(const ACE_CString& examKey, std::vector<StudyRecord*>& studies)
{
    return GuardDb("QueryExamStudies", [&] {
        if (!FieldCheck::Key(S(examKey)))
            return ArchiveResult::InvalidArgument;
        auto& q = m_ctx.Db().Prepare("SELECT study_key, exam_key, study_uid, description, study_dt, image_count "
                                     "FROM studies WHERE exam_key = ? ORDER BY study_dt, study_uid");
        q.bind(1, S(examKey));
        while (q.executeStep()) {
            auto* s = new StudyRecord();
            s->SetStudyKey(q.getColumn(0).getText());
            s->SetExamKey(q.getColumn(1).getText());
            s->SetStudyInstanceUID(q.getColumn(2).getText());
            s->SetDescription(q.getColumn(3).getText());
            s->SetStudyDT(BDateTime::FromString(q.getColumn(4).getText()));
            s->SetImageCount(q.getColumn(5).getInt());
            studies.push_back(s);
        }
        q.reset();
        return ArchiveResult::Ok;
    });
}
