// The merge launch: loading the linked records, the organization and rights
// check with its messages and log lines, the order of the lists, and what
// the creator reads back.

#include "mergelinkfixture.h"

#include "boundary/mergepatientsdlgcreator.h"
#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "mergelink/linkedmergelistctrl.h"
#include "mergelink/mergepatientsdlg.h"
#include "mergelink/mergepatientsdlgimpl.h"

#include "faultyservices.h"
#include "scopedservices.h"
#include "stubservices.h"

#include "linkedpatientinfo.h"

namespace {

const char* const kAccess = "Error accessing patient data: The patient data might have been deleted or merged.";
const char* const kNoLink = "The selected merge candidates are linked to patients in other organizations.\nYou do not "
                            "have permission to link patients, please contact your administrator.";
const char* const kNoMerge = "The selected merge candidates are linked to patients in other organizations.\nYou do not "
                             "have permission to merge patients on all linked organizations, please contact your "
                             "administrator.";
const char* const kNoDemographics =
    "One or more organization is not configured to accept demographics update.\nDo you want to continue?";
const char* const kConfirm = "Are you sure you want to merge these patients? You cannot undo a patient merge.";

std::string LinkLog(const std::string& org)
{
    return "TavCreator::MergePatientsDlgCreator::InitNonDemoUpdateOrgsAndGetUserPermission logged in user does not "
           "have permission to Link Patient on OrgID:" + org + "\n";
}

std::string MergeLog(const std::string& org)
{
    return "TavCreator::MergePatientsDlgCreator::InitNonDemoUpdateOrgsAndGetUserPermission logged in user does not "
           "have permission to merge Patient on OrgID:" + org + "\n";
}

class MergeCreatorTest : public MergeLinkFixture
{
protected:
    void SetUp() override
    {
        MergeLinkFixture::SetUp();
        target = Patient(m_north, "T100", "Smith", "John");
        source = Patient(m_north, "S100", "Smyth", "John");
    }
    // Records the order the dialog got the lists in, then cancels.
    void CancelDialogNoting(std::string* first, std::string* second = nullptr, int* linkedRows = nullptr)
    {
        user->OnNextDialog([=](CDialog& d) {
            MergeForm f(d);
            if (first)
                *first = f.Panel().GetRecord1()->GetPatientKey().c_str();
            if (second)
                *second = f.Panel().GetRecord2()->GetPatientKey().c_str();
            if (linkedRows)
                *linkedRows = f.LinkedList().GetItemCount();
            f.ClickCancel();
        });
    }
    std::string Org(const std::string& id, bool acceptsDemographics)
    {
        ArchiveBuilder::OrgFields f{id, id + " Hospital"};
        f.acceptsDemographicsUpdate = acceptsDemographics;
        const std::string key = Build().Org(f);
        Build().Grant("admin", key, true, true, true);
        return key;
    }
    std::string target, source;
    TavCreator::MergePatientsDlgCreator creator;
};

TEST_F(MergeCreatorTest, FailedLoadShowsTheAccessErrorAndReturnsTwo)
{
    FaultyServices faulty;
    faulty.faults.FailOn("GetLinkedPatientsForMergeCandidates", 7);
    user->ExpectMessage(kAccess);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Dialogs().empty());
    EXPECT_EQ((std::vector<std::string>{"GetLinkedPatientsForMergeCandidates(" + target + "," + source + ")"}),
              faulty.faults.CallStrings());
}

TEST_F(MergeCreatorTest, ThrowingLoadShowsTheAccessErrorToo)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("GetLinkedPatientsForMergeCandidates", "connection lost");
    user->ExpectMessage(kAccess);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Dialogs().empty());
}

TEST_F(MergeCreatorTest, EmptyListShowsTheAccessError)
{
    struct Empty : StubPatientManagementService
    {
        int GetLinkedPatientsForMergeCandidates(const ACE_CString&, const ACE_CString& second,
                                                std::vector<PatientDetailRecord*>&,
                                                std::vector<PatientDetailRecord*>& secondLinked) override
        {
            auto* r = new PatientDetailRecord();
            r->SetPatientKey(second);
            r->SetOrganizationID("NORTH");
            secondLinked.push_back(r);
            return 0;
        }
    } empty;
    ScopedServices scope(&empty);
    user->ExpectMessage(kAccess);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Dialogs().empty());
}

