#include "duplicates/duplicatepatientpage.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/linkpatientsdlgcreator.h"
#include "boundary/mergepatientsdlgcreator.h"
#include "boundary/resource.h"
#include "duplicates/duplicatepatientlist.h"
#include "duplicates/duppatientlistheaderctrl.h"

#include "button.h"
#include "colorschema.h"
#include "drawmaster.h"
#include "drawtext.h"
#include "duplicatepatientrecord.h"
#include "linkedpatientinfo.h"
#include "messagebox.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "serviceresult.h"
#include "session.h"
#include "stringtable.h"
#include "toolkitnotify.h"
#include "windowmessage.h"

#include <ace/Log_Msg.h>

#include <QPainter>

#include <exception>

const int CDuplicatePatientPage::ROW_LIMIT = 200;

namespace {

PatientManagementService* patientService()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetPatientManagementService() : nullptr;
}

void logServiceFault(const char* function, int line, const char* what)
{
    ACE_Log_Msg* log = ACE_Log_Msg::instance();
    log->file("duplicatepatientpage");
    log->linenum(line);
    log->log(LM_DEBUG, "Function: %s, Line: %d: %s\n", function, line, what);
}

constexpr int kTextGap = 12;

} // namespace

CDuplicatePatientPage::CDuplicatePatientPage()
{
    setObjectName(QStringLiteral("CDuplicatePatientPage"));
}

CDuplicatePatientPage::~CDuplicatePatientPage() = default;

BOOL CDuplicatePatientPage::Create(CWnd* parent, const CRect& rect, UINT id)
{
    BRAVIK_MANAGE_STATE();
    if (!BasePage::Create(parent, rect, id))
        return FALSE;
    return OnCreate() == 0 ? TRUE : FALSE;
}

int CDuplicatePatientPage::OnCreate()
{
    BRAVIK_MANAGE_STATE();
    m_searchButton = new Button();
    m_searchButton->setObjectName(QStringLiteral("IDC_DUP_SEARCH"));
    m_searchButton->setFont(DrawMaster::GetNormalFont());
    m_searchButton->Create(LoadString(IDS_DUP_SEARCH), 0, CRect(), this, IDC_DUP_SEARCH);
    const CSize ideal = m_searchButton->GetIdealSize();
    m_searchButton->MoveWindow(CRect(CPoint(2, 2), ideal));

    m_resultsRect = CRect(0, 0, width(), ideal.cy + 4);

    m_list = new CDuplicatePatientList();
    m_list->Create(0, CRect(0, m_resultsRect.bottom, width(), std::max(height(), m_resultsRect.bottom)), this,
                   IDC_DUP_LIST);
    m_list->SetFullRowSelection(true);
    m_list->SetBkColor(ColorSchema::Instance().GetListCtrlBkColor());
    m_list->SetTextBkColor(ColorSchema::Instance().GetListCtrlBkColor());
    m_list->SetItemHeight(m_list->GetItemHeight() + ColorSchema::Instance().GetListCtrlItemHeightAdjustment());

    CreateDuplicatePatientMenu();
    return 0;
}

void CDuplicatePatientPage::CreateDuplicatePatientMenu()
{
    BRAVIK_MANAGE_STATE();
    if (m_menu.GetMenuItemCount() > 0)
        return;
    m_menu.CreatePopupMenu();
    m_menu.AppendMenu(MF_STRING, ID_DUP_MERGE_PATIENTS, LoadString(IDS_DUP_MENU_MERGE));
    m_menu.AppendMenu(MF_STRING, ID_DUP_LINK_PATIENTS, LoadString(IDS_DUP_MENU_LINK));
    m_menu.AppendMenu(MF_STRING, ID_DUP_IGNORE_PATIENTS, LoadString(IDS_DUP_MENU_IGNORE));
}

void CDuplicatePatientPage::OnSize(UINT type, int cx, int cy)
{
    BasePage::OnSize(type, cx, cy);
    if (!m_searchButton || !m_list)
        return;
    CRect button;
    ::GetWindowRect(m_searchButton, button);
    ::ScreenToClient(this, button);
    m_resultsRect = CRect(0, 0, cx, button.bottom + 2);
    m_list->setUpdatesEnabled(false);
    m_list->MoveWindow(CRect(0, m_resultsRect.bottom, cx, std::max(cy, m_resultsRect.bottom)));
    m_list->setUpdatesEnabled(true);
}

