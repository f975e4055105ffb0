#include "basetabheader.h"

#include "colorschema.h"
#include "drawmaster.h"

#include <QPainter>
#include <QResizeEvent>

BaseTabHeader::BaseTabHeader()
    : m_clrBackground(ColorSchema::Instance().GetHeaderBkColor()),
      m_clrText(ColorSchema::Instance().GetTextColorHeader())
{
    setFont(DrawMaster::GetNormalFont());
    hide();
}

BaseTabHeader::~BaseTabHeader() = default;

BOOL BaseTabHeader::Create(CWnd* parent, UINT id)
{
    if (parent && parentWidget() != parent)
        setParent(parent);
    SetDlgCtrlID(this, static_cast<int>(id));
    m_created = true;
    return TRUE;
}

BOOL BaseTabHeader::RecalcLayout(int, int cy)
{
    if (!m_created)
        return FALSE;
    m_iconPos = CPoint(8, (cy - ICON_SIZE) / 2);
    update();
    return TRUE;
}

void BaseTabHeader::SetIcon(const QPixmap& icon)
{
    m_icon = icon;
    update();
}

void BaseTabHeader::DrawIcon(QPainter& dc)
{
    if (!m_icon.isNull())
        dc.drawPixmap(QRect(m_iconPos.x, m_iconPos.y, ICON_SIZE, ICON_SIZE), m_icon);
}

void BaseTabHeader::OnPaint(QPainter&) {}

void BaseTabHeader::paintEvent(QPaintEvent*)
{
    QPainter dc(this);
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), m_clrBackground);
    // A hairline where the band meets the body.
    DrawMaster::DrawHLine(dc, 0, width(), height() - 1, ColorSchema::Instance().GetSeparatorColor());
    dc.setRenderHint(QPainter::SmoothPixmapTransform, true);
    DrawIcon(dc);
    dc.setFont(font());
    dc.setPen(toQColor(m_clrText));
    OnPaint(dc);
}

void BaseTabHeader::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    RecalcLayout(event->size().width(), event->size().height());
}
