// The Info tab: how it fills itself, Generate, the four pickers' pick and
// resolve paths, and OK's checks in their order.
#include "examfixture.h"

#include "boundary/examdlgcreator.h"
#include "exam/examdetailspage.h"
#include "exam/examdlg.h"

#include "dialogdriver.h"
#include "faultyservices.h"

#include "dictionarytopic.h"
#include "examservice.h"
#include "serviceregistry.h"
#include "session.h"

#include "ccombobox.h"
#include "datetimeeditctrl.h"
#include "picker.h"
#include "timeeditctrl.h"

namespace {

class ExamDetailsTest : public ExamFixture
{
protected:
    // Runs the creator for a new exam of the patient (or an existing exam) with the script.
    int RunNew(ScriptedUser::DialogScript script)
    {
        user->OnNextDialog(std::move(script));
        return creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
    }
    int RunEdit(const std::string& exam, ScriptedUser::DialogScript script)
    {
        user->OnNextDialog(std::move(script));
        return creator.DisplayExamDlg(exam.c_str(), nullptr);
    }
    TavCreator::ExamDlgCreator creator;
};

CString Selected(ExamForm& form)
{
    auto* box = DialogDriver(form.Dlg()).ItemAs<CComboBox>(IDC_EXAM_PRIORITY);
    return box->GetCurSel() < 0 ? CString() : box->GetLBText(box->GetCurSel());
}

TEST_F(ExamDetailsTest, ANewExamStartsAtRoutineWhenTheSiteHasNoTodayPriority)
{
    CString priority;
    RunNew([&](CDialog& dlg) {
        ExamForm form(dlg);
        priority = Selected(form);
        form.Cancel();
    });
    EXPECT_STREQ(priority, "R-Routine");
}

TEST_F(ExamDetailsTest, ANewExamStartsAtTheTodayPriorityWhenThereIsOne)
{
    Build().Dictionary(DictionaryTopic::Priority, "_T", "Today", "", 3);
    Reinstall();
    CString priority;
    RunNew([&](CDialog& dlg) {
        ExamForm form(dlg);
        priority = Selected(form);
        form.Cancel();
    });
    EXPECT_STREQ(priority, "_T-Today");
}

TEST_F(ExamDetailsTest, AnExistingExamShowsItsOwnPriorityOrganizationAndStatusByFirstCharacter)
{
    Build().Dictionary(DictionaryTopic::DiagnosticImageStatus, "S", "Started");
    Build().Dictionary(DictionaryTopic::DiagnosticImageStatus, "SX", "Scheduled, images expected");
    Reinstall();
    const std::string exam = SavedExam("ACC1");
    CString priority, org, status;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        priority = Selected(form);
        org = form.Text(IDC_EXAM_ORGANIZATION);
        status = form.Text(IDC_EXAM_STATUS);
        form.Cancel();
    });
    EXPECT_STREQ(priority, "S-STAT");
    EXPECT_STREQ(org, "NORTH");
    // "SC" matches both entries starting with 'S'; the last one wins.
    EXPECT_STREQ(status, "Scheduled, images expected");
}

TEST_F(ExamDetailsTest, ANewExamIsNotPerformedAndItsScheduledTimeIsEditable)
{
    CString performed;
    bool performedEnabled = true, timeShown = true, scheduledEnabled = false;
    ACE_CString savedKey;
    RunNew([&](CDialog& dlg) {
        ExamForm form(dlg);
        performed = form.Text(IDC_EXAM_PERFORMED_DATE);
        performedEnabled = form.Enabled(IDC_EXAM_PERFORMED_DATE);
        timeShown = form.Shown(IDC_EXAM_PERFORMED_TIME);
        scheduledEnabled = form.Enabled(IDC_EXAM_SCHEDULED_DATE) && form.Enabled(IDC_EXAM_SCHEDULED_TIME);
        form.TypeAccession("ACC1");
        form.TypeInPicker(IDC_EXAM_CODE, "CTHEAD");
        form.EnterInPicker(IDC_EXAM_CODE);
        form.ClickOK();
    });
    EXPECT_STREQ(performed, "Not performed");
    EXPECT_FALSE(performedEnabled);
    EXPECT_FALSE(timeShown);
    EXPECT_TRUE(scheduledEnabled);
    ASSERT_NE(creator.GetExamDataSet(), nullptr);
    EXPECT_FALSE(creator.GetExamDataSet()->GetPerformedDT().IsValid());
    EXPECT_TRUE(creator.GetExamDataSet()->GetScheduledDT().IsValid());
}

