#include "boundary/tavbasepage.h"

#include "cdialog.h"
#include "hfdlg.h"

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
    HFDlg::PlaceWindow(m_pInnerDlg, rect.toQRect());
}
