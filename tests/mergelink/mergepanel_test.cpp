// The merge dialog and its panel: rows and texts, default choices, the merge
// button through RWM_TOGGLEMERGE, "Select All", the confirmation, the audit
// records and the note area.

#include "mergelinkfixture.h"

#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "mergelink/comparisonlistctrl.h"
#include "mergelink/linkedmergelistctrl.h"
#include "mergelink/mergepatientsdlg.h"
#include "mergelink/mergepatientsdlgimpl.h"

#include "colorschema.h"
#include "drawmaster.h"
#include "hfdlg.h"
#include "listctrlex.h"
#include "listimagesubitem.h"
#include "localefunctions.h"
#include "screenshot.h"
#include "windowmessage.h"

#include <QFontMetrics>
#include <QApplication>
#include <QHeaderView>
#include <QTest>

namespace {

using Row = MergePatientsDlgImpl;

const char* const kConfirm = "Are you sure you want to merge these patients? You cannot undo a patient merge.";

class MergePanelTest : public MergeLinkFixture
{
protected:
    // Two patients of NORTH with different names and the same birth date.
    void TwoPatients()
    {
        p1 = lists.AddFirst(Record("PK1", "M100", "NORTH", "Smith", "John"));
        p2 = lists.AddSecond(Record("PK2", "M200", "NORTH", "Smyth", "John"));
        p1->SetDOB(BDate(1970, 1, 1));
        p2->SetDOB(BDate(1970, 1, 1));
        p1->SetSexCode("M");
        p2->SetSexCode("M");
    }
    RecordLists lists;
    PatientDetailRecord* p1 = nullptr;
    PatientDetailRecord* p2 = nullptr;
};

TEST_F(MergePanelTest, DialogCaptionHeaderAndButtons)
{
    TwoPatients();
    CString caption, header, ok, cancel;
    int headerHeight = 0;
    COLORREF back = 1, text = 1;
    const auto outcome = RunMergeDialog(lists, [&](MergeForm& f) {
        caption = f.Dialog().GetWindowText();
        header = f.Dialog().GetHeader()->GetHeaderText();
        headerHeight = f.Dialog().GetFrame()->GetHeaderHeight();
        back = f.Dialog().GetHeader()->m_clrBackground;
        text = f.Dialog().GetHeader()->m_clrText;
        ok = f.Dialog().GetFooter()->GetOKButton().GetWindowText();
        cancel = f.Dialog().GetFooter()->GetCancelButton().GetWindowText();
        f.ClickCancel();
    }, *user);
    EXPECT_EQ(IDCANCEL, outcome.result);
    EXPECT_EQ(CString("Merge Patients"), caption);
    EXPECT_EQ(CString("Carefully review the information for the two patient records you intend to merge and select the "
                      "fields you wish to keep."),
              header);
    EXPECT_EQ(BaseTabHeader::DEFAULT_HEIGHT - 9, headerHeight);
    EXPECT_EQ(0xFFFFFFu, back);
    EXPECT_EQ(0u, text);
    EXPECT_EQ(CString("Merge Patients"), ok);
    EXPECT_EQ(CString("Cancel"), cancel);
}

TEST_F(MergePanelTest, HeaderAndFieldRowsShowBothRecords)
{
    TwoPatients();
    p1->SetMiddleName("Q");
    p1->SetGenderCode("");
    p2->SetGenderCode("F");
    p1->SetDateOfDeath(2020, 2, 29);
    p1->SetPatientGID("123456789");
    p2->SetPatientGID("12345");
    p1->SetMothersMaidenName("Jones");
    p1->SetWorkNumber("555-1000");
    p2->SetHomeNumber("555-2000");
    p1->SetEmailAddress("j@smith.example");
    p1->SetTitle("Dr");
    p2->SetSuffix("Jr");
    p1->SetAliasFirstName("Jack");
    p2->SetAliasMiddleName("R");
    p1->SetAliasLastName("Smythe");
    p1->SetAddressLine1("1 Main St");
    p1->SetCity("Springfield");
    p1->SetStateCode("IL");
    p1->SetPostalCode("62701");

    std::vector<std::vector<CString>> header, fields, address;
    RunMergeDialog(lists, [&](MergeForm& f) {
        auto read = [](ListCtrlEx& list, std::vector<std::vector<CString>>& out) {
            for (int r = 0; r < list.GetItemCount(); ++r)
                out.push_back({MergeForm::Text(list, r, 0), MergeForm::Text(list, r, 1), MergeForm::Text(list, r, 2)});
        };
        read(f.HeaderList(), header);
        read(f.FieldList(), fields);
        read(f.AddressList(), address);
        f.ClickCancel();
    }, *user);

    const std::vector<std::vector<CString>> expectedHeader{{"", "Patient Record 1", "Patient Record 2"},
                                                            {"Select All:", "", ""}};
    EXPECT_EQ(expectedHeader, header);
    const CString dob = Locale::FormatDate(BDate(1970, 1, 1), Locale::eShort);
    ASSERT_FALSE(dob.IsEmpty());
    const std::vector<std::vector<CString>> expected{
        {"MRN(NORTH):", "M100", "M200"},
        {"Last Name:", "Smith", "Smyth"},
        {"First Name:", "John", "John"},
        {"Middle Name:", "Q", ""},
        {"Sex:", "M", "M"},
        // No gender: the sex code stands in.
        {"Gender:", "M", "F"},
        {"Date of Birth:", dob, dob},
        {"Date of Death:", Locale::FormatDate(BDate(2020, 2, 29), Locale::eShort), ""},
        {"SSN:", "123-45-6789", "12345"},
        {"Mother's Maiden Name:", "Jones", ""},
        {"Phone Number (Work):", "555-1000", ""},
        {"Phone Number (Home):", "", "555-2000"},
        {"Email Address:", "j@smith.example", ""},
        {"Title:", "Dr", ""},
        {"Suffix:", "", "Jr"},
        {"Alias First Name:", "Jack", ""},
        {"Alias Middle Name:", "", "R"},
        {"Alias Last Name:", "Smythe", ""},
    };
    EXPECT_EQ(expected, fields);
    ASSERT_EQ(1u, address.size());
    EXPECT_EQ(CString("Address:"), address[0][0]);
    EXPECT_EQ(CString("1 Main St\nSpringfield, IL 62701"), address[0][1]);
    EXPECT_EQ(CString(""), address[0][2]);
}

TEST_F(MergePanelTest, ListColumnsAndCellKinds)
{
    TwoPatients();
    RunMergeDialog(lists, [&](MergeForm& f) {
        for (ListCtrlEx* list : {&f.HeaderList(), &f.FieldList(), &f.AddressList()}) {
            ASSERT_EQ(3, list->GetColumnCount());
            EXPECT_EQ(CString("Col0"), list->GetColumn(0)->GetTitle());
            EXPECT_EQ(CString("Col1"), list->GetColumn(1)->GetTitle());
            EXPECT_EQ(CString("Col2"), list->GetColumn(2)->GetTitle());
            EXPECT_DOUBLE_EQ(0.25, list->GetColumn(0)->GetWidthFraction());
            EXPECT_DOUBLE_EQ(0.3, list->GetColumn(1)->GetWidthFraction());
            EXPECT_DOUBLE_EQ(0.3, list->GetColumn(2)->GetWidthFraction());
            EXPECT_TRUE(list->horizontalHeader()->isHidden());
        }
        LinkedMergeListCtrl& linked = f.LinkedList();
        EXPECT_EQ(CString("Linked Organization"), linked.GetColumn(0)->GetTitle());
        EXPECT_EQ(CString("Linked Patient Record 1"), linked.GetColumn(1)->GetTitle());
        EXPECT_EQ(CString("Linked Patient Record 2"), linked.GetColumn(2)->GetTitle());
        EXPECT_FALSE(linked.horizontalHeader()->isHidden());
        // Labels right-aligned, values as they come.
        EXPECT_EQ(2u, f.FieldList().GetSubItemAt(0, 0)->GetDrawFormat());
        EXPECT_EQ(0u, f.FieldList().GetSubItemAt(0, 1)->GetDrawFormat());
        EXPECT_EQ(2u, f.HeaderList().GetSubItemAt(1, 0)->GetDrawFormat());
        EXPECT_TRUE(MergeForm::IsRadio(f.HeaderList(), 1, 1));
        EXPECT_TRUE(MergeForm::IsRadio(f.HeaderList(), 1, 2));
        EXPECT_FALSE(MergeForm::IsRadio(f.HeaderList(), 0, 1));
        for (int r = 0; r < MergePatientsDlgImpl::FIELD_ROW_COUNT; ++r) {
            EXPECT_FALSE(MergeForm::IsRadio(f.FieldList(), r, 0));
            EXPECT_TRUE(MergeForm::IsRadio(f.FieldList(), r, 1));
            EXPECT_TRUE(MergeForm::IsRadio(f.FieldList(), r, 2));
        }
        EXPECT_TRUE(MergeForm::IsRadio(f.AddressList(), 0, 1));
        // Row colours from the colour scheme.
        const ColorSchema& cs = ColorSchema::Instance();
        EXPECT_EQ(cs.GetListViewDarkRowBkColor(), f.Panel().GetHeaderList()->GetFirstRowColor());
        EXPECT_EQ(cs.GetListViewDarkRowBkColor(), f.Panel().GetHeaderList()->GetSecondRowColor());
        EXPECT_EQ(cs.GetListViewDarkRowBkColor(), f.Panel().GetFieldList()->GetFirstRowColor());
        EXPECT_EQ(cs.GetListCtrlBkColor(), f.Panel().GetFieldList()->GetSecondRowColor());
        EXPECT_EQ(cs.GetListCtrlBkColor(), f.Panel().GetAddressList()->GetFirstRowColor());
        EXPECT_EQ(cs.GetListCtrlBkColor(), f.Panel().GetAddressList()->GetSecondRowColor());
        EXPECT_EQ(cs.GetListCtrlBkColor(), f.LinkedList().GetFirstRowColor());
        EXPECT_EQ(cs.GetListViewDarkRowBkColor(), f.LinkedList().GetSecondRowColor());
        // The linked list shows its column titles above the rows.
        EXPECT_TRUE(f.LinkedList().horizontalHeader()->isVisible());
        EXPECT_GT(f.LinkedList().viewport()->geometry().top(), 0);
        // The address row holds four more lines of text.
        EXPECT_GT(f.AddressList().GetItemHeight(), f.FieldList().GetItemHeight() + 3 * QFontMetrics(f.AddressList().font()).height() - 4);
        f.ClickCancel();
    }, *user);
}

TEST_F(MergePanelTest, DefaultChoicePerKindOfRow)
{
    TwoPatients();
    // MRN differs (neither), last names differ (neither), first names equal
    // but for case (record 1), middle only in 2 (record 2), title only in 1
    // (record 1), suffix in neither (record 1).
    p1->SetFirstName("JOHN");
    p2->SetMiddleName("Q");
    p1->SetTitle("Dr");
    std::vector<std::pair<bool, bool>> chosen;
    std::pair<bool, bool> addressChoice;
    RunMergeDialog(lists, [&](MergeForm& f) {
        for (int r = 0; r < MergePatientsDlgImpl::FIELD_ROW_COUNT; ++r)
            chosen.emplace_back(MergeForm::Checked(f.FieldList(), r, 1), MergeForm::Checked(f.FieldList(), r, 2));
        addressChoice = {MergeForm::Checked(f.AddressList(), 0, 1), MergeForm::Checked(f.AddressList(), 0, 2)};
        f.ClickCancel();
    }, *user);
    using P = std::pair<bool, bool>;
    EXPECT_EQ(P(false, false), chosen[Row::ROW_MRN]);
    EXPECT_EQ(P(false, false), chosen[Row::ROW_LAST_NAME]);
    EXPECT_EQ(P(true, false), chosen[Row::ROW_FIRST_NAME]);
    EXPECT_EQ(P(false, true), chosen[Row::ROW_MIDDLE_NAME]);
    EXPECT_EQ(P(true, false), chosen[Row::ROW_TITLE]);
    EXPECT_EQ(P(true, false), chosen[Row::ROW_SUFFIX]);
    EXPECT_EQ(P(true, false), chosen[Row::ROW_DOB]);
    // Both addresses empty: record 1.
    EXPECT_EQ(P(true, false), addressChoice);
}

TEST_F(MergePanelTest, MergeButtonDisabledOnOpeningEvenWhenEverythingIsChosen)
{
    // Identical records: every row starts chosen for record 1.
    p1 = lists.AddFirst(Record("PK1", "M100", "NORTH", "Same", "Person"));
    p2 = lists.AddSecond(Record("PK2", "M100", "NORTH", "Same", "Person"));
    bool atStart = true, afterClick = false, completeAtStart = true;
    int checkedAtStart = 0;
    RunMergeDialog(lists, [&](MergeForm& f) {
        atStart = f.MergeEnabled();
        completeAtStart = f.Panel().IsComplete();
        for (int r = 0; r < MergePatientsDlgImpl::FIELD_ROW_COUNT; ++r)
            checkedAtStart += MergeForm::Checked(f.FieldList(), r, 1) ? 1 : 0;
        f.ChooseField(Row::ROW_LAST_NAME, 1); // already chosen: nothing changes but the count
        afterClick = f.MergeEnabled();
        f.ClickCancel();
    }, *user);
    EXPECT_EQ(MergePatientsDlgImpl::FIELD_ROW_COUNT, checkedAtStart);
    EXPECT_FALSE(atStart);
    EXPECT_FALSE(completeAtStart);
    EXPECT_TRUE(afterClick);
}

TEST_F(MergePanelTest, CompleteOnlyWhenEveryRowHasAChoice)
{
    TwoPatients();
    std::vector<bool> enabled;
    RunMergeDialog(lists, [&](MergeForm& f) {
        f.ChooseField(Row::ROW_MRN, 2);
        enabled.push_back(f.MergeEnabled()); // last name still open
        f.ChooseField(Row::ROW_LAST_NAME, 1);
        enabled.push_back(f.MergeEnabled());
        f.ChooseField(Row::ROW_LAST_NAME, 2);
        enabled.push_back(f.MergeEnabled());
        f.ClickCancel();
    }, *user);
    EXPECT_EQ((std::vector<bool>{false, true, true}), enabled);
}

TEST_F(MergePanelTest, RadioLinkedRowsMustBeChosenToo)
{
    TwoPatients();
    lists.AddFirst(Record("L1S", "S1", "SOUTH"));
    lists.AddSecond(Record("L2S", "S2", "SOUTH"));
    std::vector<bool> enabled;
    RunMergeDialog(lists, [&](MergeForm& f) {
        f.ChooseField(Row::ROW_MRN, 1);
        f.ChooseField(Row::ROW_LAST_NAME, 1);
        enabled.push_back(f.MergeEnabled());
        f.ChooseLinked(0, 2);
        enabled.push_back(f.MergeEnabled());
        f.ClickCancel();
    }, *user);
    EXPECT_EQ((std::vector<bool>{false, true}), enabled);
}

TEST_F(MergePanelTest, RegisteredMessageFollowsTheCompleteFlag)
{
    TwoPatients();
    LRESULT answer = 0;
    bool enabledAfterMessage = true;
    RunMergeDialog(lists, [&](MergeForm& f) {
        f.SelectAll(1);
        ASSERT_TRUE(f.MergeEnabled());
        // Send by name, as any sender would: the same name gives the same id.
        const UINT msg = RegisterWindowMessage("RWM_TOGGLEMERGE-{1525B374-D0D8-4dde-B1CB-68DF59DBCE7A}");
        f.ChooseField(Row::ROW_MRN, 2); // still complete
        ASSERT_TRUE(f.MergeEnabled());
        // Knock the button out by hand; the message puts it back per the flag.
        f.Dialog().GetFooter()->GetOKButton().EnableWindow(FALSE);
        answer = SendMessage(&f.Dialog(), msg);
        enabledAfterMessage = f.MergeEnabled();
        f.ClickCancel();
    }, *user);
    EXPECT_EQ(1, answer);
    EXPECT_TRUE(enabledAfterMessage);
}

TEST_F(MergePanelTest, SelectAllChoosesEveryRowAndEnablesMerge)
{
    TwoPatients();
    p1->SetMiddleName("Q");
    lists.AddFirst(Record("L1S", "S1", "SOUTH"));
    lists.AddSecond(Record("L2S", "S2", "SOUTH"));
    lists.AddFirst(Record("L1E", "E1", "EAST")); // only record 1 there: text cells
    int checked2 = 0, checked1 = 0;
    bool enabled = false, linkedRadio2 = false;
    CString textCell;
    RunMergeDialog(lists, [&](MergeForm& f) {
        f.SelectAll(2);
        enabled = f.MergeEnabled();
        for (int r = 0; r < MergePatientsDlgImpl::FIELD_ROW_COUNT; ++r) {
            checked2 += MergeForm::Checked(f.FieldList(), r, 2) ? 1 : 0;
            checked1 += MergeForm::Checked(f.FieldList(), r, 1) ? 1 : 0;
        }
        checked2 += MergeForm::Checked(f.AddressList(), 0, 2) ? 1 : 0;
        linkedRadio2 = MergeForm::Checked(f.LinkedList(), 0, 2) && !MergeForm::Checked(f.LinkedList(), 0, 1);
        textCell = MergeForm::Text(f.LinkedList(), 1, 1);
        f.ClickCancel();
    }, *user);
    EXPECT_TRUE(enabled);
    EXPECT_EQ(MergePatientsDlgImpl::FIELD_ROW_COUNT + 1, checked2);
    EXPECT_EQ(0, checked1);
    EXPECT_TRUE(linkedRadio2);
    EXPECT_EQ(CString("E1"), textCell);
}

TEST_F(MergePanelTest, ClickElsewhereInHeaderListDoesNothing)
{
    TwoPatients();
    bool enabled = true;
    RunMergeDialog(lists, [&](MergeForm& f) {
        f.ClickCell(f.HeaderList(), 0, 1);
        f.ClickCell(f.HeaderList(), 1, 0);
        enabled = f.MergeEnabled();
        f.ClickCancel();
    }, *user);
    EXPECT_FALSE(enabled);
}

TEST_F(MergePanelTest, NoToConfirmationKeepsDialogAndChoices)
{
    TwoPatients();
    user->ExpectMessage(kConfirm, IDNO);
    user->ExpectMessage(kConfirm, IDYES);
    bool stillOpen = false, choiceKept = false;
    const auto outcome = RunMergeDialog(lists, [&](MergeForm& f) {
        f.SelectAll(2);
        f.ClickMerge();
        stillOpen = !f.Dialog().HasEnded();
        choiceKept = MergeForm::Checked(f.FieldList(), Row::ROW_MRN, 2);
        f.ClickMerge();
    }, *user);
    EXPECT_TRUE(stillOpen);
    EXPECT_TRUE(choiceKept);
    EXPECT_EQ(IDOK, outcome.result);
    ASSERT_EQ(2u, user->Messages().size());
    EXPECT_EQ(UINT(MB_YESNO), user->Messages()[0].type & 0x0Fu);
    EXPECT_EQ("PK2", std::string(outcome.target.GetPatientKey().c_str()));
}

TEST_F(MergePanelTest, CancelStillRunsTheClosingStep)
{
    TwoPatients();
    const auto outcome = RunMergeDialog(lists, [&](MergeForm& f) {
        f.SelectAll(1);
        f.ClickCancel();
    }, *user);
    EXPECT_EQ(IDCANCEL, outcome.result);
    EXPECT_EQ("PK1", std::string(outcome.target.GetPatientKey().c_str()));
    EXPECT_EQ("PK2", outcome.source);
}

TEST_F(MergePanelTest, OpeningWritesTwoAuditRecordsRecordOneFirst)
{
    TwoPatients();
    RunMergeDialog(lists, [&](MergeForm& f) { f.ClickCancel(); }, *user);
    EXPECT_EQ((std::vector<std::pair<int, std::string>>{{51, "PK1"}, {51, "PK2"}}), AuditRows());
}

TEST_F(MergePanelTest, NoteAreaWithoutAndWithBlockedOrganizations)
{
    TwoPatients();
    std::vector<CString> plain, blocked;
    CRect note;
    RunMergeDialog(lists, [&](MergeForm& f) {
        plain = f.Panel().GetNoteTexts();
        note = f.Panel().GetNoteRect();
        f.ClickCancel();
    }, *user, "merge_dialog_defaults");
    EXPECT_EQ((std::vector<CString>{"Note:", "All other information from the patient record,whose patient identifier "
                                             "has been selected, will be retained"}),
              plain);
    EXPECT_GT(note.Height(), 2 * QFontMetrics(DrawMaster::GetNormalFont()).height());

    lists.blocked.push_back("SOUTH");
    lists.AddFirst(Record("L1S", "S1", "SOUTH"));
    lists.AddSecond(Record("L2S", "S2", "SOUTH"));
    CString label;
    RunMergeDialog(lists, [&](MergeForm& f) {
        blocked = f.Panel().GetNoteTexts();
        label = MergeForm::Text(f.LinkedList(), 0, 0);
        f.ClickCancel();
    }, *user, "merge_dialog_blocked_organization");
    ASSERT_EQ(4u, blocked.size());
    EXPECT_EQ(CString("!"), blocked[2]);
    EXPECT_EQ(CString("Organization is not configured to accept demographics update"), blocked[3]);
    EXPECT_EQ(CString("! MRN(SOUTH):"), label);
}

TEST_F(MergePanelTest, ListsAreStackedUnderEachOther)
{
    TwoPatients();
    RunMergeDialog(lists, [&](MergeForm& f) {
        const int h = QFontMetrics(f.Panel().font()).boundingRect(QStringLiteral("Wy")).height();
        EXPECT_EQ(0, f.HeaderList().geometry().top());
        EXPECT_EQ(3 * h, f.HeaderList().height());
        EXPECT_EQ(3 * h + 2, f.FieldList().geometry().top());
        EXPECT_EQ(MergePatientsDlgImpl::FIELD_ROW_COUNT * f.FieldList().GetItemHeight(), f.FieldList().height());
        EXPECT_EQ(f.FieldList().geometry().bottom() + 1, f.AddressList().geometry().top());
        EXPECT_EQ(f.AddressList().GetItemHeight(), f.AddressList().height());
        EXPECT_EQ(f.AddressList().geometry().bottom() + 1, f.LinkedList().geometry().top());
        EXPECT_EQ((f.LinkedList().GetItemHeight() - 5) * 5, f.LinkedList().height());
        EXPECT_EQ(f.Panel().width(), f.FieldList().width());
        f.ClickCancel();
    }, *user);
}

} // namespace

