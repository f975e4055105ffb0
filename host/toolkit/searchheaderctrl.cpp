#include "searchheaderctrl.h"

#include "colorschema.h"
#include "drawtext.h"
#include "listctrlex.h"
#include "qtconvert.h"
#include "searchheaderitem.h"
#include "windowmessage.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QToolButton>

#include <algorithm>

const UINT SearchHeaderCtrl::SHCNM_QUERYBUTTON_CLICKED = RegisterWindowMessage("BravikToolkit-SearchHeader-QueryButton");
const UINT SearchHeaderCtrl::SHCNM_TITLE_CLICKED = RegisterWindowMessage("BravikToolkit-SearchHeader-TitleClicked");
const UINT SearchHeaderCtrl::SHCNM_LASTTABITEM = RegisterWindowMessage("BravikToolkit-SearchHeader-LastTabItem");

namespace {
constexpr int kDividerSlop = 3;
} // namespace

SearchHeaderCtrl::SearchHeaderCtrl(QWidget* parent) : QWidget(parent), m_queryButton(new QToolButton(this))
{
    setObjectName(QStringLiteral("SearchHeaderCtrl"));
    setMouseTracking(true);
    setAutoFillBackground(false);
    m_queryButton->setObjectName(QStringLiteral("QueryButton"));
    m_queryButton->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView));
    m_queryButton->setToolTip(tr("Search"));
    m_queryButton->setAutoRaise(true);
    m_queryButton->setFocusPolicy(Qt::NoFocus);
    connect(m_queryButton, &QToolButton::clicked, this,
            [this] { Notify(SHCNM_QUERYBUTTON_CLICKED, static_cast<WPARAM>(::GetDlgCtrlID(this))); });
    const int band = CalcHeaderHeight();
    SetHeights(band * 2, band * 2, band);
}

SearchHeaderCtrl::~SearchHeaderCtrl()
{
    // The items delete their editors, which are this widget's children.
    m_items.clear();
}

BOOL SearchHeaderCtrl::Create(DWORD /*style*/, const CRect& rect, CWnd* parent, UINT id)
{
    setParent(parent);
    ::SetDlgCtrlID(this, static_cast<int>(id));
    setGeometry(rect.toQRect());
    return TRUE;
}

void SearchHeaderCtrl::AttachToList(ListCtrlEx* list)
{
    m_list = list;
    SyncToList();
}

int SearchHeaderCtrl::InsertItem(int index, SearchHeaderItem* item)
{
    if (!item)
        return -1;
    if (index < 0 || index > GetItemCount())
        index = GetItemCount();
    m_items.insert(m_items.begin() + index, std::unique_ptr<SearchHeaderItem>(item));
    if (QWidget* editor = item->GetEditor()) {
        editor->setParent(this);
        editor->hide();
        editor->setFont(font());
    }
    watchItem(item);
    if (m_editing >= index)
        ++m_editing;
    update();
    return index;
}

void SearchHeaderCtrl::watchItem(SearchHeaderItem* item)
{
    for (QWidget* w : item->FocusWidgets())
        w->installEventFilter(this);
}

SearchHeaderItem* SearchHeaderCtrl::GetItem(int index) const
{
    if (index < 0 || index >= GetItemCount())
        return nullptr;
    return m_items[static_cast<size_t>(index)].get();
}

SearchHeaderItem* SearchHeaderCtrl::FindItem(const CString& title) const
{
    for (const auto& item : m_items)
        if (item->GetTitle() == title)
            return item.get();
    return nullptr;
}

void SearchHeaderCtrl::SetState(int state)
{
    if (state != STATE_EXPANDED)
        EndEditItem();
    m_state = state;
    if (m_list)
        m_list->UpdateHeaderLayout();
    update();
}

int SearchHeaderCtrl::CalcHeaderHeight() const
{
    return fontMetrics().height() + 8;
}

void SearchHeaderCtrl::SetHeights(int expanded, int collapsed, int titleButton)
{
    m_expandedHeight = expanded;
    m_collapsedHeight = collapsed;
    m_titleHeight = titleButton;
    if (m_list)
        m_list->UpdateHeaderLayout();
    SyncToList();
}

int SearchHeaderCtrl::GetHeaderHeight() const
{
    return m_state == STATE_EXPANDED ? m_expandedHeight : m_collapsedHeight;
}

void SearchHeaderCtrl::SetHeaderFont(const QFont& f)
{
    setFont(f);
    for (const auto& item : m_items)
        item->SetFont(f);
    update();
}

