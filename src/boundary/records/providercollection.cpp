#include "providercollection.h"

#include "providerrecord.h"

ProviderCollection::ProviderCollection(ProviderRecord* queryTemplate) : m_template(queryTemplate)
{
}

ProviderCollection::~ProviderCollection()
{
    Clear();
}

void ProviderCollection::AddProvider(ProviderRecord* provider)
{
    if (provider)
        m_providers.push_back(provider);
}

void ProviderCollection::Clear()
{
    for (ProviderRecord* p : m_providers)
        delete p;
    m_providers.clear();
}
