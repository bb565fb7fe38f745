#pragma once

/// Where the Sun and the Moon stand by the Surya Siddhanta, and when the Sun rises at a place.
///
/// Every instant in panchanga/ is a Julian Day in universal time (UT), as a double: days, good to about 0.05
/// milliseconds in our century. Every longitude is sidereal, in degrees from 0 up to but not including 360.

#include <chrono>

namespace dinmala::panchanga {

/// The civil time of a place: so many days ahead of UT, and one change of it. A quarter of a day is six hours.
struct CivilClock {
    double offset;                    ///< from the beginning of `changed` on
    double before;                    ///< until then
    std::chrono::sys_days changed{};  ///< the civil day that begins by the old offset and goes on by the new one

    /// A clock that was never changed.
    explicit constexpr CivilClock(double always) : offset(always), before(always) {}
    constexpr CivilClock(double now, double then, std::chrono::sys_days change)
        : offset(now), before(then), changed(change) {}
};

/// A place on the Earth, the civil time that is kept there, and when its Sun is said to rise.
struct Place {
    double latitude;     ///< degrees, north positive
    double longitude;    ///< degrees, east positive
    CivilClock clock;    ///< what its days and hours go by
    double horizon = 0;  ///< degrees: the height of the Sun's centre, by geometry alone, at sunrise and sunset
};

/// How the two bodies are placed, and the place that days are told for.
struct Reckoning {
    double (*sun)(double jd);   ///< true sidereal longitude of the Sun, degrees
    double (*moon)(double jd);  ///< true sidereal longitude of the Moon, degrees
    Place place;
};

/// True longitude of the Sun at `jd` by the Surya Siddhanta, in degrees.
[[nodiscard]] double sunLongitude(double jd);

/// True longitude of the Moon at `jd` by the Surya Siddhanta, in degrees: as its text has it, and with the correction
/// of the apsis that almanac makers apply (bija).
[[nodiscard]] double moonLongitude(double jd);
[[nodiscard]] double moonLongitudeCorrected(double jd);

/// Kathmandu.
inline constexpr double kKathmanduLatitude = 27.7172;
inline constexpr double kKathmanduLongitude = 85.3240;

/// What the lists of BS 2065 to 2071 were made by: the text's own constants, the geometric sunrise, 05:45 always.
inline constexpr Reckoning kFirstReckoning{
    sunLongitude, moonLongitude, {kKathmanduLatitude, kKathmanduLongitude, CivilClock{5.75 / 24.0}}};

/// The reckoning of Nepal's printed almanacs. The Moon's apsis is corrected; the Sun's centre rises with the 34
/// minutes of arc by which the air lifts it at the horizon (J. Meeus, Astronomical Algorithms, chapter 15); Nepal's
/// clock was 05:30 ahead of UT until it became 05:45 with 1986 (tz database, Asia/Kathmandu).
inline constexpr Reckoning kNepalReckoning{
    sunLongitude,
    moonLongitudeCorrected,
    {kKathmanduLatitude, kKathmanduLongitude,
     CivilClock{5.75 / 24.0, 5.5 / 24.0, std::chrono::sys_days{std::chrono::year{1986} / std::chrono::January / 1}},
     -34.0 / 60.0}};

/// `degrees` brought into the circle from 0 up to but not including 360.
[[nodiscard]] double normalized(double degrees);

/// The first instant of the civil day `day` at `place`: 00:00.
[[nodiscard]] double startOfDay(std::chrono::sys_days day, const Place& place);

/// The civil day at `place` that holds the instant `jd`.
[[nodiscard]] std::chrono::sys_days civilDay(double jd, const Place& place);

/// The time of day at `jd` by the clock of `place`, in days: 0.25 is 06:00.
[[nodiscard]] double timeOfDay(double jd, const Place& place);

/// What the clock of `place` shows at `jd`, to the nearest minute.
[[nodiscard]] std::chrono::local_time<std::chrono::minutes> civilMinute(double jd, const Place& place);

/// The instant at which the Sun's centre stands at the place's `horizon` in the morning (or evening) of the civil
/// day `day`. Good to about a minute between AD 1900 and 2100.
///
/// REQUIRES: a place where the Sun rises and sets every day (latitude within 65 degrees of the equator).
[[nodiscard]] double sunrise(std::chrono::sys_days day, const Place& place);
[[nodiscard]] double sunset(std::chrono::sys_days day, const Place& place);

}  // namespace dinmala::panchanga
