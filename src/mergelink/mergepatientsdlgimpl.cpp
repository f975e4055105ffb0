#include "mergelink/mergepatientsdlgimpl.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "mergelink/comparisonlistctrl.h"
#include "mergelink/linkedmergelistctrl.h"
#include "mergelink/patientcomparison.h"

#include "addressrecord.h"
#include "colorschema.h"
#include "drawmaster.h"
#include "drawtext.h"
#include "linkedpatientinfo.h"
#include "listctrlex.h"
#include "listradiosubitem.h"
#include "listtextsubitem.h"
#include "localefunctions.h"
#include "orgoperationscollection.h"
#include "patientgidformatter.h"
#include "qtconvert.h"
#include "serviceregistry.h"
#include "session.h"
#include "stringtable.h"
#include "toolkitnotify.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

const char* const MergePatientsDlgImpl::TOGGLE_MERGE_MESSAGE_NAME =
    "RWM_TOGGLEMERGE-{1525B374-D0D8-4dde-B1CB-68DF59DBCE7A}";

UINT MergePatientsDlgImpl::ToggleMergeMessage()
{
    static const UINT message = RegisterWindowMessage(TOGGLE_MERGE_MESSAGE_NAME);
    return message;
}

namespace {

// Draw formats of the cells: labels right-aligned, values as they come,
// organization labels right-aligned and vertically centred.
constexpr UINT kLabelFormat = 2;
constexpr UINT kValueFormat = 0;
constexpr UINT kOrganizationFormat = 6;

// Height of the pale strip closing the panel at the bottom.
constexpr int kBottomStrip = 1;
constexpr int kNoteGap = 6;

CString S(const ACE_CString& s) { return CString(s.c_str()); }

using PatientComparison::AddressText;
using PatientComparison::FieldText;
using PatientComparison::TextCell;

ListSubItemPtr radioCell(int column, const CString& text)
{
    auto cell = std::make_unique<ListRadioSubItem>(column, false, text, 0);
    cell->SetCheck(false);
    cell->SetFont(DrawMaster::GetNormalFont());
    cell->SetDrawFormat(kValueFormat);
    return cell;
}

ListRadioSubItem* radioAt(const ListCtrlEx* list, int row, int column)
{
    if (!list)
        return nullptr;
    ListSubItem* cell = list->GetSubItemAt(row, column);
    return cell && cell->IsRadio() ? static_cast<ListRadioSubItem*>(cell) : nullptr;
}

bool isChecked(const ListCtrlEx* list, int row, int column)
{
    const ListRadioSubItem* radio = radioAt(list, row, column);
    return radio && radio->GetCheck();
}

void setCheck(const ListCtrlEx* list, int row, int column, bool checked)
{
    if (ListRadioSubItem* radio = radioAt(list, row, column))
        radio->SetCheck(checked);
}

void setUpList(ListCtrlEx& list, bool showHeader)
{
    list.setFont(DrawMaster::GetNormalFont());
    list.setSelectionMode(QAbstractItemView::NoSelection);
    list.setFocusPolicy(Qt::NoFocus);
    // No scroll bars: the lists are sized to their rows, and the linked
    // list, which may hold more, scrolls with the wheel and the keys.
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    if (!showHeader)
        list.horizontalHeader()->hide();
    list.setFrameShape(QFrame::NoFrame);
}

void addColumns(ListCtrlEx& list, const CString& c0, const CString& c1, const CString& c2)
{
    list.InsertColumn(0, Column(c0, 0.25));
    list.InsertColumn(1, Column(c1, 0.3));
    list.InsertColumn(2, Column(c2, 0.3));
}

CString mrnLabel(const ACE_CString& organizationID)
{
    return LoadString(IDS_ML_MRN) + "(" + S(organizationID) + ")" + ":";
}

} // namespace