TEST_F(MergeCreatorTest, LongerTargetListComesFirstAndTheCountsAreLogged)
{
    Build().LinkGroup(target, Patient(m_south, "T200", "Smith", "John"));
    // A third record of the target's group, in an organization of its own.
    const std::string west = Org("WEST", true);
    const std::string group = Text("SELECT link_group FROM patients WHERE patient_key = '" + target + "'");
    Build().AddToGroup(group, Patient(west, "T300", "Smith", "John"));
    std::string first;
    int rows = -1;
    CancelDialogNoting(&first, nullptr, &rows);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_EQ(target, first);
    EXPECT_EQ(2, rows);
    EXPECT_TRUE(log->Contains(
        LM_DEBUG, "TavCreator::MergePatientsDlgCreator::DisplayDialog Target(3) and source(1) linked patients count\n"));
}

TEST_F(MergeCreatorTest, LongerSourceListComesFirst)
{
    Build().LinkGroup(source, Patient(m_south, "S200", "Smyth", "John"));
    std::string first;
    CancelDialogNoting(&first);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_EQ(source, first);
    EXPECT_TRUE(log->Contains(
        LM_DEBUG, "TavCreator::MergePatientsDlgCreator::DisplayDialog Target(1) and source(2) linked patients count\n"));
}

TEST_F(MergeCreatorTest, EqualLengthsPutTheSourceFirstWithoutALogLine)
{
    std::string first, second;
    CancelDialogNoting(&first, &second);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_EQ(source, first);
    EXPECT_EQ(target, second);
    for (const LogLine& line : log->Lines())
        EXPECT_EQ(std::string::npos, line.text.find("linked patients count")) << line.text;
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(MergeCreatorTest, AllOrganizationsAcceptAndRightsHeldOpensWithoutAQuestion)
{
    Build().LinkGroup(target, Patient(m_south, "T200", "Smith", "John"));
    std::string first;
    CancelDialogNoting(&first);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Messages().empty());
    ASSERT_EQ(1u, user->Dialogs().size());
    EXPECT_EQ(CString("Merge Patients"), user->Dialogs()[0].caption);
    EXPECT_TRUE(creator.GetNonDemoUpdateOrgs().empty());
}

TEST_F(MergeCreatorTest, MissingLinkRightInATargetOrganizationRefusesEvenWithinOneOrganization)
{
    Build().LinkGroup(target, Patient(m_south, "T200", "Smith", "John"));
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, true);
    Build().Grant("clerk", m_south, true, false, true);
    LogInAs("clerk");
    user->ExpectMessage(kNoLink);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Dialogs().empty());
    EXPECT_EQ(UINT(MB_OK), user->Messages().at(0).type & 0x0Fu);
    EXPECT_TRUE(log->Contains(LM_DEBUG, LinkLog("SOUTH")));
}

TEST_F(MergeCreatorTest, MissingLinkRightInASourceOrganizationRefuses)
{
    // The target's last record is in WEST, which the source lacks: not shared.
    const std::string west = Org("WEST", true);
    Build().LinkGroup(target, Patient(west, "T300", "Smith", "John"));
    Build().LinkGroup(source, Patient(m_south, "S200", "Smyth", "John"));
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, true);
    Build().Grant("clerk", west, true, true, true);
    Build().Grant("clerk", m_south, true, false, true);
    LogInAs("clerk");
    user->ExpectMessage(kNoLink);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Dialogs().empty());
    EXPECT_TRUE(log->Contains(LM_DEBUG, LinkLog("SOUTH")));
    EXPECT_FALSE(log->Contains(LM_DEBUG, LinkLog("NORTH")));
    EXPECT_FALSE(log->Contains(LM_DEBUG, LinkLog("WEST")));
}

