#include "drawmaster.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>

#include <memory>

namespace {

struct Fonts
{
    QFont normal;
    QFont bold;
    QFont header;
    QFont small;
};

std::unique_ptr<Fonts>& fontStore()
{
    static std::unique_ptr<Fonts> fonts;
    return fonts;
}

const Fonts& fonts()
{
    auto& store = fontStore();
    if (!store) {
        store = std::make_unique<Fonts>();
        store->normal = QApplication::font();
        store->bold = store->normal;
        store->bold.setBold(true);
        store->header = store->bold;
        const qreal points = store->normal.pointSizeF();
        if (points > 0)
            store->header.setPointSizeF(points + 1);
        store->small = store->normal;
        if (points > 2)
            store->small.setPointSizeF(points - 1);
    }
    return *store;
}

} // namespace

const QFont& DrawMaster::GetNormalFont() { return fonts().normal; }
const QFont& DrawMaster::GetBoldFont() { return fonts().bold; }
const QFont& DrawMaster::GetHeaderFont() { return fonts().header; }
const QFont& DrawMaster::GetSmallFont() { return fonts().small; }

int DrawMaster::GetFontHeight(const QFont& font) { return QFontMetrics(font).height(); }

void DrawMaster::FillSolidRect(QPainter& painter, const CRect& rect, COLORREF color)
{
    if (rect.IsRectEmpty())
        return;
    painter.fillRect(rect.toQRect(), toQColor(color));
}

void DrawMaster::DrawFrameRect(QPainter& painter, const CRect& rect, COLORREF color)
{
    if (rect.IsRectEmpty())
        return;
    const QColor c = toQColor(color);
    const int l = rect.left, t = rect.top, r = rect.right - 1, b = rect.bottom - 1;
    painter.fillRect(QRect(l, t, rect.Width(), 1), c);
    painter.fillRect(QRect(l, b, rect.Width(), 1), c);
    painter.fillRect(QRect(l, t, 1, rect.Height()), c);
    painter.fillRect(QRect(r, t, 1, rect.Height()), c);
}

void DrawMaster::DrawHLine(QPainter& painter, int left, int right, int y, COLORREF color)
{
    if (right <= left)
        return;
    painter.fillRect(QRect(left, y, right - left, 1), toQColor(color));
}

void DrawMaster::ResetFonts() { fontStore().reset(); }
