#include "exam/examframe.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/resource.h"

#include "basetabheader.h"
#include "cdialog.h"
#include "hftabbeddlg.h"
#include "qtconvert.h"
#include "stringtable.h"

namespace ExamFrame {

namespace {
constexpr int kHeaderHeight = 64;
constexpr int kFooterHeight = 50;
constexpr COLORREF kHeaderBackground = 0xFFFFFF;
constexpr COLORREF kFooterBackground = 0xD4D4D4;
} // namespace

void Create(CDialog& dlg, HFTabbedDlg& frame, int width, int height)
{
    const QPoint topLeft = dlg.pos();
    dlg.resize(width, height);
    dlg.move(topLeft);
    CRect client;
    dlg.GetClientRect(client);
    frame.Create(&dlg, client);
    frame.ShowWindow(SW_SHOW);
    frame.setEnabled(true);
}

void ApplyBands(CDialog& owner, HFTabbedDlg& frame, BaseTabHeader& header, DialogFooter& footer)
{
    header.SetHeight(kHeaderHeight);
    header.m_clrBackground = kHeaderBackground;
    header.m_clrText = 0;
    header.SetIcon(LoadHeaderIcon());
    frame.SetHeader(&header);
    footer.SetHeight(kFooterHeight);
    footer.SetOKText(LoadString(IDS_OK));
    footer.SetCancelText(LoadString(IDS_CANCEL));
    frame.SetFooter(&footer);
    footer.SetOwner(&owner);
    QPalette pal = footer.palette();
    pal.setColor(QPalette::Window, toQColor(kFooterBackground));
    footer.setPalette(pal);
    footer.setAutoFillBackground(true);
    CRect client;
    owner.GetClientRect(client);
    HFDlg::PlaceWindow(&frame, client.toQRect());
    frame.RecalcLayout();
}

} // namespace ExamFrame
