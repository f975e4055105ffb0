#include "demoseeder.h"
#include "referenceseeder.h"

#include "archivedb.h"
#include "candidatestore.h"
#include "dictionarytopic.h"
#include "keygenerator.h"

#include <SQLiteCpp/Statement.h>

#include <array>
#include <cstdio>
#include <map>
#include <vector>

namespace {

// Names are common enough that natural name-and-birth-date collisions stay rare.
const char* const kLastNames[] = {
    "Smith", "Johnson", "Williams", "Brown", "Jones", "Garcia", "Miller", "Davis", "Rodriguez", "Martinez",
    "Hernandez", "Lopez", "Gonzalez", "Wilson", "Anderson", "Thomas", "Taylor", "Moore", "Jackson", "Martin",
    "Lee", "Perez", "Thompson", "White", "Harris", "Sanchez", "Clark", "Ramirez", "Lewis", "Robinson",
    "Walker", "Young", "Allen", "King", "Wright", "Scott", "Torres", "Nguyen", "Hill", "Flores",
    "Green", "Adams", "Nelson", "Baker", "Hall", "Rivera", "Campbell", "Mitchell", "Carter", "Roberts",
    "Gomez", "Phillips", "Evans", "Turner", "Diaz", "Parker", "Cruz", "Edwards", "Collins", "Reyes",
    "Stewart", "Morris", "Morales", "Murphy", "Cook", "Rogers", "Gutierrez", "Ortiz", "Morgan", "Cooper",
    "Peterson", "Bailey", "Reed", "Kelly", "Howard", "Ramos", "Kim", "Cox", "Ward", "Richardson",
    "Watson", "Brooks", "Chavez", "Wood", "James", "Bennett", "Gray", "Mendoza", "Ruiz", "Hughes",
    "Price", "Alvarez", "Castillo", "Sanders", "Patel", "Myers", "Long", "Ross", "Foster", "Jimenez",
    "de Vries", "Jansen", "Bakker", "Visser", "Smit", "Meijer", "O'Brien", "O'Connor", "Mueller", "Schmidt"};
const char* const kMaleFirst[] = {
    "James", "Robert", "John", "Michael", "David", "William", "Richard", "Joseph", "Thomas", "Charles",
    "Christopher", "Daniel", "Matthew", "Anthony", "Mark", "Donald", "Steven", "Paul", "Andrew", "Joshua",
    "Kenneth", "Kevin", "Brian", "George", "Timothy", "Ronald", "Edward", "Jason", "Jeffrey", "Ryan",
    "Jacob", "Gary", "Nicholas", "Eric", "Jonathan", "Stephen", "Larry", "Justin", "Scott", "Brandon",
    "Pieter", "Jan", "Luis", "Carlos", "Jose", "Ahmed", "Wei", "Hiroshi", "Sean", "Patrick"};
const char* const kFemaleFirst[] = {
    "Mary", "Patricia", "Jennifer", "Linda", "Elizabeth", "Barbara", "Susan", "Jessica", "Sarah", "Karen",
    "Lisa", "Nancy", "Betty", "Margaret", "Sandra", "Ashley", "Kimberly", "Emily", "Donna", "Michelle",
    "Carol", "Amanda", "Dorothy", "Melissa", "Deborah", "Stephanie", "Rebecca", "Sharon", "Laura", "Cynthia",
    "Kathleen", "Amy", "Angela", "Shirley", "Anna", "Brenda", "Pamela", "Emma", "Nicole", "Helen",
    "Anouk", "Sanne", "Maria", "Lucia", "Fatima", "Mei", "Yuki", "Siobhan", "Chloe", "Zoe"};
const char* const kStreets[] = {"Main St", "Oak Ave", "Maple Dr", "Cedar Ln", "Elm St", "Pine Rd", "Washington Blvd",
                                "Lake Shore Dr", "Hillcrest Ave", "Park Pl", "River Rd", "Sunset Blvd"};
struct City { const char* name; const char* state; const char* zip; };
const City kCities[] = {{"Springfield", "IL", "62701"}, {"Madison", "WI", "53703"}, {"Columbus", "OH", "43215"},
                        {"Austin", "TX", "78701"},      {"Denver", "CO", "80202"},  {"Portland", "OR", "97201"},
                        {"Albany", "NY", "12207"},      {"Raleigh", "NC", "27601"}, {"Boise", "ID", "83702"},
                        {"Richmond", "VA", "23219"},    {"Chicago", "IL", "60601"}, {"Milwaukee", "WI", "53202"}};

struct Code { const char* code; const char* description; };
const Code kCountries[] = {{"US", "UNITED STATES"}, {"CA", "CANADA"}, {"MX", "MEXICO"}, {"GB", "UNITED KINGDOM"},
                           {"NL", "NETHERLANDS"},   {"DE", "GERMANY"}, {"FR", "FRANCE"}, {"IE", "IRELAND"}};
const Code kUsStates[] = {
    {"AL", "Alabama"}, {"AK", "Alaska"}, {"AZ", "Arizona"}, {"AR", "Arkansas"}, {"CA", "California"},
    {"CO", "Colorado"}, {"CT", "Connecticut"}, {"DE", "Delaware"}, {"DC", "District of Columbia"},
    {"FL", "Florida"}, {"GA", "Georgia"}, {"HI", "Hawaii"}, {"ID", "Idaho"}, {"IL", "Illinois"},
    {"IN", "Indiana"}, {"IA", "Iowa"}, {"KS", "Kansas"}, {"KY", "Kentucky"}, {"LA", "Louisiana"},
    {"ME", "Maine"}, {"MD", "Maryland"}, {"MA", "Massachusetts"}, {"MI", "Michigan"}, {"MN", "Minnesota"},
    {"MS", "Mississippi"}, {"MO", "Missouri"}, {"MT", "Montana"}, {"NE", "Nebraska"}, {"NV", "Nevada"},
    {"NH", "New Hampshire"}, {"NJ", "New Jersey"}, {"NM", "New Mexico"}, {"NY", "New York"},
    {"NC", "North Carolina"}, {"ND", "North Dakota"}, {"OH", "Ohio"}, {"OK", "Oklahoma"}, {"OR", "Oregon"},
    {"PA", "Pennsylvania"}, {"RI", "Rhode Island"}, {"SC", "South Carolina"}, {"SD", "South Dakota"},
    {"TN", "Tennessee"}, {"TX", "Texas"}, {"UT", "Utah"}, {"VT", "Vermont"}, {"VA", "Virginia"},
    {"WA", "Washington"}, {"WV", "West Virginia"}, {"WI", "Wisconsin"}, {"WY", "Wyoming"}};
const Code kCaProvinces[] = {{"AB", "Alberta"}, {"BC", "British Columbia"}, {"MB", "Manitoba"},
                             {"NB", "New Brunswick"}, {"NL", "Newfoundland and Labrador"},
                             {"NS", "Nova Scotia"}, {"NT", "Northwest Territories"}, {"NU", "Nunavut"},
                             {"ON", "Ontario"}, {"PE", "Prince Edward Island"}, {"QC", "Quebec"},
                             {"SK", "Saskatchewan"}, {"YT", "Yukon"}};
const Code kNlProvinces[] = {{"DR", "Drenthe"}, {"FL", "Flevoland"}, {"FR", "Friesland"}, {"GE", "Gelderland"},
                             {"GR", "Groningen"}, {"LI", "Limburg"}, {"NB", "Noord-Brabant"},
                             {"NH", "Noord-Holland"}, {"OV", "Overijssel"}, {"UT", "Utrecht"},
                             {"ZE", "Zeeland"}, {"ZH", "Zuid-Holland"}};
const Code kDeStates[] = {{"BW", "Baden-Wuerttemberg"}, {"BY", "Bayern"}, {"BE", "Berlin"}, {"HH", "Hamburg"},
                          {"HE", "Hessen"}, {"NI", "Niedersachsen"}, {"NW", "Nordrhein-Westfalen"},
                          {"SN", "Sachsen"}};
const Code kMxStates[] = {{"JAL", "Jalisco"}, {"NLE", "Nuevo Leon"}, {"CMX", "Ciudad de Mexico"}, {"YUC", "Yucatan"}};
const Code kGbNations[] = {{"ENG", "England"}, {"SCT", "Scotland"}, {"WLS", "Wales"}, {"NIR", "Northern Ireland"}};
const Code kSexes[] = {{"M", "Male"}, {"F", "Female"}, {"O", "Other"}, {"U", "Unknown"}};
const Code kGenders[] = {{"M", "Man"}, {"W", "Woman"}, {"N", "Non-binary"}, {"X", "Not disclosed"}};
const Code kMaritalStatuses[] = {{"S", "Single"}, {"M", "Married"}, {"D", "Divorced"}, {"W", "Widowed"},
                                 {"P", "Domestic partner"}, {"U", "Unknown"}};
const Code kLanguages[] = {{"EN", "English"}, {"ES", "Spanish"}, {"NL", "Dutch"}, {"DE", "German"},
                           {"FR", "French"}, {"ZH", "Chinese"}};
const Code kRaces[] = {{"1002-5", "American Indian or Alaska Native"}, {"2028-9", "Asian"},
                       {"2054-5", "Black or African American"},
                       {"2076-8", "Native Hawaiian or Other Pacific Islander"}, {"2106-3", "White"},
                       {"2131-1", "Other Race"}, {"UNK", "Unknown"}};
const Code kVipStatuses[] = {{"N", "Not a VIP"}, {"V", "VIP"}, {"E", "Employee"}, {"C", "Confidential"}};
const Code kExamStatuses[] = {{"SC", "Scheduled"}, {"AR", "Arrived"}, {"IP", "In Progress"},
                              {"CM", "Completed"}, {"PR", "Preliminary"}, {"RD", "Read"},
                              {"FN", "Final"}, {"CA", "Cancelled"}};
struct Ranked { const char* code; const char* description; int rank; };
// Dictionary order differs from rank order on purpose: the priority list is shown by rank.
const Ranked kPriorities[] = {{"R", "Routine", 3}, {"S", "STAT", 0}, {"A", "ASAP", 1},
                              {"U", "Urgent", 2}, {"E", "Elective", 4}};
const Code kLinkMergeReasons[] = {{CandidateReasonCode::SharedIdentifier, "Same SSN"},
                                  {CandidateReasonCode::NameAndBirthDate, "Same Name and Date of Birth"},
                                  {"SOUNDDOB", "Similar Sounding Name and Date of Birth"},
                                  {"FIRSTDOBSEX", "Same First Name, Date of Birth and Sex"},
                                  {"DOBSWAP", "Same Name, Birth Day and Month Swapped"},
                                  {"NAMESWAP", "First and Last Name Swapped"},
                                  {"NAMEYM", "Same Name, Birth Year and Month"},
                                  {"GIDDOB", "Similar SSN and Same Date of Birth"},
                                  {"GIDNAME", "Similar SSN and Same Name"},
                                  {"FIRSTDOBNOSEX", "Same First Name and Date of Birth, Sex Unknown"},
                                  {"NAMENODOB", "Same Name, Date of Birth Missing or Invalid"},
                                  {"NAMEDOBDIGIT", "Same Name, Date of Birth One Digit Apart"},
                                  {"SIMNAMEDOB", "Similar Name and Same Date of Birth"},
                                  {"LASTNEARDOB", "Same Last Name, Similar First Name and Date of Birth"},
                                  {"FIRSTNEARDOB", "Same First Name, Similar Last Name and Date of Birth"},
                                  {"SWAPNEARDOB", "Names Swapped, Similar Date of Birth"},
                                  {"SIMNAMENODOB", "Similar Name, Date of Birth Missing or Invalid"},
                                  {"NAMEDOBTWO", "Same Name, Date of Birth Two Errors Apart"},
                                  {"SIMNAMENEARDOB", "Similar Name and Similar Date of Birth"},
                                  {"DUP", "Duplicate"},
                                  {"REG", "Registration error"},
                                  {"TYPO", "Typing error in demographics"},
                                  {"XFER", "Patient transferred between organizations"},
                                  {"SAME", "Same person confirmed by patient"}};
const Code kDeleteExamReasons[] = {{"DUP", "Duplicate order"}, {"WRONGPAT", "Ordered on wrong patient"},
                                   {"ERR", "Entered in error"}, {"TEST", "Test exam"}};
const Code kCancelExamReasons[] = {{"PTREF", "Patient refused"}, {"NOSHOW", "Patient did not arrive"},
                                   {"PHYS", "Cancelled by ordering physician"},
                                   {"CONTRA", "Contraindication found"}, {"EQUIP", "Equipment unavailable"}};
const Code kDeletePatientReasons[] = {{"DUP", "Duplicate registration"}, {"TEST", "Test patient"},
                                      {"ERR", "Registered in error"}, {"REQ", "Removed at patient's request"}};
const Code kDetachStudyReasons[] = {{"WRONGEX", "Study attached to wrong exam"},
                                    {"WRONGPAT", "Study belongs to another patient"},
                                    {"QC", "Quality control correction"}};
const Code kImageStatuses[] = {{"N", "No images"}, {"P", "Partial"}, {"C", "Complete"}, {"V", "Verified"}};

struct ExamCode { const char* code; const char* description; const char* modality; const char* bodyPart; };
const ExamCode kExamCodes[] = {
    {"CTHEAD", "CT HEAD WITHOUT CONTRAST", "CT", "HEAD"},
    {"CTHEADC", "CT HEAD WITH CONTRAST", "CT", "HEAD"},
    {"CTCHEST", "CT CHEST WITH CONTRAST", "CT", "CHEST"},
    {"CTABD", "CT ABDOMEN AND PELVIS", "CT", "ABDOMEN"},
    {"CTSPINE", "CT CERVICAL SPINE", "CT", "CSPINE"},
    {"MRBRAIN", "MR BRAIN WITH AND WITHOUT CONTRAST", "MR", "BRAIN"},
    {"MRKNEE", "MR KNEE WITHOUT CONTRAST", "MR", "KNEE"},
    {"MRLSP", "MR LUMBAR SPINE", "MR", "LSPINE"},
    {"MRSHLD", "MR SHOULDER", "MR", "SHOULDER"},
    {"XRCHEST2", "XR CHEST 2 VIEWS", "CR", "CHEST"},
    {"XRHAND", "XR HAND 3 VIEWS", "CR", "HAND"},
    {"XRANKLE", "XR ANKLE 3 VIEWS", "CR", "ANKLE"},
    {"XRPELV", "XR PELVIS AP", "DX", "PELVIS"},
    {"USABD", "US ABDOMEN COMPLETE", "US", "ABDOMEN"},
    {"USPELV", "US PELVIS TRANSVAGINAL", "US", "PELVIS"},
    {"USTHYR", "US THYROID", "US", "NECK"},
    {"MAMSCR", "MAMMOGRAPHY SCREENING BILATERAL", "MG", "BREAST"},
    {"MAMDX", "MAMMOGRAPHY DIAGNOSTIC", "MG", "BREAST"},
    {"NMBONE", "NM BONE SCAN WHOLE BODY", "NM", "WHOLEBODY"},
    {"PETCT", "PET/CT SKULL BASE TO MID THIGH", "PT", "WHOLEBODY"},
    {"FLUSWAL", "FL SWALLOW STUDY", "RF", "ESOPHAGUS"},
    {"DXABONE", "DXA BONE DENSITY", "DX", "SPINE"}};
const Code kModifiers[] = {{"LT", "Left"}, {"RT", "Right"}, {"BI", "Bilateral"},
                           {"26", "Professional component"}, {"TC", "Technical component"},
                           {"WC", "With contrast"}};
const Code kLocations[] = {{"ER", "Emergency Department"}, {"ICU", "Intensive Care Unit"},
                           {"OPD", "Outpatient Clinic"}, {"W3N", "Ward 3 North"},
                           {"ORTHO", "Orthopedic Clinic"}, {"ONC", "Oncology Center"}};
struct Resource { const char* id; const char* description; const char* modality; };
const Resource kResources[] = {{"CT1", "CT Scanner 1", "CT"}, {"CT2", "CT Scanner 2", "CT"},
                               {"MR1", "MRI 1.5T", "MR"},     {"MR2", "MRI 3T", "MR"},
                               {"US1", "Ultrasound Room 1", "US"}, {"XR1", "X-Ray Room 1", "CR"},
                               {"MG1", "Mammography 1", "MG"}, {"NM1", "Gamma Camera", "NM"}};

struct Org {
    const char* id; const char* name; bool enterprise; bool federated; bool acceptsUpdate;
    const char* mrnPrefix; const char* accPrefix;
};
const Org kOrgs[] = {
    {"Enterprise", "Enterprise", true, false, true, "", "E"},
    {"NORTHSIDE", "Northside General Hospital", false, false, true, "", "N"},
    {"LAKEVIEW", "Lakeview Imaging Center", false, false, false, "", "L"},
    {"STMARY", "St. Mary's Medical Center", false, false, true, "", "S"},
    {"REGIONAL", "Regional Health Exchange", false, true, true, "", "R"}};
// Patients are registered in the hospitals, not in the enterprise or the exchange.
constexpr int kFirstPatientOrg = 1;
constexpr int kPatientOrgCount = 3;

struct User { const char* name; const char* fullName; bool isDefault; };
const User kUsers[] = {{"admin", "Site Administrator", true},
                       {"clerk", "Front Desk Clerk", false},
                       {"registrar", "Registration Supervisor", false},
                       {"radiologist", "Reading Radiologist", false}};

template <typename T, size_t N>
constexpr size_t Count(const T (&)[N]) { return N; }

} // namespace

