#pragma once

// ComparisonListCtrl: the report list the merge and link dialogs compare two
// records in. Rows alternate between two background colours so the eye can
// follow a field across the columns; a list given the same colour twice
// shows one band.

#include "bravik_export.h"

#include "listctrlex.h"

class BRAVIK_EXPORT ComparisonListCtrl : public ListCtrlEx
{
    Q_OBJECT
public:
    explicit ComparisonListCtrl(QWidget* parent = nullptr);

    // Even rows (0, 2, ...) take the first colour, odd rows the second.
    void SetRowColors(COLORREF first, COLORREF second);
    COLORREF GetFirstRowColor() const { return m_first; }
    COLORREF GetSecondRowColor() const { return m_second; }

    void SetItemTextAndBkgndColor(QPainter& dc, const CRect& rect, DWORD state, UINT row) override;

private:
    COLORREF m_first;
    COLORREF m_second;
};
