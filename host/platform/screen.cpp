#include "screen.h"

#include <QGuiApplication>
#include <QScreen>

#include <atomic>
#include <cmath>

namespace {
constexpr int kNoOverride = -1000;
std::atomic<int> g_override{kNoOverride};
} // namespace

int GetScreenLogicalDpiX()
{
    const int o = g_override.load();
    if (o != kNoOverride)
        return o;
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return -1;
    const QScreen* s = QGuiApplication::primaryScreen();
    return s ? static_cast<int>(std::lround(s->logicalDotsPerInchX())) : -1;
}

void SetScreenDpiOverride(int dpi) { g_override.store(dpi); }
void ClearScreenDpiOverride() { g_override.store(kNoOverride); }
