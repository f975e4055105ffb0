// Fuzzes the list tokenisers. The first byte is the separator.
#include "fuzzcheck.h"

#include "bparser.h"

#include <cstdint>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const char sep = static_cast<char>(data[0]);
    std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    text = text.substr(0, text.find('\0'));
    if (sep == '\0')
        return 0;

    std::vector<ACE_CString> tokens;
    BParser::DeTokenizeEx(tokens, text.c_str(), sep);
    // Splitting and joining again gives the text back.
    FUZZ_CHECK(std::string(BParser::Join(tokens, sep).c_str()) == text);
    if (text.empty())
        FUZZ_CHECK(tokens.empty());

    ACE_CString tidy;
    BParser::TrimTokens(tidy, text.c_str(), sep);
    std::vector<ACE_CString> tidyTokens;
    BParser::DeTokenizeEx(tidyTokens, tidy.c_str(), sep);
    for (const auto& t : tidyTokens) {
        const std::string s(t.c_str());
        FUZZ_CHECK(!s.empty());
        // Trimming a separator away is impossible, so only blanks are checked.
        if (sep != ' ' && sep != '\t' && sep != '\r' && sep != '\n') {
            FUZZ_CHECK(s.front() != ' ' && s.front() != '\t');
            FUZZ_CHECK(s.back() != ' ' && s.back() != '\t');
        }
    }
    // Tidying is idempotent.
    ACE_CString again;
    BParser::TrimTokens(again, tidy.c_str(), sep);
    FUZZ_CHECK(again == tidy);
    return 0;
}
