#pragma once

#include "bravik_records_export.h"
#include "bdate.h"
#include "bpersonname.h"

#include <ace/SString.h>

// One patient's full demographic and contact record, as one organization
// holds it. Copyable value.
//
// Address block layout: address type and other designation (two further
// address strings), address lines 1 and 2, county (the further string), city,
// state, postal code, country. The date of death is three integer parts,
// year, month, day; all 0 means unset.
class BRAVIK_RECORDS_EXPORT PatientDetailRecord
{
public:
    PatientDetailRecord() = default;

    // Identity
    const ACE_CString& GetPatientKey() const { return m_patientKey; }
    void SetPatientKey(const ACE_CString& v) { m_patientKey = v; }
    // The MRN.
    const ACE_CString& GetPatientID() const { return m_patientID; }
    void SetPatientID(const ACE_CString& v) { m_patientID = v; }
    const ACE_CString& GetOrganizationKey() const { return m_organizationKey; }
    void SetOrganizationKey(const ACE_CString& v) { m_organizationKey = v; }
    const ACE_CString& GetOrganizationID() const { return m_organizationID; }
    void SetOrganizationID(const ACE_CString& v) { m_organizationID = v; }

    // Name. Title and suffix are the name's prefix and suffix parts.
    const BPersonName& GetName() const { return m_name; }
    void SetName(const BPersonName& name) { m_name = name; }
    // From the DICOM Person Name form.
    void SetName(const ACE_CString& dicomName) { m_name = BPersonName::FromDICOMName(dicomName.c_str()); }
    const ACE_CString& GetLastName() const { return m_name.GetLastName(); }
    const ACE_CString& GetFirstName() const { return m_name.GetFirstName(); }
    const ACE_CString& GetMiddleName() const { return m_name.GetMiddleName(); }
    const ACE_CString& GetTitle() const { return m_name.GetPrefix(); }
    const ACE_CString& GetSuffix() const { return m_name.GetSuffix(); }
    void SetLastName(const ACE_CString& v) { m_name.SetLastName(v); }
    void SetFirstName(const ACE_CString& v) { m_name.SetFirstName(v); }
    void SetMiddleName(const ACE_CString& v) { m_name.SetMiddleName(v); }
    void SetTitle(const ACE_CString& v) { m_name.SetPrefix(v); }
    void SetSuffix(const ACE_CString& v) { m_name.SetSuffix(v); }
    // The name's single-string form ("Last, First Middle").
    ACE_CString GetPatientName() const { return m_name.GetDisplayName(); }
    // True when the record carries no name at all (headers then show "N/A").
    bool IsNameNull() const { return m_name.IsEmpty(); }

    const ACE_CString& GetSexCode() const { return m_sexCode; }
    void SetSexCode(const ACE_CString& v) { m_sexCode = v; }
    const ACE_CString& GetGenderCode() const { return m_genderCode; }
    void SetGenderCode(const ACE_CString& v) { m_genderCode = v; }

    const BDate& GetDOB() const { return m_dob; }
    void SetDOB(const BDate& v) { m_dob = v; }

    int GetDeathYear() const { return m_deathYear; }
    int GetDeathMonth() const { return m_deathMonth; }
    int GetDeathDay() const { return m_deathDay; }
    void SetDateOfDeath(int year, int month, int day) { m_deathYear = year; m_deathMonth = month; m_deathDay = day; }
    void SetDateOfDeath(const BDate& d) { SetDateOfDeath(int(d.GetYear()), int(d.GetMonth()), int(d.GetDay())); }
    void ClearDateOfDeath() { SetDateOfDeath(0, 0, 0); }
    bool HasDateOfDeath() const { return m_deathYear != 0 || m_deathMonth != 0 || m_deathDay != 0; }
    // The three parts as a date (invalid when unset or nonsensical).
    BDate GetDateOfDeath() const;

    // Patient global identifier (shown under the site's GID column title, e.g. "SSN").
    const ACE_CString& GetPatientGID() const { return m_patientGID; }
    void SetPatientGID(const ACE_CString& v) { m_patientGID = v; }
    // Citizen service number.
    const ACE_CString& GetBSN() const { return m_bsn; }
    void SetBSN(const ACE_CString& v) { m_bsn = v; }
    // Further identifiers, one separated list.
    const ACE_CString& GetOtherPatientIDs() const { return m_otherPatientIDs; }
    void SetOtherPatientIDs(const ACE_CString& v) { m_otherPatientIDs = v; }