struct DemoSeeder::Impl
{
    ArchiveDb& db;
    std::mt19937_64 rng;
    KeyGenerator keys;
    std::vector<std::string> orgKeys;
    std::vector<long long> mrnCounter, accCounter;
    struct Ref { std::string key, id, name; };
    std::vector<Ref> providers, locations, resources;
    std::vector<std::string> examCodeKeys;
    long long studySerial = 0;

    Impl(ArchiveDb& d, std::uint64_t seed)
        : db(d), rng(seed), keys(seed ^ 0x9E3779B97F4A7C15ULL)
    {
    }

    // Only the engine's raw output is used, so a seed gives the same data on every library.
    std::uint64_t Below(std::uint64_t n) { return n ? rng() % n : 0; }
    bool Chance(double p) { return static_cast<double>(rng() % 1000000) < p * 1000000.0; }
    template <typename T, size_t N>
    const T& Pick(const T (&items)[N]) { return items[Below(N)]; }

    void Dictionary(int topic, const Code* codes, size_t n, const std::string& parent = std::string())
    {
        auto& st = db.Prepare("INSERT INTO dictionary(topic, code, description, parent_code, rank, sort_order) "
                              "VALUES (?, ?, ?, ?, ?, ?)");
        for (size_t i = 0; i < n; ++i) {
            st.bind(1, topic);
            st.bind(2, codes[i].code);
            st.bind(3, codes[i].description);
            st.bind(4, parent);
            st.bind(5, static_cast<int>(i));
            st.bind(6, static_cast<int>(i));
            db.Write(st);
        }
    }

