#pragma once

// ListCtrlEx: the toolkit's report list. Rows are sub-item objects (text,
// radio, image cells) held by a table model and drawn by a delegate; columns
// are Column objects whose widths are fractions of the list's width. A
// SearchHeaderCtrl may take the place of the plain column header
// (ApplyHeader); it is kept aligned with the columns when they are resized or
// scrolled.
//
// The parent hears about clicks as toolkit notifications (NM_CLICK,
// NM_RCLICK, LVN_COLUMNCLICK; see toolkitnotify.h). A click on a title, when
// no parent claims it, sorts by that column through the attached
// ListSortHelper (HandleColumnClicked).
//
// Before each cell is drawn the list calls SetItemTextAndBkgndColor, which
// chooses the text colour (the painter's pen) and fills the background;
// derived lists override it for their own colours.

#include "bravik_toolkit_export.h"

#include "column.h"
#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "listsubitem.h"
#include "windefs.h"

#include <QTableView>

#include <vector>

class ListCtrlModel;
class ListSortHelper;
class SearchHeaderCtrl;
class QPainter;

class BRAVIK_TOOLKIT_EXPORT ListCtrlEx : public QTableView, public WindowOps<ListCtrlEx>
{
    Q_OBJECT
public:
    explicit ListCtrlEx(QWidget* parent = nullptr);
    ~ListCtrlEx() override;

    // Makes the list a child of parent at rect with the control id.
    virtual BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);

    // --- columns
    int InsertColumn(int index, const Column& column);
    int AddColumn(const Column& column) { return InsertColumn(GetColumnCount(), column); }
    bool DeleteColumn(int index);
    int GetColumnCount() const;
    const Column* GetColumn(int index) const;
    // Pixel width of a column now; setting it (as a drag on the title does)
    // changes the column's fraction so the width survives a resize.
    int GetColumnWidth(int index) const;
    void SetColumnWidth(int index, int width);
    // A column's cells in viewport coordinates (left moves with scrolling).
    CRect GetColumnRect(int index) const;
    // Lays the columns out again from their fractions.
    void RecalcLayout();

    // --- rows
    // Appends a row; returns its index.
    int InsertItem(std::vector<ListSubItemPtr> cells, DWORD_PTR data = 0);
    // Inserts a row at index (the end when out of range); returns its index.
    int InsertItemAt(int index, std::vector<ListSubItemPtr> cells, DWORD_PTR data = 0);
    ListSubItem* GetSubItemAt(int row, int column) const;
    bool DeleteItem(int row);
    virtual void DeleteAllItems();
    int GetItemCount() const;
    DWORD_PTR GetItemData(int row) const;
    bool SetItemData(int row, DWORD_PTR data);
    // Repaints a row after its cells changed.
    void UpdateItem(int row);

    void SetItemHeight(int height);
    int GetItemHeight() const { return m_itemHeight; }

    // --- selection
    void SetFullRowSelection(bool on);
    bool HasFullRowSelection() const { return m_fullRowSelect; }
    int GetSelectedCount() const;
    std::vector<int> GetSelectedItems() const; // ascending
    int GetFirstSelectedItem() const;          // -1 when none
    void SetItemSelected(int row, bool selected);
    bool IsItemSelected(int row) const;
    void ClearSelection();
    // LVIS_SELECTED / LVIS_FOCUSED of a row.
    UINT GetItemState(int row) const;

    // The row at a point in the list's client coordinates; -1 for none.
    int HitTest(const CPoint& clientPoint) const;
    // The row's rectangle in the list's client coordinates.
    CRect GetItemRect(int row) const;
    // Where the mouse was (screen coordinates) at the last click the list saw.
    CPoint GetLastClickScreenPos() const { return m_lastClickScreen; }

    // --- colours
    void SetBkColor(COLORREF color);
    COLORREF GetBkColor() const { return m_bkColor; }
    // redraw false while drawing (a colour hook sets it per row).
    void SetTextBkColor(COLORREF color, bool redraw = true)
    {
        m_textBkColor = color;
        if (redraw)
            viewport()->update();
    }
    COLORREF GetTextBkColor() const { return m_textBkColor; }
    void SetTextColor(COLORREF color) { m_textColor = color; viewport()->update(); }
    COLORREF GetTextColor() const { return m_textColor; }

    // Called for every cell before it is drawn: set the text colour (pen) and
    // the text background (painter background), fill rect. state carries
    // LVIS_SELECTED for a selected row.
    virtual void SetItemTextAndBkgndColor(QPainter& dc, const CRect& rect, DWORD state, UINT row);

    // --- header and sorting
    // Puts header in place of the plain column header; the list owns it.
    void ApplyHeader(SearchHeaderCtrl* header);
    SearchHeaderCtrl* GetHeaderCtrl() const { return m_header; }
    void SetSortHelper(ListSortHelper* helper) { m_sortHelper = helper; }
    ListSortHelper* GetListSortHelper() const { return m_sortHelper; }
    // The list's own answer to a title click: toggle the sort on the column and sort.
    virtual void HandleColumnClicked(int column);
    // Sorts by the helper's current sort (nothing without a helper).
    virtual void SortItems();

    // A click on a cell. The base version checks a clicked radio cell (and
    // clears the other radios of its group in the row) and toggles a clicked
    // expand mark (then calls OnExpandToggled).
    virtual void OnItemClick(int row, int column, const CPoint& clientPoint);
    virtual void OnExpandToggled(int row, int column, bool expanded);
    virtual void OnRadioChecked(int row, int column);

    // Lays out a header that changed its height.
    void UpdateHeaderLayout();

    ListCtrlModel* Model() const { return m_model; }

signals:
    void columnsLaidOut();

protected:
    bool event(QEvent* e) override;
    // Registered messages sent to the list (the header's notifications).
    // The base version passes them on to the parent.
    virtual LRESULT OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam);
    void resizeEvent(QResizeEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;

    // Sends a list notification to the parent; returns its answer.
    LRESULT NotifyParent(UINT code, int item, int subItem, const CPoint& pt);

private:
    void placeHeader();

    ListCtrlModel* m_model;
    SearchHeaderCtrl* m_header = nullptr;
    ListSortHelper* m_sortHelper = nullptr;
    int m_itemHeight = 0;
    bool m_fullRowSelect = false;
    bool m_laying = false;
    COLORREF m_bkColor;
    COLORREF m_textBkColor;
    COLORREF m_textColor;
    CPoint m_lastClickScreen;
    int m_pressRow = -1;
    int m_pressColumn = -1;
};
