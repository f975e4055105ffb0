#include "crect.h"
#include "windefs.h"

#include <gtest/gtest.h>

TEST(Colorref, RedIsTheLowByte)
{
    EXPECT_EQ(0x402715u, RGB(0x15, 0x27, 0x40));
    const QColor c = toQColor(0x402715);
    EXPECT_EQ(0x15, c.red());
    EXPECT_EQ(0x27, c.green());
    EXPECT_EQ(0x40, c.blue());
    EXPECT_EQ(0x15, GetRValue(0x402715));
    EXPECT_EQ(0x27, GetGValue(0x402715));
    EXPECT_EQ(0x40, GetBValue(0x402715));
    EXPECT_EQ(0x402715u, fromQColor(QColor(0x15, 0x27, 0x40)));
    EXPECT_EQ(RGB(255, 0, 0), fromQColor(QColor(Qt::red)));
}

TEST(Windefs, ResultCodesKeepTheirValues)
{
    EXPECT_EQ(1, IDOK);
    EXPECT_EQ(2, IDCANCEL);
    EXPECT_EQ(6, IDYES);
    EXPECT_EQ(7, IDNO);
    EXPECT_EQ(0x04u, MB_YESNO);
    EXPECT_EQ(0x01u, MB_OKCANCEL);
    EXPECT_EQ(0x10u, MB_ICONSTOP);
    EXPECT_EQ(MB_ICONSTOP, MB_ICONERROR);
    EXPECT_EQ(0x40u, MB_ICONINFORMATION);
    EXPECT_EQ(0x20u, MB_ICONQUESTION);
    EXPECT_EQ(0x30u, MB_ICONWARNING);
}

TEST(Windefs, MulDivRoundsToNearest)
{
    EXPECT_EQ(26, MulDiv(14, 15, 8));  // 26.25
    EXPECT_EQ(12, MulDiv(7, 7, 4));    // 12.25
    EXPECT_EQ(-12, MulDiv(-7, 7, 4));
    EXPECT_EQ(13, MulDiv(10, 5, 4));   // 12.5
    EXPECT_EQ(4, MulDiv(7, 2, 4));     // 3.5 rounds away from zero
    EXPECT_EQ(-1, MulDiv(1, 1, 0));
}

TEST(CRect, EdgesAreExclusive)
{
    CRect r(10, 20, 110, 70);
    EXPECT_EQ(100, r.Width());
    EXPECT_EQ(50, r.Height());
    EXPECT_FALSE(r.IsRectEmpty());
    EXPECT_TRUE(r.PtInRect(CPoint(10, 20)));
    EXPECT_FALSE(r.PtInRect(CPoint(110, 20)));
    EXPECT_TRUE(CRect(5, 5, 5, 10).IsRectEmpty());
    EXPECT_TRUE(CRect(5, 5, 4, 10).IsRectEmpty());
}

TEST(CRect, DeflateAndOffset)
{
    CRect r(0, 0, 100, 50);
    r.DeflateRect(7, 5);
    EXPECT_EQ(CRect(7, 5, 93, 45), r);
    r.OffsetRect(10, -5);
    EXPECT_EQ(CRect(17, 0, 103, 40), r);
    r.DeflateRect(1, 2, 3, 4);
    EXPECT_EQ(CRect(18, 2, 100, 36), r);
    EXPECT_NE(CRect(18, 2, 100, 37), r);
}

TEST(CRect, QRectConversionKeepsWidthAndHeight)
{
    const CRect r(10, 20, 110, 70);
    const QRect q = r.toQRect();
    EXPECT_EQ(QRect(10, 20, 100, 50), q);
    EXPECT_EQ(109, q.right()); // QRect's right edge is inclusive
    EXPECT_EQ(r, CRect::fromQRect(q));
    EXPECT_EQ(CRect(0, 0, 1, 1), CRect::fromQRect(QRect(0, 0, 1, 1)));
}
