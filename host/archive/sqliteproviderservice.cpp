#include "sqliteproviderservice.h"

#include "archivecontext.h"
#include "archiveerror.h"
#include "textmatch.h"

#include <addressrecord.h>
#include <bpersonname.h>
#include <providercollection.h>
#include <providerrecord.h>

#include <SQLiteCpp/Statement.h>

namespace {

std::string S(const ACE_CString& s)
{
    return std::string(s.c_str(), s.length());
}

const char* const kColumns =
    "SELECT provider_key, provider_id, org_key, provider_type, last_name, first_name, middle_name, title, suffix, "
    "address_type, other_designation, address1, address2, county, city, state_code, postal_code, country_code, "
    "phone FROM providers ";

void Read(SQLite::Statement& q, ProviderRecord& p)
{
    p = ProviderRecord();
    p.SetKey(q.getColumn(0).getText());
    p.SetProviderID(q.getColumn(1).getText());
    p.SetOrganizationKey(q.getColumn(2).getText());
    p.SetProviderType(static_cast<ProviderRecord::ePROVIDERTYPE>(q.getColumn(3).getInt()));
    p.SetName(BPersonName(q.getColumn(4).getText(), q.getColumn(5).getText(), q.getColumn(6).getText(),
                          q.getColumn(7).getText(), q.getColumn(8).getText()));
    AddressRecord a;
    a.SetAddressType(q.getColumn(9).getText());
    a.SetOtherDesignation(q.getColumn(10).getText());
    a.SetAddressLine1(q.getColumn(11).getText());
    a.SetAddressLine2(q.getColumn(12).getText());
    a.SetCounty(q.getColumn(13).getText());
    a.SetCity(q.getColumn(14).getText());
    a.SetStateCode(q.getColumn(15).getText());
    a.SetPostalCode(q.getColumn(16).getText());
    a.SetCountryCode(q.getColumn(17).getText());
    p.SetAddress(a);
    p.SetWorkPhone(q.getColumn(18).getText());
}

void BindAll(SQLite::Statement& q, const TextMatch& match, int first)
{
    for (const auto& value : match.binds)
        q.bind(first++, value);
}

// A literal prefix for LIKE: the user's text never acts as a wildcard here.
std::string Prefix(const std::string& text)
{
    std::string out;
    for (char c : text) {
        if (c == '%' || c == '_' || c == '\\')
            out += '\\';
        out += c;
    }
    return out + "%";
}

} // namespace

SqliteProviderService::SqliteProviderService(ArchiveContext& context)
    : m_ctx(context)
{
}

int SqliteProviderService::GetProvider(const ACE_CString& providerKey, ProviderRecord& provider,
                                       const ACE_CString& organizationKey)
{
    if (!FieldCheck::Key(S(providerKey)) || !FieldCheck::Text(S(organizationKey), 64))
        return ArchiveResult::InvalidArgument;
    return GuardDb("GetProvider", [&] {
        SQLite::Statement q(m_ctx.Db().Handle(), std::string(kColumns) +
                                                     "WHERE provider_key = ?1 AND (?2 = '' OR org_key = '' OR org_key = ?2)");
        q.bind(1, S(providerKey));
        q.bind(2, S(organizationKey));
        if (!q.executeStep())
            return ArchiveResult::NotFound;
        Read(q, provider);
        return ArchiveResult::Ok;
    });
}

int SqliteProviderService::QueryProviders(ProviderCollection* collection)
{
    if (!collection)
        return ArchiveResult::InvalidArgument;
    const ProviderRecord empty;
    const ProviderRecord& t = collection->GetTemplate() ? *collection->GetTemplate() : empty;
    const std::string org = S(t.GetOrganizationKey());
    const std::string last = S(t.GetName().GetLastName());
    const std::string first = S(t.GetName().GetFirstName());
    if (!FieldCheck::Text(org, 64) || !FieldCheck::Text(last, FieldCheck::kName)
        || !FieldCheck::Text(first, FieldCheck::kName))
        return ArchiveResult::InvalidArgument;
    return GuardDb("QueryProviders", [&] {
        // The last name is read as a range of the name index; the first name filters it.
        const TextMatch byLast = MatchText("last_name", Prefix(last), 4);
        const TextMatch byFirst = MatchText("first_name", Prefix(first), 6);
        SQLite::Statement q(m_ctx.Db().Handle(),
                            std::string(kColumns) + "WHERE (?1 = '' OR org_key = '' OR org_key = ?1) AND " + byLast.sql
                                + " AND " + byFirst.sql
                                + " ORDER BY last_name COLLATE NOCASE, first_name COLLATE NOCASE, provider_id LIMIT ?2");
        q.bind(1, org);
        q.bind(2, kMaxMatches + 1);
        BindAll(q, byLast, 4);
        BindAll(q, byFirst, 6);
        std::vector<std::unique_ptr<ProviderRecord>> found;
        while (q.executeStep()) {
            auto p = std::make_unique<ProviderRecord>();
            Read(q, *p);
            found.push_back(std::move(p));
        }
        if (static_cast<int>(found.size()) > kMaxMatches)
            return TOO_MANY_MATCHES;
        for (auto& p : found)
            collection->AddProvider(p.release());
        return ArchiveResult::Ok;
    });
}

bool SqliteProviderService::CanAccessDictionaries(const ACE_CString& organizationKey)
{
    // Provider look-up is open to every known user of a known organization
    // (an empty key meaning the site-wide providers).
    if (!m_ctx.UserKnown(m_ctx.User()))
        return false;
    if (organizationKey.length() == 0)
        return true;
    return GuardDb("CanAccessDictionaries", [&] { return m_ctx.OrgByKeyOrId(S(organizationKey)).has_value(); });
}
