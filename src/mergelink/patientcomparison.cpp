#include "mergelink/patientcomparison.h"

#include "mergelink/mergepatientsdlgimpl.h"

#include "addressrecord.h"
#include "drawmaster.h"
#include "listtextsubitem.h"
#include "localefunctions.h"
#include "patientdetailrecord.h"
#include "patientgidformatter.h"
#include "stringtable.h"

namespace {

CString S(const ACE_CString& s) { return CString(s.c_str()); }

} // namespace

namespace PatientComparison
{

CString FieldText(const PatientDetailRecord& r, int field)
{
    switch (field) {
    case MergePatientsDlgImpl::ROW_MRN: return S(r.GetPatientID());
    case MergePatientsDlgImpl::ROW_LAST_NAME: return S(r.GetLastName());
    case MergePatientsDlgImpl::ROW_FIRST_NAME: return S(r.GetFirstName());
    case MergePatientsDlgImpl::ROW_MIDDLE_NAME: return S(r.GetMiddleName());
    case MergePatientsDlgImpl::ROW_SEX: return S(r.GetSexCode());
    case MergePatientsDlgImpl::ROW_GENDER:
        return r.GetGenderCode().is_empty() ? S(r.GetSexCode()) : S(r.GetGenderCode());
    case MergePatientsDlgImpl::ROW_DOB: return Locale::FormatDate(r.GetDOB(), Locale::eShort);
    case MergePatientsDlgImpl::ROW_DOD: return Locale::FormatDate(r.GetDateOfDeath(), Locale::eShort);
    case MergePatientsDlgImpl::ROW_GID: {
        CString gid = S(r.GetPatientGID());
        PatientGIDFormatter::FormatPatientGID(gid);
        return gid;
    }
    case MergePatientsDlgImpl::ROW_MAIDEN_NAME: return S(r.GetMothersMaidenName());
    case MergePatientsDlgImpl::ROW_WORK_PHONE: return S(r.GetWorkNumber());
    case MergePatientsDlgImpl::ROW_HOME_PHONE: return S(r.GetHomeNumber());
    case MergePatientsDlgImpl::ROW_EMAIL: return S(r.GetEmailAddress());
    case MergePatientsDlgImpl::ROW_TITLE: return S(r.GetTitle());
    case MergePatientsDlgImpl::ROW_SUFFIX: return S(r.GetSuffix());
    case MergePatientsDlgImpl::ROW_ALIAS_FIRST: return S(r.GetAliasFirstName());
    case MergePatientsDlgImpl::ROW_ALIAS_MIDDLE: return S(r.GetAliasMiddleName());
    case MergePatientsDlgImpl::ROW_ALIAS_LAST: return S(r.GetAliasLastName());
    default: return CString();
    }
}

CString AddressText(const PatientDetailRecord* record)
{
    AddressRecord address;
    address.FromPatientDetailRecord(record);
    return S(address.GenerateDisplayString(true));
}

ListSubItemPtr TextCell(int column, const CString& text, UINT format)
{
    auto cell = std::make_unique<ListTextSubItem>(column, text);
    cell->SetFont(DrawMaster::GetNormalFont());
    cell->SetDrawFormat(format);
    return cell;
}

DialogTemplate FrameTemplate(UINT captionId, int cy)
{
    DialogTemplate tpl;
    tpl.caption = LoadString(captionId);
    tpl.cx = 550;
    tpl.cy = cy;
    return tpl;
}

} // namespace PatientComparison
