// Patient records through the patient service: read, create, modify, delete,
// MRN generation, rights and bad input.
#include <archivefixture.h>

#include <archivecontext.h>
#include <archiveerror.h>
#include <sqlitepatientservice.h>

#include <patientdetailrecord.h>
#include <patientsearchcriteria.h>
#include <server.h>
#include <sitepolicy.h>

#include <memory>

namespace {

// The reason a refused save gives the user (empty when nothing was thrown).
template <typename F>
std::string Refusal(F&& save)
{
    try {
        save();
    } catch (const Framework::Server& e) {
        return e.what();
    }
    return std::string();
}

class PatientServiceTest : public ArchiveFixture
{
protected:
    SqlitePatientService& Svc() { return Arc().Patients(); }

    PatientDetailRecord NewRecord(const std::string& org, const std::string& mrn = "0000123")
    {
        PatientDetailRecord r;
        r.SetOrganizationKey(org.c_str());
        r.SetPatientID(mrn.c_str());
        r.SetName(BPersonName("Jansen", "Anouk", "M", "Ms", ""));
        r.SetSexCode("F");
        r.SetDOB(BDate(1984, 2, 29));
        r.SetPatientGID("123456789");
        r.SetAddressLine1("12 Main St");
        r.SetCity("Springfield");
        r.SetStateCode("IL");
        r.SetCountryCode("US");
        r.SetHomeNumber("(217) 555-0100");
        r.SetEmailAddress("anouk@example.com");
        r.SetDateOfDeath(0, 0, 0);
        return r;
    }
};

TEST_F(PatientServiceTest, CreateThenGetReturnsEveryField)
{
    PatientDetailRecord r = NewRecord(m_north);
    r.SetGenderCode("W");
    r.SetBSN("111222333");
    r.SetOtherPatientIDs("X1,X2");
    r.SetMothersMaidenName("Visser");
    r.SetAliasFirstName("Ann");
    r.SetAliasMiddleName("Q");
    r.SetAliasLastName("Jansens");
    r.SetVIPStatusCode("V");
    r.SetAddressType("H");
    r.SetOtherDesignation("Apt 4");
    r.SetAddressLine2("Floor 2");
    r.SetCounty("Sangamon");
    r.SetPostalCode("62701");
    r.SetWorkNumber("555-0101");
    r.SetMobileNumber("555-0102");
    r.SetComments("prefers mornings");
    r.SetDateOfDeath(2020, 5, 6);
    ACE_CString key;
    ASSERT_EQ(Svc().CreatePatient(&r, key), 0);
    EXPECT_FALSE(key.length() == 0);

    PatientDetailRecord back;
    ASSERT_EQ(Svc().GetPatient(key, &back, ""), 0);
    EXPECT_EQ(back.GetPatientKey(), key);
    EXPECT_STREQ(back.GetOrganizationKey().c_str(), m_north.c_str());
    EXPECT_STREQ(back.GetOrganizationID().c_str(), "NORTH");
    EXPECT_STREQ(back.GetPatientID().c_str(), "0000123");
    EXPECT_STREQ(back.GetLastName().c_str(), "Jansen");
    EXPECT_STREQ(back.GetFirstName().c_str(), "Anouk");
    EXPECT_STREQ(back.GetMiddleName().c_str(), "M");
    EXPECT_STREQ(back.GetTitle().c_str(), "Ms");
    EXPECT_EQ(back.GetDOB(), BDate(1984, 2, 29));
    EXPECT_STREQ(back.GetGenderCode().c_str(), "W");
    EXPECT_STREQ(back.GetBSN().c_str(), "111222333");
    EXPECT_STREQ(back.GetOtherPatientIDs().c_str(), "X1,X2");
    EXPECT_STREQ(back.GetMothersMaidenName().c_str(), "Visser");
    EXPECT_STREQ(back.GetAliasFirstName().c_str(), "Ann");
    EXPECT_STREQ(back.GetAliasMiddleName().c_str(), "Q");
    EXPECT_STREQ(back.GetAliasLastName().c_str(), "Jansens");
    EXPECT_STREQ(back.GetVIPStatusCode().c_str(), "V");
    EXPECT_STREQ(back.GetAddressType().c_str(), "H");
    EXPECT_STREQ(back.GetOtherDesignation().c_str(), "Apt 4");
    EXPECT_STREQ(back.GetAddressLine1().c_str(), "12 Main St");
    EXPECT_STREQ(back.GetAddressLine2().c_str(), "Floor 2");
    EXPECT_STREQ(back.GetCounty().c_str(), "Sangamon");
    EXPECT_STREQ(back.GetCity().c_str(), "Springfield");
    EXPECT_STREQ(back.GetStateCode().c_str(), "IL");
    EXPECT_STREQ(back.GetPostalCode().c_str(), "62701");
    EXPECT_STREQ(back.GetCountryCode().c_str(), "US");
    EXPECT_STREQ(back.GetHomeNumber().c_str(), "(217) 555-0100");
    EXPECT_STREQ(back.GetWorkNumber().c_str(), "555-0101");
    EXPECT_STREQ(back.GetMobileNumber().c_str(), "555-0102");
    EXPECT_STREQ(back.GetEmailAddress().c_str(), "anouk@example.com");
    EXPECT_STREQ(back.GetComments().c_str(), "prefers mornings");
    EXPECT_STREQ(back.GetPatientGID().c_str(), "123456789");
    EXPECT_EQ(back.GetDeathYear(), 2020);
    EXPECT_EQ(back.GetDeathMonth(), 5);
    EXPECT_EQ(back.GetDeathDay(), 6);
    EXPECT_EQ(Count("SELECT count(*) FROM audit WHERE event_code = 1 AND record_key = '" + std::string(key.c_str()) + "'"), 1);
}

TEST_F(PatientServiceTest, CreateAcceptsTheOrganizationIdInsteadOfTheKey)
{
    PatientDetailRecord r = NewRecord("");
    r.SetOrganizationID("south");
    ACE_CString key;
    ASSERT_EQ(Svc().CreatePatient(&r, key), 0);
    EXPECT_EQ(Text("SELECT org_key FROM patients WHERE patient_key = '" + std::string(key.c_str()) + "'"), m_south);
}

TEST_F(PatientServiceTest, CreateRefusals)
{
    const auto before = Snapshot();
    ACE_CString key;
    EXPECT_EQ(Svc().CreatePatient(nullptr, key), ArchiveResult::InvalidArgument);
    auto noMrn = NewRecord(m_north, "");
    EXPECT_EQ(Svc().CreatePatient(&noMrn, key), ArchiveResult::InvalidArgument);
    auto noLast = NewRecord(m_north);
    noLast.SetLastName("");
    EXPECT_EQ(Svc().CreatePatient(&noLast, key), ArchiveResult::InvalidArgument);
    auto noFirst = NewRecord(m_north);
    noFirst.SetFirstName("");
    EXPECT_EQ(Svc().CreatePatient(&noFirst, key), ArchiveResult::InvalidArgument);
    auto unknownOrg = NewRecord("NO-SUCH-ORG");
    EXPECT_EQ(Svc().CreatePatient(&unknownOrg, key), ArchiveResult::NotFound);
    auto longName = NewRecord(m_north);
    longName.SetLastName(std::string(51, 'x').c_str());
    EXPECT_EQ(Svc().CreatePatient(&longName, key), ArchiveResult::InvalidArgument);
    auto badBytes = NewRecord(m_north);
    badBytes.SetLastName("M\xC3\x28ller"); // not UTF-8
    EXPECT_EQ(Svc().CreatePatient(&badBytes, key), ArchiveResult::InvalidArgument);
    auto control = NewRecord(m_north);
    control.SetCity("Spring\x01" "field");
    EXPECT_EQ(Svc().CreatePatient(&control, key), ArchiveResult::InvalidArgument);
    auto badDeath = NewRecord(m_north);
    badDeath.SetDateOfDeath(2021, 2, 30);
    EXPECT_EQ(Svc().CreatePatient(&badDeath, key), ArchiveResult::InvalidArgument);
    EXPECT_ARCHIVE_UNCHANGED(before);
    EXPECT_EQ(key.length(), 0u);
}

TEST_F(PatientServiceTest, ExactlyFiftyCharactersAndQuotesAreAccepted)
{
    auto r = NewRecord(m_north);
    r.SetLastName((std::string(48, 'a') + "'\"").c_str());
    r.SetFirstName("Zoë");
    ACE_CString key;
    ASSERT_EQ(Svc().CreatePatient(&r, key), 0);
    PatientDetailRecord back;
    ASSERT_EQ(Svc().GetPatient(key, &back, ""), 0);
    EXPECT_STREQ(back.GetLastName().c_str(), (std::string(48, 'a') + "'\"").c_str());
    EXPECT_STREQ(back.GetFirstName().c_str(), "Zoë");
}

TEST_F(PatientServiceTest, DuplicateMrnInOneOrganizationIsAConflictButAnotherOrganizationMayReuseIt)
{
    auto r = NewRecord(m_north, "555");
    ACE_CString first, second, third;
    ASSERT_EQ(Svc().CreatePatient(&r, first), 0);
    const auto before = Snapshot();
    EXPECT_EQ("The MRN 555 is already used by another patient in NORTH. Enter a different MRN.",
              Refusal([&] { Svc().CreatePatient(&r, second); }));
    EXPECT_ARCHIVE_UNCHANGED(before);
    auto s = NewRecord(m_south, "555");
    EXPECT_EQ(Svc().CreatePatient(&s, third), 0);
}

TEST_F(PatientServiceTest, EmptyFirstNameFollowsSitePolicy)
{
    auto r = NewRecord(m_north);
    r.SetFirstName("");
    ACE_CString key;
    EXPECT_NE(Svc().CreatePatient(&r, key), 0);
    // The archive's own setting counts, not what this process was told.
    SitePolicySettings policy;
    policy.emptyFirstNameAllowed = true;
    SitePolicy::Set(policy);
    EXPECT_NE(Svc().CreatePatient(&r, key), 0);
    Build().Setting("policy", "EmptyFirstNameAllowed", "1");
    EXPECT_EQ(Svc().CreatePatient(&r, key), 0);
}

TEST_F(PatientServiceTest, NumericMrnSiteRefusesLetters)
{
    Build().Setting("policy", "NumericMRN", "1");
    auto r = NewRecord(m_north, "AB12");
    ACE_CString key;
    EXPECT_EQ(Svc().CreatePatient(&r, key), ArchiveResult::InvalidArgument);
    r.SetPatientID("0012");
    EXPECT_EQ(Svc().CreatePatient(&r, key), 0);
}

TEST_F(PatientServiceTest, CreateWithoutTheCreateRightChangesNothing)
{
    Build().User("clerk");
    Build().Grant("clerk", m_north, false, true, true);
    Arc().SetUser("clerk");
    const auto before = Snapshot();
    auto r = NewRecord(m_north);
    ACE_CString key;
    EXPECT_EQ("You do not have the right to create or change patients in NORTH. Ask your administrator for the "
              "right, or choose another organization.",
              Refusal([&] { Svc().CreatePatient(&r, key); }));
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(PatientServiceTest, AnUnknownUserHoldsNoRights)
{
    Arc().SetUser("mallory");
    const auto before = Snapshot();
    auto r = NewRecord(m_north);
    ACE_CString key;
    EXPECT_EQ("You do not have the right to create or change patients in NORTH. Ask your administrator for the "
              "right, or choose another organization.",
              Refusal([&] { Svc().CreatePatient(&r, key); }));
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(PatientServiceTest, GetRefusals)
{
    PatientDetailRecord r;
    EXPECT_EQ(Svc().GetPatient("", &r, ""), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().GetPatient("NOPE", &r, ""), ArchiveResult::NotFound);
    EXPECT_EQ(Svc().GetPatient(std::string(65, 'k').c_str(), &r, ""), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().GetPatient("x\xff", &r, ""), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().GetPatient("' OR 1=1 --", &r, ""), ArchiveResult::NotFound);
    const std::string p = NorthPatient("Smith", "Ann");
    EXPECT_EQ(Svc().GetPatient(p.c_str(), nullptr, ""), ArchiveResult::InvalidArgument);
    // Asked for another organization where the person has no record.
    EXPECT_EQ(Svc().GetPatient(p.c_str(), &r, m_south.c_str()), ArchiveResult::NotFound);
}

TEST_F(PatientServiceTest, GetForAnotherOrganizationGivesTheLinkedRecordThere)
{
    const std::string north = NorthPatient("Smith", "Ann");
    ArchiveBuilder::PatientFields s;
    s.orgKey = m_south;
    s.last = "Smith-Jones";
    const std::string south = Build().Patient(s);
    Build().LinkGroup(north, south);
    PatientDetailRecord r;
    ASSERT_EQ(Svc().GetPatient(north.c_str(), &r, "SOUTH"), 0);
    EXPECT_STREQ(r.GetPatientKey().c_str(), south.c_str());
    EXPECT_STREQ(r.GetLastName().c_str(), "Smith-Jones");
    EXPECT_FALSE(r.GetLinkID().length() == 0);
}

TEST_F(PatientServiceTest, ModifyChangesTheRowAndAudits)
{
    const std::string p = NorthPatient("Smith", "Ann");
    PatientDetailRecord r;
    ASSERT_EQ(Svc().GetPatient(p.c_str(), &r, ""), 0);
    r.SetCity("Madison");
    r.SetLastName("Smyth");
    ASSERT_EQ(Svc().ModifyPatient(&r), 0);
    EXPECT_EQ(Text("SELECT city || '/' || last_name FROM patients WHERE patient_key = '" + p + "'"), "Madison/Smyth");
    EXPECT_EQ(Count("SELECT count(*) FROM audit WHERE event_code = 2"), 1);
}

TEST_F(PatientServiceTest, ModifyRefusals)
{
    const std::string p = NorthPatient("Smith", "Ann");
    const std::string q = NorthPatient("Brown", "Bob");
    PatientDetailRecord r;
    ASSERT_EQ(Svc().GetPatient(p.c_str(), &r, ""), 0);
    PatientDetailRecord other;
    ASSERT_EQ(Svc().GetPatient(q.c_str(), &other, ""), 0);
    const auto before = Snapshot();
    EXPECT_EQ(Svc().ModifyPatient(nullptr), ArchiveResult::InvalidArgument);
    auto moved = r;
    moved.SetOrganizationKey(m_south.c_str());
    EXPECT_EQ(Svc().ModifyPatient(&moved), ArchiveResult::InvalidArgument);
    auto clash = r;
    clash.SetPatientID(other.GetPatientID());
    EXPECT_NE(std::string::npos, Refusal([&] { Svc().ModifyPatient(&clash); }).find("is already used by another patient"));
    auto unknown = r;
    unknown.SetPatientKey("GHOST");
    unknown.SetVersion(""); // not read from the archive: an ordinary refusal
    EXPECT_EQ(Svc().ModifyPatient(&unknown), ArchiveResult::NotFound);
    auto tooLong = r;
    tooLong.SetHomeNumber(std::string(31, '5').c_str());
    EXPECT_EQ(Svc().ModifyPatient(&tooLong), ArchiveResult::InvalidArgument);
    Arc().SetUser("reader"); // known, but holds no right
    EXPECT_NE(std::string::npos, Refusal([&] { Svc().ModifyPatient(&r); }).find("You do not have the right"));
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(PatientServiceTest, DeleteRemovesThePatientWithExamsStudiesAndIgnoredPairsAndKeepsTheReason)
{
    const std::string p = NorthPatient("Smith", "Ann");
    const std::string q = NorthPatient("Smith", "Anne");
    const std::string exam = Build().Exam(p);
    Build().Study(exam, p);
    Build().Ignore(p, q);
    ASSERT_EQ(Svc().DeletePatient(p.c_str(), m_north.c_str(), "Test patient"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM patients WHERE patient_key = '" + p + "'"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM exams"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM studies"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM ignored_pairs"), 0);
    EXPECT_EQ(Text("SELECT reason FROM journal WHERE operation = 'delete-patient'"), "Test patient");
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'patients' AND row_key = '" + p + "'"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'exams'"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'studies'"), 1);
    EXPECT_EQ(Text("SELECT comment FROM audit WHERE event_code = 3"), "Test patient");
    EXPECT_EQ(Count("SELECT count(*) FROM patients WHERE patient_key = '" + q + "'"), 1);
}

TEST_F(PatientServiceTest, DeletingALinkedRecordDissolvesAGroupLeftWithOne)
{
    const std::string north = NorthPatient("Smith", "Ann");
    ArchiveBuilder::PatientFields s;
    s.orgKey = m_south;
    const std::string south = Build().Patient(s);
    Build().LinkGroup(north, south);
    ASSERT_EQ(Svc().DeletePatient(north.c_str(), "", "Duplicate registration"), 0);
    EXPECT_EQ(Text("SELECT link_group FROM patients WHERE patient_key = '" + south + "'"), "<none>");
    EXPECT_EQ(Count("SELECT count(*) FROM link_groups"), 0);
}

TEST_F(PatientServiceTest, DeleteRefusals)
{
    const std::string p = NorthPatient("Smith", "Ann");
    const auto before = Snapshot();
    EXPECT_EQ(Svc().DeletePatient("", "", "r"), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().DeletePatient("GHOST", "", "r"), ArchiveResult::NotFound);
    EXPECT_EQ(Svc().DeletePatient(p.c_str(), m_south.c_str(), "r"), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().DeletePatient(p.c_str(), "", std::string(256, 'r').c_str()), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().DeletePatient(p.c_str(), "", "bad \xC0\xAF bytes"), ArchiveResult::InvalidArgument);
    Arc().SetUser("reader"); // known, but holds no right
    EXPECT_EQ(Svc().DeletePatient(p.c_str(), "", "r"), ArchiveResult::NotPermitted);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(PatientServiceTest, AutogeneratedMrnsAreUniqueAndSkipTakenValues)
{
    ArchiveBuilder::PatientFields s;
    s.orgKey = m_north;
    s.mrn = "0000001"; // the first value the counter would give
    Build().Patient(s);
    ACE_CString a, b, c;
    ASSERT_EQ(Svc().GetAutogeneratedMRN(m_north.c_str(), a), 0);
    ASSERT_EQ(Svc().GetAutogeneratedMRN("NORTH", b), 0); // the ID is accepted too
    ASSERT_EQ(Svc().GetAutogeneratedMRN(m_south.c_str(), c), 0);
    EXPECT_STREQ(a.c_str(), "0000002");
    EXPECT_STREQ(b.c_str(), "0000003");
    EXPECT_STREQ(c.c_str(), "0000001");
}

TEST_F(PatientServiceTest, AutogeneratedMrnRefusals)
{
    ArchiveBuilder::OrgFields manual{"MANUAL", "Manual MRN clinic"};
    manual.generatesMrn = false;
    const std::string org = Build().Org(manual);
    const auto before = Snapshot();
    ACE_CString mrn;
    EXPECT_EQ(Svc().GetAutogeneratedMRN(org.c_str(), mrn), ArchiveResult::Unsupported);
    EXPECT_EQ(Svc().GetAutogeneratedMRN("", mrn), ArchiveResult::InvalidArgument);
    EXPECT_EQ(Svc().GetAutogeneratedMRN("NOWHERE", mrn), ArchiveResult::NotFound);
    EXPECT_EQ(mrn.length(), 0u);
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(PatientServiceTest, QueryPatientsByWildcardNameOrganizationAndLimit)
{
    NorthPatient("Smith", "Ann");
    NorthPatient("Smithers", "Bob");
    NorthPatient("Smi_th", "Literal");
    NorthPatient("Jones", "Cal");
    ArchiveBuilder::PatientFields s;
    s.orgKey = m_south;
    s.last = "Smith";
    s.first = "Dora";
    Build().Patient(s);

    auto query = [&](const char* last, const char* first, const char* org, int max) {
        PatientSearchCriteria c;
        c.lastName = last;
        c.firstName = first;
        c.organizationKey = org;
        c.maxRows = max;
        std::vector<PatientDetailRecord*> out;
        EXPECT_EQ(Svc().QueryPatients(c, out), 0);
        std::vector<std::string> names;
        for (auto* p : out) {
            names.push_back(std::string(p->GetLastName().c_str()) + "," + p->GetFirstName().c_str());
            delete p;
        }
        return names;
    };
    EXPECT_EQ(query("Smi%", "", "", 0),
              (std::vector<std::string>{"Smi_th,Literal", "Smith,Ann", "Smith,Dora", "Smithers,Bob"}));
    EXPECT_EQ(query("Smi\\_%", "", "", 0), (std::vector<std::string>{"Smi_th,Literal"}));
    EXPECT_EQ(query("Smith", "", "SOUTH", 0), (std::vector<std::string>{"Smith,Dora"}));
    EXPECT_EQ(query("Smi%", "", "", 2).size(), 2u);
    EXPECT_EQ(query("Smi*", "", "", 0).size(), 0u); // '*' is the user's wildcard, not the service's
    EXPECT_EQ(query("%", "", "NOWHERE", 0).size(), 0u);
    EXPECT_EQ(query("\xff\xfe", "", "", 0).size(), 0u);
}

} // namespace
