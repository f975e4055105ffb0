// The link launch and the link dialog: CanLinkPatients, loading both
// patients, the read-only comparison, the keys read back and the audit.

#include "mergelinkfixture.h"

#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "boundary/linkpatientsdlgcreator.h"
#include "mergelink/linkpatientsdlg.h"
#include "mergelink/comparisonlistctrl.h"
#include "mergelink/linkpatientsdlgimpl.h"

#include "faultyservices.h"
#include "uiinput.h"

#include "colorschema.h"
#include "hfdlg.h"
#include "listctrlex.h"
#include "localefunctions.h"

#include <QFontMetrics>
#include <QHeaderView>

namespace {

const char* const kSameOrganization =
    "You cannot link these patients because of the potential to link patients in the same organization.";
const char* const kAccess = "Error accessing patient data: The patient data might have been deleted or merged.";

class LinkTest : public MergeLinkFixture
{
protected:
    void SetUp() override
    {
        MergeLinkFixture::SetUp();
        first = Patient(m_south, "0000301", "Green", "Eve", "19900909", "222222222", "F");
        second = Patient(m_north, "0000302", "Greene", "Eve", "19900909", "222222223", "F");
    }
    std::string first, second;
    TavCreator::LinkPatientsDlgCreator creator;
};

LinkPatientsDlg& LinkDialog(CDialog& d)
{
    auto* dlg = dynamic_cast<LinkPatientsDlg*>(&d);
    if (!dlg)
        throw std::logic_error("not the link dialog");
    return *dlg;
}

std::vector<std::vector<CString>> Rows(const ListCtrlEx& list)
{
    std::vector<std::vector<CString>> rows;
    for (int r = 0; r < list.GetItemCount(); ++r)
        rows.push_back({MergeForm::Text(list, r, 0), MergeForm::Text(list, r, 1), MergeForm::Text(list, r, 2)});
    return rows;
}

TEST_F(LinkTest, PatientsThatCannotBeLinkedAreNotLoaded)
{
    const std::string same = Patient(m_south, "0000303", "Green", "Eva", "19900909");
    FaultyServices faulty;
    user->ExpectMessage(kSameOrganization);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(first.c_str(), same.c_str()));
    EXPECT_EQ((std::vector<std::string>{"CanLinkPatients"}), faulty.faults.Operations());
    EXPECT_TRUE(user->Dialogs().empty());
    EXPECT_TRUE(ShownAudits().empty());
}

TEST_F(LinkTest, FailedLoadStillTriesTheSecondAndShowsOneMessage)
{
    FaultyServices faulty;
    faulty.faults.FailOn("GetPatient", 3, 1);
    user->ExpectMessage(kAccess);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(first.c_str(), second.c_str()));
    EXPECT_EQ((std::vector<std::string>{"CanLinkPatients(" + first + "," + second + ")", "GetPatient(" + first + ",)",
                                        "GetPatient(" + second + ",)"}),
              faulty.faults.CallStrings());
    EXPECT_EQ(1u, user->Messages().size());
    EXPECT_TRUE(user->Dialogs().empty());
}

TEST_F(LinkTest, FailedSecondLoadShowsTheMessageToo)
{
    FaultyServices faulty;
    faulty.faults.FailOn("GetPatient", 3, 2);
    user->ExpectMessage(kAccess);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(first.c_str(), second.c_str()));
    EXPECT_TRUE(user->Dialogs().empty());
}

TEST_F(LinkTest, ThrowingServiceIsReportedAsAnAccessError)
{
    FaultyServices faulty;
    faulty.faults.ThrowOn("GetPatient", "connection lost");
    user->ExpectMessage(kAccess);
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(first.c_str(), second.c_str()));
    EXPECT_TRUE(user->Dialogs().empty());
}

