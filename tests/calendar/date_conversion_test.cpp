#include <gtest/gtest.h>

#include <algorithm>

#include "base/Text.h"
#include "base/TimeZone.h"
#include "calendar/DataStore.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using namespace std::chrono_literals;

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

// Each day is asked of the embedded table, of the same table as records of another
// make, and of plain day arithmetic, in the C library's zones: no zone has a say in it.
TEST_F(DateConversion, EveryDayGoesThereAndBackInAnyZone) {
    using namespace std::chrono;
    DataStore scanning{[] { return test::nepal(2013, 4, 20); }};
    scanning.setDataArray(std::vector<std::string>{store.dataArray()});
    const test::DefaultTimeZoneGuard guard{machine()};
    for (const char* zone : {"UTC", "Asia/Kathmandu", "America/New_York", "Pacific/Apia"}) {
        const test::MachineZoneGuard machineZone{zone};
        sys_days day{1942y / 4 / 13};
        for (const std::string& record : store.dataArray()) {
            const int length = std::stoi(record.substr(6, 2));
            for (int d = 1; d <= length; ++d, day += days{1}) {
                const year_month_day date{day};
                const std::string year = std::to_string(int{date.year()});
                const std::string month = padded(unsigned{date.month()}, 2);
                const std::string dayOfMonth = padded(unsigned{date.day()}, 2);
                const std::string ad = year + month + dayOfMonth;
                const std::string bs = padded(static_cast<std::uint64_t>(d), 2) + record.substr(0, 6);
                const std::string expected = std::to_string(d) + "-" + record.substr(0, 2) + "-" + record.substr(2, 4);
                ASSERT_EQ(store.convertAd2Bs(ad), expected) << zone << " " << ad;
                const auto back = store.convertBs2Ad(bs);
                ASSERT_EQ(back, year + "-" + month + "-" + dayOfMonth);
                const bool endsAMonth = d == length || date.day() == (date.year() / date.month() / last).day();
                if (d == 1 || endsAMonth) {
                    ASSERT_EQ(scanning.convertAd2Bs(ad), expected) << ad;
                    ASSERT_EQ(scanning.convertBs2Ad(bs), back);
                }
            }
        }
    }
}

// A text that is not plain digits must not come by another way to another answer.
TEST_F(DateConversion, ReadsUnusualTextsAsTheRecordScanDoes) {
    DataStore scanning{[] { return test::nepal(2013, 4, 20); }};
    scanning.setDataArray(std::vector<std::string>{store.dataArray()});
    for (const std::string_view text :
         {" 1012070", "+1012070", "00012070", "1 012070", "01 12070",
          "01132070", "01002070", "0101207x", "01012100", "01011998",
          "0a012070", "99999999", "-1-1-1-1", "2013 4 4", "20130400",
          "20131301", "20130014", "2013041x", "19420412", "20430414",
          "20430413", "00000000", "99991231", "2013/4/1", "\xe0\xa5\xa6\xe0\xa5\xa6\xe0\xa5"}) {
        EXPECT_EQ(store.convertBs2Ad(text), scanning.convertBs2Ad(text)) << text;
        EXPECT_EQ(store.convertAd2Bs(text), scanning.convertAd2Bs(text)) << text;
    }
}

// Civil days, never seconds: days of 23 and 25 hours, a quarter of an hour that
// Nepal skipped, a day that Samoa skipped.
TEST_F(DateConversion, CountsCivilDaysWhereTheClockChanges) {
    const test::DefaultTimeZoneGuard guard{machine()};
    struct Span {
        const char* zone;
        std::chrono::local_seconds from;
        std::uint64_t days;
    };
    const auto at = [](int year, unsigned month, unsigned day, std::chrono::minutes time) {
        return std::chrono::local_days{std::chrono::year{year} / static_cast<int>(month) / static_cast<int>(day)} +
               time;
    };
    for (const Span& span :
         {Span{"America/New_York", at(2013, 3, 9, 23h + 59min), 2}, Span{"America/New_York", at(2013, 11, 2, 12h), 2},
          Span{"Asia/Kathmandu", at(1985, 12, 30, 23h + 50min), 3}, Span{"Pacific/Apia", at(2011, 12, 29, 12h), 2},
          Span{"UTC", at(2013, 4, 14, 0min), 30}}) {
        const test::MachineZoneGuard machineZone{span.zone};
        const Moment from = machine().toMoment(span.from);
        const Moment to = store.addDaysToDate(from, span.days + 1);
        EXPECT_EQ(machine().toLocal(to), span.from + std::chrono::days{span.days}) << span.zone;
        EXPECT_EQ(store.daysBetween(from, to), span.days) << span.zone;
        EXPECT_EQ(store.daysBetween(to, from), span.days) << span.zone;
        EXPECT_EQ(store.addDaysToDate(from, 1), from) << span.zone;
        const Moment midnight = machine().toMoment(std::chrono::floor<std::chrono::days>(span.from) + 24h);
        EXPECT_EQ(store.daysBetween(midnight - 1min, midnight), span.zone == std::string{"Pacific/Apia"} ? 2u : 1u);
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
