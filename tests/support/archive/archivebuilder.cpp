#include "archivebuilder.h"

#include <archivedb.h>
#include <dictionarytopic.h>

#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <cstdio>

ArchiveBuilder::ArchiveBuilder(ArchiveDb& db)
    : m_db(db)
{
}

std::string ArchiveBuilder::NextKey(const char* prefix)
{
    // Readable keys make failing tests easier to read; they sort by creation.
    char key[64];
    std::snprintf(key, sizeof key, "%s-%04d", prefix, ++m_serial);
    return key;
}

std::string ArchiveBuilder::Org(const OrgFields& s)
{
    const std::string key = NextKey("ORG");
    SQLite::Statement st(m_db.Handle(),
                         "INSERT INTO organizations(org_key, org_id, name, is_enterprise, is_federated, "
                         "accepts_demographics_update, generates_mrn, generates_acc, default_country, default_state, "
                         "new_exam_status, mrn_prefix, acc_prefix) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    st.bind(1, key);
    st.bind(2, s.id);
    st.bind(3, s.name);
    st.bind(4, s.enterprise ? 1 : 0);
    st.bind(5, s.federated ? 1 : 0);
    st.bind(6, s.acceptsDemographicsUpdate ? 1 : 0);
    st.bind(7, s.generatesMrn ? 1 : 0);
    st.bind(8, s.generatesAcc ? 1 : 0);
    st.bind(9, s.defaultCountry);
    st.bind(10, s.defaultState);
    st.bind(11, s.newExamStatus);
    st.bind(12, s.mrnPrefix);
    st.bind(13, s.accPrefix);
    st.exec();
    return key;
}

void ArchiveBuilder::User(const std::string& name, bool isDefault)
{
    SQLite::Statement st(m_db.Handle(), "INSERT INTO users(user_name, full_name, is_default) VALUES (?, ?, ?)");
    st.bind(1, name);
    st.bind(2, name);
    st.bind(3, isDefault ? 1 : 0);
    st.exec();
}

void ArchiveBuilder::Grant(const std::string& user, const std::string& orgKey, bool create, bool link, bool merge)
{
    SQLite::Statement st(m_db.Handle(), "INSERT OR REPLACE INTO user_rights(user_name, org_key, can_create, can_link, "
                                        "can_merge) VALUES (?, ?, ?, ?, ?)");
    st.bind(1, user);
    st.bind(2, orgKey);
    st.bind(3, create ? 1 : 0);
    st.bind(4, link ? 1 : 0);
    st.bind(5, merge ? 1 : 0);
    st.exec();
    // Exam work follows the patient create right, as for users of older archives.
    GrantExam(user, orgKey, create, create, create);
}

void ArchiveBuilder::GrantExam(const std::string& user, const std::string& orgKey, bool edit, bool remove, bool detach)
{
    SQLite::Statement st(m_db.Handle(), "INSERT OR REPLACE INTO exam_rights(user_name, org_key, can_edit_exams, "
                                        "can_delete_exams, can_detach_studies) VALUES (?1, ?2, ?3, ?4, ?5)");
    st.bind(1, user);
    st.bind(2, orgKey);
    st.bind(3, edit ? 1 : 0);
    st.bind(4, remove ? 1 : 0);
    st.bind(5, detach ? 1 : 0);
    st.exec();
}

void ArchiveBuilder::Setting(const std::string& scope, const std::string& name, const std::string& value)
{
    SQLite::Statement st(m_db.Handle(), "INSERT OR REPLACE INTO site_settings(scope, name, value) VALUES (?, ?, ?)");
    st.bind(1, scope);
    st.bind(2, name);
    st.bind(3, value);
    st.exec();
}

void ArchiveBuilder::Preference(const std::string& user, const std::string& name, const std::string& value)
{
    SQLite::Statement st(m_db.Handle(), "INSERT OR REPLACE INTO preferences(user_name, name, value) VALUES (?, ?, ?)");
    st.bind(1, user);
    st.bind(2, name);
    st.bind(3, value);
    st.exec();
}

void ArchiveBuilder::Dictionary(int topic, const std::string& code, const std::string& description,
                                const std::string& parent, int rank, const std::string& orgKey)
{
    SQLite::Statement st(m_db.Handle(), "INSERT INTO dictionary(topic, code, description, parent_code, org_key, rank, "
                                        "sort_order) VALUES (?, ?, ?, ?, ?, ?, "
                                        "(SELECT count(*) FROM dictionary WHERE topic = ?))");
    st.bind(1, topic);
    st.bind(2, code);
    st.bind(3, description);
    st.bind(4, parent);
    st.bind(5, orgKey);
    st.bind(6, rank);
    st.bind(7, topic);
    st.exec();
}

std::string ArchiveBuilder::Patient(const PatientFields& s)
{
    const std::string key = NextKey("PAT");
    std::string mrn = s.mrn;
    if (mrn.empty()) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "9%06d", m_serial);
        mrn = buf;
    }
    SQLite::Statement st(m_db.Handle(),
                         "INSERT INTO patients(patient_key, org_key, mrn, last_name, first_name, middle_name, sex_code, "
                         "dob, global_id, city, link_group) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    st.bind(1, key);
    st.bind(2, s.orgKey);
    st.bind(3, mrn);
    st.bind(4, s.last);
    st.bind(5, s.first);
    st.bind(6, s.middle);
    st.bind(7, s.sex);
    st.bind(8, s.dob);
    st.bind(9, s.globalId);
    st.bind(10, s.city);
    if (s.group.empty())
        st.bind(11);
    else
        st.bind(11, s.group);
    st.exec();
    return key;
}

