#include "drawtext.h"

#include <gtest/gtest.h>

#include <QFontMetrics>
#include <QImage>
#include <QPainter>

TEST(DrawText, CalcRectWrapsWordsWithinTheWidth)
{
    const QFont font("Arial", 10);
    const QFontMetrics fm(font);
    CRect one(5, 5, 1000, 5);
    const int h1 = CalcTextRect(font, "Selected Patient Information", one, DT_CALCRECT | DT_WORDBREAK);
    EXPECT_EQ(fm.height(), h1);
    EXPECT_EQ(5, one.left);
    EXPECT_EQ(5, one.top);
    EXPECT_EQ(5 + fm.height(), one.bottom);
    EXPECT_NEAR(fm.horizontalAdvance("Selected Patient Information"), one.Width(), 1);

    CRect narrow(0, 0, fm.horizontalAdvance("Selected Patient"), 0);
    const int h3 = CalcTextRect(font, "Selected Patient Information", narrow, DT_CALCRECT | DT_WORDBREAK);
    EXPECT_EQ(2 * fm.height(), h3);
    EXPECT_LE(narrow.Width(), fm.horizontalAdvance("Selected Patient"));
}

TEST(DrawText, WrappedTextIsDrawnInsideTheMeasuredRectangle)
{
    QImage image(200, 100, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setFont(QFont("Arial", 10));
    p.setPen(Qt::black);
    const CRect drawn = DrawTextWrapped(p, "Patient Name Is Long Enough To Wrap", CRect(10, 10, 110, 90));
    p.end();
    EXPECT_EQ(10, drawn.left);
    EXPECT_EQ(10, drawn.top);
    EXPECT_LE(drawn.right, 110);
    EXPECT_GT(drawn.Height(), QFontMetrics(QFont("Arial", 10)).height()); // more than one line
    int inside = 0;
    int outside = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 128)
                (drawn.toQRect().contains(x, y) ? inside : outside)++;
    EXPECT_GT(inside, 0);
    EXPECT_EQ(0, outside);
}
