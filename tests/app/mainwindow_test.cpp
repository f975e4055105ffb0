// The workstation's window on a small demo archive: searching, selection,
// and the commands that ask a reason through the module and then change the
// archive, keeping the reason.
#include "archivesetup.h"
#include "mainwindow.h"
#include "patientbrowser.h"

#include "duplicates/duplicatepatientpage.h"

#include "scripteduser.h"
#include "uiinput.h"

#include "boundary/registercontrols.h"
#include "picker.h"

#include "cdialog.h"
#include "examdataset.h"
#include "patientdetailrecord.h"
#include "studyrecord.h"

#include <archive.h>
#include <archivedb.h>

#include <SQLiteCpp/Statement.h>

#include <QAction>
#include <QLineEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

class WorkstationWindow : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_path = m_dir.filePath(QStringLiteral("site.sqlite"));
        ArchiveSetup setup(m_path, 25, false);
        m_archive = setup.Open();
        ASSERT_TRUE(m_archive) << setup.ErrorText().toStdString();
        ASSERT_TRUE(setup.Created());
        ASSERT_TRUE(m_archive->InstallIntoSession("admin"));
        m_window = std::make_unique<MainWindow>(m_path, QStringLiteral("admin"));
        m_window->Browser()->Search();
    }

    void TearDown() override
    {
        m_window.reset();
        if (m_archive)
            m_archive->Uninstall();
    }

    PatientBrowser& B() { return *m_window->Browser(); }

    std::string Text(const std::string& sql, const std::string& arg)
    {
        SQLite::Statement q(m_archive->Db().Handle(), sql);
        q.bind(1, arg);
        return q.executeStep() ? q.getColumn(0).getString() : std::string("<none>");
    }
    long long Count(const std::string& sql, const std::string& arg)
    {
        SQLite::Statement q(m_archive->Db().Handle(), sql);
        q.bind(1, arg);
        q.executeStep();
        return q.getColumn(0).getInt64();
    }

    // Selects the first patient that has an exam with a study.
    void SelectPatientWithStudy()
    {
        for (int row = 0; row < B().PatientCount(); ++row) {
            B().PatientList()->setCurrentItem(B().PatientList()->topLevelItem(row));
            if (B().SelectedStudy())
                return;
        }
        FAIL() << "the demo archive has no patient with a study";
    }

    // The reason typed into the reason dialog, then OK.
    static ScriptedUser::DialogScript TypeReasonAndConfirm(const QString& reason)
    {
        return [reason](CDialog& dlg) {
            QWidget* edit = dlg.findChild<QWidget*>(QStringLiteral("IDC_REASON_EDIT"));
            ASSERT_NE(nullptr, edit);
            ReplaceText(edit, reason);
            dlg.OnOK();
        };
    }

    QTemporaryDir m_dir;
    QString m_path;
    std::unique_ptr<Archive> m_archive;
    std::unique_ptr<MainWindow> m_window;
};

TEST_F(WorkstationWindow, ListsThePatientsOfTheArchive)
{
    EXPECT_EQ(Count("SELECT COUNT(*) FROM patients WHERE ?1 = ?1", "x"), B().PatientCount());
    EXPECT_EQ(QStringLiteral("%1 patients found.").arg(B().PatientCount()), m_window->statusBar()->currentMessage());
    ASSERT_NE(nullptr, B().SelectedPatient());
    EXPECT_EQ(Count("SELECT COUNT(*) FROM exams WHERE patient_key = ?", B().SelectedPatient()->GetPatientKey().c_str()),
              B().ExamCount());
    EXPECT_TRUE(m_window->windowTitle().contains(QStringLiteral("site.sqlite")));
}

TEST_F(WorkstationWindow, EnterInTheNameFieldSearchesByLastName)
{
    const std::string last = B().SelectedPatient()->GetLastName().c_str();
    B().NameEdit()->setFocus();
    QTest::keyClicks(B().NameEdit(), QString::fromStdString(last));
    QTest::keyClick(B().NameEdit(), Qt::Key_Return);
    EXPECT_EQ(Count("SELECT COUNT(*) FROM patients WHERE last_name LIKE ? || '%'", last), B().PatientCount());
    for (int row = 0; row < B().PatientCount(); ++row)
        EXPECT_TRUE(B().PatientList()->topLevelItem(row)->text(0).startsWith(QString::fromStdString(last),
                                                                             Qt::CaseInsensitive));
}