    void LoadOrgs()
    {
        orgKeys.clear();
        mrnCounter.clear();
        accCounter.clear();
        for (const auto& org : kOrgs) {
            SQLite::Statement q(db.Handle(), "SELECT org_key, mrn_counter, acc_counter FROM organizations WHERE org_id = ?");
            q.bind(1, org.id);
            if (q.executeStep()) {
                orgKeys.push_back(q.getColumn(0).getString());
                mrnCounter.push_back(q.getColumn(1).getInt64());
                accCounter.push_back(q.getColumn(2).getInt64());
            } else {
                orgKeys.emplace_back();
                mrnCounter.push_back(0);
                accCounter.push_back(0);
            }
        }
        auto load = [&](std::vector<Ref>& into, const char* sql) {
            into.clear();
            SQLite::Statement q(db.Handle(), sql);
            while (q.executeStep())
                into.push_back({q.getColumn(0).getString(), q.getColumn(1).getString(), q.getColumn(2).getString()});
        };
        load(providers, "SELECT provider_key, provider_id, last_name || '^' || first_name || '^^' || title "
                        "FROM providers WHERE provider_type = 4 ORDER BY rowid");
        load(locations, "SELECT location_key, location_id, description FROM locations ORDER BY rowid");
        load(resources, "SELECT resource_key, resource_id, description FROM performing_resources ORDER BY rowid");
        examCodeKeys.clear();
        SQLite::Statement c(db.Handle(), "SELECT exam_code_key FROM exam_codes ORDER BY rowid");
        while (c.executeStep())
            examCodeKeys.push_back(c.getColumn(0).getString());
        studySerial = db.Handle().execAndGet("SELECT count(*) FROM studies").getInt64();
    }

