#include "button.h"

#include "qtconvert.h"
#include "toolkitnotify.h"
#include "windowmessage.h"

#include <QKeyEvent>

const UINT Button::BNM_KEYDOWN = RegisterWindowMessage("BravikToolkit-Button-KeyDown");

Button::Button(QWidget* parent) : QPushButton(parent)
{
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, &Button::onClicked);
}

BOOL Button::Create(const CString& text, DWORD /*style*/, const CRect& rect, CWnd* parent, UINT id)
{
    setParent(parent);
    ::SetDlgCtrlID(this, static_cast<int>(id));
    setText(toQString(text));
    setGeometry(rect.toQRect());
    show();
    return TRUE;
}

void Button::SetWindowText(const CString& text)
{
    setText(toQString(text));
}

CString Button::GetWindowText() const
{
    return fromQString(text());
}

CSize Button::GetIdealSize() const
{
    return CSize::fromQSize(sizeHint());
}

void Button::onClicked()
{
    SendCommand(parentWidget(), static_cast<UINT>(::GetDlgCtrlID(this)));
}

bool Button::event(QEvent* e)
{
    // Before QWidget's own handling, which would move the focus on Tab.
    if (e->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(e);
        const UINT vk = VirtualKeyFromQtKey(key->key());
        if (vk != 0) {
            emit keyDown(vk);
            NMKEY nm;
            nm.hdr.hwndFrom = this;
            nm.hdr.idFrom = static_cast<UINT>(::GetDlgCtrlID(this));
            nm.hdr.code = BNM_KEYDOWN;
            nm.nVKey = vk;
            if (SendNotify(parentWidget(), nm.hdr) != 0)
                return true;
        }
    }
    return QPushButton::event(e);
}
