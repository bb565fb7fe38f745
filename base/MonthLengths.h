/// The text form of a month table: the lengths of a BS year's months, a year a line.
#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/BsCalendar.h"

namespace dinmala {

/// The civil day on which BS 1999 begins in every edition of the calendar.
inline constexpr std::chrono::sys_days kFirstDayOf1999{std::chrono::year{1942} / std::chrono::April / 13};

/// The lengths of consecutive years.
struct MonthLengths {
    BsYear firstYear;
    std::vector<std::uint8_t> lengths;  ///< twelve a year

    /// The calendar of these months. REQUIRES: firstYear is 1999, as no other first day is known.
    [[nodiscard]] Result<BsCalendar> calendar() const {
        return BsCalendar::make({firstYear, BsMonth{1}}, kFirstDayOf1999, lengths);
    }
};

/// Reads lines such as `2070: 31 31 31 32 31 31 29 30 30 29 30 30`. "#" begins a comment, blank
/// lines are skipped; years follow each other.
///
/// Refused with its line: a carriage return, another form, a year that does not follow, a year
/// of other than 364 to 366 days, and a length that no BS month has: 29 to 32 days, 32 in months
/// 2 to 5 only, 29 in months 7 to 11 only.
[[nodiscard]] Result<MonthLengths> parseMonthLengths(std::string_view text);

}  // namespace dinmala
