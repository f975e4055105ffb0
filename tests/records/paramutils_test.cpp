#include "bdatetime.h"
#include "hoststate.h"
#include "localefunctions.h"
#include "paramutils.h"
#include "sitepolicy.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class ParamUtilsTest : public ::testing::Test
{
protected:
    void SetUp() override { ResetHostState(); }
    void TearDown() override { ResetHostState(); }

    static std::string Wild(const char* text)
    {
        ACE_CString out("stale");
        EXPECT_TRUE(ParamUtils::ConvertToWildcardQueryString(text, out));
        return out.c_str();
    }
    static void UseNumericMRN(bool on)
    {
        SitePolicySettings s = SitePolicy::Get();
        s.numericMRN = on;
        SitePolicy::Set(s);
    }
};

BDateTime At(unsigned y, unsigned m, unsigned d, int hh, int mm, int ss)
{
    return BDateTime(BDate(y, m, d), BTime(hh, mm, ss));
}

} // namespace

TEST_F(ParamUtilsTest, StarAndQuestionMarkBecomeServiceWildcards)
{
    EXPECT_EQ(Wild("Sm*th"), "Sm%th");
    EXPECT_EQ(Wild("J?n*"), "J_n%");
    EXPECT_EQ(Wild("Smith"), "Smith");
}

TEST_F(ParamUtilsTest, LiteralPercentUnderscoreAndBackslashAreEscaped)
{
    EXPECT_EQ(Wild("50%"), "50\\%");
    EXPECT_EQ(Wild("a_b"), "a\\_b");
    EXPECT_EQ(Wild("a\\b"), "a\\\\b");
    EXPECT_EQ(Wild("Smith%"), "Smith\\%");
}

TEST_F(ParamUtilsTest, DoubleQuotesMakeWildcardsLiteral)
{
    EXPECT_EQ(Wild("\"A*B\"*"), "A*B%");
    EXPECT_EQ(Wild("\"what?\""), "what?");
    // An unclosed quote runs to the end.
    EXPECT_EQ(Wild("x\"*?"), "x*?");
    // Inside quotes a literal % is still escaped.
    EXPECT_EQ(Wild("\"5%\""), "5\\%");
    // Single quotes are ordinary characters.
    EXPECT_EQ(Wild("O'Brien*"), "O'Brien%");
}

TEST_F(ParamUtilsTest, EmptyAndNullWildcardText)
{
    EXPECT_EQ(Wild(""), "");
    ACE_CString out("stale");
    EXPECT_FALSE(ParamUtils::ConvertToWildcardQueryString(nullptr, out));
    EXPECT_STREQ(out.c_str(), "");
}

TEST_F(ParamUtilsTest, MrnIsTrimmed)
{
    CString mrn("  A-123 \t");
    EXPECT_TRUE(ParamUtils::VerifyAndCorrectMRN(mrn));
    EXPECT_STREQ(mrn, "A-123");
}

TEST_F(ParamUtilsTest, EmptyMrnIsAcceptable)
{
    CString mrn("   ");
    EXPECT_TRUE(ParamUtils::VerifyAndCorrectMRN(mrn));
    EXPECT_STREQ(mrn, "");
    UseNumericMRN(true);
    EXPECT_TRUE(ParamUtils::VerifyAndCorrectMRN(mrn));
}

TEST_F(ParamUtilsTest, NumericSiteAcceptsDigitsOnly)
{
    EXPECT_FALSE(ParamUtils::UseNumericMRN());
    UseNumericMRN(true);
    EXPECT_TRUE(ParamUtils::UseNumericMRN());
    CString good(" 000123 ");
    EXPECT_TRUE(ParamUtils::VerifyAndCorrectMRN(good));
    EXPECT_STREQ(good, "000123");
    CString letters("12A4");
    EXPECT_FALSE(ParamUtils::VerifyAndCorrectMRN(letters));
    CString wildcard("12*");
    EXPECT_FALSE(ParamUtils::VerifyAndCorrectMRN(wildcard));
    CString inner("12 34");
    EXPECT_FALSE(ParamUtils::VerifyAndCorrectMRN(inner));
}

