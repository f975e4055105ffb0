#include "stringtable.h"

#include "modulestate.h"
#include "qtconvert.h"

#include <QCoreApplication>

StringTable::StringTable(const char* context) : m_context(context ? context : "Strings") {}

StringTable::StringTable(const char* context, std::initializer_list<std::pair<UINT, const char*>> entries)
    : StringTable(context)
{
    Add(entries);
}

void StringTable::Add(UINT id, const char* text) { m_entries[id] = text ? text : ""; }

void StringTable::Add(std::initializer_list<std::pair<UINT, const char*>> entries)
{
    for (const auto& [id, text] : entries)
        Add(id, text);
}

bool StringTable::Has(UINT id) const { return m_entries.count(id) > 0; }

CString StringTable::Load(UINT id) const
{
    CString s;
    Load(id, s);
    return s;
}

BOOL StringTable::Load(UINT id, CString& text) const
{
    const auto it = m_entries.find(id);
    if (it == m_entries.end()) {
        text.Empty();
        return FALSE;
    }
    text = fromQString(QCoreApplication::translate(m_context.c_str(), it->second.c_str()));
    return TRUE;
}

CString LoadString(UINT id) { return CurrentModuleState().Strings().Load(id); }

BOOL CString::LoadString(UINT id) { return CurrentModuleState().Strings().Load(id, *this); }