MergePatientsDlgImpl::MergePatientsDlgImpl(const std::vector<PatientDetailRecord*>& linkedRecords1,
                                           const std::vector<PatientDetailRecord*>& linkedRecords2,
                                           const std::vector<ACE_CString>* blockedOrganizations, int parentValue)
    : m_pRecord1(linkedRecords1.empty() ? nullptr : linkedRecords1.front()),
      m_pRecord2(linkedRecords2.empty() ? nullptr : linkedRecords2.front()),
      m_pLinkedRecords1(&linkedRecords1),
      m_pLinkedRecords2(&linkedRecords2),
      m_pBlockedOrganizations(blockedOrganizations),
      m_nParentValue(parentValue)
{
    setObjectName(QStringLiteral("MergePatientsDlgImpl"));
    hide();
}

MergePatientsDlgImpl::~MergePatientsDlgImpl()
{
    for (LinkedPatientInfo* info : m_linkedSelection)
        delete info;
    // The lists are child windows and go with the panel.
}

BOOL MergePatientsDlgImpl::Create(const CRect& rect, CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    setParent(parent);
    ::SetDlgCtrlID(this, IDC_MERGE_PANEL);
    setGeometry(rect.toQRect());
    setAutoFillBackground(false);
    show();
    m_bCreated = true;
    if (!m_pRecord1 || !m_pRecord2 || !CreateLists())
        return FALSE;
    InitHeaderList();
    InitFieldList();
    InitAddressList();
    CollectLinkedOrganizations();
    InitLinkedList();
    ApplyDefaultChoices();
    RecalcLayout(width(), height());
    return TRUE;
}

bool MergePatientsDlgImpl::CreateLists()
{
    const ColorSchema& cs = ColorSchema::Instance();
    m_pHeaderList = new ComparisonListCtrl();
    m_pHeaderList->setObjectName(QStringLiteral("IDC_MERGE_HEADER_LIST"));
    m_pFieldList = new ComparisonListCtrl();
    m_pFieldList->setObjectName(QStringLiteral("IDC_MERGE_FIELD_LIST"));
    m_pAddressList = new ComparisonListCtrl();
    m_pAddressList->setObjectName(QStringLiteral("IDC_MERGE_ADDRESS_LIST"));
    m_pLinkedList = new LinkedMergeListCtrl(*m_pLinkedRecords1, *m_pLinkedRecords2);
    m_pLinkedList->setObjectName(QStringLiteral("IDC_MERGE_LINKED_LIST"));

    if (!m_pHeaderList->Create(0, CRect(), this, IDC_MERGE_HEADER_LIST)
        || !m_pFieldList->Create(0, CRect(), this, IDC_MERGE_FIELD_LIST)
        || !m_pAddressList->Create(0, CRect(), this, IDC_MERGE_ADDRESS_LIST)
        || !m_pLinkedList->Create(0, CRect(), this, IDC_MERGE_LINKED_LIST))
        return false;

    setUpList(*m_pHeaderList, false);
    setUpList(*m_pFieldList, false);
    setUpList(*m_pAddressList, false);
    setUpList(*m_pLinkedList, true);

    m_pHeaderList->SetRowColors(cs.GetListViewDarkRowBkColor(), cs.GetListViewDarkRowBkColor());
    m_pFieldList->SetRowColors(cs.GetListViewDarkRowBkColor(), cs.GetListCtrlBkColor());
    m_pAddressList->SetRowColors(cs.GetListCtrlBkColor(), cs.GetListCtrlBkColor());
    m_pLinkedList->SetRowColors(cs.GetListCtrlBkColor(), cs.GetListViewDarkRowBkColor());
    return true;
}

void MergePatientsDlgImpl::InitHeaderList()
{
    addColumns(*m_pHeaderList, "Col0", "Col1", "Col2");
    std::vector<ListSubItemPtr> titles;
    titles.push_back(TextCell(0, CString(), kValueFormat));
    titles.push_back(TextCell(1, LoadString(IDS_ML_PATIENT_RECORD_1), kValueFormat));
    titles.push_back(TextCell(2, LoadString(IDS_ML_PATIENT_RECORD_2), kValueFormat));
    m_pHeaderList->InsertItem(std::move(titles));

    std::vector<ListSubItemPtr> selectAll;
    selectAll.push_back(TextCell(0, LoadString(IDS_ML_SELECT_ALL), kLabelFormat));
    selectAll.push_back(radioCell(1, CString()));
    selectAll.push_back(radioCell(2, CString()));
    m_pHeaderList->InsertItem(std::move(selectAll));
}

