#pragma once

/// What decides a day's date, tithi and festivals: the instants, and how near each is to deciding otherwise.

#include "panchanga/Festivals.h"
#include "panchanga/Panchanga.h"

#include <chrono>
#include <optional>
#include <vector>

namespace dinmala::panchanga {

/// A day's sky. Instants are Julian Days in UT, as everywhere here: timeOfDay() tells the clock's time.
struct DaySky {
    std::chrono::sys_days day;
    double sunrise;
    double sunset;
    double nextSunrise;
    NamedTithi tithi;                   ///< runs at sunrise
    std::optional<NamedTithi> skipped;  ///< the one after it, when that runs at no sunrise
    double margin;  ///< minutes by which the ends of these tithis may move before the day's list does
};

/// REQUIRES: a day of the year of `sky`.
[[nodiscard]] DaySky daySky(std::chrono::sys_days day, const SkyYear& sky);

/// Why a day has the date, the tithi and the festivals that it has.
struct DayReasons {
    DaySky sky;
    SolarMonth month;                       ///< the month of the Sun that the reckoning puts the day in
    std::vector<Celebration> celebrations;  ///< as they are listed; each tells its rule, its moment, its source
};

/// REQUIRES: a day of the year of `sky`. Points into `festivals`.
[[nodiscard]] DayReasons reasonsOf(std::chrono::sys_days day, const SkyYear& sky, const Festivals& festivals);

}  // namespace dinmala::panchanga
