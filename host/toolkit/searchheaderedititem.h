#pragma once

// A header cell searched by free text.

#include "searchheaderitem.h"

class CEdit;

class BRAVIK_TOOLKIT_EXPORT SearchHeaderEditItem : public SearchHeaderItem
{
public:
    explicit SearchHeaderEditItem(const CString& title);
    CEdit& GetEdit() const { return *m_edit; }

protected:
    CString EditorText() const override;
    void LoadEditor(const CString& text) override;
    QWidget* FocusTarget() const override;

private:
    CEdit* m_edit;
};