std::string ArchiveBuilder::Patient(const std::string& orgKey, const std::string& mrn, const std::string& last,
                                    const std::string& first, const std::string& sex, const std::string& dob,
                                    const std::string& globalId)
{
    PatientFields f;
    f.orgKey = orgKey;
    f.mrn = mrn;
    f.last = last;
    f.first = first;
    f.sex = sex;
    f.dob = dob;
    f.globalId = globalId;
    return Patient(f);
}

std::string ArchiveBuilder::LinkGroup(const std::string& firstPatient, const std::string& secondPatient)
{
    const std::string group = NextKey("GRP");
    SQLite::Statement g(m_db.Handle(), "INSERT INTO link_groups(group_key) VALUES (?)");
    g.bind(1, group);
    g.exec();
    AddToGroup(group, firstPatient);
    AddToGroup(group, secondPatient);
    return group;
}

void ArchiveBuilder::AddToGroup(const std::string& group, const std::string& patient)
{
    SQLite::Statement st(m_db.Handle(), "UPDATE patients SET link_group = ? WHERE patient_key = ?");
    st.bind(1, group);
    st.bind(2, patient);
    st.exec();
}

std::string ArchiveBuilder::Exam(const std::string& patientKey, const std::string& accession, const std::string& status)
{
    const std::string key = NextKey("EXM");
    SQLite::Statement st(m_db.Handle(),
                         "INSERT INTO exams(exam_key, patient_key, org_key, accession, status_code, scheduled_dt) "
                         "SELECT ?, patient_key, org_key, ?, ?, '20240102030405' FROM patients WHERE patient_key = ?");
    st.bind(1, key);
    st.bind(2, accession.empty() ? "ACC" + key : accession);
    st.bind(3, status);
    st.bind(4, patientKey);
    st.exec();
    return key;
}

std::string ArchiveBuilder::Study(const std::string& examKey, const std::string& patientKey)
{
    const std::string key = NextKey("STU");
    SQLite::Statement st(m_db.Handle(), "INSERT INTO studies(study_key, exam_key, patient_key, study_uid) VALUES (?, ?, ?, ?)");
    st.bind(1, key);
    if (examKey.empty())
        st.bind(2);
    else
        st.bind(2, examKey);
    st.bind(3, patientKey);
    st.bind(4, "1.2.3." + std::to_string(m_serial));
    st.exec();
    return key;
}

void ArchiveBuilder::Ignore(const std::string& a, const std::string& b)
{
    SQLite::Statement st(m_db.Handle(), "INSERT INTO ignored_pairs(key_a, key_b) VALUES (?, ?)");
    st.bind(1, std::min(a, b));
    st.bind(2, std::max(a, b));
    st.exec();
}