void CDuplicatePatientPage::OnShowWindow(BOOL show, UINT status)
{
    // Every showing of the page searches again.
    if (show)
        DisplayItems();
    BasePage::OnShowWindow(show, status);
}

void CDuplicatePatientPage::DisplayItems()
{
    BRAVIK_MANAGE_STATE();
    if (!m_list)
        return;
    SetMessageLine(CString());
    int total = 0;
    m_list->DisplayItems(ROW_LIMIT, total);
    UpdateTotalNumberOfResults(m_list->GetItemCount(), total);
    if (total > ROW_LIMIT)
        SetMessageLine(LoadString(IDS_DUP_NARROW_SEARCH));
    if (total == 0)
        SetMessageLine(LoadString(IDS_DUP_NO_CANDIDATES));
}

void CDuplicatePatientPage::SetMessageLine(const CString& text)
{
    m_message = text;
    update();
}

void CDuplicatePatientPage::UpdateTotalNumberOfResults(int shown, int total)
{
    BRAVIK_MANAGE_STATE();
    m_resultsText.Format(LoadString(IDS_DUP_RESULTS).GetString(), shown, total);
    update();
}

void CDuplicatePatientPage::OnBtnSearch()
{
    DisplayItems();
}

LRESULT CDuplicatePatientPage::OnHeaderLastTabItem(WPARAM, LPARAM)
{
    if (m_searchButton)
        m_searchButton->setFocus(Qt::TabFocusReason);
    return 1;
}

BOOL CDuplicatePatientPage::OnNotify(WPARAM, LPARAM lParam, LRESULT* result)
{
    auto* hdr = reinterpret_cast<NMHDR*>(lParam);
    if (!hdr)
        return FALSE;
    if (hdr->hwndFrom == m_searchButton && hdr->code == Button::BNM_KEYDOWN) {
        const auto* key = reinterpret_cast<NMKEY*>(hdr);
        if (key->nVKey == VK_TAB && m_list && m_list->GetSearchHeader()) {
            SearchHeaderCtrl* header = m_list->GetSearchHeader();
            header->BeginEditItem(header->GetNextTabIndex(0));
            *result = 1;
            return TRUE;
        }
        return FALSE;
    }
    if (hdr->hwndFrom == m_list && hdr->code == NM_RCLICK) {
        // Where the mouse was when the button went down, as the list saw it.
        CPoint cursor = m_list->GetLastClickScreenPos();
        CPoint client = cursor;
        ::ScreenToClient(m_list, client);
        m_rightClickedRow = m_list->HitTest(client);
        if (m_rightClickedRow >= 0 && PrepareMenu())
            m_menu.TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, cursor.x, cursor.y, this);
        *result = 0;
        return TRUE;
    }
    return FALSE;
}

bool CDuplicatePatientPage::PrepareMenu()
{
    BRAVIK_MANAGE_STATE();
    const int selected = m_list->GetSelectedCount();
    if (selected == 0)
        return false;
    m_menu.EnableMenuItem(ID_DUP_MERGE_PATIENTS, MF_BYCOMMAND | MF_GRAYED);
    m_menu.EnableMenuItem(ID_DUP_LINK_PATIENTS, MF_BYCOMMAND | MF_GRAYED);
    m_menu.EnableMenuItem(ID_DUP_IGNORE_PATIENTS, MF_BYCOMMAND | MF_GRAYED);
    if (selected > 1)
        return true;
    m_menu.EnableMenuItem(ID_DUP_IGNORE_PATIENTS, MF_BYCOMMAND | MF_ENABLED);
    if (DuplicatePatientRecord* record = m_list->GetRecord(m_rightClickedRow)) {
        const bool sameOrganization =
            record->GetFirstPatient().GetOrganizationKey() == record->GetSecondPatient().GetOrganizationKey();
        m_menu.EnableMenuItem(sameOrganization ? ID_DUP_MERGE_PATIENTS : ID_DUP_LINK_PATIENTS,
                              MF_BYCOMMAND | MF_ENABLED);
    }
    return true;
}

