#pragma once

// The widget edge: CString is UTF-8, QString is UTF-16. Both directions are
// lossless for every Unicode character (accents, CJK, emoji).

#include "cstring.h"

#include <QString>

inline QString toQString(const CString& s)
{
    return QString::fromUtf8(s.GetString(), static_cast<qsizetype>(s.GetLength()));
}

inline QString toQString(const char* s) { return QString::fromUtf8(s ? s : ""); }

inline CString fromQString(const QString& s)
{
    const QByteArray utf8 = s.toUtf8();
    return CString(std::string(utf8.constData(), static_cast<size_t>(utf8.size())));
}

// Length in Unicode code points, which is how user-facing limits count characters.
inline int CodePointCount(const QString& s)
{
    int n = 0;
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (s.at(i).isHighSurrogate() && i + 1 < s.size() && s.at(i + 1).isLowSurrogate())
            ++i;
        ++n;
    }
    return n;
}

inline int CodePointCount(const CString& s) { return CodePointCount(toQString(s)); }
