#include "cwnd.h"

#include "cbutton.h"
#include "ccombobox.h"
#include "cedit.h"
#include "cstatic.h"
#include "qtconvert.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVariant>

namespace {
constexpr const char* kCtrlIdProperty = "bravikDlgCtrlId";
}

BOOL EnableWindow(CWnd* w, BOOL enable)
{
    if (!w)
        return FALSE;
    const BOOL wasDisabled = !w->isEnabled();
    w->setEnabled(enable != FALSE);
    return wasDisabled;
}

BOOL ShowWindow(CWnd* w, int cmdShow)
{
    if (!w)
        return FALSE;
    const BOOL wasVisible = !w->isHidden();
    w->setVisible(cmdShow != SW_HIDE);
    return wasVisible;
}

BOOL IsWindowVisible(const CWnd* w) { return w && w->isVisible(); }
BOOL IsWindowHidden(const CWnd* w) { return !w || w->isHidden(); }
BOOL IsWindowEnabled(const CWnd* w) { return w && w->isEnabled(); }

void SetFocus(CWnd* w)
{
    if (w)
        w->setFocus(Qt::OtherFocusReason);
}

CWnd* GetFocus() { return QApplication::focusWidget(); }

void SetWindowText(CWnd* w, const CString& text)
{
    if (!w)
        return;
    if (auto* e = qobject_cast<CEdit*>(w))
        e->SetWindowText(text);
    else if (auto* s = qobject_cast<CStatic*>(w))
        s->SetWindowText(text);
    else if (auto* b = qobject_cast<CButton*>(w))
        b->SetWindowText(text);
    else if (auto* c = qobject_cast<CComboBox*>(w))
        c->SetWindowText(text);
    else if (auto* l = qobject_cast<QLabel*>(w))
        l->setText(toQString(text));
    else if (auto* ab = qobject_cast<QAbstractButton*>(w))
        ab->setText(toQString(text));
    else if (auto* le = qobject_cast<QLineEdit*>(w))
        le->setText(toQString(text));
    else if (auto* pe = qobject_cast<QPlainTextEdit*>(w))
        pe->setPlainText(toQString(text));
    else if (auto* g = qobject_cast<QGroupBox*>(w))
        g->setTitle(toQString(text));
    else
        w->setWindowTitle(toQString(text));
}

void GetWindowText(const CWnd* w, CString& text) { text = GetWindowText(w); }

CString GetWindowText(const CWnd* w)
{
    if (!w)
        return CString();
    if (auto* e = qobject_cast<const CEdit*>(w))
        return e->GetWindowText();
    if (auto* s = qobject_cast<const CStatic*>(w))
        return s->GetWindowText();
    if (auto* b = qobject_cast<const CButton*>(w))
        return b->GetWindowText();
    if (auto* c = qobject_cast<const CComboBox*>(w))
        return c->GetWindowText();
    if (auto* l = qobject_cast<const QLabel*>(w))
        return fromQString(l->text());
    if (auto* ab = qobject_cast<const QAbstractButton*>(w))
        return fromQString(ab->text());
    if (auto* le = qobject_cast<const QLineEdit*>(w))
        return fromQString(le->text());
    if (auto* pe = qobject_cast<const QPlainTextEdit*>(w))
        return fromQString(pe->toPlainText());
    if (auto* g = qobject_cast<const QGroupBox*>(w))
        return fromQString(g->title());
    return fromQString(w->windowTitle());
}

void MoveWindow(CWnd* w, const CRect& r, BOOL repaint)
{
    if (!w)
        return;
    w->setGeometry(r.toQRect());
    if (repaint)
        w->update();
}

void MoveWindow(CWnd* w, int x, int y, int width, int height, BOOL repaint)
{
    MoveWindow(w, CRect(x, y, x + width, y + height), repaint);
}

void GetClientRect(const CWnd* w, CRect& r)
{
    r = w ? CRect(0, 0, w->width(), w->height()) : CRect();
}

void GetWindowRect(const CWnd* w, CRect& r)
{
    if (!w) {
        r = CRect();
        return;
    }
    const QPoint topLeft = w->mapToGlobal(QPoint(0, 0));
    r = CRect(topLeft.x(), topLeft.y(), topLeft.x() + w->width(), topLeft.y() + w->height());
}

void ScreenToClient(const CWnd* w, CPoint& p)
{
    if (w)
        p = CPoint::fromQPoint(w->mapFromGlobal(p.toQPoint()));
}

void ScreenToClient(const CWnd* w, CRect& r)
{
    CPoint tl = r.TopLeft();
    ScreenToClient(w, tl);
    r.OffsetRect(tl.x - r.left, tl.y - r.top);
}

void ClientToScreen(const CWnd* w, CPoint& p)
{
    if (w)
        p = CPoint::fromQPoint(w->mapToGlobal(p.toQPoint()));
}

void ClientToScreen(const CWnd* w, CRect& r)
{
    CPoint tl = r.TopLeft();
    ClientToScreen(w, tl);
    r.OffsetRect(tl.x - r.left, tl.y - r.top);
}

void Invalidate(CWnd* w, BOOL)
{
    if (w)
        w->update();
}

void UpdateWindow(CWnd* w)
{
    if (w)
        w->repaint();
}

int GetDlgCtrlID(const CWnd* w)
{
    if (!w)
        return 0;
    const QVariant v = w->property(kCtrlIdProperty);
    return v.isValid() ? v.toInt() : 0;
}

void SetDlgCtrlID(CWnd* w, int id)
{
    if (w)
        w->setProperty(kCtrlIdProperty, id);
}
