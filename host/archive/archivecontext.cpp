#include "archivecontext.h"

#include "archiveerror.h"

#include <server.h>

#include <SQLiteCpp/Statement.h>

#include <cstdio>

ArchiveContext::ArchiveContext(ArchiveDb& db)
    : m_db(db), m_journal(db)
{
}

bool ArchiveContext::UserKnown(const std::string& user)
{
    auto& q = m_db.Prepare("SELECT 1 FROM users WHERE user_name = ?");
    q.bind(1, user);
    const bool known = q.executeStep();
    q.reset();
    return known;
}

namespace {

const char* const kOrgColumns =
    "SELECT org_key, org_id, name, is_enterprise, is_federated, accepts_demographics_update, generates_mrn, "
    "generates_acc, default_country, default_state, new_exam_status, mrn_prefix, acc_prefix FROM organizations ";

ArchiveContext::Organization ReadOrg(SQLite::Statement& q)
{
    ArchiveContext::Organization o;
    o.key = q.getColumn(0).getString();
    o.id = q.getColumn(1).getString();
    o.name = q.getColumn(2).getString();
    o.enterprise = q.getColumn(3).getInt() != 0;
    o.federated = q.getColumn(4).getInt() != 0;
    o.acceptsDemographicsUpdate = q.getColumn(5).getInt() != 0;
    o.generatesMrn = q.getColumn(6).getInt() != 0;
    o.generatesAcc = q.getColumn(7).getInt() != 0;
    o.defaultCountry = q.getColumn(8).getString();
    o.defaultState = q.getColumn(9).getString();
    o.newExamStatus = q.getColumn(10).getString();
    o.mrnPrefix = q.getColumn(11).getString();
    o.accPrefix = q.getColumn(12).getString();
    return o;
}

} // namespace

std::optional<ArchiveContext::Organization> ArchiveContext::OrgByKey(const std::string& key)
{
    if (key.empty())
        return std::nullopt;
    auto& q = m_db.Prepare(std::string(kOrgColumns) + "WHERE org_key = ?");
    q.bind(1, key);
    std::optional<Organization> org;
    if (q.executeStep())
        org = ReadOrg(q);
    q.reset();
    return org;
}

std::optional<ArchiveContext::Organization> ArchiveContext::OrgByKeyOrId(const std::string& keyOrId)
{
    if (auto org = OrgByKey(keyOrId))
        return org;
    if (keyOrId.empty())
        return std::nullopt;
    auto& q = m_db.Prepare(std::string(kOrgColumns) + "WHERE org_id = ?");
    q.bind(1, keyOrId);
    std::optional<Organization> org;
    if (q.executeStep())
        org = ReadOrg(q);
    q.reset();
    return org;
}

ArchiveContext::Policy ArchiveContext::SitePolicy()
{
    Policy p;
    bool bsnSet = false, bsnEnabled = false, bsnCreateEdit = false;
    auto& q = m_db.Prepare("SELECT name, value FROM site_settings WHERE scope = 'policy'");
    while (q.executeStep()) {
        const std::string name = q.getColumn(0).getString(), value = q.getColumn(1).getString();
        const bool on = value == "1" || value == "true";
        if (name == "NumericMRN")
            p.numericMRN = on;
        else if (name == "EmptyFirstNameAllowed")
            p.emptyFirstNameAllowed = on;
        else if (name == "EnableBsn")
            bsnSet = true, bsnEnabled = on;
        else if (name == "EnableBsnCreateEdit")
            bsnSet = true, bsnCreateEdit = on;
    }
    q.reset();
    p.bsnEditable = !bsnSet || (bsnEnabled && bsnCreateEdit);
    return p;
}

bool ArchiveContext::FirstNameValid(const std::string& firstName)
{
    if (firstName.find_first_not_of(" \t\r\n") != std::string::npos)
        return true;
    return SitePolicy().emptyFirstNameAllowed;
}

namespace {

// Patient rights live in user_rights, exam rights in exam_rights.
bool IsExamRight(ArchiveContext::Right right)
{
    return right == ArchiveContext::Right::EditExams || right == ArchiveContext::Right::DeleteExams ||
           right == ArchiveContext::Right::DetachStudies;
}

const char* RightColumn(ArchiveContext::Right right)
{
    switch (right) {
    case ArchiveContext::Right::Create: return "can_create";
    case ArchiveContext::Right::Link: return "can_link";
    case ArchiveContext::Right::Merge: return "can_merge";
    case ArchiveContext::Right::EditExams: return "can_edit_exams";
    case ArchiveContext::Right::DeleteExams: return "can_delete_exams";
    case ArchiveContext::Right::DetachStudies: return "can_detach_studies";
    }
    return "can_create";
}

const char* RightWords(ArchiveContext::Right right)
{
    switch (right) {
    case ArchiveContext::Right::Create: return "create or edit patients";
    case ArchiveContext::Right::Link: return "link patients";
    case ArchiveContext::Right::Merge: return "merge patients";
    case ArchiveContext::Right::EditExams: return "create or edit exams";
    case ArchiveContext::Right::DeleteExams: return "delete or cancel exams";
    case ArchiveContext::Right::DetachStudies: return "detach studies";
    }
    return "do this";
}

} // namespace