TEST_F(WorkstationWindow, SearchByMrnFindsThatPatient)
{
    const PatientDetailRecord* first = B().SelectedPatient();
    const QString mrn = QString::fromUtf8(first->GetPatientID().c_str());
    ReplaceText(B().MrnEdit(), QStringLiteral("\"%1\"").arg(mrn));
    QTest::keyClick(B().MrnEdit(), Qt::Key_Return);
    ASSERT_GE(B().PatientCount(), 1);
    bool found = false;
    for (int row = 0; row < B().PatientCount(); ++row)
        found = found || B().PatientList()->topLevelItem(row)->text(1) == mrn;
    EXPECT_TRUE(found);
    EXPECT_EQ(Count("SELECT COUNT(*) FROM patients WHERE mrn = ?", mrn.toStdString()), B().PatientCount());
}

TEST_F(WorkstationWindow, NoMatchDisablesThePatientCommands)
{
    ReplaceText(B().NameEdit(), QStringLiteral("Qqqxxzz"));
    B().Search();
    EXPECT_EQ(0, B().PatientCount());
    EXPECT_EQ(QStringLiteral("0 patients found."), m_window->statusBar()->currentMessage());
    EXPECT_FALSE(m_window->Action(QStringLiteral("deletePatient"))->isEnabled());
    EXPECT_FALSE(m_window->Action(QStringLiteral("deleteExam"))->isEnabled());
    EXPECT_FALSE(m_window->Action(QStringLiteral("cancelExam"))->isEnabled());
    EXPECT_FALSE(m_window->Action(QStringLiteral("detachStudy"))->isEnabled());
    // A shortcut that fires anyway does nothing (a dialog would fail the test).
    ScriptedUser user;
    m_window->Action(QStringLiteral("deletePatient"))->activate(QAction::Trigger);
}

TEST_F(WorkstationWindow, EveryCommandHasAShortcutAndAMenu)
{
    for (const char* id :
         {"newExam", "deletePatient", "deleteExam", "cancelExam", "detachStudy", "refresh", "findPatient"}) {
        SCOPED_TRACE(id);
        QAction* a = m_window->Action(QString::fromLatin1(id));
        ASSERT_NE(nullptr, a);
        EXPECT_FALSE(a->shortcut().isEmpty());
    }
}

TEST_F(WorkstationWindow, DeletePatientKeepsTheReason)
{
    const std::string key = B().SelectedPatient()->GetPatientKey().c_str();
    ScriptedUser user;
    user.OnNextDialog(TypeReasonAndConfirm(QStringLiteral("Registered twice")));
    user.ExpectMessage("Are you sure you want to delete this patient? You cannot undo this operation.", IDYES);
    m_window->Action(QStringLiteral("deletePatient"))->trigger();

    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM patients WHERE patient_key = ?", key));
    EXPECT_EQ("Registered twice", Text("SELECT reason FROM journal WHERE operation = 'delete-patient' AND "
                                       "subject_key = ?",
                                       key));
    EXPECT_TRUE(m_window->statusBar()->currentMessage().startsWith(QStringLiteral("Deleted patient ")));
    EXPECT_TRUE(m_window->statusBar()->currentMessage().endsWith(QStringLiteral("Reason: Registered twice")));
    // The list no longer shows the patient.
    for (int row = 0; row < B().PatientCount(); ++row) {
        B().PatientList()->setCurrentItem(B().PatientList()->topLevelItem(row));
        EXPECT_NE(key, std::string(B().SelectedPatient()->GetPatientKey().c_str()));
    }
}

TEST_F(WorkstationWindow, CancelledReasonDialogChangesNothing)
{
    const std::string key = B().SelectedPatient()->GetPatientKey().c_str();
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) { dlg.OnCancel(); });
    m_window->Action(QStringLiteral("deletePatient"))->trigger();
    EXPECT_EQ(1, Count("SELECT COUNT(*) FROM patients WHERE patient_key = ?", key));
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM journal WHERE subject_key = ?", key));
}

