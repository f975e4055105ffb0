#include "cmenu.h"

#include "qtconvert.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QPointer>

MenuPresenter::~MenuPresenter() = default;

namespace {

MenuPresenter*& installed()
{
    static MenuPresenter* p = nullptr;
    return p;
}

QtMenuPresenter& production()
{
    static QtMenuPresenter p;
    return p;
}

} // namespace

UINT QtMenuPresenter::Track(const CMenu& menu, UINT, int x, int y, CWnd* owner)
{
    QMenu qmenu(owner);
    for (const MenuEntry& e : menu.Entries()) {
        if (e.IsSeparator()) {
            qmenu.addSeparator();
            continue;
        }
        QAction* a = qmenu.addAction(toQString(e.text));
        a->setData(e.id);
        a->setEnabled(e.IsEnabled());
        if (e.IsChecked()) {
            a->setCheckable(true);
            a->setChecked(true);
        }
    }
    const QAction* chosen = qmenu.exec(QPoint(x, y));
    return chosen ? chosen->data().toUInt() : 0;
}

MenuPresenter* SetMenuPresenter(MenuPresenter* presenter)
{
    MenuPresenter* previous = installed();
    installed() = presenter;
    return previous;
}

MenuPresenter& CurrentMenuPresenter()
{
    MenuPresenter* p = installed();
    return p ? *p : production();
}

CommandEvent::CommandEvent(UINT id) : QEvent(EventType()), m_id(id) {}
CommandEvent::~CommandEvent() = default;

QEvent::Type CommandEvent::EventType()
{
    static const QEvent::Type type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

BOOL CMenu::CreatePopupMenu()
{
    m_created = true;
    m_entries.clear();
    return TRUE;
}

BOOL CMenu::DestroyMenu()
{
    const BOOL had = m_created;
    m_created = false;
    m_entries.clear();
    return had;
}

BOOL CMenu::AppendMenu(UINT flags, UINT id, const char* text)
{
    if (!m_created || (flags & MF_POPUP))
        return FALSE;
    MenuEntry e;
    e.id = (flags & MF_SEPARATOR) ? 0 : id;
    e.text = CString(text);
    e.flags = flags & ~MF_BYPOSITION;
    m_entries.push_back(e);
    return TRUE;
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, UINT id, const char* text)
{
    if (!m_created || (flags & MF_POPUP))
        return FALSE;
    MenuEntry e;
    e.id = (flags & MF_SEPARATOR) ? 0 : id;
    e.text = CString(text);
    e.flags = flags & ~MF_BYPOSITION;
    const size_t at = std::min<size_t>(position, m_entries.size());
    m_entries.insert(m_entries.begin() + static_cast<std::ptrdiff_t>(at), e);
    return TRUE;
}

MenuEntry* CMenu::entry(UINT item, UINT flags)
{
    return const_cast<MenuEntry*>(static_cast<const CMenu*>(this)->entry(item, flags));
}

const MenuEntry* CMenu::entry(UINT item, UINT flags) const
{
    if (flags & MF_BYPOSITION)
        return item < m_entries.size() ? &m_entries[item] : nullptr;
    return FindEntry(item);
}

const MenuEntry* CMenu::FindEntry(UINT id) const
{
    for (const MenuEntry& e : m_entries)
        if (!e.IsSeparator() && e.id == id)
            return &e;
    return nullptr;
}

BOOL CMenu::RemoveMenu(UINT item, UINT flags)
{
    const MenuEntry* e = entry(item, flags);
    if (!e)
        return FALSE;
    m_entries.erase(m_entries.begin() + (e - m_entries.data()));
    return TRUE;
}

UINT CMenu::EnableMenuItem(UINT item, UINT enable)
{
    MenuEntry* e = entry(item, enable);
    if (!e)
        return static_cast<UINT>(-1);
    const UINT previous = e->flags & (MF_GRAYED | MF_DISABLED);
    e->flags = (e->flags & ~(MF_GRAYED | MF_DISABLED)) | (enable & (MF_GRAYED | MF_DISABLED));
    return previous;
}

UINT CMenu::CheckMenuItem(UINT item, UINT check)
{
    MenuEntry* e = entry(item, check);
    if (!e)
        return static_cast<UINT>(-1);
    const UINT previous = e->flags & MF_CHECKED;
    e->flags = (e->flags & ~MF_CHECKED) | (check & MF_CHECKED);
    return previous;
}

UINT CMenu::GetMenuState(UINT item, UINT flags) const
{
    const MenuEntry* e = entry(item, flags);
    return e ? e->flags : 0xFFFFFFFFu;
}

bool CMenu::IsItemEnabled(UINT id) const
{
    const MenuEntry* e = FindEntry(id);
    return e && e->IsEnabled();
}

UINT CMenu::GetMenuItemID(int position) const
{
    if (position < 0 || static_cast<size_t>(position) >= m_entries.size())
        return static_cast<UINT>(-1);
    return m_entries[static_cast<size_t>(position)].id;
}

int CMenu::GetMenuString(UINT item, CString& text, UINT flags) const
{
    const MenuEntry* e = entry(item, flags);
    text = e ? e->text : CString();
    return text.GetLength();
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, const CRect*)
{
    if (!m_created)
        return 0;
    UINT chosen = CurrentMenuPresenter().Track(*this, flags, x, y, owner);
    // Only an enabled entry of this menu can be chosen.
    if (chosen != 0 && !IsItemEnabled(chosen))
        chosen = 0;
    if (flags & TPM_RETURNCMD)
        return static_cast<BOOL>(chosen);
    if (chosen != 0 && !(flags & TPM_NONOTIFY)) {
        if (m_handler) {
            m_handler(chosen);
        } else if (owner) {
            CommandEvent e(chosen);
            QCoreApplication::sendEvent(owner, &e);
        }
    }
    return TRUE;
}
