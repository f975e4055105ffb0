#include "bparser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
std::vector<std::string> Split(const char* text, char sep = BParser::DEFAULT_SEP)
{
    std::vector<ACE_CString> tokens;
    BParser::DeTokenizeEx(tokens, text, sep);
    std::vector<std::string> out;
    for (const auto& t : tokens)
        out.emplace_back(t.c_str(), t.length());
    return out;
}
std::string Tidy(const char* text, char sep = BParser::DEFAULT_SEP)
{
    ACE_CString out("stale");
    BParser::TrimTokens(out, text, sep);
    return out.c_str();
}
} // namespace

TEST(BParser, DefaultSeparatorIsComma)
{
    EXPECT_EQ(BParser::DEFAULT_SEP, ',');
}

TEST(BParser, DeTokenizeKeepsTokensAsTheyAre)
{
    EXPECT_EQ(Split("a, b ,c"), (std::vector<std::string>{"a", " b ", "c"}));
    EXPECT_EQ(Split("Smith"), (std::vector<std::string>{"Smith"}));
    EXPECT_EQ(Split(",John"), (std::vector<std::string>{"", "John"}));
    EXPECT_EQ(Split("a,"), (std::vector<std::string>{"a", ""}));
    EXPECT_EQ(Split("a,,b"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(Split("x|y", '|'), (std::vector<std::string>{"x", "y"}));
}

TEST(BParser, DeTokenizeOfNothingAddsNothing)
{
    EXPECT_TRUE(Split("").empty());
    EXPECT_TRUE(Split(nullptr).empty());
}

TEST(BParser, DeTokenizeAppends)
{
    std::vector<ACE_CString> tokens{ACE_CString("first")};
    BParser::DeTokenizeEx(tokens, "a,b", ',');
    ASSERT_EQ(tokens.size(), 3u);
    EXPECT_STREQ(tokens[0].c_str(), "first");
    EXPECT_STREQ(tokens[2].c_str(), "b");
}

TEST(BParser, TrimTokensTrimsAndDropsEmptyTokens)
{
    EXPECT_EQ(Tidy(" a , ,b ,"), "a,b");
    EXPECT_EQ(Tidy("\tORG1 ,  ORG2\t"), "ORG1,ORG2");
    EXPECT_EQ(Tidy(" , , "), "");
    EXPECT_EQ(Tidy(""), "");
    EXPECT_EQ(Tidy(nullptr), "");
    EXPECT_EQ(Tidy("a b ; c", ';'), "a b;c");
}

TEST(BParser, JoinAndTrim)
{
    EXPECT_STREQ(BParser::Join({ACE_CString("a"), ACE_CString("b")}).c_str(), "a,b");
    EXPECT_STREQ(BParser::Join({}).c_str(), "");
    EXPECT_STREQ(BParser::Trim("  x y \r\n").c_str(), "x y");
}