std::string ArchiveContext::RefusalText(Right right, const std::string& orgKey)
{
    if (!UserKnown(m_user))
        return "The archive does not know the user '" + m_user + "'.";
    const auto org = OrgByKey(orgKey);
    return std::string("You do not have the right to ") + RightWords(right) + " in organization " +
           (org ? org->id : orgKey) + ".";
}

void ArchiveContext::RequireRight(Right right, const std::string& orgKey)
{
    if (!HasRight(right, orgKey))
        throw Framework::Server(RefusalText(right, orgKey), ArchiveResult::NotPermitted);
}

bool ArchiveContext::HasRight(Right right, const std::string& orgKey)
{
    const char* column = RightColumn(right);
    auto& q = m_db.Prepare(std::string("SELECT ") + column + (IsExamRight(right) ? " FROM exam_rights" : " FROM user_rights") +
                           " WHERE user_name = ? AND org_key = ?");
    q.bind(1, m_user);
    q.bind(2, orgKey);
    const bool granted = q.executeStep() && q.getColumn(0).getInt() != 0;
    q.reset();
    return granted;
}

bool ArchiveContext::HasRightById(Right right, const std::string& orgId)
{
    auto& q = m_db.Prepare("SELECT org_key FROM organizations WHERE org_id = ?");
    q.bind(1, orgId);
    std::string key;
    if (q.executeStep())
        key = q.getColumn(0).getString();
    q.reset();
    return !key.empty() && HasRight(right, key);
}

namespace FieldCheck {

bool IsUtf8(const std::string& text)
{
    const auto* s = reinterpret_cast<const unsigned char*>(text.data());
    const size_t n = text.size();
    size_t i = 0;
    while (i < n) {
        const unsigned char c = s[i];
        size_t extra = 0;
        unsigned cp = 0;
        if (c < 0x80) {
            ++i;
            continue;
        } else if ((c & 0xE0) == 0xC0) {
            extra = 1;
            cp = c & 0x1F;
        } else if ((c & 0xF0) == 0xE0) {
            extra = 2;
            cp = c & 0x0F;
        } else if ((c & 0xF8) == 0xF0) {
            extra = 3;
            cp = c & 0x07;
        } else {
            return false;
        }
        if (i + extra >= n)
            return false;
        for (size_t k = 1; k <= extra; ++k) {
            if ((s[i + k] & 0xC0) != 0x80)
                return false;
            cp = (cp << 6) | (s[i + k] & 0x3F);
        }
        // Overlong forms, surrogates and values past U+10FFFF are not text.
        if ((extra == 1 && cp < 0x80) || (extra == 2 && cp < 0x800) || (extra == 3 && cp < 0x10000)
            || (cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF)
            return false;
        i += extra + 1;
    }
    return true;
}

bool Text(const std::string& text, size_t maxBytes)
{
    if (text.size() > maxBytes || !IsUtf8(text))
        return false;
    for (const unsigned char c : text)
        if (c < 0x20 && c != '\t' && c != '\r' && c != '\n')
            return false;
    return true;
}

bool Key(const std::string& key)
{
    return !key.empty() && key.size() <= 64 && Text(key, 64);
}

namespace {

bool Invisible(char32_t c)
{
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0xAD || c == 0x34F || c == 0x61C || c == 0x115F ||
           c == 0x1160 || c == 0x17B4 || c == 0x17B5 || c == 0x180E || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0x3164 || c == 0xFEFF ||
           c == 0xFFA0 || (c >= 0xFFF0 && c <= 0xFFFB) || (c >= 0x1D173 && c <= 0x1D17A) ||
           (c >= 0xE0000 && c <= 0xE0FFF);
}

} // namespace

char32_t FirstInvisible(const std::string& text)
{
    if (!IsUtf8(text))
        return 0;
    const auto* s = reinterpret_cast<const unsigned char*>(text.data());
    for (size_t i = 0; i < text.size();) {
        const unsigned char c = s[i];
        const size_t length = c < 0x80 ? 1 : (c & 0xE0) == 0xC0 ? 2 : (c & 0xF0) == 0xE0 ? 3 : 4;
        char32_t cp = length == 1 ? c : length == 2 ? (c & 0x1F) : length == 3 ? (c & 0x0F) : (c & 0x07);
        for (size_t k = 1; k < length; ++k)
            cp = (cp << 6) | (s[i + k] & 0x3F);
        if (Invisible(cp))
            return cp;
        i += length;
    }
    return 0;
}

void RefuseInvisible(const std::string& field, const std::string& text)
{
    const char32_t c = FirstInvisible(text);
    if (!c)
        return;
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(c));
    throw Framework::Server("The " + field + " contains an invisible or control character (" + code +
                            "). Retype it without that character.",
                            ArchiveResult::InvalidArgument);
}

} // namespace FieldCheck
