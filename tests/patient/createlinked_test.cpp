// The Create Linked Patient page and the create that follows it: rows,
// organizations chosen once, the copies created and linked.

#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/createlinkedpatientsimpl.h"
#include "patient/createlinkedpatientsrowdlg.h"
#include "patient/patientdlg.h"

#include "faultyservices.h"
#include "sqlitepatientservice.h"

#include "uiinput.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace {

class CreateLinkedTest : public PatientFixture
{
protected:
    int Run(const std::function<void(PatientForm&)>& script, TavCreator::PatientDlgCreator* creator = nullptr)
    {
        return RunDialog("", script, creator);
    }
    static CreateLinkedPatientsRowDlg* Row(size_t i) { return CreateLinkedPatientsImpl::GetRows().at(i); }
    static std::vector<CString> Items(CreateLinkedPatientsRowDlg* row)
    {
        std::vector<CString> items;
        for (int i = 0; i < row->GetOrganizationBox()->GetCount(); ++i)
            items.push_back(row->GetOrganizationBox()->GetLBText(i));
        return items;
    }
    static void FillPatient(PatientForm& f, const char* org = "NORTH")
    {
        f.Choose(IDC_PAT_ORGANIZATION, org);
        f.Type(IDC_PAT_MRN, "P-1");
        f.Type(IDC_PAT_LAST, "Sato");
        f.Type(IDC_PAT_FIRST, "Yui");
    }
    static bool AddRow(PatientForm& f, const char* org, const char* mrn)
    {
        f.Driver().Click(IDC_CL_ADD);
        CreateLinkedPatientsRowDlg* row = CreateLinkedPatientsImpl::GetRows().back();
        return ChooseComboItem(row->GetOrganizationBox(), org) && ReplaceText(row->GetMRNEdit(), mrn);
    }
};

TEST_F(CreateLinkedTest, TheFirstRowIsThePatientItselfAndFollowsTheDemographics)
{
    Run([&](PatientForm& f) {
        FillPatient(f, "SOUTH");
        f.Tab("Create Linked Patient");
        ASSERT_EQ(1u, CreateLinkedPatientsImpl::GetRows().size());
        CreateLinkedPatientsRowDlg* first = Row(0);
        EXPECT_EQ(CString("SOUTH"), first->GetOrganizationID());
        EXPECT_EQ(CString("P-1"), first->GetMRN());
        EXPECT_EQ(CString("P-1"), GetWindowText(first->GetMRNEdit()));
        EXPECT_FALSE(first->GetOrganizationBox()->isEnabled());
        EXPECT_FALSE(first->GetMRNEdit()->isEnabled());
        EXPECT_FALSE(f.Driver().IsEnabled(IDC_CL_REMOVE));
        EXPECT_TRUE(f.Driver().IsEnabled(IDC_CL_ADD));
        f.Screenshot("patient_create_create_linked_patient");
    });
    EXPECT_TRUE(CreateLinkedPatientsImpl::GetRows().empty()) << "the shared list empties with the page";
}

TEST_F(CreateLinkedTest, WithTheCreateRightInOneOrganizationPlusIsDisabled)
{
    Grant("clerk", {m_north}, {m_north});
    LogInAs("clerk");
    Run([&](PatientForm& f) {
        f.Tab("Create Linked Patient");
        EXPECT_FALSE(f.Driver().IsEnabled(IDC_CL_ADD));
        EXPECT_EQ((std::vector<CString>{"NORTH"}), Items(Row(0)));
    });
}

TEST_F(CreateLinkedTest, TwoRowsNeverHoldTheSameOrganization)
{
    Run([&](PatientForm& f) {
        FillPatient(f, "NORTH");
        f.Tab("Create Linked Patient");
        const int limit = f.CreateLinked().GetOrganizationLimit();
        EXPECT_EQ(4, limit) << "Enterprise, NORTH, SOUTH and FED";
        f.Driver().Click(IDC_CL_ADD);
        const std::vector<CString> second = Items(Row(1));
        EXPECT_EQ(second.end(), std::find(second.begin(), second.end(), CString("NORTH")));
        EXPECT_TRUE(f.Driver().IsEnabled(IDC_CL_REMOVE));
        ChooseComboItem(Row(1)->GetOrganizationBox(), "SOUTH");
        f.Driver().Click(IDC_CL_ADD);
        const std::vector<CString> third = Items(Row(2));
        EXPECT_EQ(third.end(), std::find(third.begin(), third.end(), CString("SOUTH")));
        EXPECT_EQ(third.end(), std::find(third.begin(), third.end(), CString("NORTH")));
        ReplaceText(Row(1)->GetMRNEdit(), "S-300");
        f.Screenshot("patient_create_create_linked_patient_rows");
        const CString thirdOrg = Row(2)->GetOrganizationID();
        const std::vector<CString> secondNow = Items(Row(1));
        EXPECT_EQ(secondNow.end(), std::find(secondNow.begin(), secondNow.end(), thirdOrg));
        f.Driver().Click(IDC_CL_ADD);
        EXPECT_EQ(4u, CreateLinkedPatientsImpl::GetRows().size());
        EXPECT_FALSE(f.Driver().IsEnabled(IDC_CL_ADD)) << "as many rows as organizations";
    });
}

