#pragma once

#include <string>
#include <utility>

class ArchiveDb;

// Fills an archive row by row, straight into the tables (not through the
// services), so a test states exactly the site it starts from.
class ArchiveBuilder
{
public:
    struct OrgFields
    {
        OrgFields(std::string orgId, std::string orgName, bool isEnterprise = false)
            : id(std::move(orgId)), name(std::move(orgName)), enterprise(isEnterprise)
        {
        }
        std::string id;
        std::string name;
        bool enterprise = false;
        bool federated = false;
        bool acceptsDemographicsUpdate = true;
        bool generatesMrn = true;
        bool generatesAcc = true;
        std::string defaultCountry = "US";
        std::string defaultState;
        std::string newExamStatus;
        std::string mrnPrefix;
        std::string accPrefix;
    };

    struct PatientFields
    {
        std::string orgKey;
        std::string mrn; // generated when empty
        std::string last = "Doe";
        std::string first = "John";
        std::string middle;
        std::string sex = "M";
        std::string dob = "19700101";
        std::string globalId;
        std::string city;
        std::string group; // link group key, empty: not linked
    };

    explicit ArchiveBuilder(ArchiveDb& db);

    std::string Org(const OrgFields& fields);
    std::string Org(const std::string& id) { return Org(OrgFields{id, id + " Hospital"}); }
    void User(const std::string& name, bool isDefault = false);
    // Patient rights; the exam rights follow `create`.
    void Grant(const std::string& user, const std::string& orgKey, bool create, bool link, bool merge);
    // Exam rights alone, the patient rights left as they are.
    void GrantExam(const std::string& user, const std::string& orgKey, bool edit, bool remove, bool detach);
    void Setting(const std::string& scope, const std::string& name, const std::string& value);
    void Preference(const std::string& user, const std::string& name, const std::string& value);
    void Dictionary(int topic, const std::string& code, const std::string& description,
                    const std::string& parent = std::string(), int rank = 0, const std::string& orgKey = std::string());

    std::string Patient(const PatientFields& fields);
    // The fields the candidate and duplicate tests vary; an empty mrn is generated.
    std::string Patient(const std::string& orgKey, const std::string& mrn, const std::string& last,
                        const std::string& first, const std::string& sex, const std::string& dob,
                        const std::string& globalId);
    // Puts the patients into one link group (a new one unless `group` is given); returns its key.
    std::string LinkGroup(const std::string& firstPatient, const std::string& secondPatient);
    void AddToGroup(const std::string& group, const std::string& patient);
    std::string Exam(const std::string& patientKey, const std::string& accession = std::string(),
                     const std::string& status = "SC");
    std::string Study(const std::string& examKey, const std::string& patientKey);
    void Ignore(const std::string& firstPatient, const std::string& secondPatient);
    std::string Provider(const std::string& id, const std::string& last, const std::string& first, int type = 4,
                         const std::string& orgKey = std::string());
    std::string ExamCode(const std::string& code, const std::string& description, const std::string& orgKey = std::string());
    std::string Modifier(const std::string& code, const std::string& description);
    std::string Location(const std::string& id, const std::string& description, bool active = true);
    std::string Resource(const std::string& id, const std::string& description);

    // The sex, country/state, status, priority and reason dictionaries most tests want.
    void StandardDictionaries();

private:
    std::string NextKey(const char* prefix);
    ArchiveDb& m_db;
    int m_serial = 0;
};