TEST_F(WorkstationWindow, CancelExamKeepsTheReasonAndMarksTheExam)
{
    SelectPatientWithStudy();
    const std::string exam = B().SelectedExam()->GetKey().c_str();
    ScriptedUser user;
    user.OnNextDialog(TypeReasonAndConfirm(QStringLiteral("Patient did not come")));
    m_window->Action(QStringLiteral("cancelExam"))->trigger();
    EXPECT_EQ(1, Count("SELECT cancelled FROM exams WHERE exam_key = ?", exam));
    EXPECT_EQ("Patient did not come", Text("SELECT reason FROM journal WHERE operation = 'cancel-exam' AND "
                                           "subject_key = ?",
                                           exam));
    EXPECT_TRUE(m_window->statusBar()->currentMessage().startsWith(QStringLiteral("Cancelled exam ")));
}

TEST_F(WorkstationWindow, DeleteExamKeepsTheReason)
{
    SelectPatientWithStudy();
    const std::string exam = B().SelectedExam()->GetKey().c_str();
    ScriptedUser user;
    user.OnNextDialog(TypeReasonAndConfirm(QStringLiteral("Ordered in error")));
    user.ExpectMessage("Are you sure you want to delete this exam? You cannot undo this operation.", IDYES);
    m_window->Action(QStringLiteral("deleteExam"))->trigger();
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM exams WHERE exam_key = ?", exam));
    EXPECT_EQ("Ordered in error", Text("SELECT reason FROM journal WHERE operation LIKE 'delete-exam%' AND "
                                       "subject_key = ?",
                                       exam));
}

TEST_F(WorkstationWindow, DetachStudyKeepsTheReason)
{
    SelectPatientWithStudy();
    const std::string study = B().SelectedStudy()->GetStudyKey().c_str();
    ScriptedUser user;
    user.OnNextDialog(TypeReasonAndConfirm(QStringLiteral("Wrong exam")));
    user.ExpectMessage(IDYES);
    m_window->Action(QStringLiteral("detachStudy"))->trigger();
    EXPECT_EQ(1, Count("SELECT COUNT(*) FROM studies WHERE exam_key IS NULL AND study_key = ?", study));
    EXPECT_EQ("Wrong exam", Text("SELECT reason FROM journal WHERE operation = 'detach-study' AND subject_key = ?",
                                 study));
    EXPECT_TRUE(m_window->statusBar()->currentMessage().startsWith(QStringLiteral("Detached study ")));
}

TEST_F(WorkstationWindow, NewPatientSavesAndTheBrowserShowsAndSelectsIt)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        EXPECT_EQ(CString("Create Patient"), dlg.GetWindowText());
        for (const char* id : {"IDC_PAT_MRN", "IDC_PAT_LAST", "IDC_PAT_FIRST"}) {
            QWidget* edit = dlg.findChild<QWidget*>(QString::fromLatin1(id));
            ASSERT_NE(nullptr, edit);
            ReplaceText(edit, id == std::string("IDC_PAT_MRN") ? QStringLiteral("9900001") : QStringLiteral("Quist"));
        }
        dlg.OnOK();
    });
    ASSERT_TRUE(m_window->Action(QStringLiteral("newPatient"))->isEnabled());
    EXPECT_EQ(QKeySequence(Qt::CTRL | Qt::Key_N), m_window->Action(QStringLiteral("newPatient"))->shortcut());
    m_window->Action(QStringLiteral("newPatient"))->trigger();
    ASSERT_EQ(1, Count("SELECT COUNT(*) FROM patients WHERE mrn = ?", "9900001"));
    ASSERT_NE(nullptr, B().SelectedPatient());
    EXPECT_STREQ("9900001", B().SelectedPatient()->GetPatientID().c_str());
    EXPECT_TRUE(m_window->statusBar()->currentMessage().startsWith(QStringLiteral("Created patient Quist, Quist (MRN 9900001")));
}

