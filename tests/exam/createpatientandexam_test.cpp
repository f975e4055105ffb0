// Registering a walk-in patient and the ordered exam in one dialog: the two
// tabs, the header, the two-step save (patient, then exam) with every answer
// a service can give, a second OK after a refused exam, and Cancel taking a
// patient this dialog created back out of the archive.
#include "examfixture.h"

#include "boundary/createpatientandexamdlgcreator.h"
#include "exam/createpatientandexamdlg.h"

#include "dialogdriver.h"
#include "faultyservices.h"
#include "uiinput.h"

#include "errormanager.h"
#include "examservice.h"
#include "patientdetailrecord.h"
#include "serviceregistry.h"
#include "session.h"

#include "datepickerctrl.h"
#include "hftabbeddlg.h"
#include "picker.h"
#include "stringtable.h"
#include "tabbutton.h"
#include "xpbutton.h"

#include <QApplication>
#include <QDate>
#include <QLineEdit>
#include <QTest>

#include <functional>

namespace {

const char* const kCancelReason = "User cancelled after create";

// Acts on a running Create Patient and Exam dialog as its user.
class RegistrationForm
{
public:
    explicit RegistrationForm(CDialog& dlg) : m_dlg(dynamic_cast<CreatePatientAndExamDlg&>(dlg)), m_driver(dlg) {}

    CreatePatientAndExamDlg& Dlg() const { return m_dlg; }
    DialogDriver& Driver() { return m_driver; }

    std::vector<CString> TabTitles() const
    {
        std::vector<CString> titles;
        for (int i = 0; i < m_dlg.GetFrame()->GetPageCount(); ++i)
            titles.push_back(m_dlg.GetFrame()->GetTab(i)->GetWindowText());
        return titles;
    }
    CString ActiveTab() const
    {
        TabButton* tab = m_dlg.GetFrame()->GetTab(m_dlg.GetFrame()->GetActiveIndex());
        return tab ? tab->GetWindowText() : CString();
    }
    void Tab(const char* title)
    {
        const int index = m_dlg.GetFrame()->FindPage(title);
        ASSERT_GE(index, 0) << "no tab " << title;
        ClickButton(m_dlg.GetFrame()->GetTab(index));
    }

    void FillPatient(const char* mrn, const char* last = "Walker", const char* first = "Wanda")
    {
        Tab("Patient");
        m_driver.ReplaceText(IDC_PAT_MRN, mrn);
        m_driver.ReplaceText(IDC_PAT_LAST, last);
        m_driver.ReplaceText(IDC_PAT_FIRST, first);
    }
    void FillExam(const char* accession, const char* code = "CTHEAD")
    {
        Tab("Exam");
        m_driver.ReplaceText(IDC_EXAM_ACCESSION, accession);
        EnterExamCode(code);
    }
    // Types the code into its picker and presses Enter (it is looked up).
    void EnterExamCode(const char* code)
    {
        Tab("Exam");
        auto* picker = m_driver.ItemAs<Picker>(IDC_EXAM_CODE);
        ASSERT_NE(picker, nullptr);
        ReplaceText(picker->Edit(), code);
        QTest::keyClick(picker->Edit(), Qt::Key_Return);
    }
    void Fill(const char* mrn, const char* accession)
    {
        FillPatient(mrn);
        FillExam(accession);
    }

