#include "userrights.h"

#include <utility>

bool UserRights::Ask(eRIGHT right, const ACE_CString& organizationID) const
{
    return m_provider ? m_provider(right, organizationID) : true;
}

bool UserRights::HasLinkPatientRight(const ACE_CString& id) const { return Ask(eLINK_PATIENT, id); }
bool UserRights::HasLinkPatientRight(const char* id) const { return Ask(eLINK_PATIENT, ACE_CString(id ? id : "")); }
bool UserRights::HasMergePatientRight(const ACE_CString& id) const { return Ask(eMERGE_PATIENT, id); }
bool UserRights::HasMergePatientRight(const char* id) const { return Ask(eMERGE_PATIENT, ACE_CString(id ? id : "")); }
bool UserRights::HasCreatePatientRight(const ACE_CString& id) const { return Ask(eCREATE_PATIENT, id); }
bool UserRights::HasCreatePatientRight(const char* id) const { return Ask(eCREATE_PATIENT, ACE_CString(id ? id : "")); }

UserRights::Provider UserRights::SetProvider(Provider provider)
{
    return std::exchange(m_provider, std::move(provider));
}