TEST_F(WorkstationWindow, EnterOnAPatientEditsIt)
{
    const std::string key = B().SelectedPatient()->GetPatientKey().c_str();
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        EXPECT_EQ(CString("Edit Patient"), dlg.GetWindowText());
        QWidget* middle = dlg.findChild<QWidget*>(QStringLiteral("IDC_PAT_MIDDLE"));
        ASSERT_NE(nullptr, middle);
        ReplaceText(middle, QStringLiteral("Q"));
        dlg.OnOK();
    });
    B().PatientList()->setFocus();
    emit B().PatientList()->itemActivated(B().PatientList()->currentItem(), 0);
    EXPECT_EQ("Q", Text("SELECT middle_name FROM patients WHERE patient_key = ?", key));
    EXPECT_STREQ(key.c_str(), B().SelectedPatient()->GetPatientKey().c_str());
    EXPECT_TRUE(m_window->statusBar()->currentMessage().startsWith(QStringLiteral("Saved patient ")));
}

TEST_F(WorkstationWindow, UnlinkPatientAsksThenTakesThePatientOutOfItsGroup)
{
    std::string key;
    for (int row = 0; row < B().PatientCount() && key.empty(); ++row) {
        B().PatientList()->setCurrentItem(B().PatientList()->topLevelItem(row));
        if (!B().SelectedPatient()->GetLinkID().is_empty())
            key = B().SelectedPatient()->GetPatientKey().c_str();
    }
    ASSERT_FALSE(key.empty()) << "the demo archive links some records";
    ScriptedUser user;
    user.ExpectMessage("Are you sure you want to remove the current link for the patient?", IDNO);
    m_window->Action(QStringLiteral("unlinkPatient"))->trigger();
    EXPECT_NE("<none>", Text("SELECT link_group FROM patients WHERE patient_key = ?", key));
    user.ExpectMessage("Are you sure you want to remove the current link for the patient?", IDYES);
    m_window->Action(QStringLiteral("unlinkPatient"))->trigger();
    EXPECT_EQ("<none>", Text("SELECT coalesce(link_group, '<none>') FROM patients WHERE patient_key = ?", key));
    EXPECT_TRUE(m_window->statusBar()->currentMessage().startsWith(QStringLiteral("Removed the link of patient ")));
}

TEST_F(WorkstationWindow, HoldsTheDuplicatePatientPage)
{
    ASSERT_NE(nullptr, m_window->DuplicatePage());
    EXPECT_EQ(2, m_window->Tabs()->count());
    m_window->ShowDuplicates();
    EXPECT_FALSE(m_window->Action(QStringLiteral("deletePatient"))->isEnabled());
    m_window->ShowPatients();
    EXPECT_TRUE(m_window->Action(QStringLiteral("deletePatient"))->isEnabled());
}

TEST_F(WorkstationWindow, TheStatusBarSaysWhatFailedOnTheDuplicatePage)
{
    auto* page = qobject_cast<CDuplicatePatientPage*>(m_window->DuplicatePage());
    ASSERT_NE(nullptr, page);
    const QString failure = QStringLiteral("Error merging patients.  Reason: The patient record has been merged into "
                                           "another patient.");
    emit page->actionFailed(failure);
    EXPECT_EQ(failure, m_window->statusBar()->currentMessage());
}

