#include "bdate.h"
#include "bdatetime.h"
#include "btime.h"
#include "hoststate.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

TEST(BDate, DefaultIsInvalid)
{
    EXPECT_FALSE(BDate().IsValid());
    EXPECT_EQ(std::string(BDate().ToString().c_str()), "");
}

TEST(BDate, LeapDayValidOnlyInLeapYears)
{
    EXPECT_TRUE(BDate(2024, 2, 29).IsValid());
    EXPECT_TRUE(BDate(2000, 2, 29).IsValid());
    EXPECT_FALSE(BDate(1900, 2, 29).IsValid());
    EXPECT_FALSE(BDate(2023, 2, 29).IsValid());
    EXPECT_FALSE(BDate(2024, 2, 30).IsValid());
}

TEST(BDate, RangeOfParts)
{
    EXPECT_TRUE(BDate(1800, 1, 1).IsValid());
    EXPECT_TRUE(BDate(2023, 12, 31).IsValid());
    EXPECT_FALSE(BDate(2023, 13, 1).IsValid());
    EXPECT_FALSE(BDate(2023, 0, 1).IsValid());
    EXPECT_FALSE(BDate(2023, 4, 31).IsValid());
    EXPECT_FALSE(BDate(2023, 4, 0).IsValid());
    EXPECT_FALSE(BDate(0, 1, 1).IsValid());
    EXPECT_FALSE(BDate(10000, 1, 1).IsValid());
}

TEST(BDate, DicomTextRoundTrip)
{
    EXPECT_EQ(std::string(BDate(1975, 3, 7).ToString().c_str()), "19750307");
    EXPECT_EQ(BDate::FromString("19750307"), BDate(1975, 3, 7));
    EXPECT_FALSE(BDate::FromString("19750230").IsValid());
    EXPECT_FALSE(BDate::FromString("1975037").IsValid());
    EXPECT_FALSE(BDate::FromString("1975a307").IsValid());
    EXPECT_FALSE(BDate::FromString(nullptr).IsValid());
}

TEST(BDate, Ordering)
{
    EXPECT_TRUE(BDate(1999, 12, 31) < BDate(2000, 1, 1));
    EXPECT_TRUE(BDate(2000, 1, 1) < BDate(2000, 1, 2));
    EXPECT_FALSE(BDate(2000, 1, 2) < BDate(2000, 1, 2));
}

TEST(BTime, Validity)
{
    EXPECT_TRUE(BTime(23, 59, 59).IsValid());
    EXPECT_FALSE(BTime(24, 0, 0).IsValid());
    EXPECT_FALSE(BTime(12, 60, 0).IsValid());
    EXPECT_FALSE(BTime(-1, 0, 0).IsValid());
    EXPECT_EQ(BTime(7, 5, 3).GetMinute(), 5);
}

TEST(BDateTime, EmptyIsInvalid)
{
    EXPECT_FALSE(BDateTime().IsValid());
    EXPECT_FALSE(BDateTime(BDate(2023, 2, 29), BTime(0, 0, 0)).IsValid());
    EXPECT_FALSE(BDateTime(BDate(2023, 2, 28), BTime(25, 0, 0)).IsValid());
}

TEST(BDateTime, FromCountIsSecondsSinceEpoch)
{
    const BDateTime t(std::int64_t(86400 + 3661));
    ASSERT_TRUE(t.IsValid());
    EXPECT_EQ(t.GetDate(), BDate(1970, 1, 2));
    EXPECT_EQ(t.GetTime(), BTime(1, 1, 1));
    EXPECT_EQ(BDateTime(BDate(2000, 3, 1), BTime(12, 0, 0)).ToInt64(), 951912000);
}

TEST(BDateTime, DatesBeforeTheEpochKeepTheirParts)
{
    const BDateTime t(BDate(1800, 1, 1), BTime(6, 30, 15));
    ASSERT_TRUE(t.IsValid());
    EXPECT_LT(t.ToInt64(), 0);
    EXPECT_EQ(t.GetDate(), BDate(1800, 1, 1));
    EXPECT_EQ(t.GetTime(), BTime(6, 30, 15));
    EXPECT_EQ(BDateTime(t.ToInt64()), t);
}

TEST(BDateTime, Ordering)
{
    const BDateTime a(BDate(2020, 5, 1), BTime(10, 0, 0));
    const BDateTime b(BDate(2020, 5, 1), BTime(10, 0, 1));
    EXPECT_TRUE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_FALSE(a < a);
    // The empty value orders before every valid one.
    EXPECT_TRUE(BDateTime() < a);
    EXPECT_FALSE(a < BDateTime());
    EXPECT_FALSE(BDateTime() < BDateTime());
}

TEST(BDateTime, DicomTextRoundTrip)
{
    const BDateTime t(BDate(2021, 11, 9), BTime(8, 7, 6));
    EXPECT_EQ(std::string(t.ToString().c_str()), "20211109080706");
    EXPECT_EQ(BDateTime::FromString("20211109080706"), t);
    EXPECT_FALSE(BDateTime::FromString("2021110908070").IsValid());
}

class TimeZoneTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const char* tz = std::getenv("TZ");
        m_hadTz = tz != nullptr;
        if (tz)
            m_oldTz = tz;
    }
    void TearDown() override
    {
        if (m_hadTz)
            setenv("TZ", m_oldTz.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    void Use(const char* tz)
    {
        setenv("TZ", tz, 1);
        tzset();
    }
    bool m_hadTz = false;
    std::string m_oldTz;
};

TEST_F(TimeZoneTest, ToLocalShiftsByTheZoneOffset)
{
    Use("EST5EDT,M3.2.0,M11.1.0");
    const BDateTime winter(BDate(2023, 1, 15), BTime(12, 0, 0));
    EXPECT_EQ(winter.ToLocal().GetTime(), BTime(7, 0, 0));
    const BDateTime summer(BDate(2023, 7, 15), BTime(12, 0, 0));
    EXPECT_EQ(summer.ToLocal().GetTime(), BTime(8, 0, 0));
    const BDateTime early(BDate(2023, 1, 15), BTime(2, 0, 0));
    EXPECT_EQ(early.ToLocal().GetDate(), BDate(2023, 1, 14));
    EXPECT_EQ(early.ToLocal().ToUTC(), early);
    EXPECT_FALSE(BDateTime().ToLocal().IsValid());
}

TEST_F(TimeZoneTest, ToLocalInUtcIsIdentity)
{
    Use("UTC0");
    const BDateTime t(BDate(2023, 1, 15), BTime(12, 0, 0));
    EXPECT_EQ(t.ToLocal(), t);
}
