#pragma once

// Popup menus. A CMenu is a list of entries (command id, text, flags); it is
// shown by TrackPopupMenu through the process-wide MenuPresenter (production:
// a QMenu; tests: the scripted user, which reads the entries and chooses).
//
// TrackPopupMenu with TPM_RETURNCMD returns the chosen id (0 when dismissed)
// and delivers nothing. Without it the choice is delivered to the owner
// before TrackPopupMenu returns: to the command handler if one is set,
// otherwise as a CommandEvent sent to the owner window (CDialog turns it into
// OnCommand(id) and its command(id) signal); it then returns TRUE.
// Greyed or disabled entries cannot be chosen.

#include "bravik_platform_export.h"
#include "crect.h"
#include "cstring.h"
#include "windefs.h"

#include <QEvent>

#include <functional>
#include <vector>

struct MenuEntry
{
    UINT id = 0;
    CString text;
    UINT flags = MF_STRING; // MF_SEPARATOR, MF_GRAYED, MF_DISABLED, MF_CHECKED

    bool IsSeparator() const { return (flags & MF_SEPARATOR) != 0; }
    bool IsEnabled() const { return !IsSeparator() && !(flags & (MF_GRAYED | MF_DISABLED)); }
    bool IsChecked() const { return (flags & MF_CHECKED) != 0; }
};

class CMenu;

class BRAVIK_PLATFORM_EXPORT MenuPresenter
{
public:
    virtual ~MenuPresenter();
    // Shows menu at screen position (x, y); returns the chosen command id, 0 if dismissed.
    virtual UINT Track(const CMenu& menu, UINT flags, int x, int y, CWnd* owner) = 0;
};

class BRAVIK_PLATFORM_EXPORT QtMenuPresenter : public MenuPresenter
{
public:
    UINT Track(const CMenu& menu, UINT flags, int x, int y, CWnd* owner) override;
};

// Installs a presenter (null: the production one); returns the previous one.
BRAVIK_PLATFORM_EXPORT MenuPresenter* SetMenuPresenter(MenuPresenter* presenter);
BRAVIK_PLATFORM_EXPORT MenuPresenter& CurrentMenuPresenter();

// WM_COMMAND from a menu, sent to the owner window.
class BRAVIK_PLATFORM_EXPORT CommandEvent : public QEvent
{
public:
    explicit CommandEvent(UINT id);
    ~CommandEvent() override;
    UINT Id() const { return m_id; }
    static QEvent::Type EventType();

private:
    UINT m_id;
};

class BRAVIK_PLATFORM_EXPORT CMenu
{
public:
    BOOL CreatePopupMenu();
    BOOL DestroyMenu();

    // flags: MF_STRING (default), MF_SEPARATOR, MF_GRAYED, MF_DISABLED, MF_CHECKED.
    BOOL AppendMenu(UINT flags, UINT id = 0, const char* text = nullptr);
    BOOL InsertMenu(UINT position, UINT flags, UINT id = 0, const char* text = nullptr); // MF_BYPOSITION only
    BOOL RemoveMenu(UINT item, UINT flags = MF_BYCOMMAND);
    BOOL DeleteMenu(UINT item, UINT flags = MF_BYCOMMAND) { return RemoveMenu(item, flags); }

    // enable: MF_ENABLED, MF_GRAYED or MF_DISABLED (| MF_BYCOMMAND / MF_BYPOSITION).
    // Returns the previous state (MF_ENABLED / MF_GRAYED / MF_DISABLED), or -1 when absent.
    UINT EnableMenuItem(UINT item, UINT enable);
    UINT CheckMenuItem(UINT item, UINT check);
    // The entry's flags, or 0xFFFFFFFF when absent.
    UINT GetMenuState(UINT item, UINT flags = MF_BYCOMMAND) const;
    bool IsItemEnabled(UINT id) const;
    int GetMenuItemCount() const { return static_cast<int>(m_entries.size()); }
    UINT GetMenuItemID(int position) const; // 0 for a separator, -1 out of range
    int GetMenuString(UINT item, CString& text, UINT flags = MF_BYCOMMAND) const;

    const std::vector<MenuEntry>& Entries() const { return m_entries; }
    const MenuEntry* FindEntry(UINT id) const;

    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, const CRect* rect = nullptr);
    void SetCommandHandler(std::function<void(UINT)> handler) { m_handler = std::move(handler); }

private:
    MenuEntry* entry(UINT item, UINT flags);
    const MenuEntry* entry(UINT item, UINT flags) const;

    bool m_created = false;
    std::vector<MenuEntry> m_entries;
    std::function<void(UINT)> m_handler;
};