    void SaveCounters()
    {
        auto& st = db.Prepare("UPDATE organizations SET mrn_counter = ?, acc_counter = ? WHERE org_key = ?");
        for (size_t i = 0; i < orgKeys.size(); ++i) {
            st.bind(1, static_cast<int64_t>(mrnCounter[i]));
            st.bind(2, static_cast<int64_t>(accCounter[i]));
            st.bind(3, orgKeys[i]);
            db.Write(st);
        }
    }

    void Site()
    {
        auto& org = db.Prepare(
            "INSERT INTO organizations(org_key, org_id, name, is_enterprise, is_federated, "
            "accepts_demographics_update, generates_mrn, default_country, default_state, new_exam_status, "
            "mrn_prefix, acc_prefix) VALUES (?, ?, ?, ?, ?, ?, 1, 'US', ?, 'SC', ?, ?)");
        for (const auto& o : kOrgs) {
            org.bind(1, keys.Next());
            org.bind(2, o.id);
            org.bind(3, o.name);
            org.bind(4, o.enterprise ? 1 : 0);
            org.bind(5, o.federated ? 1 : 0);
            org.bind(6, o.acceptsUpdate ? 1 : 0);
            org.bind(7, Pick(kCities).state);
            org.bind(8, o.mrnPrefix);
            org.bind(9, o.accPrefix);
            db.Write(org);
        }
        LoadOrgs();

        auto& user = db.Prepare("INSERT INTO users(user_name, full_name, is_default) VALUES (?, ?, ?)");
        for (const auto& u : kUsers) {
            user.bind(1, u.name);
            user.bind(2, u.fullName);
            user.bind(3, u.isDefault ? 1 : 0);
            db.Write(user);
        }
        auto& right = db.Prepare("INSERT INTO user_rights(user_name, org_key, can_create, can_link, can_merge) "
                                 "VALUES (?, ?, ?, ?, ?)");
        auto& examRight = db.Prepare("INSERT INTO exam_rights(user_name, org_key, can_edit_exams, can_delete_exams, "
                                     "can_detach_studies) VALUES (?, ?, ?, ?, ?)");
        // Patient rights (create, link, merge), then exam rights (create and
        // edit exams, delete or cancel exams, detach studies).
        auto grant = [&](const char* name, size_t org, int create, int link, int merge, int exams, int remove,
                         int detach) {
            right.bind(1, name);
            right.bind(2, orgKeys[org]);
            right.bind(3, create);
            right.bind(4, link);
            right.bind(5, merge);
            examRight.bind(1, name);
            examRight.bind(2, orgKeys[org]);
            examRight.bind(3, exams);
            examRight.bind(4, remove);
            examRight.bind(5, detach);
            db.Write(examRight);
            db.Write(right);
        };
        for (size_t i = 0; i < orgKeys.size(); ++i) {
            grant("admin", i, 1, 1, 1, 1, 1, 1);
            // The clerk registers and links everywhere but merges only at
            // Northside; creates and edits exams, but leaves deleting or
            // cancelling exams and detaching images to the supervisor.
            grant("clerk", i, 1, 1, std::string(kOrgs[i].id) == "NORTHSIDE" ? 1 : 0, 1, 0, 0);
            // The radiologist only reads.
            grant("radiologist", i, 0, 0, 0, 0, 0, 0);
        }
        grant("registrar", 3, 1, 1, 1, 1, 1, 1);
        grant("registrar", 1, 1, 0, 0, 1, 1, 1);

        auto& setting = db.Prepare("INSERT INTO site_settings(scope, name, value) VALUES (?, ?, ?)");
        const std::array<std::array<const char*, 3>, 6> settings = {{
            {"policy", "EmptyFirstNameAllowed", "0"},
            {"policy", "NumericMRN", "1"},
            {"policy", "EnableBsn", "0"},
            {"policy", "EnableBsnCreateEdit", "0"},
            {"product", "StudyDeletionEnabled", "1"},
            {"option", "1", "1"},
        }};
        for (const auto& s : settings) {
            setting.bind(1, s[0]);
            setting.bind(2, s[1]);
            setting.bind(3, s[2]);
            db.Write(setting);
        }
        auto& pref = db.Prepare("INSERT INTO preferences(user_name, name, value) VALUES (?, ?, ?)");
        for (const auto& u : kUsers) {
            pref.bind(1, u.name);
            pref.bind(2, "DetachAnnotationWarning");
            pref.bind(3, "1");
            db.Write(pref);
        }

        Dictionary(DictionaryTopic::Country, kCountries, Count(kCountries));
        Dictionary(DictionaryTopic::State, kUsStates, Count(kUsStates), "US");
        Dictionary(DictionaryTopic::State, kCaProvinces, Count(kCaProvinces), "CA");
        Dictionary(DictionaryTopic::State, kNlProvinces, Count(kNlProvinces), "NL");
        Dictionary(DictionaryTopic::State, kDeStates, Count(kDeStates), "DE");
        Dictionary(DictionaryTopic::State, kMxStates, Count(kMxStates), "MX");
        Dictionary(DictionaryTopic::State, kGbNations, Count(kGbNations), "GB");
        Dictionary(DictionaryTopic::Sex, kSexes, Count(kSexes));
        Dictionary(DictionaryTopic::Gender, kGenders, Count(kGenders));
        Dictionary(DictionaryTopic::MaritalStatus, kMaritalStatuses, Count(kMaritalStatuses));
        Dictionary(DictionaryTopic::Language, kLanguages, Count(kLanguages));
        Dictionary(DictionaryTopic::Race, kRaces, Count(kRaces));
        Dictionary(DictionaryTopic::VipStatus, kVipStatuses, Count(kVipStatuses));
        Dictionary(DictionaryTopic::ExamStatus, kExamStatuses, Count(kExamStatuses));
        Dictionary(DictionaryTopic::LinkMergeReason, kLinkMergeReasons, Count(kLinkMergeReasons));
        Dictionary(DictionaryTopic::DeleteExamReason, kDeleteExamReasons, Count(kDeleteExamReasons));
        Dictionary(DictionaryTopic::CancelExamReason, kCancelExamReasons, Count(kCancelExamReasons));
        Dictionary(DictionaryTopic::DeletePatientReason, kDeletePatientReasons, Count(kDeletePatientReasons));
        Dictionary(DictionaryTopic::DetachStudyReason, kDetachStudyReasons, Count(kDetachStudyReasons));
        Dictionary(DictionaryTopic::DiagnosticImageStatus, kImageStatuses, Count(kImageStatuses));
        auto& prio = db.Prepare("INSERT INTO dictionary(topic, code, description, rank, sort_order) VALUES (?, ?, ?, ?, ?)");
        int order = 0;
        for (const auto& p : kPriorities) {
            prio.bind(1, DictionaryTopic::Priority);
            prio.bind(2, p.code);
            prio.bind(3, p.description);
            prio.bind(4, p.rank);
            prio.bind(5, order++);
            db.Write(prio);
        }

        auto& provider = db.Prepare(
            "INSERT INTO providers(provider_key, org_key, provider_id, provider_type, last_name, first_name, title, "
            "address1, city, state_code, postal_code, country_code, phone, email) "
            "VALUES (?, '', ?, ?, ?, ?, 'Dr.', ?, ?, ?, ?, 'US', ?, ?)");
        for (int i = 0; i < 30; ++i) {
            const City& city = Pick(kCities);
            const std::string last = Pick(kLastNames);
            const std::string first = (i % 2) ? Pick(kFemaleFirst) : Pick(kMaleFirst);
            char id[16];
            std::snprintf(id, sizeof id, "PRV%04d", i + 1);
            char phone[32];
            std::snprintf(phone, sizeof phone, "(555) %03d-%04d", static_cast<int>(200 + Below(700)),
                          static_cast<int>(Below(10000)));
            provider.bind(1, keys.Next());
            provider.bind(2, id);
            // Mostly referring physicians (type 4); the rest ordering (2) and attending (1).
            provider.bind(3, i < 20 ? 4 : (i < 25 ? 2 : 1));
            provider.bind(4, last);
            provider.bind(5, first);
            provider.bind(6, std::to_string(100 + Below(9800)) + " " + Pick(kStreets));
            provider.bind(7, city.name);
            provider.bind(8, city.state);
            provider.bind(9, city.zip);
            provider.bind(10, phone);
            provider.bind(11, "dr." + std::string(id) + "@example.org");
            db.Write(provider);
        }
        auto& code = db.Prepare("INSERT INTO exam_codes(exam_code_key, code, description, modality, body_part) "
                                "VALUES (?, ?, ?, ?, ?)");
        for (const auto& c : kExamCodes) {
            code.bind(1, keys.Next());
            code.bind(2, c.code);
            code.bind(3, c.description);
            code.bind(4, c.modality);
            code.bind(5, c.bodyPart);
            db.Write(code);
        }
        auto& mod = db.Prepare("INSERT INTO exam_code_modifiers(modifier_key, code, description) VALUES (?, ?, ?)");
        for (const auto& m : kModifiers) {
            mod.bind(1, keys.Next());
            mod.bind(2, m.code);
            mod.bind(3, m.description);
            db.Write(mod);
        }
        auto& loc = db.Prepare("INSERT INTO locations(location_key, location_id, description) VALUES (?, ?, ?)");
        for (const auto& l : kLocations) {
            loc.bind(1, keys.Next());
            loc.bind(2, l.code);
            loc.bind(3, l.description);
            db.Write(loc);
        }
        auto& res = db.Prepare("INSERT INTO performing_resources(resource_key, resource_id, description, modality) "
                               "VALUES (?, ?, ?, ?)");
        for (const auto& r : kResources) {
            res.bind(1, keys.Next());
            res.bind(2, r.id);
            res.bind(3, r.description);
            res.bind(4, r.modality);
            db.Write(res);
        }
        SeedReferenceVolume(db, keys, ReferenceVolume());
        LoadOrgs();
    }

