#include "colorschema.h"

ColorSchema& ColorSchema::Instance()
{
    static ColorSchema schema;
    return schema;
}

COLORREF ColorSchema::GetDialogBkColor() const { return RGB(0xE6, 0xEB, 0xF0); }
COLORREF ColorSchema::GetHeaderBkColor() const { return RGB(0xDA, 0xE1, 0xE9); }
COLORREF ColorSchema::GetShortcutBarBkColor() const { return RGB(0xC8, 0xD5, 0xE3); }
COLORREF ColorSchema::GetFooterBkColor() const { return RGB(0xE6, 0xEB, 0xF0); }
COLORREF ColorSchema::GetPageBkColor() const { return RGB(0xF6, 0xF8, 0xFA); }
COLORREF ColorSchema::GetFrameBorderColor() const { return RGB(0xB4, 0xBF, 0xCB); }
COLORREF ColorSchema::GetSeparatorColor() const { return RGB(0xC3, 0xCC, 0xD6); }

COLORREF ColorSchema::GetTextColorNormal() const { return RGB(0x1E, 0x29, 0x36); }
COLORREF ColorSchema::GetTextColorDisabled() const { return RGB(0x8B, 0x95, 0xA1); }
COLORREF ColorSchema::GetTextColorHeader() const { return RGB(0x15, 0x27, 0x40); }

COLORREF ColorSchema::GetListCtrlBkColor() const { return RGB(0xFF, 0xFF, 0xFF); }
COLORREF ColorSchema::GetListViewDarkRowBkColor() const { return RGB(0xEF, 0xF3, 0xF7); }
COLORREF ColorSchema::GetListViewLightRowBkColor() const { return RGB(0xFF, 0xFF, 0xFF); }
COLORREF ColorSchema::GetSelectedTextColor() const { return RGB(0xFF, 0xFF, 0xFF); }
COLORREF ColorSchema::GetListCtrlGridColor() const { return RGB(0xD9, 0xDF, 0xE6); }
COLORREF ColorSchema::GetTextActiveSelectionBkColor() const { return RGB(0x3A, 0x6A, 0x9B); }
COLORREF ColorSchema::GetTextActiveSelectionColor() const { return RGB(0xFF, 0xFF, 0xFF); }
COLORREF ColorSchema::GetTextInactiveSelectionBkColor() const { return RGB(0xC9, 0xD6, 0xE4); }
int ColorSchema::GetListCtrlItemHeightAdjustment() const { return 4; }

COLORREF ColorSchema::GetTabSelectedBkColor() const { return RGB(0xF6, 0xF8, 0xFA); }
COLORREF ColorSchema::GetTabUnselectedBkColor() const { return RGB(0xCF, 0xD8, 0xE2); }
COLORREF ColorSchema::GetTabSelectedTextColor() const { return RGB(0x1E, 0x29, 0x36); }
COLORREF ColorSchema::GetTabUnselectedTextColor() const { return RGB(0x4A, 0x57, 0x66); }

COLORREF ColorSchema::GetButtonBkColor() const { return RGB(0xF9, 0xFA, 0xFC); }
COLORREF ColorSchema::GetButtonHotBkColor() const { return RGB(0xE4, 0xEC, 0xF5); }
COLORREF ColorSchema::GetButtonPressedBkColor() const { return RGB(0xCD, 0xDA, 0xE8); }
COLORREF ColorSchema::GetButtonBorderColor() const { return RGB(0x9A, 0xA8, 0xB8); }
COLORREF ColorSchema::GetButtonFocusBorderColor() const { return RGB(0x3A, 0x6A, 0x9B); }
COLORREF ColorSchema::GetButtonTextColor() const { return RGB(0x1E, 0x29, 0x36); }
COLORREF ColorSchema::GetButtonDisabledBkColor() const { return RGB(0xEC, 0xEF, 0xF2); }
