#pragma once

// The search header of the duplicate patient list: one search cell per
// column of the list.

#include "bravik_export.h"

#include "searchheaderctrl.h"

class BRAVIK_EXPORT DupPatientListHeaderCtrl : public SearchHeaderCtrl
{
    Q_OBJECT
public:
    explicit DupPatientListHeaderCtrl(QWidget* parent = nullptr);
};
