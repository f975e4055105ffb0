// TavCreator::PatientDlgCreator: loading, results, and nothing thrown at the host.

#include "patientfixture.h"

#include "boundary/bravikapp.h"
#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/patientdlg.h"

#include "faultyservices.h"

#include <gtest/gtest.h>

namespace {

using PatientCreatorTest = PatientFixture;

TEST_F(PatientCreatorTest, APatientThatCannotBeLoadedIsReportedAndReadsAsCancelled)
{
    FaultyServices faulty;
    faulty.faults.FailOn("GetPatient", 2);
    user->ExpectMessage("Error accessing patient data: The patient data might have been deleted or merged.");
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg("NO-SUCH-KEY", nullptr));
    EXPECT_TRUE(user->Dialogs().empty()) << "no dialog is shown";
    EXPECT_EQ(nullptr, creator.GetpPatientData());
}

TEST_F(PatientCreatorTest, AThrownLoadReadsTheSame)
{
    const std::string key = Patient(m_north, "N-1");
    FaultyServices faulty;
    faulty.faults.ThrowOn("GetPatient", "connection lost");
    user->ExpectMessage("Error accessing patient data: The patient data might have been deleted or merged.");
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg(key.c_str(), nullptr));
}

TEST_F(PatientCreatorTest, AnEmptyKeyNeverLoads)
{
    FaultyServices faulty;
    user->OnNextDialog([](CDialog& dlg) { PatientForm(dlg).ClickCancel(); });
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg("", nullptr));
    EXPECT_EQ(0, faulty.faults.Count("GetPatient"));
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(PatientCreatorTest, TheResultIsACopyOfTheSavedRecordOwnedByTheCreator)
{
    const std::string key = Patient(m_north, "N-1", "Berg", "Ola");
    TavCreator::PatientDlgCreator creator;
    user->OnNextDialog([](CDialog& dlg) {
        PatientForm f(dlg);
        f.Type(IDC_PAT_LAST, "Bergman");
        f.ClickOK();
    });
    ASSERT_EQ(IDOK, creator.DisplayPatientDlg(key.c_str(), nullptr));
    ASSERT_NE(nullptr, creator.GetpPatientData());
    EXPECT_STREQ("Bergman", creator.GetpPatientData()->GetLastName().c_str());
    EXPECT_STREQ(key.c_str(), creator.GetpPatientData()->GetPatientKey().c_str());
    const TavCreator::PatientDlgCreator copy = creator;
    EXPECT_NE(creator.GetpPatientData(), const_cast<TavCreator::PatientDlgCreator&>(copy).GetpPatientData());

    // A second run reuses the same dialog: one creator serves one patient.
    std::string caption;
    user->OnNextDialog([&](CDialog& dlg) {
        caption = PatientForm(dlg).Driver().Caption().GetString();
        PatientForm(dlg).ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayPatientDlg(key.c_str(), nullptr));
    EXPECT_EQ("Edit Patient", caption);
    EXPECT_STREQ("Bergman", creator.GetpPatientData()->GetLastName().c_str()) << "a cancel keeps the last result";
}

TEST_F(PatientCreatorTest, TheUnlinkConfirmationIsTheModulesText)
{
    EXPECT_EQ(CString("Are you sure you want to remove the current link for the patient?"),
              CBravikApp::GetUnlinkPatientConfirmationMsg());
}

} // namespace
