#include <gtest/gtest.h>

#include "calendar/DataStore.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using namespace std::chrono_literals;
using test::nepal;

class NepalClock : public testing::Test {
protected:
    DataStore storeAt(Moment moment) {
        now = moment;
        return DataStore{[this] { return now; }};
    }
    Moment now;
};

TEST_F(NepalClock, TheDateTurnsAt1815Utc) {
    const Moment turn = Moment{std::chrono::sys_days{std::chrono::year{2013} / 4 / 19}} + 18h + 15min;
    DataStore store = storeAt(turn - 1min);
    EXPECT_EQ(store.getCurrentNepalDateTime(), "20130419 23:59");
    EXPECT_EQ(store.getCurrentBSDayOfWeek(), "6");
    EXPECT_EQ(store.getCurrentBSTime(), "२३:५९");
    now = turn;
    EXPECT_EQ(store.getCurrentNepalDateTime(), "20130420 00:00");
    EXPECT_EQ(store.getCurrentBSDayOfWeek(), "7");
    EXPECT_EQ(store.getCurrentBSTime(), "००:००");
    EXPECT_EQ(store.ad_c_date(), "20130419 23:59");  // as read at creation
    now = turn - 1ns;                                // parts of a second belong to the second begun
    EXPECT_EQ(store.getCurrentBSTimeFull(), "२३:५९:५९");
}

TEST_F(NepalClock, FieldsHaveTheirOwnPadding) {
    const DataStore store = storeAt(nepal(2013, 5, 5, 6, 30));
    EXPECT_EQ(store.getCurrentAdDay(), "5");
    EXPECT_EQ(store.getCurrentAdMonth(), "05");
    EXPECT_EQ(store.getCurrentAdYear(), "2013");
    EXPECT_EQ(store.getCurrentBSTime(), "०६:३०");
}

TEST_F(NepalClock, TheMonthBeforeJanuaryIsDecember) {
    const DataStore january = storeAt(nepal(2014, 1, 2));
    EXPECT_EQ(january.getAdPreviousMonth(), 12u);
    EXPECT_EQ(january.getAdPreviousYear(), 2013u);
    const DataStore may = storeAt(nepal(2013, 5, 2));
    EXPECT_EQ(may.getAdPreviousMonth(), 4u);
    EXPECT_EQ(may.getAdPreviousYear(), 2013u);
}

TEST_F(NepalClock, KnowsTheLengthsOfGregorianMonths) {
    const DataStore store = storeAt(nepal(2013, 4, 20));
    EXPECT_EQ(store.getNoOfDaysInMonth(2024, 2), 29u);
    EXPECT_EQ(store.getNoOfDaysInMonth(2023, 2), 28u);
    EXPECT_EQ(store.getNoOfDaysInMonth(2000, 2), 29u);
    EXPECT_EQ(store.getNoOfDaysInMonth(1900, 2), 28u);
    EXPECT_EQ(store.getNoOfDaysInMonth(2013, 4), 30u);
    EXPECT_EQ(store.getNoOfDaysInMonth(2012, 12), 31u);
    EXPECT_EQ(store.getNoOfDaysInMonth(~std::uint64_t{0}, 1), 0u);
}

// Each of the three ways to the day of the month, and the day that tells the
// second from the third.
TEST_F(NepalClock, TellsTheDayOfTheBsMonth) {
    EXPECT_EQ(storeAt(nepal(2013, 4, 20)).getBsCurrentDay(), 7u);
    EXPECT_EQ(storeAt(nepal(2013, 5, 5)).getBsCurrentDay(), 22u);
    EXPECT_EQ(storeAt(nepal(2013, 5, 14)).getBsCurrentDay(), 31u);
    EXPECT_EQ(storeAt(nepal(2013, 5, 15)).getBsCurrentDay(), 1u);
}

TEST_F(NepalClock, EveryDayOfTheTableFollowsTheDayBefore) {
    now = nepal(1942, 4, 13, 0, 0);
    std::uint64_t weekDay = 2;
    for (std::size_t month = 0; month < kMonthCount; ++month) {
        const DataStore store{[this] { return now; }};
        ASSERT_EQ(store.cm_index(), month);
        for (std::uint64_t day = 1; day <= store.currentBSNoOfDays(); ++day) {
            ASSERT_EQ(store.getBsCurrentDay(), day) << store.getCurrentNepalDateTime();
            ASSERT_EQ(store.getCurrentBSDayOfWeek(), std::to_string(weekDay)) << store.getCurrentNepalDateTime();
            weekDay = weekDay % 7 + 1;
            now += 24h;
        }
    }
}

