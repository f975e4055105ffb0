#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

#include <vector>

// Tokenising helpers for separated lists (organization keys and IDs travel as
// one string joined by DEFAULT_SEP).
class BRAVIK_RECORDS_EXPORT BParser
{
public:
    static const char DEFAULT_SEP; // ','

    // Splits text at sep, appending every token to tokens (the vector is not
    // cleared). Tokens are not trimmed; empty tokens between separators are
    // kept, and a trailing separator gives a trailing empty token. Empty or
    // null text appends nothing.
    static void DeTokenizeEx(std::vector<ACE_CString>& tokens, const char* text, char sep = DEFAULT_SEP);

    // Tidies a separated list into out: every token trimmed of blanks and
    // tabs, empty tokens dropped, joined again by sep. "a , ,b ," gives "a,b".
    static void TrimTokens(ACE_CString& out, const char* text, char sep = DEFAULT_SEP);

    // Joins tokens with sep (no trimming).
    static ACE_CString Join(const std::vector<ACE_CString>& tokens, char sep = DEFAULT_SEP);

    // Leading and trailing blanks, tabs, CR and LF removed.
    static ACE_CString Trim(const char* text);
};
