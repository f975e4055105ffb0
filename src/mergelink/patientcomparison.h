#pragma once

#include "listsubitem.h"

class PatientDetailRecord;

// What the link and merge dialogs show side by side for two patients.
namespace PatientComparison
{
// The text of one compared field of `record`; `field` counts as
// MergePatientsDlgImpl's field rows do (MRN first, alias last name last).
CString FieldText(const PatientDetailRecord& record, int field);

// The patient's address on one line, as the dialogs show it.
CString AddressText(const PatientDetailRecord* record);

// A plain text cell in the dialogs' normal font.
ListSubItemPtr TextCell(int column, const CString& text, UINT format);
} // namespace PatientComparison
