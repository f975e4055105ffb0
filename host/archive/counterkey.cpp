#include "counterkey.h"

#include "archivedb.h"

#include <cstdint>
#include <cstdio>

std::string NextCounterKey(ArchiveDb& db, const CounterKey& kind, const std::string& orgKey,
                           const std::string& prefix)
{
    WriteTransaction tx(db);
    auto& counter = db.Prepare(std::string("SELECT ") + kind.counterColumn + " FROM organizations WHERE org_key = ?");
    counter.bind(1, orgKey);
    counter.executeStep();
    long long n = counter.getColumn(0).getInt64();
    counter.reset();
    std::string value;
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
    return value;
}
