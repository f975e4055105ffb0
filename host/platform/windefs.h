#pragma once

// The Windows user-interface vocabulary the module's code is written in,
// realised on Qt: a window is a QWidget, and the integer types, result codes
// and message-box / menu flags keep their Windows names and values so the
// dialog code reads as it always has.

#include "bravik_platform_export.h"

#include <QColor>
#include <QWidget>

#include <cstdint>

using CWnd = QWidget;

using BOOL = int;
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using UINT = unsigned int;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using DWORD_PTR = std::uintptr_t;
using COLORREF = DWORD;

// Dialog and message-box results.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Message-box types: buttons (low nibble), icon, default button.
constexpr UINT MB_OK = 0x00000000u;
constexpr UINT MB_OKCANCEL = 0x00000001u;
constexpr UINT MB_ABORTRETRYIGNORE = 0x00000002u;
constexpr UINT MB_YESNOCANCEL = 0x00000003u;
constexpr UINT MB_YESNO = 0x00000004u;
constexpr UINT MB_RETRYCANCEL = 0x00000005u;
constexpr UINT MB_ICONHAND = 0x00000010u;
constexpr UINT MB_ICONSTOP = MB_ICONHAND;
constexpr UINT MB_ICONERROR = MB_ICONHAND;
constexpr UINT MB_ICONQUESTION = 0x00000020u;
constexpr UINT MB_ICONEXCLAMATION = 0x00000030u;
constexpr UINT MB_ICONWARNING = MB_ICONEXCLAMATION;
constexpr UINT MB_ICONASTERISK = 0x00000040u;
constexpr UINT MB_ICONINFORMATION = MB_ICONASTERISK;
constexpr UINT MB_DEFBUTTON1 = 0x00000000u;
constexpr UINT MB_DEFBUTTON2 = 0x00000100u;
constexpr UINT MB_DEFBUTTON3 = 0x00000200u;
constexpr UINT MB_TYPEMASK = 0x0000000Fu;
constexpr UINT MB_ICONMASK = 0x000000F0u;
constexpr UINT MB_DEFMASK = 0x00000F00u;

// ShowWindow commands.
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOW = 5;
constexpr int SW_SHOWNA = 8;

// Check-box states (GetCheck / SetCheck / DDX_Check).
constexpr int BST_UNCHECKED = 0;
constexpr int BST_CHECKED = 1;
constexpr int BST_INDETERMINATE = 2;

// Menu flags (CMenu).
constexpr UINT MF_STRING = 0x0000u;
constexpr UINT MF_ENABLED = 0x0000u;
constexpr UINT MF_UNCHECKED = 0x0000u;
constexpr UINT MF_BYCOMMAND = 0x0000u;
constexpr UINT MF_GRAYED = 0x0001u;
constexpr UINT MF_DISABLED = 0x0002u;
constexpr UINT MF_CHECKED = 0x0008u;
constexpr UINT MF_POPUP = 0x0010u;
constexpr UINT MF_BYPOSITION = 0x0400u;
constexpr UINT MF_SEPARATOR = 0x0800u;

// TrackPopupMenu flags.
constexpr UINT TPM_LEFTALIGN = 0x0000u;
constexpr UINT TPM_LEFTBUTTON = 0x0000u;
constexpr UINT TPM_RIGHTBUTTON = 0x0002u;
constexpr UINT TPM_CENTERALIGN = 0x0004u;
constexpr UINT TPM_RIGHTALIGN = 0x0008u;
constexpr UINT TPM_NONOTIFY = 0x0080u;
constexpr UINT TPM_RETURNCMD = 0x0100u;

// COLORREF is 0x00BBGGRR: red in the lowest byte.
constexpr COLORREF RGB(int r, int g, int b)
{
    return static_cast<COLORREF>((r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16));
}
constexpr BYTE GetRValue(COLORREF c) { return static_cast<BYTE>(c & 0xFF); }
constexpr BYTE GetGValue(COLORREF c) { return static_cast<BYTE>((c >> 8) & 0xFF); }
constexpr BYTE GetBValue(COLORREF c) { return static_cast<BYTE>((c >> 16) & 0xFF); }

inline QColor toQColor(COLORREF c) { return QColor(GetRValue(c), GetGValue(c), GetBValue(c)); }
inline COLORREF fromQColor(const QColor& c) { return RGB(c.red(), c.green(), c.blue()); }

// MulDiv as Windows rounds it: a*b/c to the nearest integer, halves away from zero.
constexpr int MulDiv(int a, int b, int c)
{
    if (c == 0)
        return -1;
    const long long p = static_cast<long long>(a) * b;
    const long long half = (c > 0 ? c : -c) / 2;
    const bool negative = (p < 0) != (c < 0);
    const long long ap = p < 0 ? -p : p;
    const long long ac = c < 0 ? -c : c;
    const long long q = (ap + half) / ac;
    return static_cast<int>(negative ? -q : q);
}
