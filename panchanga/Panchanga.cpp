#include "panchanga/Panchanga.h"

#include <cmath>

namespace dinmala::panchanga {

namespace {

constexpr double kTithiArc = 12.0;
constexpr double kSynodicMonth = 29.530588;   // mean days from new moon to new moon
constexpr double kSiderealYear = 365.258756;  // the Surya Siddhanta's: 1577917828 / 4320000 days
constexpr double kLongestTithi = 1.25;        // days, with room: tithis last from 0.89 to 1.11 days

/// `a` minus `b` on the circle, -180 to 180 degrees.
double difference(double a, double b) { return std::remainder(a - b, 360.0); }

/// A tithi of an amanta month by its purnimanta name.
LunarDate nameOf(int tithi, const LunarMonth& month) {
    const bool nextName = tithi > 15 && !month.adhika;
    return {nextName ? month.month % 12 + 1 : month.month, month.adhika, tithi};
}

}  // namespace

SunTimes::SunTimes(std::chrono::sys_days first, std::chrono::sys_days last, const Place& place) : first_(first) {
    for (std::chrono::sys_days day = first; day <= last; day += std::chrono::days{1}) {
        times_.push_back({panchanga::sunrise(day, place), panchanga::sunset(day, place)});
    }
}

template <typename Angle>
double Panchanga::crossing(Angle angle, double target, double from, double to) {
    constexpr double kClose = 1e-7;      // degrees: a hundredth of a second of time by the Sun, less by the Moon
    constexpr double kTolerance = 1e-8;  // days
    double low = difference(angle(from), target);
    double high = difference(angle(to), target);
    if (low >= 0.0 || high < 0.0) {
        return low >= 0.0 ? from : to;
    }
    // Regula falsi; an end that stays where it is counts half, so that the other comes near too (Illinois).
    for (int last = 0; to - from > kTolerance;) {
        const double guess = to - high * (to - from) / (high - low);
        const double value = difference(angle(guess), target);
        if (std::abs(value) < kClose) {
            return guess;
        }
        if (value < 0.0) {
            from = guess;
            low = value;
            high *= last < 0 ? 0.5 : 1.0;
            last = -1;
        } else {
            to = guess;
            high = value;
            low *= last > 0 ? 0.5 : 1.0;
            last = 1;
        }
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

std::vector<NamedTithi> Panchanga::tithis(double from, double to) const {
    constexpr double kShortestTithi = 0.8;  // days, with room
    const auto angle = [this](double instant) { return elongation(instant); };
    std::vector<NamedTithi> found;
    Tithi tithi = tithiAt(from);
    LunarMonth month = lunarMonthAt(from);
    while (tithi.begin < to) {
        found.push_back({tithi, nameOf(tithi.number, month)});
        const double begin = tithi.end;
        const int number = tithi.number % 30 + 1;
        tithi = {number, begin, crossing(angle, kTithiArc * number, begin + kShortestTithi, begin + kLongestTithi)};
        if (number == 1) {
            month = lunarMonthAt(0.5 * (tithi.begin + tithi.end));
        }
    }
    return found;
}

DayTithi Panchanga::dayTithi(std::chrono::sys_days day) const { return dayTithis(day, 1).front(); }

std::vector<DayTithi> Panchanga::dayTithis(std::chrono::sys_days first, int count) const {
    std::vector<DayTithi> days;
    days.reserve(static_cast<std::size_t>(count));
    const auto numberAt = [this](double jd) { return static_cast<int>(elongation(jd) / kTithiArc) + 1; };
    int before = numberAt(sunrise(first - std::chrono::days{1}, place()));
    double rise = sunrise(first, place());
    int now = numberAt(rise);
    for (int i = 0; i < count; ++i) {
        const std::chrono::sys_days day = first + std::chrono::days{i};
        const double nextRise = sunrise(day + std::chrono::days{1}, place());
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

int Panchanga::sankrantisIn(const LunarMonth& month) const {
    const int signs =
        static_cast<int>(reckoning_.sun(month.end) / 30.0) - static_cast<int>(reckoning_.sun(month.begin) / 30.0);
    return (signs + 12) % 12;
}

LunarDate Panchanga::lunarDateAt(double jd) const {
    return nameOf(static_cast<int>(elongation(jd) / kTithiArc) + 1, lunarMonthAt(jd));
}

double Panchanga::sankranti(int sign, double near) const {
    const auto sun = [this](double instant) { return reckoning_.sun(instant); };
    const double guess = near + difference(30.0 * sign, sun(near)) / 360.0 * kSiderealYear;
    constexpr double kReach = 5.0;  // the Sun is never further from its mean place than it goes in three days
    return crossing(sun, 30.0 * sign, guess - kReach, guess + kReach);
}

SolarMonth Panchanga::solarMonth(int year, int month) const {
    constexpr int kBsAhead = 57;  // BS years ahead of the AD year in which they begin
    constexpr double kMeanMonth = kSiderealYear / 12.0;
    using namespace std::chrono;
    const sys_days midApril{std::chrono::year{year - kBsAhead} / April / 14};
    return solarMonthOf(month - 1, startOfDay(midApril, place()) + kMeanMonth * (month - 1));
}

SolarMonth Panchanga::solarMonthAt(double jd) const {
    const int sign = static_cast<int>(reckoning_.sun(jd) / 30.0);
    const std::chrono::sys_days day = civilDay(jd, place());
    const SolarMonth next = solarMonthOf((sign + 1) % 12, jd);
    if (next.first <= day) {
        return next;
    }
    const SolarMonth now = solarMonthOf(sign, jd);
    return now.first <= day ? now : solarMonthOf((sign + 11) % 12, jd);
}

SolarMonth Panchanga::solarMonthOf(int sign, double near) const {
    constexpr int kKarka = 3;
    constexpr int kMakara = 9;
    using std::chrono::days;
    using std::chrono::sys_days;
    const double instant = sankranti(sign, near);
    Place geometric = place();
    geometric.horizon = 0.0;
    // From when on an entry begins the month on `day`.
    const auto from = [&](sys_days day) {
        return sign == kMakara  ? sunset(day - days{1}, geometric)
               : sign == kKarka ? sunrise(day, geometric)
                                : startOfDay(day, geometric);
    };
    sys_days day = civilDay(instant, place());
    if (instant < from(day)) {
        day -= days{1};
    } else if (instant >= from(day + days{1})) {
        day += days{1};
    }
    return {day, instant, from(day), from(day + days{1})};
}

}  // namespace dinmala::panchanga
