#include "hfdlg.h"

#include "basetabfooter.h"
#include "basetabheader.h"
#include "colorschema.h"
#include "drawmaster.h"

#include <QCoreApplication>
#include <QPainter>
#include <QResizeEvent>

HFDlg::HFDlg()
{
    setFont(DrawMaster::GetNormalFont());
    hide();
}

HFDlg::~HFDlg() = default;

BOOL HFDlg::Create(CWnd* parent, const CRect& rect, UINT id)
{
    if (parent && parentWidget() != parent)
        setParent(parent);
    SetDlgCtrlID(this, static_cast<int>(id));
    m_created = true;
    setGeometry(rect.toQRect());
    return TRUE;
}

void HFDlg::SetHeader(BaseTabHeader* header)
{
    m_header = header;
    if (!header)
        return;
    if (!header->IsCreated())
        header->Create(this);
    else if (header->parentWidget() != this)
        header->setParent(this);
    header->show();
    RecalcLayout();
}

void HFDlg::SetFooter(BaseTabFooter* footer)
{
    m_footer = footer;
    if (!footer)
        return;
    if (!footer->IsCreated())
        footer->Create(this);
    else if (footer->parentWidget() != this)
        footer->setParent(this);
    footer->show();
    RecalcLayout();
}

void HFDlg::SetBody(QWidget* body)
{
    m_body = body;
    if (!body)
        return;
    if (body->parentWidget() != this)
        body->setParent(this);
    RecalcLayout();
}

int HFDlg::GetHeaderHeight() const { return m_header ? m_header->GetHeight() : 0; }

int HFDlg::GetFooterHeight() const { return m_footer ? m_footer->GetHeight() : 0; }

CRect HFDlg::GetBodyRect() const
{
    CRect r(0, GetHeaderHeight(), width(), height() - GetFooterHeight());
    if (r.bottom < r.top)
        r.bottom = r.top;
    return r;
}

void HFDlg::RecalcLayout()
{
    if (!m_created)
        return;
    const int w = width();
    if (m_header)
        PlaceWindow(m_header, QRect(0, 0, w, GetHeaderHeight()));
    if (m_footer)
        PlaceWindow(m_footer, QRect(0, std::max(GetHeaderHeight(), height() - GetFooterHeight()), w, GetFooterHeight()));
    if (m_body)
        PlaceWindow(m_body, GetBodyRect().toQRect());
}

void HFDlg::PlaceWindow(QWidget* w, const QRect& r)
{
    if (!w)
        return;
    const QSize old = w->size();
    w->setGeometry(r);
    if (!w->isVisible() && old != r.size()) {
        QResizeEvent e(r.size(), old);
        QCoreApplication::sendEvent(w, &e);
    }
}

void HFDlg::paintEvent(QPaintEvent*)
{
    QPainter dc(this);
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), ColorSchema::Instance().GetDialogBkColor());
}

void HFDlg::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    RecalcLayout();
}
