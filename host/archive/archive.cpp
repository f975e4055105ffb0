#include "archive.h"

#include "archivecontext.h"
#include "archivedb.h"
#include "candidatestore.h"
#include "journal.h"
#include "sqlitedictionaryservice.h"
#include "sqliteexamservice.h"
#include "sqliteorgcollection.h"
#include "sqlitepatientservice.h"
#include "sqliteproviderservice.h"
#include "walcheckpointer.h"

#include <auditandlogparams.h>
#include <options.h>
#include <preferences.h>
#include <serviceregistry.h>
#include <session.h>
#include <sitepolicy.h>
#include <userrights.h>
#include <worklistutils.h>

#include <SQLiteCpp/Statement.h>

#include <cstdlib>

struct Archive::Previous
{
    PatientManagementService* patients = nullptr;
    ExamService* exams = nullptr;
    DictionaryService* dictionaries = nullptr;
    ProviderService* providers = nullptr;
    OrgOperationsCollection* organizations = nullptr;
    UserRights::Provider rights;
    Session::AuditSink auditSink;
    ACE_CString userName;
    SitePolicySettings policy;
};

namespace {

ArchiveContext::Right ArchiveRightOf(UserRights::eRIGHT right)
{
    switch (right) {
    case UserRights::eLINK_PATIENT: return ArchiveContext::Right::Link;
    case UserRights::eMERGE_PATIENT: return ArchiveContext::Right::Merge;
    case UserRights::eCREATE_PATIENT: return ArchiveContext::Right::Create;
    case UserRights::eEDIT_EXAM: return ArchiveContext::Right::EditExams;
    case UserRights::eDELETE_EXAM: return ArchiveContext::Right::DeleteExams;
    case UserRights::eDETACH_STUDY: return ArchiveContext::Right::DetachStudies;
    }
    return ArchiveContext::Right::Create;
}

} // namespace

std::unique_ptr<Archive> Archive::Open(const std::string& path)
{
    auto db = std::make_unique<ArchiveDb>(path);
    // Candidates left stale by a bulk load or an older program are rebuilt
    // once here rather than inside a user's search.
    CandidateStore candidates(*db);
    if (!GuardDb("opening the archive", [&] { return candidates.Fresh(); }))
        candidates.Rebuild();
    return std::unique_ptr<Archive>(new Archive(std::move(db)));
}

Archive::Archive(std::unique_ptr<ArchiveDb> db)
    : m_db(std::move(db))
{
    m_checkpointer = std::make_unique<WalCheckpointer>(m_db->Handle().getHandle());
    m_context = std::make_unique<ArchiveContext>(*m_db);
    m_patients = std::make_unique<SqlitePatientService>(*m_context);
    m_exams = std::make_unique<SqliteExamService>(*m_context);
    m_dictionaries = std::make_unique<SqliteDictionaryService>(*m_context);
    m_providers = std::make_unique<SqliteProviderService>(*m_context);
    m_organizations = std::make_unique<SqliteOrgCollection>(*m_context);
}

Archive::~Archive()
{
    if (m_installed)
        Uninstall();
}

void Archive::SetUser(const std::string& userName)
{
    m_context->SetUser(userName);
    m_organizations->Reload();
}

const std::string& Archive::User() const
{
    return m_context->User();
}

std::string Archive::DefaultUser()
{
    return GuardDb("reading the default user", [&] {
        SQLite::Statement q(m_db->Handle(), "SELECT user_name FROM users WHERE is_default = 1 ORDER BY user_name LIMIT 1");
        return q.executeStep() ? q.getColumn(0).getString() : std::string();
    });
}