BOOL CDuplicatePatientPage::OnCommand(UINT id)
{
    switch (id) {
    case IDC_DUP_SEARCH:
        OnBtnSearch();
        return TRUE;
    case ID_DUP_MERGE_PATIENTS:
        OnMergeMenuClick();
        return TRUE;
    case ID_DUP_LINK_PATIENTS:
        OnLinkMenuClick();
        return TRUE;
    case ID_DUP_IGNORE_PATIENTS:
        OnIgnoreMenuClick();
        return TRUE;
    default:
        return FALSE;
    }
}

void CDuplicatePatientPage::OnMergeMenuClick()
{
    BRAVIK_MANAGE_STATE();
    if (m_rightClickedRow < 0)
        return;
    DuplicatePatientRecord* record = m_list->GetRecord(m_list->GetFirstSelectedItem());
    if (!record)
        return;
    // The first patient of the pair is the target, the second the source.
    const PatientQueryRecord first = record->GetFirstPatient();
    const PatientQueryRecord second = record->GetSecondPatient();
    ACE_CString sourceKey;
    PatientDetailRecord target;
    std::vector<LinkedPatientInfo*> linked;
    // The pairings are copies the dialog handed over: this handler frees them.
    struct Pairings
    {
        std::vector<LinkedPatientInfo*>& list;
        ~Pairings()
        {
            for (LinkedPatientInfo* info : list)
                delete info;
        }
    } pairings{linked};
    if (DisplayMergeDialog(first.GetPatientKey(), second.GetPatientKey(), sourceKey, target, linked) != 1)
        return;
    PatientManagementService* patients = patientService();
    if (!patients)
        return;
    try {
        const int result = patients->MergePatients(sourceKey, &target, first.GetOrganizationKey(), linked);
        if (result == 0)
            DisplayItems();
        else
            ReportActionFailure(IDS_DUP_ERR_MERGE, result);
    } catch (const std::exception& e) {
        logServiceFault("CDuplicatePatientPage::OnMergeMenuClick", __LINE__, e.what());
        ReportActionFailure(IDS_DUP_ERR_MERGE, CString(e.what()));
    }
}

void CDuplicatePatientPage::OnLinkMenuClick()
{
    BRAVIK_MANAGE_STATE();
    DuplicatePatientRecord* record = m_list->GetRecord(m_rightClickedRow);
    if (!record)
        return;
    const ACE_CString firstKey = record->GetFirstPatient().GetPatientKey();
    const ACE_CString secondKey = record->GetSecondPatient().GetPatientKey();
    ACE_CString targetKey, targetOrganizationKey, linkKey, linkOrganizationKey;
    if (DisplayLinkDialog(firstKey, secondKey, targetKey, targetOrganizationKey, linkKey, linkOrganizationKey) != 1)
        return;
    PatientManagementService* patients = patientService();
    if (!patients)
        return;
    try {
        const int result = patients->LinkPatients(targetKey, targetOrganizationKey, linkKey, linkOrganizationKey, nullptr);
        if (result == 0)
            DisplayItems();
        else
            ReportActionFailure(IDS_DUP_ERR_LINK, result);
    } catch (const std::exception& e) {
        logServiceFault("CDuplicatePatientPage::OnLinkMenuClick", __LINE__, e.what());
        ReportActionFailure(IDS_DUP_ERR_LINK, CString(e.what()));
    }
}

void CDuplicatePatientPage::OnIgnoreMenuClick()
{
    BRAVIK_MANAGE_STATE();
    if (AfxMessageBox(IDS_DUP_IGNORE_CONFIRM, MB_YESNO) != IDYES)
        return;
    DuplicatePatientRecord* record = m_list->GetRecord(m_rightClickedRow);
    PatientManagementService* patients = patientService();
    if (!record || !patients)
        return;
    const ACE_CString firstKey = record->GetFirstPatient().GetPatientKey();
    const ACE_CString secondKey = record->GetSecondPatient().GetPatientKey();
    try {
        const int result = patients->IgnoreDuplicatePatients(firstKey, secondKey);
        if (result == 0)
            DisplayItems();
        else
            ReportActionFailure(IDS_DUP_ERR_IGNORE, result);
    } catch (const std::exception& e) {
        logServiceFault("CDuplicatePatientPage::OnIgnoreMenuClick", __LINE__, e.what());
        ReportActionFailure(IDS_DUP_ERR_IGNORE, CString(e.what()));
    }
}

