#include "base/BsCalendar.h"

#include <gtest/gtest.h>

#include <concepts>
#include <type_traits>
#include <unordered_set>

#include "base/MonthLengths.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

using namespace std::chrono;

// Nothing of one calendar is taken for something of the other, nor a plain number for either.
template <typename To, typename... From>
constexpr bool kTakesNone = (!std::is_convertible_v<From, To> && ...);
static_assert(kTakesNone<BsYear, int, unsigned, year, BsMonth, BsDay>);
static_assert(kTakesNone<BsMonth, int, unsigned, month, BsYear, BsDay>);
static_assert(kTakesNone<BsDay, int, unsigned, day, BsYear, BsMonth>);
static_assert(kTakesNone<BsDate, year_month_day, sys_days, int> && kTakesNone<year_month_day, BsDate>);
static_assert(kTakesNone<int, BsYear, BsMonth, BsDay> && kTakesNone<unsigned, BsYear, BsMonth, BsDay>);
template <typename A, typename B>
concept Comparable = requires(A a, B b) {
    a == b;
};
template <typename A, typename B>
concept Addable = requires(A a, B b) {
    a + b;
};
static_assert(!Comparable<BsYear, year> && !Comparable<BsYear, int> && !Comparable<BsDate, year_month_day>);
static_assert(!Addable<BsYear, int> && !Addable<BsDate, days> && !Addable<BsMonth, int>);

// Sums that cross a year, both ways and past several years, at compile time.
static_assert(BsMonth{12} + months{1} == BsMonth{1} && BsMonth{1} - months{13} == BsMonth{12});
static_assert(BsYearMonth{BsYear{2070}, BsMonth{1}} - months{1} == BsYearMonth{BsYear{2069}, BsMonth{12}});
static_assert(BsYearMonth{BsYear{2070}, BsMonth{12}} + months{25} == BsYearMonth{BsYear{2073}, BsMonth{1}});
static_assert(BsYearMonth{BsYear{2071}, BsMonth{2}} - BsYearMonth{BsYear{2069}, BsMonth{11}} == months{15});
static_assert(bsDate(2070, 12, 30) + months{1} == bsDate(2071, 1, 30) && bsDate(2069, 12, 30) < bsDate(2070, 1, 1));
static_assert(bsDate(2070, 12, 32).ok() && !bsDate(2070, 13, 1).ok() && !bsDate(2070, 0, 1).ok() &&
              !bsDate(2070, 1, 33).ok() && !bsDate(0, 1, 1).ok());

BsCalendar embedded() {
    return *parseMonthLengths(contentOf(SOURCE_DIR "/calendar/data/month_lengths.txt"))->calendar();
}

/// Every day of a calendar: counted on from its first date, there and back.
void walk(const BsCalendar& calendar) {
    std::unordered_set<std::size_t> hashes;
    BsDate date = calendar.firstDate();
    unsigned dayOfYear = date.month == BsMonth{1} ? 0 : 400;  // a year that begins before the table has no count
    for (sys_days day = calendar.firstDay(); day <= calendar.lastDay(); day += days{1}) {
        ASSERT_EQ(calendar.toDate(day), date);
        ASSERT_EQ(calendar.toDays(date), day);
        ASSERT_TRUE(hashes.insert(std::hash<BsDate>{}(date)).second);
        if (dayOfYear < 400) {
            ASSERT_EQ(calendar.dayOfYear(date), ++dayOfYear);
        }
        if (unsigned{date.day} < calendar.daysIn(date.yearMonth())) {
            date.day = BsDay{unsigned{date.day} + 1};
            continue;
        }
        ASSERT_FALSE(calendar.has({date.year, date.month, BsDay{unsigned{date.day} + 1}}));
        date = BsDate{date.year, date.month, BsDay{1}} + months{1};
        if (date.month == BsMonth{1}) dayOfYear = 0;
    }
}

// Every day both ways, of the embedded months and of tables that begin elsewhere and have
// other lengths: the longest and the shortest there may be.
TEST(BsCalendar, CountsEveryDayOfAnyTable) {
    const BsCalendar calendar = embedded();
    EXPECT_EQ(calendar.lastDate(), bsDate(2099, 12, 30));
    EXPECT_EQ(calendar.lastDay(), sys_days{2043y / 4 / 13});
    EXPECT_EQ(calendar.toDays(bsDate(2070, 1, 1)), sys_days{2013y / 4 / 14});
    EXPECT_EQ(calendar.daysIn(BsYear{2070}), 365u);
    walk(calendar);
    const sys_days first{1800y / 2 / 28};
    for (const std::uint8_t length : std::initializer_list<std::uint8_t>{28, 29, 32, 33}) {
        const std::vector<std::uint8_t> lengths(500, length);
        walk(*BsCalendar::make({BsYear{1856}, BsMonth{7}}, first, lengths));
    }
}

TEST(BsCalendar, GivesNothingOutsideItsTable) {
    const BsCalendar calendar = embedded();
    for (const BsDate& date : {bsDate(1998, 12, 30), bsDate(2100, 1, 1), bsDate(2070, 0, 1), bsDate(2070, 13, 1),
                               bsDate(2070, 1, 0), bsDate(2070, 1, 32), BsDate{}}) {
        EXPECT_FALSE(calendar.has(date));
        EXPECT_EQ(calendar.toDays(date), std::nullopt);
        EXPECT_EQ(calendar.dayOfYear(date), 0u);
    }
    constexpr days kFar{std::int64_t{1} << 32};  // a count that was cut to 32 bits would be inside again
    for (const sys_days day :
         {calendar.firstDay() - days{1}, calendar.lastDay() + days{1}, sys_days{days{-800000}}, sys_days{days{4000000}},
          calendar.firstDay() + kFar, calendar.lastDay() - kFar, sys_days::min(), sys_days::max()}) {
        EXPECT_FALSE(calendar.covers(day));
        EXPECT_EQ(calendar.indexOf(day), calendar.months().size());
        EXPECT_EQ(calendar.toDate(day), std::nullopt);
    }
    EXPECT_EQ(calendar.daysIn(BsYearMonth{BsYear{2100}, BsMonth{1}}), 0u);
    EXPECT_EQ(calendar.daysIn(BsYear{1998}), 0u);
    const std::uint8_t lengths[] = {30, 34};
    EXPECT_EQ(BsCalendar::make({BsYear{2000}, BsMonth{1}}, {}, lengths).error().what, "gives a month 34 days");
    EXPECT_FALSE(BsCalendar::make({BsYear{2000}, BsMonth{1}}, {}, {}));
    EXPECT_FALSE(BsCalendar::make({BsYear{9999}, BsMonth{12}}, {}, std::span{lengths}.first(1)) &&
                 BsCalendar::make({BsYear{9999}, BsMonth{12}}, {}, std::vector<std::uint8_t>(2, 30)));
}

}  // namespace
}  // namespace dinmala
