/// A day in a few lines, as tooltips tell it.
#pragma once

#include <chrono>
#include <string>

#include "almanac/Edition.h"
#include "base/DateText.h"
#include "base/Names.h"

namespace dinmala {

struct DaySummary {
    /// The whole date in both calendars, the tithi, an event a line, how far the day can be trusted, and after an empty
    /// line the next holidays. A sentence alone for a day outside the table.
    std::string text;
    bool holiday = false;      ///< a public one, or a Saturday
    bool provisional = false;  ///< Nepal has not published it yet
};

[[nodiscard]] DaySummary daySummary(const Edition& edition, std::chrono::sys_days day, Language language,
                                    Digits digits);

}  // namespace dinmala