void MergePatientsDlgImpl::InitFieldList()
{
    addColumns(*m_pFieldList, "Col0", "Col1", "Col2");
    const CString labels[FIELD_ROW_COUNT] = {
        mrnLabel(m_pRecord1->GetOrganizationID()),
        LoadString(IDS_ML_LAST_NAME),
        LoadString(IDS_ML_FIRST_NAME),
        LoadString(IDS_ML_MIDDLE_NAME),
        LoadString(IDS_ML_SEX),
        LoadString(IDS_ML_GENDER),
        LoadString(IDS_ML_DOB),
        LoadString(IDS_ML_DOD),
        PatientGIDFormatter::GetPatientIDColumnName() + ":",
        LoadString(IDS_ML_MAIDEN_NAME),
        LoadString(IDS_ML_WORK_PHONE),
        LoadString(IDS_ML_HOME_PHONE),
        LoadString(IDS_ML_EMAIL),
        LoadString(IDS_ML_TITLE),
        LoadString(IDS_ML_SUFFIX),
        LoadString(IDS_ML_ALIAS_FIRST),
        LoadString(IDS_ML_ALIAS_MIDDLE),
        LoadString(IDS_ML_ALIAS_LAST),
    };
    for (int row = 0; row < FIELD_ROW_COUNT; ++row) {
        std::vector<ListSubItemPtr> cells;
        cells.push_back(TextCell(0, labels[row], kLabelFormat));
        cells.push_back(radioCell(1, FieldText(*m_pRecord1, row)));
        cells.push_back(radioCell(2, FieldText(*m_pRecord2, row)));
        m_pFieldList->InsertItem(std::move(cells));
    }
}

void MergePatientsDlgImpl::InitAddressList()
{
    addColumns(*m_pAddressList, "Col0", "Col1", "Col2");
    // Room for four address lines in the one row.
    const int lineHeight = QFontMetrics(m_pAddressList->font()).boundingRect(QStringLiteral("W")).height();
    m_pAddressList->SetItemHeight(m_pAddressList->GetItemHeight() + 4 * lineHeight);
    m_pAddressList->setWordWrap(true);
    std::vector<ListSubItemPtr> cells;
    cells.push_back(TextCell(0, LoadString(IDS_ML_ADDRESS), kLabelFormat));
    cells.push_back(radioCell(1, AddressText(m_pRecord1)));
    cells.push_back(radioCell(2, AddressText(m_pRecord2)));
    m_pAddressList->InsertItem(std::move(cells));
}

void MergePatientsDlgImpl::CollectLinkedOrganizations()
{
    m_linkedOrganizations.clear();
    for (const auto* records : {m_pLinkedRecords1, m_pLinkedRecords2}) {
        // Element 0 is the patient itself.
        for (size_t i = 1; i < records->size(); ++i) {
            const PatientDetailRecord* record = (*records)[i];
            if (!record)
                continue;
            const ACE_CString& id = record->GetOrganizationID();
            if (std::find(m_linkedOrganizations.begin(), m_linkedOrganizations.end(), id) == m_linkedOrganizations.end())
                m_linkedOrganizations.push_back(id);
        }
    }
}

bool MergePatientsDlgImpl::IsBlocked(const ACE_CString& organizationID) const
{
    return m_pBlockedOrganizations
        && std::find(m_pBlockedOrganizations->begin(), m_pBlockedOrganizations->end(), organizationID)
               != m_pBlockedOrganizations->end();
}

