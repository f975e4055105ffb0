#include "cstring.h"

#include <gtest/gtest.h>

TEST(CString, TrimKeepsNonLatinLetters)
{
    CString s("  \tЖёлтый 東京 \n");
    s.Trim();
    EXPECT_STREQ("Жёлтый 東京", s);
    EXPECT_EQ(static_cast<int>(std::string("Жёлтый 東京").size()), s.GetLength());
}

TEST(CString, CompareNoCaseIsUnicodeAware)
{
    EXPECT_EQ(0, CString("ÉCOLE").CompareNoCase("école"));
    EXPECT_EQ(0, CString("Ärger").CompareNoCase("ärger"));
    EXPECT_LT(CString("apple").CompareNoCase("BANANA"), 0);
    EXPECT_GT(CString("Zebra").CompareNoCase("apple"), 0);
}

TEST(CString, CaseMapping)
{
    CString s("ärger über Ωmega");
    s.MakeUpper();
    EXPECT_STREQ("ÄRGER ÜBER ΩMEGA", s);
    s.MakeLower();
    EXPECT_STREQ("ärger über ωmega", s);
}

TEST(CString, FindMidLeftRight)
{
    CString s("Accession #: 123");
    EXPECT_EQ(10, s.Find('#'));
    EXPECT_EQ(-1, s.Find('#', 11));
    EXPECT_EQ(13, s.Find("123"));
    EXPECT_STREQ("123", s.Mid(13));
    EXPECT_STREQ("Acc", s.Left(3));
    EXPECT_STREQ("23", s.Right(2));
    EXPECT_STREQ("", s.Mid(100));
}

TEST(CString, ReplaceRemoveFormat)
{
    CString s("a-b-c");
    EXPECT_EQ(2, s.Replace("-", "--"));
    EXPECT_STREQ("a--b--c", s);
    EXPECT_EQ(4, s.Remove('-'));
    EXPECT_STREQ("abc", s);
    s.Format("Results: %d of %d", 200, 1234);
    EXPECT_STREQ("Results: 200 of 1234", s);
}
