#pragma once

// A module's string table: UINT id -> source text, looked up through Qt's
// translation system (QCoreApplication::translate(context, text)), so the
// texts can be translated with Qt Linguist. Write the table entries with
// QT_TRANSLATE_NOOP("<context>", "text") so lupdate finds them.
//
// LoadString(id) reads the current module's table (see modulestate.h).

#include "bravik_platform_export.h"
#include "cstring.h"
#include "windefs.h"

#include <initializer_list>
#include <map>
#include <string>
#include <utility>

class BRAVIK_PLATFORM_EXPORT StringTable
{
public:
    explicit StringTable(const char* context = "Strings");
    StringTable(const char* context, std::initializer_list<std::pair<UINT, const char*>> entries);

    const char* Context() const { return m_context.c_str(); }

    // Adds or replaces an entry.
    void Add(UINT id, const char* text);
    void Add(std::initializer_list<std::pair<UINT, const char*>> entries);
    bool Has(UINT id) const;
    // The translated text; empty when the id is missing.
    CString Load(UINT id) const;
    // FALSE (and an empty text) when the id is missing.
    BOOL Load(UINT id, CString& text) const;
    size_t Size() const { return m_entries.size(); }

private:
    std::string m_context;
    std::map<UINT, std::string> m_entries;
};

// The text of id in the current module's table; empty when it has none.
BRAVIK_PLATFORM_EXPORT CString LoadString(UINT id);
