#include "listctrlex.h"

#include "colorschema.h"
#include "listctrldelegate.h"
#include "listctrlmodel.h"
#include "listradiosubitem.h"
#include "listsorthelper.h"
#include "searchheaderctrl.h"
#include "toolkitnotify.h"
#include "windowmessage.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

ListCtrlEx::ListCtrlEx(QWidget* parent)
    : QTableView(parent),
      m_model(new ListCtrlModel(this)),
      m_bkColor(ColorSchema::Instance().GetListCtrlBkColor()),
      m_textBkColor(ColorSchema::Instance().GetListCtrlBkColor()),
      m_textColor(ColorSchema::Instance().GetTextColorNormal())
{
    setModel(m_model);
    setItemDelegate(new ListCtrlDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setShowGrid(false);
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        NotifyParent(LVN_COLUMNCLICK, -1, column, CPoint());
        HandleColumnClicked(column);
    });
    SetItemHeight(fontMetrics().height() + 4);
    SetBkColor(m_bkColor);
}

ListCtrlEx::~ListCtrlEx()
{
    // Rows go with the model; make sure the view lets go of it first.
    setModel(nullptr);
}

BOOL ListCtrlEx::Create(DWORD /*style*/, const CRect& rect, CWnd* parent, UINT id)
{
    setParent(parent);
    ::SetDlgCtrlID(this, static_cast<int>(id));
    setGeometry(rect.toQRect());
    show();
    return TRUE;
}

// --- columns

int ListCtrlEx::InsertColumn(int index, const Column& column)
{
    const int at = m_model->InsertColumn(index, column);
    RecalcLayout();
    return at;
}

bool ListCtrlEx::DeleteColumn(int index)
{
    const bool done = m_model->DeleteColumn(index);
    if (done)
        RecalcLayout();
    return done;
}

int ListCtrlEx::GetColumnCount() const
{
    return static_cast<int>(m_model->Columns().size());
}

const Column* ListCtrlEx::GetColumn(int index) const
{
    return m_model->GetColumn(index);
}

int ListCtrlEx::GetColumnWidth(int index) const
{
    return columnWidth(index);
}

void ListCtrlEx::SetColumnWidth(int index, int width)
{
    Column* column = m_model->GetColumn(index);
    if (!column)
        return;
    const int available = std::max(1, viewport()->width());
    column->SetWidthFraction(static_cast<double>(std::max(width, column->GetMinWidth())) / available);
    RecalcLayout();
}

CRect ListCtrlEx::GetColumnRect(int index) const
{
    if (index < 0 || index >= GetColumnCount())
        return CRect();
    const int left = columnViewportPosition(index);
    return CRect(left, 0, left + columnWidth(index), viewport()->height());
}

void ListCtrlEx::RecalcLayout()
{
    if (m_laying)
        return;
    m_laying = true;
    const auto& columns = m_model->Columns();
    const int available = viewport()->width();
    double total = 0;
    for (const Column& c : columns)
        total += c.GetWidthFraction();
    int used = 0;
    for (size_t i = 0; i < columns.size(); ++i) {
        const Column& c = columns[i];
        int width = static_cast<int>(std::lround(c.GetWidthFraction() * available));
        // The last column takes the rounding remainder when the fractions fill the list.
        if (i + 1 == columns.size() && total > 0.999 && total < 1.001)
            width = available - used;
        width = std::max(width, c.GetMinWidth());
        setColumnWidth(static_cast<int>(i), width);
        used += width;
    }
    m_laying = false;
    if (m_header)
        m_header->SyncToList();
    emit columnsLaidOut();
}

// --- rows

int ListCtrlEx::InsertItem(std::vector<ListSubItemPtr> cells, DWORD_PTR data)
{
    return InsertItemAt(GetItemCount(), std::move(cells), data);
}

