#include "boundary/dialogheader.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"

#include "colorschema.h"
#include "drawmaster.h"
#include "drawtext.h"
#include "stringtable.h"
#include "tabbutton.h"

#include <QPainter>

#include <new>

namespace {
// Space between the icon and the text, and between the text and the tab.
constexpr int kTextGap = 10;
} // namespace

DialogHeader::DialogHeader() : m_rcIcon(0, 0, 0, 0), m_pTabButton(new (std::nothrow) TabButton) {}

DialogHeader::~DialogHeader()
{
    delete m_pTabButton;
}

BOOL DialogHeader::Create(CWnd* parent, UINT id)
{
    const BOOL created = BaseTabHeader::Create(parent, id);
    m_icon = LoadHeaderIcon(ICON_SIZE);
    if (m_pTabButton) {
        m_pTabButton->Create(LoadString(IDS_SELECTED_PATIENT_INFO), this, IDC_HEADER_TAB);
        m_pTabButton->setObjectName(QStringLiteral("IDC_HEADER_TAB"));
        // A caption, not a control: it cannot be clicked.
        m_pTabButton->EnableWindow(FALSE);
        const ColorSchema& cs = ColorSchema::Instance();
        m_pTabButton->SetBkColors(cs.GetDialogBkColor(), cs.GetDialogBkColor());
        m_pTabButton->SetTextColors(cs.GetTextColorNormal(), cs.GetTextColorNormal());
        m_pTabButton->Refresh();
    }
    return created;
}

BOOL DialogHeader::RecalcLayout(int cx, int cy)
{
    if (!IsCreated())
        return FALSE;
    // A header lower than the icon gives a negative margin: the icon is then
    // clipped at the top rather than squeezed.
    const int margin = (cy - ICON_SIZE) / 2;
    m_rcIcon.left = margin;
    m_rcIcon.top = margin;
    m_iconPos = CPoint(margin, margin);
    if (m_pTabButton) {
        const CSize size = m_pTabButton->GetSize();
        m_pTabButton->MoveWindow(cx - margin - size.cx, cy - size.cy, size.cx, size.cy);
    }
    update();
    return TRUE;
}

void DialogHeader::SetHeaderText(const CString& text)
{
    m_strHeaderText = text;
    update();
}

void DialogHeader::DrawIcon(QPainter& dc)
{
    if (!m_icon.isNull())
        dc.drawPixmap(QRect(m_rcIcon.left, m_rcIcon.top, ICON_SIZE, ICON_SIZE), m_icon);
}

void DialogHeader::OnPaint(QPainter& dc)
{
    CRect area(m_rcIcon.left + ICON_SIZE + kTextGap, 0, width() - kTextGap, height());
    if (m_pTabButton && !m_pTabButton->isHidden())
        area.right = std::min(area.right, m_pTabButton->x() - kTextGap);
    if (area.right <= area.left)
        return;
    dc.setFont(DrawMaster::GetNormalFont());
    dc.setPen(toQColor(m_clrText));
    dc.setBackgroundMode(Qt::TransparentMode);
    // Measure with the same wrapping first, so the block can be centred.
    CRect measured = area;
    CalcTextRect(DrawMaster::GetNormalFont(), m_strHeaderText, measured, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    const int top = std::max(2, (height() - measured.Height()) / 2);
    CRect target(area.left, top, area.right, height());
    m_rcText = DrawTextWrapped(dc, m_strHeaderText, target, DT_LEFT | DT_NOPREFIX);
}
