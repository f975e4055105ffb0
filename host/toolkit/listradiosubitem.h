#pragma once

// A radio mark with an optional text beside it. Within one row the radio
// cells of the same group are exclusive: checking one (ListCtrlEx does it on
// a click) clears the others.

#include "listsubitem.h"

class BRAVIK_TOOLKIT_EXPORT ListRadioSubItem : public ListSubItem
{
public:
    explicit ListRadioSubItem(int column, bool checked = false, const CString& text = CString(), int group = 0);

    bool IsRadio() const override { return true; }
    CString GetText() const override { return m_text; }
    void SetText(const CString& text) { m_text = text; }

    bool GetCheck() const { return m_checked; }
    void SetCheck(bool checked) { m_checked = checked; }
    int GetGroup() const { return m_group; }

    // A disabled mark cannot be checked by a click.
    void SetEnabled(bool on) { m_enabled = on; }
    bool IsEnabled() const { return m_enabled; }

    // Where the mark is drawn inside the content rectangle.
    CRect GetMarkRect(const CRect& content) const;

protected:
    void DrawContent(QPainter& painter, const CRect& rect) const override;

private:
    bool m_checked;
    CString m_text;
    int m_group;
    bool m_enabled = true;
};
