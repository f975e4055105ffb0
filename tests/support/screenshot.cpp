#include "screenshot.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QWidget>

#include <cstdlib>

bool SaveScreenshot(QWidget* widget, const char* name)
{
    const char* dir = std::getenv("BRAVIK_SCREENSHOTS");
    if (!dir || !*dir || !widget || !name || !*name)
        return false;
    if (!QDir().mkpath(QString::fromLocal8Bit(dir)))
        return false;
    widget->ensurePolished();
    QApplication::processEvents();
    const QPixmap shot = widget->grab();
    return shot.save(QDir(QString::fromLocal8Bit(dir)).filePath(QString::fromUtf8(name) + QStringLiteral(".png")),
                     "PNG");
}
