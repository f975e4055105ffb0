#include "boundary/tavbasepage.h"

#include "cdialog.h"

TavBasePage::TavBasePage() = default;

TavBasePage::~TavBasePage()
{
    m_pInnerDlg = nullptr;
}

void TavBasePage::OnSize(UINT type, int cx, int cy)
{
    BasePage::OnSize(type, cx, cy);
    LayoutInnerDialog(CRect(0, 0, cx, cy));
}

void TavBasePage::LayoutInnerDialog(const CRect& rect)
{
    if (!m_pInnerDlg || !m_pInnerDlg->IsChildDialog())
        return;
    m_pInnerDlg->MoveWindow(rect);
}
