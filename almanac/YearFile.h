/// The text form of a year of the almanac: a line a day, that one can lay beside a printed calendar.
///
///     year 2083 published
///     2083-08-07 2026-11-23 14 62H! 250~  # शुक्ल चतुर्दशी; names of the events
///
/// First the year, "published" or "computed". Then every day in order: the BS date, the AD date, the tithi
/// at sunrise, 1 to 30, with the next one where that one runs at no sunrise ("12+13"), and the ids of the
/// day's events. A grade may follow the BS date, the tithi and each event: "!" published, "~" near, "?" open;
/// none is sure, and published for the dates of a published year. Before it an event may have "H", a public
/// holiday, "L", a holiday of a group or region, or "O", observed with offices open. "#" begins a comment.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "almanac/Almanac.h"
#include "base/Result.h"

namespace dinmala {

/// The greatest event id.
inline constexpr unsigned kLongestEventId = 999;

/// Reads a year. The whole text is refused, with the line, when it is not UTF-8, has a carriage return or a
/// byte-order mark, a line of another form, a day missing, twice or out of order, an AD date that does not
/// follow, a month of fewer than 29 or more than 32 days, a year of other than 364 to 366 days, a tithi that
/// does not follow, or an event twice on a day.
///
/// @param knows whether there is an event of this id; one that is not known is refused. Empty: all are.
[[nodiscard]] Result<YearAlmanac> parseYearFile(std::string_view text,
                                                const std::function<bool(std::uint16_t)>& knows = {});

/// What parseYearFile() reads, with the names as comments. Names of events come from `eventName`, "" for
/// none; without the function no comments are written.
[[nodiscard]] std::string yearFileText(const YearAlmanac& year,
                                       const std::function<std::string_view(std::uint16_t)>& eventName = {});

}  // namespace dinmala
