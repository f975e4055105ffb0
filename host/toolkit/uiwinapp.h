#pragma once

// UIWinApp: the application base of a module with dialogs. It keeps the
// module's look-and-feel switches as one flags word; the toolkit asks the
// application through the virtual accessors below, so a module decides by
// overriding them. The base answers with the toolkit's plain look (every
// switch off) and a 3-second tooltip.

#include "bravik_toolkit_export.h"

#include "basewinapp.h"

// Bits of the flags word.
constexpr DWORD UIF_FLAT_BUTTONS = 0x01;
constexpr DWORD UIF_GRADIENT_HEADERS = 0x02;
constexpr DWORD UIF_STRIPED_LISTS = 0x04;
constexpr DWORD UIF_HOT_TRACKING = 0x08;
constexpr DWORD UIF_KEYBOARD_CUES = 0x10;
constexpr DWORD UIF_HEADER_ICONS = 0x20;
constexpr DWORD UIF_ALL = 0x3F;

class BRAVIK_TOOLKIT_EXPORT UIWinApp : public BaseWinApp
{
public:
    explicit UIWinApp(const char* appName = nullptr);
    ~UIWinApp() override;

    DWORD GetUIFlags() const { return m_dwUIFlags; }
    void SetUIFlags(DWORD flags) { m_dwUIFlags = flags; }

    // How long a tooltip stays up, in milliseconds.
    virtual UINT GetToolTipDisplayTime() const;
    // Each answers its bit (non-zero) or 0.
    virtual DWORD UseFlatButtons() const;
    virtual DWORD UseGradientHeaders() const;
    virtual DWORD UseStripedLists() const;
    virtual DWORD UseHotTracking() const;
    virtual DWORD UseKeyboardCues() const;
    virtual DWORD UseHeaderIcons() const;

protected:
    // Every switch on until the module says otherwise.
    DWORD m_dwUIFlags = UIF_ALL;
};
