#pragma once

/// A modern reckoning to set against the classical one: the Sun and the Moon by the chief terms of J. Meeus,
/// Astronomical Algorithms (2nd ed.), chapters 25 and 47, made sidereal with Lahiri's ayanamsha. Good to about a
/// twentieth of a degree, which is six minutes of a tithi.

#include "panchanga/Sky.h"

#include <cmath>
#include <numbers>

namespace dinmala::panchanga::modern {

inline double century(double jd) {
    constexpr double kDeltaT = 66.0 / 86400.0;  // terrestrial time minus UT about AD 2010
    return (jd + kDeltaT - 2451545.0) / 36525.0;
}

inline double sine(double degrees) { return std::sin(degrees * std::numbers::pi / 180.0); }

/// Lahiri's ayanamsha: 23.853 degrees at AD 2000.0, 50.29 seconds of arc a year more.
inline double ayanamsha(double t) { return 23.853 + 1.39697 * t; }

inline double sun(double jd) {
    const double t = century(jd);
    const double anomaly = 357.52911 + 35999.05029 * t;
    const double centre = (1.914602 - 0.004817 * t) * sine(anomaly) + 0.019993 * sine(2 * anomaly);
    return normalized(280.46646 + 36000.76983 * t + centre - 0.00569 - ayanamsha(t));
}

inline double moon(double jd) {
    const double t = century(jd);
    const double d = 297.8501921 + 445267.1114034 * t;  // mean elongation
    const double m = 357.5291092 + 35999.0502909 * t;   // anomaly of the Sun
    const double n = 134.9633964 + 477198.8675055 * t;  // anomaly of the Moon
    const double f = 93.2720950 + 483202.0175233 * t;   // argument of latitude
    const double terms = 6.288774 * sine(n) + 1.274027 * sine(2 * d - n) + 0.658314 * sine(2 * d) +
                         0.213618 * sine(2 * n) - 0.185116 * sine(m) - 0.114332 * sine(2 * f) +
                         0.058793 * sine(2 * d - 2 * n) + 0.057066 * sine(2 * d - m - n) + 0.053322 * sine(2 * d + n) +
                         0.045758 * sine(2 * d - m) - 0.040923 * sine(m - n) - 0.034720 * sine(d) -
                         0.030383 * sine(m + n) + 0.015327 * sine(2 * d - 2 * f);
    return normalized(218.3164477 + 481267.88123421 * t + terms - ayanamsha(t));
}

inline constexpr Reckoning kModern{sun, moon, kFirstReckoning.place};

}  // namespace dinmala::panchanga::modern
