/// The day that a person's text tells, or why it tells none.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "base/BsCalendar.h"
#include "base/DateText.h"

namespace dinmala {

/// A day in both calendars.
struct FoundDay {
    BsDate bs;
    std::chrono::sys_days day;
    CalendarKind told;  ///< in which calendar the text told it
};

/// Reads a date as readDate() does, with its year, and finds it in the table.
///
/// @param assumed the calendar of a date that names no month; a month's name tells its own
/// @return nothing for another text, a day that the calendar does not have, or one outside the table
[[nodiscard]] std::optional<FoundDay> readDay(std::string_view text, CalendarKind assumed, const BsCalendar& calendar);

/// The day of a BS date; nothing for one that the table does not have.
[[nodiscard]] std::optional<FoundDay> foundDay(const BsDate& date, const BsCalendar& calendar);

/// The year that a date without one is of: the present one, or where the table does not reach today, the one at its
/// end.
[[nodiscard]] int yearOfToday(std::chrono::sys_days today, CalendarKind kind, const BsCalendar& calendar);

/// Why readDay() gives nothing.
struct NoDay {
    enum class Why {
        notADate,  ///< or one without its year
        noMonth,   ///< the month is not 1 to 12
        noDay,     ///< the month has fewer days, or the day is 0
        outside,   ///< the table does not reach it
    };
    Why why;
    CalendarKind calendar;     ///< in which the date was read
    DateFields date;           ///< what was read; nothing of notADate
    unsigned monthLength = 0;  ///< noDay: the days that the month has
};

/// REQUIRES: readDay() gives nothing for these.
[[nodiscard]] NoDay whyNoDay(std::string_view text, CalendarKind assumed, const BsCalendar& calendar);

}  // namespace dinmala
