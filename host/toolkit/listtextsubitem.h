#pragma once

// A text cell; "\n" in the text starts a further line.

#include "listsubitem.h"

#include <vector>

class BRAVIK_TOOLKIT_EXPORT ListTextSubItem : public ListSubItem
{
public:
    ListTextSubItem(int column, const CString& text);

    CString GetText() const override { return m_text; }
    void SetText(const CString& text) { m_text = text; }
    // The lines the cell shows.
    std::vector<CString> GetLines() const;

protected:
    void DrawContent(QPainter& painter, const CRect& rect) const override;

private:
    CString m_text;
};