    void ClickOK() { ClickButton(&m_dlg.GetFooter()->GetOKButton()); }
    void Cancel() { ClickButton(&m_dlg.GetFooter()->GetCancelButton()); }
    bool Open() const { return !m_dlg.HasEnded(); }
    std::vector<CString> HeaderLines() const
    {
        const CreatePatientAndExamDlg::Header* h = m_dlg.GetHeader();
        return {h->GetMRNLine(), h->GetPatientLine(), h->GetExamLine()};
    }

private:
    CreatePatientAndExamDlg& m_dlg;
    DialogDriver m_driver;
};

class CreatePatientAndExamTest : public ExamFixture
{
protected:
    // Runs the dialog on a new patient in NORTH; a script that leaves it open
    // ends with Cancel.
    int Run(const std::function<void(RegistrationForm&)>& script, const ExamDataSet& exam = ExamDataSet())
    {
        user->OnNextDialog([&](CDialog& dlg) {
            RegistrationForm f(dlg);
            script(f);
            if (!dlg.HasEnded())
                f.Cancel();
        });
        PatientDetailRecord patient;
        patient.SetOrganizationID("NORTH");
        return creator.DisplayDialog(patient, exam, nullptr);
    }
    int Patients(const std::string& mrn)
    {
        return Count("SELECT count(*) FROM patients WHERE mrn = '" + mrn + "'");
    }
    // The calls that save, as "Operation(key arguments)".
    static std::vector<std::string> Saves(const FaultyServices& faulty)
    {
        std::vector<std::string> saves;
        for (const ServiceCall& call : faulty.faults.Calls())
            if (call.operation == "CreatePatient" || call.operation == "ModifyPatient"
                || call.operation == "CreateExam" || call.operation == "DeletePatient")
                saves.push_back(call.ToString());
        return saves;
    }

    TavCreator::CreatePatientAndExamDlgCreator creator;
};

TEST_F(CreatePatientAndExamTest, OpensAt830By700WithThePatientTabActiveBeforeTheExamTab)
{
    std::vector<CString> tabs;
    CString caption, active;
    QSize size;
    EXPECT_EQ(IDCANCEL, Run([&](RegistrationForm& f) {
                  tabs = f.TabTitles();
                  active = f.ActiveTab();
                  caption = f.Dlg().GetWindowText();
                  size = f.Dlg().size();
              }));
    EXPECT_EQ(tabs, (std::vector<CString>{"Patient", "Exam"}));
    EXPECT_STREQ(active, "Patient");
    EXPECT_STREQ(caption, "Create Patient and Exam");
    EXPECT_EQ(size, QSize(830, 700));
    EXPECT_EQ(creator.GetExamDataSet(), nullptr);
}

TEST_F(CreatePatientAndExamTest, TheHeaderFollowsThePatientAndTheExamAsTheyAreTyped)
{
    std::vector<CString> atStart, typed;
    Run([&](RegistrationForm& f) {
        atStart = f.HeaderLines();
        f.Fill("W-1", "ACC9");
        typed = f.HeaderLines();
    });
    ASSERT_EQ(atStart.size(), 3u);
    EXPECT_STREQ(atStart[0], "MRN: N/A");
    EXPECT_STREQ(atStart[2], "Accession #: N/A");
    EXPECT_STREQ(typed[0], "MRN: W-1");
    EXPECT_EQ(typed[1].Find("Walker"), 0) << typed[1].GetString();
    EXPECT_NE(typed[1].Find(", NORTH"), -1) << typed[1].GetString();
    EXPECT_STREQ(typed[2], "Accession #: ACC9");
}

TEST_F(CreatePatientAndExamTest, TheExamIsMadeInThePatientsOrganizationAndFollowsItsChange)
{
    CString shown;
    Run([&](RegistrationForm& f) {
        f.Driver().Choose(IDC_PAT_ORGANIZATION, "SOUTH");
        f.Tab("Exam");
        shown = f.Driver().Text(IDC_EXAM_ORGANIZATION);
        EXPECT_STREQ(f.Dlg().GetExamDataSet().GetOrganizationKey().c_str(), m_south.c_str());
    });
    EXPECT_STREQ(shown, "SOUTH");
}

// ---- OK, step by step

TEST_F(CreatePatientAndExamTest, OkCreatesThePatientThenTheExamForItAndHandsTheExamBack)
{
    FaultyServices faulty;
    ASSERT_EQ(IDOK, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "ACC1");
                  f.ClickOK();
              }));
    const std::string patient = Text("SELECT patient_key FROM patients WHERE mrn = 'W-1'");
    EXPECT_EQ(Saves(faulty), (std::vector<std::string>{"CreatePatient(W-1," + m_north + ")",
                                                        "CreateExam(ACC1," + patient + ")"}));
    ExamDataSet* exam = creator.GetExamDataSet();
    ASSERT_NE(exam, nullptr);
    EXPECT_STREQ(exam->GetPatientKey().c_str(), patient.c_str());
    EXPECT_EQ(Text("SELECT patient_key || '/' || org_key FROM exams WHERE exam_key = '" + std::string(exam->GetKey().c_str()) + "'"),
              patient + "/" + m_north);
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(CreatePatientAndExamTest, ACopiedCreatorHoldsItsOwnExamAndALaterRunReplacesTheResult)
{
    ASSERT_EQ(IDOK, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "ACC1");
                  f.ClickOK();
              }));
    TavCreator::CreatePatientAndExamDlgCreator copy = creator;
    ASSERT_NE(copy.GetExamDataSet(), nullptr);
    EXPECT_NE(copy.GetExamDataSet(), creator.GetExamDataSet());
    ASSERT_EQ(IDOK, Run([](RegistrationForm& f) {
                  f.Fill("W-2", "ACC2");
                  f.ClickOK();
              }));
    EXPECT_STREQ(creator.GetExamDataSet()->GetAccessionNumber().c_str(), "ACC2");
    EXPECT_STREQ(copy.GetExamDataSet()->GetAccessionNumber().c_str(), "ACC1");
    copy = creator;
    EXPECT_STREQ(copy.GetExamDataSet()->GetAccessionNumber().c_str(), "ACC2");
}

