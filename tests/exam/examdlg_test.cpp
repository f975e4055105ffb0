// The exam dialog's frame and its creator: modes, tabs, header lines, the OK
// rule, the accession length quirk, and what each service answer leads to.
#include "examfixture.h"

#include "boundary/examdlgcreator.h"
#include "exam/examdetailspage.h"
#include "exam/examdlg.h"

#include "dialogdriver.h"
#include "faultyservices.h"

#include "errormanager.h"
#include "examservice.h"
#include "providerrecord.h"
#include "orgoperationscollection.h"
#include "serviceregistry.h"
#include "session.h"

#include "edit.h"
#include "stringtable.h"
#include "hftabbeddlg.h"

#include <cctype>

#include <QApplication>

namespace {

class ExamDlgTest : public ExamFixture
{
};

const char* const kInfo = "Info";

TEST_F(ExamDlgTest, ANewExamForAPatientOpensCreateExamWithThreeTabsAndTheInfoTabActive)
{
    std::vector<CString> tabs;
    CString caption, active;
    user->OnNextDialog(
        [&](CDialog& dlg) {
            ExamForm form(dlg);
            caption = dlg.GetWindowText();
            tabs = form.TabTitles();
            active = form.ActiveTab();
            EXPECT_EQ(dlg.width(), ExamDlg::kWidth);
            EXPECT_EQ(dlg.height(), ExamDlg::kHeight);
            form.Cancel();
        });
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg(m_patient.c_str(), "", nullptr), IDCANCEL);
    EXPECT_STREQ(caption, "Create Exam");
    EXPECT_EQ(tabs, (std::vector<CString>{kInfo, "Providers", "History"}));
    EXPECT_STREQ(active, kInfo);
    EXPECT_EQ(creator.GetExamDataSet(), nullptr);
}

TEST_F(ExamDlgTest, AnExistingExamOpensEditExamWithALinksTabAndAuditsTheOpeningWithCode50)
{
    const std::string exam = SavedExam("ACC1");
    const auto before = AuditRows().size();
    std::vector<CString> tabs;
    CString caption;
    user->OnNextDialog(
        [&](CDialog& dlg) {
            ExamForm form(dlg);
            caption = dlg.GetWindowText();
            tabs = form.TabTitles();
            form.Cancel();
        });
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDCANCEL);
    EXPECT_STREQ(caption, "Edit Exam");
    EXPECT_EQ(tabs, (std::vector<CString>{kInfo, "Providers", "History", "Links"}));
    const auto rows = AuditRows();
    ASSERT_EQ(rows.size(), before + 1);
    EXPECT_EQ(rows.back(), std::make_pair(50, exam));
}

TEST_F(ExamDlgTest, CreatingAnExamWritesNoOpeningAudit)
{
    const auto before = AuditRows();
    user->OnNextDialog([](CDialog& dlg) { ExamForm(dlg).Cancel(); });
    TavCreator::ExamDlgCreator creator;
    creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
    EXPECT_EQ(AuditRows(), before);
}

TEST_F(ExamDlgTest, TheHeaderShowsTheExamLineAndThePatientLine)
{
    CString examLine, patientLine;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        examLine = form.ExamLine();
        patientLine = form.PatientLine();
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
    EXPECT_STREQ(examLine, "Accession #: N/A");
    EXPECT_STREQ(patientLine, "Smith, Ann, MRN100, Female, January 1, 1970, NORTH");
}

TEST_F(ExamDlgTest, TheExamLineFollowsTheAccessionNumberAsItIsTyped)
{
    CString examLine;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("ACC77");
        examLine = form.ExamLine();
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
    EXPECT_STREQ(examLine, "Accession #: ACC77");
}

TEST_F(ExamDlgTest, InEditModeThePatientShownIsTheExamsOwnWhateverKeyTheCallerGave)
{
    const std::string exam = SavedExam("ACC1");
    CString patientLine;
    ACE_CString examPatient;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        patientLine = form.PatientLine();
        examPatient = form.Exam().GetPatientKey();
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg(m_otherPatient.c_str(), exam.c_str(), nullptr), IDCANCEL);
    EXPECT_EQ(patientLine.Find("Smith, Ann"), 0);
    EXPECT_STREQ(examPatient.c_str(), m_patient.c_str());
}

