#pragma once

/// The years of the current edition, made from the rules and the computed sky: what almanac/years/ holds.

#include "almanac/Almanac.h"
#include "base/BsCalendar.h"
#include "base/MonthLengths.h"
#include "panchanga/Festivals.h"
#include "panchanga/Panchanga.h"
#include "tools/YearLists.h"

#include <string>
#include <utility>
#include <vector>

namespace dinmala::tools {

inline constexpr int kFirstYear = 1999;
inline constexpr int kLastYear = 2099;

/// What the current edition's years are made from, as it stands under the top of the source tree. Throws FileError.
struct CurrentRules {
    explicit CurrentRules(const std::string& root);

    Panchanga panchanga{kNepalReckoning};
    int lastPublished;    ///< the last year of almanac/rules/months.txt
    BsCalendar calendar;  ///< its months, and the reckoned ones from then to kLastYear
    Festivals festivals;
    Names names;  ///< of the events
};

/// The calendar of published months and, from where they end to kLastYear, of reckoned ones: each begins on its own
/// reckoned day, so the first of them makes up for published years that end on another. Throws FileError when that
/// month would be none.
[[nodiscard]] BsCalendar wholeCalendar(MonthLengths published, const Panchanga& panchanga);

/// One year. REQUIRES: kFirstYear to kLastYear.
[[nodiscard]] YearAlmanac makeYear(int year, const CurrentRules& rules);

/// Its file, "almanac/years/2083.txt", and the text of it.
[[nodiscard]] std::string yearPath(int year);
[[nodiscard]] std::string makeYearFile(int year, const CurrentRules& rules);

/// The published months that cannot be: those that begin more than 30 minutes of the Sun's way from where the reckoning
/// begins them, one a line. In print they are within 20.1 minutes (docs/truth.md).
[[nodiscard]] std::string checkMonths(const BsCalendar& calendar, int lastPublished, const Panchanga& panchanga);

/// What is wrong with the year files under `root`: those that are not what the rules make, one a line; empty when
/// none is.
[[nodiscard]] std::string checkYearFiles(const std::string& root, const CurrentRules& rules);

}  // namespace dinmala::tools
