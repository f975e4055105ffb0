#pragma once

#include "providerservice.h"
#include "servicefaults.h"
#include "stubservices.h"

// Forwards every call to the wrapped service (a failing stub when none),
// recording it and injecting the faults set in the shared ServiceFaults.
class FaultyProviderService : public ProviderService
{
public:
    FaultyProviderService(ProviderService* inner, ServiceFaults& faults) : m_inner(inner), m_faults(faults) {}

    ProviderService* GetInner() const { return m_inner; }

    int GetProvider(const ACE_CString& providerKey, ProviderRecord& provider,
                    const ACE_CString& organizationKey) override;
    int QueryProviders(ProviderCollection* collection) override;
    bool CanAccessDictionaries(const ACE_CString& organizationKey) override;

private:
    ProviderService& Inner() { return m_inner ? *m_inner : m_stub; }

    ProviderService* m_inner;
    ServiceFaults& m_faults;
    StubProviderService m_stub;
};
