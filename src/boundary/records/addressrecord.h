#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

class PatientDetailRecord;

// A postal address. The two region fields after the state are the county and
// the country code.
class BRAVIK_RECORDS_EXPORT AddressRecord
{
public:
    AddressRecord() = default;

    // Copies the whole address block of the patient (a null patient clears it).
    void FromPatientDetailRecord(const PatientDetailRecord* patient);

    // The address as display text. Street line: line 1, then " " and line 2
    // when line 2 is set. Town line: city, then ", " and the state when set,
    // then " " and the postal code when set (no leading separator when the
    // city is empty). Then the county, then the country code. Empty lines are
    // left out. multiLine joins the lines with "\n", otherwise with ", ".
    ACE_CString GenerateDisplayString(bool multiLine) const;

    const ACE_CString& GetAddressType() const { return m_addressType; }
    void SetAddressType(const ACE_CString& v) { m_addressType = v; }
    const ACE_CString& GetOtherDesignation() const { return m_otherDesignation; }
    void SetOtherDesignation(const ACE_CString& v) { m_otherDesignation = v; }
    const ACE_CString& GetAddressLine1() const { return m_addressLine1; }
    void SetAddressLine1(const ACE_CString& v) { m_addressLine1 = v; }
    const ACE_CString& GetAddressLine2() const { return m_addressLine2; }
    void SetAddressLine2(const ACE_CString& v) { m_addressLine2 = v; }
    const ACE_CString& GetCity() const { return m_city; }
    void SetCity(const ACE_CString& v) { m_city = v; }
    const ACE_CString& GetStateCode() const { return m_stateCode; }
    void SetStateCode(const ACE_CString& v) { m_stateCode = v; }
    const ACE_CString& GetCounty() const { return m_county; }
    void SetCounty(const ACE_CString& v) { m_county = v; }
    const ACE_CString& GetCountryCode() const { return m_countryCode; }
    void SetCountryCode(const ACE_CString& v) { m_countryCode = v; }
    const ACE_CString& GetPostalCode() const { return m_postalCode; }
    void SetPostalCode(const ACE_CString& v) { m_postalCode = v; }

    bool IsEmpty() const;

private:
    ACE_CString m_addressType;
    ACE_CString m_otherDesignation;
    ACE_CString m_addressLine1;
    ACE_CString m_addressLine2;
    ACE_CString m_city;
    ACE_CString m_stateCode;
    ACE_CString m_county;
    ACE_CString m_countryCode;
    ACE_CString m_postalCode;
};