TEST_F(LinkTest, DialogShowsBothRecordsReadOnly)
{
    CString caption, header, ok, cancel;
    int headerHeight = 0;
    std::vector<std::vector<CString>> header1, compare, address;
    user->OnNextDialog(
        [&](CDialog& d) {
            LinkPatientsDlg& dlg = LinkDialog(d);
            caption = dlg.GetWindowText();
            header = dlg.GetHeader()->GetHeaderText();
            headerHeight = dlg.GetFrame()->GetHeaderHeight();
            ok = dlg.GetFooter()->GetOKButton().GetWindowText();
            cancel = dlg.GetFooter()->GetCancelButton().GetWindowText();
            LinkPatientsDlgImpl& panel = *dlg.GetPanel();
            header1 = Rows(*panel.GetHeaderList());
            compare = Rows(*panel.GetCompareList());
            address = Rows(*panel.GetAddressList());
            for (ListCtrlEx* list : {panel.GetHeaderList(), panel.GetCompareList(), panel.GetAddressList()}) {
                EXPECT_EQ(3, list->GetColumnCount());
                EXPECT_DOUBLE_EQ(0.28, list->GetColumn(0)->GetWidthFraction());
                EXPECT_DOUBLE_EQ(0.35, list->GetColumn(1)->GetWidthFraction());
                EXPECT_DOUBLE_EQ(0.37, list->GetColumn(2)->GetWidthFraction());
                EXPECT_EQ(CString("Col1"), list->GetColumn(1)->GetTitle());
                EXPECT_TRUE(list->horizontalHeader()->isHidden());
                for (int r = 0; r < list->GetItemCount(); ++r)
                    for (int c = 0; c < 3; ++c)
                        EXPECT_FALSE(MergeForm::IsRadio(*list, r, c));
            }
            // The comparison never scrolls: it is as tall as its rows.
            EXPECT_EQ(19 * panel.GetCompareList()->GetItemHeight(), panel.GetCompareList()->height());
            const int h = QFontMetrics(panel.font()).boundingRect(QStringLiteral("Wy")).height();
            EXPECT_EQ(2 * h, panel.GetHeaderList()->height());
            EXPECT_EQ(panel.GetGap() + 2 * h, panel.GetCompareList()->geometry().top());
            EXPECT_EQ(panel.GetCompareList()->geometry().bottom() + 1, panel.GetAddressList()->geometry().top());
            const ColorSchema& cs = ColorSchema::Instance();
            EXPECT_EQ(cs.GetListViewDarkRowBkColor(), panel.GetHeaderList()->GetFirstRowColor());
            EXPECT_EQ(cs.GetListViewDarkRowBkColor(), panel.GetHeaderList()->GetSecondRowColor());
            EXPECT_EQ(cs.GetListViewDarkRowBkColor(), panel.GetCompareList()->GetFirstRowColor());
            EXPECT_EQ(cs.GetListCtrlBkColor(), panel.GetCompareList()->GetSecondRowColor());
            EXPECT_EQ(cs.GetListCtrlBkColor(), panel.GetAddressList()->GetFirstRowColor());
            // The affirmative button is wide enough for its text.
            EXPECT_GE(dlg.GetFooter()->GetOKButton().width(), dlg.GetFooter()->GetOKButton().sizeHint().width());
            ClickButton(&dlg.GetFooter()->GetCancelButton());
        },
        "link_dialog");
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(first.c_str(), second.c_str()));
    EXPECT_EQ(CString("Link Patients"), caption);
    EXPECT_EQ(CString("Please review the information for the two patient records you wish to link and make sure that "
                      "they belong to the same person.  You can always unlink the patient records if you make a "
                      "mistake."),
              header);
    EXPECT_EQ(75, headerHeight);
    EXPECT_EQ(CString("Link Patients"), ok);
    EXPECT_EQ(CString("Cancel"), cancel);
    EXPECT_EQ((std::vector<std::vector<CString>>{{"", "Patient Record 1", "Patient Record 2"}}), header1);
    const CString dob = Locale::FormatDate(BDate(1990, 9, 9), Locale::eShort);
    const std::vector<std::vector<CString>> expected{
        {"Organization:", "SOUTH", "NORTH"},
        {"MRN: ", "0000301", "0000302"},
        {"Last Name:", "Green", "Greene"},
        {"First Name:", "Eve", "Eve"},
        {"Middle Name:", "", ""},
        {"Sex:", "F", "F"},
        {"Gender:", "F", "F"},
        {"Date of Birth:", dob, dob},
        {"Date of Death:", "", ""},
        {"SSN", "222-22-2222", "222-22-2223"},
        {"Mother's Maiden Name:", "", ""},
        {"Phone Number (Work):", "", ""},
        {"Phone Number (Home):", "", ""},
        {"Email Address:", "", ""},
        {"Title:", "", ""},
        {"Suffix:", "", ""},
        {"Alias First Name:", "", ""},
        {"Alias Middle Name:", "", ""},
        {"Alias Last Name:", "", ""},
    };
    EXPECT_EQ(expected, compare);
    // Empty addresses: an empty row, four lines high all the same.
    EXPECT_EQ((std::vector<std::vector<CString>>{{"Address:", "", ""}}), address);
}

