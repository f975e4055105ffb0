#pragma once

// The dictionary queries take a code pattern in the service's wildcard form
// (LIKE: '%' any run, '_' one character, '\' escapes; case ignored). The
// pickers ask for typed prefixes of dictionaries with tens of thousands of
// entries, so the two common shapes are turned into index reads on the
// column's case-folded index: an exact text, and a literal prefix followed by
// one '%'. Anything else is a LIKE filter.

#include <string>
#include <vector>

struct TextMatch
{
    std::string sql;                 // a condition; "1" when the pattern is empty
    std::vector<std::string> binds;  // for the numbered parameters, in order
};

// column: the column's name; firstParam: the number of the first parameter
// the condition uses (?N, ?N+1).
TextMatch MatchText(const std::string& column, const std::string& pattern, int firstParam);
