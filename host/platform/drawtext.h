#pragma once

// DrawText on a QPainter, with the Windows format flags the module uses.
// With DT_CALCRECT nothing is drawn: rect keeps its left and top and gets the
// right and bottom of the text's extent (with DT_WORDBREAK the width given is
// the wrapping width). Returns the text height. '&' marks a mnemonic unless
// DT_NOPREFIX. The painter's font and pen are used; the background is never
// painted (transparent mode).

#include "bravik_platform_export.h"
#include "crect.h"
#include "cstring.h"
#include "windefs.h"

class QFont;
class QPainter;

constexpr UINT DT_TOP = 0x0000u;
constexpr UINT DT_LEFT = 0x0000u;
constexpr UINT DT_CENTER = 0x0001u;
constexpr UINT DT_RIGHT = 0x0002u;
constexpr UINT DT_VCENTER = 0x0004u;
constexpr UINT DT_BOTTOM = 0x0008u;
constexpr UINT DT_WORDBREAK = 0x0010u;
constexpr UINT DT_SINGLELINE = 0x0020u;
constexpr UINT DT_EXPANDTABS = 0x0040u;
constexpr UINT DT_NOCLIP = 0x0100u;
constexpr UINT DT_CALCRECT = 0x0400u;
constexpr UINT DT_NOPREFIX = 0x0800u;
constexpr UINT DT_END_ELLIPSIS = 0x8000u;

BRAVIK_PLATFORM_EXPORT int DrawText(QPainter& painter, const CString& text, CRect& rect, UINT format);
// The same measurement without a painter.
BRAVIK_PLATFORM_EXPORT int CalcTextRect(const QFont& font, const CString& text, CRect& rect, UINT format);

// Word-wrapped text: measures the rectangle the text needs inside area's width
// (DT_CALCRECT | DT_WORDBREAK), then draws it there. Returns that rectangle.
BRAVIK_PLATFORM_EXPORT CRect DrawTextWrapped(QPainter& painter, const CString& text, const CRect& area,
                                             UINT format = DT_LEFT | DT_NOPREFIX);
