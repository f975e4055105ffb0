#pragma once

#include "archivedb.h"
#include "bravik_archive_export.h"
#include "journal.h"

#include <optional>
#include <string>

// What every service of one open archive shares: the connection, the journal
// and the session user whose rights the services check again.
class BRAVIK_ARCHIVE_EXPORT ArchiveContext
{
public:
    // Patient rights (create and edit, link, merge) and exam rights (create
    // and edit exams, delete or cancel exams, detach studies), per organization.
    enum class Right { Create, Link, Merge, EditExams, DeleteExams, DetachStudies };

    struct Organization
    {
        std::string key, id, name;
        bool enterprise = false, federated = false, acceptsDemographicsUpdate = true;
        bool generatesMrn = false, generatesAcc = false;
        std::string defaultCountry, defaultState, newExamStatus, mrnPrefix, accPrefix;
    };

    // The site's policy as the archive keeps it: enforced on every connection,
    // whatever the host installed in its own process.
    struct Policy
    {
        bool numericMRN = false, emptyFirstNameAllowed = false;
        // A BSN may be entered or changed unless the site's settings say it may not.
        bool bsnEditable = true;
    };

    explicit ArchiveContext(ArchiveDb& db);

    ArchiveDb& Db() { return m_db; }
    Journal& Log() { return m_journal; }

    const std::string& User() const { return m_user; }
    void SetUser(const std::string& user) { m_user = user; }
    // Whether the user exists in the archive.
    bool UserKnown(const std::string& user);

    // By key, or (for the operations that accept either) by ID, ignoring case.
    std::optional<Organization> OrgByKey(const std::string& key);
    std::optional<Organization> OrgByKeyOrId(const std::string& keyOrId);

    Policy SitePolicy();
    // Whether a patient's first name passes the site's policy: not blank, or
    // blank where the site allows it.
    bool FirstNameValid(const std::string& firstName);

    bool HasRight(Right right, const std::string& orgKey);
    // The readable refusal for a missing right, naming the organization.
    std::string RefusalText(Right right, const std::string& orgKey);
    // Throws the framework's server exception with RefusalText unless granted.
    void RequireRight(Right right, const std::string& orgKey);
    bool HasRightById(Right right, const std::string& orgId);

private:
    ArchiveDb& m_db;
    Journal m_journal;
    std::string m_user;
};

// Input checks shared by the services: a refused text changes nothing.
namespace FieldCheck {
bool IsUtf8(const std::string& text);
// Valid UTF-8 of at most maxBytes bytes, free of control characters other than tab, CR and LF.
bool Text(const std::string& text, size_t maxBytes);
// A non-empty key of sane length.
bool Key(const std::string& key);
// The first character a reader cannot see or would read as something else:
// control characters (C0, DEL, C1), line and paragraph separators and the
// invisible format characters (bidirectional overrides and isolates, zero-width
// marks, soft hyphen, tags). 0 when there is none or the text is not UTF-8.
char32_t FirstInvisible(const std::string& text);
// Throws the framework's server exception, naming `field`, when `text` holds
// such a character: a right-to-left override can make one MRN display as another.
void RefuseInvisible(const std::string& field, const std::string& text);
constexpr size_t kName = 50;
constexpr size_t kMrn = 64;
constexpr size_t kAddress = 199;
constexpr size_t kPhone = 30;
constexpr size_t kCode = 16;
constexpr size_t kIdentifier = 64;
constexpr size_t kReason = 255;
constexpr size_t kAccession = 20;
constexpr size_t kComment = 2048;
}