std::string ArchiveBuilder::Provider(const std::string& id, const std::string& last, const std::string& first, int type,
                                     const std::string& orgKey)
{
    const std::string key = NextKey("PRV");
    SQLite::Statement st(m_db.Handle(), "INSERT INTO providers(provider_key, org_key, provider_id, provider_type, "
                                        "last_name, first_name, city, phone) VALUES (?, ?, ?, ?, ?, ?, 'Springfield', '555-0100')");
    st.bind(1, key);
    st.bind(2, orgKey);
    st.bind(3, id);
    st.bind(4, type);
    st.bind(5, last);
    st.bind(6, first);
    st.exec();
    return key;
}

std::string ArchiveBuilder::ExamCode(const std::string& code, const std::string& description, const std::string& orgKey)
{
    const std::string key = NextKey("ECD");
    SQLite::Statement st(m_db.Handle(), "INSERT INTO exam_codes(exam_code_key, org_key, code, description, modality, "
                                        "body_part) VALUES (?, ?, ?, ?, 'CT', 'HEAD')");
    st.bind(1, key);
    st.bind(2, orgKey);
    st.bind(3, code);
    st.bind(4, description);
    st.exec();
    return key;
}

std::string ArchiveBuilder::Modifier(const std::string& code, const std::string& description)
{
    const std::string key = NextKey("MOD");
    SQLite::Statement st(m_db.Handle(), "INSERT INTO exam_code_modifiers(modifier_key, code, description) VALUES (?, ?, ?)");
    st.bind(1, key);
    st.bind(2, code);
    st.bind(3, description);
    st.exec();
    return key;
}

std::string ArchiveBuilder::Location(const std::string& id, const std::string& description, bool active)
{
    const std::string key = NextKey("LOC");
    SQLite::Statement st(m_db.Handle(), "INSERT INTO locations(location_key, location_id, description, active) VALUES (?, ?, ?, ?)");
    st.bind(1, key);
    st.bind(2, id);
    st.bind(3, description);
    st.bind(4, active ? 1 : 0);
    st.exec();
    return key;
}

std::string ArchiveBuilder::Resource(const std::string& id, const std::string& description)
{
    const std::string key = NextKey("RES");
    SQLite::Statement st(m_db.Handle(), "INSERT INTO performing_resources(resource_key, resource_id, description, modality) "
                                        "VALUES (?, ?, ?, 'CT')");
    st.bind(1, key);
    st.bind(2, id);
    st.bind(3, description);
    st.exec();
    return key;
}

void ArchiveBuilder::StandardDictionaries()
{
    using namespace DictionaryTopic;
    Dictionary(Sex, "M", "Male");
    Dictionary(Sex, "F", "Female");
    Dictionary(Sex, "U", "Unknown");
    Dictionary(Country, "US", "UNITED STATES");
    Dictionary(Country, "CA", "CANADA");
    Dictionary(State, "IL", "Illinois", "US");
    Dictionary(State, "WI", "Wisconsin", "US");
    Dictionary(State, "ON", "Ontario", "CA");
    Dictionary(ExamStatus, "SC", "Scheduled");
    Dictionary(ExamStatus, "CM", "Completed");
    Dictionary(Priority, "R", "Routine", "", 2);
    Dictionary(Priority, "S", "STAT", "", 0);
    Dictionary(Priority, "A", "ASAP", "", 1);
    Dictionary(LinkMergeReason, CandidateReasonCode::SharedIdentifier, "Same SSN");
    Dictionary(LinkMergeReason, CandidateReasonCode::NameAndBirthDate, "Same Name and Date of Birth");
    Dictionary(LinkMergeReason, "DUP", "Duplicate");
    Dictionary(DeleteExamReason, "ERR", "Entered in error");
    Dictionary(CancelExamReason, "NOSHOW", "Patient did not arrive");
    Dictionary(DeletePatientReason, "TEST", "Test patient");
    Dictionary(DetachStudyReason, "WRONGEX", "Study attached to wrong exam");
    Dictionary(DiagnosticImageStatus, "C", "Complete");
}
