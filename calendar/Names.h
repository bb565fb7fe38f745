/// Devanagari digits and numerals, and the names of weekdays and months.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace dinmala {

/// Devanagari digits by value, U+0966 "०" to U+096F "९".
extern const std::array<std::string_view, 10> kDevanagariDigits;

/// 0 to 32 in Devanagari digits without a leading zero.
extern const std::array<std::string_view, 33> kDateNumerals;

/// 0 to 59 as two Devanagari digits.
extern const std::array<std::string_view, 60> kTimeNumerals;

/// Weekday names, Sunday first. "TUEDAY", "WEDENSDAY" and "THURDAY" are
/// deliberate: that is how they are spelled here.
extern const std::array<std::string_view, 7> kWeekDaysShort;
extern const std::array<std::string_view, 7> kWeekDaysLong;
extern const std::array<std::string_view, 7> kWeekDaysNepali;

/// Gregorian month names, January first. "FEBUARY" is deliberate.
extern const std::array<std::string_view, 12> kAdMonthsShort;
extern const std::array<std::string_view, 12> kAdMonthsLong;

/// BS month names, बैशाख first.
extern const std::array<std::string_view, 12> kBsMonths;

/// The name of number 1, 2, ... in a name table; "" for a number that the table
/// does not have.
template <std::size_t N>
[[nodiscard]] constexpr std::string_view nameAt(const std::array<std::string_view, N>& names, std::uint64_t number) {
    return number >= 1 && number <= N ? names[number - 1] : std::string_view{};
}

}  // namespace dinmala
