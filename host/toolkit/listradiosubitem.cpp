#include "listradiosubitem.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

namespace {
constexpr int kPadding = 3;
int markSize()
{
    return QApplication::style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth);
}
} // namespace

ListRadioSubItem::ListRadioSubItem(int column, bool checked, const CString& text, int group)
    : ListSubItem(column), m_checked(checked), m_text(text), m_group(group)
{
}

CRect ListRadioSubItem::GetMarkRect(const CRect& content) const
{
    const int size = markSize();
    const int top = content.top + (content.Height() - size) / 2;
    return CRect(content.left + kPadding, top, content.left + kPadding + size, top + size);
}

void ListRadioSubItem::DrawContent(QPainter& painter, const CRect& rect) const
{
    const CRect mark = GetMarkRect(rect);
    QStyleOptionButton opt;
    opt.rect = mark.toQRect();
    opt.state = (m_checked ? QStyle::State_On : QStyle::State_Off);
    if (m_enabled)
        opt.state |= QStyle::State_Enabled;
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorRadioButton, &opt, &painter);
    if (!m_text.IsEmpty()) {
        CRect text = rect;
        text.left = mark.right + kPadding;
        DrawLines(painter, m_text, text);
    }
}
