#include "listctrldelegate.h"

#include "listctrlex.h"
#include "toolkitnotify.h"

#include <QPainter>

ListCtrlDelegate::ListCtrlDelegate(ListCtrlEx* list) : QStyledItemDelegate(list), m_list(list) {}

void ListCtrlDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int row = index.row();
    const CRect rect = CRect::fromQRect(option.rect);
    painter->save();
    painter->setFont(m_list->font());
    m_list->SetItemTextAndBkgndColor(*painter, rect, m_list->GetItemState(row), static_cast<UINT>(row));
    if (const ListSubItem* cell = m_list->GetSubItemAt(row, index.column()))
        cell->Draw(*painter, rect);
    painter->restore();
}

QSize ListCtrlDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int height = m_list->GetItemHeight();
    return QSize(m_list->GetColumnWidth(index.column()),
                 height > 0 ? height : QStyledItemDelegate::sizeHint(option, index).height());
}
