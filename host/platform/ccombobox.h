#pragma once

// CComboBox: a QComboBox with the Windows combo-box semantics the dialogs
// rely on.
//  - Sorted (CBS_SORT): AddString inserts in case-blind order and returns the
//    index; InsertString always puts the item at the index given (-1 = end),
//    sorted or not.
//  - Adding items never selects one; SetCurSel(-1) clears the selection and
//    the shown text. Deleting the selected item leaves nothing selected.
//  - FindStringExact / FindString / SelectString search from the item after
//    `start` (-1: from the first), wrap round to the item `start` itself, and
//    ignore case (Unicode-aware). CB_ERR when nothing matches.
//  - Item data: one pointer-sized value per item (SetItemData / SetItemDataPtr).
//    The box never owns or frees what a pointer points to.
//  - Editable boxes (ControlKind::ComboDropDown): the edit text
//    (SetWindowText / GetWindowText) is separate from the items; typing never
//    adds items and there is no auto-completion.
//
// Signals: selectionChanged(index) is CBN_SELCHANGE: it fires when the user
// chooses an item, never for SetCurSel. editChanged() is CBN_EDITCHANGE (the
// user typed in an editable box).

#include "bravik_platform_export.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QComboBox>

constexpr int CB_ERR = -1;
constexpr int CB_ERRSPACE = -2;

class BRAVIK_PLATFORM_EXPORT CComboBox : public QComboBox, public WindowOps<CComboBox>
{
    Q_OBJECT
public:
    explicit CComboBox(QWidget* parent = nullptr, bool editable = false, bool sorted = false);

    bool IsSorted() const { return m_sorted; }
    void SetSorted(bool sorted) { m_sorted = sorted; }

    int AddString(const CString& text);
    int InsertString(int index, const CString& text);
    int DeleteString(UINT index); // remaining count, or CB_ERR
    void ResetContent();
    int GetCount() const;

    int GetCurSel() const;
    int SetCurSel(int index); // the index selected, CB_ERR for -1 or out of range

    int GetLBText(int index, CString& text) const; // length in bytes, or CB_ERR
    CString GetLBText(int index) const;
    int GetLBTextLen(int index) const;

    int FindStringExact(int start, const CString& text) const;
    int FindString(int start, const CString& prefix) const;
    int SelectString(int start, const CString& prefix);

    int SetItemData(int index, DWORD_PTR data);
    DWORD_PTR GetItemData(int index) const; // CB_ERR cast when out of range
    int SetItemDataPtr(int index, void* data);
    void* GetItemDataPtr(int index) const;  // null when out of range

    // The edit text of an editable box; for a drop-down list the selected item's text.
    void SetWindowText(const CString& text);
    void GetWindowText(CString& text) const { text = GetWindowText(); }
    CString GetWindowText() const;

    void ShowDropDown(BOOL show = TRUE);
    BOOL GetDroppedState() const { return m_dropped; }

    void showPopup() override;
    void hidePopup() override;

signals:
    void selectionChanged(int index);
    void editChanged();

private:
    int find(int start, const QString& text, bool exact) const;
    void keepNoSelection(int before);

    bool m_sorted = false;
    bool m_dropped = false;
};