// The demo clerk may register patients and edit exams but not delete or
// cancel exams nor detach studies; the radiologist may change nothing.
TEST_F(WorkstationWindow, CommandsTheUserMayNotRunAreDisabledAndSayWhy)
{
    m_window.reset();
    ASSERT_TRUE(m_archive->InstallIntoSession("clerk"));
    m_window = std::make_unique<MainWindow>(m_path, QStringLiteral("clerk"));
    m_window->Browser()->Search();
    SelectPatientWithStudy();
    const QString org = QString::fromUtf8(B().SelectedPatient()->GetOrganizationID().c_str());
    EXPECT_TRUE(m_window->Action(QStringLiteral("deletePatient"))->isEnabled());
    for (const char* id : {"deleteExam", "cancelExam"}) {
        QAction* a = m_window->Action(QString::fromLatin1(id));
        EXPECT_FALSE(a->isEnabled()) << id;
        EXPECT_TRUE(a->toolTip().endsWith(QStringLiteral(": You may not delete or cancel exams in organization %1.").arg(org)))
            << a->toolTip().toStdString();
    }
    QAction* detach = m_window->Action(QStringLiteral("detachStudy"));
    EXPECT_FALSE(detach->isEnabled());
    EXPECT_EQ(detach->toolTip(), QStringLiteral("Detach Study (Ctrl+T): You may not detach studies in organization %1.").arg(org));
    // A shortcut that fires anyway is refused by the archive too: nothing changes.
    const std::string exam = B().SelectedExam()->GetKey().c_str();
    ScriptedUser user;
    m_window->Action(QStringLiteral("cancelExam"))->activate(QAction::Trigger);
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM exams WHERE cancelled = 1 AND exam_key = ?", exam));

    m_window.reset();
    ASSERT_TRUE(m_archive->InstallIntoSession("radiologist"));
    m_window = std::make_unique<MainWindow>(m_path, QStringLiteral("radiologist"));
    m_window->Browser()->Search();
    SelectPatientWithStudy();
    for (const char* id : {"deletePatient", "deleteExam", "cancelExam", "detachStudy"})
        EXPECT_FALSE(m_window->Action(QString::fromLatin1(id))->isEnabled()) << id;
    EXPECT_TRUE(m_window->Action(QStringLiteral("deletePatient"))
                    ->toolTip()
                    .endsWith(QStringLiteral("You may not create, edit or delete patients in organization %1.").arg(org)));
}

} // namespace

TEST_F(WorkstationWindow, NewExamCreatesAnExamForTheSelectedPatientAndSelectsIt)
{
    TavCreator::RegisterControls::RegisterPicker();
    const std::string patient = B().SelectedPatient()->GetPatientKey().c_str();
    EXPECT_EQ(m_window->Action(QStringLiteral("newExam"))->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_E));
    ScriptedUser user;
    CString caption;
    user.OnNextDialog([&](CDialog& dlg) {
        caption = dlg.GetWindowText();
        ReplaceText(dlg.findChild<QWidget*>(QStringLiteral("IDC_EXAM_ACCESSION")), QStringLiteral("WS-NEW-1"));
        auto* code = dlg.findChild<Picker*>(QStringLiteral("IDC_EXAM_CODE"));
        ASSERT_NE(code, nullptr);
        ReplaceText(code->Edit(), QStringLiteral("CTHEAD"));
        QTest::keyClick(code->Edit(), Qt::Key_Return);
        dlg.OnOK();
    });
    m_window->Action(QStringLiteral("newExam"))->trigger();
    TavCreator::RegisterControls::UnRegisterPicker();
    EXPECT_STREQ(caption, "Create Exam");
    EXPECT_EQ(1, Count("SELECT COUNT(*) FROM exams WHERE accession = 'WS-NEW-1' AND patient_key = ?", patient));
    ASSERT_NE(B().SelectedExam(), nullptr);
    EXPECT_STREQ(B().SelectedExam()->GetAccessionNumber().c_str(), "WS-NEW-1");
    EXPECT_EQ(m_window->statusBar()->currentMessage(), QStringLiteral("Created exam WS-NEW-1"));
}

TEST_F(WorkstationWindow, EnterOnAnExamOpensItForEditing)
{
    SelectPatientWithStudy();
    const std::string exam = B().SelectedExam()->GetKey().c_str();
    ScriptedUser user;
    CString caption;
    user.OnNextDialog([&](CDialog& dlg) {
        caption = dlg.GetWindowText();
        dlg.OnCancel();
    });
    QTreeWidget* list = B().ExamList();
    ASSERT_TRUE(m_window->Action(QStringLiteral("editExam"))->isEnabled());
    TavCreator::RegisterControls::RegisterPicker();
    emit list->itemActivated(list->currentItem(), 0);
    TavCreator::RegisterControls::UnRegisterPicker();
    EXPECT_STREQ(caption, "Edit Exam");
    EXPECT_EQ(1, Count("SELECT COUNT(*) FROM audit WHERE event_code = 50 AND record_key = ?", exam));
}
