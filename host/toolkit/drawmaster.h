#pragma once

// The toolkit's fonts and the few drawing helpers every control shares.
// Fonts derive from the application font at first use (tests pin it), so a
// control never builds its own and sizes agree across the workstation.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "windefs.h"

#include <QFont>

class QPainter;

class BRAVIK_TOOLKIT_EXPORT DrawMaster
{
public:
    // Body text of frames, buttons and lists.
    static const QFont& GetNormalFont();
    static const QFont& GetBoldFont();
    // Column headers and captions that must stand out a little.
    static const QFont& GetHeaderFont();
    // Hints and secondary text.
    static const QFont& GetSmallFont();

    // Height of one line of text in the given font, in pixels.
    static int GetFontHeight(const QFont& font);

    static void FillSolidRect(QPainter& painter, const CRect& rect, COLORREF color);
    // A one-pixel frame drawn inside rect.
    static void DrawFrameRect(QPainter& painter, const CRect& rect, COLORREF color);
    // A horizontal line at y from left to right (exclusive).
    static void DrawHLine(QPainter& painter, int left, int right, int y, COLORREF color);

    // Forgets the fonts so the next call rebuilds them from the application
    // font (after the host changed it).
    static void ResetFonts();
};
