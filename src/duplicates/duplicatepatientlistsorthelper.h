#pragma once

// Sorts the duplicate list by the FIRST patient of each pair only: the
// second patient never influences the order.

#include "bravik_export.h"

#include "listsorthelper.h"

class CDuplicatePatientList;

class BRAVIK_EXPORT DuplicatePatientListSortHelper : public ListSortHelper
{
public:
    explicit DuplicatePatientListSortHelper(CDuplicatePatientList* list);

protected:
    CString GetSortText(int row, int column, DWORD_PTR itemData) const override;
    QDate ParseDate(const CString& text) const override;

private:
    CDuplicatePatientList* m_dupList;
};