TEST_F(ExamDlgTest, AValidExamKeyWithAnUnknownPatientKeyStillOpens)
{
    const std::string exam = SavedExam("ACC1");
    user->OnNextDialog([](CDialog& dlg) { ExamForm(dlg).Cancel(); });
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg("NO-SUCH-PATIENT", exam.c_str(), nullptr), IDCANCEL);
    EXPECT_EQ(user->Dialogs().size(), 1u);
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(ExamDlgTest, AnExamThatCannotBeLoadedIsReportedAndTheDialogNeverOpens)
{
    user->ExpectMessage("Error accessing exam data: The exam data might have been deleted.");
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg(m_patient.c_str(), "NO-SUCH-EXAM", nullptr), IDCANCEL);
    EXPECT_TRUE(user->Dialogs().empty());
}

TEST_F(ExamDlgTest, APatientThatCannotBeLoadedIsReportedAndTheDialogNeverOpens)
{
    user->ExpectMessage("Error accessing patient data: The patient data might have been deleted or merged.");
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg("NO-SUCH-PATIENT", "", nullptr), IDCANCEL);
    EXPECT_TRUE(user->Dialogs().empty());
}

TEST_F(ExamDlgTest, OkIsEnabledOnlyOnceAccessionPriorityAndExamCodeAreThere)
{
    bool atStart = true, withAccession = true, withCode = false;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        atStart = form.OKEnabled();
        form.TypeAccession("ACC1");
        withAccession = form.OKEnabled();
        form.TypeInPicker(IDC_EXAM_CODE, "CTHEAD");
        form.EnterInPicker(IDC_EXAM_CODE);
        withCode = form.OKEnabled();
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
    EXPECT_FALSE(atStart);
    EXPECT_FALSE(withAccession); // a new exam needs its exam code
    EXPECT_TRUE(withCode);
}

TEST_F(ExamDlgTest, ANewExamTakesItsOrganizationsStatusForNewOrders)
{
    ArchiveBuilder::OrgFields fields{"CLINIC", "Clinic"};
    fields.newExamStatus = "CM";
    const std::string clinic = Build().Org(fields);
    Build().Grant("admin", clinic, true, true, true);
    const std::string patient = Build().Patient(clinic, "C1", "Clinic", "Carl", "M", "19600101", "");
    Session::ServiceInstance()->GetOrgOperationsCollection()->GetOrgFromKey(clinic.c_str());
    ACE_CString status;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        status = form.Exam().GetStatusCode();
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    creator.DisplayExamDlg(patient.c_str(), "", nullptr);
    EXPECT_STREQ(status.c_str(), "CM");
}

// ---- OK: the accession length, the service answers

ScriptedUser::DialogScript FillNewExam(const QString& accession)
{
    return [accession](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession(accession);
        form.TypeInPicker(IDC_EXAM_CODE, "CTHEAD");
        form.EnterInPicker(IDC_EXAM_CODE);
        form.ClickOK();
    };
}

// Fills a new exam as ACC1 and presses OK; true when the dialog stayed open
// (it is then cancelled).
bool RunNewExamOk(ScriptedUser& user, const std::string& patient)
{
    bool ended = true;
    user.OnNextDialog([&](CDialog& dlg) {
        FillNewExam("ACC1")(dlg);
        ended = dlg.GetModalResult() != -1;
        ExamForm(dlg).Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    return creator.DisplayExamDlg(patient.c_str(), "", nullptr) == IDCANCEL && !ended;
}

TEST_F(ExamDlgTest, AnAccessionNumberOfTwentyCharactersIsAcceptedOnCreate)
{
    user->OnNextDialog(FillNewExam(QString(20, QChar('7'))));
    TavCreator::ExamDlgCreator creator;
    ASSERT_EQ(creator.DisplayExamDlg(m_patient.c_str(), "", nullptr), IDOK);
    EXPECT_EQ(creator.GetExamDataSet()->GetAccessionNumber().length(), 20u);
}

TEST_F(ExamDlgTest, TwentyOneCharactersAreRefusedOnCreateWithTheSixteenCharacterReason)
{
    // The field takes 20 as typed; a longer number arrives in the host's record.
    ExamDataSet given;
    given.SetAccessionNumber(std::string(21, '1').c_str());
    given.SetPriorityCode("R");
    given.SetExamCode("CTHEAD");
    given.SetExamCodeKey(m_ctHead.c_str());
    bool ended = true;
    int selected = 0;
    user->ExpectMessage("Error creating exam with Accession Number 111111111111111111111.  Reason: Exceeds max "
                        "limit of 16 characters.");
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.ClickOK();
        ended = dlg.GetModalResult() != -1;
        int start = 0, end = 0;
        form.Info().GetAccessionEdit()->GetSel(start, end);
        selected = end - start;
        form.Cancel();
    });
    FaultyServices faulty;
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg(m_patient.c_str(), given, "", nullptr), IDCANCEL);
    EXPECT_FALSE(ended);
    EXPECT_EQ(selected, 21);
    EXPECT_EQ(faulty.faults.Count("CreateExam"), 0);
}

