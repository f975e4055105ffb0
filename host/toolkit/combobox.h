#pragma once

// The toolkit's combo box: a CComboBox that knows whether its items read
// "code-description", so a typed code can be matched against the code part.

#include "bravik_toolkit_export.h"

#include "ccombobox.h"

class BRAVIK_TOOLKIT_EXPORT ComboBox : public CComboBox
{
    Q_OBJECT
public:
    explicit ComboBox(QWidget* parent = nullptr, bool editable = false, bool sorted = false);

    void SetCodeDescription(bool on) { m_codeDescription = on; }
    bool IsCodeDescription() const { return m_codeDescription; }

    // The index of the item whose code (the text before the first "-" when
    // the box is code-description, else the whole text) equals code, ignoring
    // case; CB_ERR when none.
    int FindCode(const CString& code) const;

private:
    bool m_codeDescription = false;
};