TEST_F(CreatePatientAndExamTest, AnInvalidPatientStopsOkOnThePatientTabBeforeAnythingIsSaved)
{
    FaultyServices faulty;
    user->ExpectMessage("MRN cannot be empty.");
    CString active;
    Run([&](RegistrationForm& f) {
        f.Fill("", "ACC1");
        f.ClickOK();
        active = f.ActiveTab();
        EXPECT_TRUE(f.Open());
    });
    EXPECT_STREQ(active, "Patient");
    EXPECT_TRUE(Saves(faulty).empty());
}

TEST_F(CreatePatientAndExamTest, APatientFieldRefusedFromTheExamTabGetsTheFocusOnThePatientTab)
{
    user->ExpectMessage("Future date for \"Date of Birth\" is invalid.");
    bool focused = false;
    Run([&](RegistrationForm& f) {
        f.FillPatient("W-1");
        f.Driver().ItemAs<DatePickerCtrl>(IDC_PAT_DOB)->SetDate(QDate::currentDate().addDays(2));
        f.FillExam("ACC1");
        f.ClickOK();
        QWidget* dob = f.Driver().Item(IDC_PAT_DOB);
        QWidget* focus = QApplication::focusWidget();
        focused = focus && (focus == dob || dob->isAncestorOf(focus));
    });
    EXPECT_TRUE(focused);
    EXPECT_EQ(Patients("W-1"), 0);
}

TEST_F(CreatePatientAndExamTest, AnInvalidExamStopsOkOnTheExamTabBeforeThePatientIsSaved)
{
    FaultyServices faulty;
    user->ExpectMessage("Accession number cannot be empty.");
    CString active;
    Run([&](RegistrationForm& f) {
        f.Fill("W-1", "");
        f.Tab("Patient");
        f.ClickOK();
        active = f.ActiveTab();
        EXPECT_TRUE(f.Open());
    });
    EXPECT_STREQ(active, "Exam");
    EXPECT_TRUE(Saves(faulty).empty());
    EXPECT_EQ(Patients("W-1"), 0);
}

