#pragma once

// HFTabbedDlg: the header-footer frame with pages. Below the header runs a
// strip of tabs, one per page; the body shows the active page only. Moving to
// another tab first asks the active page (OnKillActive: FALSE keeps it), then
// tells the new one (OnSetActive). Pages are not owned.

#include "bravik_toolkit_export.h"

#include "hfdlg.h"

#include "cstring.h"

#include <vector>

class BasePage;
class TabButton;

class BRAVIK_TOOLKIT_EXPORT HFTabbedDlg : public HFDlg
{
    Q_OBJECT
public:
    static constexpr int TAB_STRIP_HEIGHT = 28;
    // Left inset of the first tab and space between tabs.
    static constexpr int TAB_SPACING = 4;

    HFTabbedDlg();
    ~HFTabbedDlg() override;

    // Adds a page with its tab (the page's title when title is empty);
    // returns its index. The first page added becomes active.
    int AddPage(BasePage* page, const CString& title = CString());
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    BasePage* GetPage(int index) const;
    TabButton* GetTab(int index) const;

    int GetActiveIndex() const { return m_active; }
    BasePage* GetActivePage() const { return GetPage(m_active); }
    // FALSE when the index is out of range or the active page refused to go.
    BOOL SetActivePage(int index);
    // The page whose tab reads tabName (exactly); -1 when none.
    int FindPage(const CString& tabName) const;
    // Activates the page whose tab reads tabName; FALSE when there is none or
    // the active page refused to go.
    BOOL ActivatePage(const CString& tabName);

    CRect GetBodyRect() const override;
    void RecalcLayout() override;

signals:
    void pageChanged(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Entry
    {
        BasePage* page;
        TabButton* tab;
        CString title;
    };
    std::vector<Entry> m_pages;
    int m_active = -1;
};
