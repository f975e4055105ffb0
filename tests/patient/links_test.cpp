// The Links page and what the patient dialog does with it: the list, MRN
// corrections, removing a link from a group of two and of more.

#include "patientfixture.h"

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/clinkpatientimpl.h"
#include "patient/patientdemographicsimpl.h"
#include "patient/patientdlg.h"

#include "faultyservices.h"
#include "listctrlex.h"
#include "publisher.h"
#include "sqlitepatientservice.h"

#include <gtest/gtest.h>

#include <QTest>

namespace {

class LinksTest : public PatientFixture
{
protected:
    void SetUp() override
    {
        PatientFixture::SetUp();
        m_east = Build().Org("EAST");
        Build().Grant("admin", m_east, true, true, true);
        north = Patient(m_north, "N-1", "Okafor", "Ada");
        south = Patient(m_south, "S-1", "Okafor", "Ada");
        east = Patient(m_east, "E-1", "Okafor", "Ada");
    }
    // Links the patients given into one group.
    void Group(const std::vector<std::string>& keys)
    {
        const std::string group = Build().LinkGroup(keys[0], keys[1]);
        for (size_t i = 2; i < keys.size(); ++i)
            Build().AddToGroup(group, keys[i]);
    }
    std::string GroupOf(const std::string& key)
    {
        return Text("SELECT link_group FROM patients WHERE patient_key = '" + key + "'");
    }
    int Run(const std::string& key, const std::function<void(PatientForm&)>& script,
            TavCreator::PatientDlgCreator* creator = nullptr)
    {
        return RunDialog(key, script, creator, "Links");
    }
    std::string m_east, north, south, east;
};

TEST_F(LinksTest, ListsTheGroupWithoutTheFederatedRecordAndSelectsThePatient)
{
    const std::string fed = Patient(m_federated, "F-1", "Okafor", "Ada");
    Group({north, south, fed});
    Run(south, [&](PatientForm& f) {
        ASSERT_EQ(2, f.LinkedRows());
        EXPECT_EQ(CString("Ada"), f.LinkedCell(0, CLinkPatientImpl::COL_FIRST_NAME));
        EXPECT_EQ(CString("Okafor"), f.LinkedCell(0, CLinkPatientImpl::COL_LAST_NAME));
        EXPECT_EQ(CString("S-1"), f.LinkedCell(0, CLinkPatientImpl::COL_MRN));
        EXPECT_EQ(CString("SOUTH"), f.LinkedCell(0, CLinkPatientImpl::COL_ORGANIZATION));
        EXPECT_EQ(CString("NORTH"), f.LinkedCell(1, CLinkPatientImpl::COL_ORGANIZATION));
        EXPECT_TRUE(f.Links().GetList()->IsItemSelected(0));
        EXPECT_TRUE(f.Driver().IsEnabled(IDC_LINKS_REMOVE));
        f.Screenshot("patient_edit_links");
    });
}

TEST_F(LinksTest, AnUnlinkedPatientCannotRemoveALink)
{
    Run(north, [&](PatientForm& f) {
        EXPECT_EQ(1, f.LinkedRows());
        EXPECT_FALSE(f.Driver().IsEnabled(IDC_LINKS_REMOVE));
    });
}

TEST_F(LinksTest, RemovingTheOnlyLinkAsksThenEmptiesTheListAndUnlinksThePatientItself)
{
    Group({north, south});
    TavCreator::PatientDlgCreator creator;
    user->ExpectMessage("Are you sure you want to remove the current link for the patient? Okafor,Ada", IDNO);
    user->ExpectMessage("Are you sure you want to remove the current link for the patient? Okafor,Ada", IDYES);
    FaultyServices faulty;
    const int result = Run(
        north,
        [&](PatientForm& f) {
            f.SelectLinkedRow(1);
            f.Driver().Click(IDC_LINKS_REMOVE);
            EXPECT_EQ(2, f.LinkedRows()) << "No changes nothing";
            EXPECT_FALSE(f.Links().HasRemovedLink());
            f.Driver().Click(IDC_LINKS_REMOVE);
            EXPECT_EQ(0, f.LinkedRows());
            EXPECT_TRUE(f.Links().HasRemovedLink());
            EXPECT_FALSE(f.Driver().IsEnabled(IDC_LINKS_REMOVE));
            faulty.faults.ClearCalls();
            f.ClickOK();
        },
        &creator);
    ASSERT_EQ(IDOK, result);
    // Two records: the patient itself leaves the group, whichever row was chosen.
    const std::vector<std::string> calls = faulty.faults.CallStrings();
    ASSERT_GE(calls.size(), 3u);
    EXPECT_EQ("GetLinkedPatients(" + north + "," + m_north + ")", calls[0]);
    EXPECT_EQ("UnLinkPatient(" + north + "," + m_north + ")", calls[1]);
    EXPECT_EQ("GetPatient(" + north + ",)", calls[2]);
    EXPECT_EQ("<none>", GroupOf(north));
    EXPECT_EQ("<none>", GroupOf(south));
    EXPECT_TRUE(creator.GetHasRemovedLink());
}

TEST_F(LinksTest, InALargerGroupOnlyTheChosenRecordLeaves)
{
    Group({north, south, east});
    TavCreator::PatientDlgCreator creator;
    user->ExpectMessage(IDYES);
    FaultyServices faulty;
    ASSERT_EQ(IDOK, Run(
                        north,
                        [&](PatientForm& f) {
                            ASSERT_EQ(3, f.LinkedRows());
                            int row = 0;
                            while (row < 3 && f.LinkedCell(row, CLinkPatientImpl::COL_ORGANIZATION) != "EAST")
                                ++row;
                            ASSERT_LT(row, 3);
                            f.SelectLinkedRow(row);
                            f.Driver().Click(IDC_LINKS_REMOVE);
                            EXPECT_EQ(2, f.LinkedRows());
                            faulty.faults.ClearCalls();
                            f.ClickOK();
                        },
                        &creator));
    EXPECT_EQ(1, faulty.faults.Count("UnLinkPatient"));
    EXPECT_EQ("<none>", GroupOf(east));
    EXPECT_EQ(GroupOf(north), GroupOf(south));
    EXPECT_NE("<none>", GroupOf(north));
    // The patient was not the one removed: it is not reloaded.
    EXPECT_EQ(0, faulty.faults.Count("GetPatient"));
    std::set<ACE_CString> keys;
    creator.GetLinkedPatientKeys(keys);
    EXPECT_EQ(3u, keys.size()) << "the page still holds the three records it listed";
}

TEST_F(LinksTest, RemovingThePatientItselfFromALargerGroupReloadsIt)
{
    Group({north, south, east});
    user->ExpectMessage(IDYES);
    FaultyServices faulty;
    Run(north, [&](PatientForm& f) {
        f.SelectLinkedRow(0);
        f.Driver().Click(IDC_LINKS_REMOVE);
        faulty.faults.ClearCalls();
        f.ClickOK();
    });
    const std::vector<std::string> calls = faulty.faults.CallStrings();
    ASSERT_GE(calls.size(), 3u);
    EXPECT_EQ("UnLinkPatient(" + north + "," + m_north + ")", calls[1]);
    EXPECT_EQ("GetPatient(" + north + ",)", calls[2]);
    EXPECT_EQ("<none>", GroupOf(north));
    EXPECT_EQ(GroupOf(south), GroupOf(east));
}

TEST_F(LinksTest, AThrownUnlinkShowsTheUpdateTextThenTheSaveGoesOn)
{
    Group({north, south});
    user->ExpectMessage(IDYES);
    FaultyServices faulty;
    faulty.faults.ThrowOn("UnLinkPatient", "The link changed meanwhile.");
    user->ExpectMessage("Error updating Patient ID N-1.  Reason: The link changed meanwhile.");
    EXPECT_EQ(IDOK, Run(north, [&](PatientForm& f) {
        f.Driver().Click(IDC_LINKS_REMOVE);
        f.ClickOK();
    }));
    EXPECT_EQ(1, faulty.faults.Count("ModifyPatient"));
}

TEST_F(LinksTest, ACorrectedLinkedMrnIsSavedOnTheLinkedRecord)
{
    Group({north, south});
    EXPECT_EQ(IDOK, Run(north, [&](PatientForm& f) {
        ASSERT_TRUE(f.EditLinkedMRN(1, "S-100"));
        f.Driver().PressEnter(); // ends the cell edit, not the dialog
        EXPECT_FALSE(f.Dialog().HasEnded());
        EXPECT_EQ(CString("S-100"), f.LinkedCell(1, CLinkPatientImpl::COL_MRN));
        f.ClickOK();
    }));
    EXPECT_STREQ("S-100", Read(south).GetPatientID().c_str());
    EXPECT_STREQ("N-1", Read(north).GetPatientID().c_str());
}

TEST_F(LinksTest, EditingThePatientsOwnMrnPublishesKindThreeAndTheFormFollows)
{
    Group({north, south});
    struct Recorder : Subscriber<long, long>
    {
        std::vector<long> kinds;
        void OnPublish(Publisher<long, long>*, long kind, long, const char*) override { kinds.push_back(kind); }
    } recorder;
    EXPECT_EQ(IDOK, Run(north, [&](PatientForm& f) {
        f.Links().GetPublisher().Subscribe(&recorder);
        ASSERT_TRUE(f.EditLinkedMRN(0, "N-2"));
        EXPECT_TRUE(f.Links().HasIdentityChanged());
        EXPECT_EQ(CString("MRN: N-2"), f.HeaderLines()[0]);
        EXPECT_EQ(CString("N-2"), f.Text(IDC_PAT_MRN));
        f.Links().GetPublisher().Unsubscribe(&recorder);
        f.ClickOK();
    }));
    ASSERT_FALSE(recorder.kinds.empty());
    EXPECT_EQ(PatientDemographicsImpl::PUBLISH_LINKED_MRN, recorder.kinds.back());
    EXPECT_STREQ("N-2", Read(north).GetPatientID().c_str());
}

TEST_F(LinksTest, EscapeInThePatientsOwnMrnPutsItBack)
{
    Group({north, south});
    const std::string before = Read(north).GetPatientID().c_str();
    EXPECT_EQ(IDOK, Run(north, [&](PatientForm& f) {
        ASSERT_TRUE(f.EditLinkedMRN(0, "N-2"));
        EXPECT_EQ(CString("N-2"), f.Text(IDC_PAT_MRN));
        QTest::keyClick(f.Links().GetMRNEditor()->editor(), Qt::Key_Escape);
        EXPECT_EQ(nullptr, f.Links().GetMRNEditor());
        EXPECT_FALSE(f.Dialog().HasEnded()) << "Escape ends the cell's edit, not the dialog";
        EXPECT_FALSE(f.Links().HasIdentityChanged());
        EXPECT_EQ(CString(before.c_str()), f.LinkedCell(0, CLinkPatientImpl::COL_MRN));
        EXPECT_EQ(CString(before.c_str()), f.Text(IDC_PAT_MRN));
        EXPECT_EQ(CString(("MRN: " + before).c_str()), f.HeaderLines()[0]);
        f.ClickOK();
    }));
    EXPECT_EQ(before, Read(north).GetPatientID().c_str());
}

TEST_F(LinksTest, AClearedLinkedMrnBlocksTheSave)
{
    Group({north, south});
    user->ExpectMessage("MRN cannot be empty.");
    EXPECT_EQ(IDCANCEL, Run(north, [&](PatientForm& f) {
        ASSERT_TRUE(f.EditLinkedMRN(1, "   "));
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
        EXPECT_EQ(CString("Links"), f.ActiveTab());
    }));
    EXPECT_STREQ("S-1", Read(south).GetPatientID().c_str());
}

TEST_F(LinksTest, ALinkedRecordThatFailsToSaveFailsTheSave)
{
    Group({north, south});
    FaultyServices faulty;
    faulty.faults.FailOn("ModifyPatient", 5, 2);
    EXPECT_EQ(IDCANCEL, Run(north, [&](PatientForm& f) {
        f.Tab("Demographics");
        f.Type(IDC_PAT_MIDDLE, "B");
        f.ClickOK();
        EXPECT_FALSE(f.Dialog().HasEnded());
    }));
    EXPECT_STREQ("B", Read(north).GetMiddleName().c_str()) << "the patient itself was modified";
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(LinksTest, ARemovalThenCancelUnlinksNothingButTheCreatorStillSaysSo)
{
    Group({north, south});
    user->ExpectMessage(IDYES);
    TavCreator::PatientDlgCreator creator;
    EXPECT_EQ(IDCANCEL, Run(
                            north,
                            [&](PatientForm& f) {
                                f.Driver().Click(IDC_LINKS_REMOVE);
                                f.ClickCancel();
                            },
                            &creator));
    EXPECT_TRUE(creator.GetHasRemovedLink());
    EXPECT_NE("<none>", GroupOf(north));
    EXPECT_EQ(GroupOf(north), GroupOf(south));
}

TEST_F(LinksTest, TheCreatorSaysNothingWasRemovedBeforeAnyDialog)
{
    TavCreator::PatientDlgCreator creator;
    EXPECT_FALSE(creator.GetHasRemovedLink());
    std::set<ACE_CString> keys;
    creator.GetLinkedPatientKeys(keys);
    EXPECT_TRUE(keys.empty());
}

} // namespace
