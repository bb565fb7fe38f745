#include <gtest/gtest.h>

#include "calendar/DataStore.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using test::nepal;

class MonthCursor : public testing::Test {
protected:
    static DataStore storeAt(int year, unsigned month, unsigned day) {
        return DataStore{[=] { return nepal(year, month, day); }};
    }

    /// What holds after creation and after every move.
    static void expectNeighbours(const DataStore& store, std::uint64_t showing) {
        EXPECT_EQ(store.sm_index(), showing);
        EXPECT_EQ(store.nm_index(), showing + 1);
        EXPECT_EQ(store.pm_index(), showing - 1);
        EXPECT_EQ(store.sm_data(), store.dataArray()[showing]);
        EXPECT_EQ(store.nm_data(), showing + 1 < kMonthCount ? store.dataArray()[showing + 1] : "");
        EXPECT_EQ(store.pm_data(), showing > 0 ? store.dataArray()[showing - 1] : "");
    }
};

TEST_F(MonthCursor, StartsOnTodaysMonth) {
    const DataStore store = storeAt(2013, 4, 20);
    EXPECT_EQ(store.cm_index(), 852u);
    EXPECT_EQ(store.cm_data(), "0120703120130414201305141");
    expectNeighbours(store, 852);
}

// A position or a cursor mixed up in the forty accessors: four different records
// and ten different values each.
TEST_F(MonthCursor, ReadsEveryFieldOfEveryCursor) {
    DataStore s = storeAt(2013, 6, 20);
    s.setSm_data("0120703120130414201305141");
    s.setNm_data("0220713220140515201506162");
    s.setPm_data("0320722920150617201607183");
    s.setCm_data("0420733020160719201708204");
    using Values = std::vector<std::uint64_t>;
    EXPECT_EQ((Values{s.showingBSMonth(), s.showingBSYear(), s.showingBSNoOfDays(), s.showingADStartYear(),
                      s.showingADStartMonth(), s.showingADStartDay(), s.showingADEndYear(), s.showingADEndMonth(),
                      s.showingADEndDay(), s.showingBSFirstWeekDay()}),
              (Values{1, 2070, 31, 2013, 4, 14, 2013, 5, 14, 1}));
    EXPECT_EQ(
        (Values{s.nextBSMonth(), s.nextBSYear(), s.nextBSNoOfDays(), s.nextADStartYear(), s.nextADStartMonth(),
                s.nextADStartDay(), s.nextADEndYear(), s.nextADEndMonth(), s.nextADEndDay(), s.nextBSFirstWeekDay()}),
        (Values{2, 2071, 32, 2014, 5, 15, 2015, 6, 16, 2}));
    EXPECT_EQ((Values{s.previousBSMonth(), s.previousBSYear(), s.previousBSNoOfDays(), s.previousADStartYear(),
                      s.previousADStartMonth(), s.previousADStartDay(), s.previousADEndYear(), s.previousADEndMonth(),
                      s.previousADEndDay(), s.previousBSFirstWeekDay()}),
              (Values{3, 2072, 29, 2015, 6, 17, 2016, 7, 18, 3}));
    EXPECT_EQ((Values{s.currentBSMonth(), s.currentBSYear(), s.currentBSNoOfDays(), s.currentADStartYear(),
                      s.currentADStartMonth(), s.currentADStartDay(), s.currentADEndYear(), s.currentADEndMonth(),
                      s.currentADEndDay(), s.currentBSFristWeekDay()}),
              (Values{4, 2073, 30, 2016, 7, 19, 2017, 8, 20, 4}));
    EXPECT_EQ(s.sm_index(), 854u);  // a setter moves nothing
    s.setSm_data("short");
    EXPECT_EQ(s.showingBSFirstWeekDay(), 0u);
}

TEST_F(MonthCursor, MovesByOneAndComesBack) {
    DataStore store = storeAt(2014, 4, 1);  // BS 2070 month 12
    expectNeighbours(store, 863);
    store.nextMonth();
    expectNeighbours(store, 864);
    EXPECT_EQ(store.showingBSYear(), 2071u);
    store.nextMonth();
    store.previousMonth();
    store.previousMonth();
    store.previousMonth();
    expectNeighbours(store, 862);
    EXPECT_EQ(store.cm_index(), 863u);
    store.currentMonth();
    expectNeighbours(store, 863);
    EXPECT_EQ(store.cm_data(), store.dataArray()[863]);
}

TEST_F(MonthCursor, SeeksByEitherDate) {
    DataStore store = storeAt(2013, 4, 20);
    for (const std::string_view date : {"15032070", "01032070", "99032070"}) {
        store.currentMonth();
        store.seekByBsDate(date);
        expectNeighbours(store, 854);
    }
    for (const std::string_view date : {"20130615", "20130715", "20130620 12:34"}) {
        store.currentMonth();
        store.seekByAdDate(date);
        expectNeighbours(store, 854);
    }
    store.seekByAdDate("20130716");
    expectNeighbours(store, 855);
    for (const std::string_view outside : {"19420412", "20430414", "nonsense", ""}) {
        store.seekByAdDate(outside);
        expectNeighbours(store, 0);
    }
}

// At the table's ends the missing neighbour is empty, and no move leads past them.
TEST_F(MonthCursor, StopsAtTheEndsOfTheTable) {
    DataStore first = storeAt(1942, 4, 13);
    expectNeighbours(first, 0);
    first.previousMonth();
    expectNeighbours(first, 0);
    EXPECT_EQ(first.previousBSNoOfDays(), 0u);
    first.nextMonth();
    expectNeighbours(first, 1);
    first.previousMonth();
    expectNeighbours(first, 0);

    DataStore last = storeAt(2043, 4, 13);
    expectNeighbours(last, 1211);
    last.nextMonth();
    expectNeighbours(last, 1211);
    EXPECT_EQ(last.nextBSYear(), 0u);
    last.previousMonth();
    last.nextMonth();
    expectNeighbours(last, 1211);
}

TEST_F(MonthCursor, KnowsTheLengthOfItsTwoAdMonths) {
    DataStore store = storeAt(2013, 6, 20);
    EXPECT_EQ(store.showingADStartNoOfDays(), 30u);
    EXPECT_EQ(store.showingADEndNoOfDays(), 31u);
    store.seekByBsDate("01112056");
    EXPECT_EQ(store.showingADStartNoOfDays(), 29u);
    store.seekByBsDate("01112070");
    EXPECT_EQ(store.showingADStartNoOfDays(), 28u);
}

}  // namespace
}  // namespace dinmala
