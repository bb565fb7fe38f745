#include "panchanga/DaySky.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace dinmala::panchanga {

using std::chrono::days;
using std::chrono::sys_days;

namespace {

constexpr double kMinutes = 1440.0;  // of a day

}  // namespace

DaySky daySky(sys_days day, const SkyYear& sky) {
    const double sunrise = sky.sun().sunrise(day);
    const double nextSunrise = sky.sun().sunrise(day + days{1});
    // The sky reaches some days past the year on both sides, so both neighbours are there.
    const auto now = std::partition_point(sky.tithis().begin(), sky.tithis().end(),
                                          [sunrise](const NamedTithi& one) { return one.tithi.end <= sunrise; });
    const auto next = std::next(now);
    DaySky found{day, sunrise, sky.sun().sunset(day), nextSunrise, *now, std::nullopt, 0.0};
    double margin = std::min(sunrise - now->tithi.begin, now->tithi.end - sunrise);
    if (next->tithi.end <= nextSunrise) found.skipped = *next;
    // The next one is told here too if its end moves from after that sunrise to before it.
    margin = std::min(margin, std::abs(nextSunrise - next->tithi.end));
    found.margin = margin * kMinutes;
    return found;
}

DayReasons reasonsOf(sys_days day, const SkyYear& sky, const Festivals& festivals) {
    const double noon = 0.5 * (sky.sun().sunrise(day) + sky.sun().sunset(day));
    DayReasons reasons{daySky(day, sky), sky.panchanga().solarMonthAt(noon), festivals.celebrations(sky)};
    std::erase_if(reasons.celebrations, [day](const Celebration& one) { return one.day != day; });
    return reasons;
}

}  // namespace dinmala::panchanga
