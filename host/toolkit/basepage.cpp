#include "basepage.h"

#include "colorschema.h"
#include "drawmaster.h"

#include <QPainter>
#include <QHideEvent>
#include <QResizeEvent>
#include <QShowEvent>

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

void BasePage::OnShowWindow(BOOL, UINT) {}

void BasePage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // A window coming back from the task bar is no new showing of the page.
    if (!event->spontaneous())
        OnShowWindow(TRUE, 0);
}

void BasePage::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        OnShowWindow(FALSE, 0);
}
