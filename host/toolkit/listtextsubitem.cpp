#include "listtextsubitem.h"

ListTextSubItem::ListTextSubItem(int column, const CString& text) : ListSubItem(column), m_text(text) {}

std::vector<CString> ListTextSubItem::GetLines() const
{
    std::vector<CString> lines;
    CString all = m_text;
    all.Remove('\r');
    int start = 0;
    for (;;) {
        const int nl = all.Find('\n', start);
        if (nl < 0) {
            lines.push_back(all.Mid(start));
            return lines;
        }
        lines.push_back(all.Mid(start, nl - start));
        start = nl + 1;
    }
}

void ListTextSubItem::DrawContent(QPainter& painter, const CRect& rect) const
{
    DrawLines(painter, m_text, rect);
}
