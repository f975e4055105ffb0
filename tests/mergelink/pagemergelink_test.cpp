// Merge and link started from the worklist page against a seeded archive:
// the dialogs, the service calls, what the archive holds afterwards, and the
// failure paths.

#include "mergelinkfixture.h"

#include "boundary/dialogfooter.h"
#include "duplicates/duplicatepatientlist.h"
#include "duplicates/duplicatepatientpage.h"
#include "mergelink/linkpatientsdlg.h"
#include "mergelink/mergepatientsdlg.h"
#include "mergelink/mergepatientsdlgimpl.h"

#include "faultyservices.h"
#include "uiinput.h"

#include "duplicatepatientrecord.h"
#include "linkedpatientinfo.h"
#include "sqlitepatientservice.h"
#include "listctrlex.h"

#include <QSignalSpy>
#include <QTest>
#include <QWidget>

namespace {

constexpr UINT kMerge = 20010;
constexpr UINT kLink = 20011;
const char* const kConfirm = "Are you sure you want to merge these patients? You cannot undo a patient merge.";
const char* const kNoMerge = "The selected merge candidates are linked to patients in other organizations.\nYou do not "
                             "have permission to merge patients on all linked organizations, please contact your "
                             "administrator.";

class PageMergeLinkTest : public MergeLinkFixture
{
protected:
    void SetUp() override
    {
        MergeLinkFixture::SetUp();
        // A merge pair in NORTH, each linked to a record in SOUTH.
        a1 = Patient(m_north, "0000101", "Smith", "John", "19700101", "111111111");
        a2 = Patient(m_north, "0000102", "Smyth", "John", "19700101", "111111111");
        a1s = Patient(m_south, "0000201", "Brown", "Bob", "19600606");
        a2s = Patient(m_south, "0000202", "Jones", "Mary", "19500505", "", "F");
        Build().LinkGroup(a1, a1s);
        Build().LinkGroup(a2, a2s);
        e1 = Build().Exam(a1, "ACC1");
        e2 = Build().Exam(a2, "ACC2");
        e2s = Build().Exam(a2s, "ACC3");
        st2 = Build().Study(e2, a2);
        // A link pair across organizations.
        c1 = Patient(m_south, "0000301", "Green", "Eve", "19900909", "222222222", "F");
        c2 = Patient(m_north, "0000302", "Green", "Eve", "19900909", "222222222", "F");
    }
    void TearDown() override
    {
        window.reset();
        MergeLinkFixture::TearDown();
    }
    void Open()
    {
        window = std::make_unique<QWidget>();
        window->resize(1100, 420);
        page = new CDuplicatePatientPage();
        page->Create(window.get(), CRect(0, 0, 1100, 420), 77);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        page->DisplayItems();
    }
    CDuplicatePatientList& List() const { return *page->GetList(); }
    // The row whose pair holds both keys; -1 when none.
    int Row(const std::string& k1, const std::string& k2) const
    {
        for (int r = 0; r < List().GetItemCount(); ++r) {
            const DuplicatePatientRecord* rec = List().GetRecord(r);
            const std::string f = rec->GetFirstPatient().GetPatientKey().c_str();
            const std::string s = rec->GetSecondPatient().GetPatientKey().c_str();
            if ((f == k1 && s == k2) || (f == k2 && s == k1))
                return r;
        }
        return -1;
    }
    void RightClick(int row)
    {
        ASSERT_GE(row, 0);
        const QRect cell = List().visualRect(List().model()->index(row, 0));
        QTest::mouseClick(List().viewport(), Qt::RightButton, {}, cell.center());
    }
    // Merges the a1/a2 pair from the page keeping a1, choosing in SOUTH the
    // record of `keepSouth`.
    void MergeKeepingA1(const std::string& keepSouth)
    {
        user->ChooseNextMenu(kMerge);
        user->ExpectMessage(kConfirm, IDYES);
        user->OnNextDialog([&](CDialog& d) {
            MergeForm f(d);
            const bool a1IsFirst = a1 == f.Panel().GetRecord1()->GetPatientKey().c_str();
            record1 = f.Panel().GetRecord1()->GetPatientKey().c_str();
            record2 = f.Panel().GetRecord2()->GetPatientKey().c_str();
            f.SelectAll(a1IsFirst ? 1 : 2);
            const bool southFirst = keepSouth == (a1IsFirst ? a1s : a2s);
            f.ChooseLinked(0, southFirst ? 1 : 2);
            f.ClickMerge();
        });
        RightClick(Row(a1, a2));
    }

