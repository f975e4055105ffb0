#include "duplicates/duppatientlistheaderctrl.h"

DupPatientListHeaderCtrl::DupPatientListHeaderCtrl(QWidget* parent) : SearchHeaderCtrl(parent)
{
    setObjectName(QStringLiteral("DupPatientListHeaderCtrl"));
}
