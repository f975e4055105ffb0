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

BOOL TavBasePage::CreateWithInnerDialog(CWnd* parent, const CRect& rect, UINT id)
{
    if (!BasePage::Create(parent, rect, id))
        return FALSE;
    if (m_pInnerDlg)
        m_pInnerDlg->Create(this);
    LayoutInnerDialog(CRect(0, 0, width(), height()));
    return TRUE;
}
