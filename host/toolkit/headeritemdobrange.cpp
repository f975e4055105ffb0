#include "headeritemdobrange.h"

#include "daterangectrl.h"

#include <QLineEdit>

HeaderItemDOBRange::HeaderItemDOBRange(const CString& title) : SearchHeaderItem(title), m_range(new DateRangeCtrl())
{
    SetEditor(m_range);
}

CString HeaderItemDOBRange::EditorText() const
{
    return m_range->GetWindowText();
}

void HeaderItemDOBRange::LoadEditor(const CString& text)
{
    m_range->SetWindowText(text);
    m_range->lineEdit()->selectAll();
}

QWidget* HeaderItemDOBRange::FocusTarget() const
{
    return m_range->lineEdit();
}
