#include "workstationoptions.h"

#include <QDir>
#include <QStandardPaths>

namespace {

constexpr int kMaxDemoPatients = 1000000;

bool TakeValue(const QStringList& args, int& i, const QString& option, QString& value, QString& error)
{
    const QString& arg = args[i];
    const QString prefix = option + QLatin1Char('=');
    if (arg.startsWith(prefix)) {
        value = arg.mid(prefix.size());
    } else if (i + 1 < args.size()) {
        value = args[++i];
    } else {
        error = QStringLiteral("%1 needs a value").arg(option);
        return false;
    }
    if (value.isEmpty()) {
        error = QStringLiteral("%1 needs a non-empty value").arg(option);
        return false;
    }
    return true;
}

bool Is(const QString& arg, const char* option)
{
    const QString o = QLatin1String(option);
    return arg == o || arg.startsWith(o + QLatin1Char('='));
}

} // namespace

QString WorkstationUsage()
{
    return QStringLiteral(
        "Usage: bravik-workstation [OPTIONS]\n"
        "\n"
        "The Bravik workstation: patients, exams and the duplicate patient worklist\n"
        "of one site archive.\n"
        "\n"
        "Options:\n"
        "  --archive FILE         the site archive to open; created and filled with\n"
        "                         demo data when it does not exist\n"
        "                         (default: %1)\n"
        "  --user NAME            log in as NAME (default: the archive's default user,\n"
        "                         who holds every right)\n"
        "  --demo-patients N      patients a new archive is filled with (default 1000)\n"
        "  --screenshot FILE      render the main window to FILE (PNG) and exit\n"
        "  --help                 this text\n"
        "\n"
        "Exit status: 0 done, 1 the archive or user could not be used, 2 bad usage.\n")
        .arg(DefaultArchivePath());
}

QString DefaultArchivePath()
{
    QString dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (dir.isEmpty())
        dir = QDir::homePath() + QStringLiteral("/.bravik");
    return QDir(dir).filePath(QStringLiteral("archive.sqlite"));
}

ParseResult ParseWorkstationArgs(const QStringList& args, WorkstationOptions& options, QString& error)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        QString value;
        if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            options.help = true;
            return ParseResult::Help;
        } else if (Is(arg, "--archive")) {
            if (!TakeValue(args, i, QStringLiteral("--archive"), value, error))
                return ParseResult::Error;
            options.archivePath = value;
        } else if (Is(arg, "--user")) {
            if (!TakeValue(args, i, QStringLiteral("--user"), value, error))
                return ParseResult::Error;
            options.userName = value;
        } else if (Is(arg, "--screenshot")) {
            if (!TakeValue(args, i, QStringLiteral("--screenshot"), value, error))
                return ParseResult::Error;
            options.screenshotPath = value;
        } else if (Is(arg, "--demo-patients")) {
            if (!TakeValue(args, i, QStringLiteral("--demo-patients"), value, error))
                return ParseResult::Error;
            bool ok = false;
            const int n = value.toInt(&ok);
            if (!ok || n < 0 || n > kMaxDemoPatients) {
                error = QStringLiteral("--demo-patients wants a whole number from 0 to %1, not '%2'")
                            .arg(kMaxDemoPatients)
                            .arg(value);
                return ParseResult::Error;
            }
            options.demoPatients = n;
        } else if (arg == QLatin1String("-platform") || arg == QLatin1String("-style") ||
                   arg == QLatin1String("-display")) {
            // Qt's own options, read by QApplication.
            ++i;
        } else if (arg.startsWith(QLatin1Char('-'))) {
            error = QStringLiteral("unknown option '%1'").arg(arg);
            return ParseResult::Error;
        } else {
            error = QStringLiteral("unexpected argument '%1'").arg(arg);
            return ParseResult::Error;
        }
    }
    return ParseResult::Run;
}
