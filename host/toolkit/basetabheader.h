#pragma once

// BaseTabHeader: the band across the top of a framed dialog. It paints its
// background, then the icon (DrawIcon), then whatever the derived header
// draws (OnPaint); every resize lays it out again (RecalcLayout).
//
// The window exists once Create() has run; before that RecalcLayout has
// nothing to lay out.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QPixmap>
#include <QWidget>

class QPainter;

class BRAVIK_TOOLKIT_EXPORT BaseTabHeader : public QWidget, public WindowOps<BaseTabHeader>
{
    Q_OBJECT
public:
    // Height of the band unless the frame is told otherwise.
    static constexpr int DEFAULT_HEIGHT = 48;
    // Side of the square icon.
    static constexpr int ICON_SIZE = 32;

    BaseTabHeader();
    ~BaseTabHeader() override;

    // Makes the header a child of parent (hidden until the frame shows it).
    virtual BOOL Create(CWnd* parent, UINT id = 0);
    bool IsCreated() const { return m_created; }

    // Lays out the header for a client area of cx by cy pixels: TRUE when
    // done, FALSE while the header has no window. The base places the icon
    // 8 pixels from the left, centred vertically.
    virtual BOOL RecalcLayout(int cx, int cy);

    void SetHeight(int height) { m_height = height; }
    int GetHeight() const { return m_height; }

    // The picture the base DrawIcon draws.
    void SetIcon(const QPixmap& icon);
    const QPixmap& GetIcon() const { return m_icon; }
    CPoint GetIconPos() const { return m_iconPos; }

    // The band's two colours; the derived header draws its texts in the second.
    COLORREF m_clrBackground;
    COLORREF m_clrText;

protected:
    // Draws the icon at the position the layout computed.
    virtual void DrawIcon(QPainter& dc);
    // The derived header's own drawing, after background and icon.
    virtual void OnPaint(QPainter& dc);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    CPoint m_iconPos;

private:
    bool m_created = false;
    int m_height = DEFAULT_HEIGHT;
    QPixmap m_icon;
};
