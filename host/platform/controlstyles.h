#pragma once

#include "windefs.h"

// Control styles. One bit each, so a single DWORD carries them for any kind;
// they are this platform's own values, not Windows', and only the ones the
// kind understands take effect. Controls are visible and enabled unless
// WS_HIDDEN / WS_DISABLED say otherwise.
constexpr DWORD WS_TABSTOP = 1u << 0;     // reachable with Tab (otherwise click focus only)
constexpr DWORD WS_GROUP = 1u << 1;       // starts a new radio-button group
constexpr DWORD WS_DISABLED = 1u << 2;
constexpr DWORD WS_HIDDEN = 1u << 3;      // created hidden (the template lacks WS_VISIBLE)
constexpr DWORD WS_VSCROLL = 1u << 4;     // multi-line edit / list: vertical scroll bar as needed
constexpr DWORD WS_HSCROLL = 1u << 5;
constexpr DWORD WS_BORDER = 1u << 6;      // edits are framed only with this, as with EDITTEXT's default
constexpr DWORD ES_WANTRETURN = 1u << 7;  // multi-line edit: Enter inserts a line break instead of pressing the default button
constexpr DWORD ES_READONLY = 1u << 8;
constexpr DWORD ES_PASSWORD = 1u << 9;
constexpr DWORD ES_UPPERCASE = 1u << 10;  // typed letters become upper case
constexpr DWORD ES_LOWERCASE = 1u << 11;
constexpr DWORD ES_NUMBER = 1u << 12;     // only digits can be typed
constexpr DWORD ES_AUTOHSCROLL = 1u << 13;
constexpr DWORD ES_AUTOVSCROLL = 1u << 14;
constexpr DWORD ES_CENTER = 1u << 15;
constexpr DWORD ES_RIGHT = 1u << 16;
constexpr DWORD CBS_SORT = 1u << 17;      // combo box: AddString keeps the items sorted
constexpr DWORD LBS_SORT = CBS_SORT;      // list box: the same meaning
constexpr DWORD CBS_AUTOHSCROLL = 1u << 18;
constexpr DWORD LBS_MULTIPLESEL = 1u << 19;
constexpr DWORD LBS_EXTENDEDSEL = 1u << 20;
constexpr DWORD LBS_NOTIFY = 1u << 21;
constexpr DWORD SS_CENTER = 1u << 22;
constexpr DWORD SS_RIGHT = 1u << 23;
constexpr DWORD SS_NOPREFIX = 1u << 24;   // static text shows '&' literally
constexpr DWORD SS_SUNKEN = 1u << 25;
constexpr DWORD SS_CENTERIMAGE = 1u << 26; // static text centred vertically
constexpr DWORD BS_MULTILINE = 1u << 27;
constexpr DWORD BS_LEFTTEXT = 1u << 28;
