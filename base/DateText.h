/// The one reader and the one writer of dates as people and files write them.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/BsDate.h"
#include "base/Result.h"

namespace dinmala {

enum class Digits { western, devanagari };
enum class CalendarKind { ad, bs };

/// What a text says of a date; whether any calendar has such a day is not looked at.
struct DateFields {
    std::optional<int> year;               ///< of four digits; nothing when only month and day are told
    int month = 0;                         ///< 0 to 99
    int day = 0;                           ///< 0 to 99
    std::optional<CalendarKind> calendar;  ///< told where a month's name tells it
    friend bool operator==(const DateFields&, const DateFields&) = default;
};

/// Reads a date: "2013-04-14", "2013/4/14", "2013.4.14", "20130414"; or with the month's name,
/// "2083 mangsir 7", "7 Mangsir 2083", "Nov 23, 2026", "७ मंसिर". Digits are Western or Devanagari,
/// names Nepali or English in the usual spellings, small or capital letters. A year has four digits.
///
/// The error tells at which byte the text stops being a date, counted after Devanagari digits were made Western.
[[nodiscard]] Result<DateFields> readDate(std::string_view text);

/// Reads a number of one to four digits and nothing else.
[[nodiscard]] std::optional<int> readNumber(std::string_view text);

/// Which month a name is, 1 to 12, in which calendar: "mangsir", "मंसिर", "Nov", "november".
struct NamedMonth {
    CalendarKind calendar;
    int month;
};
[[nodiscard]] std::optional<NamedMonth> readMonthName(std::string_view name);

/// "2070-01-31", the form in which dates are written. A year of more than four digits is cut.
void appendDate(std::string& out, const BsDate& date, Digits digits = Digits::western);
void appendDate(std::string& out, const std::chrono::year_month_day& date, Digits digits = Digits::western);
[[nodiscard]] std::string dateText(const BsDate& date, Digits digits = Digits::western);
[[nodiscard]] std::string dateText(const std::chrono::year_month_day& date, Digits digits = Digits::western);

/// A number in the digits asked for, blanks before it up to `width` digits.
[[nodiscard]] std::string numberText(std::uint64_t number, Digits digits, std::size_t width = 0);

/// The text with its Western digits as Devanagari ones, or the other way round; the rest stays.
[[nodiscard]] std::string inDevanagari(std::string_view text);
[[nodiscard]] std::string inWestern(std::string_view text);

}  // namespace dinmala
