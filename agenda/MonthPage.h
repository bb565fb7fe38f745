/// A month as the page of a calendar: its days, and where they stand in weeks that begin on Sunday.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "almanac/Edition.h"

namespace dinmala {

struct MonthPage {
    BsYearMonth month;
    unsigned length = 0;          ///< days
    std::chrono::sys_days first;  ///< its first day
    std::chrono::weekday firstWeekDay;

    [[nodiscard]] std::chrono::sys_days last() const { return first + std::chrono::days{length - 1}; }

    /// The weeks that hold a day of the month, 4 to 6.
    [[nodiscard]] std::size_t weeks() const { return (firstWeekDay.c_encoding() + length + 6) / 7; }

    /// The day of the month, 1 or more, in a week from 0 on and a column from 0 (Sunday) to 6; 0 where the cell is
    /// another month's.
    [[nodiscard]] unsigned dayAt(std::size_t week, unsigned column) const {
        const auto place = static_cast<unsigned>(week) * 7 + column;
        const unsigned from = firstWeekDay.c_encoding();
        return place >= from && place < from + length ? place - from + 1 : 0;
    }
};

/// Nothing for a month outside the table.
[[nodiscard]] std::optional<MonthPage> monthPage(const BsCalendar& calendar, BsYearMonth month);

/// The AD months that a month lies in: "Jun/Jul 2013", "Dec 2013/Jan 2014".
[[nodiscard]] std::string adMonthsOf(const MonthPage& page);

/// The days of a month with what the edition lists on each; without tithis and events in a year that it has no lists
/// for. Empty for a month outside the table.
[[nodiscard]] std::vector<AlmanacDay> monthDays(const Edition& edition, BsYearMonth month);

}  // namespace dinmala
