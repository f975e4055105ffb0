#include "sqlitedictionaryservice.h"

#include "archivecontext.h"
#include "archiveerror.h"
#include "dictionarytopic.h"
#include "textmatch.h"

#include <dictionaryrecord.h>
#include <examcodemodifierdataset.h>
#include <examcoderecord.h>
#include <locationdataset.h>
#include <performingresourcedataset.h>
#include <queryexamcodemodifiersrequestfacade.h>
#include <queryexamcodesrequestfacade.h>
#include <querylocationdatarequestfacade.h>

#include <SQLiteCpp/Statement.h>

namespace {

std::string S(const ACE_CString& s)
{
    return std::string(s.c_str(), s.length());
}

} // namespace

SqliteDictionaryService::SqliteDictionaryService(ArchiveContext& context)
    : m_ctx(context)
{
}

SqliteDictionaryService::~SqliteDictionaryService() = default;

void SqliteDictionaryService::Reload()
{
    // Records handed out stay alive: callers may still point at them.
    m_topics.clear();
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::Topic(int topic, const std::string& parent)
{
    const auto id = std::make_pair(topic, parent);
    auto it = m_topics.find(id);
    if (it != m_topics.end())
        return it->second;
    std::vector<DictionaryRecord*> list;
    GuardDb("reading a dictionary", [&] {
        const std::string sql = std::string("SELECT code, description, org_key FROM dictionary WHERE topic = ? ") +
                                (parent == "*" ? "" : "AND parent_code = ? ") + "ORDER BY parent_code, sort_order, code";
        SQLite::Statement q(m_ctx.Db().Handle(), sql);
        q.bind(1, topic);
        if (parent != "*")
            q.bind(2, parent);
        while (q.executeStep()) {
            m_records.push_back(std::make_unique<DictionaryRecord>(
                q.getColumn(0).getText(), q.getColumn(1).getText(), q.getColumn(2).getText()));
            list.push_back(m_records.back().get());
        }
    });
    return m_topics.emplace(id, std::move(list)).first->second;
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetDictionary(eTOPICCODE topic)
{
    // The states of every country when asked for the topic as a whole.
    return Topic(static_cast<int>(topic), topic == eSTATE ? "*" : "");
}

ACE_CString SqliteDictionaryService::GetDescriptionForCode(eTOPICCODE topic, const ACE_CString& code,
                                                           const ACE_CString& organizationKey)
{
    const auto& list = GetDictionary(topic);
    const DictionaryRecord* shared = nullptr;
    for (const auto* r : list) {
        if (r->GetCode() != code)
            continue;
        if (organizationKey.length() > 0 && r->GetOrganizationKey() == organizationKey)
            return r->GetDescription();
        if (r->GetOrganizationKey().length() == 0 && !shared)
            shared = r;
    }
    return shared ? shared->GetDescription() : ACE_CString();
}

std::vector<DictionaryRecord*> SqliteDictionaryService::ListCountryStates(const ACE_CString& countryCode)
{
    if (countryCode.length() == 0)
        return {};
    return Topic(DictionaryTopic::State, S(countryCode));
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetDeleteExamReasonDictionary()
{
    return Topic(DictionaryTopic::DeleteExamReason);
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetCancelExamReasonDictionary()
{
    return Topic(DictionaryTopic::CancelExamReason);
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetDeletePatientsReasonDictionary()
{
    return Topic(DictionaryTopic::DeletePatientReason);
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetDetachStudyReasonDictionary()
{
    return Topic(DictionaryTopic::DetachStudyReason);
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetLinkMergeReasonDictionary()
{
    return Topic(DictionaryTopic::LinkMergeReason);
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetExamPriorityCodes()
{
    return Topic(DictionaryTopic::Priority);
}

const std::vector<DictionaryRecord*>& SqliteDictionaryService::GetDiagnosticImageStatusCodes()
{
    return Topic(DictionaryTopic::DiagnosticImageStatus);
}

std::vector<ACE_CString> SqliteDictionaryService::PriorityCodesByRank()
{
    std::vector<ACE_CString> codes;
    GuardDb("reading priority ranks", [&] {
        SQLite::Statement q(m_ctx.Db().Handle(),
                            "SELECT code FROM dictionary WHERE topic = ? AND parent_code = '' ORDER BY rank, sort_order, code");
        q.bind(1, DictionaryTopic::Priority);
        while (q.executeStep())
            codes.emplace_back(q.getColumn(0).getText());
    });
    return codes;
}

namespace {

// Reference data of one organization: its own rows and the site-wide ones.
// An unknown organization key matches only the site-wide rows.
std::string OrgFilter()
{
    return "(org_key = '' OR ?1 = '' OR org_key = ?1)";
}

// Binds the match's values from parameter number first on.
void BindMatch(SQLite::Statement& q, const TextMatch& match, int first)
{
    for (const auto& value : match.binds)
        q.bind(first++, value);
}

} // namespace

int SqliteDictionaryService::QueryExamCodes(QueryExamCodesRequestFacade& request, std::vector<ExamCodeRecord*>& codes)
{
    if (!FieldCheck::Text(S(request.GetExamCode()), 64) || !FieldCheck::Text(S(request.GetOrganizationKey()), 64))
        return ArchiveResult::InvalidArgument;
    return GuardDb("QueryExamCodes", [&] {
        const TextMatch match = MatchText("code", S(request.GetExamCode()), 2);
        SQLite::Statement q(m_ctx.Db().Handle(),
                            "SELECT exam_code_key, code, description, modality, body_part, org_key FROM exam_codes "
                            "WHERE " + OrgFilter() + " AND " + match.sql + " ORDER BY code COLLATE NOCASE");
        q.bind(1, S(request.GetOrganizationKey()));
        BindMatch(q, match, 2);
        while (q.executeStep()) {
            auto* r = new ExamCodeRecord();
            r->SetKey(q.getColumn(0).getText());
            r->SetCode(q.getColumn(1).getText());
            r->SetDescription(q.getColumn(2).getText());
            r->SetModality(q.getColumn(3).getText());
            r->SetBodyPart(q.getColumn(4).getText());
            r->SetOrganizationKey(q.getColumn(5).getText());
            codes.push_back(r);
        }
        return ArchiveResult::Ok;
    });
}

int SqliteDictionaryService::QueryExamCodeModifiers(QueryExamCodeModifiersRequestFacade& request,
                                                    std::vector<ExamCodeModifierDataSet*>& modifiers)
{
    if (!FieldCheck::Text(S(request.GetCode()), 64) || !FieldCheck::Text(S(request.GetOrganizationKey()), 64))
        return ArchiveResult::InvalidArgument;
    return GuardDb("QueryExamCodeModifiers", [&] {
        const TextMatch match = MatchText("code", S(request.GetCode()), 2);
        SQLite::Statement q(m_ctx.Db().Handle(),
                            "SELECT modifier_key, code, description, org_key FROM exam_code_modifiers "
                            "WHERE " + OrgFilter() + " AND " + match.sql + " ORDER BY code COLLATE NOCASE");
        q.bind(1, S(request.GetOrganizationKey()));
        BindMatch(q, match, 2);
        while (q.executeStep()) {
            auto* r = new ExamCodeModifierDataSet();
            r->SetKey(q.getColumn(0).getText());
            r->SetCode(q.getColumn(1).getText());
            r->SetDescription(q.getColumn(2).getText());
            r->SetOrganizationKey(q.getColumn(3).getText());
            modifiers.push_back(r);
        }
        return ArchiveResult::Ok;
    });
}

int SqliteDictionaryService::QueryLocationData(const QueryLocationDataRequestFacade& request,
                                               std::vector<LocationDataSet*>& locations, bool activeOnly)
{
    if (!FieldCheck::Text(S(request.GetLocationId()), 64) || !FieldCheck::Text(S(request.GetLocationKey()), 64)
        || !FieldCheck::Text(S(request.GetOrganizationKey()), 64))
        return ArchiveResult::InvalidArgument;
    return GuardDb("QueryLocationData", [&] {
        const TextMatch match = MatchText("location_id", S(request.GetLocationId()), 4);
        SQLite::Statement q(m_ctx.Db().Handle(),
                            "SELECT location_key, location_id, description, org_key, active FROM locations "
                            "WHERE " + OrgFilter() + " AND " + match.sql + " "
                            "AND (?2 = '' OR location_key = ?2) AND (?3 = 0 OR active = 1) "
                            "ORDER BY location_id COLLATE NOCASE");
        q.bind(1, S(request.GetOrganizationKey()));
        q.bind(2, S(request.GetLocationKey()));
        q.bind(3, activeOnly ? 1 : 0);
        BindMatch(q, match, 4);
        while (q.executeStep()) {
            auto* r = new LocationDataSet();
            r->SetLocationKey(q.getColumn(0).getText());
            r->SetLocationId(q.getColumn(1).getText());
            r->SetName(q.getColumn(2).getText());
            r->SetOrganizationKey(q.getColumn(3).getText());
            r->SetActive(q.getColumn(4).getInt() != 0);
            locations.push_back(r);
        }
        return ArchiveResult::Ok;
    });
}

int SqliteDictionaryService::QueryPerformingResources(const PerformingResourceDataSet* queryTemplate,
                                                      std::vector<PerformingResourceDataSet*>& resources)
{
    if (!queryTemplate)
        return ArchiveResult::InvalidArgument;
    if (!FieldCheck::Text(S(queryTemplate->GetKey()), 64) || !FieldCheck::Text(S(queryTemplate->GetResourceId()), 64)
        || !FieldCheck::Text(S(queryTemplate->GetOrganizationKey()), 64))
        return ArchiveResult::InvalidArgument;
    return GuardDb("QueryPerformingResources", [&] {
        const TextMatch match = MatchText("resource_id", S(queryTemplate->GetResourceId()), 3);
        SQLite::Statement q(m_ctx.Db().Handle(),
                            "SELECT resource_key, resource_id, description, modality, org_key FROM performing_resources "
                            "WHERE " + OrgFilter() + " AND (?2 = '' OR resource_key = ?2) AND " + match.sql
                                + " ORDER BY resource_id COLLATE NOCASE");
        q.bind(1, S(queryTemplate->GetOrganizationKey()));
        q.bind(2, S(queryTemplate->GetKey()));
        BindMatch(q, match, 3);
        while (q.executeStep()) {
            auto* r = new PerformingResourceDataSet();
            r->SetKey(q.getColumn(0).getText());
            r->SetResourceId(q.getColumn(1).getText());
            r->SetName(q.getColumn(2).getText());
            r->SetModality(q.getColumn(3).getText());
            r->SetOrganizationKey(q.getColumn(4).getText());
            resources.push_back(r);
        }
        return ArchiveResult::Ok;
    });
}