TEST_F(CreateLinkedTest, MinusRemovesTheTickedRowsAndGivesTheirOrganizationsBack)
{
    Run([&](PatientForm& f) {
        FillPatient(f, "NORTH");
        f.Tab("Create Linked Patient");
        ASSERT_TRUE(AddRow(f, "SOUTH", "S-9"));
        ASSERT_TRUE(AddRow(f, "FED", "F-9"));
        SetCheckBox(Row(1)->GetDlgItem(IDC_CL_ROW_CHECK), true);
        f.Driver().Click(IDC_CL_REMOVE);
        ASSERT_EQ(2u, CreateLinkedPatientsImpl::GetRows().size());
        EXPECT_EQ(CString("FED"), Row(1)->GetOrganizationID());
        EXPECT_EQ(CreateLinkedPatientsImpl::ROW_TOP + CreateLinkedPatientsImpl::ROW_HEIGHT, Row(1)->y());
        const std::vector<CString> items = Items(Row(1));
        EXPECT_NE(items.end(), std::find(items.begin(), items.end(), CString("SOUTH")));
        EXPECT_TRUE(f.Driver().IsEnabled(IDC_CL_ADD));
        SetCheckBox(Row(1)->GetDlgItem(IDC_CL_ROW_CHECK), true);
        f.Driver().Click(IDC_CL_REMOVE);
        EXPECT_EQ(1u, CreateLinkedPatientsImpl::GetRows().size());
        EXPECT_FALSE(f.Driver().IsEnabled(IDC_CL_REMOVE));
    });
}

TEST_F(CreateLinkedTest, ARowLeftWithoutAnMrnBlocksTheSaveAndTakesTheFocus)
{
    FaultyServices faulty;
    user->ExpectMessage("MRN cannot be empty.");
    EXPECT_EQ(IDCANCEL, Run([&](PatientForm& f) {
        FillPatient(f);
        f.Tab("Create Linked Patient");
        ASSERT_TRUE(AddRow(f, "SOUTH", "  "));
        f.Tab("Demographics");
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
        EXPECT_EQ(CString("Create Linked Patient"), f.ActiveTab());
        QWidget* focus = QApplication::focusWidget();
        EXPECT_TRUE(focus && (focus == Row(1)->GetMRNEdit() || Row(1)->GetMRNEdit()->isAncestorOf(focus)));
    }));
    EXPECT_EQ(0, faulty.faults.Count("CreatePatient"));
}

TEST_F(CreateLinkedTest, CreatesTheCopiesAndLinksThemToThePatient)
{
    TavCreator::PatientDlgCreator creator;
    ASSERT_EQ(IDOK, Run(
                        [&](PatientForm& f) {
                            FillPatient(f, "NORTH");
                            f.Tab("Create Linked Patient");
                            ASSERT_TRUE(AddRow(f, "SOUTH", " S-77 "));
                            ASSERT_TRUE(AddRow(f, "FED", "F-77"));
                            f.ClickOK();
                        },
                        &creator));
    const std::string key = creator.GetpPatientData()->GetPatientKey().c_str();
    std::vector<PatientDetailRecord*> linked;
    ASSERT_EQ(0, Arc().Patients().GetLinkedPatients(key.c_str(), "", linked));
    std::set<std::string> seen;
    for (PatientDetailRecord* r : linked) {
        seen.insert(std::string(r->GetOrganizationID().c_str()) + ":" + r->GetPatientID().c_str());
        EXPECT_STREQ("Sato", r->GetLastName().c_str());
        delete r;
    }
    EXPECT_EQ((std::set<std::string>{"NORTH:P-1", "SOUTH:S-77", "FED:F-77"}), seen);
    EXPECT_GT(creator.GetpPatientData()->GetLinkID().length(), 0u) << "the link identifier comes back";
    EXPECT_EQ(std::string(creator.GetpPatientData()->GetLinkID().c_str()),
              Text("SELECT link_group FROM patients WHERE patient_key = '" + key + "'"));
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(CreateLinkedTest, WithoutTheLinkRightTheCopiesAreCreatedButNotLinked)
{
    Grant("clerk", {m_north, m_south}, {});
    LogInAs("clerk");
    user->ExpectMessage("Logged in user does not have permission to link a patient to organization NORTH");
    user->ExpectMessage("Logged in user does not have permission to link a patient to organization SOUTH");
    FaultyServices faulty;
    ASSERT_EQ(IDOK, Run([&](PatientForm& f) {
        FillPatient(f, "NORTH");
        f.Tab("Create Linked Patient");
        ASSERT_TRUE(AddRow(f, "SOUTH", "S-5"));
        f.ClickOK();
    }));
    EXPECT_EQ(2, faulty.faults.Count("CreatePatient"));
    EXPECT_EQ(0, faulty.faults.Count("LinkPatients"));
    EXPECT_EQ(1, Count("SELECT COUNT(*) FROM patients WHERE mrn = 'S-5' AND link_group IS NULL"));
}

TEST_F(CreateLinkedTest, ACopyTheArchiveRefusesIsNeitherCreatedNorLinked)
{
    Patient(m_south, "S-TAKEN");
    FaultyServices faulty;
    user->ExpectMessage(IDOK);
    Run([&](PatientForm& f) {
        FillPatient(f, "NORTH");
        f.Tab("Create Linked Patient");
        ASSERT_TRUE(AddRow(f, "SOUTH", "S-TAKEN"));
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
    });
    ASSERT_EQ(1u, user->Messages().size());
    EXPECT_EQ(0, user->Messages()[0].text.Find("Error creating Patient ID P-1.  Reason: "));
    EXPECT_NE(-1, user->Messages()[0].text.Find("S-TAKEN"));
    EXPECT_EQ(0, faulty.faults.Count("LinkPatients"));
}

} // namespace