TEST_F(ExamDetailsTest, AnExistingExamKeepsItsScheduledControlsDisabledAndStillWritesWhatTheyShow)
{
    const std::string exam = SavedExam("ACC1");
    bool enabled = true;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        enabled = form.Enabled(IDC_EXAM_SCHEDULED_DATE) || form.Enabled(IDC_EXAM_SCHEDULED_TIME);
        form.ClickOK();
    });
    EXPECT_FALSE(enabled);
    EXPECT_EQ(Stored(exam).GetScheduledDT(), BDateTime(BDate(2024, 3, 4), BTime(9, 30, 0)));
}

TEST_F(ExamDetailsTest, APerformedExamCanHaveItsPerformedTimeCorrected)
{
    const std::string exam = SavedExam("ACC1");
    ExamDataSet e = Stored(exam);
    e.SetPerformedDT(BDateTime(BDate(2024, 3, 4), BTime(10, 0, 0)));
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
    bool enabled = false;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        enabled = form.Enabled(IDC_EXAM_PERFORMED_DATE) && form.Shown(IDC_EXAM_PERFORMED_TIME);
        form.TypeText(IDC_EXAM_PERFORMED_DATE, "03/05/2024");
        form.ClickOK();
    });
    EXPECT_TRUE(enabled);
    EXPECT_EQ(Stored(exam).GetPerformedDT().ToLocal().GetDate().GetDay(), 5u);
}

TEST_F(ExamDetailsTest, APerformedDateThatIsNotADateIsRefusedWithTheControlsMessage)
{
    const std::string exam = SavedExam("ACC1");
    ExamDataSet e = Stored(exam);
    e.SetPerformedDT(BDateTime(BDate(2024, 3, 4), BTime(10, 0, 0)));
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
    CString expected;
    bool ended = true;
    user->ExpectMessage(IDOK);
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        expected = DialogDriver(dlg).ItemAs<DateTimeEditCtrl>(IDC_EXAM_PERFORMED_DATE)->GetInvalidDateMessage();
        form.TypeText(IDC_EXAM_PERFORMED_DATE, "yesterday");
        form.ClickOK();
        ended = dlg.GetModalResult() != -1;
        form.Cancel();
    });
    EXPECT_FALSE(ended);
    ASSERT_EQ(user->Messages().size(), 1u);
    EXPECT_STREQ(user->Messages()[0].text, expected);
}

TEST_F(ExamDetailsTest, OkChecksAccessionFirstAndStaysOnTheInfoTab)
{
    const std::string exam = SavedExam("ACC1");
    CString active;
    user->ExpectMessage("Accession number cannot be empty.");
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Tab(IDS_TAB_HISTORY);
        form.Tab(IDS_TAB_INFO);
        form.TypeAccession("   ");
        form.Tab(IDS_TAB_HISTORY);
        form.ClickOK();
        active = form.ActiveTab();
        form.Cancel();
    });
    EXPECT_STREQ(active, "Info");
}

TEST_F(ExamDetailsTest, AnAccessionNumberIsStoredWithoutItsSurroundingBlanks)
{
    const std::string exam = SavedExam("ACC1");
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("  ACC9  ");
        form.ClickOK();
    });
    EXPECT_STREQ(Stored(exam).GetAccessionNumber().c_str(), "ACC9");
}

