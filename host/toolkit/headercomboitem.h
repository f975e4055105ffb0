#pragma once

// A header cell searched by one value, chosen from a list or typed.

#include "searchheaderitem.h"

class ComboBox;

class BRAVIK_TOOLKIT_EXPORT HeaderComboItem : public SearchHeaderItem
{
public:
    explicit HeaderComboItem(const CString& title);
    // The box to fill (e.g. with TavHelper); its edit text is the cell's text.
    ComboBox& GetComboBox() const { return *m_combo; }
    bool HasDropDown() const override { return true; }

protected:
    CString EditorText() const override;
    void LoadEditor(const CString& text) override;

private:
    ComboBox* m_combo;
};
