// The patient dialog against a real archive, end to end: saves the archive
// refuses, and two workstations editing one patient.

#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/clinkpatientimpl.h"
#include "patient/patientdlg.h"

#include "archive.h"
#include "sqlitepatientservice.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>

namespace {

class PatientArchiveTest : public PatientFixture
{
protected:
    int Edit(const std::string& key, const std::function<void(PatientForm&)>& script) { return RunDialog(key, script); }
    // Another workstation: its own connection to the same archive file.
    std::unique_ptr<Archive> OtherWorkstation()
    {
        auto other = Archive::Open(Path());
        other->SetUser("admin");
        return other;
    }
};

// Enter with the footer's Cancel focused still means OK: what was typed is saved.
TEST_F(PatientArchiveTest, EnterOnAFocusedCancelSavesInsteadOfThrowingTheChangesAway)
{
    const std::string key = Patient(m_north, "N-1", "Berg", "Ola");
    EXPECT_EQ(IDOK, Edit(key, [&](PatientForm& f) {
        f.Type(IDC_PAT_MIDDLE, "K");
        auto* cancel = f.Dialog().findChild<QPushButton*>(QStringLiteral("IDCANCEL"));
        ASSERT_NE(nullptr, cancel);
        cancel->setFocus(Qt::TabFocusReason);
        QTest::keyClick(cancel, Qt::Key_Return);
    }));
    EXPECT_STREQ("K", Read(key).GetMiddleName().c_str());
}

TEST_F(PatientArchiveTest, ASaveRefusedBecauseTheMrnIsTakenShowsWhyAndChangesNothing)
{
    const std::string key = Patient(m_north, "N-1", "Berg", "Ola");
    Patient(m_north, "N-2", "Lund", "Eva");
    const ArchiveSnapshot before = Snapshot();
    user->ExpectMessage("Error updating Patient ID N-2.  Reason: The MRN N-2 is already used by another patient in "
                        "NORTH. Enter a different MRN.");
    EXPECT_EQ(IDOK, Edit(key, [&](PatientForm& f) {
        f.Type(IDC_PAT_MRN, "N-2");
        f.Type(IDC_PAT_MIDDLE, "K");
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
        EXPECT_EQ(CString("N-2"), f.Text(IDC_PAT_MRN)) << "what was typed stays";
        EXPECT_ARCHIVE_UNCHANGED(before);
        f.Type(IDC_PAT_MRN, "N-3");
        f.ClickOK();
    }));
    const PatientDetailRecord stored = Read(key);
    EXPECT_STREQ("N-3", stored.GetPatientID().c_str());
    EXPECT_STREQ("K", stored.GetMiddleName().c_str());
}

TEST_F(PatientArchiveTest, ACreateRefusedBecauseTheMrnIsTakenWritesNothing)
{
    Patient(m_north, "N-9");
    const ArchiveSnapshot before = Snapshot();
    user->ExpectMessage("Error creating Patient ID N-9.  Reason: The MRN N-9 is already used by another patient in "
                        "NORTH. Enter a different MRN.");
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        f.Choose(IDC_PAT_ORGANIZATION, "NORTH");
        f.Type(IDC_PAT_MRN, "N-9");
        f.Type(IDC_PAT_LAST, "Lund");
        f.Type(IDC_PAT_FIRST, "Eva");
        f.ClickOK();
        EXPECT_FALSE(dlg.HasEnded());
        f.ClickCancel();
    });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg("", nullptr));
    EXPECT_ARCHIVE_UNCHANGED(before);
}

TEST_F(PatientArchiveTest, TheSecondOfTwoWorkstationsSavingOnePatientIsRefusedAndNothingIsLost)
{
    const std::string key = Patient(m_north, "N-1", "Berg", "Ola");
    auto other = OtherWorkstation();
    user->ExpectMessage("Error updating Patient ID N-1.  Reason: This patient was changed on another workstation "
                        "after you opened it. Your changes were not saved: note them, close this window and open the "
                        "patient again to see the other changes.");
    EXPECT_EQ(IDCANCEL, Edit(key, [&](PatientForm& f) {
        // The other workstation opened the patient too, and saves first.
        PatientDetailRecord theirs;
        ASSERT_EQ(0, other->Patients().GetPatient(key.c_str(), &theirs, ""));
        theirs.SetCity("Bergen");
        ASSERT_EQ(0, other->Patients().ModifyPatient(&theirs));

        f.Type(IDC_PAT_MIDDLE, "Mine");
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
        EXPECT_EQ(CString("Mine"), f.Text(IDC_PAT_MIDDLE));
    }));
    const PatientDetailRecord stored = Read(key);
    EXPECT_STREQ("Bergen", stored.GetCity().c_str()) << "the first save stands";
    EXPECT_STREQ("", stored.GetMiddleName().c_str());
}