TEST_F(CreatePatientAndExamTest, APatientTheServiceRefusesSilentlyStopsOkWithoutAMessageOrAnExam)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreatePatient", 6);
    Run([](RegistrationForm& f) {
        f.Fill("W-1", "ACC1");
        f.ClickOK();
        EXPECT_TRUE(f.Open());
    });
    EXPECT_EQ(Saves(faulty), (std::vector<std::string>{"CreatePatient(W-1," + m_north + ")"}));
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(CreatePatientAndExamTest, APatientCreateThatThrowsIsReportedWithItsReasonAfterTellingTheErrorManager)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("CreatePatient", "the archive is busy");
    Framework::ErrorManager::Instance().ResetCounters();
    user->ExpectMessage("Error creating Patient ID W-1.  Reason: the archive is busy");
    EXPECT_EQ(IDCANCEL, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "ACC1");
                  f.ClickOK();
                  EXPECT_TRUE(f.Open());
              }));
    EXPECT_EQ(Framework::ErrorManager::Instance().GetCommunicationSuccessCount(), 1);
    EXPECT_EQ(faulty.faults.Count("CreateExam"), 0);
    EXPECT_EQ(faulty.faults.Count("DeletePatient"), 0);
}

TEST_F(CreatePatientAndExamTest, ARefusedExamKeepsTheDialogOpenAndASecondOkModifiesThePatientInsteadOfCreatingIt)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreateExam", 9, 1);
    bool openAfterFirst = false;
    ASSERT_EQ(IDOK, Run([&](RegistrationForm& f) {
                  f.Fill("W-1", "ACC1");
                  f.ClickOK();
                  openAfterFirst = f.Open();
                  EXPECT_FALSE(f.Dlg().GetCreatedPatientKey().IsEmpty());
                  f.FillExam("ACC2");
                  f.ClickOK();
              }));
    EXPECT_TRUE(openAfterFirst);
    const std::string patient = Text("SELECT patient_key FROM patients WHERE mrn = 'W-1'");
    EXPECT_EQ(Saves(faulty), (std::vector<std::string>{"CreatePatient(W-1," + m_north + ")",
                                                        "CreateExam(ACC1," + patient + ")",
                                                        "ModifyPatient(" + patient + ",W-1)",
                                                        "CreateExam(ACC2," + patient + ")"}));
    EXPECT_EQ(Patients("W-1"), 1);
    EXPECT_EQ(Count("SELECT count(*) FROM exams WHERE accession = 'ACC2' AND patient_key = '" + patient + "'"), 1);
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(CreatePatientAndExamTest, OnceThePatientExistsItsOrganizationCanNoLongerBeChanged)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreateExam", 9);
    bool before = false, after = true;
    Run([&](RegistrationForm& f) {
        f.Fill("W-1", "ACC1");
        before = f.Driver().IsEnabled(IDC_PAT_ORGANIZATION);
        f.ClickOK();
        after = f.Driver().IsEnabled(IDC_PAT_ORGANIZATION);
    });
    EXPECT_TRUE(before);
    EXPECT_FALSE(after);
}

TEST_F(CreatePatientAndExamTest, AnExamCreateThatThrowsIsReportedWithTheAccessionNumber)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("CreateExam", "connection lost", 1);
    Framework::ErrorManager::Instance().ResetCounters();
    user->ExpectMessage("Error creating exam with Accession Number ACC1.  Reason: connection lost");
    Run([](RegistrationForm& f) {
        f.Fill("W-1", "ACC1");
        f.ClickOK();
        EXPECT_TRUE(f.Open());
        f.Cancel();
    });
    EXPECT_EQ(Framework::ErrorManager::Instance().GetCommunicationSuccessCount(), 1);
    EXPECT_EQ(Patients("W-1"), 0) << "the cancelled registration took its patient back";
}

TEST_F(CreatePatientAndExamTest, APatientModificationThatThrowsOnTheSecondOkIsReportedWithTheUpdateText)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreateExam", 9, 1);
    faulty.faults.ThrowOn("ModifyPatient", "record locked");
    Framework::ErrorManager::Instance().ResetCounters();
    user->ExpectMessage("Error updating Patient ID W-1.  Reason: record locked");
    Run([](RegistrationForm& f) {
        f.Fill("W-1", "ACC1");
        f.ClickOK();
        f.ClickOK();
        EXPECT_TRUE(f.Open());
    });
    EXPECT_EQ(faulty.faults.Count("CreateExam"), 1);
    EXPECT_EQ(Framework::ErrorManager::Instance().GetCommunicationSuccessCount(), 1);
}