int ListCtrlEx::InsertItemAt(int index, std::vector<ListSubItemPtr> cells, DWORD_PTR data)
{
    const int row = m_model->InsertRow(index, std::move(cells), data);
    setRowHeight(row, m_itemHeight);
    return row;
}

ListSubItem* ListCtrlEx::GetSubItemAt(int row, int column) const
{
    return m_model->GetSubItem(row, column);
}

bool ListCtrlEx::DeleteItem(int row)
{
    return m_model->DeleteRow(row);
}

void ListCtrlEx::DeleteAllItems()
{
    m_model->DeleteAllRows();
}

int ListCtrlEx::GetItemCount() const
{
    return m_model->rowCount();
}

DWORD_PTR ListCtrlEx::GetItemData(int row) const
{
    return m_model->GetItemData(row);
}

bool ListCtrlEx::SetItemData(int row, DWORD_PTR data)
{
    return m_model->SetItemData(row, data);
}

void ListCtrlEx::UpdateItem(int row)
{
    m_model->RowChanged(row);
}

void ListCtrlEx::SetItemHeight(int height)
{
    m_itemHeight = std::max(1, height);
    verticalHeader()->setMinimumSectionSize(std::min(m_itemHeight, verticalHeader()->minimumSectionSize()));
    verticalHeader()->setDefaultSectionSize(m_itemHeight);
    for (int r = 0; r < GetItemCount(); ++r)
        setRowHeight(r, m_itemHeight);
}

// --- selection

void ListCtrlEx::SetFullRowSelection(bool on)
{
    m_fullRowSelect = on;
    viewport()->update();
}

int ListCtrlEx::GetSelectedCount() const
{
    return static_cast<int>(GetSelectedItems().size());
}