    struct Person {
        std::string last, first, middle, sex, dob, globalId, address, city, state, zip, home, email;
    };

    Person NewPerson(long long serial)
    {
        Person p;
        p.sex = Chance(0.5) ? "F" : "M";
        p.last = Pick(kLastNames);
        p.first = p.sex == "F" ? Pick(kFemaleFirst) : Pick(kMaleFirst);
        if (Chance(0.4))
            p.middle = std::string(1, static_cast<char>('A' + Below(26)));
        char dob[16];
        std::snprintf(dob, sizeof dob, "%04d%02d%02d", static_cast<int>(1930 + Below(91)),
                      static_cast<int>(1 + Below(12)), static_cast<int>(1 + Below(28)));
        p.dob = dob;
        // An affine map of the serial keeps identifiers unique without a lookup.
        const long long gid = 100000000 + (serial * 7919 + 104729) % 899999999;
        p.globalId = std::to_string(gid);
        const City& city = Pick(kCities);
        p.address = std::to_string(1 + Below(9999)) + " " + Pick(kStreets);
        p.city = city.name;
        p.state = city.state;
        p.zip = city.zip;
        char phone[32];
        std::snprintf(phone, sizeof phone, "(%03d) %03d-%04d", static_cast<int>(200 + Below(700)),
                      static_cast<int>(200 + Below(700)), static_cast<int>(Below(10000)));
        p.home = phone;
        if (Chance(0.6)) {
            std::string mail = p.first + "." + p.last + std::to_string(Below(100)) + "@example.com";
            for (auto& ch : mail)
                if (ch == ' ' || ch == '\'')
                    ch = '_';
            p.email = mail;
        }
        return p;
    }

