#include "archivecontext.h"

#include <SQLiteCpp/Statement.h>

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

bool ArchiveContext::HasRight(Right right, const std::string& orgKey)
{
    const char* column = right == Right::Create ? "can_create" : right == Right::Link ? "can_link" : "can_merge";
    auto& q = m_db.Prepare(std::string("SELECT ") + column + " FROM user_rights WHERE user_name = ? AND org_key = ?");
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

} // namespace FieldCheck