void MergePatientsDlgImpl::InitLinkedList()
{
    m_pLinkedList->InsertColumn(0, Column(LoadString(IDS_ML_COL_LINKED_ORGANIZATION), 0.25));
    m_pLinkedList->InsertColumn(1, Column(LoadString(IDS_ML_COL_LINKED_RECORD_1), 0.3));
    m_pLinkedList->InsertColumn(2, Column(LoadString(IDS_ML_COL_LINKED_RECORD_2), 0.3));

    ACE_CString federated;
    if (ServiceRegistry* registry = Session::ServiceInstance())
        if (OrgOperationsCollection* orgs = registry->GetOrgOperationsCollection())
            federated = orgs->GetFederatedOrgID();

    for (const ACE_CString& id : m_linkedOrganizations) {
        // The federated organization has no row; its records are paired on close.
        if (id == federated)
            continue;
        const PatientDetailRecord* first = LinkedMergeListCtrl::FindInOrganization(*m_pLinkedRecords1, id);
        const PatientDetailRecord* second = LinkedMergeListCtrl::FindInOrganization(*m_pLinkedRecords2, id);
        CString label = mrnLabel(id);
        if (IsBlocked(id))
            label = "! " + label;
        std::vector<ListSubItemPtr> cells;
        auto organization = std::make_unique<LinkedOrganizationSubItem>(0, label);
        organization->SetFont(DrawMaster::GetNormalFont());
        organization->SetDrawFormat(kOrganizationFormat);
        cells.push_back(std::move(organization));
        if (first && second) {
            cells.push_back(radioCell(1, S(first->GetPatientID())));
            cells.push_back(radioCell(2, S(second->GetPatientID())));
        } else {
            cells.push_back(TextCell(1, first ? S(first->GetPatientID()) : CString(), kValueFormat));
            cells.push_back(TextCell(2, second ? S(second->GetPatientID()) : CString(), kValueFormat));
        }
        m_pLinkedList->InsertItem(std::move(cells));
    }
    m_pLinkedList->RecalcLayout();
}

void MergePatientsDlgImpl::ApplyDefaultChoices()
{
    // Only where the two values can be told apart is the user left to choose;
    // the complete flag waits for the first click all the same.
    for (ListCtrlEx* list : {m_pFieldList, m_pAddressList}) {
        for (int row = 0; row < list->GetItemCount(); ++row) {
            ListRadioSubItem* first = radioAt(list, row, 1);
            ListRadioSubItem* second = radioAt(list, row, 2);
            if (!first || !second)
                continue;
            const CString a = first->GetText();
            const CString b = second->GetText();
            if (a.IsEmpty() && !b.IsEmpty())
                second->SetCheck(true);
            else if (!a.IsEmpty() && b.IsEmpty())
                first->SetCheck(true);
            else if (a.IsEmpty() && b.IsEmpty())
                first->SetCheck(true);
            else if (a.CompareNoCase(b) == 0)
                first->SetCheck(true);
        }
        list->viewport()->update();
    }
}

LRESULT MergePatientsDlgImpl::OnRegisteredMessage(UINT msg, WPARAM, LPARAM lParam)
{
    NMHDR* hdr = NotifyHeaderFrom(msg, lParam);
    if (!hdr || hdr->code != NM_CLICK)
        return 0;
    const auto* nm = reinterpret_cast<NMLISTVIEW*>(hdr);
    if (hdr->hwndFrom == m_pHeaderList) {
        if (nm->iItem == SELECT_ALL_ROW && (nm->iSubItem == 1 || nm->iSubItem == 2))
            OnSelectAll(nm->iSubItem);
        return 0;
    }
    if (hdr->hwndFrom == m_pFieldList || hdr->hwndFrom == m_pAddressList || hdr->hwndFrom == m_pLinkedList)
        UpdateCompleteness();
    return 0;
}

void MergePatientsDlgImpl::OnSelectAll(int column)
{
    const int other = column == 1 ? 2 : 1;
    const bool selected = isChecked(m_pHeaderList, SELECT_ALL_ROW, column);
    for (ListCtrlEx* list : {m_pFieldList, m_pAddressList}) {
        for (int row = 0; row < list->GetItemCount(); ++row) {
            setCheck(list, row, column, selected);
            setCheck(list, row, other, !selected);
        }
    }
    for (int row = 0; row < m_pLinkedList->GetItemCount(); ++row) {
        // Text cells (an organization with one record) need no choice.
        setCheck(m_pLinkedList, row, column, true);
        setCheck(m_pLinkedList, row, other, false);
    }
    m_bComplete = true;
    NotifyDialog();
    for (ListCtrlEx* list : {m_pFieldList, m_pAddressList, static_cast<ComparisonListCtrl*>(m_pLinkedList)})
        list->viewport()->update();
}

