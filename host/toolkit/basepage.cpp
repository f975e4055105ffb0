#include "basepage.h"

#include "colorschema.h"
#include "drawmaster.h"

#include <QPainter>
#include <QResizeEvent>

BasePage::BasePage() { setFont(DrawMaster::GetNormalFont()); }

BasePage::~BasePage() = default;

BOOL BasePage::Create(CWnd* parent, const CRect& rect, UINT id)
{
    if (parent && parentWidget() != parent)
        setParent(parent);
    SetDlgCtrlID(this, static_cast<int>(id));
    m_created = true;
    if (!rect.IsRectEmpty())
        setGeometry(rect.toQRect());
    return TRUE;
}

BOOL BasePage::OnSetActive() { return TRUE; }

BOOL BasePage::OnKillActive() { return TRUE; }

void BasePage::OnSize(UINT, int cx, int cy) { m_lastSize = CSize(cx, cy); }

void BasePage::paintEvent(QPaintEvent*)
{
    QPainter dc(this);
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), ColorSchema::Instance().GetPageBkColor());
}

void BasePage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    OnSize(SIZE_RESTORED, event->size().width(), event->size().height());
}
