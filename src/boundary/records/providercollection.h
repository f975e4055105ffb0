#pragma once

#include "bravik_records_export.h"

#include <vector>

class ProviderRecord;

// A provider query: the template it was constructed around (not owned) and
// the providers the query returned (owned, freed with the collection).
class BRAVIK_RECORDS_EXPORT ProviderCollection
{
public:
    explicit ProviderCollection(ProviderRecord* queryTemplate = nullptr);
    ~ProviderCollection();
    ProviderCollection(const ProviderCollection&) = delete;
    ProviderCollection& operator=(const ProviderCollection&) = delete;

    ProviderRecord* GetTemplate() const { return m_template; }
    const std::vector<ProviderRecord*>& GetProviders() const { return m_providers; }
    int GetCount() const { return static_cast<int>(m_providers.size()); }
    // Takes ownership.
    void AddProvider(ProviderRecord* provider);
    void Clear();

private:
    ProviderRecord* m_template;
    std::vector<ProviderRecord*> m_providers;
};
