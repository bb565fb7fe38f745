/// What is still to come.
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "almanac/Edition.h"

namespace dinmala {

struct UpcomingEvent {
    BsDate date;
    std::chrono::sys_days day;
    Event event;
    std::int64_t daysLeft = 0;  ///< 1 for tomorrow
};

/// The events after a day, in order: of the 365 days that follow it in an edition with every year, of its own BS year
/// in the first one. Empty for a day outside the table.
[[nodiscard]] std::vector<UpcomingEvent> upcomingEvents(const Edition& edition, std::chrono::sys_days today);

/// Those of them on which everybody, or a group or region, has the day off. The first edition knows no holidays: it
/// has the list of important events of BS 2070 instead.
[[nodiscard]] std::vector<UpcomingEvent> importantEvents(const Edition& edition, std::chrono::sys_days today);

}  // namespace dinmala
