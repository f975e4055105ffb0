#pragma once

// A header cell searched by a date range (see DateRangeCtrl).

#include "searchheaderitem.h"

class DateRangeCtrl;

class BRAVIK_TOOLKIT_EXPORT HeaderItemDOBRange : public SearchHeaderItem
{
public:
    explicit HeaderItemDOBRange(const CString& title);
    DateRangeCtrl& GetDateRangeCtrl() const { return *m_range; }

protected:
    CString EditorText() const override;
    void LoadEditor(const CString& text) override;
    QWidget* FocusTarget() const override;

private:
    DateRangeCtrl* m_range;
};
