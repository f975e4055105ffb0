#include "reasons/header.h"

#include "drawmaster.h"
#include "drawtext.h"

#include <QPainter>

namespace ReasonDialogs {

namespace {
constexpr int kTextGap = 12;
constexpr int kLineGap = 2;
} // namespace

Header::Header(const CString& firstText, const CString& secondText) : m_strFirst(firstText), m_strSecond(secondText)
{
}

Header::~Header() = default;

void Header::SetTexts(const CString& firstText, const CString& secondText)
{
    m_strFirst = firstText;
    m_strSecond = secondText;
    update();
}

void Header::OnPaint(QPainter& dc)
{
    const int left = std::max(0, GetIconPos().x) + ICON_SIZE + kTextGap;
    const int right = width() - kTextGap;
    if (right <= left)
        return;
    const QFont& bold = DrawMaster::GetBoldFont();
    const QFont& normal = DrawMaster::GetNormalFont();

    CRect first(left, 0, right, 0);
    CalcTextRect(bold, m_strFirst, first, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    CRect second(left, 0, right, 0);
    CalcTextRect(normal, m_strSecond, second, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    const int block = first.Height() + kLineGap + second.Height();
    const int top = std::max(2, (height() - block) / 2);

    dc.setBackgroundMode(Qt::TransparentMode);
    dc.setPen(toQColor(m_clrText));
    dc.setFont(bold);
    m_rcFirst = DrawTextWrapped(dc, m_strFirst, CRect(left, top, right, height()), DT_LEFT | DT_NOPREFIX);
    dc.setFont(normal);
    m_rcSecond = CRect(left, m_rcFirst.bottom + kLineGap, right, m_rcFirst.bottom + kLineGap + second.Height());
    CRect target = m_rcSecond;
    DrawText(dc, m_strSecond, target, DT_LEFT | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

} // namespace ReasonDialogs
