// The patient dialog frame: modes, header, OK state, validation order, saves.

#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/createlinkedpatientsimpl.h"
#include "patient/patientdlg.h"

#include "hftabbeddlg.h"
#include "errormanager.h"
#include "faultyservices.h"
#include "messagebox.h"
#include "options.h"
#include "sqlitepatientservice.h"

#include <gtest/gtest.h>

namespace {

using PatientDlgTest = PatientFixture;

TEST_F(PatientDlgTest, AnEmptyKeyOpensCreateModeWithItsFourTabs)
{
    std::vector<CString> tabs;
    CString caption;
    user->OnNextDialog(
        [&](CDialog& dlg) {
            PatientForm f(dlg);
            caption = f.Driver().Caption();
            for (const char* name : {"Demographics", "Contact Info", "Links", "Create Linked Patient"})
                if (f.Dialog().GetFrame()->FindPage(name) >= 0)
                    tabs.emplace_back(name);
            EXPECT_EQ(CString("Demographics"), f.ActiveTab());
            EXPECT_EQ(PatientDlg::DIALOG_WIDTH, dlg.width());
            EXPECT_EQ(PatientDlg::DIALOG_HEIGHT, dlg.height());
            f.ClickCancel();
        },
        "patient_create_demographics");
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg("", nullptr));
    EXPECT_EQ(CString("Create Patient"), caption);
    EXPECT_EQ((std::vector<CString>{"Demographics", "Contact Info", "Create Linked Patient"}), tabs);
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(PatientDlgTest, CreatingAPatientStoresItAndReturnsItsNewKey)
{
    CString firstOrganization;
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        firstOrganization = f.Text(IDC_PAT_ORGANIZATION);
        EXPECT_FALSE(f.OKEnabled()); // no MRN, no name yet
        f.Type(IDC_PAT_MRN, "A-100");
        f.Type(IDC_PAT_LAST, "Moreau");
        EXPECT_FALSE(f.OKEnabled());
        f.Type(IDC_PAT_FIRST, "Lea");
        EXPECT_TRUE(f.OKEnabled());
        f.ClickOK();
    });
    TavCreator::PatientDlgCreator creator;
    ASSERT_EQ(IDOK, creator.DisplayPatientDlg(nullptr, nullptr));
    PatientDetailRecord* saved = creator.GetpPatientData();
    ASSERT_NE(nullptr, saved);
    ASSERT_GT(saved->GetPatientKey().length(), 0u);
    const PatientDetailRecord stored = Read(saved->GetPatientKey().c_str());
    EXPECT_STREQ("A-100", stored.GetPatientID().c_str());
    EXPECT_STREQ("Moreau", stored.GetLastName().c_str());
    EXPECT_STREQ("Lea", stored.GetFirstName().c_str());
    EXPECT_EQ(firstOrganization, CString(stored.GetOrganizationID().c_str())) << "the first organization offered";
    EXPECT_NE(CString("Enterprise"), firstOrganization);
}

} // namespace

namespace {

// Notes how often the error manager heard of a successful exchange when each
// box appeared, then lets the scripted user answer.
class CountingPresenter : public MessagePresenter
{
public:
    explicit CountingPresenter(ScriptedUser& user) : m_user(user), m_previous(SetMessagePresenter(this)) {}
    ~CountingPresenter() override { SetMessagePresenter(m_previous); }
    int Show(CWnd* owner, const CString& text, const CString& caption, UINT type) override
    {
        successesAtBox.push_back(Framework::ErrorManager::Instance().GetCommunicationSuccessCount());
        return m_user.Show(owner, text, caption, type);
    }
    std::vector<int> successesAtBox;

private:
    ScriptedUser& m_user;
    MessagePresenter* m_previous;
};

void FillNew(PatientForm& f, const char* mrn = "A-1")
{
    f.Type(IDC_PAT_MRN, mrn);
    f.Type(IDC_PAT_LAST, "Moreau");
    f.Type(IDC_PAT_FIRST, "Lea");
}

TEST_F(PatientDlgTest, TheHeaderSummarisesThePatientAsItIsTyped)
{
    const std::string key = Patient(m_north, "N-77", "Okafor", "Ada", "19840229", "F");
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        EXPECT_EQ(CString("Edit Patient"), f.Driver().Caption());
        const std::vector<CString> lines = f.HeaderLines();
        ASSERT_EQ(2u, lines.size());
        EXPECT_EQ(CString("MRN: N-77"), lines[0]);
        EXPECT_EQ(CString("Okafor, Ada    Female    02/29/1984"), lines[1]);
        f.Type(IDC_PAT_MRN, "");
        EXPECT_EQ(CString("MRN: N/A"), f.HeaderLines()[0]);
        EXPECT_FALSE(f.OKEnabled()) << "an empty MRN cannot be saved";
        f.ClickCancel();
    }, "patient_edit_demographics");
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg(key.c_str(), nullptr));
}

