#pragma once

#include <QString>

#include <functional>
#include <memory>

class Archive;

// Opens the workstation's archive; a file that does not exist yet (or is
// empty) is created and filled with demo data first, reporting progress as
// (patients written, patients asked for).
class ArchiveSetup
{
public:
    using Progress = std::function<void(int, int)>;

    // createFolder: make missing folders on the way (the default location);
    // an explicit --archive path must be in an existing folder.
    ArchiveSetup(QString path, int demoPatients, bool createFolder);

    // Null on failure, with ErrorText() saying why in one line.
    std::unique_ptr<Archive> Open(const Progress& progress = Progress());

    bool Created() const { return m_created; }
    const QString& ErrorText() const { return m_error; }

private:
    QString m_path;
    int m_demoPatients;
    bool m_createFolder;
    bool m_created = false;
    QString m_error;
};