TEST_F(LinkTest, CancelLeavesTheKeysReadableAndAuditsLinkPatientFirst)
{
    user->OnNextDialog([&](CDialog& d) { ClickButton(&LinkDialog(d).GetFooter()->GetCancelButton()); });
    EXPECT_EQ(IDCANCEL, creator.DisplayDialog(first.c_str(), second.c_str()));
    EXPECT_EQ(CString(first.c_str()), creator.GetTargetPatientKey());
    EXPECT_EQ(CString(m_south.c_str()), creator.GetTargetPatientOrgKey());
    EXPECT_EQ(CString(second.c_str()), creator.GetLinkPatientKey());
    EXPECT_EQ(CString(m_north.c_str()), creator.GetLinkPatientOrgKey());
    EXPECT_EQ((std::vector<std::pair<int, std::string>>{{51, second}, {51, first}}), AuditRows());
    // Nothing was linked.
    EXPECT_EQ("<none>", Text("SELECT link_group FROM patients WHERE patient_key = '" + first + "'"));
}

TEST_F(LinkTest, ConfirmedLinkReturnsOne)
{
    user->OnNextDialog([&](CDialog& d) { ClickButton(&LinkDialog(d).GetFooter()->GetOKButton()); });
    EXPECT_EQ(IDOK, creator.DisplayDialog(first.c_str(), second.c_str()));
    EXPECT_EQ(CString(first.c_str()), creator.GetTargetPatientKey());
    EXPECT_EQ(CString(second.c_str()), creator.GetLinkPatientKey());
    // The dialog links nothing itself.
    EXPECT_EQ("<none>", Text("SELECT link_group FROM patients WHERE patient_key = '" + first + "'"));
}

TEST_F(LinkTest, AddressRowHoldsFourLines)
{
    PatientDetailRecord a, b;
    a.SetAddressLine1("1 Main St");
    a.SetCity("Springfield");
    LinkPatientsDlg dlg("header", &a, &b);
    user->OnNextDialog([&](CDialog& d) {
        LinkPatientsDlgImpl& panel = *LinkDialog(d).GetPanel();
        const ListCtrlEx& address = *panel.GetAddressList();
        EXPECT_EQ(CString("1 Main St\nSpringfield"), MergeForm::Text(address, 0, 1));
        EXPECT_EQ(CString(""), MergeForm::Text(address, 0, 2));
        const int line = QFontMetrics(address.font()).boundingRect(QStringLiteral("Wy")).height();
        EXPECT_GE(address.GetItemHeight(), 4 * line + 1);
        EXPECT_EQ(address.GetItemHeight(), address.height());
        d.EndDialog(IDCANCEL);
    });
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
}

TEST_F(LinkTest, ReasonForFailure)
{
    EXPECT_EQ(CString("Error linking patients.  Reason: refused"), creator.GetReasonForLinkFailure("refused"));
}

} // namespace