TEST_F(PatientDlgTest, TheVipLineNeedsOption49AndAnUnreadableCodeIsLogged)
{
    const std::string key = Patient(m_north, "V-1");
    PatientDetailRecord r = Read(key);
    r.SetVIPStatusCode("7");
    ASSERT_EQ(0, Arc().Patients().ModifyPatient(&r));
    auto lastLine = [&] {
        std::vector<CString> lines;
        user->OnNextDialog([&](CDialog& dlg) {
            PatientForm f(dlg);
            lines = f.HeaderLines();
            f.ClickCancel();
        });
        TavCreator::PatientDlgCreator creator;
        creator.DisplayPatientDlg(key.c_str(), nullptr);
        return lines.back();
    };
    Options::SetOption(Options::OPT_VIP_STATUS, false);
    EXPECT_NE(CString("VIP Status Code: 7"), lastLine());
    Options::SetOption(Options::OPT_VIP_STATUS, true);
    EXPECT_EQ(CString("VIP Status Code: 7"), lastLine());

    r = Read(key);
    r.SetVIPStatusCode("X");
    ASSERT_EQ(0, Arc().Patients().ModifyPatient(&r));
    log->Clear();
    EXPECT_NE(CString("VIP Status Code: X"), lastLine());
    bool logged = false;
    for (const LogLine& line : log->Lines(LM_DEBUG))
        logged = logged || (line.text.find("Function: VIPUtil::StringToVIPStatusCode, Line: ") == 0
                                && line.text.find(" Invalid VIP status code - X\n") != std::string::npos);
    EXPECT_TRUE(logged);
    Options::SetOption(Options::OPT_VIP_STATUS, false);
}

TEST_F(PatientDlgTest, ValidationActivatesTheFailingPage)
{
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        FillNew(f);
        f.Tab("Create Linked Patient");
        f.CreateLinked().OnAdd();
        f.Tab("Contact Info");
        user->ExpectMessage("MRN cannot be empty.");
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        EXPECT_EQ(CString("Create Linked Patient"), f.ActiveTab());
        f.ClickCancel();
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg("", nullptr));
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM patients WHERE mrn = 'A-1'")) << "nothing created before the rows pass";
}

TEST_F(PatientDlgTest, EnterSavesOnlyWhenOkIsEnabled)
{
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        f.Type(IDC_PAT_MRN, "A-2");
        f.Driver().PressEnter();
        EXPECT_FALSE(dlg.HasEnded()) << "no last name yet: Enter does nothing";
        f.Type(IDC_PAT_LAST, "Moreau");
        f.Type(IDC_PAT_FIRST, "Lea");
        f.Driver().PressEnter();
        EXPECT_TRUE(dlg.HasEnded());
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDOK, creator.DisplayPatientDlg("", nullptr));
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(PatientDlgTest, ANonZeroCreateIsSilentAndTheDialogStaysOpen)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreatePatient", 5);
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        FillNew(f);
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        EXPECT_EQ(CString("A-1"), f.Text(IDC_PAT_MRN));
        faulty.faults.ClearFaults();
        f.ClickOK();
        EXPECT_TRUE(dlg.HasEnded());
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDOK, creator.DisplayPatientDlg("", nullptr));
    EXPECT_TRUE(user->Messages().empty());
    EXPECT_EQ(2, faulty.faults.Count("CreatePatient"));
}

