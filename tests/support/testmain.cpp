// The shared main of every test binary: an offscreen QApplication (unless a
// platform was chosen), a pinned application font and no density overrides,
// so that layouts measured in tests are the same on every machine. A scripted
// user with no script is installed underneath every test, so a message box,
// dialog or menu a test did not expect fails that test instead of waiting for
// a real user.
#include "scripteduser.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

#include <cstdlib>

namespace {

QtMessageHandler g_defaultHandler = nullptr;

// The offscreen platform warns about window hints it cannot honour; that is
// noise in every test's output, not a finding.
void filterQtMessages(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message.contains(QLatin1String("does not support propagateSizeHints")))
        return;
    if (g_defaultHandler)
        g_defaultHandler(type, context, message);
}

} // namespace

int main(int argc, char** argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    unsetenv("QT_FONT_DPI");
    unsetenv("QT_SCALE_FACTOR");
    unsetenv("QT_SCREEN_SCALE_FACTORS");
    unsetenv("QT_AUTO_SCREEN_SCALE_FACTOR");
    unsetenv("QT_ENABLE_HIGHDPI_SCALING");

    g_defaultHandler = qInstallMessageHandler(filterQtMessages);
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial"), 9));
    int result = 0;
    {
        ScriptedUser nobody;
        result = RUN_ALL_TESTS();
    }
    return result;
}
