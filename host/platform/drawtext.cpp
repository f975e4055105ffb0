#include "drawtext.h"

#include "qtconvert.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

int qtFlags(UINT format)
{
    int f = 0;
    f |= (format & DT_CENTER) ? Qt::AlignHCenter : (format & DT_RIGHT) ? Qt::AlignRight : Qt::AlignLeft;
    if (format & DT_SINGLELINE)
        f |= (format & DT_VCENTER) ? Qt::AlignVCenter : (format & DT_BOTTOM) ? Qt::AlignBottom : Qt::AlignTop;
    else
        f |= Qt::AlignTop;
    if ((format & DT_WORDBREAK) && !(format & DT_SINGLELINE))
        f |= Qt::TextWordWrap;
    if (format & DT_SINGLELINE)
        f |= Qt::TextSingleLine;
    if (format & DT_EXPANDTABS)
        f |= Qt::TextExpandTabs;
    if (!(format & DT_NOPREFIX))
        f |= Qt::TextShowMnemonic;
    if (format & DT_NOCLIP)
        f |= Qt::TextDontClip;
    return f;
}

int calc(const QFontMetrics& fm, const QString& text, CRect& rect, UINT format)
{
    const int width = (format & DT_WORDBREAK) ? std::max(rect.Width(), 1) : 1 << 20;
    const QRect br = fm.boundingRect(QRect(rect.left, rect.top, width, 1 << 20), qtFlags(format) & ~(Qt::AlignHCenter | Qt::AlignRight), text);
    rect.right = rect.left + br.width();
    rect.bottom = rect.top + br.height();
    return br.height();
}

} // namespace

int CalcTextRect(const QFont& font, const CString& text, CRect& rect, UINT format)
{
    return calc(QFontMetrics(font), toQString(text), rect, format);
}

int DrawText(QPainter& painter, const CString& text, CRect& rect, UINT format)
{
    const QString q = toQString(text);
    if (format & DT_CALCRECT)
        return calc(painter.fontMetrics(), q, rect, format);
    QString shown = q;
    if ((format & DT_END_ELLIPSIS) && (format & DT_SINGLELINE))
        shown = painter.fontMetrics().elidedText(q, Qt::ElideRight, rect.Width());
    QRect bounding;
    painter.drawText(rect.toQRect(), qtFlags(format), shown, &bounding);
    return bounding.height();
}

CRect DrawTextWrapped(QPainter& painter, const CString& text, const CRect& area, UINT format)
{
    CRect r = area;
    DrawText(painter, text, r, format | DT_WORDBREAK | DT_CALCRECT);
    DrawText(painter, text, r, (format | DT_WORDBREAK) & ~DT_CALCRECT);
    return r;
}
