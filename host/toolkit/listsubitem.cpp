#include "listsubitem.h"

#include "drawtext.h"

#include <QFontMetrics>
#include <QPainter>

#include <vector>

namespace {
constexpr int kMarkSize = 9;
constexpr int kPadding = 3;
constexpr UINT kHorizontalFlags = DT_CENTER | DT_RIGHT;
} // namespace

ListSubItem::ListSubItem(int column) : m_column(column), m_format(DT_LEFT | DT_VCENTER) {}

ListSubItem::~ListSubItem() = default;

CRect ListSubItem::GetExpandMarkRect(const CRect& cell) const
{
    if (!m_expandable)
        return CRect();
    const int top = cell.top + (cell.Height() - kMarkSize) / 2;
    return CRect(cell.left + kPadding, top, cell.left + kPadding + kMarkSize, top + kMarkSize);
}

void ListSubItem::Draw(QPainter& painter, const CRect& rect) const
{
    painter.save();
    if (m_font)
        painter.setFont(*m_font);
    CRect content = rect;
    if (m_expandable) {
        const CRect mark = GetExpandMarkRect(rect);
        const QColor ink = painter.pen().color();
        painter.setPen(ink);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRect(mark.left, mark.top, mark.Width() - 1, mark.Height() - 1));
        const int cy = mark.top + mark.Height() / 2;
        const int cx = mark.left + mark.Width() / 2;
        painter.drawLine(mark.left + 2, cy, mark.right - 3, cy);
        if (!m_expanded)
            painter.drawLine(cx, mark.top + 2, cx, mark.bottom - 3);
        content.left = mark.right + kPadding;
    }
    DrawContent(painter, content);
    painter.restore();
}

void ListSubItem::DrawLines(QPainter& painter, const CString& text, const CRect& rect) const
{
    CString all = text;
    all.Remove('\r');
    // Split at line feeds; an empty line still takes its place.
    std::vector<CString> lines;
    int start = 0;
    for (;;) {
        const int nl = all.Find('\n', start);
        if (nl < 0) {
            lines.push_back(all.Mid(start));
            break;
        }
        lines.push_back(all.Mid(start, nl - start));
        start = nl + 1;
    }
    const int lineHeight = QFontMetrics(painter.font()).height();
    const int blockHeight = lineHeight * static_cast<int>(lines.size());
    CRect inner = rect;
    inner.DeflateRect(kPadding, 0);
    int top = inner.top;
    if (m_format & DT_BOTTOM)
        top = inner.bottom - blockHeight;
    else if (m_format & DT_VCENTER)
        top = inner.top + (inner.Height() - blockHeight) / 2;
    const UINT flags = (m_format & kHorizontalFlags) | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
    painter.save();
    painter.setClipRect(rect.toQRect(), Qt::IntersectClip);
    for (const CString& line : lines) {
        CRect lr(inner.left, top, inner.right, top + lineHeight);
        if (!line.IsEmpty())
            DrawText(painter, line, lr, flags);
        top += lineHeight;
    }
    painter.restore();
}