namespace {

// A realistic pair for the pictures: defaults applied, then a linked row opened.
TEST_F(MergePanelTest, LinkedRowExpandedInTheDialog)
{
    TwoPatients();
    for (PatientDetailRecord* p : {p1, p2}) {
        p->SetAddressLine1("12 Harbour Road");
        p->SetCity("Springfield");
        p->SetStateCode("IL");
        p->SetPostalCode("62701");
        p->SetHomeNumber("555-0100");
    }
    p2->SetAddressLine2("Flat 3");
    p1->SetPatientGID("123456789");
    p2->SetPatientGID("123456789");
    auto* s1 = lists.AddFirst(Record("L1S", "S-4410", "SOUTH", "Smith", "John"));
    auto* s2 = lists.AddSecond(Record("L2S", "S-4411", "SOUTH", "Smyth", "John"));
    lists.AddSecond(Record("L2E", "E-0077", "EAST", "Smyth", "John"));
    s1->SetSexCode("M");
    s1->SetDOB(BDate(1970, 1, 1));
    s1->SetAddressLine1("12 Harbour Road");
    s1->SetCity("Springfield");
    s1->SetStateCode("IL");
    s1->SetPostalCode("62701");
    s2->SetSexCode("M");
    int rows = 0;
    std::vector<bool> enabled;
    RunMergeDialog(lists, [&](MergeForm& f) {
        f.ToggleLinked(0);
        rows = f.LinkedList().GetItemCount();
        SaveScreenshot(&f.Dialog(), "merge_dialog_linked_expanded");
        // The detail rows ask for no choice: the MRN, the last name, the
        // address and SOUTH's records complete the merge.
        f.ChooseAddress(2);
        f.ChooseField(Row::ROW_MRN, 1);
        f.ChooseField(Row::ROW_LAST_NAME, 1);
        enabled.push_back(f.MergeEnabled());
        f.ChooseLinked(0, 1);
        enabled.push_back(f.MergeEnabled());
        f.ClickCancel();
    }, *user, "merge_dialog_defaults_linked");
    EXPECT_EQ(2 + LinkedMergeListCtrl::DETAIL_ROWS, rows);
    EXPECT_EQ((std::vector<bool>{false, true}), enabled);
}

} // namespace

