/// A month or a year of the calendar, as text or as JSON.
#pragma once

#include <optional>
#include <string>

#include "almanac/Edition.h"
#include "cal/Settings.h"

namespace dinmala::cal {

/// A month, a week a line, each BS day with its AD day; `today` stands out. Public holidays and days that are not
/// sure have marks, told in a line below.
///
/// REQUIRES: a month of the table.
[[nodiscard]] std::string monthText(const Edition& edition, BsYearMonth month, std::optional<BsDate> today,
                                    const Settings& settings);

/// The twelve months of a year, without AD days.
///
/// REQUIRES: a year of the table.
[[nodiscard]] std::string yearText(const Edition& edition, BsYear year, std::optional<BsDate> today,
                                   const Settings& settings);

}  // namespace dinmala::cal
