#pragma once

#include "dialogtemplate.h"
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

// The dialogs' frame: the caption string `captionId`, 550 dialog units wide,
// `cy` high, Arial 8. Call with the module's resources active.
DialogTemplate FrameTemplate(UINT captionId, int cy);
} // namespace PatientComparison
