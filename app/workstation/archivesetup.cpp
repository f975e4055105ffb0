#include "archivesetup.h"

#include <archive.h>
#include <archivedb.h>
#include <demoseeder.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <exception>

ArchiveSetup::ArchiveSetup(QString path, int demoPatients, bool createFolder)
    : m_path(std::move(path)), m_demoPatients(demoPatients), m_createFolder(createFolder)
{
}

std::unique_ptr<Archive> ArchiveSetup::Open(const Progress& progress)
{
    m_created = false;
    m_error.clear();
    const QFileInfo info(m_path);
    const QString shown = QDir::toNativeSeparators(m_path);

    if (info.isDir()) {
        m_error = QStringLiteral("cannot open archive '%1': it is a folder, not a file").arg(shown);
        return nullptr;
    }
    const QDir folder = info.absoluteDir();
    if (!folder.exists()) {
        if (!m_createFolder || !QDir().mkpath(folder.absolutePath())) {
            m_error = QStringLiteral("cannot open archive '%1': the folder '%2' does not exist")
                          .arg(shown, QDir::toNativeSeparators(folder.absolutePath()));
            return nullptr;
        }
    }
    const bool fresh = !info.exists() || info.size() == 0;
    if (fresh && !QFileInfo(folder.absolutePath()).isWritable()) {
        m_error = QStringLiteral("cannot create archive '%1': the folder '%2' is not writable")
                      .arg(shown, QDir::toNativeSeparators(folder.absolutePath()));
        return nullptr;
    }
    if (!fresh && !info.isReadable()) {
        m_error = QStringLiteral("cannot open archive '%1': permission denied").arg(shown);
        return nullptr;
    }

    std::unique_ptr<Archive> archive;
    try {
        archive = Archive::Open(m_path.toStdString());
        DemoSeeder seeder(archive->Db());
        if (fresh) {
            SeedOptions options;
            options.patients = m_demoPatients;
            seeder.Seed(options, progress);
            m_created = true;
        } else {
            // An archive whose first start was cut short still gets its site.
            seeder.SeedSite();
        }
    } catch (const std::exception& e) {
        archive.reset();
        // The archive's own description may already name the file.
        QString reason = QString::fromUtf8(e.what());
        const QString named = QStringLiteral("cannot open archive '%1': ").arg(m_path);
        if (reason.startsWith(named))
            reason = reason.mid(named.size());
        m_error = QStringLiteral("cannot %1 archive '%2': %3")
                      .arg(fresh ? QStringLiteral("create") : QStringLiteral("open"), shown, reason);
        // Leave no half-made archive behind to be taken for a good one.
        if (fresh) {
            QFile::remove(m_path);
            QFile::remove(m_path + QStringLiteral("-wal"));
            QFile::remove(m_path + QStringLiteral("-shm"));
        }
        return nullptr;
    }
    return archive;
}
