#include "screen.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

TEST(ScreenDensity, ComesFromThePrimaryScreen)
{
    ClearScreenDpiOverride();
    ASSERT_NE(nullptr, QGuiApplication::primaryScreen());
    EXPECT_EQ(static_cast<int>(std::lround(QGuiApplication::primaryScreen()->logicalDotsPerInchX())),
              GetScreenLogicalDpiX());
}

TEST(ScreenDensity, OverrideAndClear)
{
    const int real = GetScreenLogicalDpiX();
    SetScreenDpiOverride(144);
    EXPECT_EQ(144, GetScreenLogicalDpiX());
    SetScreenDpiOverride(-1); // "no screen" can be simulated as well
    EXPECT_EQ(-1, GetScreenLogicalDpiX());
    ClearScreenDpiOverride();
    EXPECT_EQ(real, GetScreenLogicalDpiX());
}
