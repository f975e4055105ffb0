#include "controlparentmodaldlg.h"

#include "colorschema.h"

#include <QPalette>
#include <QResizeEvent>

namespace {

void applyDialogColours(QWidget* w)
{
    QPalette pal = w->palette();
    pal.setColor(QPalette::Window, toQColor(ColorSchema::Instance().GetDialogBkColor()));
    pal.setColor(QPalette::WindowText, toQColor(ColorSchema::Instance().GetTextColorNormal()));
    w->setPalette(pal);
    w->setAutoFillBackground(true);
}

} // namespace

ControlParentModalDlg::ControlParentModalDlg(const DialogTemplate& tpl, CWnd* parent) : CDialog(tpl, parent)
{
    applyDialogColours(this);
}

ControlParentModalDlg::ControlParentModalDlg(UINT templateId, CWnd* parent) : CDialog(templateId, parent)
{
    applyDialogColours(this);
}

ControlParentModalDlg::ControlParentModalDlg(CWnd* parent) : CDialog(parent) { applyDialogColours(this); }

ControlParentModalDlg::~ControlParentModalDlg() = default;

void ControlParentModalDlg::OnSize(UINT, int, int) {}

void ControlParentModalDlg::resizeEvent(QResizeEvent* event)
{
    CDialog::resizeEvent(event);
    OnSize(SIZE_RESTORED_DLG, event->size().width(), event->size().height());
}
