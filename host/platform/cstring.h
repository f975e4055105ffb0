#pragma once

#include "bravik_platform_export.h"

// moc cannot parse the C++20 standard library headers; it never needs them.
#ifndef Q_MOC_RUN
#include <compare>
#endif
#include <cstdarg>
#include <string>
#include <string_view>

// The module's user-interface string: 8-bit UTF-8 text with the members the
// dialog code uses. Lengths and positions are in bytes, as the module's code
// works with them; case mapping and case-blind comparison are Unicode-aware.
// Convert to QString only at the widget edge (toQString / fromQString in
// qtconvert.h).
class BRAVIK_PLATFORM_EXPORT CString
{
public:
    CString() = default;
    CString(const char* text) : m_s(text ? text : "") {}
    CString(const char* text, int length) : m_s(text ? std::string(text, static_cast<size_t>(length)) : std::string()) {}
    CString(const std::string& text) : m_s(text) {}
    CString(std::string&& text) : m_s(std::move(text)) {}
    CString(std::string_view text) : m_s(text) {}
    CString(char ch, int repeat = 1) : m_s(static_cast<size_t>(repeat > 0 ? repeat : 0), ch) {}

    int GetLength() const { return static_cast<int>(m_s.size()); }
    bool IsEmpty() const { return m_s.empty(); }
    void Empty() { m_s.clear(); }
    char GetAt(int index) const { return m_s.at(static_cast<size_t>(index)); }
    void SetAt(int index, char ch) { m_s.at(static_cast<size_t>(index)) = ch; }

    // Whitespace is ASCII white space; bytes of multi-byte characters are never touched.
    CString& Trim();
    CString& TrimLeft();
    CString& TrimRight();
    CString& Trim(char target);
    CString& Trim(const char* targets);
    CString& TrimLeft(char target);
    CString& TrimLeft(const char* targets);
    CString& TrimRight(char target);
    CString& TrimRight(const char* targets);

    void Format(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
    void FormatV(const char* format, va_list args);
    void AppendFormat(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;

    // -1 when not found.
    int Find(char ch, int start = 0) const;
    int Find(const char* sub, int start = 0) const;
    int ReverseFind(char ch) const;
    int FindOneOf(const char* chars) const;

    // Number of replacements / removals made.
    int Replace(const char* oldText, const char* newText);
    int Replace(char oldCh, char newCh);
    int Remove(char ch);
    int Insert(int index, const char* text);
    int Delete(int index, int count = 1);

    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;

    int Compare(const char* other) const;
    // Unicode case folding; <0, 0, >0 like Compare.
    int CompareNoCase(const char* other) const;

    CString& MakeUpper();
    CString& MakeLower();

    // Loads the text of id from the current module's string table
    // (stringtable.h); FALSE and empty when the table has no such id.
    int LoadString(unsigned int id);

    operator const char*() const { return m_s.c_str(); }
    const char* GetString() const { return m_s.c_str(); }
    const std::string& str() const { return m_s; }

    CString& operator=(const char* text) { m_s = text ? text : ""; return *this; }
    CString& operator+=(const CString& other) { m_s += other.m_s; return *this; }
    CString& operator+=(const char* text) { if (text) m_s += text; return *this; }
    CString& operator+=(char ch) { m_s += ch; return *this; }

    friend CString operator+(const CString& a, const CString& b) { return CString(a.m_s + b.m_s); }
    friend CString operator+(const CString& a, const char* b) { return CString(a.m_s + (b ? b : "")); }
    friend CString operator+(const char* a, const CString& b) { return CString(std::string(a ? a : "") + b.m_s); }
    friend CString operator+(const CString& a, char b) { return CString(a.m_s + b); }

    friend bool operator==(const CString& a, const CString& b) { return a.m_s == b.m_s; }
    friend bool operator==(const CString& a, const char* b) { return a.m_s == (b ? b : ""); }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) { return a.m_s <=> b.m_s; }

private:
    std::string m_s;
};