bool Archive::InstallIntoSession(const std::string& userName)
{
    if (!GuardDb("reading users", [&] { return m_context->UserKnown(userName); }))
        return false;
    if (m_installed)
        Uninstall();

    // Everything is read before the session is touched, so a fault leaves it as it was.
    SitePolicySettings policy = SitePolicy::Get();
    std::vector<std::pair<int, bool>> options;
    bool detachWarning = false;
    std::string canonicalUser = userName;
    GuardDb("reading site settings", [&] {
        SQLite::Statement u(m_db->Handle(), "SELECT user_name FROM users WHERE user_name = ?");
        u.bind(1, userName);
        if (u.executeStep())
            canonicalUser = u.getColumn(0).getString();
        SQLite::Statement q(m_db->Handle(), "SELECT scope, name, value FROM site_settings ORDER BY scope, name");
        while (q.executeStep()) {
            const std::string scope = q.getColumn(0).getString(), name = q.getColumn(1).getString();
            const std::string value = q.getColumn(2).getString();
            const bool on = value == "1" || value == "true";
            if (scope == "policy") {
                if (name == "EmptyFirstNameAllowed")
                    policy.emptyFirstNameAllowed = on;
                else if (name == "NumericMRN")
                    policy.numericMRN = on;
                else if (name == "EnableBsn")
                    policy.bsnEnabled = on;
                else if (name == "EnableBsnCreateEdit")
                    policy.bsnCreateEditEnabled = on;
                else if (name == "PatientIDColumnName")
                    policy.patientIDColumnName = value;
            } else if (scope == "product") {
                if (name == "StudyDeletionEnabled")
                    policy.studyDeletionEnabled = on;
            } else if (scope == "option") {
                options.emplace_back(std::atoi(name.c_str()), on);
            }
        }
        SQLite::Statement p(m_db->Handle(), "SELECT value FROM preferences WHERE user_name = ? AND name = 'DetachAnnotationWarning'");
        p.bind(1, canonicalUser);
        if (p.executeStep())
            detachWarning = p.getColumn(0).getString() == "1";
    });
    const std::vector<ACE_CString> ranking = m_dictionaries->PriorityCodesByRank();

    SetUser(canonicalUser);
    m_previous = std::make_unique<Previous>();
    Session& session = Session::Instance();
    // A host that took the registry away gets the session's own one back.
    if (!Session::ServiceInstance())
        session.InstallServiceRegistry(session.OwnRegistry());
    ServiceRegistry* registry = Session::ServiceInstance();
    m_previous->patients = registry->SetPatientManagementService(m_patients.get());
    m_previous->exams = registry->SetExamService(m_exams.get());
    m_previous->dictionaries = registry->SetDictionaryService(m_dictionaries.get());
    m_previous->providers = registry->SetProviderService(m_providers.get());
    m_previous->organizations = registry->SetOrgOperationsCollection(m_organizations.get());
    m_previous->userName = session.GetUserName();
    m_previous->policy = SitePolicy::Set(policy);

    session.SetUserName(canonicalUser.c_str());
    ArchiveContext* context = m_context.get();
    m_previous->rights = session.GetUserRights().SetProvider(
        [context](UserRights::eRIGHT right, const ACE_CString& organizationID) {
            try {
                return context->HasRightById(ArchiveRightOf(right),
                                             std::string(organizationID.c_str(), organizationID.length()));
            } catch (...) {
                // A right that cannot be read is not granted.
                return false;
            }
        });
    // The dialogs' audit entries (a patient shown, an exam opened) go to the
    // archive's audit trail, one committed row each, for the session's user.
    m_previous->auditSink = session.SetAuditSink([context](const AuditAndLogParams& params, const ACE_CString& comment) {
        return GuardDb("AuditAndLog", [&] {
            WriteTransaction tx(context->Db());
            context->Log().Audit(context->User(), std::string(params.GetKey().c_str(), params.GetKey().length()),
                                 static_cast<int>(params.GetEventCode()),
                                 std::string(comment.c_str(), comment.length()));
            tx.Commit();
            return 0;
        });
    });
    Preferences::Instance().SetDetachAnnotationWarning(detachWarning);
    for (const auto& [option, on] : options)
        Options::SetOption(static_cast<Options::OptionsType>(option), on);
    WorkListUtils::SetPriorityRanking(ranking);
    m_installed = true;
    return true;
}

void Archive::Uninstall()
{
    if (!m_installed)
        return;
    Session& session = Session::Instance();
    if (ServiceRegistry* registry = Session::ServiceInstance()) {
        // Only put back what is still ours: someone may have replaced a service since.
        if (registry->GetPatientManagementService() == m_patients.get())
            registry->SetPatientManagementService(m_previous->patients);
        if (registry->GetExamService() == m_exams.get())
            registry->SetExamService(m_previous->exams);
        if (registry->GetDictionaryService() == m_dictionaries.get())
            registry->SetDictionaryService(m_previous->dictionaries);
        if (registry->GetProviderService() == m_providers.get())
            registry->SetProviderService(m_previous->providers);
        if (registry->GetOrgOperationsCollection() == m_organizations.get())
            registry->SetOrgOperationsCollection(m_previous->organizations);
    }
    session.GetUserRights().SetProvider(m_previous->rights);
    session.SetAuditSink(m_previous->auditSink);
    session.SetUserName(m_previous->userName);
    SitePolicy::Set(m_previous->policy);
    WorkListUtils::SetPriorityRanking({});
    m_previous.reset();
    m_installed = false;
}
