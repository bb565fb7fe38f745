/// The almanac as lists: events, tithis and what is still to come.
#pragma once

#include <optional>
#include <string>

#include "cal/Dates.h"
#include "cal/Settings.h"
#include "calendar/DataStore.h"

namespace dinmala::cal {

enum class Almanac { Events, Tithis };

/// Each entry of a BS year with its day, an entry a line; with JSON a list of days.
/// Nothing for a year without a list.
[[nodiscard]] std::optional<std::string> yearList(const DataStore& store, Almanac almanac, std::int32_t year,
                                                  const Settings& settings);

/// The entries of one day, a line each; none for a day without. Nothing for a year
/// without a list.
[[nodiscard]] std::optional<std::string> dayList(const DataStore& store, Almanac almanac, const Day& day,
                                                 const Settings& settings);

/// The events of today's BS year after today, each with the days until then.
/// Nothing when that year has no list.
[[nodiscard]] std::optional<std::string> upcomingList(const DataStore& store, const Day& today,
                                                      const Settings& settings);

/// The few important events that are still to come, from their own list.
[[nodiscard]] std::string importantList(const DataStore& store, const Day& today, const Settings& settings);

/// "2065 to 2071", the years that have a list.
[[nodiscard]] std::string yearsWithList(const DataStore& store, Almanac almanac);

}  // namespace dinmala::cal
