#include "patientrow.h"

#include "archivecontext.h"
#include "archiveerror.h"

#include <patientdetailrecord.h>

#include <cstdio>
#include <functional>
#include <vector>

namespace {

struct Field
{
    const char* column;
    std::function<std::string(const PatientDetailRecord&)> get;
    std::function<void(PatientDetailRecord&, const std::string&)> set;
    size_t limit;
};

#define TEXT_FIELD(col, Getter, Setter, lim)                                                              \
    Field { col, [](const PatientDetailRecord& r) { return std::string(r.Getter().c_str()); },           \
            [](PatientDetailRecord& r, const std::string& v) { r.Setter(ACE_CString(v.c_str())); }, lim }

const std::vector<Field>& Fields()
{
    using namespace FieldCheck;
    static const std::vector<Field> fields = {
        TEXT_FIELD("mrn", GetPatientID, SetPatientID, kMrn),
        TEXT_FIELD("last_name", GetLastName, SetLastName, kName),
        TEXT_FIELD("first_name", GetFirstName, SetFirstName, kName),
        TEXT_FIELD("middle_name", GetMiddleName, SetMiddleName, kName),
        TEXT_FIELD("title", GetTitle, SetTitle, kName),
        TEXT_FIELD("suffix", GetSuffix, SetSuffix, kName),
        TEXT_FIELD("sex_code", GetSexCode, SetSexCode, kCode),
        TEXT_FIELD("gender_code", GetGenderCode, SetGenderCode, kCode),
        Field{"dob", [](const PatientDetailRecord& r) { return std::string(r.GetDOB().ToString().c_str()); },
              [](PatientDetailRecord& r, const std::string& v) { r.SetDOB(BDate::FromString(v.c_str())); }, 8},
        Field{"dod", [](const PatientDetailRecord& r) { return PatientRow::DateOfDeathText(r); },
              [](PatientDetailRecord& r, const std::string& v) {
                  int y = 0, m = 0, d = 0;
                  if (v.size() == 8 && std::sscanf(v.c_str(), "%4d%2d%2d", &y, &m, &d) == 3)
                      r.SetDateOfDeath(y, m, d);
                  else
                      r.ClearDateOfDeath();
              },
              8},
        TEXT_FIELD("global_id", GetPatientGID, SetPatientGID, kIdentifier),
        TEXT_FIELD("bsn", GetBSN, SetBSN, kIdentifier),
        TEXT_FIELD("other_ids", GetOtherPatientIDs, SetOtherPatientIDs, kReason),
        TEXT_FIELD("vip_status_code", GetVIPStatusCode, SetVIPStatusCode, kCode),
        TEXT_FIELD("mothers_maiden_name", GetMothersMaidenName, SetMothersMaidenName, kName),
        TEXT_FIELD("alias_first", GetAliasFirstName, SetAliasFirstName, kName),
        TEXT_FIELD("alias_middle", GetAliasMiddleName, SetAliasMiddleName, kName),
        TEXT_FIELD("alias_last", GetAliasLastName, SetAliasLastName, kName),
        TEXT_FIELD("address_type", GetAddressType, SetAddressType, kAddress),
        TEXT_FIELD("other_designation", GetOtherDesignation, SetOtherDesignation, kAddress),
        TEXT_FIELD("address1", GetAddressLine1, SetAddressLine1, kAddress),
        TEXT_FIELD("address2", GetAddressLine2, SetAddressLine2, kAddress),
        TEXT_FIELD("county", GetCounty, SetCounty, kAddress),
        TEXT_FIELD("city", GetCity, SetCity, kAddress),
        TEXT_FIELD("state_code", GetStateCode, SetStateCode, kCode),
        TEXT_FIELD("postal_code", GetPostalCode, SetPostalCode, kAddress),
        TEXT_FIELD("country_code", GetCountryCode, SetCountryCode, kCode),
        TEXT_FIELD("home_phone", GetHomeNumber, SetHomeNumber, kPhone),
        TEXT_FIELD("work_phone", GetWorkNumber, SetWorkNumber, kPhone),
        TEXT_FIELD("mobile_phone", GetMobileNumber, SetMobileNumber, kPhone),
        TEXT_FIELD("email", GetEmailAddress, SetEmailAddress, kAddress),
        TEXT_FIELD("comments", GetComments, SetComments, kComment),
    };
    return fields;
}

std::string Join(const char* (*part)(const Field&), const char* sep)
{
    std::string out;
    for (const auto& f : Fields()) {
        if (!out.empty())
            out += sep;
        out += part(f);
    }
    return out;
}

} // namespace