void MergePatientsDlgImpl::UpdateCompleteness()
{
    int chosen = 0;
    int expected = m_pFieldList->GetItemCount() + m_pAddressList->GetItemCount();
    for (ListCtrlEx* list : {m_pFieldList, m_pAddressList, static_cast<ComparisonListCtrl*>(m_pLinkedList)}) {
        for (int row = 0; row < list->GetItemCount(); ++row) {
            chosen += isChecked(list, row, 1) ? 1 : 0;
            chosen += isChecked(list, row, 2) ? 1 : 0;
        }
    }
    for (int row = 0; row < m_pLinkedList->GetItemCount(); ++row)
        if (radioAt(m_pLinkedList, row, 1))
            ++expected;
    m_bComplete = chosen == expected;
    NotifyDialog();
}

void MergePatientsDlgImpl::NotifyDialog()
{
    // The dialog is the frame's parent.
    QWidget* frame = parentWidget();
    SendMessage(frame ? frame->parentWidget() : nullptr, ToggleMergeMessage());
}

void MergePatientsDlgImpl::OnDestroy()
{
    if (m_bClosed || !m_pFieldList || !m_pRecord1 || !m_pRecord2)
        return;
    m_bClosed = true;
    AssembleTarget();
    AssembleLinkedChoices();
    PairFederatedRecords();
}

void MergePatientsDlgImpl::AssembleTarget()
{
    // The record whose MRN is chosen survives with all its information.
    const bool firstSurvives = isChecked(m_pFieldList, ROW_MRN, 1);
    const PatientDetailRecord& other = firstSurvives ? *m_pRecord2 : *m_pRecord1;
    const int otherColumn = firstSurvives ? 2 : 1;
    m_target = firstSurvives ? *m_pRecord1 : *m_pRecord2;
    m_strSourcePatientKey = S(other.GetPatientKey());

    auto fromOther = [&](int row) { return isChecked(m_pFieldList, row, otherColumn); };

    if (fromOther(ROW_MRN))
        m_target.SetPatientID(other.GetPatientID());
    if (fromOther(ROW_LAST_NAME) || fromOther(ROW_FIRST_NAME) || fromOther(ROW_MIDDLE_NAME)) {
        BPersonName name = m_target.GetName();
        if (fromOther(ROW_LAST_NAME))
            name.SetLastName(other.GetLastName());
        if (fromOther(ROW_FIRST_NAME))
            name.SetFirstName(other.GetFirstName());
        if (fromOther(ROW_MIDDLE_NAME))
            name.SetMiddleName(other.GetMiddleName());
        m_target.SetName(name.ToDICOMName());
    }
    if (fromOther(ROW_SEX))
        m_target.SetSexCode(other.GetSexCode());
    if (fromOther(ROW_GENDER))
        m_target.SetGenderCode(other.GetGenderCode());
    if (m_target.GetGenderCode().is_empty()) {
        // The gender shown was the sex code where a record has none: keep what was shown.
        const PatientDetailRecord& shown = isChecked(m_pFieldList, ROW_GENDER, 1) ? *m_pRecord1 : *m_pRecord2;
        m_target.SetGenderCode(shown.GetGenderCode().is_empty() ? shown.GetSexCode() : shown.GetGenderCode());
    }
    if (fromOther(ROW_DOB))
        m_target.SetDOB(other.GetDOB());
    if (fromOther(ROW_DOD))
        m_target.SetDateOfDeath(other.GetDeathYear(), other.GetDeathMonth(), other.GetDeathDay());
    if (fromOther(ROW_GID))
        m_target.SetPatientGID(other.GetPatientGID());
    if (isChecked(m_pAddressList, 0, otherColumn)) {
        m_target.SetAddressType(other.GetAddressType());
        m_target.SetOtherDesignation(other.GetOtherDesignation());
        m_target.SetAddressLine1(other.GetAddressLine1());
        m_target.SetAddressLine2(other.GetAddressLine2());
        m_target.SetCounty(other.GetCounty());
        m_target.SetCity(other.GetCity());
        m_target.SetCountryCode(other.GetCountryCode());
        m_target.SetStateCode(other.GetStateCode());
        m_target.SetPostalCode(other.GetPostalCode());
    }
    if (fromOther(ROW_ALIAS_FIRST))
        m_target.SetAliasFirstName(other.GetAliasFirstName());
    if (fromOther(ROW_ALIAS_MIDDLE))
        m_target.SetAliasMiddleName(other.GetAliasMiddleName());
    if (fromOther(ROW_ALIAS_LAST))
        m_target.SetAliasLastName(other.GetAliasLastName());
    if (fromOther(ROW_EMAIL))
        m_target.SetEmailAddress(other.GetEmailAddress());
    if (fromOther(ROW_MAIDEN_NAME))
        m_target.SetMothersMaidenName(other.GetMothersMaidenName());
    if (fromOther(ROW_TITLE))
        m_target.SetTitle(other.GetTitle());
    if (fromOther(ROW_SUFFIX))
        m_target.SetSuffix(other.GetSuffix());
    // Choosing the other record's phone copies its suffix and keeps the
    // survivor's own numbers. The merge has always done so and sites rely on
    // it: kept as it stands.
    if (fromOther(ROW_WORK_PHONE))
        m_target.SetSuffix(other.GetSuffix());
    if (fromOther(ROW_HOME_PHONE))
        m_target.SetSuffix(other.GetSuffix());
}

