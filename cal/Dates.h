/// Dates as people write them, and what the month table says of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "cal/Settings.h"
#include "calendar/DataStore.h"

namespace dinmala::cal {

struct Date {
    std::int32_t year = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;
};

/// One day in both calendars.
struct Day {
    Date bs;
    Date ad;
};

/// Reads a year, a month and a day: "2013-04-14", "2013/4/14", "2013.4.14" or
/// "20130414", in Western or Devanagari digits. The year has four digits. Nothing
/// for any other text; whether there is such a day is not looked at.
[[nodiscard]] std::optional<Date> readDate(std::string_view text);

/// Reads a number of at most four digits, Western or Devanagari.
[[nodiscard]] std::optional<std::int32_t> readNumber(std::string_view text);

/// "2013-04-14", the form in which dates are written. In Devanagari digits on
/// wish.
void appendDate(std::string& out, const Date& date, bool devanagari = false);
[[nodiscard]] std::string dateText(const Date& date, bool devanagari = false);

/// A number in the digits asked for, blanks before it up to `width` digits.
[[nodiscard]] std::string numberText(std::uint64_t number, bool devanagari, std::size_t width = 0);

/// Finds days in a store's month table. The store must outlive it.
class DayFinder {
public:
    explicit DayFinder(const DataStore& store);

    /// The day of a date in its calendar; nothing for a day that the calendar
    /// does not have or the table does not cover.
    [[nodiscard]] std::optional<Day> find(const Date& date, Calendar calendar) const;

    /// Reads and finds in one; on nothing see problemWith().
    [[nodiscard]] std::optional<Day> find(std::string_view text, Calendar calendar) const;

    /// Why find() gave nothing, as a sentence for people that shows the text.
    [[nodiscard]] std::string problemWith(std::string_view text, Calendar calendar) const;

    /// 1 = Sunday to 7 = Saturday.
    [[nodiscard]] std::uint64_t weekDay(const Day& day) const;

private:
    const DataStore& store_;
    std::int32_t firstAd_;  // yyyyMMdd
    std::int32_t lastAd_;
    std::int32_t firstBsYear_;
    std::int32_t lastBsYear_;
};

/// A text from outside, in quotes and fit for a terminal: no control characters,
/// shortened where it is long.
[[nodiscard]] std::string shownText(std::string_view text);

}  // namespace dinmala::cal
