#include "bparser.h"

#include <cstring>
#include <string>

const char BParser::DEFAULT_SEP = ',';

void BParser::DeTokenizeEx(std::vector<ACE_CString>& tokens, const char* text, char sep)
{
    if (!text || !*text)
        return;
    const char* start = text;
    for (const char* p = text;; ++p) {
        if (*p == sep || *p == '\0') {
            tokens.push_back(ACE_CString(start, static_cast<ACE_CString::size_type>(p - start)));
            if (*p == '\0')
                break;
            start = p + 1;
        }
    }
}

ACE_CString BParser::Trim(const char* text)
{
    if (!text)
        return ACE_CString();
    const char* ws = " \t\r\n";
    const char* b = text;
    while (*b && std::strchr(ws, *b))
        ++b;
    const char* e = b + std::strlen(b);
    while (e > b && std::strchr(ws, e[-1]))
        --e;
    return ACE_CString(b, static_cast<ACE_CString::size_type>(e - b));
}

void BParser::TrimTokens(ACE_CString& out, const char* text, char sep)
{
    std::vector<ACE_CString> tokens;
    DeTokenizeEx(tokens, text, sep);
    std::vector<ACE_CString> kept;
    for (const auto& t : tokens) {
        ACE_CString trimmed = Trim(t.c_str());
        if (trimmed.length())
            kept.push_back(trimmed);
    }
    out = Join(kept, sep);
}

ACE_CString BParser::Join(const std::vector<ACE_CString>& tokens, char sep)
{
    ACE_CString out;
    const char sepText[2] = {sep, '\0'};
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (i)
            out += sepText;
        out += tokens[i];
    }
    return out;
}