void MergePatientsDlgImpl::AssembleLinkedChoices()
{
    for (int row = 0; row < m_pLinkedList->GetItemCount(); ++row) {
        ListSubItem* label = m_pLinkedList->GetSubItemAt(row, 0);
        if (!dynamic_cast<ListImageSubItem*>(label) || !radioAt(m_pLinkedList, row, 1)
            || !radioAt(m_pLinkedList, row, 2))
            continue;
        const ACE_CString id = LinkedMergeListCtrl::OrganizationIdFromLabel(label->GetText());
        const PatientDetailRecord* first = LinkedMergeListCtrl::FindInOrganization(*m_pLinkedRecords1, id);
        const PatientDetailRecord* second = LinkedMergeListCtrl::FindInOrganization(*m_pLinkedRecords2, id);
        auto* info = new LinkedPatientInfo();
        if (first && second) {
            const bool firstKept = isChecked(m_pLinkedList, row, 1);
            info->SetTargetPatientKey(firstKept ? first->GetPatientKey() : second->GetPatientKey());
            info->SetSourcePatientKey(firstKept ? second->GetPatientKey() : first->GetPatientKey());
        }
        m_linkedSelection.push_back(info);
    }
}

void MergePatientsDlgImpl::PairFederatedRecords()
{
    ACE_CString federated;
    if (ServiceRegistry* registry = Session::ServiceInstance())
        if (OrgOperationsCollection* orgs = registry->GetOrgOperationsCollection())
            federated = orgs->GetFederatedOrgID();
    const bool firstSurvives =
        std::any_of(m_pLinkedRecords1->begin(), m_pLinkedRecords1->end(), [&](const PatientDetailRecord* r) {
            return r && r->GetPatientKey() == m_target.GetPatientKey();
        });
    const auto& surviving = firstSurvives ? *m_pLinkedRecords1 : *m_pLinkedRecords2;
    const auto& merged = firstSurvives ? *m_pLinkedRecords2 : *m_pLinkedRecords1;
    const PatientDetailRecord* kept = LinkedMergeListCtrl::FindInOrganization(surviving, federated);
    const PatientDetailRecord* away = LinkedMergeListCtrl::FindInOrganization(merged, federated);
    if (kept && away)
        m_linkedSelection.push_back(new LinkedPatientInfo(away->GetPatientKey(), kept->GetPatientKey()));
}

