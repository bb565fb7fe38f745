/// A time zone as a value, and the process's default zone.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "base/Clock.h"

namespace dinmala {

/// Seconds since 1970-01-01 00:00 on the wall clock of some zone.
using LocalTime = std::chrono::local_seconds;

struct TimeZone {
    /// tz-database name, such as "Asia/Kathmandu"; "" when it is not known.
    std::string name;
    /// Seconds east of UTC at a moment.
    std::function<std::chrono::seconds(Moment)> offsetAt;

    /// What the wall clock of this zone shows at `moment`; parts of a second
    /// are dropped.
    [[nodiscard]] LocalTime toLocal(Moment moment) const;

    /// The moment at which the wall clock shows `local`. Of a wall-clock time that
    /// a change of offset repeats it is either one; a time that a change skips
    /// counts on from before the change: 02:30 in an hour left out is 03:30.
    [[nodiscard]] Moment toMoment(LocalTime local) const;
};

/// "Asia/Kathmandu", +05:45 at every moment. The zone was at +05:30 until 1986;
/// dates before that are only ever counted in whole days, which are the same.
[[nodiscard]] const TimeZone& kathmandu();

/// The machine's own zone, as the C library tells it.
[[nodiscard]] const TimeZone& machine();

/// The zone in which whole days are counted when none is named: machine(),
/// until setDefaultTimeZone() changes it for the whole process.
[[nodiscard]] const TimeZone& defaultTimeZone();
void setDefaultTimeZone(TimeZone zone);

/// Whole calendar days, in the default zone, between the days that hold two
/// moments: 0 on the same day, 1 for 23:59 and the next day's 00:01, whatever
/// their order. Dates are subtracted, not seconds, so a day of 23 or 25 hours
/// counts as one.
[[nodiscard]] std::uint64_t calendarDaysBetween(Moment a, Moment b);

}  // namespace dinmala
