#include "hftabbeddlg.h"

#include "basepage.h"
#include "colorschema.h"
#include "drawmaster.h"
#include "tabbutton.h"

#include <QPainter>

HFTabbedDlg::HFTabbedDlg() = default;

HFTabbedDlg::~HFTabbedDlg() = default;

int HFTabbedDlg::AddPage(BasePage* page, const CString& title)
{
    if (!page)
        return -1;
    const int index = GetPageCount();
    if (!page->IsCreated())
        page->Create(this);
    else if (page->parentWidget() != this)
        page->setParent(this);
    page->hide();

    auto* tab = new TabButton(this);
    const CString name = title.IsEmpty() ? page->GetTitle() : title;
    tab->Create(name, this, static_cast<UINT>(index + 1));
    connect(tab, &TabButton::clicked, this, [this, index] { SetActivePage(index); });
    m_pages.push_back({page, tab, name});

    if (m_active < 0) {
        m_active = index;
        tab->SetSelected(true);
        page->show();
        page->OnSetActive();
    }
    RecalcLayout();
    return index;
}

BasePage* HFTabbedDlg::GetPage(int index) const
{
    return index >= 0 && index < GetPageCount() ? m_pages[static_cast<size_t>(index)].page : nullptr;
}

TabButton* HFTabbedDlg::GetTab(int index) const
{
    return index >= 0 && index < GetPageCount() ? m_pages[static_cast<size_t>(index)].tab : nullptr;
}

BOOL HFTabbedDlg::SetActivePage(int index)
{
    if (index < 0 || index >= GetPageCount())
        return FALSE;
    if (index == m_active)
        return TRUE;
    if (BasePage* current = GetActivePage()) {
        if (!current->OnKillActive())
            return FALSE;
        current->hide();
        m_pages[static_cast<size_t>(m_active)].tab->SetSelected(false);
    }
    m_active = index;
    Entry& e = m_pages[static_cast<size_t>(index)];
    e.tab->SetSelected(true);
    PlaceWindow(e.page, GetBodyRect().toQRect());
    e.page->show();
    e.page->OnSetActive();
    emit pageChanged(index);
    return TRUE;
}

int HFTabbedDlg::FindPage(const CString& tabName) const
{
    for (size_t i = 0; i < m_pages.size(); ++i)
        if (m_pages[i].title == tabName)
            return static_cast<int>(i);
    return -1;
}

BOOL HFTabbedDlg::ActivatePage(const CString& tabName) { return SetActivePage(FindPage(tabName)); }

CRect HFTabbedDlg::GetBodyRect() const
{
    CRect r = HFDlg::GetBodyRect();
    if (!m_pages.empty())
        r.top = std::min(r.bottom, r.top + TAB_STRIP_HEIGHT);
    return r;
}

void HFTabbedDlg::RecalcLayout()
{
    HFDlg::RecalcLayout();
    if (!IsCreated())
        return;
    const CRect body = GetBodyRect();
    int x = TAB_SPACING * 2;
    for (const Entry& e : m_pages) {
        const CSize s = e.tab->GetSize();
        e.tab->move(x, body.top - s.cy);
        x += s.cx + TAB_SPACING;
    }
    if (BasePage* page = GetActivePage())
        PlaceWindow(page, body.toQRect());
}

void HFTabbedDlg::paintEvent(QPaintEvent* event)
{
    HFDlg::paintEvent(event);
    if (m_pages.empty())
        return;
    QPainter dc(this);
    const CRect body = GetBodyRect();
    DrawMaster::DrawHLine(dc, 0, width(), body.top - 1, ColorSchema::Instance().GetSeparatorColor());
}
