#pragma once

// Sorting for a ListCtrlEx: which columns sort as text and which as dates,
// the current sort column and its order. A title click calls ToggleSort
// (same column: reverse the order; another column: sort by it, ascending)
// and then Sort.
//
// Sort takes one sort text per row and column (GetSortText; by default the
// cell's text) and orders the rows stably. Text columns compare case-blind;
// date columns parse both texts (ParseDate) and order by date, a text that
// is not a date before every date.

#include "bravik_toolkit_export.h"

#include "cstring.h"
#include "windefs.h"

#include <QDate>
#include <QString>

#include <map>

class ListCtrlEx;

class BRAVIK_TOOLKIT_EXPORT ListSortHelper
{
public:
    enum SortType
    {
        eText = 0,
        eDate = 1
    };

    explicit ListSortHelper(ListCtrlEx* list);
    virtual ~ListSortHelper();

    ListCtrlEx* GetList() const { return m_list; }

    // Columns not added sort as text.
    void AddSortColumn(int column, SortType type = eText);
    SortType GetSortType(int column) const;

    void SetCurrentSort(int column, bool ascending = true);
    int GetCurrentSort() const { return m_current; } // -1: none
    bool IsAscending() const { return m_ascending; }

    void ToggleSort(int column);
    // Orders the list's rows by the current sort; nothing without one.
    virtual void Sort();

    // The pattern ParseDate reads (Qt date letters: yyyy, MM, M, dd, d).
    void SetDatePattern(const QString& pattern) { m_datePattern = pattern; }

protected:
    // The text the row sorts by in column; itemData is the row's item data.
    virtual CString GetSortText(int row, int column, DWORD_PTR itemData) const;
    // A date from a sort text; an invalid QDate when it is none.
    virtual QDate ParseDate(const CString& text) const;

private:
    ListCtrlEx* m_list;
    std::map<int, SortType> m_types;
    int m_current = -1;
    bool m_ascending = true;
    QString m_datePattern = QStringLiteral("MM/dd/yyyy");
};
