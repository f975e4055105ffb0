#include "ostreldlg.h"

#include "hfdlg.h"

OstrelDlg::OstrelDlg(const DialogTemplate& tpl, CWnd* parent) : OstrelDlg(tpl, nullptr, parent) {}

OstrelDlg::OstrelDlg(UINT templateId, CWnd* parent) : ControlParentModalDlg(templateId, parent), m_pFrame(new HFDlg)
{
}

OstrelDlg::OstrelDlg(const DialogTemplate& tpl, HFDlg* frame, CWnd* parent)
    : ControlParentModalDlg(tpl, parent), m_pFrame(frame ? frame : new HFDlg)
{
}

OstrelDlg::~OstrelDlg()
{
    // The frame is a child window by now; deleting it here (rather than with
    // the children) keeps the ownership explicit and the order predictable.
    delete m_pFrame;
}

BOOL OstrelDlg::OnInitDialog()
{
    ControlParentModalDlg::OnInitDialog();
    CRect client;
    GetClientRect(client);
    m_pFrame->Create(this, client);
    m_pFrame->RecalcLayout();
    m_pFrame->show();
    return TRUE;
}

void OstrelDlg::OnSize(UINT, int cx, int cy)
{
    if (m_pFrame && m_pFrame->IsCreated())
        HFDlg::PlaceWindow(m_pFrame, QRect(0, 0, cx, cy));
}