// An exam service that hands back a key and still refuses.
class KeyThenRefuse : public FaultyExamService
{
public:
    using FaultyExamService::FaultyExamService;
    int CreateExam(ExamDataSet*, ACE_CString& key) override
    {
        keysIn.push_back(key.c_str());
        key = "HALF-MADE";
        return 4;
    }
    std::vector<std::string> keysIn;
};

TEST_F(CreatePatientAndExamTest, TheExamKeyTheServiceAnswersIsKeptWhateverTheResultAndGoesInAgain)
{
    ServiceFaults faults;
    KeyThenRefuse exams(Session::ServiceInstance()->GetExamService(), faults);
    ScopedServices scope;
    scope.Exams(&exams);
    ACE_CString afterFirst;
    Run([&](RegistrationForm& f) {
        f.Fill("W-1", "ACC1");
        f.ClickOK();
        afterFirst = f.Dlg().GetExamDataSet().GetKey();
        f.ClickOK();
        EXPECT_TRUE(f.Open());
    });
    EXPECT_STREQ(afterFirst.c_str(), "HALF-MADE");
    EXPECT_EQ(exams.keysIn, (std::vector<std::string>{"", "HALF-MADE"}));
}

TEST_F(CreatePatientAndExamTest, TheAccessionLengthRuleOfTheExamDialogDoesNotApplyHere)
{
    // The field takes 20 as typed; a longer number arrives in the host's record
    // and goes to the service as it is, with no refusal of the dialog's own.
    const std::string accession(21, '1');
    ExamDataSet given;
    given.SetAccessionNumber(accession.c_str());
    FaultyServices faulty;
    faulty.faults.FailOn("CreateExam", 5);
    std::string patient;
    Run([&](RegistrationForm& f) {
        f.FillPatient("W-1");
        f.EnterExamCode("CTHEAD");
        f.ClickOK();
        EXPECT_TRUE(f.Open());
        patient = f.Dlg().GetCreatedPatientKey().GetString();
    },
        given);
    ASSERT_EQ(faulty.faults.Count("CreateExam"), 1);
    EXPECT_EQ(Saves(faulty)[1], "CreateExam(" + accession + "," + patient + ")");
    EXPECT_TRUE(user->Messages().empty());
}

// ---- Cancel

TEST_F(CreatePatientAndExamTest, CancelBeforeAnyOkDeletesNothing)
{
    FaultyServices faulty;
    const auto before = Snapshot();
    EXPECT_EQ(IDCANCEL, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "ACC1");
                  f.Cancel();
              }));
    EXPECT_TRUE(Saves(faulty).empty());
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(CreatePatientAndExamTest, CancelAfterARefusedExamDeletesTheNewPatientWithTheReason)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreateExam", 9);
    EXPECT_EQ(IDCANCEL, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "ACC1");
                  f.ClickOK();
                  f.Cancel();
              }));
    const std::vector<std::string> saves = Saves(faulty);
    ASSERT_EQ(saves.size(), 3u);
    const std::string patient = Text("SELECT subject_key FROM journal WHERE operation = 'delete-patient'");
    EXPECT_EQ(saves[2], "DeletePatient(" + patient + "," + m_north + "," + kCancelReason + ")");
    EXPECT_EQ(Patients("W-1"), 0);
    EXPECT_TRUE(user->Messages().empty());
    EXPECT_EQ(creator.GetExamDataSet(), nullptr);
}

TEST_F(CreatePatientAndExamTest, EscapeRunsTheSameCancel)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreateExam", 9);
    EXPECT_EQ(IDCANCEL, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "ACC1");
                  f.ClickOK();
                  f.Dlg().OnCancel();
              }));
    EXPECT_EQ(faulty.faults.Count("DeletePatient"), 1);
    EXPECT_EQ(Patients("W-1"), 0);
}

