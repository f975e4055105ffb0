#include "addressrecord.h"

#include "patientdetailrecord.h"

#include <vector>

void AddressRecord::FromPatientDetailRecord(const PatientDetailRecord* patient)
{
    if (!patient) {
        *this = AddressRecord();
        return;
    }
    m_addressType = patient->GetAddressType();
    m_otherDesignation = patient->GetOtherDesignation();
    m_addressLine1 = patient->GetAddressLine1();
    m_addressLine2 = patient->GetAddressLine2();
    m_city = patient->GetCity();
    m_stateCode = patient->GetStateCode();
    m_county = patient->GetCounty();
    m_countryCode = patient->GetCountryCode();
    m_postalCode = patient->GetPostalCode();
}

bool AddressRecord::IsEmpty() const
{
    return GenerateDisplayString(false).length() == 0;
}

ACE_CString AddressRecord::GenerateDisplayString(bool multiLine) const
{
    std::vector<ACE_CString> lines;

    ACE_CString street = m_addressLine1;
    if (m_addressLine2.length()) {
        if (street.length())
            street += " ";
        street += m_addressLine2;
    }
    lines.push_back(street);

    ACE_CString town = m_city;
    if (m_stateCode.length()) {
        if (town.length())
            town += ", ";
        town += m_stateCode;
    }
    if (m_postalCode.length()) {
        if (town.length())
            town += " ";
        town += m_postalCode;
    }
    lines.push_back(town);
    lines.push_back(m_county);
    lines.push_back(m_countryCode);

    ACE_CString out;
    for (const auto& line : lines) {
        if (!line.length())
            continue;
        if (out.length())
            out += multiLine ? "\n" : ", ";
        out += line;
    }
    return out;
}