TEST_F(PatientArchiveTest, APatientDeletedOrMergedMeanwhileIsRefusedReadably)
{
    const std::string gone = Patient(m_north, "N-1", "Berg", "Ola");
    const std::string kept = Patient(m_north, "N-2", "Berg", "Ola");
    auto other = OtherWorkstation();
    user->ExpectMessage("Error updating Patient ID N-1.  Reason: This patient was merged into another patient on "
                        "another workstation after you opened it. Your changes were not saved; open the surviving "
                        "patient to make them.");
    Edit(gone, [&](PatientForm& f) {
        PatientDetailRecord target;
        ASSERT_EQ(0, other->Patients().GetPatient(kept.c_str(), &target, ""));
        ASSERT_EQ(0, other->Patients().MergePatients(gone.c_str(), &target, "DUP", {}));
        f.Type(IDC_PAT_MIDDLE, "X");
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
    });
    const std::string deleted = Patient(m_south, "S-1", "Holm", "Siv");
    user->ExpectMessage("Error updating Patient ID S-1.  Reason: This patient was deleted on another workstation "
                        "after you opened it. Your changes were not saved.");
    Edit(deleted, [&](PatientForm& f) {
        ASSERT_EQ(0, other->Patients().DeletePatient(deleted.c_str(), "", "Test patient"));
        f.Type(IDC_PAT_MIDDLE, "X");
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
    });
}

TEST_F(PatientArchiveTest, ARefusedRightIsReadable)
{
    const std::string key = Patient(m_south, "S-1");
    Grant("clerk", {m_north}, {m_north});
    LogInAs("clerk");
    user->ExpectMessage("Error updating Patient ID S-1.  Reason: You do not have the right to create or change "
                        "patients in SOUTH. Ask your administrator for the right, or choose another organization.");
    Edit(key, [&](PatientForm& f) {
        f.Type(IDC_PAT_MIDDLE, "X");
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
    });
    EXPECT_STREQ("", Read(key).GetMiddleName().c_str());
}

TEST_F(PatientArchiveTest, EditCorrectALinkedMrnThenRemoveALinkInALaterSession)
{
    const std::string east = Build().Org("EAST");
    Build().Grant("admin", east, true, true, true);
    const std::string n = Patient(m_north, "N-1", "Okafor", "Ada");
    const std::string s = Patient(m_south, "S-1", "Okafor", "Ada");
    const std::string e = Patient(east, "E-1", "Okafor", "Ada");
    const std::string group = Build().LinkGroup(n, s);
    Build().AddToGroup(group, e);

    EXPECT_EQ(IDOK, Edit(n, [&](PatientForm& f) {
        f.Type(IDC_PAT_FIRST, "Adaeze");
        f.Tab("Links");
        for (int row = 0; row < f.LinkedRows(); ++row) {
            if (f.LinkedCell(row, CLinkPatientImpl::COL_ORGANIZATION) == "SOUTH") {
                ASSERT_TRUE(f.EditLinkedMRN(row, "S-2"));
            }
        }
        f.ClickOK();
    }));
    EXPECT_STREQ("Adaeze", Read(n).GetFirstName().c_str());
    EXPECT_STREQ("S-2", Read(s).GetPatientID().c_str());
    EXPECT_STREQ("Ada", Read(s).GetFirstName().c_str()) << "only the MRN of a linked record changes";

    user->ExpectMessage(IDYES);
    EXPECT_EQ(IDOK, Edit(n, [&](PatientForm& f) {
        f.Tab("Links");
        for (int row = 0; row < f.LinkedRows(); ++row)
            if (f.LinkedCell(row, CLinkPatientImpl::COL_ORGANIZATION) == "EAST")
                f.SelectLinkedRow(row);
        f.Driver().Click(IDC_LINKS_REMOVE);
        f.ClickOK();
    }));
    std::vector<PatientDetailRecord*> linked;
    ASSERT_EQ(0, Arc().Patients().GetLinkedPatients(n.c_str(), "", linked));
    std::set<std::string> orgs;
    for (PatientDetailRecord* r : linked) {
        orgs.insert(r->GetOrganizationID().c_str());
        delete r;
    }
    EXPECT_EQ((std::set<std::string>{"NORTH", "SOUTH"}), orgs);
}

} // namespace
