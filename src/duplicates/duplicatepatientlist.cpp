#include "duplicates/duplicatepatientlist.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "boundary/tavhelper.h"
#include "duplicates/duppatientlistheaderctrl.h"

#include "colorschema.h"
#include "combobox.h"
#include "daterangectrl.h"
#include "drawmaster.h"
#include "drawtext.h"
#include "duplicatepatientrecord.h"
#include "headercheckcomboitem.h"
#include "headercomboitem.h"
#include "headeritemdobrange.h"
#include "listtextsubitem.h"
#include "localefunctions.h"
#include "mergelinkcandidatesquerydataset.h"
#include "patientgidformatter.h"
#include "patientmanagementservice.h"
#include "qtconvert.h"
#include "searchheaderedititem.h"
#include "serviceregistry.h"
#include "session.h"
#include "stringtable.h"
#include "toolkitnotify.h"

#include <ace/Log_Msg.h>

#include <QPainter>

#include <exception>

std::map<short, CString> CDuplicatePatientList::COLNAMES;
std::map<short, CString> CDuplicatePatientList::DUPTYPENAMES;
const int CDuplicatePatientList::MIN_DEFAULT_WIDTH = 18;

namespace {

// Column widths in the proportions the worklist has always had.
constexpr int kColumnWidths[] = {120, 100, 120, 100, 80, 170, 100, 80};
constexpr int kColumnCount = 8;

int totalWidth()
{
    int sum = 0;
    for (int w : kColumnWidths)
        sum += w;
    return sum;
}

CString twoLines(const char* first, const char* second)
{
    CString text;
    text.Format("%s\n%s", first, second);
    return text;
}

} // namespace

void CDuplicatePatientList::LoadNames()
{
    BRAVIK_MANAGE_STATE();
    COLNAMES[ePATIENT_NAME] = LoadString(IDS_DUP_COL_PATIENT_NAME);
    COLNAMES[ePATIENT_ID] = PatientGIDFormatter::GetPatientIDColumnName();
    COLNAMES[eMRN] = LoadString(IDS_DUP_COL_MRN);
    COLNAMES[eORGANIZATION] = LoadString(IDS_DUP_COL_ORGANIZATION);
    COLNAMES[eTYPE] = LoadString(IDS_DUP_COL_TYPE);
    COLNAMES[eREASON] = LoadString(IDS_DUP_COL_REASON);
    COLNAMES[eDOB] = LoadString(IDS_DUP_COL_DOB);
    COLNAMES[eSEX] = LoadString(IDS_DUP_COL_SEX);
    DUPTYPENAMES[0] = LoadString(IDS_DUP_TYPE_MERGE);
    DUPTYPENAMES[1] = LoadString(IDS_DUP_TYPE_LINK);
}

CString CDuplicatePatientList::GetColumnName(eCOLINDEX index)
{
    const auto it = COLNAMES.find(static_cast<short>(index));
    return it == COLNAMES.end() ? CString() : it->second;
}

CDuplicatePatientList::CDuplicatePatientList(QWidget* parent) : ListCtrlEx(parent), m_sortHelper(this)
{
    setObjectName(QStringLiteral("IDC_DUP_LIST"));
}

CDuplicatePatientList::~CDuplicatePatientList()
{
    // Rows point at the records: take the rows away first.
    DestoryAllItems(true);
}

BOOL CDuplicatePatientList::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id)
{
    BRAVIK_MANAGE_STATE();
    LoadNames();
    if (!ListCtrlEx::Create(style, rect, parent, id))
        return FALSE;

    m_searchHeader = new DupPatientListHeaderCtrl();
    m_searchHeader->Create(0, CRect(), this, IDC_DUP_HEADER);
    m_searchHeader->SetState(SearchHeaderCtrl::STATE_EXPANDED);
    ApplyHeader(m_searchHeader);
    m_searchHeader->SetHeaderFont(DrawMaster::GetNormalFont());

    const int height = m_searchHeader->CalcHeaderHeight() * 2 + 4;
    m_searchHeader->SetHeights(height, height, height / 2);

    AddColumns();

    SetSortHelper(&m_sortHelper);
    m_sortHelper.SetDatePattern(toQString(Locale::GetDatePattern()));
    m_sortHelper.AddSortColumn(ePATIENT_NAME, ListSortHelper::eText);
    m_sortHelper.SetCurrentSort(ePATIENT_NAME, true);
    m_sortHelper.AddSortColumn(eDOB, ListSortHelper::eDate);
    m_searchHeader->SetSortIndicator(ePATIENT_NAME, true);

    // Every row shows exactly two lines.
    CRect measure(0, 0, 0, 0);
    CalcTextRect(font(), "Wy\r\nWy", measure, DT_CALCRECT);
    SetItemHeight(measure.Height());
    return TRUE;
}

