#include "listimagesubitem.h"

#include "drawtext.h"

#include <QPainter>

ListImageSubItem::ListImageSubItem(int column, const QPixmap& image, const CString& text)
    : ListSubItem(column), m_image(image), m_text(text)
{
    SetDrawFormat(DT_CENTER | DT_VCENTER);
}

void ListImageSubItem::DrawContent(QPainter& painter, const CRect& rect) const
{
    if (m_image.isNull())
        return;
    const QSize size = m_image.deviceIndependentSize().toSize();
    int x = rect.left + 2;
    if (GetDrawFormat() & DT_CENTER)
        x = rect.left + (rect.Width() - size.width()) / 2;
    else if (GetDrawFormat() & DT_RIGHT)
        x = rect.right - size.width() - 2;
    const int y = rect.top + (rect.Height() - size.height()) / 2;
    painter.drawPixmap(QPoint(x, y), m_image);
}