TEST_F(ExamDlgTest, AnUpdateIsNotHeldToTheAccessionLength)
{
    const std::string exam = SavedExam("ACC1");
    FaultyServices faulty;
    faulty.faults.FailOn("UpdateExam", 9);
    ExamDataSet given = Stored(exam);
    given.SetAccessionNumber(std::string(21, '2').c_str());
    user->OnNextDialog([](CDialog& dlg) {
        ExamForm form(dlg);
        form.ClickOK();
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    creator.DisplayExamDlg("", given, exam.c_str(), nullptr);
    EXPECT_EQ(faulty.faults.Count("UpdateExam"), 1);
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(ExamDlgTest, ANonZeroAnswerFromTheServiceLeavesTheDialogOpenWithoutAMessage)
{
    FaultyServices faulty;
    faulty.faults.FailOn("CreateExam", 7);
    EXPECT_TRUE(RunNewExamOk(*user, m_patient));
    EXPECT_TRUE(user->Messages().empty());
    EXPECT_EQ(Count("SELECT count(*) FROM exams"), 0);
}

TEST_F(ExamDlgTest, AThrownCreateIsReportedWithItsReasonAfterTellingTheErrorManager)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("CreateExam", "the archive is busy");
    Framework::ErrorManager::Instance().ResetCounters();
    user->ExpectMessage("Error creating exam with Accession Number ACC1.  Reason: the archive is busy");
    EXPECT_TRUE(RunNewExamOk(*user, m_patient));
    EXPECT_EQ(Framework::ErrorManager::Instance().GetCommunicationSuccessCount(), 1);
}

TEST_F(ExamDlgTest, AThrownUpdateIsReportedWithTheUpdateText)
{
    const std::string exam = SavedExam("ACC1");
    FaultyServices faulty;
    faulty.faults.ThrowOn("UpdateExam", "connection lost");
    user->ExpectMessage("Error updating exam with Accession Number ACC1.  Reason: connection lost");
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm(dlg).ClickOK();
        ExamForm(dlg).Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDCANCEL);
}

TEST_F(ExamDlgTest, ACreatedExamComesBackWithItsNewKeyAndTheModeIsDecidedByTheKeyAlone)
{
    FaultyServices faulty;
    user->OnNextDialog(FillNewExam("ACC1"));
    TavCreator::ExamDlgCreator creator;
    ASSERT_EQ(creator.DisplayExamDlg(m_patient.c_str(), "", nullptr), IDOK);
    ExamDataSet* saved = creator.GetExamDataSet();
    ASSERT_NE(saved, nullptr);
    EXPECT_NE(saved->GetKey().length(), 0u);
    EXPECT_STREQ(saved->GetPatientKey().c_str(), m_patient.c_str());
    EXPECT_EQ(faulty.faults.Count("CreateExam"), 1);
    EXPECT_EQ(faulty.faults.Count("UpdateExam"), 0);
    EXPECT_EQ(Count("SELECT count(*) FROM exams WHERE accession = 'ACC1'"), 1);
}

TEST_F(ExamDlgTest, TheFormWithARecordPutsItOverTheLoadedExam)
{
    const std::string exam = SavedExam("ACC1");
    ExamDataSet given = Stored(exam);
    given.SetComments("from the host");
    CString comments;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        comments = form.Exam().GetComments().c_str();
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    creator.DisplayExamDlg(m_patient.c_str(), given, exam.c_str(), nullptr);
    EXPECT_STREQ(comments, "from the host");
}

TEST_F(ExamDlgTest, AKeyedFormKeepsTheEarlierResultAliveWhileTheKeylessFormReleasesIt)
{
    const std::string exam = SavedExam("ACC1");
    TavCreator::ExamDlgCreator creator;
    user->OnNextDialog([](CDialog& dlg) { ExamForm(dlg).ClickOK(); });
    ASSERT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDOK);
    ExamDataSet* first = creator.GetExamDataSet();
    user->OnNextDialog([](CDialog& dlg) { ExamForm(dlg).ClickOK(); });
    ASSERT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDOK);
    EXPECT_NE(creator.GetExamDataSet(), first);
    // The keyed form did not release it: the host's earlier pointer still reads.
    EXPECT_STREQ(first->GetAccessionNumber().c_str(), "ACC1");
}

