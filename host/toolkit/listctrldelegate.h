#pragma once

// Draws a ListCtrlEx cell: the list chooses colours and fills the
// background (SetItemTextAndBkgndColor), then the cell's sub-item draws its
// content.

#include "bravik_toolkit_export.h"

#include <QStyledItemDelegate>

class ListCtrlEx;

class BRAVIK_TOOLKIT_EXPORT ListCtrlDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit ListCtrlDelegate(ListCtrlEx* list);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    ListCtrlEx* m_list;
};
