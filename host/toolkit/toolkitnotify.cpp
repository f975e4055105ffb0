#include "toolkitnotify.h"

#include "cmenu.h"
#include "windowmessage.h"

#include <QCoreApplication>

UINT VirtualKeyFromQtKey(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_Backspace: return VK_BACK;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return VK_TAB;
    case Qt::Key_Return:
    case Qt::Key_Enter: return VK_RETURN;
    case Qt::Key_Escape: return VK_ESCAPE;
    case Qt::Key_Space: return VK_SPACE;
    case Qt::Key_Left: return VK_LEFT;
    case Qt::Key_Up: return VK_UP;
    case Qt::Key_Right: return VK_RIGHT;
    case Qt::Key_Down: return VK_DOWN;
    case Qt::Key_Delete: return VK_DELETE;
    default: break;
    }
    if ((qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) || (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z))
        return static_cast<UINT>(qtKey);
    return 0;
}

UINT ToolkitNotifyMessage()
{
    static const UINT msg = RegisterWindowMessage("BravikToolkit-Notify");
    return msg;
}

LRESULT SendNotify(CWnd* target, NMHDR& hdr)
{
    return SendMessage(target, ToolkitNotifyMessage(), static_cast<WPARAM>(hdr.idFrom),
                       reinterpret_cast<LPARAM>(&hdr));
}

NMHDR* NotifyHeaderFrom(UINT msg, LPARAM lParam)
{
    if (msg != ToolkitNotifyMessage() || lParam == 0)
        return nullptr;
    return reinterpret_cast<NMHDR*>(lParam);
}

bool SendCommand(CWnd* target, UINT id)
{
    if (!target)
        return false;
    CommandEvent e(id);
    e.setAccepted(false);
    QCoreApplication::sendEvent(target, &e);
    return e.isAccepted();
}
