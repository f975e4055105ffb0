#include "workstationapp.h"

#include "archivesetup.h"
#include "mainwindow.h"
#include "patientbrowser.h"
#include "workstationoptions.h"

#include "boundary/bravikapp.h"
#include "boundary/registercontrols.h"

#include "cwinapp.h"
#include "session.h"

#include <archive.h>

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QMessageBox>
#include <QPixmap>
#include <QProgressDialog>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

void PrintError(const QString& text)
{
    std::fprintf(stderr, "bravik-workstation: %s\n", text.toLocal8Bit().constData());
}

// A box as well, when someone is looking at a real screen.
void ReportFatal(const QString& text, bool interactive)
{
    PrintError(text);
    if (interactive)
        QMessageBox::critical(nullptr, QStringLiteral("Bravik Workstation"), text);
}

bool Interactive(const WorkstationOptions& options)
{
    const QString platform = QGuiApplication::platformName();
    return options.screenshotPath.isEmpty() && platform != QLatin1String("offscreen") &&
           platform != QLatin1String("minimal");
}

std::unique_ptr<Archive> OpenArchive(const WorkstationOptions& options, const QString& path, bool interactive)
{
    ArchiveSetup setup(path, options.demoPatients, options.archivePath.isEmpty());
    std::unique_ptr<QProgressDialog> progress;
    int lastPercent = -1;
    auto report = [&](int done, int total) {
        if (!progress) {
            progress = std::make_unique<QProgressDialog>(
                QStringLiteral("Creating the site archive and its demo patients..."), QString(), 0, 100);
            progress->setWindowTitle(QStringLiteral("Bravik Workstation"));
            progress->setObjectName(QStringLiteral("seedProgress"));
            progress->setMinimumDuration(0);
            progress->setAutoClose(false);
            progress->setWindowModality(Qt::ApplicationModal);
        }
        const int percent = total > 0 ? static_cast<int>(100LL * done / total) : 100;
        if (percent != lastPercent) {
            lastPercent = percent;
            progress->setLabelText(
                QStringLiteral("Creating the site archive: %1 of %2 demo patients...").arg(done).arg(total));
            progress->setValue(percent);
            std::fprintf(stderr, "\rbravik-workstation: creating archive, %d / %d patients (%d%%)", done, total,
                         percent);
            QApplication::processEvents();
        }
    };
    std::unique_ptr<Archive> archive = setup.Open(report);
    if (lastPercent >= 0)
        std::fprintf(stderr, "\n");
    progress.reset();
    if (!archive) {
        ReportFatal(setup.ErrorText(), interactive);
        return nullptr;
    }
    if (setup.Created())
        std::fprintf(stderr, "bravik-workstation: created %s with %d demo patients\n",
                     QFileInfo(path).absoluteFilePath().toLocal8Bit().constData(), options.demoPatients);
    return archive;
}

int SaveScreenshot(MainWindow& window, const QString& path)
{
    window.show();
    // Let layouts, the first search and the page's first paint settle.
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    const QPixmap shot = window.grab();
    if (shot.isNull() || !shot.save(path, "PNG")) {
        PrintError(QStringLiteral("cannot write the screenshot '%1'").arg(path));
        return 1;
    }
    // The window's own size: a test compares it with the picture's.
    std::fprintf(stdout, "%s %dx%d\n", path.toLocal8Bit().constData(), window.width(), window.height());
    return 0;
}

} // namespace

int RunWorkstation(int argc, char** argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);

    WorkstationOptions options;
    QString error;
    // The data folder's name comes from these; set before anything asks for it.
    QCoreApplication::setOrganizationName(QStringLiteral("Bravik"));
    QCoreApplication::setApplicationName(QStringLiteral("bravik-workstation"));
    switch (ParseWorkstationArgs(args, options, error)) {
    case ParseResult::Help:
        std::fputs(WorkstationUsage().toLocal8Bit().constData(), stdout);
        return 0;
    case ParseResult::Error:
        PrintError(error);
        std::fputs("Try 'bravik-workstation --help'.\n", stderr);
        return 2;
    case ParseResult::Run:
        break;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Bravik Workstation"));
    const bool interactive = Interactive(options);

    // The module was loaded with the program; start it now that it can draw.
    AfxStartModules();
    TavCreator::RegisterControls::RegisterPicker();

    const QString path = options.archivePath.isEmpty() ? DefaultArchivePath() : options.archivePath;
    int status = 0;
    {
        std::unique_ptr<Archive> archive = OpenArchive(options, path, interactive);
        if (!archive) {
            status = 1;
        } else {
            const std::string user =
                options.userName.isEmpty() ? archive->DefaultUser() : options.userName.toStdString();
            if (user.empty() || !archive->InstallIntoSession(user)) {
                ReportFatal(user.empty() ? QStringLiteral("the archive '%1' has no default user; choose one with --user")
                                               .arg(path)
                                         : QStringLiteral("the archive '%1' has no user '%2'")
                                               .arg(path, QString::fromStdString(user)),
                            interactive);
                status = 1;
            } else {
                {
                    MainWindow window(path, QString::fromStdString(user));
                    window.Browser()->Search();
                    if (!options.screenshotPath.isEmpty()) {
                        status = SaveScreenshot(window, options.screenshotPath);
                    } else {
                        window.show();
                        window.Browser()->FocusSearch();
                        status = QApplication::exec();
                    }
                }
                archive->Uninstall();
            }
        }
    }

    TavCreator::RegisterControls::UnRegisterPicker();
    AfxStopModules();
    return status;
}