void CDuplicatePatientList::AddColumns()
{
    const QFont& normal = DrawMaster::GetNormalFont();
    const double total = totalWidth();
    TavHelper helper;
    for (int i = 0; i < kColumnCount; ++i) {
        const auto index = static_cast<eCOLINDEX>(i);
        const CString title = GetColumnName(index);
        SearchHeaderItem* item = nullptr;
        switch (index) {
        case eORGANIZATION: {
            auto* check = new HeaderCheckComboItem(title);
            helper.InitOrganizationCombo(check->GetComboBox(), true);
            item = check;
            break;
        }
        case eTYPE: {
            auto* check = new HeaderCheckComboItem(title);
            check->GetComboBox().AddString(DUPTYPENAMES[0]);
            check->GetComboBox().AddString(DUPTYPENAMES[1]);
            item = check;
            break;
        }
        case eREASON: {
            auto* combo = new HeaderComboItem(title);
            helper.InitMergeLinkReasonCombo(combo->GetComboBox());
            item = combo;
            break;
        }
        case eDOB: {
            auto* range = new HeaderItemDOBRange(title);
            range->GetDateRangeCtrl().SetEnableEdit(true);
            range->GetDateRangeCtrl().SetAllowFullDeleteOnly(false);
            range->GetDateRangeCtrl().SetDatePattern(toQString(Locale::GetDatePattern()));
            item = range;
            break;
        }
        case eSEX: {
            auto* check = new HeaderCheckComboItem(title);
            helper.InitCombo(check->GetComboBox(), DictionaryService::eSEX, DictionaryService::eCODE);
            item = check;
            break;
        }
        default:
            item = new SearchHeaderEditItem(title);
            break;
        }
        m_searchHeader->AddItem(item);
        item->SetFont(normal);
        AddColumn(Column(title, kColumnWidths[i] / total, MIN_DEFAULT_WIDTH));
    }
}

void CDuplicatePatientList::DisplayItems(int rowCount, int& total)
{
    BRAVIK_MANAGE_STATE();
    MergeLinkCandidatesQueryDataSet query;
    if (!BuildMLCDataSet(rowCount, query)) {
        total = 0;
        return;
    }
    RetrieveDuplicatePatients(query, total);
    if (total > 0)
        PopulateResultsInUI();
}

bool CDuplicatePatientList::BuildMLCDataSet(int rowCount, MergeLinkCandidatesQueryDataSet& query)
{
    std::map<CString, CString> params;
    if (m_searchHeader) {
        m_searchHeader->EndEditItem();
        m_searchHeader->GetQueryParams(params);
    }
    MLCDataSetBuilder builder(rowCount);
    if (!builder.BuildFromParams(params, query))
        return false;
    DestoryAllItems(true);
    return true;
}

void CDuplicatePatientList::RetrieveDuplicatePatients(MergeLinkCandidatesQueryDataSet& query, int& total)
{
    try {
        ServiceRegistry* registry = Session::ServiceInstance();
        PatientManagementService* patients = registry ? registry->GetPatientManagementService() : nullptr;
        if (patients)
            patients->GetLinkAndMergePatients(m_records, query, total);
    } catch (const std::exception& e) {
        ACE_Log_Msg* log = ACE_Log_Msg::instance();
        log->file("duplicatepatientlist");
        log->linenum(305);
        log->log(LM_DEBUG, "Function: %s, Line: %d: %s\n", "CDuplicatePatientList::RetrieveDuplicatePatients", 305,
                 e.what());
    }
}

