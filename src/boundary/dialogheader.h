#pragma once

// DialogHeader: the module's header band. The module icon sits at the left,
// centred vertically; a disabled tab reading "Selected Patient Information"
// sits at the bottom right as a caption; the header text (the sentence the
// creator passes) is drawn word-wrapped between them.

#include "bravik_export.h"

#include "basetabheader.h"
#include "crect.h"
#include "cstring.h"

class TabButton;

class BRAVIK_EXPORT DialogHeader : public BaseTabHeader
{
    Q_OBJECT
public:
    DialogHeader();
    ~DialogHeader() override;

    BOOL Create(CWnd* parent, UINT id = 0) override;
    // Icon at (margin, margin) with margin = (cy - 32) / 2; the tab at the
    // bottom edge, inset from the right by the same margin. FALSE while the
    // header has no window.
    BOOL RecalcLayout(int cx, int cy) override;

    void SetHeaderText(const CString& text);
    const CString& GetHeaderText() const { return m_strHeaderText; }

    TabButton* GetTabButton() const { return m_pTabButton; }
    // left and top are the icon's position; the rest stays zero.
    const CRect& GetIconRect() const { return m_rcIcon; }
    // Where the header text was last drawn (empty before the first paint).
    const CRect& GetTextRect() const { return m_rcText; }

protected:
    void DrawIcon(QPainter& dc) override;
    void OnPaint(QPainter& dc) override;

private:
    CRect m_rcIcon;
    CString m_strHeaderText;
    TabButton* m_pTabButton;
    QPixmap m_icon;
    CRect m_rcText;
};
