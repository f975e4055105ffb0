#pragma once

// Notifications from the toolkit's controls to their parent window, shaped
// like the list and button notifications the module's pages were written
// against: a header (sender, its control id, a code) followed by the
// control's own fields. They travel synchronously as one registered window
// message whose wParam is the sender's id and whose lParam points at the
// header; commands (a button press, a query request) travel as the
// platform's CommandEvent.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "windefs.h"

struct NMHDR
{
    CWnd* hwndFrom = nullptr;
    UINT idFrom = 0;
    UINT code = 0;
};

// A list notification: the row and column concerned, and where it happened
// (in the list's client coordinates).
struct NMLISTVIEW
{
    NMHDR hdr;
    int iItem = -1;
    int iSubItem = 0;
    UINT uNewState = 0;
    UINT uOldState = 0;
    CPoint ptAction;
    LPARAM lParam = 0;
};

// A key went down on a control.
struct NMKEY
{
    NMHDR hdr;
    UINT nVKey = 0;
    UINT uFlags = 0;
};

// Notification codes (the values the list view has always used).
constexpr UINT NM_CLICK = static_cast<UINT>(-2);
constexpr UINT NM_DBLCLK = static_cast<UINT>(-3);
constexpr UINT NM_RCLICK = static_cast<UINT>(-5);
constexpr UINT LVN_ITEMCHANGED = static_cast<UINT>(-101);
constexpr UINT LVN_COLUMNCLICK = static_cast<UINT>(-108);

// Item states.
constexpr UINT LVIS_FOCUSED = 0x0001u;
constexpr UINT LVIS_SELECTED = 0x0002u;

// Virtual key codes the controls report.
constexpr UINT VK_BACK = 0x08u;
constexpr UINT VK_TAB = 0x09u;
constexpr UINT VK_RETURN = 0x0Du;
constexpr UINT VK_ESCAPE = 0x1Bu;
constexpr UINT VK_SPACE = 0x20u;
constexpr UINT VK_LEFT = 0x25u;
constexpr UINT VK_UP = 0x26u;
constexpr UINT VK_RIGHT = 0x27u;
constexpr UINT VK_DOWN = 0x28u;
constexpr UINT VK_DELETE = 0x2Eu;

// The Qt key as a virtual key code (letters and digits keep their ASCII
// value); 0 when it has none.
BRAVIK_TOOLKIT_EXPORT UINT VirtualKeyFromQtKey(int qtKey);

// The registered message that carries notifications.
BRAVIK_TOOLKIT_EXPORT UINT ToolkitNotifyMessage();

// Sends hdr to target and returns its answer (0 when nobody handled it).
BRAVIK_TOOLKIT_EXPORT LRESULT SendNotify(CWnd* target, NMHDR& hdr);
// The NMHDR a notification message carries, or null for any other message.
BRAVIK_TOOLKIT_EXPORT NMHDR* NotifyHeaderFrom(UINT msg, LPARAM lParam);

// Sends the command id to target as a CommandEvent; true when it was accepted.
BRAVIK_TOOLKIT_EXPORT bool SendCommand(CWnd* target, UINT id);