TEST_F(PatientDlgTest, ANonZeroModifyIsSilentAndTheDialogStaysOpen)
{
    const std::string key = Patient(m_north, "N-4", "Berg", "Ola");
    FaultyServices faulty;
    faulty.faults.FailOn("ModifyPatient", 5, 1);
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        f.Type(IDC_PAT_LAST, "Bergman");
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        EXPECT_EQ(CString("Bergman"), f.Text(IDC_PAT_LAST));
        f.ClickOK(); // the fault was for the first call only
        EXPECT_TRUE(dlg.HasEnded());
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDOK, creator.DisplayPatientDlg(key.c_str(), nullptr));
    EXPECT_TRUE(user->Messages().empty());
    EXPECT_STREQ("Bergman", Read(key).GetLastName().c_str());
}

TEST_F(PatientDlgTest, TheHeaderFollowsTheSexAndTheBirthDate)
{
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        f.Type(IDC_PAT_LAST, "Moreau");
        f.Choose(IDC_PAT_SEX, "F-Female");
        EXPECT_EQ(CString("Moreau    Female    01/01/1800"), f.HeaderLines()[1]);
        f.ClickCancel();
    });
    TavCreator::PatientDlgCreator creator;
    creator.DisplayPatientDlg("", nullptr);
}

TEST_F(PatientDlgTest, AThrownCreateShowsItsReasonAfterTellingTheErrorManager)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("CreatePatient", "The archive is busy.");
    CountingPresenter presenter(*user);
    Framework::ErrorManager::Instance().ResetCounters();
    user->ExpectMessage("Error creating Patient ID A-1.  Reason: The archive is busy.");
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        FillNew(f);
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        f.ClickCancel();
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg("", nullptr));
    EXPECT_EQ((std::vector<int>{1}), presenter.successesAtBox);
    EXPECT_EQ(nullptr, creator.GetpPatientData());
}

TEST_F(PatientDlgTest, AThrownModifyShowsTheUpdateTextAndKeepsTheEdits)
{
    const std::string key = Patient(m_north, "N-5", "Berg", "Ola");
    FaultyServices faulty;
    faulty.faults.ThrowOn("ModifyPatient", "The archive file is read-only.");
    user->ExpectMessage("Error updating Patient ID N-6.  Reason: The archive file is read-only.");
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        f.Type(IDC_PAT_MRN, "N-6");
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        EXPECT_EQ(CString("N-6"), f.Text(IDC_PAT_MRN));
        f.ClickCancel();
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg(key.c_str(), nullptr));
    EXPECT_STREQ("N-5", Read(key).GetPatientID().c_str());
}

TEST_F(PatientDlgTest, CancelEndsAtOnceWhateverWasTyped)
{
    const std::string key = Patient(m_north, "N-8");
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        f.Type(IDC_PAT_LAST, "Changed");
        f.ClickCancel();
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg(key.c_str(), nullptr));
    EXPECT_STREQ("Doe", Read(key).GetLastName().c_str());
    EXPECT_TRUE(user->Messages().empty());
}

} // namespace

namespace {

// With BRAVIK_SCREENSHOTS set, every tab of both modes is saved as
// patient_<mode>_<page>.png; without it the walk still checks each tab shows.
TEST_F(PatientDlgTest, EveryTabOfBothModesCanBeShown)
{
    const std::string key = Patient(m_north, "N-300", "Okafor", "Ada", "19840229", "F");
    const std::string south = Patient(m_south, "S-300", "Okafor", "Ada", "19840229", "F");
    Build().LinkGroup(key, south);
    auto walk = [&](const std::string& patientKey, const char* mode, std::vector<const char*> tabs) {
        user->OnNextDialog([&](CDialog& dlg) {
            PatientForm f(dlg);
            if (patientKey.empty()) {
                f.Type(IDC_PAT_MRN, "A-300");
                f.Type(IDC_PAT_LAST, "Moreau");
                f.Type(IDC_PAT_FIRST, "Lea");
            }
            for (const char* tab : tabs) {
                EXPECT_TRUE(f.Tab(tab));
                EXPECT_EQ(CString(tab), f.ActiveTab());
                std::string page = tab;
                for (char& c : page)
                    c = c == ' ' ? '_' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
                f.Screenshot(("patient_" + std::string(mode) + "_" + page).c_str());
            }
            f.ClickCancel();
        });
        TavCreator::PatientDlgCreator creator;
        creator.DisplayPatientDlg(patientKey.c_str(), nullptr);
    };
    walk("", "create", {"Demographics", "Contact Info", "Create Linked Patient"});
    walk(key, "edit", {"Demographics", "Contact Info", "Links"});
}

} // namespace