    std::string Typo(std::string s)
    {
        if (s.size() < 3)
            return s + "e";
        const size_t i = 1 + Below(s.size() - 2);
        switch (Below(3)) {
        case 0: std::swap(s[i], s[i + 1]); break;            // transposed letters
        case 1: s.erase(i, 1); break;                          // dropped letter
        default: s.insert(i, 1, s[i]); break;                  // doubled letter
        }
        return s;
    }

    std::string ShiftDate(const std::string& dob)
    {
        int y = std::stoi(dob.substr(0, 4)), m = std::stoi(dob.substr(4, 2)), d = std::stoi(dob.substr(6, 2));
        switch (Below(3)) {
        case 0: d = d % 28 + 1; break;                 // off by a day
        case 1: std::swap(m, d); if (m > 12) m = 12; break; // day and month swapped
        default: y += Below(2) ? 1 : -1; break;        // wrong year
        }
        char out[16];
        std::snprintf(out, sizeof out, "%04d%02d%02d", y, m, d);
        return out;
    }

    std::string NextMrn(size_t org)
    {
        char mrn[32];
        std::snprintf(mrn, sizeof mrn, "%s%07lld", kOrgs[org].mrnPrefix, ++mrnCounter[org]);
        return mrn;
    }

    std::string InsertPatient(size_t org, const Person& p, const std::string& linkGroup)
    {
        auto& st = db.Prepare(
            "INSERT INTO patients(patient_key, org_key, mrn, last_name, first_name, middle_name, sex_code, "
            "gender_code, dob, global_id, address1, city, state_code, postal_code, country_code, home_phone, "
            "email, link_group, created, modified) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 'US', ?, ?, ?, ?, ?)");
        const std::string key = keys.Next();
        st.bind(1, key);
        st.bind(2, orgKeys[org]);
        st.bind(3, NextMrn(org));
        st.bind(4, p.last);
        st.bind(5, p.first);
        st.bind(6, p.middle);
        st.bind(7, p.sex);
        st.bind(8, p.sex == "F" ? "W" : "M");
        st.bind(9, p.dob);
        st.bind(10, p.globalId);
        st.bind(11, p.address);
        st.bind(12, p.city);
        st.bind(13, p.state);
        st.bind(14, p.zip);
        st.bind(15, p.home);
        st.bind(16, p.email);
        if (linkGroup.empty())
            st.bind(17);
        else
            st.bind(17, linkGroup);
        st.bind(18, "2020-01-01T00:00:00Z");
        st.bind(19, "2020-01-01T00:00:00Z");
        db.Write(st);
        return key;
    }