TEST_F(ParamUtilsTest, OneDateCoversTheWholeDay)
{
    BDateTime b, e;
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("03/07/1975", b, e, false));
    EXPECT_EQ(b, At(1975, 3, 7, 0, 0, 0));
    EXPECT_EQ(e, At(1975, 3, 7, 23, 59, 59));
}

TEST_F(ParamUtilsTest, PairGivesBeginAndEnd)
{
    BDateTime b, e;
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("01/01/1970, 12/31/1980", b, e, false));
    EXPECT_EQ(b, At(1970, 1, 1, 0, 0, 0));
    EXPECT_EQ(e, At(1980, 12, 31, 23, 59, 59));
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("1/1/1970-2/3/1971", b, e, false));
    EXPECT_EQ(b, At(1970, 1, 1, 0, 0, 0));
    EXPECT_EQ(e, At(1971, 2, 3, 23, 59, 59));
}

TEST_F(ParamUtilsTest, OpenEnds)
{
    BDateTime b, e;
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter(",12/31/1980", b, e, false));
    EXPECT_FALSE(b.IsValid());
    EXPECT_EQ(e, At(1980, 12, 31, 23, 59, 59));
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("01/01/1970,", b, e, false));
    EXPECT_EQ(b, At(1970, 1, 1, 0, 0, 0));
    EXPECT_FALSE(e.IsValid());
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("-12/31/1980", b, e, false));
    EXPECT_FALSE(b.IsValid());
    EXPECT_TRUE(e.IsValid());
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("01/01/1970-", b, e, false));
    EXPECT_TRUE(b.IsValid());
    EXPECT_FALSE(e.IsValid());
}

TEST_F(ParamUtilsTest, BadRangesFailAndLeaveBothEmpty)
{
    const char* bad[] = {"", "   ", ",", "-", "13/01/2000", "02/30/2001", "yesterday", "01/01/2000,02/01/2000,03/01/2000",
                         "12/31/1980,01/01/1970", "01/01/2000 x", "\xff\xfe\x80", "01/0\xc3\xa9/2000", "2000-01-01"};
    for (const char* text : bad) {
        BDateTime b = At(2000, 1, 1, 0, 0, 0), e = b;
        EXPECT_FALSE(ParamUtils::GenerateDateRangeFromStringForCustomFilter(text, b, e, false)) << text;
        EXPECT_FALSE(b.IsValid()) << text;
        EXPECT_FALSE(e.IsValid()) << text;
    }
    BDateTime b, e;
    EXPECT_FALSE(ParamUtils::GenerateDateRangeFromStringForCustomFilter(nullptr, b, e, false));
}

TEST_F(ParamUtilsTest, RangeFollowsTheUsersDatePattern)
{
    Locale::SetDatePattern("yyyy-MM-dd");
    BDateTime b, e;
    // The pattern uses '-', so only ',' separates.
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("2000-01-01,2000-02-01", b, e, false));
    EXPECT_EQ(b, At(2000, 1, 1, 0, 0, 0));
    EXPECT_EQ(e, At(2000, 2, 1, 23, 59, 59));
    ASSERT_TRUE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("2000-01-01", b, e, false));
    EXPECT_EQ(e, At(2000, 1, 1, 23, 59, 59));
    EXPECT_FALSE(ParamUtils::GenerateDateRangeFromStringForCustomFilter("01/01/2000", b, e, false));
}

TEST_F(ParamUtilsTest, ToUtcConvertsLocalInstants)
{
    const char* oldTz = std::getenv("TZ");
    const std::string saved = oldTz ? oldTz : "";
    setenv("TZ", "EST5", 1);
    tzset();
    BDateTime b, e;
    const bool ok = ParamUtils::GenerateDateRangeFromStringForCustomFilter("03/07/1975", b, e, true);
    if (oldTz)
        setenv("TZ", saved.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
    ASSERT_TRUE(ok);
    EXPECT_EQ(b, At(1975, 3, 7, 5, 0, 0));
    EXPECT_EQ(e, At(1975, 3, 8, 4, 59, 59));
}