void CDuplicatePatientList::PopulateResultsInUI()
{
    BRAVIK_MANAGE_STATE();
    setUpdatesEnabled(false);
    int row = 0;
    for (DuplicatePatientRecord* record : m_records) {
        const PatientQueryRecord& a = record->GetFirstPatient();
        const PatientQueryRecord& b = record->GetSecondPatient();
        CString idA = a.GetSsn().c_str();
        CString idB = b.GetSsn().c_str();
        PatientGIDFormatter::FormatPatientGID(idA);
        PatientGIDFormatter::FormatPatientGID(idB);
        const CString dobA = Locale::FormatDate(a.GetPatientBirthDate(), Locale::eShort);
        const CString dobB = Locale::FormatDate(b.GetPatientBirthDate(), Locale::eShort);

        std::vector<ListSubItemPtr> cells;
        cells.reserve(kColumnCount);
        cells.push_back(std::make_unique<ListTextSubItem>(ePATIENT_NAME,
                                                          twoLines(a.GetPatientName().c_str(), b.GetPatientName().c_str())));
        cells.push_back(std::make_unique<ListTextSubItem>(ePATIENT_ID, twoLines(idA, idB)));
        cells.push_back(std::make_unique<ListTextSubItem>(eMRN, twoLines(a.GetPatientId().c_str(), b.GetPatientId().c_str())));
        cells.push_back(std::make_unique<ListTextSubItem>(
            eORGANIZATION, twoLines(a.GetOrganizationId().c_str(), b.GetOrganizationId().c_str())));
        cells.push_back(std::make_unique<ListTextSubItem>(eTYPE, GetDupTypeStr(*record)));
        cells.push_back(std::make_unique<ListTextSubItem>(eREASON, CString(record->GetDuplicateReason().c_str())));
        cells.push_back(std::make_unique<ListTextSubItem>(eDOB, twoLines(dobA, dobB)));
        cells.push_back(std::make_unique<ListTextSubItem>(
            eSEX, twoLines(a.GetPatientSexCode().c_str(), b.GetPatientSexCode().c_str())));
        InsertItemAt(row++, std::move(cells), reinterpret_cast<DWORD_PTR>(record));
    }
    Sort();
    setUpdatesEnabled(true);
}

void CDuplicatePatientList::DestoryAllItems(bool clearRows)
{
    if (clearRows)
        DeleteAllItems();
    for (DuplicatePatientRecord* record : m_records)
        delete record;
    m_records.clear();
}

CString CDuplicatePatientList::GetDupTypeStr(DuplicatePatientRecord& record)
{
    if (DUPTYPENAMES.empty())
        LoadNames();
    const bool sameOrganization =
        record.GetFirstPatient().GetOrganizationKey() == record.GetSecondPatient().GetOrganizationKey();
    return DUPTYPENAMES[sameOrganization ? 0 : 1];
}

DuplicatePatientRecord* CDuplicatePatientList::GetRecord(int row) const
{
    return reinterpret_cast<DuplicatePatientRecord*>(GetItemData(row));
}

void CDuplicatePatientList::SetItemTextAndBkgndColor(QPainter& dc, const CRect& rect, DWORD state, UINT row)
{
    const ColorSchema& colors = ColorSchema::Instance();
    COLORREF text;
    COLORREF back;
    if (HasFullRowSelection() && (state & LVIS_SELECTED)) {
        text = colors.GetSelectedTextColor();
        back = colors.GetTextActiveSelectionBkColor();
    } else {
        text = colors.GetTextColorNormal();
        back = (row % 2) ? colors.GetListViewDarkRowBkColor() : colors.GetListViewLightRowBkColor();
    }
    dc.setPen(toQColor(text));
    dc.setBackground(toQColor(back));
    SetTextBkColor(back, false);
    dc.fillRect(rect.toQRect(), toQColor(back));
}

void CDuplicatePatientList::Sort()
{
    SortItems();
}

LRESULT CDuplicatePatientList::OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == SearchHeaderCtrl::SHCNM_QUERYBUTTON_CLICKED)
        return OnQueryButtonClicked(wParam, lParam);
    if (msg == SearchHeaderCtrl::SHCNM_TITLE_CLICKED)
        return OnColumnHeaderClicked(wParam, lParam);
    return ListCtrlEx::OnRegisteredMessage(msg, wParam, lParam);
}

LRESULT CDuplicatePatientList::OnQueryButtonClicked(WPARAM, LPARAM)
{
    // The same command as the page's own search button.
    SendCommand(parentWidget(), IDC_DUP_SEARCH);
    return 0;
}

LRESULT CDuplicatePatientList::OnColumnHeaderClicked(WPARAM wParam, LPARAM)
{
    const int column = static_cast<int>(wParam);
    // An ordinary column click for the parent; the sorting itself is the
    // list's own column-click handling.
    NotifyParent(LVN_COLUMNCLICK, -1, column, CPoint());
    HandleColumnClicked(column);
    return 0;
}
