// The contact information page: countries and states, organization
// defaults, and what a save writes.

#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/contactinfopage.h"
#include "patient/contactpageimpl.h"
#include "patient/patientdlg.h"

#include "dictionarytopic.h"
#include "sqlitepatientservice.h"

#include "combobox.h"

#include <gtest/gtest.h>

namespace {

class ContactTest : public PatientFixture
{
protected:
    void Run(const std::string& key, const std::function<void(PatientForm&)>& script)
    {
        RunDialog(key, script, nullptr, "Contact Info");
    }
    std::string PatientWithAddress(const std::string& country, const std::string& state)
    {
        const std::string key = Patient(m_north, "C-1");
        PatientDetailRecord r = Read(key);
        r.SetCountryCode(country.c_str());
        r.SetStateCode(state.c_str());
        r.SetCity("Springfield");
        EXPECT_EQ(0, Arc().Patients().ModifyPatient(&r));
        return key;
    }
};

TEST_F(ContactTest, CreateModeTakesTheCountryAndStateOfThePatientsOrganization)
{
    ArchiveBuilder::OrgFields lakes{"LAKES", "Lakes Clinic"};
    lakes.defaultCountry = "US";
    lakes.defaultState = "WI";
    const std::string org = Build().Org(lakes);
    Build().Grant("admin", org, true, true, true);
    ArchiveBuilder::OrgFields maple{"MAPLE", "Maple Clinic"};
    maple.defaultCountry = "CA";
    Build().Grant("admin", Build().Org(maple), true, true, true);
    Run("", [&](PatientForm& f) {
        f.Tab("Demographics");
        f.Choose(IDC_PAT_ORGANIZATION, "LAKES");
        // Chosen after start-up: the defaults were applied for the first organization.
        f.Tab("Contact Info");
        EXPECT_EQ(CString("UNITED STATES"), f.Text(IDC_CON_COUNTRY));
    });
    // An organization chosen before the dialog opens is the one whose defaults apply.
    user->OnNextDialog([&](CDialog& dlg) {
        PatientForm f(dlg);
        f.Tab("Contact Info");
        EXPECT_EQ(CString("UNITED STATES"), f.Text(IDC_CON_COUNTRY));
        f.Dialog().GetContactPage()->ApplyOrganizationDefaults(org.c_str());
        EXPECT_EQ(CString("Wisconsin"), f.Text(IDC_CON_STATE));
        f.ClickCancel();
    });
    TavCreator::PatientDlgCreator creator;
    creator.DisplayPatientDlg("", nullptr);
}

TEST_F(ContactTest, ChangingTheCountryRefillsTheStates)
{
    Run("", [&](PatientForm& f) {
        f.Choose(IDC_CON_COUNTRY, "CANADA");
        auto* states = f.Driver().ItemAs<ComboBox>(IDC_CON_STATE);
        ASSERT_EQ(1, states->GetCount());
        EXPECT_EQ(CString("Ontario"), states->GetLBText(0));
    });
}

TEST_F(ContactTest, EditModeSelectsTheRecordsCountryAndState)
{
    const std::string key = PatientWithAddress("US", "WI");
    Run(key, [&](PatientForm& f) {
        EXPECT_EQ(CString("UNITED STATES"), f.Text(IDC_CON_COUNTRY));
        EXPECT_EQ(CString("Wisconsin"), f.Text(IDC_CON_STATE));
        EXPECT_EQ(CString("Springfield"), f.Text(IDC_CON_CITY));
    });
}

TEST_F(ContactTest, EditModeWithoutACountryShowsNoneAndTheFirstState)
{
    const std::string key = Patient(m_north, "C-2");
    Run(key, [&](PatientForm& f) {
        EXPECT_EQ(-1, f.Driver().ItemAs<ComboBox>(IDC_CON_COUNTRY)->GetCurSel());
        // No country: the state list stays as start-up left it (empty here).
        EXPECT_EQ(0, f.Driver().ItemAs<ComboBox>(IDC_CON_STATE)->GetCount());
    });
}

TEST_F(ContactTest, ACountryWithoutStatesStoresAnEmptyStateCode)
{
    Build().Dictionary(DictionaryTopic::Country, "MC", "MONACO");
    TavCreator::PatientDlgCreator creator;
    user->OnNextDialog([](CDialog& dlg) {
        PatientForm f(dlg);
        f.Type(IDC_PAT_MRN, "C-9");
        f.Type(IDC_PAT_LAST, "Grimaldi");
        f.Type(IDC_PAT_FIRST, "Rene");
        f.Tab("Contact Info");
        f.Choose(IDC_CON_COUNTRY, "MONACO");
        EXPECT_EQ(0, f.Driver().ItemAs<ComboBox>(IDC_CON_STATE)->GetCount());
        f.ClickOK();
    });
    ASSERT_EQ(IDOK, creator.DisplayPatientDlg("", nullptr));
    const PatientDetailRecord stored = Read(creator.GetpPatientData()->GetPatientKey().c_str());
    EXPECT_STREQ("MC", stored.GetCountryCode().c_str());
    EXPECT_STREQ("", stored.GetStateCode().c_str());
}

TEST_F(ContactTest, TextsAreTrimmedButAnEmailKeepsItsLeadingBlanks)
{
    const std::string key = Patient(m_north, "C-3");
    TavCreator::PatientDlgCreator creator;
    user->OnNextDialog([](CDialog& dlg) {
        PatientForm f(dlg);
        f.Tab("Contact Info");
        f.Type(IDC_CON_ADDRESS1, "  1 Main St  ");
        f.Type(IDC_CON_ADDRESS2, " Apt 2 ");
        f.Type(IDC_CON_CITY, "  Chicago ");
        f.Type(IDC_CON_POSTAL_CODE, " 60601 ");
        f.Type(IDC_CON_HOME_PHONE, " 555-0100 ");
        f.Type(IDC_CON_WORK_PHONE, " 555-0199 ");
        f.Type(IDC_CON_EMAIL, "  lea@example.org  ");
        f.Choose(IDC_CON_COUNTRY, "UNITED STATES");
        f.Choose(IDC_CON_STATE, "Illinois");
        EXPECT_TRUE(f.Dialog().GetContactPage()->ValidateData());
        f.ClickOK();
    });
    ASSERT_EQ(IDOK, creator.DisplayPatientDlg(key.c_str(), nullptr));
    const PatientDetailRecord stored = Read(key);
    EXPECT_STREQ("1 Main St", stored.GetAddressLine1().c_str());
    EXPECT_STREQ("Apt 2", stored.GetAddressLine2().c_str());
    EXPECT_STREQ("Chicago", stored.GetCity().c_str());
    EXPECT_STREQ("60601", stored.GetPostalCode().c_str());
    EXPECT_STREQ("555-0100", stored.GetHomeNumber().c_str());
    EXPECT_STREQ("555-0199", stored.GetWorkNumber().c_str());
    EXPECT_STREQ("  lea@example.org", stored.GetEmailAddress().c_str());
    EXPECT_STREQ("US", stored.GetCountryCode().c_str());
    EXPECT_STREQ("IL", stored.GetStateCode().c_str());
}

TEST_F(ContactTest, PhoneNumbersAreLimitedToThirtyCharacters)
{
    Run("", [&](PatientForm& f) {
        f.Type(IDC_CON_HOME_PHONE, QString(40, QChar('5')));
        EXPECT_EQ(30, f.Text(IDC_CON_HOME_PHONE).GetLength());
        f.Type(IDC_CON_CITY, QString(210, QChar('c')));
        EXPECT_EQ(199, f.Text(IDC_CON_CITY).GetLength());
    });
}

} // namespace