TEST_F(MergeCreatorTest, SharedLastTargetRecordOpensDespiteAMissingLinkRight)
{
    // The target's list is the patient alone (NORTH, which the source has):
    // the merge right decides, and it is held; the missing link right in the
    // source's SOUTH record is only logged.
    Build().LinkGroup(source, Patient(m_south, "S200", "Smyth", "John"));
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, true);
    Build().Grant("clerk", m_south, true, false, true);
    LogInAs("clerk");
    CancelDialogNoting(nullptr);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Messages().empty());
    EXPECT_EQ(1u, user->Dialogs().size());
    EXPECT_TRUE(log->Contains(LM_DEBUG, LinkLog("SOUTH")));
}

TEST_F(MergeCreatorTest, MissingMergeRightInTheSharedOrganizationRefuses)
{
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, false);
    LogInAs("clerk");
    user->ExpectMessage(kNoMerge);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(user->Dialogs().empty());
    EXPECT_TRUE(log->Contains(LM_DEBUG, MergeLog("NORTH")));
}

TEST_F(MergeCreatorTest, MissingMergeRightInASharedLinkedOrganizationRefuses)
{
    Build().LinkGroup(target, Patient(m_south, "T200", "Smith", "John"));
    Build().LinkGroup(source, Patient(m_south, "S200", "Smyth", "John"));
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, true);
    Build().Grant("clerk", m_south, true, true, false);
    LogInAs("clerk");
    user->ExpectMessage(kNoMerge);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(log->Contains(LM_DEBUG, MergeLog("SOUTH")));
    EXPECT_FALSE(log->Contains(LM_DEBUG, MergeLog("NORTH")));
}

TEST_F(MergeCreatorTest, OrganizationWithoutDemographicsUpdateAsksAndCancelStops)
{
    const std::string west = Org("WEST", false);
    const std::string t = Patient(west, "W1", "Brown", "Ann");
    const std::string s = Patient(west, "W2", "Browne", "Ann");
    // The target's last record is in NORTH, which the source lacks.
    Build().LinkGroup(t, Patient(m_north, "N1", "Brown", "Ann"));
    user->ExpectMessage(kNoDemographics, IDCANCEL);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(t.c_str(), s.c_str(), nullptr));
    EXPECT_TRUE(user->Dialogs().empty());
    EXPECT_EQ(UINT(MB_OKCANCEL), user->Messages().at(0).type & 0x0Fu);
    EXPECT_EQ((std::vector<ACE_CString>{"WEST"}), creator.GetNonDemoUpdateOrgs());
}

TEST_F(MergeCreatorTest, OrganizationWithoutDemographicsUpdateAsksAndOkOpensWithTheNote)
{
    const std::string west = Org("WEST", false);
    const std::string t = Patient(west, "W1", "Brown", "Ann");
    const std::string s = Patient(west, "W2", "Browne", "Ann");
    Build().LinkGroup(t, Patient(m_north, "N1", "Brown", "Ann"));
    user->ExpectMessage(kNoDemographics, IDOK);
    std::vector<CString> note;
    user->OnNextDialog([&](CDialog& d) {
        MergeForm f(d);
        note = f.Panel().GetNoteTexts();
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(t.c_str(), s.c_str(), nullptr));
    ASSERT_EQ(4u, note.size());
    EXPECT_EQ(CString("Organization is not configured to accept demographics update"), note[3]);
}

TEST_F(MergeCreatorTest, OnlyTheTargetsLastRecordDecidesShared)
{
    // Both patients in a blocked organization and nothing linked: the last
    // (only) record of the target's list is in an organization the source
    // has, so the dialog opens with no question although WEST is blocked.
    const std::string west = Org("WEST", false);
    const std::string t = Patient(west, "W1", "Brown", "Ann");
    const std::string s = Patient(west, "W2", "Browne", "Ann");
    std::string first;
    CancelDialogNoting(&first);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(t.c_str(), s.c_str(), nullptr));
    EXPECT_TRUE(user->Messages().empty());
    EXPECT_EQ(1u, user->Dialogs().size());
    EXPECT_EQ((std::vector<ACE_CString>{"WEST"}), creator.GetNonDemoUpdateOrgs());
}

