#include "faultyproviderservice.h"

#include "faultmacros.h"
#include "providercollection.h"
#include "providerrecord.h"

int FaultyProviderService::GetProvider(const ACE_CString& providerKey, ProviderRecord& provider,
                                       const ACE_CString& organizationKey)
{
    BRAVIK_FAULT_INT("GetProvider", Str(providerKey), Str(organizationKey));
    return Inner().GetProvider(providerKey, provider, organizationKey);
}

int FaultyProviderService::QueryProviders(ProviderCollection* collection)
{
    const ProviderRecord* t = collection ? collection->GetTemplate() : nullptr;
    BRAVIK_FAULT_INT("QueryProviders", t ? Str(t->GetName().ToDICOMName()) : std::string("<null>"),
                     t ? Str(t->GetOrganizationKey()) : std::string());
    return Inner().QueryProviders(collection);
}

bool FaultyProviderService::CanAccessDictionaries(const ACE_CString& organizationKey)
{
    BRAVIK_FAULT("CanAccessDictionaries", false, Str(organizationKey));
    return Inner().CanAccessDictionaries(organizationKey);
}