TEST_F(NepalClock, OutsideTheTableThereIsNoDay) {
    for (const Moment outside : {nepal(1942, 4, 12, 23, 59), nepal(2043, 4, 14, 0, 0),
                                 nepal(1970, 1, 1) - 24h * 365 * 200, nepal(2200, 6, 1)}) {
        const DataStore store = storeAt(outside);
        EXPECT_FALSE(store.coversToday()) << store.ad_c_date();
        EXPECT_EQ(store.cm_index(), 0u);
        EXPECT_EQ(store.getBsCurrentDay(), 0u);
    }
    EXPECT_TRUE(storeAt(nepal(1942, 4, 13, 0, 0)).coversToday());
    EXPECT_TRUE(storeAt(nepal(2043, 4, 13, 23, 59)).coversToday());
}

TEST_F(NepalClock, TheReloadFlagIsUpInOneSecondOfTheDay) {
    DataStore store = storeAt(nepal(2013, 4, 20, 0, 0, 0));
    EXPECT_EQ(store.getReloadFlag(), 0u);
    EXPECT_EQ(store.getCurrentBSTimeFull(), "००:००:००");
    EXPECT_EQ(store.getReloadFlag(), 0u);
    now += 1s;
    EXPECT_EQ(store.getCurrentBSTimeFull(), "००:००:०१");
    EXPECT_EQ(store.getReloadFlag(), 1u);
    now += 1s;
    (void)store.getCurrentBSTimeFull();
    EXPECT_EQ(store.getReloadFlag(), 0u);
    now += 1h;
    (void)store.getCurrentBSTimeFull();
    EXPECT_EQ(store.getReloadFlag(), 0u);
}

class DaysBetween : public testing::Test {
protected:
    static TimeZone fixed(std::chrono::seconds offset) {
        return {"fixed", [offset](Moment) { return offset; }};
    }
};

TEST_F(DaysBetween, CountsLocalMidnightsWhateverTheOrder) {
    const test::DefaultTimeZoneGuard guard{kathmandu()};
    const auto days = [](Moment a, Moment b) {
        EXPECT_EQ(DataStoreFunctions::daysBetween(a, b), DataStoreFunctions::daysBetween(b, a));
        return DataStoreFunctions::daysBetween(a, b);
    };
    EXPECT_EQ(days(nepal(2013, 4, 14), nepal(2013, 5, 14)), 30u);
    EXPECT_EQ(days(nepal(2013, 4, 14, 23, 59), nepal(2013, 4, 15, 0, 1)), 1u);
    EXPECT_EQ(days(nepal(2013, 4, 14, 0, 0), nepal(2013, 4, 14, 23, 59)), 0u);
    EXPECT_EQ(days(nepal(2013, 4, 14), nepal(2013, 4, 14)), 0u);
    setDefaultTimeZone(fixed(0s));
    EXPECT_EQ(days(nepal(2013, 4, 14, 23, 59), nepal(2013, 4, 15, 0, 1)), 0u);
}

// Days of 23, 25 and 0 hours: dividing seconds by 86,400 fails each.
TEST_F(DaysBetween, CountsDatesWhereTheClockChanges) {
    const Moment change = Moment{std::chrono::sys_days{std::chrono::year{2013} / 3 / 10}} + 7h;
    const test::DefaultTimeZoneGuard guard{
        {"one hour forward", [change](Moment moment) { return moment < change ? -5h : -4h; }}};
    const Moment midnight = Moment{std::chrono::sys_days{std::chrono::year{2013} / 3 / 10}} + 5h;
    EXPECT_EQ(DataStoreFunctions::daysBetween(midnight, midnight + 23h), 1u);
    EXPECT_EQ(DataStoreFunctions::daysBetween(midnight, midnight + 23h - 1s), 0u);
    const DataStore store{[] { return nepal(2013, 4, 20); }};
    EXPECT_EQ(store.addDaysToDate(midnight, 2), midnight + 23h);
    EXPECT_EQ(store.addDaysToDate(midnight + 5ns, 1), midnight + 5ns);
    // A zone that skips the 30th: the 29th and the 31st are two dates apart.
    const Moment skip = Moment{std::chrono::sys_days{std::chrono::year{2011} / 12 / 30}} + 10h;
    setDefaultTimeZone({"skips a day", [skip](Moment moment) { return moment < skip ? -10h : 14h; }});
    EXPECT_EQ(DataStoreFunctions::daysBetween(skip - 1h, skip + 1h), 2u);
}

}  // namespace
}  // namespace dinmala
