#include <gtest/gtest.h>

#include "calendar/DataStore.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using Cells = std::vector<std::int32_t>;

/// Runs of consecutive numbers, {first, last} each, one after the other.
Cells runs(std::initializer_list<std::pair<int, int>> parts) {
    Cells cells;
    for (const auto& [first, last] : parts) {
        for (int i = first; i <= last; ++i) cells.push_back(i);
    }
    return cells;
}

Cells kinds(std::size_t before, std::size_t month, std::size_t after) {
    Cells cells(before, 0);
    cells.insert(cells.end(), month, 1);
    cells.insert(cells.end(), after, 2);
    return cells;
}

class MonthGrid : public testing::Test {
protected:
    DataStore store{[] { return test::nepal(2013, 6, 20); }};
};

TEST_F(MonthGrid, LaysOutKnownMonths) {
    EXPECT_EQ(store.getMonthBSDays(), runs({{26, 31}, {1, 31}, {1, 5}}));
    EXPECT_EQ(store.getMonthBSDaysIsCurrentNextOrPrevious(), kinds(6, 31, 5));
    EXPECT_EQ(store.getMonthADDays(), runs({{9, 14}, {15, 30}, {1, 20}}));
    store.seekByBsDate("01012070");  // begins on a Sunday
    EXPECT_EQ(store.getMonthBSDays(), runs({{1, 31}, {1, 11}}));
    EXPECT_EQ(store.getMonthBSDaysIsCurrentNextOrPrevious(), kinds(0, 31, 11));
    EXPECT_EQ(store.getMonthADDays(), runs({{14, 30}, {1, 25}}));
    store.seekByBsDate("01112070");  // through a February of 28 days
    EXPECT_EQ(store.getMonthBSDays(), runs({{26, 29}, {1, 30}, {1, 8}}));
    EXPECT_EQ(store.getMonthADDays(), runs({{9, 12}, {13, 28}, {1, 22}}));
    store.seekByBsDate("01042006");  // fills the most cells
    EXPECT_EQ(store.getMonthBSDaysIsCurrentNextOrPrevious(), kinds(6, 32, 4));
}

TEST_F(MonthGrid, LabelsEachDayWithItsAdDate) {
    const auto labels = store.getMonthADDaysFull();
    ASSERT_EQ(labels.size(), 31u);
    EXPECT_EQ(labels[0], "15 Jun, 2013");
    EXPECT_EQ(labels[15], "30 Jun, 2013");
    EXPECT_EQ(labels[16], "1 Jul, 2013");
    EXPECT_EQ(labels[30], "15 Jul, 2013");
    store.seekByBsDate("01092070");  // the year changes within the month
    EXPECT_EQ(store.getMonthADDaysFull().front(), "16 Dec, 2013");
    EXPECT_EQ(store.getMonthADDaysFull().back(), "14 Jan, 2014");
    store.setSm_data("");
    EXPECT_TRUE(store.getMonthADDaysFull().empty());
}

// Plain day arithmetic from the first cell on, for every month with neighbours.
TEST_F(MonthGrid, AgreesWithDayArithmeticInEveryMonth) {
    using namespace std::chrono;
    store.seekByAdDate("19420413");
    for (std::size_t i = 1; i + 1 < kMonthCount; ++i) {
        store.nextMonth();
        const Cells ad = store.getMonthADDays();
        const Cells bs = store.getMonthBSDays();
        ASSERT_EQ(ad.size(), 42u);
        ASSERT_EQ(bs.size(), 42u);
        const sys_days first =
            sys_days{year{static_cast<int>(store.showingADStartYear())} /
                     static_cast<int>(store.showingADStartMonth()) / static_cast<int>(store.showingADStartDay())};
        const auto offset = static_cast<std::int64_t>(store.showingBSFirstWeekDay()) - 1;
        for (std::size_t cell = 0; cell < 42; ++cell) {
            const sys_days day = first + days{static_cast<std::int64_t>(cell) - offset};
            ASSERT_EQ(ad[cell], static_cast<int>(unsigned{year_month_day{day}.day()})) << store.sm_data();
        }
        if (offset > 0) {
            ASSERT_EQ(bs[static_cast<std::size_t>(offset) - 1], static_cast<int>(store.previousBSNoOfDays()));
        }
        ASSERT_EQ(bs[static_cast<std::size_t>(offset)], 1);
    }
}

TEST_F(MonthGrid, StaysSensibleInTheFirstAndLastMonth) {
    store.seekByAdDate("19420413");
    EXPECT_EQ(store.getMonthBSDays(), runs({{0, 31}, {1, 10}}));  // the Sunday before is not known
    store.seekByAdDate("20430413");
    EXPECT_EQ(store.getMonthBSDays(), runs({{1, 30}, {1, 12}}));
}

// Of a record that was set by hand: the days begin in the first cell, all three grids alike.
TEST_F(MonthGrid, BeginsInTheFirstCellWithoutAFirstWeekday) {
    store.setSm_data("0320703120130615201307150");
    EXPECT_EQ(store.getMonthBSDays(), runs({{1, 31}, {1, 11}}));
    EXPECT_EQ(store.getMonthBSDaysIsCurrentNextOrPrevious(), kinds(0, 31, 11));
    EXPECT_EQ(store.getMonthADDays(), runs({{15, 30}, {1, 26}}));
    store.setSm_data("032070-120130615201307151");  // more days than any grid has cells
    EXPECT_EQ(store.getMonthBSDays(), runs({{1, 42}}));
    EXPECT_EQ(store.getMonthBSDaysIsCurrentNextOrPrevious(), kinds(0, 42, 0));
}

}  // namespace
}  // namespace dinmala
