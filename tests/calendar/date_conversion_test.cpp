#include <gtest/gtest.h>

#include <algorithm>

#include "calendar/DataStore.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

class DateConversion : public testing::Test {
protected:
    DataStore store{[] { return test::nepal(2013, 4, 20, 6, 30); }};
};

// A wrong bound or a "day - 1" shows at the ends of months and of the table. The
// dates are written out, so a table that has shifted fails here too.
TEST_F(DateConversion, AgreesWithKnownDaysBothWays) {
    struct Day {
        std::string_view bs, ad, adDashed, bsDashed;
    };
    for (const Day& day : {Day{"01011999", "19420413", "1942-04-13", "1-01-1999"},
                           Day{"01012070", "20130414", "2013-04-14", "1-01-2070"},
                           Day{"07012070", "20130420 06:30", "2013-04-20", "7-01-2070"},
                           Day{"31012070", "20130514", "2013-05-14", "31-01-2070"},
                           Day{"01022070", "20130515", "2013-05-15", "1-02-2070"},
                           Day{"15122099", "20430329", "2043-03-29", "15-12-2099"},
                           Day{"30122099", "20430413", "2043-04-13", "30-12-2099"}}) {
        EXPECT_EQ(store.convertBs2Ad(day.bs), day.adDashed) << day.bs;
        EXPECT_EQ(store.convertAd2Bs(day.ad), day.bsDashed) << day.ad;
    }
}

// Both sides count whole days from the month's first, so a month that is right at
// both ends is right between. No zone has a say in it.
TEST_F(DateConversion, EveryMonthGoesThereAndBackAtBothEndsInAnyZone) {
    for (const std::chrono::seconds offset : {std::chrono::hours{-10}, std::chrono::hours{0}, std::chrono::hours{14}}) {
        const test::DefaultTimeZoneGuard guard{{"fixed", [offset](Moment) { return offset; }}};
        for (const std::string& record : store.dataArray()) {
            const std::string monthYear = record.substr(0, 6);
            const std::string tail = "-" + record.substr(0, 2) + "-" + record.substr(2, 4);
            EXPECT_EQ(store.convertAd2Bs(record.substr(8, 8)), "1" + tail);
            EXPECT_EQ(store.convertAd2Bs(record.substr(16, 8)), record.substr(6, 2) + tail);
            std::string last = store.convertBs2Ad(record.substr(6, 2) + monthYear).value_or("");
            std::erase(last, '-');
            EXPECT_EQ(last, record.substr(16, 8));
        }
    }
}

TEST_F(DateConversion, GivesNothingForADayItsMonthDoesNotHave) {
    EXPECT_EQ(store.convertBs2Ad("32012070"), std::nullopt);  // 31 days
    EXPECT_EQ(store.convertAd2Bs("20130231"), std::nullopt);
    EXPECT_NE(store.convertAd2Bs("20120229"), std::nullopt);  // a leap year
    for (const std::string_view shortText : {"", "1", "0101207", "-1-1-1-"}) {
        EXPECT_EQ(store.convertBs2Ad(shortText), std::nullopt);
        EXPECT_EQ(store.convertAd2Bs(shortText), std::nullopt);
    }
    EXPECT_EQ(store.convertBs2Ad("-1012070"), std::nullopt);
}

TEST_F(DateConversion, CountsFromTheFirstMonthOutsideTheTable) {
    EXPECT_EQ(store.convertBs2Ad("02012100"), "1942-04-14");
    EXPECT_EQ(store.convertAd2Bs("19420412"), "2-01-1999");
    EXPECT_EQ(store.convertAd2Bs("20430414"), "36892-01-1999");
}

TEST_F(DateConversion, TellsTheWeekdayOfAnyAdDate) {
    for (const std::string& record : store.dataArray()) {
        ASSERT_EQ(std::to_string(store.getWeekDayByAd(record.substr(8, 8))), record.substr(24));
    }
    EXPECT_EQ(store.getWeekDayByAd("19000101"), 2u);
    EXPECT_EQ(store.getBSDateByAd("20130414"), std::nullopt);
}

}  // namespace
}  // namespace dinmala
