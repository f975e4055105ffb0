#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

class ProviderRecord;
class ProviderCollection;

// Care providers. Result conventions as PatientManagementService.
class BRAVIK_RECORDS_EXPORT ProviderService
{
public:
    // QueryProviders: more providers match than a query may return; the
    // caller should keep what it has and ask for a narrower name.
    static constexpr int TOO_MANY_MATCHES = -2;

    virtual ~ProviderService();

    virtual int GetProvider(const ACE_CString& providerKey, ProviderRecord& provider,
                            const ACE_CString& organizationKey) = 0;
    // Fills the collection with the providers matching its template (the
    // template's organization key and the name parts that are set; name
    // parts match as prefixes, ignoring case). 0 also when nothing matched.
    virtual int QueryProviders(ProviderCollection* collection) = 0;
    // Whether the logged-in user may look providers up in the organization.
    virtual bool CanAccessDictionaries(const ACE_CString& organizationKey) = 0;
};
