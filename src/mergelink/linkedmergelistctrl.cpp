#include "mergelink/linkedmergelistctrl.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"

#include "addressrecord.h"
#include "drawmaster.h"
#include "drawtext.h"
#include "listctrlmodel.h"
#include "listradiosubitem.h"
#include "listtextsubitem.h"
#include "localefunctions.h"
#include "patientdetailrecord.h"
#include "qtconvert.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

LinkedOrganizationSubItem::LinkedOrganizationSubItem(int column, const CString& text)
    : ListImageSubItem(column, QPixmap(), text)
{
    SetExpandable(true);
    SetExpanded(false);
}

void LinkedOrganizationSubItem::DrawContent(QPainter& painter, const CRect& rect) const
{
    // The label sits right-aligned in a box of the common label width; the
    // box itself is right-aligned in the cell.
    CRect box = rect;
    if (m_labelWidth > 0 && m_labelWidth < rect.Width())
        box.left = rect.right - m_labelWidth;
    CRect text = box;
    text.DeflateRect(2, 0);
    DrawText(painter, GetText(), text, GetDrawFormat() | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

namespace {

// Room around a label's text: the cell's inner padding on both sides and a
// little to spare, so the widest label is never cut short.
constexpr int kLabelSlack = 12;

ListSubItemPtr detailCell(int column, const CString& text)
{
    auto cell = std::make_unique<ListTextSubItem>(column, text);
    cell->SetFont(DrawMaster::GetNormalFont());
    cell->SetDrawFormat(0);
    return cell;
}

bool isLabel(const ListSubItem* cell)
{
    return dynamic_cast<const ListImageSubItem*>(cell) != nullptr;
}

} // namespace

LinkedMergeListCtrl::LinkedMergeListCtrl(const std::vector<PatientDetailRecord*>& linkedRecords1,
                                         const std::vector<PatientDetailRecord*>& linkedRecords2)
    : m_linkedRecords1(linkedRecords1), m_linkedRecords2(linkedRecords2)
{
    connect(this, &ListCtrlEx::columnsLaidOut, this, [this] {
        // Keep the label boxes in step with every layout the toolkit does.
        int widest = 0;
        const QFontMetrics metrics(DrawMaster::GetNormalFont());
        for (int r = 0; r < GetItemCount(); ++r)
            if (ListSubItem* cell = GetSubItemAt(r, 0); isLabel(cell))
                widest = std::max(widest, metrics.horizontalAdvance(toQString(cell->GetText())) + kLabelSlack);
        for (int r = 0; r < GetItemCount(); ++r)
            if (auto* label = dynamic_cast<LinkedOrganizationSubItem*>(GetSubItemAt(r, 0)))
                label->SetLabelWidth(widest);
        viewport()->update();
    });
}

LinkedMergeListCtrl::~LinkedMergeListCtrl()
{
    HideToolTip();
}

void LinkedMergeListCtrl::updateGeometries()
{
    QTableView::updateGeometries();
}

BOOL LinkedMergeListCtrl::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id)
{
    if (!ComparisonListCtrl::Create(style, rect, parent, id))
        return FALSE;
    setFont(DrawMaster::GetNormalFont());
    // The tooltip starts inactive; hovering a cell with text activates it.
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    m_toolTipActive = false;
    m_toolTipMaxWidth = TOOLTIP_MAX_WIDTH;
    return TRUE;
}

void LinkedMergeListCtrl::RecalcLayout()
{
    // The base layout announces columnsLaidOut, which lines the labels up.
    ListCtrlEx::RecalcLayout();
}

ACE_CString LinkedMergeListCtrl::OrganizationIdFromLabel(const CString& label)
{
    const int open = label.Find('(');
    int close = -1;
    for (int i = label.GetLength() - 1; i >= 0; --i)
        if (label.GetAt(i) == ')') {
            close = i;
            break;
        }
    CString id = (open >= 0 && close > open) ? label.Mid(open + 1, close - open - 1) : label;
    id.Trim();
    id.TrimLeft('!');
    id.Trim();
    return ACE_CString(static_cast<const char*>(id));
}

PatientDetailRecord* LinkedMergeListCtrl::FindInOrganization(const std::vector<PatientDetailRecord*>& records,
                                                             const ACE_CString& organizationID)
{
    for (PatientDetailRecord* record : records)
        if (record && record->GetOrganizationID() == organizationID)
            return record;
    return nullptr;
}

std::vector<CString> LinkedMergeListCtrl::DetailTexts(const PatientDetailRecord* record)
{
    BRAVIK_MANAGE_STATE();
    std::vector<CString> texts(DETAIL_ROWS);
    if (!record)
        return texts;
    texts[0] = record->GetPatientName().c_str();

    const CString date = record->GetDOB().IsValid() ? Locale::FormatDate(record->GetDOB(), Locale::eShort)
                                                    : LoadString(IDS_ML_NOT_AVAILABLE);
    if (!record->GetSexCode().is_empty())
        texts[1].Format("%s,%s", record->GetSexCode().c_str(), static_cast<const char*>(date));
    else
        texts[1] = date;

    AddressRecord address;
    address.FromPatientDetailRecord(record);
    CString line1 = address.GetAddressLine1().c_str();
    if (!address.GetAddressLine2().is_empty())
        line1 = line1 + " " + address.GetAddressLine2().c_str();
    CString line2 = address.GetCity().c_str();
    if (!address.GetStateCode().is_empty())
        line2 = line2 + "," + address.GetStateCode().c_str();
    // The two further region fields: a comma whenever the line already has
    // text, even when the field itself is empty (as the list always showed).
    for (const ACE_CString* region : {&address.GetCounty(), &address.GetCountryCode()}) {
        if (!line2.IsEmpty())
            line2 += ",";
        if (!region->is_empty())
            line2 += region->c_str();
    }
    if (!line2.IsEmpty())
        line2 += " ";
    if (!address.GetPostalCode().is_empty())
        line2 += address.GetPostalCode().c_str();
    texts[2] = line1;
    texts[3] = line2;
    return texts;
}

void LinkedMergeListCtrl::OnItemClick(int row, int column, const CPoint& clientPoint)
{
    // A click in a value column goes on to the toolkit, which checks the radio.
    if (!OnItemClick(row, column) && column != 0)
        ListCtrlEx::OnItemClick(row, column, clientPoint);
}

bool LinkedMergeListCtrl::OnItemClick(int item, int subItem)
{
    BRAVIK_MANAGE_STATE();
    ACE_LOG_MSG->file(__FILE__);
    ACE_LOG_MSG->linenum(__LINE__);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("LinkedMergeListCtrl::OnItemClick Item:%d SubItem:%d)\n"), item, subItem));
    if (subItem != 0 || item < 0)
        return false;
    ListSubItem* cell = GetSubItemAt(item, 0);
    if (!isLabel(cell))
        return false;
    if (cell->IsExpanded())
        Collapse(item, cell);
    else
        Expand(item, cell);
    return true;
}

