// The patient dialog frame: modes, header, OK state, validation order, saves.

#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/patientdlg.h"

#include "hftabbeddlg.h"
#include "options.h"

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
