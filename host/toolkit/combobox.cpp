#include "combobox.h"

ComboBox::ComboBox(QWidget* parent, bool editable, bool sorted) : CComboBox(parent, editable, sorted) {}

int ComboBox::FindCode(const CString& code) const
{
    for (int i = 0; i < GetCount(); ++i) {
        CString text = GetLBText(i);
        if (m_codeDescription) {
            const int dash = text.Find('-');
            if (dash >= 0)
                text = text.Left(dash);
        }
        if (text.CompareNoCase(code) == 0)
            return i;
    }
    return CB_ERR;
}
