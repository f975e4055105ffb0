#pragma once

// Windows rectangles, points and sizes. A CRect's right and bottom edges are
// exclusive (Width() == right - left), unlike QRect's inclusive right(), so
// conversion is always explicit.

#include <QPoint>
#include <QRect>
#include <QSize>

struct CPoint
{
    int x = 0;
    int y = 0;
    constexpr CPoint() = default;
    constexpr CPoint(int px, int py) : x(px), y(py) {}
    QPoint toQPoint() const { return QPoint(x, y); }
    static CPoint fromQPoint(const QPoint& p) { return CPoint(p.x(), p.y()); }
    friend constexpr bool operator==(const CPoint&, const CPoint&) = default;
};

struct CSize
{
    int cx = 0;
    int cy = 0;
    constexpr CSize() = default;
    constexpr CSize(int w, int h) : cx(w), cy(h) {}
    QSize toQSize() const { return QSize(cx, cy); }
    static CSize fromQSize(const QSize& s) { return CSize(s.width(), s.height()); }
    friend constexpr bool operator==(const CSize&, const CSize&) = default;
};

class CRect
{
public:
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr CRect() = default;
    constexpr CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    constexpr CRect(const CPoint& topLeft, const CSize& size)
        : left(topLeft.x), top(topLeft.y), right(topLeft.x + size.cx), bottom(topLeft.y + size.cy) {}

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr CSize Size() const { return CSize(Width(), Height()); }
    constexpr CPoint TopLeft() const { return CPoint(left, top); }
    constexpr CPoint BottomRight() const { return CPoint(right, bottom); }
    constexpr CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }

    // Empty when it has no area (width or height zero or negative).
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr bool IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    constexpr bool PtInRect(const CPoint& p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }

    constexpr void SetRect(int l, int t, int r, int b) { left = l; top = t; right = r; bottom = b; }
    constexpr void SetRectEmpty() { SetRect(0, 0, 0, 0); }
    constexpr void DeflateRect(int x, int y) { left += x; top += y; right -= x; bottom -= y; }
    constexpr void DeflateRect(int l, int t, int r, int b) { left += l; top += t; right -= r; bottom -= b; }
    constexpr void InflateRect(int x, int y) { DeflateRect(-x, -y); }
    constexpr void InflateRect(int l, int t, int r, int b) { DeflateRect(-l, -t, -r, -b); }
    constexpr void OffsetRect(int dx, int dy) { left += dx; right += dx; top += dy; bottom += dy; }
    constexpr void OffsetRect(const CPoint& d) { OffsetRect(d.x, d.y); }
    constexpr void MoveToXY(int x, int y) { OffsetRect(x - left, y - top); }
    constexpr void NormalizeRect()
    {
        if (left > right) { const int t = left; left = right; right = t; }
        if (top > bottom) { const int t = top; top = bottom; bottom = t; }
    }

    QRect toQRect() const { return QRect(left, top, Width(), Height()); }
    static CRect fromQRect(const QRect& r) { return CRect(r.x(), r.y(), r.x() + r.width(), r.y() + r.height()); }

    friend constexpr bool operator==(const CRect&, const CRect&) = default;
};