void MergePatientsDlgImpl::RecalcLayout(int cx, int cy)
{
    if (!m_pFieldList || !m_pAddressList || !m_pLinkedList || !m_pHeaderList)
        return;
    const int h = QFontMetrics(font()).boundingRect(QStringLiteral("Wy")).height();
    int y = 0;
    m_pHeaderList->setGeometry(0, y, cx, 3 * h);
    y = 3 * h + m_nGap;
    const int fieldHeight = m_pFieldList->GetItemCount() * m_pFieldList->GetItemHeight();
    m_pFieldList->setGeometry(0, y, cx, fieldHeight);
    y += fieldHeight;
    m_pAddressList->setGeometry(0, y, cx, m_pAddressList->GetItemHeight());
    y += m_pAddressList->GetItemHeight();
    const int linkedHeight = (m_pLinkedList->GetItemHeight() - 5) * 5;
    m_pLinkedList->setGeometry(0, y, cx, linkedHeight);
    y += linkedHeight;
    for (ListCtrlEx* list : {m_pHeaderList, m_pFieldList, m_pAddressList})
        list->RecalcLayout();
    m_pLinkedList->RecalcLayout();
    m_rcNote = CRect(0, y, cx, std::max(y, cy - kBottomStrip));
    update();
}

void MergePatientsDlgImpl::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    RecalcLayout(width(), height());
}

std::vector<CString> MergePatientsDlgImpl::GetNoteTexts() const
{
    BRAVIK_MANAGE_STATE();
    std::vector<CString> texts{LoadString(IDS_MERGE_NOTE_LABEL), LoadString(IDS_MERGE_NOTE)};
    if (m_pBlockedOrganizations && !m_pBlockedOrganizations->empty()) {
        texts.push_back("!");
        texts.push_back(LoadString(IDS_MERGE_NOTE_BLOCKED));
    }
    return texts;
}

void MergePatientsDlgImpl::paintEvent(QPaintEvent*)
{
    // Drawn off screen first so the note never flickers while resizing.
    QPixmap buffer(size() * devicePixelRatioF());
    buffer.setDevicePixelRatio(devicePixelRatioF());
    {
        QPainter dc(&buffer);
        EraseBackground(dc);
    }
    QPainter screen(this);
    screen.drawPixmap(0, 0, buffer);
}

void MergePatientsDlgImpl::EraseBackground(QPainter& dc)
{
    BRAVIK_MANAGE_STATE();
    const ColorSchema& cs = ColorSchema::Instance();
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), cs.GetDialogBkColor());
    if (!m_rcNote.IsRectEmpty()) {
        dc.setFont(font());
        const int lineHeight = QFontMetrics(font()).height();
        const bool blocked = m_pBlockedOrganizations && !m_pBlockedOrganizations->empty();
        const int lines = blocked ? 2 : 1;
        const int top = m_rcNote.top + (m_rcNote.Height() - lines * lineHeight) / 2;
        // The label lines up with the row labels of the lists above it.
        const int labelRight = m_pFieldList ? m_pFieldList->GetColumnWidth(0) - 4 : m_rcNote.Width() / 4;
        const int textLeft = labelRight + kNoteGap;
        const QColor red(255, 0, 0);

        dc.setPen(red);
        CRect label(m_rcNote.left, top, labelRight, top + lineHeight);
        DrawText(dc, LoadString(IDS_MERGE_NOTE_LABEL), label, DT_RIGHT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        dc.setPen(toQColor(cs.GetTextColorNormal()));
        CRect note(textLeft, top, m_rcNote.right - kNoteGap, top + lineHeight);
        DrawText(dc, LoadString(IDS_MERGE_NOTE), note, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        if (blocked) {
            // The same red mark that prefixes those organizations' rows.
            const int markWidth = QFontMetrics(font()).horizontalAdvance(QStringLiteral("! "));
            dc.setPen(red);
            CRect mark(textLeft, top + lineHeight, textLeft + markWidth, top + 2 * lineHeight);
            DrawText(dc, CString("!"), mark, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
            dc.setPen(toQColor(cs.GetTextColorNormal()));
            CRect line(textLeft + markWidth, top + lineHeight, m_rcNote.right - kNoteGap, top + 2 * lineHeight);
            DrawText(dc, LoadString(IDS_MERGE_NOTE_BLOCKED), line,
                     DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        }
    }
    // The closing strip in the system's dark 3-D shadow colour.
    dc.fillRect(QRect(0, height() - kBottomStrip, width(), kBottomStrip), palette().color(QPalette::Shadow));
}