void SearchHeaderCtrl::GetQueryParams(std::map<CString, CString>& params) const
{
    for (const auto& item : m_items)
        params[item->GetTitle()] = item->GetText();
}

std::map<CString, CString> SearchHeaderCtrl::GetQueryParams() const
{
    std::map<CString, CString> params;
    GetQueryParams(params);
    return params;
}

void SearchHeaderCtrl::EndEditItem(bool commit)
{
    SearchHeaderItem* item = GetItem(m_editing);
    m_editing = -1;
    if (item) {
        QWidget* focus = QApplication::focusWidget();
        const bool hadFocus = item->GetEditor() && focus && (focus == item->GetEditor() || item->GetEditor()->isAncestorOf(focus));
        item->EndEdit(commit);
        // Keep the keyboard in the header's window rather than losing it.
        if (hadFocus && m_list)
            m_list->setFocus();
    }
    update();
}

bool SearchHeaderCtrl::BeginEditItem(int index)
{
    SearchHeaderItem* item = GetItem(index);
    if (!item || !item->IsTabStop() || !item->GetEditor() || m_state != STATE_EXPANDED)
        return false;
    if (m_editing == index)
        return true;
    EndEditItem();
    m_editing = index;
    placeEditor();
    item->BeginEdit();
    update();
    return true;
}

int SearchHeaderCtrl::GetNextTabIndex(int start) const
{
    for (int i = std::max(start, 0); i < GetItemCount(); ++i) {
        const SearchHeaderItem* item = GetItem(i);
        if (item->IsTabStop() && item->GetEditor() && columnWidth(i) > 0)
            return i;
    }
    return -1;
}

void SearchHeaderCtrl::SetSortIndicator(int column, bool ascending)
{
    m_sortColumn = column;
    m_sortAscending = ascending;
    update();
}

int SearchHeaderCtrl::columnLeft(int index) const
{
    if (m_list)
        return m_list->GetColumnRect(index).left;
    int x = 0;
    for (int i = 0; i < index; ++i)
        x += columnWidth(i);
    return x;
}

int SearchHeaderCtrl::columnWidth(int index) const
{
    if (m_list)
        return index < m_list->GetColumnCount() ? m_list->GetColumnWidth(index) : 0;
    return GetItemCount() > 0 ? width() / GetItemCount() : 0;
}

CRect SearchHeaderCtrl::GetTitleRect(int index) const
{
    if (index < 0 || index >= GetItemCount())
        return CRect();
    const int left = columnLeft(index);
    CRect r(left, 0, left + columnWidth(index), m_titleHeight);
    // The query button sits at the right end of the titles.
    const int buttonLeft = width() - m_titleHeight;
    if (r.right > buttonLeft && r.left < buttonLeft)
        r.right = buttonLeft;
    return r;
}

CRect SearchHeaderCtrl::GetCellRect(int index) const
{
    if (index < 0 || index >= GetItemCount() || m_state != STATE_EXPANDED)
        return CRect();
    const int left = columnLeft(index);
    return CRect(left, m_titleHeight, left + columnWidth(index), GetHeaderHeight());
}

void SearchHeaderCtrl::SyncToList()
{
    m_queryButton->setGeometry(width() - m_titleHeight, 0, m_titleHeight, m_titleHeight);
    placeEditor();
    update();
}

void SearchHeaderCtrl::placeEditor()
{
    SearchHeaderItem* item = GetItem(m_editing);
    if (!item || !item->GetEditor())
        return;
    CRect r = GetCellRect(m_editing);
    r.DeflateRect(1, 1);
    item->GetEditor()->setGeometry(r.toQRect());
}

void SearchHeaderCtrl::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    SyncToList();
}

