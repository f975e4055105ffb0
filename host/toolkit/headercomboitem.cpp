#include "headercomboitem.h"

#include "combobox.h"

HeaderComboItem::HeaderComboItem(const CString& title) : SearchHeaderItem(title), m_combo(new ComboBox(nullptr, true))
{
    SetEditor(m_combo);
}

CString HeaderComboItem::EditorText() const
{
    return m_combo->GetWindowText();
}

void HeaderComboItem::LoadEditor(const CString& text)
{
    m_combo->SetCurSel(m_combo->FindStringExact(-1, text));
    m_combo->SetWindowText(text);
}
