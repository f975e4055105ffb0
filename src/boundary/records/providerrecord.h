#pragma once

#include "bravik_records_export.h"
#include "addressrecord.h"
#include "bpersonname.h"

#include <ace/SString.h>

// A care provider. As a query template, the organization key and the name
// parts that are set are the criteria.
class BRAVIK_RECORDS_EXPORT ProviderRecord
{
public:
    enum ePROVIDERTYPE
    {
        eUNKNOWN = 0,
        eATTENDING = 1,
        eORDERING = 2,
        eCONSULTING = 3,
        eREFERRING = 4,
        ePERFORMING = 5,
        eREADING = 6
    };

    ProviderRecord() = default;

    const ACE_CString& GetKey() const { return m_key; }
    void SetKey(const ACE_CString& v) { m_key = v; }
    // The identifier users see.
    const ACE_CString& GetProviderID() const { return m_providerID; }
    void SetProviderID(const ACE_CString& v) { m_providerID = v; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }

    const BPersonName& GetName() const { return m_name; }
    void SetName(const BPersonName& v) { m_name = v; }

    ePROVIDERTYPE GetProviderType() const { return m_type; }
    void SetProviderType(ePROVIDERTYPE v) { m_type = v; }

    const AddressRecord& GetAddress() const { return m_address; }
    void SetAddress(const AddressRecord& v) { m_address = v; }
    const ACE_CString& GetWorkPhone() const { return m_workPhone; }
    void SetWorkPhone(const ACE_CString& v) { m_workPhone = v; }

private:
    ACE_CString m_key;
    ACE_CString m_providerID;
    ACE_CString m_organizationKey;
    BPersonName m_name;
    ePROVIDERTYPE m_type = eUNKNOWN;
    AddressRecord m_address;
    ACE_CString m_workPhone;
};