void LinkedMergeListCtrl::Collapse(int row, ListSubItem* label)
{
    for (int i = 0; i < DETAIL_ROWS; ++i)
        DeleteItem(row + 1);
    label->SetExpanded(false);
    UpdateItem(row);
}

void LinkedMergeListCtrl::Expand(int row, ListSubItem* label)
{
    label->SetExpanded(true);
    const ACE_CString organizationID = OrganizationIdFromLabel(label->GetText());
    const std::vector<CString> first = DetailTexts(FindInOrganization(m_linkedRecords1, organizationID));
    const std::vector<CString> second = DetailTexts(FindInOrganization(m_linkedRecords2, organizationID));
    for (int i = 0; i < DETAIL_ROWS; ++i) {
        std::vector<ListSubItemPtr> cells;
        cells.push_back(detailCell(0, CString()));
        cells.push_back(detailCell(1, first[i]));
        cells.push_back(detailCell(2, second[i]));
        InsertItemAt(row + 1 + i, std::move(cells));
    }
    UpdateItem(row);
}

void LinkedMergeListCtrl::OnMouseMove(const CPoint& clientPoint)
{
    const QPoint vp = viewport()->mapFrom(this, clientPoint.toQPoint());
    const QModelIndex idx = viewport()->rect().contains(vp) ? indexAt(vp) : QModelIndex();
    const int row = idx.isValid() ? idx.row() : -1;
    const int column = idx.isValid() ? idx.column() : -1;
    if (row == m_hoverRow && column == m_hoverColumn)
        return;
    m_hoverRow = row;
    m_hoverColumn = column;
    HideToolTip();
    const ListSubItem* cell = row >= 0 ? GetSubItemAt(row, column) : nullptr;
    if (!cell || cell->IsRadio())
        return;
    const CString text = cell->GetText();
    if (text.IsEmpty())
        return;
    m_toolTipText = text;
    m_toolTipActive = true;
    if (isVisible())
        QToolTip::showText(mapToGlobal(clientPoint.toQPoint()), toQString(text), viewport());
}

void LinkedMergeListCtrl::HideToolTip()
{
    if (m_toolTipActive && QToolTip::isVisible())
        QToolTip::hideText();
    m_toolTipText = CString();
    m_toolTipActive = false;
}

void LinkedMergeListCtrl::mouseMoveEvent(QMouseEvent* e)
{
    ListCtrlEx::mouseMoveEvent(e);
    OnMouseMove(CPoint::fromQPoint(viewport()->mapTo(this, e->position().toPoint())));
}

void LinkedMergeListCtrl::leaveEvent(QEvent* e)
{
    ListCtrlEx::leaveEvent(e);
    m_hoverRow = m_hoverColumn = -1;
    HideToolTip();
}
