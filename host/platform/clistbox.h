#pragma once

// CListBox: a list box over QListWidget with the Windows list-box semantics
// (the same rules as CComboBox for sorting, searching and item data).
// selectionChanged(index) is LBN_SELCHANGE (user only); doubleClicked(index)
// is LBN_DBLCLK.

#include "bravik_platform_export.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QListWidget>

constexpr int LB_ERR = -1;

class BRAVIK_PLATFORM_EXPORT CListBox : public QListWidget, public WindowOps<CListBox>
{
    Q_OBJECT
public:
    explicit CListBox(QWidget* parent = nullptr, bool sorted = false, bool multiSelect = false);

    bool IsSorted() const { return m_sorted; }
    void SetSorted(bool sorted) { m_sorted = sorted; }

    int AddString(const CString& text);
    int InsertString(int index, const CString& text);
    int DeleteString(UINT index);
    void ResetContent();
    int GetCount() const;

    int GetCurSel() const;
    int SetCurSel(int index);
    // Multiple-selection boxes.
    int GetSel(int index) const;
    int SetSel(int index, BOOL select = TRUE);
    int GetSelCount() const;

    int GetText(int index, CString& text) const;
    CString GetText(int index) const;

    int FindStringExact(int start, const CString& text) const;
    int FindString(int start, const CString& prefix) const;

    int SetItemData(int index, DWORD_PTR data);
    DWORD_PTR GetItemData(int index) const;
    int SetItemDataPtr(int index, void* data);
    void* GetItemDataPtr(int index) const;

signals:
    void selectionChanged(int index);
    void doubleClicked(int index);

private:
    int find(int start, const QString& text, bool exact) const;
    bool m_sorted = false;
    bool m_programmatic = false;
};
