// The showing month laid out as a grid.
#include <algorithm>

#include "calendar/DataStore.h"

namespace dinmala {

namespace {

constexpr std::int32_t kCells = 42;

std::int32_t small(std::uint64_t number) { return static_cast<std::int32_t>(number); }

/// Calls `cell(i)` for cells 1 to 42 and collects what it gives.
template <typename Cell>
std::vector<std::int32_t> grid(Cell&& cell) {
    std::vector<std::int32_t> cells;
    cells.reserve(kCells);
    for (std::int32_t i = 1; i <= kCells; ++i) cells.push_back(cell(i));
    return cells;
}

}  // namespace

// Days are counted and not taken from the cell's number: a record of another make may give a first weekday of 0 or
// any number of days.

std::vector<std::int32_t> DataStore::getMonthBSDays() const {
    const std::int32_t before = small(previousBSNoOfDays());
    const std::uint64_t length = showingBSNoOfDays();
    const std::int32_t first = small(showingBSFirstWeekDay());
    std::uint64_t day = 1;
    std::int32_t next = 1;
    return grid([&](std::int32_t i) {
        if (i < first) return std::max(before - first + 1 + i, 0);
        return day <= length ? small(day++) : next++;
    });
}

std::vector<std::int32_t> DataStore::getMonthBSDaysIsCurrentNextOrPrevious() const {
    const std::uint64_t length = showingBSNoOfDays();
    const std::int32_t first = small(showingBSFirstWeekDay());
    std::uint64_t day = 1;
    return grid([&](std::int32_t i) {
        if (i < first) return 0;
        return day++ <= length ? 1 : 2;
    });
}

std::vector<std::int32_t> DataStore::getMonthADDays() const {
    const std::int32_t first = small(showingBSFirstWeekDay());
    const std::int32_t start = small(showingADStartDay());
    const std::int32_t monthLength = small(showingADStartNoOfDays());
    std::int32_t day = start;
    return grid([&](std::int32_t i) {
        if (i < first) return start - first + i;
        const std::int32_t shown = day;
        day = day == monthLength ? 1 : day + 1;
        return shown;
    });
}

std::vector<std::string> DataStore::getMonthADDaysFull() const {
    const std::uint64_t length = showingBSNoOfDays();
    const std::uint64_t monthLength = showingADStartNoOfDays();
    const auto label = [&](std::uint64_t day, std::uint64_t month, std::uint64_t year) {
        return std::to_string(day) + " " + std::string{getMonthName("ad", "short", month)} + ", " +
               std::to_string(year);
    };
    std::vector<std::string> labels;
    for (std::uint64_t j = 1; j <= length; ++j) {
        const std::uint64_t day = showingADStartDay() + j - 1;
        labels.push_back(day <= monthLength ? label(day, showingADStartMonth(), showingADStartYear())
                                            : label(day - monthLength, showingADEndMonth(), showingADEndYear()));
    }
    return labels;
}

}  // namespace dinmala
