#include "basetabfooter.h"

#include "colorschema.h"
#include "drawmaster.h"

#include <QPainter>
#include <QResizeEvent>

BaseTabFooter::BaseTabFooter()
{
    setFont(DrawMaster::GetNormalFont());
    hide();
}

BaseTabFooter::~BaseTabFooter() = default;

BOOL BaseTabFooter::Create(CWnd* parent, UINT id)
{
    if (parent && parentWidget() != parent)
        setParent(parent);
    SetDlgCtrlID(this, static_cast<int>(id));
    m_created = true;
    if (!CreateButtons())
        return FALSE;
    RecalcLayout(CRect(0, 0, width(), height()));
    return TRUE;
}

BOOL BaseTabFooter::CreateButtons()
{
    m_btnOK.setObjectName(QStringLiteral("IDOK"));
    m_btnOK.Create("OK", this, IDOK);
    m_btnOK.setDefault(true);
    RouteCommands(m_btnOK);
    return TRUE;
}

void BaseTabFooter::RouteCommands(XPButton& button)
{
    connect(&button, &XPButton::command, this, &BaseTabFooter::onButtonCommand, Qt::UniqueConnection);
}

void BaseTabFooter::OnCommand(UINT id) { emit command(static_cast<int>(id)); }

void BaseTabFooter::RecalcLayout(const CRect& client)
{
    if (!m_btnOK.IsCreated())
        return;
    const int w = m_btnOK.width();
    const int h = m_btnOK.height();
    m_btnOK.move(client.right - w - BUTTON_MARGIN, client.top + (client.Height() - h) / 2);
}

void BaseTabFooter::paintEvent(QPaintEvent*)
{
    QPainter dc(this);
    const ColorSchema& cs = ColorSchema::Instance();
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), cs.GetFooterBkColor());
    DrawMaster::DrawHLine(dc, 0, width(), 0, cs.GetSeparatorColor());
}

void BaseTabFooter::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_created)
        RecalcLayout(CRect(0, 0, event->size().width(), event->size().height()));
}