void CDuplicatePatientPage::ReportActionFailure(UINT formatId, const CString& reason)
{
    CString text;
    text.Format(LoadString(formatId).GetString(), reason.GetString());
    emit actionFailed(QString::fromUtf8(text.GetString()));
}

void CDuplicatePatientPage::ReportActionFailure(UINT formatId, int result)
{
    ReportActionFailure(formatId, CString(ServiceResult::Describe(result).c_str()));
}

int CDuplicatePatientPage::DisplayMergeDialog(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey,
                                              ACE_CString& sourcePatientKey, PatientDetailRecord& target,
                                              std::vector<LinkedPatientInfo*>& linkedPatients)
{
    TavCreator::MergePatientsDlgCreator creator;
    const int result = creator.DisplayDialog(firstPatientKey, secondPatientKey, nullptr);
    if (result != IDOK)
        return result;
    sourcePatientKey = creator.GetSourcePatientKey().GetString();
    target = creator.GetTargetPatientRecord();
    // Copies: the creator frees its own pairings when it goes.
    for (const LinkedPatientInfo* info : creator.GetLinkedPatientSelection())
        linkedPatients.push_back(new LinkedPatientInfo(*info));
    return result;
}

int CDuplicatePatientPage::DisplayLinkDialog(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey,
                                             ACE_CString& targetPatientKey, ACE_CString& targetOrganizationKey,
                                             ACE_CString& linkPatientKey, ACE_CString& linkOrganizationKey)
{
    TavCreator::LinkPatientsDlgCreator creator;
    const int result = creator.DisplayDialog(firstPatientKey, secondPatientKey);
    targetPatientKey = creator.GetTargetPatientKey().GetString();
    targetOrganizationKey = creator.GetTargetPatientOrgKey().GetString();
    linkPatientKey = creator.GetLinkPatientKey().GetString();
    linkOrganizationKey = creator.GetLinkPatientOrgKey().GetString();
    return result;
}

bool CDuplicatePatientPage::event(QEvent* e)
{
    if (RegisteredMessageEvent* m = RegisteredMessageEvent::From(e)) {
        LRESULT result = 0;
        if (m->Message() == ToolkitNotifyMessage())
            OnNotify(m->WParam(), m->LParam(), &result);
        else if (m->Message() == SearchHeaderCtrl::SHCNM_LASTTABITEM)
            result = OnHeaderLastTabItem(m->WParam(), m->LParam());
        m->SetResult(result);
        return true;
    }
    if (e->type() == CommandEvent::EventType()) {
        e->setAccepted(OnCommand(static_cast<CommandEvent*>(e)->Id()) != FALSE);
        return true;
    }
    return BasePage::event(e);
}

void CDuplicatePatientPage::paintEvent(QPaintEvent*)
{
    QPainter dc(this);
    HandleEraseBkgnd(dc);
}

void CDuplicatePatientPage::HandleEraseBkgnd(QPainter& dc)
{
    const ColorSchema& colors = ColorSchema::Instance();
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), colors.GetPageBkColor());
    DrawMaster::FillSolidRect(dc, m_resultsRect, colors.GetPageBkColor());
    DrawTotalResultsMsg(dc);
}

void CDuplicatePatientPage::DrawTotalResultsMsg(QPainter& dc)
{
    dc.save();
    dc.setFont(DrawMaster::GetNormalFont());
    dc.setPen(toQColor(ColorSchema::Instance().GetTextColorNormal()));
    CRect text = m_resultsRect;
    text.left = (m_searchButton ? m_searchButton->geometry().right() + 1 : 0) + kTextGap;
    CRect measure = text;
    DrawText(dc, m_resultsText, measure, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    DrawText(dc, m_resultsText, text, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    if (!m_message.IsEmpty()) {
        // The message line follows the count in the same strip.
        CRect line = text;
        line.left = measure.right + 3 * kTextGap;
        dc.setPen(toQColor(ColorSchema::Instance().GetTextColorHeader()));
        DrawText(dc, m_message, line, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    dc.restore();
}
