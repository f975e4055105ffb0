#include "mergelinkfixture.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "boundary/resource.h"
#include "mergelink/linkedmergelistctrl.h"
#include "mergelink/mergepatientsdlg.h"
#include "mergelink/mergepatientsdlgimpl.h"

#include "uiinput.h"

#include "linkedpatientinfo.h"
#include "listctrlex.h"
#include "listctrlmodel.h"
#include "listradiosubitem.h"
#include "stringtable.h"

#include <SQLiteCpp/Statement.h>

#include <QTest>

void MergeLinkFixture::SetUp()
{
    ArchiveFixture::SetUp();
    ASSERT_TRUE(Arc().InstallIntoSession("admin"));
    user = std::make_unique<ScriptedUser>();
    log = std::make_unique<LogCapture>();
}

void MergeLinkFixture::TearDown()
{
    log.reset();
    if (user)
        user->VerifyAllConsumed();
    user.reset();
    Arc().Uninstall();
    ArchiveFixture::TearDown();
}

std::unique_ptr<PatientDetailRecord> MergeLinkFixture::Record(const std::string& key, const std::string& mrn,
                                                              const std::string& orgId, const std::string& last,
                                                              const std::string& first)
{
    auto r = std::make_unique<PatientDetailRecord>();
    r->SetPatientKey(key.c_str());
    r->SetPatientID(mrn.c_str());
    r->SetOrganizationID(orgId.c_str());
    r->SetOrganizationKey(("K-" + orgId).c_str());
    r->SetName(BPersonName(last.c_str(), first.c_str()));
    return r;
}

std::string MergeLinkFixture::Patient(const std::string& org, const std::string& mrn, const std::string& last,
                                      const std::string& first, const std::string& dob, const std::string& gid,
                                      const std::string& sex)
{
    return Build().Patient(org, mrn, last, first, sex, dob, gid);
}

std::vector<std::pair<int, std::string>> MergeLinkFixture::AuditRows()
{
    std::vector<std::pair<int, std::string>> rows;
    SQLite::Statement q(Db().Handle(), "SELECT event_code, record_key FROM audit ORDER BY audit_id");
    while (q.executeStep())
        rows.emplace_back(q.getColumn(0).getInt(), q.getColumn(1).getString());
    return rows;
}

std::vector<std::string> MergeLinkFixture::ShownAudits()
{
    std::vector<std::string> keys;
    for (const auto& [code, key] : AuditRows())
        if (code == 51)
            keys.push_back(key);
    return keys;
}

void MergeLinkFixture::LogInAs(const std::string& userName)
{
    Arc().Uninstall();
    ASSERT_TRUE(Arc().InstallIntoSession(userName));
}

RecordLists::~RecordLists()
{
    for (auto* p : first)
        delete p;
    for (auto* p : second)
        delete p;
}

MergeForm::MergeForm(CDialog& dlg) : m_dlg(dynamic_cast<MergePatientsDlg*>(&dlg))
{
    if (!m_dlg)
        throw std::logic_error("not the merge dialog");
}

MergePatientsDlgImpl& MergeForm::Panel() const { return *m_dlg->GetPanel(); }
ListCtrlEx& MergeForm::HeaderList() const { return *Panel().GetHeaderList(); }
ListCtrlEx& MergeForm::FieldList() const { return *Panel().GetFieldList(); }
ListCtrlEx& MergeForm::AddressList() const { return *Panel().GetAddressList(); }
LinkedMergeListCtrl& MergeForm::LinkedList() const { return *Panel().GetLinkedList(); }

void MergeForm::ClickCell(ListCtrlEx& list, int row, int column)
{
    const QModelIndex index = list.model()->index(row, column);
    ASSERT_TRUE(index.isValid()) << "no cell " << row << "," << column;
    list.scrollTo(index);
    const QRect cell = list.visualRect(index);
    ASSERT_TRUE(list.viewport()->rect().contains(cell.center())) << "cell not on screen " << row << "," << column;
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, cell.center());
}

void MergeForm::ChooseLinked(int row, int column) { ClickCell(LinkedList(), row, column); }
void MergeForm::ToggleLinked(int row) { ClickCell(LinkedList(), row, 0); }

bool MergeForm::MergeEnabled() const { return m_dlg->GetFooter()->GetOKButton().isEnabled(); }
bool MergeForm::ClickMerge() { return ClickButton(&m_dlg->GetFooter()->GetOKButton()); }
bool MergeForm::ClickCancel() { return ClickButton(&m_dlg->GetFooter()->GetCancelButton()); }

CString MergeForm::Text(const ListCtrlEx& list, int row, int column)
{
    const ListSubItem* cell = list.GetSubItemAt(row, column);
    return cell ? cell->GetText() : CString("<no cell>");
}

bool MergeForm::IsRadio(const ListCtrlEx& list, int row, int column)
{
    const ListSubItem* cell = list.GetSubItemAt(row, column);
    return cell && cell->IsRadio();
}

bool MergeForm::Checked(const ListCtrlEx& list, int row, int column)
{
    const ListSubItem* cell = list.GetSubItemAt(row, column);
    return cell && cell->IsRadio() && static_cast<const ListRadioSubItem*>(cell)->GetCheck();
}

MergeOutcome RunMergeDialog(RecordLists& lists, const std::function<void(MergeForm&)>& script, ScriptedUser& user,
                            const char* screenshot)
{
    BRAVIK_MANAGE_STATE();
    MergeOutcome outcome;
    auto* header = new DialogHeader();
    header->SetHeaderText(LoadString(IDS_MERGE_HEADER_TEXT));
    auto* footer = new DialogFooter(nullptr);
    auto* panel = new MergePatientsDlgImpl(lists.first, lists.second, &lists.blocked, 0);
    MergePatientsDlg dlg(header, footer, panel);
    user.OnNextDialog(
        [&](CDialog& d) {
            MergeForm form(d);
            script(form);
        },
        screenshot);
    outcome.result = dlg.DoModal();
    outcome.target = dlg.GetTargetPatient();
    outcome.source = dlg.GetSourcePatientKey().GetString();
    for (const LinkedPatientInfo* info : dlg.GetLinkedPatientSelection())
        outcome.linked.emplace_back(info->GetSourcePatientKey().c_str(), info->GetTargetPatientKey().c_str());
    return outcome;
}