    std::string a1, a2, a1s, a2s, e1, e2, e2s, st2, c1, c2, record1, record2;
    std::unique_ptr<QWidget> window;
    CDuplicatePatientPage* page = nullptr;
};

TEST_F(PageMergeLinkTest, MergeFromThePageMovesEverythingAndTheIssueLeavesTheList)
{
    Open();
    ASSERT_GE(Row(a1, a2), 0);
    const int rowsBefore = List().GetItemCount();
    MergeKeepingA1(a1s);
    ASSERT_EQ(1u, user->Dialogs().size());
    EXPECT_EQ(IDOK, user->Dialogs()[0].result);

    // a2 and its SOUTH record are merged away; their exams and studies moved.
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM patients WHERE patient_key IN ('" + a2 + "','" + a2s + "')"));
    EXPECT_EQ(2, Count("SELECT COUNT(*) FROM exams WHERE patient_key = '" + a1 + "'"));
    EXPECT_EQ(a1, Text("SELECT patient_key FROM exams WHERE exam_key = '" + e2 + "'"));
    EXPECT_EQ(a1, Text("SELECT patient_key FROM studies WHERE study_key = '" + st2 + "'"));
    EXPECT_EQ(a1s, Text("SELECT patient_key FROM exams WHERE exam_key = '" + e2s + "'"));
    // The linked records are paired: a1 and a1s still share one group.
    EXPECT_EQ(Text("SELECT link_group FROM patients WHERE patient_key = '" + a1 + "'"),
              Text("SELECT link_group FROM patients WHERE patient_key = '" + a1s + "'"));
    EXPECT_EQ(a1, Text("SELECT survivor_key FROM merged_patients WHERE old_key = '" + a2 + "'"));
    EXPECT_EQ(a1s, Text("SELECT survivor_key FROM merged_patients WHERE old_key = '" + a2s + "'"));
    // The survivor keeps its own MRN and the chosen name.
    EXPECT_EQ("0000101", Text("SELECT mrn FROM patients WHERE patient_key = '" + a1 + "'"));

    // Audit: the dialog showed record 1 and record 2, then the merge.
    const auto audit = AuditRows();
    ASSERT_EQ(3u, audit.size());
    EXPECT_EQ(std::make_pair(51, record1), audit[0]);
    EXPECT_EQ(std::make_pair(51, record2), audit[1]);
    EXPECT_EQ(4, audit[2].first);
    EXPECT_EQ(a1, audit[2].second);

    // A new search ran: the pair is gone.
    EXPECT_EQ(-1, Row(a1, a2));
    EXPECT_LT(List().GetItemCount(), rowsBefore);
}

TEST_F(PageMergeLinkTest, MergeCanKeepTheOtherSidesLinkedRecord)
{
    Open();
    MergeKeepingA1(a2s);
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM patients WHERE patient_key = '" + a1s + "'"));
    EXPECT_EQ(1, Count("SELECT COUNT(*) FROM patients WHERE patient_key = '" + a2s + "'"));
    EXPECT_EQ(Text("SELECT link_group FROM patients WHERE patient_key = '" + a1 + "'"),
              Text("SELECT link_group FROM patients WHERE patient_key = '" + a2s + "'"));
}

TEST_F(PageMergeLinkTest, LinkFromThePageJoinsThePairAndTheIssueLeavesTheList)
{
    Open();
    const int row = Row(c1, c2);
    ASSERT_GE(row, 0);
    const std::string firstKey = List().GetRecord(row)->GetFirstPatient().GetPatientKey().c_str();
    const std::string secondKey = List().GetRecord(row)->GetSecondPatient().GetPatientKey().c_str();
    user->ChooseNextMenu(kLink);
    user->OnNextDialog([&](CDialog& d) {
        auto& dlg = dynamic_cast<LinkPatientsDlg&>(d);
        ClickButton(&dlg.GetFooter()->GetOKButton());
    });
    RightClick(row);
    ASSERT_EQ(1u, user->Dialogs().size());
    const std::string group = Text("SELECT link_group FROM patients WHERE patient_key = '" + c1 + "'");
    EXPECT_NE("<none>", group);
    EXPECT_EQ(group, Text("SELECT link_group FROM patients WHERE patient_key = '" + c2 + "'"));
    EXPECT_EQ((std::vector<std::pair<int, std::string>>{{51, secondKey}, {51, firstKey}, {5, firstKey}}), AuditRows());
    EXPECT_EQ(-1, Row(c1, c2));
}

TEST_F(PageMergeLinkTest, CancelledDialogsChangeNothing)
{
    Open();
    const int rows = List().GetItemCount();
    user->ChooseNextMenu(kMerge);
    user->OnNextDialog([](CDialog& d) { MergeForm(d).ClickCancel(); });
    RightClick(Row(a1, a2));
    user->ChooseNextMenu(kLink);
    user->OnNextDialog([](CDialog& d) { d.EndDialog(IDCANCEL); });
    RightClick(Row(c1, c2));
    EXPECT_EQ(rows, List().GetItemCount());
    EXPECT_EQ(4u, ShownAudits().size());
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM audit WHERE event_code <> 51"));
    EXPECT_EQ(4, Count("SELECT COUNT(*) FROM patients WHERE patient_key IN ('" + a1 + "','" + a2 + "','" + a1s +
                       "','" + a2s + "')"));
}

TEST_F(PageMergeLinkTest, FailingMergeLeavesTheListAsItWas)
{
    Open();
    const int rows = List().GetItemCount();
    FaultyServices faulty;
    faulty.faults.FailOn("MergePatients", 9);
    MergeKeepingA1(a1s);
    EXPECT_EQ(1, faulty.faults.Count("MergePatients"));
    EXPECT_GE(Row(a1, a2), 0);
    EXPECT_EQ(rows, List().GetItemCount());
    // No fresh search after a failure, and no message from the page.
    EXPECT_EQ(0, faulty.faults.Count("GetLinkAndMergePatients"));
    EXPECT_EQ(1u, user->Messages().size());
    EXPECT_EQ(4, Count("SELECT COUNT(*) FROM patients WHERE patient_key IN ('" + a1 + "','" + a2 + "','" + a1s +
                       "','" + a2s + "')"));
}

TEST_F(PageMergeLinkTest, ThrowingMergeIsLoggedAndChangesNothing)
{
    Open();
    FaultyServices faulty;
    faulty.faults.ThrowOn("MergePatients", "database is locked");
    MergeKeepingA1(a1s);
    EXPECT_GE(Row(a1, a2), 0);
    bool logged = false;
    for (const LogLine& line : log->Lines(LM_DEBUG))
        logged = logged || (line.text.rfind("Function: CDuplicatePatientPage::OnMergeMenuClick, Line: ", 0) == 0
                            && line.text.find("database is locked") != std::string::npos);
    EXPECT_TRUE(logged);
    EXPECT_EQ(0, Count("SELECT COUNT(*) FROM audit WHERE event_code = 4"));
}

TEST_F(PageMergeLinkTest, FailingLinkLeavesTheListAsItWas)
{
    Open();
    FaultyServices faulty;
    faulty.faults.FailOn("LinkPatients", 5);
    user->ChooseNextMenu(kLink);
    user->OnNextDialog([&](CDialog& d) { ClickButton(&dynamic_cast<LinkPatientsDlg&>(d).GetFooter()->GetOKButton()); });
    RightClick(Row(c1, c2));
    EXPECT_EQ(1, faulty.faults.Count("LinkPatients"));
    EXPECT_GE(Row(c1, c2), 0);
    EXPECT_EQ("<none>", Text("SELECT link_group FROM patients WHERE patient_key = '" + c1 + "'"));
}

TEST_F(PageMergeLinkTest, AFailedMergeTellsTheHostWhatFailedAndWhy)
{
    Open();
    QSignalSpy failures(page, &CDuplicatePatientPage::actionFailed);
    // Another workstation merges a2 away while this user composes the merge.
    user->ChooseNextMenu(kMerge);
    user->ExpectMessage(kConfirm, IDYES);
    user->OnNextDialog([&](CDialog& d) {
        MergeForm f(d);
        f.SelectAll(a1 == f.Panel().GetRecord1()->GetPatientKey().c_str() ? 1 : 2);
        f.ChooseLinked(0, 1);
        PatientDetailRecord survivor;
        ASSERT_EQ(Arc().Patients().GetPatient(a1.c_str(), &survivor, ""), 0);
        LinkedPatientInfo south(a2s.c_str(), a1s.c_str());
        ASSERT_EQ(Arc().Patients().MergePatients(a2.c_str(), &survivor, "", {&south}), 0);
        f.ClickMerge();
    });
    RightClick(Row(a1, a2));
    ASSERT_EQ(1, failures.count());
    EXPECT_EQ(QStringLiteral("Error merging patients.  Reason: The patient record has been merged into another patient."),
              failures.at(0).at(0).toString());
    // The page itself shows nothing beyond the dialog's own question.
    EXPECT_EQ(1u, user->Messages().size());
}

TEST_F(PageMergeLinkTest, AThrownLinkFaultReachesTheHostWithItsReadableReason)
{
    Open();
    QSignalSpy failures(page, &CDuplicatePatientPage::actionFailed);
    FaultyServices faulty;
    faulty.faults.ThrowOn("LinkPatients", "The archive is busy: another workstation is saving. Try again.");
    user->ChooseNextMenu(kLink);
    user->OnNextDialog([&](CDialog& d) { ClickButton(&dynamic_cast<LinkPatientsDlg&>(d).GetFooter()->GetOKButton()); });
    RightClick(Row(c1, c2));
    ASSERT_EQ(1, failures.count());
    EXPECT_EQ(QStringLiteral("Error linking patients.  Reason: The archive is busy: another workstation is saving. Try "
                             "again."),
              failures.at(0).at(0).toString());
    EXPECT_TRUE(user->Messages().empty());
}

TEST_F(PageMergeLinkTest, AFailedIgnoreTellsTheHost)
{
    Open();
    QSignalSpy failures(page, &CDuplicatePatientPage::actionFailed);
    FaultyServices faulty;
    faulty.faults.FailOn("IgnoreDuplicatePatients", 4);
    user->ChooseNextMenu(20012);
    user->ExpectMessage("Are you sure you want to ignore the selected duplicate patient records?", IDYES);
    RightClick(Row(c1, c2));
    ASSERT_EQ(1, failures.count());
    EXPECT_EQ(QStringLiteral("Error ignoring duplicate patients.  Reason: You do not have the right to do this."),
              failures.at(0).at(0).toString());
    EXPECT_GE(Row(c1, c2), 0);
}

TEST_F(PageMergeLinkTest, RefusedRightStopsTheMergeBeforeTheDialog)
{
    Build().User("clerk");
    Build().Grant("clerk", m_north, true, true, true);
    Build().Grant("clerk", m_south, true, true, false);
    LogInAs("clerk");
    Open();
    ASSERT_GE(Row(a1, a2), 0);
    const auto before = Snapshot();
    user->ChooseNextMenu(kMerge);
    user->ExpectMessage(kNoMerge);
    RightClick(Row(a1, a2));
    EXPECT_TRUE(user->Dialogs().empty());
    EXPECT_ARCHIVE_UNCHANGED(before);
}

} // namespace