std::vector<int> ListCtrlEx::GetSelectedItems() const
{
    std::vector<int> rows;
    if (!selectionModel())
        return rows;
    for (const QModelIndex& idx : selectionModel()->selectedRows())
        rows.push_back(idx.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

int ListCtrlEx::GetFirstSelectedItem() const
{
    const std::vector<int> rows = GetSelectedItems();
    return rows.empty() ? -1 : rows.front();
}

void ListCtrlEx::SetItemSelected(int row, bool selected)
{
    if (row < 0 || row >= GetItemCount() || GetColumnCount() == 0)
        return;
    selectionModel()->select(m_model->index(row, 0), (selected ? QItemSelectionModel::Select
                                                                : QItemSelectionModel::Deselect) |
                                                         QItemSelectionModel::Rows);
}

bool ListCtrlEx::IsItemSelected(int row) const
{
    return row >= 0 && row < GetItemCount() && selectionModel() && selectionModel()->isRowSelected(row, QModelIndex());
}

void ListCtrlEx::ClearSelection()
{
    if (selectionModel())
        selectionModel()->clearSelection();
}

UINT ListCtrlEx::GetItemState(int row) const
{
    UINT state = 0;
    if (IsItemSelected(row))
        state |= LVIS_SELECTED;
    if (currentIndex().isValid() && currentIndex().row() == row)
        state |= LVIS_FOCUSED;
    return state;
}

int ListCtrlEx::HitTest(const CPoint& clientPoint) const
{
    const QPoint vp = viewport()->mapFrom(this, clientPoint.toQPoint());
    if (!viewport()->rect().contains(vp))
        return -1;
    const QModelIndex idx = indexAt(vp);
    return idx.isValid() ? idx.row() : -1;
}

CRect ListCtrlEx::GetItemRect(int row) const
{
    if (row < 0 || row >= GetItemCount())
        return CRect();
    const QPoint origin = viewport()->mapTo(this, QPoint(0, rowViewportPosition(row)));
    return CRect(origin.x(), origin.y(), origin.x() + viewport()->width(), origin.y() + rowHeight(row));
}

// --- colours

void ListCtrlEx::SetBkColor(COLORREF color)
{
    m_bkColor = color;
    QPalette pal = palette();
    pal.setColor(QPalette::Base, toQColor(color));
    pal.setColor(QPalette::Window, toQColor(color));
    setPalette(pal);
    viewport()->update();
}

void ListCtrlEx::SetItemTextAndBkgndColor(QPainter& dc, const CRect& rect, DWORD state, UINT /*row*/)
{
    const ColorSchema& colors = ColorSchema::Instance();
    const bool selected = (state & LVIS_SELECTED) != 0;
    const COLORREF text = selected ? colors.GetTextActiveSelectionColor() : m_textColor;
    const COLORREF back = selected ? colors.GetTextActiveSelectionBkColor() : m_textBkColor;
    dc.setPen(toQColor(text));
    dc.setBackground(toQColor(back));
    dc.fillRect(rect.toQRect(), toQColor(back));
}

// --- header and sorting

void ListCtrlEx::ApplyHeader(SearchHeaderCtrl* header)
{
    if (m_header == header)
        return;
    delete m_header;
    m_header = header;
    if (m_header) {
        m_header->setParent(this);
        m_header->AttachToList(this);
        horizontalHeader()->hide();
        m_header->show();
    } else {
        horizontalHeader()->show();
    }
    UpdateHeaderLayout();
}

void ListCtrlEx::UpdateHeaderLayout()
{
    updateGeometries();
    RecalcLayout();
}

void ListCtrlEx::placeHeader()
{
    if (!m_header)
        return;
    const QRect vp = viewport()->geometry();
    const int height = m_header->GetHeaderHeight();
    m_header->setGeometry(vp.x(), vp.y() - height, vp.width(), height);
    m_header->SyncToList();
}

void ListCtrlEx::HandleColumnClicked(int column)
{
    if (!m_sortHelper)
        return;
    m_sortHelper->ToggleSort(column);
    SortItems();
}

void ListCtrlEx::SortItems()
{
    if (m_sortHelper)
        m_sortHelper->Sort();
    if (m_header && m_sortHelper)
        m_header->SetSortIndicator(m_sortHelper->GetCurrentSort(), m_sortHelper->IsAscending());
}

void ListCtrlEx::OnItemClick(int row, int column, const CPoint& clientPoint)
{
    ListSubItem* cell = GetSubItemAt(row, column);
    if (!cell)
        return;
    const QPoint vp = viewport()->mapFrom(this, clientPoint.toQPoint());
    const CRect cellRect = CRect::fromQRect(visualRect(m_model->index(row, column)));
    if (cell->IsExpandable() && cell->GetExpandMarkRect(cellRect).PtInRect(CPoint(vp.x(), vp.y()))) {
        cell->SetExpanded(!cell->IsExpanded());
        UpdateItem(row);
        OnExpandToggled(row, column, cell->IsExpanded());
        return;
    }
    if (cell->IsRadio()) {
        auto* radio = static_cast<ListRadioSubItem*>(cell);
        if (!radio->IsEnabled() || radio->GetCheck())
            return;
        for (int c = 0; c < GetColumnCount(); ++c) {
            ListSubItem* other = GetSubItemAt(row, c);
            if (other && other->IsRadio() && static_cast<ListRadioSubItem*>(other)->GetGroup() == radio->GetGroup())
                static_cast<ListRadioSubItem*>(other)->SetCheck(other == cell);
        }
        UpdateItem(row);
        OnRadioChecked(row, column);
    }
}

void ListCtrlEx::OnExpandToggled(int, int, bool) {}

void ListCtrlEx::OnRadioChecked(int, int) {}

// --- events

bool ListCtrlEx::event(QEvent* e)
{
    if (RegisteredMessageEvent* m = RegisteredMessageEvent::From(e)) {
        m->SetResult(OnRegisteredMessage(m->Message(), m->WParam(), m->LParam()));
        return true;
    }
    return QTableView::event(e);
}

LRESULT ListCtrlEx::OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == SearchHeaderCtrl::SHCNM_TITLE_CLICKED) {
        const int column = static_cast<int>(wParam);
        NotifyParent(LVN_COLUMNCLICK, -1, column, CPoint());
        HandleColumnClicked(column);
        return 1;
    }
    return SendMessage(parentWidget(), msg, wParam, lParam);
}

