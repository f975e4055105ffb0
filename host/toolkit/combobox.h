#pragma once

// The toolkit's combo box: a CComboBox that knows whether its items read
// "code-description", so a typed code can be matched against the code part,
// and that can show the toolkit's required mark. Templates name it as a
// Custom control of class ComboBox::ClassName (a drop-down list; CBS_SORT
// sorts it).

#include "bravik_toolkit_export.h"

#include "ccombobox.h"

class RequiredMark;

class BRAVIK_TOOLKIT_EXPORT ComboBox : public CComboBox
{
    Q_OBJECT
public:
    static const char* const ClassName;

    explicit ComboBox(QWidget* parent = nullptr, bool editable = false, bool sorted = false);
    ~ComboBox() override;

    void SetCodeDescription(bool on) { m_codeDescription = on; }
    bool IsCodeDescription() const { return m_codeDescription; }

    // The index of the item whose code (the text before the first "-" when
    // the box is code-description, else the whole text) equals code, ignoring
    // case; CB_ERR when none.
    int FindCode(const CString& code) const;

    void SetRequiredFlag(bool required);
    bool GetRequiredFlag() const { return m_required; }
    bool IsRequiredMarkShown() const;

private:
    bool m_codeDescription = false;
    bool m_required = false;
    RequiredMark* m_mark;
};
