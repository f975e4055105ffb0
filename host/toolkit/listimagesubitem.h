#pragma once

// An image cell (a status icon, a flag), drawn at its natural size and
// placed by the cell's draw format (centred by default).

#include "listsubitem.h"

#include <QPixmap>

class BRAVIK_TOOLKIT_EXPORT ListImageSubItem : public ListSubItem
{
public:
    ListImageSubItem(int column, const QPixmap& image, const CString& text = CString());

    CString GetText() const override { return m_text; }
    const QPixmap& GetImage() const { return m_image; }
    void SetImage(const QPixmap& image) { m_image = image; }

protected:
    void DrawContent(QPainter& painter, const CRect& rect) const override;

private:
    QPixmap m_image;
    CString m_text; // for sorting and tooltips; not drawn
};
