#include "bpersonname.h"

#include <string>

BPersonName::BPersonName(const ACE_CString& last, const ACE_CString& first, const ACE_CString& middle,
                         const ACE_CString& prefix, const ACE_CString& suffix)
    : m_last(last), m_first(first), m_middle(middle), m_prefix(prefix), m_suffix(suffix)
{
}

BPersonName BPersonName::FromDICOMName(const char* dicomName)
{
    BPersonName name;
    if (!dicomName)
        return name;
    ACE_CString* parts[5] = {&name.m_last, &name.m_first, &name.m_middle, &name.m_prefix, &name.m_suffix};
    std::string text(dicomName);
    // Only the first component group (alphabetic) is used.
    const auto eq = text.find('=');
    if (eq != std::string::npos)
        text.resize(eq);
    size_t start = 0;
    for (int i = 0; i < 5; ++i) {
        const size_t caret = text.find('^', start);
        *parts[i] = ACE_CString(text.substr(start, caret == std::string::npos ? std::string::npos : caret - start).c_str());
        if (caret == std::string::npos)
            break;
        start = caret + 1;
    }
    return name;
}

bool BPersonName::IsEmpty() const
{
    return m_last.length() == 0 && m_first.length() == 0 && m_middle.length() == 0 && m_prefix.length() == 0
        && m_suffix.length() == 0;
}

ACE_CString BPersonName::ToDICOMName() const
{
    const ACE_CString* parts[5] = {&m_last, &m_first, &m_middle, &m_prefix, &m_suffix};
    int used = 5;
    while (used > 0 && parts[used - 1]->length() == 0)
        --used;
    ACE_CString out;
    for (int i = 0; i < used; ++i) {
        if (i)
            out += "^";
        out += *parts[i];
    }
    return out;
}

ACE_CString BPersonName::GetDisplayName() const
{
    ACE_CString given = m_first;
    if (m_middle.length()) {
        if (given.length())
            given += " ";
        given += m_middle;
    }
    ACE_CString out = m_last;
    if (given.length()) {
        if (out.length())
            out += ", ";
        out += given;
    }
    return out;
}