TEST_F(MergeCreatorTest, OrganizationListIsNeverClearedBetweenRuns)
{
    const std::string west = Org("WEST", false);
    const std::string t = Patient(west, "W1", "Brown", "Ann");
    const std::string s = Patient(west, "W2", "Browne", "Ann");
    Build().LinkGroup(t, Patient(m_north, "N1", "Brown", "Ann"));
    user->ExpectMessage(kNoDemographics, IDCANCEL);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(t.c_str(), s.c_str(), nullptr));

    // A second pair where every organization accepts: the question still
    // comes, because the creator remembers WEST.
    Build().LinkGroup(target, Patient(m_south, "T200", "Smith", "John"));
    user->ExpectMessage(kNoDemographics, IDCANCEL);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_EQ((std::vector<ACE_CString>{"WEST"}), creator.GetNonDemoUpdateOrgs());

    // A fresh creator asks nothing for the same pair.
    TavCreator::MergePatientsDlgCreator fresh;
    CancelDialogNoting(nullptr);
    EXPECT_EQ(IDCANCEL, fresh.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_EQ(2u, user->Messages().size());
}

TEST_F(MergeCreatorTest, ConfirmedMergeHandsBackTheDialogsResults)
{
    const std::string ts = Patient(m_south, "T200", "Smith", "John");
    const std::string ss = Patient(m_south, "S200", "Smyth", "John");
    Build().LinkGroup(target, ts);
    Build().LinkGroup(source, ss);
    user->ExpectMessage(kConfirm, IDYES);
    user->OnNextDialog([&](CDialog& d) {
        MergeForm f(d);
        // The target's record (record 2: equal lengths put the source first) survives.
        f.SelectAll(2);
        f.ChooseLinked(0, 1);
        f.ClickMerge();
    });
    EXPECT_EQ(IDOK, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_EQ(target, std::string(creator.GetTargetPatientRecord().GetPatientKey().c_str()));
    EXPECT_EQ("T100", std::string(creator.GetTargetPatientRecord().GetPatientID().c_str()));
    EXPECT_EQ(CString(source.c_str()), creator.GetSourcePatientKey());
    ASSERT_EQ(1u, creator.GetLinkedPatientSelection().size());
    // SOUTH: record 1's (the source's) linked record kept.
    EXPECT_EQ(ts, std::string(creator.GetLinkedPatientSelection()[0]->GetSourcePatientKey().c_str()));
    EXPECT_EQ(ss, std::string(creator.GetLinkedPatientSelection()[0]->GetTargetPatientKey().c_str()));
}

TEST_F(MergeCreatorTest, CancelledMergeHandsBackNothing)
{
    user->OnNextDialog([&](CDialog& d) {
        MergeForm f(d);
        f.SelectAll(1);
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_TRUE(creator.GetTargetPatientRecord().GetPatientKey().is_empty());
    EXPECT_TRUE(creator.GetSourcePatientKey().IsEmpty());
    EXPECT_TRUE(creator.GetLinkedPatientSelection().empty());
    EXPECT_EQ((std::vector<std::string>{source, target}), ShownAudits());
}

TEST_F(MergeCreatorTest, ReasonForFailure)
{
    EXPECT_EQ(CString("Error merging patients.  Reason: disk full"), creator.GetReasonForMergerFailure("disk full"));
}

} // namespace

namespace {

TEST_F(MergeCreatorTest, CreatorBuildsTheDialogWithItsHeaderText)
{
    CString header, ok;
    bool mergeEnabled = true;
    user->OnNextDialog([&](CDialog& d) {
        MergeForm f(d);
        header = f.Dialog().GetHeader()->GetHeaderText();
        ok = f.Dialog().GetFooter()->GetOKButton().GetWindowText();
        mergeEnabled = f.MergeEnabled();
        f.ClickCancel();
    });
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(target.c_str(), source.c_str(), nullptr));
    EXPECT_EQ(CString("Carefully review the information for the two patient records you intend to merge and select the "
                      "fields you wish to keep."),
              header);
    EXPECT_EQ(CString("Merge Patients"), ok);
    EXPECT_FALSE(mergeEnabled);
}

} // namespace
