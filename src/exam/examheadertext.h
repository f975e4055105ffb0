#pragma once

// The lines the exam dialogs show in their headers: the exam line
// ("Accession #: " and the number, or "N/A") and the patient line (name,
// sex, long date of birth and organization joined by ", ", each "N/A" when
// missing; the MRN after the name when asked for).

#include "bravik_export.h"

#include "cstring.h"

class ExamDataSet;
class PatientDetailRecord;

namespace ExamHeaderText {

BRAVIK_EXPORT CString ExamLine(const ExamDataSet& exam);
BRAVIK_EXPORT CString PatientLine(const PatientDetailRecord& patient, bool withMRN);

} // namespace ExamHeaderText