TEST_F(ExamDetailsTest, AnExamWithoutPriorityIsRefusedAfterTheAccession)
{
    const std::string exam = SavedExam("ACC1");
    ExamDataSet e = Stored(exam);
    e.SetPriorityCode("");
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
    // A site whose priority list has nothing to fall back on.
    Db().Handle().exec("DELETE FROM dictionary WHERE topic = " + std::to_string(DictionaryTopic::Priority));
    Reinstall();
    user->ExpectMessage("Exam Priority cannot be empty.");
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        dlg.OnOK();
        form.Cancel();
    });
}

TEST_F(ExamDetailsTest, ANewExamNeedsItsExamCodeAndTheMessageHasNoFullStop)
{
    user->ExpectMessage("Exam Code cannot be empty");
    bool ended = true;
    RunNew([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("ACC1");
        dlg.OnOK();
        ended = dlg.GetModalResult() != -1;
        form.Cancel();
    });
    EXPECT_FALSE(ended);
}

TEST_F(ExamDetailsTest, AnExistingExamThatNeverHadAnExamCodeMaySaveWithoutOne)
{
    const std::string exam = SavedExam("ACC1", std::string(), false);
    RunEdit(exam, [&](CDialog& dlg) { ExamForm(dlg).ClickOK(); });
    EXPECT_EQ(Stored(exam).GetExamCode().length(), 0u);
    EXPECT_EQ(user->Messages().size(), 0u);
}

TEST_F(ExamDetailsTest, GenerateFillsTheAccessionNumberFromTheOrganizationsCounter)
{
    ArchiveBuilder::OrgFields fields{"IMG", "Imaging"};
    fields.generatesAcc = true;
    fields.accPrefix = "IMG";
    const std::string org = Build().Org(fields);
    Build().Grant("admin", org, true, true, true);
    const std::string patient = Build().Patient(org, "I1", "Imaging", "Ida", "F", "19900101", "");
    CString accession, examLine;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.Generate();
        accession = form.Text(IDC_EXAM_ACCESSION);
        examLine = form.ExamLine();
        form.Cancel();
    });
    creator.DisplayExamDlg(patient.c_str(), "", nullptr);
    EXPECT_EQ(accession.Find("IMG"), 0);
    EXPECT_STREQ(examLine, CString("Accession #: ") + accession);
}

TEST_F(ExamDetailsTest, AFailedGenerateSaysSoAndLeavesTheAccessionAsItWas)
{
    FaultyServices faulty;
    faulty.faults.FailOn("GetAutogeneratedACC", 6);
    user->ExpectMessage("Error generating accession number.");
    CString accession;
    RunNew([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeAccession("MINE");
        form.Generate();
        accession = form.Text(IDC_EXAM_ACCESSION);
        form.Cancel();
    });
    EXPECT_STREQ(accession, "MINE");
}

TEST_F(ExamDetailsTest, PickingAnExamCodeFillsModalityDescriptionAndBodyPart)
{
    CString code, modality, description, bodyPart, search;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeInPicker(IDC_EXAM_CODE, "cth");
        user->OnNextDialog(
            [&](CDialog& picker) {
                search = PickerForm(picker).SearchText();
                ChooseInPicker("CTHEAD", 1)(picker);
            },
            "exam_picker_exam_codes");
        form.Pick(IDC_EXAM_CODE);
        code = form.Text(IDC_EXAM_CODE);
        modality = form.Text(IDC_EXAM_MODALITY);
        description = form.Text(IDC_EXAM_DESCRIPTION);
        bodyPart = form.Text(IDC_EXAM_BODY_PART);
        form.Cancel();
    });
    creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
    EXPECT_STREQ(search, "cth");
    EXPECT_STREQ(code, "CTHEADW");
    EXPECT_STREQ(modality, "CT");
    EXPECT_STREQ(description, "CT HEAD WITH CONTRAST");
    EXPECT_STREQ(bodyPart, "HEAD");
}

