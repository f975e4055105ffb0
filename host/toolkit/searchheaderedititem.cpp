#include "searchheaderedititem.h"

#include "cedit.h"

#include <QLineEdit>

SearchHeaderEditItem::SearchHeaderEditItem(const CString& title) : SearchHeaderItem(title), m_edit(new CEdit())
{
    SetEditor(m_edit);
}

CString SearchHeaderEditItem::EditorText() const
{
    return m_edit->GetWindowText();
}

void SearchHeaderEditItem::LoadEditor(const CString& text)
{
    m_edit->SetWindowText(text);
    m_edit->SetSel(0, -1);
}

QWidget* SearchHeaderEditItem::FocusTarget() const
{
    return m_edit->lineEdit();
}
