/// The almanac as lists: events, tithis and what is still to come.
#pragma once

#include <string>
#include <vector>

#include "agenda/Upcoming.h"
#include "almanac/Edition.h"
#include "cal/Settings.h"

namespace dinmala::cal {

enum class ListKind { events, tithis };

/// Each entry of a BS year with its day, an entry a line; with JSON a list of the days that have any.
[[nodiscard]] std::string yearList(const Edition& edition, ListKind kind, BsYear year, const Settings& settings);

/// The entries of one day, a line each; none for a day without.
[[nodiscard]] std::string dayList(const Edition& edition, ListKind kind, const AlmanacDay& day,
                                  const Settings& settings);

/// Events that are still to come, each with the days until then.
[[nodiscard]] std::string upcomingList(const std::vector<UpcomingEvent>& events, const Edition& edition,
                                       const Settings& settings);

}  // namespace dinmala::cal
