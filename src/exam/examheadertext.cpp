#include "exam/examheadertext.h"

#include "boundary/resource.h"
#include "boundary/tavhelper.h"

#include "examdataset.h"
#include "localefunctions.h"
#include "patientdetailrecord.h"

#include "stringtable.h"

namespace ExamHeaderText {

namespace {

CString OrNA(const ACE_CString& s) { return s.length() ? CString(s.c_str()) : LoadString(IDS_NOT_AVAILABLE); }

} // namespace

CString ExamLine(const ExamDataSet& exam)
{
    // The prefix's trailing blank is the separator.
    return LoadString(IDS_ACCESSION_PREFIX) + OrNA(exam.GetAccessionNumber());
}

CString PatientLine(const PatientDetailRecord& p, bool withMRN)
{
    const CString na = LoadString(IDS_NOT_AVAILABLE);
    CString line = p.IsNameNull() ? na : CString(p.GetPatientName().c_str());
    if (withMRN)
        line += ", " + CString(p.GetPatientID().c_str());
    line += ", " + (p.GetSexCode().length() ? TavHelper().GetSexCodeDescription(p.GetSexCode()) : na);
    line += ", " + (p.GetDOB().IsValid() ? Locale::FormatDate(p.GetDOB(), Locale::eLong) : na);
    // The last item is the patient's organization.
    return line + ", " + OrNA(p.GetOrganizationID());
}

} // namespace ExamHeaderText
