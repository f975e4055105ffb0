#include "bdate.h"
#include "coledatetime.h"
#include "hoststate.h"
#include "localefunctions.h"
#include "patientgidformatter.h"
#include "sitepolicy.h"

#include <gtest/gtest.h>

namespace {
class LocaleTest : public ::testing::Test
{
protected:
    void SetUp() override { ResetHostState(); }
    void TearDown() override { ResetHostState(); }
};
} // namespace

TEST_F(LocaleTest, DefaultPattern)
{
    EXPECT_STREQ(Locale::GetDatePattern(), "MM/dd/yyyy");
    Locale::SetDatePattern("dd.MM.yyyy");
    EXPECT_STREQ(Locale::GetDatePattern(), "dd.MM.yyyy");
    Locale::SetDatePattern("");
    EXPECT_STREQ(Locale::GetDatePattern(), "MM/dd/yyyy");
}

TEST_F(LocaleTest, FormatDateForms)
{
    const BDate d(1975, 3, 7);
    EXPECT_STREQ(Locale::FormatDate(d, Locale::eShort), "03/07/1975");
    EXPECT_STREQ(Locale::FormatDate(d, Locale::eDICOM), "19750307");
    EXPECT_STREQ(Locale::FormatDate(d, Locale::eLong), "March 7, 1975");
    EXPECT_STREQ(Locale::FormatDate(BDate(), Locale::eShort), "");
    Locale::SetDatePattern("d.M.yyyy");
    EXPECT_STREQ(Locale::FormatDate(d, Locale::eShort), "7.3.1975");
}

TEST_F(LocaleTest, ParseDateTimeDateOnlyAndWithTime)
{
    COleDateTime v;
    ASSERT_TRUE(Locale::ParseDateTime(v, CString(" 03/07/1975 ")));
    EXPECT_EQ(v, COleDateTime(1975, 3, 7, 0, 0, 0));
    ASSERT_TRUE(Locale::ParseDateTime(v, CString("3/7/1975 14:05")));
    EXPECT_EQ(v, COleDateTime(1975, 3, 7, 14, 5, 0));
    ASSERT_TRUE(Locale::ParseDateTime(v, CString("03/07/1975 23:59:58")));
    EXPECT_EQ(v.GetSecond(), 58);
    EXPECT_EQ(v.GetStatus(), COleDateTime::valid);
}

TEST_F(LocaleTest, ParseDateTimeRefusesBadText)
{
    const char* bad[] = {"", "03/07/75", "02/29/2023", "03/07/1975 24:00", "03/07/1975 10:5", "03/07/1975x",
                         "1975-03-07", "\xc3\xa9", "03/07/1975 10:00 pm"};
    for (const char* text : bad) {
        COleDateTime v(2000, 1, 1, 0, 0, 0);
        EXPECT_FALSE(Locale::ParseDateTime(v, CString(text))) << text;
        EXPECT_NE(v.GetStatus(), COleDateTime::valid) << text;
    }
}

TEST_F(LocaleTest, ParsedDatesOrderAsDates)
{
    COleDateTime a, b;
    ASSERT_TRUE(Locale::ParseDateTime(a, CString("12/31/1999")));
    ASSERT_TRUE(Locale::ParseDateTime(b, CString("01/01/2000")));
    EXPECT_TRUE(a < b);
    EXPECT_FALSE(b < a);
}

TEST_F(LocaleTest, MessageCatalogue)
{
    EXPECT_FALSE(Locale::LoadMessage(Locale::MSG_LINK_UNLINK_WARNING).IsEmpty());
    EXPECT_STREQ(Locale::LoadMessage(424242), "");
    Locale::SetMessage(424242, "Hello");
    EXPECT_STREQ(Locale::LoadMessage(424242), "Hello");
}

TEST_F(LocaleTest, PatientGidColumnAndFormat)
{
    EXPECT_STREQ(PatientGIDFormatter::GetPatientIDColumnName(), "SSN");
    CString ssn("123456789");
    PatientGIDFormatter::FormatPatientGID(ssn);
    EXPECT_STREQ(ssn, "123-45-6789");
    CString other("12345678A");
    PatientGIDFormatter::FormatPatientGID(other);
    EXPECT_STREQ(other, "12345678A");

    SitePolicySettings s;
    s.patientIDColumnName = "GID";
    SitePolicy::Set(s);
    EXPECT_STREQ(PatientGIDFormatter::GetPatientIDColumnName(), "GID");
    CString gid("123456789");
    PatientGIDFormatter::FormatPatientGID(gid);
    EXPECT_STREQ(gid, "123456789");
}