TEST_F(CreatePatientAndExamTest, AFailedOrThrowingDeleteOnCancelShowsNothingAndStillCancels)
{
    for (const bool throws : {false, true}) {
        FaultyServices faulty;
        faulty.faults.FailOn("CreateExam", 9);
        if (throws)
            faulty.faults.ThrowOn("DeletePatient", "gone away");
        else
            faulty.faults.FailOn("DeletePatient", 3);
        const std::string mrn = throws ? "W-T" : "W-F";
        EXPECT_EQ(IDCANCEL, Run([&](RegistrationForm& f) {
                      f.Fill(mrn.c_str(), throws ? "ACC-T" : "ACC-F");
                      f.ClickOK();
                      f.Cancel();
                  }));
        EXPECT_EQ(faulty.faults.Count("DeletePatient"), 1);
        EXPECT_EQ(Patients(mrn), 1) << "the refused delete left it";
    }
    EXPECT_TRUE(user->Messages().empty());
}

// ---- against the archive alone

TEST_F(CreatePatientAndExamTest, AnAccessionTakenInTheOrganizationIsRefusedReadablyAndCorrectedOnTheSamePatient)
{
    SavedExam("TAKEN-1");
    user->ExpectMessage();
    ASSERT_EQ(IDOK, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "TAKEN-1");
                  f.ClickOK();
                  EXPECT_TRUE(f.Open());
                  f.FillExam("FREE-1");
                  f.ClickOK();
              }));
    ASSERT_EQ(user->Messages().size(), 1u);
    const CString refusal = user->Messages()[0].text;
    EXPECT_EQ(refusal.Find("Error creating exam with Accession Number TAKEN-1.  Reason: "), 0) << refusal.GetString();
    EXPECT_EQ(refusal.Find("SQL"), -1) << refusal.GetString();
    EXPECT_EQ(Patients("W-1"), 1);
    const std::string patient = Text("SELECT patient_key FROM patients WHERE mrn = 'W-1'");
    EXPECT_EQ(Text("SELECT accession || '/' || exam_code FROM exams WHERE patient_key = '" + patient + "'"),
              "FREE-1/CTHEAD");
    EXPECT_STREQ(creator.GetExamDataSet()->GetPatientKey().c_str(), patient.c_str());
}

TEST_F(CreatePatientAndExamTest, ACancelledRegistrationLeavesNoPatientButKeepsWhoWithdrewItAndWhy)
{
    SavedExam("TAKEN-1");
    user->ExpectMessage();
    EXPECT_EQ(IDCANCEL, Run([](RegistrationForm& f) {
                  f.Fill("W-1", "TAKEN-1");
                  f.ClickOK();
                  f.Cancel();
              }));
    EXPECT_EQ(Patients("W-1"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM exams"), 1) << "only the exam that was there";
    EXPECT_EQ(Text("SELECT user_name || '/' || reason || '/' || (length(at) > 0) FROM journal "
                   "WHERE operation = 'delete-patient'"),
              std::string("admin/") + kCancelReason + "/1");
    EXPECT_EQ(Count("SELECT count(*) FROM journal_images WHERE table_name = 'patients'"), 1);
}

// One picture per tab (written only with BRAVIK_SCREENSHOTS set).
TEST_F(CreatePatientAndExamTest, EveryTabCanBeShown)
{
    std::vector<CString> shown;
    Run([&](RegistrationForm& f) {
        f.Fill("W-1", "ACC1");
        for (const char* tab : {"Patient", "Exam"}) {
            f.Tab(tab);
            f.Driver().Screenshot((std::string("create_patient_and_exam_tab_") + (tab[0] == 'P' ? "patient" : "exam")).c_str());
            shown.push_back(f.ActiveTab());
        }
    });
    EXPECT_EQ(shown, (std::vector<CString>{"Patient", "Exam"}));
}

} // namespace