TEST_F(ExamDlgTest, CancelReturnsTwoAndSavesNothingEvenAfterEdits)
{
    const std::string exam = SavedExam("ACC1");
    const auto before = Snapshot();
    user->OnNextDialog([](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("CHANGED");
        form.Cancel();
    });
    TavCreator::ExamDlgCreator creator;
    EXPECT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDCANCEL);
    EXPECT_EQ(creator.GetExamDataSet(), nullptr);
    user.reset(); // its checks first, then the archive's
    EXPECT_TRUE(AuditRows().back().first == 50);
}

TEST_F(ExamDlgTest, TheServicesAreCalledInTheOrderOfTheAlgorithm)
{
    const std::string exam = SavedExam("ACC1");
    FaultyServices faulty;
    user->OnNextDialog([](CDialog& dlg) { ExamForm(dlg).ClickOK(); });
    TavCreator::ExamDlgCreator creator;
    ASSERT_EQ(creator.DisplayExamDlg(exam.c_str(), nullptr), IDOK);
    const auto ops = faulty.faults.Operations();
    ASSERT_GE(ops.size(), 3u);
    EXPECT_EQ(ops[0], "GetExamDataSet");
    EXPECT_EQ(ops[1], "GetPatient");
    EXPECT_EQ(ops.back(), "UpdateExam");
}

} // namespace

namespace {

// One picture per tab and mode (written only with BRAVIK_SCREENSHOTS set).
TEST_F(ExamDlgTest, EveryTabCanBeShownInBothModes)
{
    const std::string a = SavedExam("ACC1"), b = SavedExam("ACC2");
    LinkExams(a, b);
    ExamDataSet e = Stored(a);
    ProviderRecord doctor;
    doctor.SetKey(m_doctor.c_str());
    doctor.SetProviderType(ProviderRecord::eREFERRING);
    e.AddProvider(doctor);
    e.SetHistory("Fell off a ladder two days ago.");
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
    Db().Handle().exec("UPDATE providers SET address1 = '221 Hospital Rd', city = 'Princeton', state_code = 'NJ', "
                       "postal_code = '08540', phone = '(555) 201-4455' WHERE provider_key = '" + m_doctor + "'");
    for (const bool editing : {false, true}) {
        std::vector<CString> shown;
        user->OnNextDialog([&](CDialog& dlg) {
            ExamForm form(dlg);
            DialogDriver d(dlg);
            const std::string mode = editing ? "edit" : "create";
            for (const CString& title : form.TabTitles()) {
                form.Dlg().GetFrame()->ActivatePage(title);
                std::string name = "exam_" + mode + "_tab_" + std::string(title.GetString());
                for (char& c : name)
                    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
                d.Screenshot(name.c_str());
                shown.push_back(form.ActiveTab());
            }
            form.Cancel();
        });
        TavCreator::ExamDlgCreator creator;
        if (editing)
            creator.DisplayExamDlg(a.c_str(), nullptr);
        else
            creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
        EXPECT_EQ(shown.size(), editing ? 4u : 3u);
    }
}

} // namespace
