#include "combobox.h"

#include "requiredmark.h"

#include "controlstyles.h"
#include "dialogtemplate.h"

const char* const ComboBox::ClassName = "ToolkitComboBox";

namespace {
const bool g_registered = RegisterControlClass(ComboBox::ClassName, [](QWidget* parent, const DialogControl& c) -> QWidget* {
    return new ComboBox(parent, false, (c.style & CBS_SORT) != 0);
});
} // namespace

ComboBox::ComboBox(QWidget* parent, bool editable, bool sorted)
    : CComboBox(parent, editable, sorted), m_mark(new RequiredMark(this))
{
    (void)g_registered;
}

ComboBox::~ComboBox() = default;

void ComboBox::SetRequiredFlag(bool required)
{
    m_required = required;
    m_mark->Show(required);
}

bool ComboBox::IsRequiredMarkShown() const { return m_mark->IsShown(); }

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
