#include "panchanga/Sky.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace dinmala::panchanga {

namespace {

// Surya Siddhanta I.29-34 (revolutions in an age of 4,320,000 years) and I.37 (civil days in it), in
// E. Burgess's translation, Journal of the American Oriental Society 6 (1860).
constexpr double kCivilDays = 1577917828.0;
constexpr double kSunRevolutions = 4320000.0;
constexpr double kMoonRevolutions = 57753336.0;
constexpr double kMoonApogeeRevolutions = 488203.0;

// The correction (bija) that almanac makers apply to the Moon's apogee, four revolutions in the age fewer: the table in
// Burgess's note to I.29-34.
constexpr double kMoonApogeeRevolutionsCorrected = 488199.0;

// Place of the Moon's apogee at the epoch, from I.57-58; place of the Sun's apogee, which moves by less than a second
// of arc in a century, from Burgess's note to I.44.
constexpr double kMoonApogeeAtEpoch = 90.0;
constexpr double kSunApogee = 77.0 + 17.0 / 60.0;

// Circumferences of the epicycles in degrees of the orbit, II.34: at the even quadrants, and how much less at the odd.
constexpr double kSunEpicycle = 14.0;
constexpr double kMoonEpicycle = 32.0;
constexpr double kEpicycleLoss = 20.0 / 60.0;

// The age began at midnight at Ujjain, 17/18 February 3102 BC (Julian). I.62 puts Ujjain on the prime meridian.
constexpr double kEpoch = 588465.5;
constexpr double kUjjainLongitude = 75.768;

// The sines of II.17-22, one for each 225 minutes of arc, for a radius of 3438.
constexpr double kRadius = 3438.0;
constexpr double kSineStep = 3.75;
constexpr std::array<double, 25> kSines{0,    225,  449,  671,  890,  1105, 1315, 1520, 1719, 1910, 2093, 2267, 2431,
                                        2585, 2728, 2859, 2978, 3084, 3177, 3256, 3321, 3372, 3409, 3431, 3438};

double degreesToRadians(double degrees) { return degrees * std::numbers::pi / 180.0; }
double radiansToDegrees(double radians) { return radians * 180.0 / std::numbers::pi; }

/// Sine by the table as a part of the radius, linear between entries (II.31-32).
double tableSine(double degrees) {
    double arc = normalized(degrees);
    const double sign = arc < 180.0 ? 1.0 : -1.0;
    arc = std::fmod(arc, 180.0);
    if (arc > 90.0) {
        arc = 180.0 - arc;
    }
    const std::size_t row = std::min<std::size_t>(static_cast<std::size_t>(arc / kSineStep), 23);
    const double part = arc / kSineStep - static_cast<double>(row);
    return sign * (kSines[row] + part * (kSines[row + 1] - kSines[row])) / kRadius;
}

/// Arc in degrees, -90 to 90, whose table sine is `sine` (II.33).
double tableArcsine(double sine) {
    const double length = std::min(std::abs(sine) * kRadius, kRadius);
    const auto above = std::upper_bound(kSines.begin(), kSines.end() - 1, length);
    const auto row = static_cast<std::size_t>(above - kSines.begin()) - 1;
    const double arc =
        kSineStep * (static_cast<double>(row) + (length - kSines[row]) / (kSines[row + 1] - kSines[row]));
    return std::copysign(arc, sine);
}

/// Days of the age that have passed at `jd`, counted at Ujjain.
double daysOfAge(double jd) { return jd + kUjjainLongitude / 360.0 - kEpoch; }

double meanLongitude(double revolutions, double days) {
    return normalized(std::fmod(revolutions / kCivilDays * days, 1.0) * 360.0);
}

/// True longitude on an epicycle that shrinks by up to 20 minutes with the sine of the anomaly (II.38-39).
double trueLongitude(double mean, double apogee, double epicycle) {
    const double sine = tableSine(mean - apogee);
    const double circumference = epicycle - kEpicycleLoss * std::abs(sine);
    return normalized(mean - tableArcsine(circumference * sine / 360.0));
}

// The Sun's declination and the equation of time, as in J. Meeus, Astronomical Algorithms (2nd ed.), chapters 25 and
// 28, to first order: the classical sunrise differs by minutes, and Nepal's almanacs print the observed one.
struct SolarGeometry {
    double declination;     // degrees
    double equationOfTime;  // days, apparent minus mean solar time
};

SolarGeometry solarGeometry(double jd) {
    const double century = (jd - 2451545.0) / 36525.0;
    const double mean = normalized(280.46646 + 36000.76983 * century);
    const double anomaly = degreesToRadians(357.52911 + 35999.05029 * century);
    const double centre = (1.914602 - 0.004817 * century) * std::sin(anomaly) + 0.019993 * std::sin(2.0 * anomaly) +
                          0.000289 * std::sin(3.0 * anomaly);
    const double longitude = degreesToRadians(mean + centre);
    const double obliquity = degreesToRadians(23.439291 - 0.0130042 * century);
    const double declination = std::asin(std::sin(obliquity) * std::sin(longitude));
    const double ascension = std::atan2(std::cos(obliquity) * std::sin(longitude), std::cos(longitude));
    const double equation = std::remainder(mean - radiansToDegrees(ascension), 360.0);
    return {radiansToDegrees(declination), equation / 360.0};
}

constexpr double kUnixEpoch = 2440587.5;  // the Julian Day of 1970-01-01T00:00 UT

double julianDay(std::chrono::sys_days day) { return kUnixEpoch + static_cast<double>(day.time_since_epoch().count()); }

/// The crossing of the horizon before (`side` -1) or after (+1) the local noon of `day`.
double horizonCrossing(std::chrono::sys_days day, const Place& place, double side) {
    const double latitude = degreesToRadians(place.latitude);
    const double height = std::sin(degreesToRadians(place.horizon));
    const double meanNoon = julianDay(day) + 0.5 - place.longitude / 360.0;
    double jd = meanNoon + side * 0.25;
    for (int round = 0; round < 3; ++round) {
        const SolarGeometry sun = solarGeometry(jd);
        const double declination = degreesToRadians(sun.declination);
        const double halfDay = std::acos((height - std::sin(latitude) * std::sin(declination)) /
                                         (std::cos(latitude) * std::cos(declination)));
        jd = meanNoon - sun.equationOfTime + side * radiansToDegrees(halfDay) / 360.0;
    }
    return jd;
}

/// The days that `clock` is ahead of UT at `jd`.
double offsetAt(double jd, const CivilClock& clock) {
    return jd < julianDay(clock.changed) - clock.before ? clock.before : clock.offset;
}

double moonByApogee(double jd, double apogeeRevolutions) {
    const double days = daysOfAge(jd);
    const double apogee = kMoonApogeeAtEpoch + meanLongitude(apogeeRevolutions, days);
    return trueLongitude(meanLongitude(kMoonRevolutions, days), apogee, kMoonEpicycle);
}

}  // namespace

