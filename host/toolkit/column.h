#pragma once

// One column of a ListCtrlEx. Its width is a fraction of the list's width
// (the list lays the columns out again whenever it is resized), never less
// than the minimum width in pixels.

#include "bravik_toolkit_export.h"

#include "cstring.h"
#include "drawtext.h"
#include "windefs.h"

class BRAVIK_TOOLKIT_EXPORT Column
{
public:
    Column() = default;
    Column(const CString& title, double widthFraction, int minWidth = 0, UINT format = DT_LEFT)
        : m_title(title), m_fraction(widthFraction), m_minWidth(minWidth), m_format(format) {}

    const CString& GetTitle() const { return m_title; }
    void SetTitle(const CString& title) { m_title = title; }
    double GetWidthFraction() const { return m_fraction; }
    void SetWidthFraction(double fraction) { m_fraction = fraction < 0 ? 0 : fraction; }
    int GetMinWidth() const { return m_minWidth; }
    void SetMinWidth(int width) { m_minWidth = width < 0 ? 0 : width; }
    UINT GetFormat() const { return m_format; }
    void SetFormat(UINT format) { m_format = format; }

private:
    CString m_title;
    double m_fraction = 0.1;
    int m_minWidth = 0;
    UINT m_format = DT_LEFT;
};
