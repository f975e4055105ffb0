#include "duplicates/duplicatepatientlistsorthelper.h"

#include "duplicates/duplicatepatientlist.h"

#include "coledatetime.h"
#include "duplicatepatientrecord.h"
#include "localefunctions.h"

DuplicatePatientListSortHelper::DuplicatePatientListSortHelper(CDuplicatePatientList* list)
    : ListSortHelper(list), m_dupList(list)
{
}

CString DuplicatePatientListSortHelper::GetSortText(int /*row*/, int column, DWORD_PTR itemData) const
{
    auto* record = reinterpret_cast<DuplicatePatientRecord*>(itemData);
    if (!record)
        return CString();
    const PatientQueryRecord& first = record->GetFirstPatient();
    switch (column) {
    case CDuplicatePatientList::ePATIENT_NAME:
        return first.GetPatientName().c_str();
    case CDuplicatePatientList::ePATIENT_ID:
        // The raw identifier, not its display form.
        return first.GetSsn().c_str();
    case CDuplicatePatientList::eMRN:
        return first.GetPatientId().c_str();
    case CDuplicatePatientList::eORGANIZATION:
        return first.GetOrganizationId().c_str();
    case CDuplicatePatientList::eTYPE:
        return m_dupList->GetDupTypeStr(*record);
    case CDuplicatePatientList::eREASON:
        return record->GetDuplicateReason().c_str();
    case CDuplicatePatientList::eDOB:
        return Locale::FormatDate(first.GetPatientBirthDate(), Locale::eShort);
    case CDuplicatePatientList::eSEX:
        return first.GetPatientSexCode().c_str();
    default:
        return CString();
    }
}

QDate DuplicatePatientListSortHelper::ParseDate(const CString& text) const
{
    COleDateTime value;
    if (!Locale::ParseDateTime(value, text))
        return QDate();
    return QDate(value.GetYear(), value.GetMonth(), value.GetDay());
}
