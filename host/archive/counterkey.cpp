#include "counterkey.h"

#include "archivedb.h"
#include "archiveerror.h"

#include <cstdint>
#include <cstdio>

int NextCounterKey(ArchiveContext& ctx, const CounterKey& kind, const std::string& organization, std::string& value)
{
    if (!FieldCheck::Key(organization))
        return ArchiveResult::InvalidArgument;
    auto& db = ctx.Db();
    WriteTransaction tx(db);
    const auto org = ctx.OrgByKeyOrId(organization);
    if (!org)
        return ArchiveResult::NotFound;
    if (!((*org).*kind.enabled))
        return ArchiveResult::Unsupported;
    const std::string& orgKey = org->key;
    const std::string& prefix = (*org).*kind.prefix;
    // A number handed out is a number used up: only who may create may draw one.
    if (!ctx.HasRight(kind.right, orgKey))
        return ArchiveResult::NotPermitted;
    auto& counter = db.Prepare(std::string("SELECT ") + kind.counterColumn + " FROM organizations WHERE org_key = ?");
    counter.bind(1, orgKey);
    counter.executeStep();
    long long n = counter.getColumn(0).getInt64();
    counter.reset();
    for (;;) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%0*lld", kind.digits, ++n);
        value = prefix + digits;
        auto& used = db.Prepare(std::string("SELECT 1 FROM ") + kind.table + " WHERE org_key = ? AND " +
                                kind.valueColumn + " = ?");
        used.bind(1, orgKey);
        used.bind(2, value);
        const bool taken = used.executeStep();
        used.reset();
        if (!taken)
            break;
    }
    auto& save = db.Prepare(std::string("UPDATE organizations SET ") + kind.counterColumn + " = ? WHERE org_key = ?");
    save.bind(1, static_cast<int64_t>(n));
    save.bind(2, orgKey);
    db.Write(save);
    tx.Commit();
    return ArchiveResult::Ok;
}
