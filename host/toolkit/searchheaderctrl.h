#pragma once

// SearchHeaderCtrl: the header above a ListCtrlEx's columns. Each column has
// a title button (a click on it asks to sort; a drag on its right edge
// resizes the column) and, below it, a search cell (SearchHeaderItem) the
// user types criteria into. A query button at the right end of the titles
// asks for the search. The header follows the list's columns when they are
// resized or scrolled.
//
// Keyboard: Tab in a cell's editor commits it and edits the next cell that
// takes the focus (GetNextTabIndex); Tab in the last one commits it and
// reports SHCNM_LASTTABITEM. Enter commits and reports the query button;
// Escape drops the edit.
//
// Notifications are registered window messages sent to the parent (the
// list, which passes on what it does not handle): SHCNM_QUERYBUTTON_CLICKED
// (wParam: the header's id), SHCNM_TITLE_CLICKED (wParam: the column),
// SHCNM_LASTTABITEM (wParam: the cell that was left).

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QWidget>

#include <map>
#include <memory>
#include <vector>

class ListCtrlEx;
class QToolButton;
class SearchHeaderItem;

class BRAVIK_TOOLKIT_EXPORT SearchHeaderCtrl : public QWidget, public WindowOps<SearchHeaderCtrl>
{
    Q_OBJECT
public:
    static const UINT SHCNM_QUERYBUTTON_CLICKED;
    static const UINT SHCNM_TITLE_CLICKED;
    static const UINT SHCNM_LASTTABITEM;

    // States: titles only, or titles with their search cells.
    enum
    {
        STATE_COLLAPSED = 0,
        STATE_EXPANDED = 1
    };

    explicit SearchHeaderCtrl(QWidget* parent = nullptr);
    ~SearchHeaderCtrl() override;

    virtual BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);
    // Called by ListCtrlEx::ApplyHeader.
    void AttachToList(ListCtrlEx* list);
    ListCtrlEx* GetList() const { return m_list; }

    // Items (one per column, in column order); the header owns them.
    int InsertItem(int index, SearchHeaderItem* item);
    int AddItem(SearchHeaderItem* item) { return InsertItem(GetItemCount(), item); }
    int GetItemCount() const { return static_cast<int>(m_items.size()); }
    SearchHeaderItem* GetItem(int index) const;
    // The item whose title is title; null when none.
    SearchHeaderItem* FindItem(const CString& title) const;

    void SetState(int state);
    int GetState() const { return m_state; }

    // One band's natural height for the header's font.
    int CalcHeaderHeight() const;
    // The header's height expanded and collapsed, and the title band's.
    void SetHeights(int expanded, int collapsed, int titleButton);
    int GetHeaderHeight() const;
    int GetTitleButtonHeight() const { return m_titleHeight; }

    void SetHeaderFont(const QFont& font);

    // title -> committed text, for every cell.
    void GetQueryParams(std::map<CString, CString>& params) const;
    std::map<CString, CString> GetQueryParams() const;

    // Commits (or drops) the edit in progress, if any.
    void EndEditItem(bool commit = true);
    // Edits cell index; false when it cannot take the focus.
    bool BeginEditItem(int index);
    int GetEditItem() const { return m_editing; }
    // The first cell at or after start that takes the focus; -1 when none.
    int GetNextTabIndex(int start) const;

    void SetSortIndicator(int column, bool ascending);

    // Rectangles in the header's coordinates.
    CRect GetTitleRect(int index) const;
    CRect GetCellRect(int index) const;
    QToolButton* GetQueryButton() const { return m_queryButton; }

    // Lays the cells out again over the list's columns.
    void SyncToList();

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

    LRESULT Notify(UINT msg, WPARAM wParam);

private:
    int columnLeft(int index) const;
    int columnWidth(int index) const;
    int dividerAt(int x) const;
    void placeEditor();
    void watchItem(SearchHeaderItem* item);

    ListCtrlEx* m_list = nullptr;
    std::vector<std::unique_ptr<SearchHeaderItem>> m_items;
    QToolButton* m_queryButton;
    int m_state = STATE_EXPANDED;
    int m_expandedHeight = 0;
    int m_collapsedHeight = 0;
    int m_titleHeight = 0;
    int m_editing = -1;
    int m_sortColumn = -1;
    bool m_sortAscending = true;
    int m_pressTitle = -1;
    int m_dragColumn = -1;
};