TEST_F(ExamDetailsTest, ACancelledExamCodePickerFallsBackToTheTypedCode)
{
    CString description;
    ACE_CString key;
    user->OnNextDialog([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeInPicker(IDC_EXAM_CODE, "MRKNEE");
        user->OnNextDialog(CancelPicker());
        form.Pick(IDC_EXAM_CODE);
        description = form.Text(IDC_EXAM_DESCRIPTION);
        key = form.Exam().GetExamCodeKey();
        form.Cancel();
    });
    creator.DisplayExamDlg(m_patient.c_str(), "", nullptr);
    EXPECT_STREQ(description, "MR KNEE");
    EXPECT_NE(key.length(), 0u);
}

TEST_F(ExamDetailsTest, ATypedCodeIsResolvedOnEnterAndAnUnknownOneIsCleared)
{
    CString known, unknown, modality;
    RunNew([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeInPicker(IDC_EXAM_CODE, "mrknee");
        form.EnterInPicker(IDC_EXAM_CODE);
        known = form.Text(IDC_EXAM_CODE);
        form.TypeInPicker(IDC_EXAM_CODE, "NOSUCH");
        form.EnterInPicker(IDC_EXAM_CODE);
        unknown = form.Text(IDC_EXAM_CODE);
        modality = form.Text(IDC_EXAM_MODALITY);
        form.Cancel();
    });
    EXPECT_STREQ(known, "MRKNEE");
    EXPECT_STREQ(unknown, "");
    EXPECT_STREQ(modality, "");
}

TEST_F(ExamDetailsTest, ModifierResourceAndLocationArePickedAndSaved)
{
    const std::string exam = SavedExam("ACC1");
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        user->OnNextDialog(ChooseInPicker("L"), "exam_picker_modifiers");
        form.Pick(IDC_EXAM_MODIFIER);
        user->OnNextDialog(ChooseInPicker("CT"), "exam_picker_resources");
        form.Pick(IDC_EXAM_RESOURCE);
        user->OnNextDialog(ChooseInPicker("IC"), "exam_picker_locations");
        form.Pick(IDC_EXAM_LOCATION);
        form.ClickOK();
    });
    const ExamDataSet saved = Stored(exam);
    EXPECT_STREQ(saved.GetExamCodeModifiersText().c_str(), "LT");
    EXPECT_STREQ(saved.GetPerformingResourceId().c_str(), "CT1");
    EXPECT_STREQ(saved.GetPerformingResourceKey().c_str(), m_resource.c_str());
    EXPECT_STREQ(saved.GetOrderingLocationId().c_str(), "ICU");
}

TEST_F(ExamDetailsTest, AnExistingExamShowsItsResourceAndLocation)
{
    const std::string exam = SavedExam("ACC1");
    ExamDataSet e = Stored(exam);
    e.SetPerformingResourceKey(m_resource.c_str());
    e.SetOrderingLocationKey(m_location.c_str());
    ASSERT_EQ(Session::ServiceInstance()->GetExamService()->UpdateExam(&e), 0);
    CString resource, location;
    RunEdit(exam, [&](CDialog& dlg) {
        ExamForm form(dlg);
        resource = form.Text(IDC_EXAM_RESOURCE);
        location = form.Text(IDC_EXAM_LOCATION);
        form.Cancel();
    });
    EXPECT_STREQ(resource, "CT1");
    EXPECT_STREQ(location, "ER");
}

TEST_F(ExamDetailsTest, ATypedLocationThatNamesNothingIsCleared)
{
    CString location;
    RunNew([&](CDialog& dlg) {
        ExamForm form(dlg);
        form.TypeInPicker(IDC_EXAM_LOCATION, "NOWHERE");
        form.EnterInPicker(IDC_EXAM_LOCATION);
        location = form.Text(IDC_EXAM_LOCATION);
        form.Cancel();
    });
    EXPECT_STREQ(location, "");
}

} // namespace