    void Exams(size_t org, const std::string& patientKey)
    {
        const int count = static_cast<int>(Below(4));
        for (int e = 0; e < count; ++e) {
            const ExamCode& ec = kExamCodes[Below(Count(kExamCodes))];
            const size_t codeIndex = static_cast<size_t>(&ec - kExamCodes);
            const Code& status = Pick(kExamStatuses);
            const std::string statusCode = status.code;
            const bool performed = statusCode != "SC" && statusCode != "AR" && statusCode != "CA";
            char acc[32];
            std::snprintf(acc, sizeof acc, "%s%08lld", kOrgs[org].accPrefix, ++accCounter[org]);
            char when[20];
            std::snprintf(when, sizeof when, "%04d%02d%02d%02d%02d00", static_cast<int>(2015 + Below(11)),
                          static_cast<int>(1 + Below(12)), static_cast<int>(1 + Below(28)),
                          static_cast<int>(7 + Below(12)), static_cast<int>(Below(4) * 15));
            const std::string examKey = keys.Next();
            auto& st = db.Prepare(
                "INSERT INTO exams(exam_key, patient_key, org_key, accession, priority_code, status_code, "
                "scheduled_dt, performed_dt, exam_code, exam_code_key, modality, body_part, description, "
                "ordering_location_key, ordering_location_id, performing_resource_key, performing_resource_id, "
                "marked_read, created, modified) "
                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                "'2020-01-01T00:00:00Z', '2020-01-01T00:00:00Z')");
            st.bind(1, examKey);
            st.bind(2, patientKey);
            st.bind(3, orgKeys[org]);
            st.bind(4, acc);
            st.bind(5, Pick(kPriorities).code);
            st.bind(6, statusCode);
            st.bind(7, when);
            st.bind(8, performed ? when : "");
            st.bind(9, ec.code);
            st.bind(10, codeIndex < examCodeKeys.size() ? examCodeKeys[codeIndex] : std::string());
            st.bind(11, ec.modality);
            st.bind(12, ec.bodyPart);
            st.bind(13, ec.description);
            const Ref location = locations.empty() ? Ref() : locations[Below(locations.size())];
            const Ref resource = resources.empty() ? Ref() : resources[Below(resources.size())];
            st.bind(14, location.key);
            st.bind(15, location.id);
            st.bind(16, resource.key);
            st.bind(17, resource.id);
            st.bind(18, (statusCode == "RD" || statusCode == "FN") ? 1 : 0);
            db.Write(st);
            if (!providers.empty()) {
                const Ref& doctor = providers[Below(providers.size())];
                auto& prov = db.Prepare("INSERT INTO exam_providers(exam_key, position, provider_key, provider_type, "
                                        "provider_id, dicom_name) VALUES (?, 0, ?, 4, ?, ?)");
                prov.bind(1, examKey);
                prov.bind(2, doctor.key);
                prov.bind(3, doctor.id);
                prov.bind(4, doctor.name);
                db.Write(prov);
            }
            if (!performed)
                continue;
            const int studies = Chance(0.15) ? 2 : 1;
            for (int s = 0; s < studies; ++s) {
                auto& study = db.Prepare(
                    "INSERT INTO studies(study_key, exam_key, patient_key, study_uid, description, modality, "
                    "study_dt, image_count) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
                study.bind(1, keys.Next());
                study.bind(2, examKey);
                study.bind(3, patientKey);
                study.bind(4, "1.2.826.0.1.3680043.10.543." + std::to_string(++studySerial));
                study.bind(5, ec.description);
                study.bind(6, ec.modality);
                study.bind(7, when);
                study.bind(8, static_cast<int>(1 + Below(400)));
                db.Write(study);
            }
        }
    }

    void Patient(long long serial, double duplicateRate, double linkedRate)
    {
        const size_t org = kFirstPatientOrg + Below(kPatientOrgCount);
        Person p = NewPerson(serial);
        std::string group;
        if (Chance(linkedRate)) {
            group = keys.Next();
            auto& g = db.Prepare("INSERT INTO link_groups(group_key, created) VALUES (?, '2020-01-01T00:00:00Z')");
            g.bind(1, group);
            db.Write(g);
        }
        const std::string key = InsertPatient(org, p, group);
        Exams(org, key);
        if (!group.empty()) {
            // The same person registered at another hospital, already linked.
            const size_t other = kFirstPatientOrg + (org - kFirstPatientOrg + 1 + Below(kPatientOrgCount - 1)) % kPatientOrgCount;
            Exams(other, InsertPatient(other, p, group));
        }
        if (!Chance(duplicateRate))
            return;
        Person d = p;
        size_t dupOrg = org;
        switch (Below(5)) {
        case 0: d.last = Typo(d.last); break;              // typo, same identifier
        case 1: std::swap(d.first, d.last); break;         // first and last swapped, same identifier
        case 2: d.dob = ShiftDate(d.dob); break;           // shifted birth date, same identifier
        case 3: d.globalId.clear(); break;                 // registered again without identifier
        default:                                           // the same person at another hospital, not linked
            dupOrg = kFirstPatientOrg + (org - kFirstPatientOrg + 1 + Below(kPatientOrgCount - 1)) % kPatientOrgCount;
            break;
        }
        Exams(dupOrg, InsertPatient(dupOrg, d, std::string()));
    }
};

DemoSeeder::DemoSeeder(ArchiveDb& db)
    : m_db(db)
{
}

bool DemoSeeder::SeedSite(std::uint64_t seed)
{
    return GuardDb("seeding the site", [&] {
        WriteTransaction tx(m_db);
        if (m_db.Handle().execAndGet("SELECT count(*) FROM organizations").getInt() > 0)
            return false;
        Impl impl(m_db, seed);
        impl.Site();
        tx.Commit();
        return true;
    });
}

void DemoSeeder::Seed(const SeedOptions& options, const Progress& progress)
{
    SeedSite(options.seed);
    GuardDb("seeding patients", [&] {
        const long long existing = m_db.Handle().execAndGet("SELECT count(*) FROM patients").getInt64();
        // A second seeding of the same file continues with fresh keys.
        Impl impl(m_db, options.seed * 1000003ULL + static_cast<std::uint64_t>(existing));
        impl.LoadOrgs();
        const int batch = options.batchSize > 0 ? options.batchSize : SeedOptions().batchSize;
        int done = 0;
        while (done < options.patients) {
            const int end = std::min(options.patients, done + batch);
            WriteTransaction tx(m_db);
            impl.LoadOrgs();
            for (int i = done; i < end; ++i)
                impl.Patient(existing + i, options.duplicateRate, options.linkedRate);
            impl.SaveCounters();
            tx.Commit();
            ArchiveDb::LetOthersWrite();
            done = end;
            if (progress)
                progress(done, options.patients);
        }
        if (options.patients <= 0 && progress)
            progress(0, 0);
    });
    // Patients were written in bulk, past the candidate upkeep.
    CandidateStore(m_db).Rebuild();
}
