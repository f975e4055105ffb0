#pragma once

// One cell of a ListCtrlEx row. The list owns its cells and asks each to draw
// itself; the kinds (text, radio mark, image) add their content to what
// every cell has: its column, an optional font and draw format of its own, an
// optional expand mark (+/-) at its left, and a tooltip.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "windefs.h"

#include <QFont>

#include <memory>
#include <optional>

class QPainter;

class BRAVIK_TOOLKIT_EXPORT ListSubItem
{
public:
    explicit ListSubItem(int column);
    virtual ~ListSubItem();
    ListSubItem(const ListSubItem&) = delete;
    ListSubItem& operator=(const ListSubItem&) = delete;

    int GetColumn() const { return m_column; }
    void SetColumn(int column) { m_column = column; }

    // The cell's text as sorting, tooltips and accessibility read it.
    virtual CString GetText() const { return CString(); }
    virtual bool IsRadio() const { return false; }

    // A font of the cell's own; otherwise the list's.
    void SetFont(const QFont& font) { m_font = font; }
    void ClearFont() { m_font.reset(); }
    const QFont* GetFont() const { return m_font ? &*m_font : nullptr; }

    // DT_* flags for the cell's text (DT_LEFT | DT_VCENTER by default).
    void SetDrawFormat(UINT format) { m_format = format; }
    UINT GetDrawFormat() const { return m_format; }

    // The expand mark: a small box with "+" (collapsed) or "-" (expanded).
    void SetExpandable(bool on) { m_expandable = on; }
    bool IsExpandable() const { return m_expandable; }
    void SetExpanded(bool on) { m_expanded = on; }
    bool IsExpanded() const { return m_expanded; }
    // Where the mark sits inside the cell rectangle (empty when not expandable).
    CRect GetExpandMarkRect(const CRect& cell) const;

    void SetTooltip(const CString& text) { m_tooltip = text; }
    const CString& GetTooltip() const { return m_tooltip; }

    // Draws the cell into rect with the painter's font and pen (the list has
    // already filled the background and chosen the text colour).
    void Draw(QPainter& painter, const CRect& rect) const;

protected:
    // The content, in the rectangle left after the expand mark.
    virtual void DrawContent(QPainter& painter, const CRect& rect) const = 0;
    // Draws text split at "\n", one line under the other, block centred
    // vertically unless the format says DT_TOP explicitly.
    void DrawLines(QPainter& painter, const CString& text, const CRect& rect) const;

private:
    int m_column;
    std::optional<QFont> m_font;
    UINT m_format;
    bool m_expandable = false;
    bool m_expanded = false;
    CString m_tooltip;
};

using ListSubItemPtr = std::unique_ptr<ListSubItem>;