namespace PatientRow {

std::string DateOfDeathText(const PatientDetailRecord& r)
{
    if (!r.HasDateOfDeath())
        return std::string();
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d%02d%02d", r.GetDeathYear(), r.GetDeathMonth(), r.GetDeathDay());
    return buf;
}

const std::string& Columns()
{
    static const std::string s = Join([](const Field& f) { return f.column; }, ", ");
    return s;
}

const std::string& Placeholders()
{
    static const std::string s = Join([](const Field&) { return "?"; }, ", ");
    return s;
}

const std::string& Assignments()
{
    static const std::string s = [] {
        std::string out;
        for (const auto& f : Fields())
            out += (out.empty() ? "" : ", ") + std::string(f.column) + " = ?";
        return out;
    }();
    return s;
}

const std::string& Select()
{
    static const std::string s = [] {
        std::string out = "SELECT p.patient_key, p.org_key, o.org_id, coalesce(p.link_group, '')";
        for (const auto& f : Fields())
            out += ", p." + std::string(f.column);
        return out + " FROM patients p JOIN organizations o ON o.org_key = p.org_key ";
    }();
    return s;
}

void Read(SQLite::Statement& q, PatientDetailRecord& r)
{
    r = PatientDetailRecord();
    r.SetPatientKey(q.getColumn(0).getText());
    r.SetOrganizationKey(q.getColumn(1).getText());
    r.SetOrganizationID(q.getColumn(2).getText());
    r.SetLinkID(q.getColumn(3).getText());
    int i = 4;
    for (const auto& f : Fields())
        f.set(r, q.getColumn(i++).getString());
}

int Bind(SQLite::Statement& st, const PatientDetailRecord& r, int first)
{
    for (const auto& f : Fields())
        st.bind(first++, f.get(r));
    return first;
}

// The fields a reader identifies a patient by: names, MRN and identifiers.
const std::vector<std::pair<const char*, const char*>>& IdentifyingFields()
{
    static const std::vector<std::pair<const char*, const char*>> fields = {
        {"mrn", "patient ID"}, {"last_name", "last name"}, {"first_name", "first name"},
        {"middle_name", "middle name"}, {"title", "title"}, {"suffix", "suffix"},
        {"global_id", "global patient ID"}, {"bsn", "citizen service number"}, {"other_ids", "other patient IDs"},
        {"mothers_maiden_name", "mother's maiden name"}, {"alias_first", "alias first name"},
        {"alias_middle", "alias middle name"}, {"alias_last", "alias last name"}};
    return fields;
}

int Validate(const PatientDetailRecord& r)
{
    for (const auto& f : Fields())
        for (const auto& [column, label] : IdentifyingFields())
            if (std::string(f.column) == column)
                FieldCheck::RefuseInvisible(label, f.get(r));
    for (const auto& f : Fields())
        if (!FieldCheck::Text(f.get(r), f.limit))
            return ArchiveResult::InvalidArgument;
    // An invalid birth date reads as no date; a date of death must be a real one.
    if (r.HasDateOfDeath() && !r.GetDateOfDeath().IsValid())
        return ArchiveResult::InvalidArgument;
    return ArchiveResult::Ok;
}

} // namespace PatientRow
