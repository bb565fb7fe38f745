/// Stateless operations: Devanagari numerals, weekday and month names, and the
/// days between two moments.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Clock.h"

namespace dinmala {

class DataStoreFunctions {
public:
    DataStoreFunctions() = delete;

    /// Two Devanagari digits for 0 to 59, "०५" for 5; "००" for any other number.
    [[nodiscard]] static std::string_view getNepaliTimeDigitFor(std::int32_t number);

    /// Devanagari digits without a leading zero for 0 to 32, "७" for 7; "०" for
    /// any other number.
    [[nodiscard]] static std::string_view getNepaliDateDigitFor(std::int32_t number);

    /// The weekday's name; `weekDay` counts modulo 8, so 1 to 7 are Sunday to
    /// Saturday and 9 to 15 are again. "" for 0 and the other multiples of 8.
    /// @param inCalendar true for the Devanagari name, false for the English one
    /// @param andFormat  true for the long English name, false for the short
    ///                   one; ignored in Devanagari
    [[nodiscard]] static std::string_view getNameForWeekDayInCalendarAndFormat(std::uint64_t weekDay, bool inCalendar,
                                                                               bool andFormat);

    /// The month's name. A BS month counts modulo 13, so 14 to 25 name the
    /// months again; an AD month does not. "" for a number that names no month.
    /// @param inCalendar true for the BS month, false for the AD month
    /// @param andFormat  true for the long English name, false for the short
    ///                   one; ignored for BS months
    [[nodiscard]] static std::string_view getNameForMonthInCalendarAndFormat(std::uint64_t month, bool inCalendar,
                                                                             bool andFormat);

    /// The number's decimal digits in Devanagari, "२०७०" for 2070, without
    /// grouping or leading zeros. A sign is not written: -5 gives "५".
    [[nodiscard]] static std::string convertNumber2Nepali(std::int32_t number);

    /// A Devanagari digit for each character of a UTF-8 text: that of the same
    /// value for an ASCII digit, "०" for every other character. A character
    /// above U+FFFF counts as two (UTF-16 units are what is counted).
    [[nodiscard]] static std::string convertStringNumber2Nepali(std::string_view text);

    /// Calendar days between the days that hold two moments, in the process's
    /// default time zone, whatever their order; see calendarDaysBetween().
    [[nodiscard]] static std::uint64_t daysBetween(Moment a, Moment b);
};

}  // namespace dinmala
