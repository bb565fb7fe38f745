#include "Panchanga.h"

#include <cmath>

namespace dinmala::panchanga {

namespace {

constexpr double kTithiArc = 12.0;
constexpr double kSynodicMonth = 29.530588;   // mean days from new moon to new moon
constexpr double kSiderealYear = 365.258756;  // the Surya Siddhanta's: 1577917828 / 4320000 days
constexpr double kLongestTithi = 1.25;        // days, with room: tithis last from 0.89 to 1.11 days

/// `a` minus `b` on the circle, -180 to 180 degrees.
double difference(double a, double b) { return std::remainder(a - b, 360.0); }

}  // namespace

template <typename Angle>
double Panchanga::crossing(Angle angle, double target, double from, double to) {
    constexpr double kTolerance = 1e-6;  // days: a tenth of a second
    while (to - from > kTolerance) {
        const double middle = 0.5 * (from + to);
        (difference(angle(middle), target) < 0.0 ? from : to) = middle;
    }
    return 0.5 * (from + to);
}

double Panchanga::elongation(double jd) const { return normalized(reckoning_.moon(jd) - reckoning_.sun(jd)); }

Tithi Panchanga::tithiAt(double jd) const {
    const auto angle = [this](double instant) { return elongation(instant); };
    const double arc = elongation(jd);
    const int number = static_cast<int>(arc / kTithiArc) + 1;
    return {number, crossing(angle, kTithiArc * (number - 1), jd - kLongestTithi, jd),
            crossing(angle, kTithiArc * number, jd, jd + kLongestTithi)};
}

DayTithi Panchanga::dayTithi(std::chrono::sys_days day) const { return dayTithis(day, 1).front(); }

std::vector<DayTithi> Panchanga::dayTithis(std::chrono::sys_days first, int count) const {
    std::vector<DayTithi> days;
    days.reserve(static_cast<std::size_t>(count));
    const auto numberAt = [this](double jd) { return static_cast<int>(elongation(jd) / kTithiArc) + 1; };
    int before = numberAt(sunrise(first - std::chrono::days{1}, place_));
    double rise = sunrise(first, place_);
    int now = numberAt(rise);
    for (int i = 0; i < count; ++i) {
        const std::chrono::sys_days day = first + std::chrono::days{i};
        const double nextRise = sunrise(day + std::chrono::days{1}, place_);
        const int next = numberAt(nextRise);
        const int step = (next - now + 30) % 30;
        days.push_back({day, rise, now, step == 2 ? now % 30 + 1 : 0, now == before});
        before = now;
        now = next;
        rise = nextRise;
    }
    return days;
}

LunarMonth Panchanga::lunarMonthAt(double jd) const {
    const auto angle = [this](double instant) { return elongation(instant); };
    // The Moon gains between 11 and 15 degrees a day on the Sun, so an estimate by the mean is within three days.
    const double age = elongation(jd) / 360.0 * kSynodicMonth;
    constexpr double kReach = 3.0;
    const double begin = crossing(angle, 0.0, jd - age - kReach, std::min(jd, jd - age + kReach));
    const double rest = kSynodicMonth - age;
    const double end = crossing(angle, 0.0, std::max(jd, jd + rest - kReach), jd + rest + kReach);
    const int signAtBegin = static_cast<int>(reckoning_.sun(begin) / 30.0);
    const int signAtEnd = static_cast<int>(reckoning_.sun(end) / 30.0);
    // The month in which the Sun enters Vrishabha, the sign after Mesha, is Vaishakh.
    const int month = (signAtBegin + 1) % 12;
    return {month == 0 ? 12 : month, signAtBegin == signAtEnd, begin, end};
}

LunarDate Panchanga::lunarDateAt(double jd) const {
    const LunarMonth amanta = lunarMonthAt(jd);
    const int tithi = static_cast<int>(elongation(jd) / kTithiArc) + 1;
    const bool nextName = tithi > 15 && !amanta.adhika;
    return {nextName ? amanta.month % 12 + 1 : amanta.month, amanta.adhika, tithi};
}

double Panchanga::sankranti(int sign, double near) const {
    const auto sun = [this](double instant) { return reckoning_.sun(instant); };
    const double guess = near + difference(30.0 * sign, sun(near)) / 360.0 * kSiderealYear;
    constexpr double kReach = 5.0;  // the Sun is never further from its mean place than it goes in three days
    return crossing(sun, 30.0 * sign, guess - kReach, guess + kReach);
}

std::chrono::sys_days Panchanga::solarMonthStart(int year, int month) const {
    constexpr int kKarka = 3;
    constexpr int kMakara = 9;
    constexpr int kBsAhead = 57;  // BS years ahead of the AD year in which they begin
    constexpr double kMeanMonth = kSiderealYear / 12.0;
    using namespace std::chrono;
    const sys_days midApril{std::chrono::year{year - kBsAhead} / April / 14};
    const int sign = month - 1;
    const double instant = sankranti(sign, startOfDay(midApril, place_) + kMeanMonth * sign);
    const sys_days day = civilDay(instant, place_);
    if (sign == kMakara && instant > sunset(day, place_)) {
        return day + days{1};
    }
    if (sign == kKarka && instant < sunrise(day, place_)) {
        return day - days{1};
    }
    return day;
}

}  // namespace dinmala::panchanga