void ListCtrlEx::resizeEvent(QResizeEvent* e)
{
    QTableView::resizeEvent(e);
    placeHeader();
    RecalcLayout();
}

void ListCtrlEx::updateGeometries()
{
    QTableView::updateGeometries();
    // The table view sizes its margins for its own headers; the search header
    // needs its band instead. A plain list keeps the band of its column titles
    // while they show.
    const bool titles = !m_header && !horizontalHeader()->isHidden();
    const int top = m_header ? m_header->GetHeaderHeight() : (titles ? horizontalHeader()->sizeHint().height() : 0);
    if (viewportMargins().top() != top)
        setViewportMargins(0, top, 0, 0);
    placeHeader();
}

void ListCtrlEx::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (dx != 0 && m_header)
        m_header->SyncToList();
}

void ListCtrlEx::mousePressEvent(QMouseEvent* e)
{
    const QPoint client = viewport()->mapTo(this, e->position().toPoint());
    m_lastClickScreen = CPoint::fromQPoint(e->globalPosition().toPoint());
    const QModelIndex idx = indexAt(e->position().toPoint());
    if (m_header)
        m_header->EndEditItem();
    if (e->button() == Qt::RightButton) {
        // As the list always did: a right click on an unselected row selects
        // only that row; on a selected row the selection stays.
        if (idx.isValid() && !IsItemSelected(idx.row())) {
            selectionModel()->setCurrentIndex(idx, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        }
        setFocus();
        NotifyParent(NM_RCLICK, idx.isValid() ? idx.row() : -1, idx.isValid() ? idx.column() : -1,
                     CPoint::fromQPoint(client));
        e->accept();
        return;
    }
    m_pressRow = idx.isValid() ? idx.row() : -1;
    m_pressColumn = idx.isValid() ? idx.column() : -1;
    QTableView::mousePressEvent(e);
}

void ListCtrlEx::mouseReleaseEvent(QMouseEvent* e)
{
    QTableView::mouseReleaseEvent(e);
    if (e->button() != Qt::LeftButton)
        return;
    const QModelIndex idx = indexAt(e->position().toPoint());
    const int row = idx.isValid() ? idx.row() : -1;
    const int column = idx.isValid() ? idx.column() : -1;
    const CPoint client = CPoint::fromQPoint(viewport()->mapTo(this, e->position().toPoint()));
    if (row >= 0 && row == m_pressRow && column == m_pressColumn)
        OnItemClick(row, column, client);
    NotifyParent(NM_CLICK, row, column, client);
    m_pressRow = m_pressColumn = -1;
}

void ListCtrlEx::mouseDoubleClickEvent(QMouseEvent* e)
{
    QTableView::mouseDoubleClickEvent(e);
    const QModelIndex idx = indexAt(e->position().toPoint());
    NotifyParent(NM_DBLCLK, idx.isValid() ? idx.row() : -1, idx.isValid() ? idx.column() : -1,
                 CPoint::fromQPoint(viewport()->mapTo(this, e->position().toPoint())));
}

LRESULT ListCtrlEx::NotifyParent(UINT code, int item, int subItem, const CPoint& pt)
{
    NMLISTVIEW nm;
    nm.hdr.hwndFrom = this;
    nm.hdr.idFrom = static_cast<UINT>(::GetDlgCtrlID(this));
    nm.hdr.code = code;
    nm.iItem = item;
    nm.iSubItem = subItem;
    nm.ptAction = pt;
    nm.lParam = static_cast<LPARAM>(item >= 0 ? GetItemData(item) : 0);
    return SendNotify(parentWidget(), nm.hdr);
}
