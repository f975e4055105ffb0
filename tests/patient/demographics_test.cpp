// The demographics page: start-up, field changes and their notices, the
// validation order with its messages and focus.

#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/patientdemographicsimpl.h"
#include "patient/patientdlg.h"

#include "bdate.h"
#include "faultyservices.h"
#include "sitepolicy.h"

#include "combobox.h"
#include "datepickerctrl.h"
#include "datetimeeditctrl.h"
#include "edit.h"
#include "publisher.h"
#include "uiinput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QLineEdit>

namespace {

struct Notice
{
    long kind;
    long id;
    std::string text;
};

class NoticeRecorder : public Subscriber<long, long>
{
public:
    void OnPublish(Publisher<long, long>*, long kind, long id, const char* text) override
    {
        notices.push_back({kind, id, text});
    }
    std::vector<Notice> notices;
};

class DemographicsTest : public PatientFixture
{
protected:
    void Create(const std::function<void(PatientForm&)>& script) { RunDialog("", script); }
    void Edit(const std::string& key, const std::function<void(PatientForm&)>& script) { RunDialog(key, script); }
    static void FillRequired(PatientForm& f, const char* mrn = "M1")
    {
        f.Type(IDC_PAT_MRN, mrn);
        f.Type(IDC_PAT_LAST, "Moreau");
        f.Type(IDC_PAT_FIRST, "Lea");
    }
};

TEST_F(DemographicsTest, RequiredFieldsCarryTheMarkAndTheIdentifierLabelIsTheSites)
{
    SitePolicySettings site = SitePolicy::Get();
    site.patientIDColumnName = "NHS Number";
    SitePolicy::Set(site);
    Create([](PatientForm& f) {
        EXPECT_TRUE(f.Driver().ItemAs<::Edit>(IDC_PAT_MRN)->IsRequiredMarkShown());
        EXPECT_TRUE(f.Driver().ItemAs<::Edit>(IDC_PAT_FIRST)->IsRequiredMarkShown());
        EXPECT_TRUE(f.Driver().ItemAs<::Edit>(IDC_PAT_LAST)->IsRequiredMarkShown());
        EXPECT_FALSE(f.Driver().ItemAs<::Edit>(IDC_PAT_MIDDLE)->IsRequiredMarkShown());
        EXPECT_EQ(CString("NHS Number:"), f.Text(IDC_PAT_GID_LABEL));
    });
}

TEST_F(DemographicsTest, WhenTheSiteAllowsAnEmptyFirstNameItIsNotMarkedAndNotAsked)
{
    SitePolicySettings site = SitePolicy::Get();
    site.emptyFirstNameAllowed = true;
    SitePolicy::Set(site);
    // The archive holds the site's policy as well and enforces it itself.
    Build().Setting("policy", "EmptyFirstNameAllowed", "1");
    TavCreator::PatientDlgCreator creator;
    user->OnNextDialog([](CDialog& dlg) {
        PatientForm f(dlg);
        EXPECT_FALSE(f.Driver().ItemAs<::Edit>(IDC_PAT_FIRST)->IsRequiredMarkShown());
        f.Type(IDC_PAT_MRN, "M9");
        f.Type(IDC_PAT_LAST, "Cher");
        EXPECT_TRUE(f.OKEnabled());
        f.ClickOK();
    });
    ASSERT_EQ(IDOK, creator.DisplayPatientDlg("", nullptr));
    EXPECT_STREQ("", Read(creator.GetpPatientData()->GetPatientKey().c_str()).GetFirstName().c_str());
}

TEST_F(DemographicsTest, TheBsnSiteWithoutEntryMakesTheIdentifierReadOnly)
{
    SitePolicySettings site = SitePolicy::Get();
    site.bsnEnabled = true;
    site.bsnCreateEditEnabled = false;
    SitePolicy::Set(site);
    Create([](PatientForm& f) { EXPECT_TRUE(f.Driver().ItemAs<::Edit>(IDC_PAT_GID)->IsReadOnly()); });
    site.bsnCreateEditEnabled = true;
    SitePolicy::Set(site);
    Create([](PatientForm& f) { EXPECT_FALSE(f.Driver().ItemAs<::Edit>(IDC_PAT_GID)->IsReadOnly()); });
}

TEST_F(DemographicsTest, CreateModeOffersOnlyOrganizationsWithTheCreateRight)
{
    Grant("clerk", {m_south}, {});
    LogInAs("clerk");
    Create([](PatientForm& f) {
        auto* box = f.Driver().ItemAs<ComboBox>(IDC_PAT_ORGANIZATION);
        ASSERT_EQ(1, box->GetCount());
        EXPECT_EQ(CString("SOUTH"), box->GetLBText(0));
        EXPECT_EQ(0, box->GetCurSel());
        EXPECT_TRUE(f.Driver().IsEnabled(IDC_PAT_ORGANIZATION));
    });
}

TEST_F(DemographicsTest, AUserWithoutAnyCreateRightSeesNoOrganizationAndCannotSave)
{
    Grant("viewer", {}, {m_north});
    LogInAs("viewer");
    Create([](PatientForm& f) {
        EXPECT_EQ(0, f.Driver().ItemAs<ComboBox>(IDC_PAT_ORGANIZATION)->GetCount());
        FillRequired(f);
        f.ClickOK();
        // Step 8 refuses without a message; the focus goes to the list.
        EXPECT_FALSE(f.Dialog().HasEnded());
        EXPECT_TRUE(f.HasFocus(IDC_PAT_ORGANIZATION));
    });
    EXPECT_TRUE(user->Messages().empty());
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM patients WHERE mrn = 'M1'"));
}

TEST_F(DemographicsTest, EditModeShowsThePatientsOrganizationDisabled)
{
    const std::string key = Patient(m_south, "S-1");
    Edit(key, [](PatientForm& f) {
        EXPECT_EQ(CString("SOUTH"), f.Text(IDC_PAT_ORGANIZATION));
        EXPECT_FALSE(f.Driver().IsEnabled(IDC_PAT_ORGANIZATION));
        EXPECT_STREQ("SOUTH", f.Dialog().GetPatientRecord().GetOrganizationID().c_str());
    });
}

TEST_F(DemographicsTest, ARecordWithoutBirthDateOpensOnTheFirstOfJanuary1800)
{
    Create([](PatientForm& f) {
        EXPECT_EQ(QDate(1800, 1, 1), f.Driver().ItemAs<DatePickerCtrl>(IDC_PAT_DOB)->GetDate());
        // The start-up runs the date's change: the record takes the date too.
        EXPECT_TRUE(f.Dialog().GetPatientRecord().GetDOB() == BDate(1800, 1, 1));
        EXPECT_TRUE(f.Driver().ItemAs<DateTimeEditCtrl>(IDC_PAT_DOD)->IsEmpty());
    });
}

TEST_F(DemographicsTest, TheGenderFollowsTheSexUntilTheUserChoosesOne)
{
    Create([](PatientForm& f) {
        EXPECT_EQ(CString("M-Male"), f.Text(IDC_PAT_SEX));
        EXPECT_EQ(CString("M-Male"), f.Text(IDC_PAT_GENDER));
        f.Choose(IDC_PAT_SEX, "F-Female");
        EXPECT_EQ(CString("F-Female"), f.Text(IDC_PAT_GENDER));
        EXPECT_STREQ("F", f.Dialog().GetPatientRecord().GetSexCode().c_str());
        EXPECT_STREQ("", f.Dialog().GetPatientRecord().GetGenderCode().c_str()) << "following writes no gender";
        f.Choose(IDC_PAT_GENDER, "U-Unknown");
        f.Choose(IDC_PAT_SEX, "M-Male");
        EXPECT_EQ(CString("U-Unknown"), f.Text(IDC_PAT_GENDER));
        EXPECT_STREQ("U", f.Dialog().GetPatientRecord().GetGenderCode().c_str());
    });
}

TEST_F(DemographicsTest, AnUntouchedGenderListNeverWritesAGenderCode)
{
    TavCreator::PatientDlgCreator creator;
    user->OnNextDialog([](CDialog& dlg) {
        PatientForm f(dlg);
        FillRequired(f);
        f.Choose(IDC_PAT_SEX, "F-Female");
        f.ClickOK();
    });
    ASSERT_EQ(IDOK, creator.DisplayPatientDlg("", nullptr));
    const PatientDetailRecord stored = Read(creator.GetpPatientData()->GetPatientKey().c_str());
    EXPECT_STREQ("F", stored.GetSexCode().c_str());
    EXPECT_STREQ("", stored.GetGenderCode().c_str());
}

TEST_F(DemographicsTest, EveryFieldChangeIsPublishedWithItsKind)
{
    NoticeRecorder recorder;
    Create([&](PatientForm& f) {
        f.Demographics().GetPublisher().Subscribe(&recorder);
        f.Type(IDC_PAT_LAST, "Li");
        f.Choose(IDC_PAT_SEX, "F-Female");
        f.Type(IDC_PAT_ALIAS_LAST, "X");
        f.Demographics().GetPublisher().Unsubscribe(&recorder);
    });
    ASSERT_FALSE(recorder.notices.empty());
    for (const Notice& n : recorder.notices)
        EXPECT_EQ(PatientDemographicsImpl::PUBLISH_FIELD, n.kind);
    EXPECT_EQ("Li", recorder.notices[1].text); // typed one key at a time
    EXPECT_EQ(IDC_PAT_LAST, recorder.notices[1].id);
    EXPECT_EQ("F", recorder.notices[2].text);
    EXPECT_EQ("X", recorder.notices.back().text);
}

TEST_F(DemographicsTest, AChangeOfOrganizationIsPublishedAsKindTwoAndDecidesGenerate)
{
    ArchiveBuilder::OrgFields manual{"EAST", "East Clinic"};
    manual.generatesMrn = false;
    Build().Grant("admin", Build().Org(manual), true, true, true);
    NoticeRecorder recorder;
    Create([&](PatientForm& f) {
        f.Demographics().GetPublisher().Subscribe(&recorder);
        f.Choose(IDC_PAT_ORGANIZATION, "EAST");
        EXPECT_FALSE(f.Driver().IsEnabled(IDC_PAT_GENERATE));
        f.Choose(IDC_PAT_ORGANIZATION, "SOUTH");
        EXPECT_TRUE(f.Driver().IsEnabled(IDC_PAT_GENERATE));
        f.Demographics().GetPublisher().Unsubscribe(&recorder);
        EXPECT_STREQ("SOUTH", f.Dialog().GetPatientRecord().GetOrganizationID().c_str());
    });
    ASSERT_EQ(2u, recorder.notices.size());
    EXPECT_EQ(PatientDemographicsImpl::PUBLISH_ORGANIZATION, recorder.notices[0].kind);
    EXPECT_EQ("EAST", recorder.notices[0].text);
    EXPECT_EQ("SOUTH", recorder.notices[1].text);
}

TEST_F(DemographicsTest, GenerateFillsTheMrnAndAFailureSaysSo)
{
    Create([&](PatientForm& f) {
        f.Choose(IDC_PAT_ORGANIZATION, "NORTH");
        f.Driver().Click(IDC_PAT_GENERATE);
        const CString generated = f.Text(IDC_PAT_MRN);
        EXPECT_FALSE(generated.IsEmpty());
        EXPECT_STREQ(generated.GetString(), f.Dialog().GetPatientRecord().GetPatientID().c_str());
        EXPECT_EQ(CString("MRN: ") + generated, f.HeaderLines()[0]);

        FaultyServices faulty;
        faulty.faults.FailOn("GetAutogeneratedMRN", 6);
        user->ExpectMessage("Error generating MRN.");
        f.Driver().Click(IDC_PAT_GENERATE);
        EXPECT_EQ(generated, f.Text(IDC_PAT_MRN)) << "a failed generation changes nothing";
        EXPECT_EQ((std::vector<std::string>{"GetOrgIdFromKey", "GetAutogeneratedMRN"}), faulty.faults.Operations());
    });
}

TEST_F(DemographicsTest, ValidationRefusesInOrderWithItsMessagesAndFocus)
{
    Create([&](PatientForm& f) {
        PatientDemographicsImpl& form = f.Demographics();
        user->ExpectMessage("MRN cannot be empty.");
        EXPECT_FALSE(form.ValidateData());
        EXPECT_TRUE(f.HasFocus(IDC_PAT_MRN));
        f.Type(IDC_PAT_MRN, "  M7  ");
        user->ExpectMessage("Patient Last Name cannot be empty.");
        EXPECT_FALSE(form.ValidateData());
        EXPECT_STREQ("M7", f.Dialog().GetPatientRecord().GetPatientID().c_str()) << "stored trimmed";
        f.Type(IDC_PAT_LAST, "Moreau");
        user->ExpectMessage("Patient First Name cannot be empty.");
        EXPECT_FALSE(form.ValidateData());
        f.Type(IDC_PAT_FIRST, "Lea");
        EXPECT_TRUE(form.ValidateData());
        EXPECT_EQ(CString("  M7  "), f.Text(IDC_PAT_MRN)) << "the field keeps what was typed";
    });
    EXPECT_EQ(3u, user->Messages().size());
}

TEST_F(DemographicsTest, AFutureBirthDateIsRefusedWithTheStopIcon)
{
    Create([&](PatientForm& f) {
        FillRequired(f);
        f.Driver().ItemAs<DatePickerCtrl>(IDC_PAT_DOB)->SetDate(QDate::currentDate().addDays(2));
        user->ExpectMessage("Future date for \"Date of Birth\" is invalid.");
        EXPECT_FALSE(f.Demographics().ValidateData());
        EXPECT_TRUE(f.HasFocus(IDC_PAT_DOB));
    });
    ASSERT_EQ(1u, user->Messages().size());
    EXPECT_TRUE(user->Messages()[0].type & MB_ICONSTOP);
}

TEST_F(DemographicsTest, TheDateOfDeathIsCheckedAfterTheBirthDate)
{
    Create([&](PatientForm& f) {
        FillRequired(f);
        auto* dob = f.Driver().ItemAs<DatePickerCtrl>(IDC_PAT_DOB);
        dob->SetDate(QDate(1950, 6, 1));
        auto* dod = f.Driver().ItemAs<DateTimeEditCtrl>(IDC_PAT_DOD);
        ReplaceText(dod->lineEdit(), "31/31/2000");
        user->ExpectMessage(dod->GetInvalidDateMessage());
        EXPECT_FALSE(f.Demographics().ValidateData());
        EXPECT_TRUE(f.HasFocus(IDC_PAT_DOD));
        dod->SetDate(QDate::currentDate().addDays(1));
        user->ExpectMessage("Future date for \"Date of Death\" is invalid.");
        EXPECT_FALSE(f.Demographics().ValidateData());
        dod->SetDate(QDate(1949, 12, 31));
        user->ExpectMessage("\"Date of Death\" cannot be before \"Date Of Birth\".");
        EXPECT_FALSE(f.Demographics().ValidateData());
        EXPECT_TRUE(f.HasFocus(IDC_PAT_DOD));
        dod->SetDate(QDate(1950, 6, 1)); // the same day passes: the test is strictly earlier
        EXPECT_TRUE(f.Demographics().ValidateData());
        EXPECT_EQ(1950, f.Dialog().GetPatientRecord().GetDeathYear());
        dod->SetEmpty();
        EXPECT_TRUE(f.Demographics().ValidateData());
        EXPECT_FALSE(f.Dialog().GetPatientRecord().HasDateOfDeath());
    });
}

TEST_F(DemographicsTest, TheIdentifierIsNeverLengthCheckedButTheLastNameIs)
{
    const std::string key = Patient(m_north, "N-1");
    Edit(key, [&](PatientForm& f) {
        const CString longId(std::string(60, '7').c_str());
        f.Demographics().SetDlgItemText(IDC_PAT_GID, longId);
        EXPECT_TRUE(f.Demographics().ValidateData());
        EXPECT_STREQ(longId.GetString(), f.Dialog().GetPatientRecord().GetPatientGID().c_str());
        f.Demographics().SetDlgItemText(IDC_PAT_LAST, CString(std::string(51, 'L').c_str()));
        user->ExpectMessage("Enter no more than 50 characters.");
        EXPECT_FALSE(f.Demographics().ValidateData());
    });
}

TEST_F(DemographicsTest, AnMrnTheSiteCannotAcceptTakesTheFocusWithoutAMessage)
{
    SitePolicySettings site = SitePolicy::Get();
    site.numericMRN = true;
    SitePolicy::Set(site);
    Create([&](PatientForm& f) {
        FillRequired(f, "ABC");
        EXPECT_FALSE(f.Demographics().ValidateData());
        EXPECT_TRUE(f.HasFocus(IDC_PAT_MRN));
    });
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(DemographicsTest, NoSexCodeTakesTheFocusToTheSexList)
{
    Create([&](PatientForm& f) {
        FillRequired(f);
        f.Driver().ItemAs<ComboBox>(IDC_PAT_SEX)->SetCurSel(-1);
        EXPECT_FALSE(f.Demographics().ValidateData());
        EXPECT_TRUE(f.HasFocus(IDC_PAT_SEX));
    });
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(DemographicsTest, TheBirthDateDropDownTakesTheKeyboardFocus)
{
    Create([&](PatientForm& f) {
        auto* dob = f.Driver().ItemAs<DatePickerCtrl>(IDC_PAT_DOB);
        dob->setFocus();
        PressKey(dob, Qt::Key_F4);
        ASSERT_TRUE(dob->IsDroppedDown());
        EXPECT_TRUE(dob->calendar()->hasFocus() || dob->calendar()->isAncestorOf(QApplication::focusWidget()));
        dob->calendar()->window()->close();
    });
}

} // namespace
