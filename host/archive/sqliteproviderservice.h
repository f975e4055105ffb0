#pragma once

#include "bravik_archive_export.h"

#include <providerservice.h>

class ArchiveContext;

// Care providers from the archive.
class BRAVIK_ARCHIVE_EXPORT SqliteProviderService : public ProviderService
{
public:
    // At most this many providers per query; more gives TOO_MANY_MATCHES.
    static constexpr int kMaxMatches = 500;

    explicit SqliteProviderService(ArchiveContext& context);

    int GetProvider(const ACE_CString& providerKey, ProviderRecord& provider,
                    const ACE_CString& organizationKey) override;
    int QueryProviders(ProviderCollection* collection) override;
    bool CanAccessDictionaries(const ACE_CString& organizationKey) override;

private:
    ArchiveContext& m_ctx;
};