namespace {

// Enter after the choices are made must never throw them away: the focus
// starts in the comparison, and Enter there asks to merge (or does nothing
// while choices are open), never cancels.
TEST_F(MergePanelTest, KeyboardFocusStartsInTheComparison)
{
    TwoPatients();
    QWidget* focused = nullptr;
    ListCtrlEx* fields = nullptr;
    RunMergeDialog(lists, [&](MergeForm& f) {
        focused = QApplication::focusWidget();
        fields = &f.FieldList();
        f.ClickCancel();
    }, *user, "merge_dialog_initial_focus");
    EXPECT_EQ(focused, fields) << (focused ? focused->metaObject()->className() : "no focus");
}

TEST_F(MergePanelTest, EnterWithEveryChoiceMadeAsksToMergeAndKeepsTheChoices)
{
    TwoPatients();
    user->ExpectMessage(kConfirm, IDNO);
    bool stillOpen = false, choiceKept = false;
    const auto outcome = RunMergeDialog(lists, [&](MergeForm& f) {
        f.SelectAll(2);
        f.FieldList().setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        stillOpen = !f.Dialog().HasEnded();
        choiceKept = MergeForm::Checked(f.FieldList(), Row::ROW_MRN, 2);
        f.ClickCancel();
    }, *user);
    EXPECT_TRUE(stillOpen);
    EXPECT_TRUE(choiceKept);
    EXPECT_EQ(1u, user->Messages().size());
}

TEST_F(MergePanelTest, EnterBeforeTheChoicesAreMadeDoesNothing)
{
    TwoPatients();
    bool stillOpen = false;
    RunMergeDialog(lists, [&](MergeForm& f) {
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &f.Dialog(), Qt::Key_Return);
        stillOpen = !f.Dialog().HasEnded();
        f.ClickCancel();
    }, *user);
    EXPECT_TRUE(stillOpen);
    EXPECT_TRUE(user->Messages().empty());
}

} // namespace
