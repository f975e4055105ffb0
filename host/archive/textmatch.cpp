#include "textmatch.h"

namespace {

// The literal text of a pattern without wildcards, or false when it has one
// before its last character (endsWithAny tells whether it ends in '%').
bool Literal(const std::string& pattern, std::string& literal, bool& endsWithAny)
{
    endsWithAny = false;
    for (size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '\\' && i + 1 < pattern.size()) {
            literal += pattern[++i];
        } else if (c == '%' && i + 1 == pattern.size()) {
            endsWithAny = true;
        } else if (c == '%' || c == '_') {
            return false;
        } else {
            literal += c;
        }
    }
    return true;
}

} // namespace

TextMatch MatchText(const std::string& column, const std::string& pattern, int firstParam)
{
    if (pattern.empty())
        return {"1", {}};
    const std::string p1 = "?" + std::to_string(firstParam);
    const std::string p2 = "?" + std::to_string(firstParam + 1);
    std::string literal;
    bool prefix = false;
    if (!Literal(pattern, literal, prefix))
        return {column + " LIKE " + p1 + " ESCAPE '\\'", {pattern}};
    if (!prefix)
        return {column + " COLLATE NOCASE = " + p1, {literal}};
    if (literal.empty())
        return {"1", {}};
    // Every text that starts with the prefix sorts between the prefix and the
    // prefix followed by a byte no UTF-8 text holds.
    return {column + " COLLATE NOCASE >= " + p1 + " AND " + column + " COLLATE NOCASE < " + p2,
            {literal, literal + "\xff"}};
}
