#pragma once

// The toolkit's one colour scheme: every frame, list and button asks here for
// its colours so the whole workstation stays coherent. Values are COLORREF
// (0x00BBGGRR); convert with toQColor() at the painter.
//
// The palette is a calm slate: light blue-grey bands around near-white
// content, dark slate text, and one muted steel blue for selection and
// focus. Add getters here rather than hard-coding colours in a control.

#include "bravik_toolkit_export.h"

#include "windefs.h"

class BRAVIK_TOOLKIT_EXPORT ColorSchema
{
public:
    static ColorSchema& Instance();

    ColorSchema(const ColorSchema&) = delete;
    ColorSchema& operator=(const ColorSchema&) = delete;

    // Frames: the dialog behind everything, the bands, the page body.
    COLORREF GetDialogBkColor() const;
    COLORREF GetHeaderBkColor() const;
    // The band of a record dialog's header (patient, exam): a shade deeper
    // than the plain header, so the summary reads as the record's own.
    COLORREF GetShortcutBarBkColor() const;
    COLORREF GetFooterBkColor() const;
    COLORREF GetPageBkColor() const;
    COLORREF GetFrameBorderColor() const;
    // The line that separates a band from the body.
    COLORREF GetSeparatorColor() const;

    // Text.
    COLORREF GetTextColorNormal() const;
    COLORREF GetTextColorDisabled() const;
    COLORREF GetTextColorHeader() const;

    // Lists.
    COLORREF GetListCtrlBkColor() const;
    COLORREF GetListViewDarkRowBkColor() const;
    // The other rows of a striped list.
    COLORREF GetListViewLightRowBkColor() const;
    // Text of a selected row.
    COLORREF GetSelectedTextColor() const;
    COLORREF GetListCtrlGridColor() const;
    COLORREF GetTextActiveSelectionBkColor() const;
    COLORREF GetTextActiveSelectionColor() const;
    COLORREF GetTextInactiveSelectionBkColor() const;
    // Extra pixels added to a list row's font height.
    int GetListCtrlItemHeightAdjustment() const;

    // Tabs: the selected tab merges with the page, the others sit back.
    COLORREF GetTabSelectedBkColor() const;
    COLORREF GetTabUnselectedBkColor() const;
    COLORREF GetTabSelectedTextColor() const;
    COLORREF GetTabUnselectedTextColor() const;

    // Push buttons.
    COLORREF GetButtonBkColor() const;
    COLORREF GetButtonHotBkColor() const;
    COLORREF GetButtonPressedBkColor() const;
    COLORREF GetButtonBorderColor() const;
    COLORREF GetButtonFocusBorderColor() const;
    COLORREF GetButtonTextColor() const;
    COLORREF GetButtonDisabledBkColor() const;

private:
    ColorSchema() = default;
};
