#pragma once

#include "bravik_archive_export.h"

#include <memory>
#include <string>

class ArchiveContext;
class ArchiveDb;
class ServiceRegistry;
class SqliteDictionaryService;
class SqliteExamService;
class SqliteOrgCollection;
class SqlitePatientService;
class SqliteProviderService;
class WalCheckpointer;

// One open site archive: the connection and the concrete services on it.
// The host opens it, installs it into the session for the logged-in user,
// and uninstalls it before closing.
class BRAVIK_ARCHIVE_EXPORT Archive
{
public:
    // Opens (creating and migrating as needed) the archive file. Throws
    // Framework::Server when the file cannot be used.
    static std::unique_ptr<Archive> Open(const std::string& path);

    ~Archive();
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    // The default user of the site (e.g. "admin"); empty when none is marked.
    std::string DefaultUser();

    // Makes `userName` the session user: puts the services into the session's
    // registry and sets user rights, preferences, options, site policy and the
    // priority ranking from the archive. Returns false (and changes nothing)
    // for a user the archive does not know.
    bool InstallIntoSession(const std::string& userName);
    // Takes the services out of the registry (restoring what was there) and
    // resets the user's rights provider.
    void Uninstall();
    bool Installed() const { return m_installed; }

    // Sets the user the services act for without touching the session.
    void SetUser(const std::string& userName);
    const std::string& User() const;

    ArchiveDb& Db() { return *m_db; }
    ArchiveContext& Context() { return *m_context; }
    SqlitePatientService& Patients() { return *m_patients; }
    SqliteExamService& Exams() { return *m_exams; }
    SqliteDictionaryService& Dictionaries() { return *m_dictionaries; }
    SqliteProviderService& Providers() { return *m_providers; }
    SqliteOrgCollection& Organizations() { return *m_organizations; }
    WalCheckpointer& Checkpointer() { return *m_checkpointer; }

private:
    explicit Archive(std::unique_ptr<ArchiveDb> db);

    std::unique_ptr<ArchiveDb> m_db;
    // Declared after the connection it watches, so it goes first.
    std::unique_ptr<WalCheckpointer> m_checkpointer;
    std::unique_ptr<ArchiveContext> m_context;
    std::unique_ptr<SqlitePatientService> m_patients;
    std::unique_ptr<SqliteExamService> m_exams;
    std::unique_ptr<SqliteDictionaryService> m_dictionaries;
    std::unique_ptr<SqliteProviderService> m_providers;
    std::unique_ptr<SqliteOrgCollection> m_organizations;

    bool m_installed = false;
    struct Previous;
    std::unique_ptr<Previous> m_previous;
};
