#include "boundary/dialogfooter.h"

#include "boundary/resource.h"

#include "cdialog.h"
#include "drawmaster.h"
#include "stringtable.h"

DialogFooter::DialogFooter(CDialog* owner)
    : m_strOK(LoadString(IDS_OK)), m_strCancel(LoadString(IDS_CANCEL)), m_pOwner(owner)
{
    m_btnCancel.hide();
}

DialogFooter::~DialogFooter() = default;

void DialogFooter::SetOKText(const CString& text)
{
    m_strOK = text;
    if (m_btnOK.IsCreated())
        m_btnOK.SetWindowText(m_strOK);
}

void DialogFooter::SetCancelText(const CString& text)
{
    m_strCancel = text;
    if (m_btnCancel.IsCreated())
        m_btnCancel.SetWindowText(m_strCancel);
}

BOOL DialogFooter::CreateButtons()
{
    if (!BaseTabFooter::CreateButtons())
        return FALSE;
    m_btnOK.SetWindowText(m_strOK);
    // Cancel takes the place the toolkit gave OK; the layout moves OK left.
    CRect rc;
    m_btnOK.GetWindowRect(rc);
    ScreenToClient(rc);
    m_btnCancel.setObjectName(QStringLiteral("IDCANCEL"));
    m_btnCancel.Create(m_strCancel, this, IDCANCEL, rc);
    // Enter means OK even with Cancel focused: it never throws away what the
    // user composed (Esc or a click on Cancel does that on purpose).
    m_btnCancel.setAutoDefault(false);
    m_btnCancel.SetFont(DrawMaster::GetNormalFont());
    RouteCommands(m_btnCancel);
    return TRUE;
}

void DialogFooter::RecalcLayout(const CRect& client)
{
    if (!m_btnCancel.IsCreated())
        return;
    const int w = m_btnCancel.width();
    const int h = m_btnCancel.height();
    const int y = (client.Height() / 2) - (h / 2) - 5;
    const int height = 2 * (h / 2);
    m_btnCancel.MoveWindow(client.right - w - BUTTON_MARGIN, y, w, height);
    const int w1 = m_btnOK.width();
    m_btnOK.MoveWindow(client.right - w - 2 * BUTTON_MARGIN - w1, y, w1, height);
}

void DialogFooter::OnCommand(UINT id)
{
    if (id == IDOK)
        OnOK();
    else if (id == IDCANCEL)
        OnCancel();
    else
        BaseTabFooter::OnCommand(id);
}

void DialogFooter::OnOK()
{
    if (m_pOwner)
        m_pOwner->OnOK();
}

void DialogFooter::OnCancel()
{
    // No confirmation and no OnCancel: the owner ends as cancelled, now.
    if (m_pOwner)
        m_pOwner->EndDialog(IDCANCEL);
}