void SearchHeaderCtrl::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const ColorSchema& colors = ColorSchema::Instance();
    p.fillRect(rect(), toQColor(colors.GetHeaderBkColor()));
    p.setFont(font());
    for (int i = 0; i < GetItemCount(); ++i) {
        const SearchHeaderItem* item = GetItem(i);
        const CRect title = GetTitleRect(i);
        if (title.Width() <= 0)
            continue;
        QStyleOptionHeader opt;
        opt.initFrom(this);
        opt.rect = title.toQRect();
        opt.text = toQString(item->GetTitle());
        opt.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        opt.section = i;
        opt.position = QStyleOptionHeader::Middle;
        opt.sortIndicator = i == m_sortColumn ? (m_sortAscending ? QStyleOptionHeader::SortDown
                                                                 : QStyleOptionHeader::SortUp)
                                              : QStyleOptionHeader::None;
        opt.state |= QStyle::State_Raised | QStyle::State_Horizontal;
        // The style may leave a clip or pen behind.
        p.save();
        style()->drawControl(QStyle::CE_Header, &opt, &p, this);
        p.restore();

        if (m_state != STATE_EXPANDED)
            continue;
        CRect cell = GetCellRect(i);
        cell.DeflateRect(1, 1);
        p.fillRect(cell.toQRect(), toQColor(colors.GetListCtrlBkColor()));
        p.setPen(toQColor(colors.GetFrameBorderColor()));
        p.drawRect(QRect(cell.left, cell.top, cell.Width() - 1, cell.Height() - 1));
        if (item->IsEditing())
            continue;
        CRect text = cell;
        text.DeflateRect(4, 0);
        if (item->HasDropDown()) {
            // A small arrow says the cell offers a list.
            const int s = 4;
            const int cx = text.right - s - 1;
            const int cy = text.top + text.Height() / 2;
            const QPoint tri[3] = {QPoint(cx - s, cy - s / 2), QPoint(cx + s, cy - s / 2), QPoint(cx, cy + s / 2)};
            p.setBrush(toQColor(colors.GetTextColorNormal()));
            p.setPen(Qt::NoPen);
            p.drawPolygon(tri, 3);
            p.setBrush(Qt::NoBrush);
            text.right -= 2 * s + 4;
        }
        p.setPen(toQColor(colors.GetTextColorNormal()));
        DrawText(p, item->GetText(), text, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
}

int SearchHeaderCtrl::dividerAt(int x) const
{
    for (int i = 0; i < GetItemCount(); ++i) {
        const int right = columnLeft(i) + columnWidth(i);
        if (std::abs(x - right) <= kDividerSlop)
            return i;
    }
    return -1;
}

void SearchHeaderCtrl::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(e);
    const QPoint pos = e->position().toPoint();
    const CPoint pt(pos.x(), pos.y());
    if (pos.y() < m_titleHeight) {
        EndEditItem();
        m_dragColumn = dividerAt(pos.x());
        m_pressTitle = -1;
        if (m_dragColumn < 0)
            for (int i = 0; i < GetItemCount(); ++i)
                if (GetTitleRect(i).PtInRect(pt))
                    m_pressTitle = i;
        return;
    }
    for (int i = 0; i < GetItemCount(); ++i)
        if (GetCellRect(i).PtInRect(pt)) {
            BeginEditItem(i);
            return;
        }
}

void SearchHeaderCtrl::mouseMoveEvent(QMouseEvent* e)
{
    const QPoint pos = e->position().toPoint();
    if (m_dragColumn >= 0 && m_list) {
        m_list->SetColumnWidth(m_dragColumn, std::max(0, pos.x() - columnLeft(m_dragColumn)));
        return;
    }
    setCursor(pos.y() < m_titleHeight && dividerAt(pos.x()) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
}

void SearchHeaderCtrl::mouseReleaseEvent(QMouseEvent* e)
{
    const QPoint pos = e->position().toPoint();
    if (m_dragColumn >= 0) {
        m_dragColumn = -1;
        return;
    }
    const int pressed = m_pressTitle;
    m_pressTitle = -1;
    if (pressed >= 0 && GetTitleRect(pressed).PtInRect(CPoint(pos.x(), pos.y())))
        Notify(SHCNM_TITLE_CLICKED, static_cast<WPARAM>(pressed));
}

bool SearchHeaderCtrl::eventFilter(QObject* watched, QEvent* e)
{
    if (e->type() != QEvent::KeyPress || m_editing < 0)
        return QWidget::eventFilter(watched, e);
    SearchHeaderItem* item = GetItem(m_editing);
    if (!item || !item->FocusWidgets().contains(qobject_cast<QWidget*>(watched)))
        return QWidget::eventFilter(watched, e);
    auto* key = static_cast<QKeyEvent*>(e);
    switch (key->key()) {
    case Qt::Key_Tab: {
        const int left = m_editing;
        EndEditItem();
        const int next = GetNextTabIndex(left + 1);
        if (next >= 0)
            BeginEditItem(next);
        else
            Notify(SHCNM_LASTTABITEM, static_cast<WPARAM>(left));
        return true;
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
        EndEditItem();
        Notify(SHCNM_QUERYBUTTON_CLICKED, static_cast<WPARAM>(::GetDlgCtrlID(this)));
        return true;
    case Qt::Key_Escape:
        EndEditItem(false);
        return true;
    default:
        return QWidget::eventFilter(watched, e);
    }
}

LRESULT SearchHeaderCtrl::Notify(UINT msg, WPARAM wParam)
{
    return SendMessage(parentWidget(), msg, wParam, 0);
}
