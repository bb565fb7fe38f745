/// Months and years laid out for people, and as JSON for programs.
#pragma once

#include <cstdint>
#include <string>

#include "cal/Dates.h"
#include "cal/Settings.h"
#include "calendar/DataStore.h"

namespace dinmala::cal {

/// A BS month, a week a line with Sunday first: the BS days, and beside each its
/// AD day. Today, as the store read it, stands reversed on a terminal and in
/// brackets elsewhere. With JSON each day also tells its tithis and events.
/// REQUIRES: the month lies in the store's table.
[[nodiscard]] std::string monthText(DataStore& store, std::int32_t year, std::int32_t month, const Settings& settings);

/// The twelve months of a BS year, three side by side and without the AD days.
[[nodiscard]] std::string yearText(DataStore& store, std::int32_t year, const Settings& settings);

}  // namespace dinmala::cal
