#pragma once

#include <QString>
#include <QStringList>

// What the command line asked for.
struct WorkstationOptions
{
    QString archivePath;      // empty: the default archive in the user's data folder
    QString userName;         // empty: the archive's default user
    QString screenshotPath;   // non-empty: render the main window to this PNG and exit
    int demoPatients = 1000;  // patients a new archive is filled with
    bool help = false;
};

enum class ParseResult { Run, Help, Error };

// Parses arguments (without the program name). On Error, error holds a
// one-line message for the user.
ParseResult ParseWorkstationArgs(const QStringList& args, WorkstationOptions& options, QString& error);

// The --help text.
QString WorkstationUsage();

// Where the archive lives when --archive is not given.
QString DefaultArchivePath();
