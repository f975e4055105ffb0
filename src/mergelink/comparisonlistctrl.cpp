#include "mergelink/comparisonlistctrl.h"

#include "colorschema.h"
#include "qtconvert.h"

#include <QPainter>

ComparisonListCtrl::ComparisonListCtrl(QWidget* parent)
    : ListCtrlEx(parent),
      m_first(ColorSchema::Instance().GetListCtrlBkColor()),
      m_second(ColorSchema::Instance().GetListCtrlBkColor())
{
}

void ComparisonListCtrl::SetRowColors(COLORREF first, COLORREF second)
{
    m_first = first;
    m_second = second;
    // The area right of the last column continues the list's first band.
    SetBkColor(first == second ? first : ColorSchema::Instance().GetListCtrlBkColor());
    SetTextBkColor(first, false);
    viewport()->update();
}

void ComparisonListCtrl::SetItemTextAndBkgndColor(QPainter& dc, const CRect& rect, DWORD, UINT row)
{
    // Nothing is selected in a comparison: the row colour always shows.
    const COLORREF back = row % 2 == 0 ? m_first : m_second;
    dc.setPen(toQColor(GetTextColor()));
    dc.setBackground(toQColor(back));
    dc.fillRect(rect.toQRect(), toQColor(back));
}