    const ACE_CString& GetMothersMaidenName() const { return m_mothersMaidenName; }
    void SetMothersMaidenName(const ACE_CString& v) { m_mothersMaidenName = v; }
    const ACE_CString& GetAliasFirstName() const { return m_aliasFirstName; }
    void SetAliasFirstName(const ACE_CString& v) { m_aliasFirstName = v; }
    const ACE_CString& GetAliasMiddleName() const { return m_aliasMiddleName; }
    void SetAliasMiddleName(const ACE_CString& v) { m_aliasMiddleName = v; }
    const ACE_CString& GetAliasLastName() const { return m_aliasLastName; }
    void SetAliasLastName(const ACE_CString& v) { m_aliasLastName = v; }

    const ACE_CString& GetVIPStatusCode() const { return m_vipStatusCode; }
    void SetVIPStatusCode(const ACE_CString& v) { m_vipStatusCode = v; }

    // Address block
    const ACE_CString& GetAddressType() const { return m_addressType; }
    void SetAddressType(const ACE_CString& v) { m_addressType = v; }
    const ACE_CString& GetOtherDesignation() const { return m_otherDesignation; }
    void SetOtherDesignation(const ACE_CString& v) { m_otherDesignation = v; }
    const ACE_CString& GetAddressLine1() const { return m_addressLine1; }
    void SetAddressLine1(const ACE_CString& v) { m_addressLine1 = v; }
    const ACE_CString& GetAddressLine2() const { return m_addressLine2; }
    void SetAddressLine2(const ACE_CString& v) { m_addressLine2 = v; }
    const ACE_CString& GetCounty() const { return m_county; }
    void SetCounty(const ACE_CString& v) { m_county = v; }
    const ACE_CString& GetCity() const { return m_city; }
    void SetCity(const ACE_CString& v) { m_city = v; }
    const ACE_CString& GetStateCode() const { return m_stateCode; }
    void SetStateCode(const ACE_CString& v) { m_stateCode = v; }
    const ACE_CString& GetPostalCode() const { return m_postalCode; }
    void SetPostalCode(const ACE_CString& v) { m_postalCode = v; }
    const ACE_CString& GetCountryCode() const { return m_countryCode; }
    void SetCountryCode(const ACE_CString& v) { m_countryCode = v; }

    // Contact
    const ACE_CString& GetHomeNumber() const { return m_homeNumber; }
    void SetHomeNumber(const ACE_CString& v) { m_homeNumber = v; }
    const ACE_CString& GetWorkNumber() const { return m_workNumber; }
    void SetWorkNumber(const ACE_CString& v) { m_workNumber = v; }
    const ACE_CString& GetMobileNumber() const { return m_mobileNumber; }
    void SetMobileNumber(const ACE_CString& v) { m_mobileNumber = v; }
    const ACE_CString& GetEmailAddress() const { return m_emailAddress; }
    void SetEmailAddress(const ACE_CString& v) { m_emailAddress = v; }

    const ACE_CString& GetComments() const { return m_comments; }
    void SetComments(const ACE_CString& v) { m_comments = v; }

    // Identifier of the link group the record belongs to; empty when unlinked.
    const ACE_CString& GetLinkID() const { return m_linkID; }
    void SetLinkID(const ACE_CString& v) { m_linkID = v; }

    // The store's version of the record when it was read (empty for a record
    // not read from a store). A save of an older version is refused, so one
    // workstation never overwrites another's newer save.
    const ACE_CString& GetVersion() const { return m_version; }
    void SetVersion(const ACE_CString& v) { m_version = v; }

private:
    ACE_CString m_patientKey;
    ACE_CString m_patientID;
    ACE_CString m_organizationKey;
    ACE_CString m_organizationID;
    BPersonName m_name;
    ACE_CString m_sexCode;
    ACE_CString m_genderCode;
    BDate m_dob;
    int m_deathYear = 0;
    int m_deathMonth = 0;
    int m_deathDay = 0;
    ACE_CString m_patientGID;
    ACE_CString m_bsn;
    ACE_CString m_otherPatientIDs;
    ACE_CString m_mothersMaidenName;
    ACE_CString m_aliasFirstName;
    ACE_CString m_aliasMiddleName;
    ACE_CString m_aliasLastName;
    ACE_CString m_vipStatusCode;
    ACE_CString m_addressType;
    ACE_CString m_otherDesignation;
    ACE_CString m_addressLine1;
    ACE_CString m_addressLine2;
    ACE_CString m_county;
    ACE_CString m_city;
    ACE_CString m_stateCode;
    ACE_CString m_postalCode;
    ACE_CString m_countryCode;
    ACE_CString m_homeNumber;
    ACE_CString m_workNumber;
    ACE_CString m_mobileNumber;
    ACE_CString m_emailAddress;
    ACE_CString m_comments;
    ACE_CString m_linkID;
    ACE_CString m_version;
};