double normalized(double degrees) {
    const double arc = std::fmod(degrees, 360.0);
    return arc < 0.0 ? std::fmod(arc + 360.0, 360.0) : arc;
}

double sunLongitude(double jd) {
    return trueLongitude(meanLongitude(kSunRevolutions, daysOfAge(jd)), kSunApogee, kSunEpicycle);
}

double moonLongitude(double jd) { return moonByApogee(jd, kMoonApogeeRevolutions); }

double moonLongitudeCorrected(double jd) { return moonByApogee(jd, kMoonApogeeRevolutionsCorrected); }

double startOfDay(std::chrono::sys_days day, const Place& place) {
    return julianDay(day) - (day <= place.clock.changed ? place.clock.before : place.clock.offset);
}

std::chrono::sys_days civilDay(double jd, const Place& place) {
    const double since = jd + offsetAt(jd, place.clock) - kUnixEpoch;
    return std::chrono::sys_days{std::chrono::days{static_cast<int>(std::floor(since))}};
}

double timeOfDay(double jd, const Place& place) {
    return jd + offsetAt(jd, place.clock) - julianDay(civilDay(jd, place));
}

std::chrono::local_time<std::chrono::minutes> civilMinute(double jd, const Place& place) {
    const double rounded = jd + 0.5 / 1440.0;
    const std::chrono::minutes sinceMidnight{static_cast<int>(timeOfDay(rounded, place) * 1440.0)};
    return std::chrono::local_days{civilDay(rounded, place).time_since_epoch()} + sinceMidnight;
}

double sunrise(std::chrono::sys_days day, const Place& place) { return horizonCrossing(day, place, -1.0); }

double sunset(std::chrono::sys_days day, const Place& place) { return horizonCrossing(day, place, 1.0); }

}  // namespace dinmala::panchanga
