#pragma once

/// Where the Sun and the Moon stand by the Surya Siddhanta, and when the Sun rises at a place.
///
/// Every instant in panchanga/ is a Julian Day in universal time (UT), as a double: days, good to about 0.05
/// milliseconds in our century. Every longitude is sidereal, in degrees from 0 up to but not including 360.

#include <chrono>

namespace dinmala::panchanga {

/// A place on the Earth and the civil time that is kept there.
struct Place {
    double latitude;   ///< degrees, north positive
    double longitude;  ///< degrees, east positive
    double utcOffset;  ///< days that its civil time is ahead of UT: 0.25 is six hours
};

/// Kathmandu with Nepal time, 05:45 ahead of UT. Nepal kept 05:30 until 1986; here all years are reckoned in 05:45.
inline constexpr Place kKathmandu{27.7172, 85.3240, (5.0 + 45.0 / 60.0) / 24.0};

/// How the two bodies are placed: the classical reckoning, or another one to compare it with.
struct Reckoning {
    double (*sun)(double jd);   ///< true sidereal longitude of the Sun, degrees
    double (*moon)(double jd);  ///< true sidereal longitude of the Moon, degrees
};

/// True longitude of the Sun at `jd` by the Surya Siddhanta, in degrees.
[[nodiscard]] double sunLongitude(double jd);

/// True longitude of the Moon at `jd` by the Surya Siddhanta, in degrees.
[[nodiscard]] double moonLongitude(double jd);

/// The reckoning of Nepal's almanacs.
inline constexpr Reckoning kSuryaSiddhanta{sunLongitude, moonLongitude};

/// `degrees` brought into the circle from 0 up to but not including 360.
[[nodiscard]] double normalized(double degrees);

/// 00:00 of the civil day `day` at `place`.
[[nodiscard]] double startOfDay(std::chrono::sys_days day, const Place& place);

/// The civil day at `place` that holds the instant `jd`.
[[nodiscard]] std::chrono::sys_days civilDay(double jd, const Place& place);

/// The instant at which the Sun's centre stands on the geometric horizon in the morning (or evening) of the civil
/// day `day`: no refraction, no semidiameter. Good to about a minute between AD 1900 and 2100.
///
/// REQUIRES: a place where the Sun rises and sets every day (latitude within 65 degrees of the equator).
[[nodiscard]] double sunrise(std::chrono::sys_days day, const Place& place);
[[nodiscard]] double sunset(std::chrono::sys_days day, const Place& place);

}  // namespace dinmala::panchanga
