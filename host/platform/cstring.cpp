#include "cstring.h"

#include <QString>

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

bool isAsciiSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

void trimLeftIf(std::string& s, auto pred)
{
    size_t i = 0;
    while (i < s.size() && pred(s[i]))
        ++i;
    s.erase(0, i);
}

void trimRightIf(std::string& s, auto pred)
{
    size_t n = s.size();
    while (n > 0 && pred(s[n - 1]))
        --n;
    s.resize(n);
}

auto inSet(const char* targets)
{
    return [targets](char c) { return c != '\0' && targets && std::strchr(targets, c) != nullptr; };
}

QString q(const std::string& s) { return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())); }

} // namespace

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::TrimLeft() { trimLeftIf(m_s, isAsciiSpace); return *this; }
CString& CString::TrimRight() { trimRightIf(m_s, isAsciiSpace); return *this; }
CString& CString::Trim(char target) { return TrimRight(target).TrimLeft(target); }
CString& CString::Trim(const char* targets) { return TrimRight(targets).TrimLeft(targets); }
CString& CString::TrimLeft(char target) { trimLeftIf(m_s, [target](char c) { return c == target; }); return *this; }
CString& CString::TrimLeft(const char* targets) { trimLeftIf(m_s, inSet(targets)); return *this; }
CString& CString::TrimRight(char target) { trimRightIf(m_s, [target](char c) { return c == target; }); return *this; }
CString& CString::TrimRight(const char* targets) { trimRightIf(m_s, inSet(targets)); return *this; }

void CString::FormatV(const char* format, va_list args)
{
    if (!format) {
        m_s.clear();
        return;
    }
    va_list copy;
    va_copy(copy, args);
    const int needed = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (needed < 0) {
        m_s.clear();
        return;
    }
    std::vector<char> buffer(static_cast<size_t>(needed) + 1);
    std::vsnprintf(buffer.data(), buffer.size(), format, args);
    m_s.assign(buffer.data(), static_cast<size_t>(needed));
}

void CString::Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}

void CString::AppendFormat(const char* format, ...)
{
    CString tail;
    va_list args;
    va_start(args, format);
    tail.FormatV(format, args);
    va_end(args);
    m_s += tail.m_s;
}

int CString::Find(char ch, int start) const
{
    if (start < 0 || static_cast<size_t>(start) >= m_s.size())
        return -1;
    const size_t at = m_s.find(ch, static_cast<size_t>(start));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CString::Find(const char* sub, int start) const
{
    if (!sub || start < 0 || static_cast<size_t>(start) > m_s.size())
        return -1;
    const size_t at = m_s.find(sub, static_cast<size_t>(start));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CString::ReverseFind(char ch) const
{
    const size_t at = m_s.rfind(ch);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CString::FindOneOf(const char* chars) const
{
    if (!chars)
        return -1;
    const size_t at = m_s.find_first_of(chars);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CString::Replace(const char* oldText, const char* newText)
{
    if (!oldText || !*oldText)
        return 0;
    const std::string from(oldText);
    const std::string to(newText ? newText : "");
    int count = 0;
    size_t pos = 0;
    while ((pos = m_s.find(from, pos)) != std::string::npos) {
        m_s.replace(pos, from.size(), to);
        pos += to.size();
        ++count;
    }
    return count;
}

int CString::Replace(char oldCh, char newCh)
{
    int count = 0;
    for (char& c : m_s) {
        if (c == oldCh) {
            c = newCh;
            ++count;
        }
    }
    return count;
}

int CString::Remove(char ch)
{
    const size_t before = m_s.size();
    std::erase(m_s, ch);
    return static_cast<int>(before - m_s.size());
}

int CString::Insert(int index, const char* text)
{
    if (index < 0)
        index = 0;
    if (static_cast<size_t>(index) > m_s.size())
        index = GetLength();
    m_s.insert(static_cast<size_t>(index), text ? text : "");
    return GetLength();
}

int CString::Delete(int index, int count)
{
    if (index < 0)
        index = 0;
    if (count > 0 && static_cast<size_t>(index) < m_s.size())
        m_s.erase(static_cast<size_t>(index), static_cast<size_t>(count));
    return GetLength();
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const
{
    if (first < 0)
        first = 0;
    if (count < 0)
        count = 0;
    if (static_cast<size_t>(first) >= m_s.size())
        return CString();
    return CString(m_s.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

CString CString::Left(int count) const
{
    if (count <= 0)
        return CString();
    return CString(m_s.substr(0, static_cast<size_t>(count)));
}

CString CString::Right(int count) const
{
    if (count <= 0)
        return CString();
    if (static_cast<size_t>(count) >= m_s.size())
        return *this;
    return CString(m_s.substr(m_s.size() - static_cast<size_t>(count)));
}

int CString::Compare(const char* other) const
{
    const int r = m_s.compare(other ? other : "");
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

int CString::CompareNoCase(const char* other) const
{
    const int r = QString::compare(q(m_s), QString::fromUtf8(other ? other : ""), Qt::CaseInsensitive);
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

CString& CString::MakeUpper()
{
    m_s = q(m_s).toUpper().toStdString();
    return *this;
}

CString& CString::MakeLower()
{
    m_s = q(m_s).toLower().toStdString();
    return *this;
}
