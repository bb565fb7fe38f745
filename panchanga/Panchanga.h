#pragma once

/// The five-limbed almanac of a place: the tithi of each day, lunar months and the months of the Sun.
///
/// Instants are Julian Days in UT (see Sky.h); days are civil days of the place. Nothing is cached and nothing throws.

#include "panchanga/Sky.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace dinmala::panchanga {

/// One lunar day.
struct Tithi {
    int number;    ///< 1 to 30: 1 to 15 the bright half (15 the full moon), 16 to 30 the dark half (30 the new moon)
    double begin;  ///< first instant
    double end;    ///< first instant of the next tithi
};

/// The tithis of one civil day, as almanacs list them.
struct DayTithi {
    std::chrono::sys_days day;
    double sunrise;
    int tithi;      ///< running at sunrise, 1 to 30
    int skipped;    ///< begins and ends between this sunrise and the next; 0 when none does
    bool repeated;  ///< `tithi` ran at the previous sunrise too
};

/// A lunar month under its amanta name (new moon to new moon).
struct LunarMonth {
    int month;     ///< 1 (Vaishakh) to 12 (Chaitra)
    bool adhika;   ///< holds no sankranti: an extra month, named after the next one
    double begin;  ///< the new moon that it begins with
    double end;    ///< the new moon that it ends with
};

/// A tithi under the name that Nepal's festivals go by: dark halves carry the next month's name (purnimanta).
struct LunarDate {
    int month;    ///< 1 (Vaishakh) to 12 (Chaitra)
    bool adhika;  ///< in an extra month, whose two halves both carry its name
    int tithi;    ///< 1 to 30
    friend bool operator==(const LunarDate&, const LunarDate&) = default;
};

/// A tithi with the month that it is named by.
struct NamedTithi {
    Tithi tithi;
    LunarDate date;
};

/// A month of the Sun: when it begins, and how near it is to beginning on another day.
struct SolarMonth {
    std::chrono::sys_days first;  ///< its civil first day
    double sankranti;             ///< the Sun's entry into its sign
    double earlierBefore;         ///< an entry before this instant begins the month a day earlier
    double laterFrom;             ///< and one from this instant on a day later

    /// Minutes by which the sankranti may move before the month's first day does.
    [[nodiscard]] double margin() const { return 1440.0 * std::min(sankranti - earlierBefore, laterFrom - sankranti); }
};

/// Sunrise and sunset of some days in a row, reckoned once for all who ask.
class SunTimes {
public:
    SunTimes(std::chrono::sys_days first, std::chrono::sys_days last, const Place& place);

    /// As the functions of Sky.h. REQUIRES: a day from `first` to `last`.
    [[nodiscard]] double sunrise(std::chrono::sys_days day) const { return at(day).rise; }
    [[nodiscard]] double sunset(std::chrono::sys_days day) const { return at(day).set; }

private:
    struct Times {
        double rise, set;
    };
    [[nodiscard]] const Times& at(std::chrono::sys_days day) const {
        return times_[static_cast<std::size_t>((day - first_).count())];
    }

    std::chrono::sys_days first_;
    std::vector<Times> times_;
};

class Panchanga {
public:
    explicit Panchanga(const Reckoning& reckoning) : reckoning_(reckoning) {}

    [[nodiscard]] const Place& place() const { return reckoning_.place; }
    [[nodiscard]] double moonLongitude(double jd) const { return reckoning_.moon(jd); }

    /// How far the Moon is ahead of the Sun, degrees from 0 up to 360: each 12 degrees are a tithi.
    [[nodiscard]] double elongation(double jd) const;

    /// The tithi that runs at `jd`. Its ends are good to a tenth of a second.
    [[nodiscard]] Tithi tithiAt(double jd) const;

    /// Every tithi that runs between two instants, in order, the first and the last whole: the quick way to a year.
    [[nodiscard]] std::vector<NamedTithi> tithis(double from, double to) const;

    /// The tithis of one civil day.
    [[nodiscard]] DayTithi dayTithi(std::chrono::sys_days day) const;

    /// The tithis of `count` civil days in a row, `first` included.
    [[nodiscard]] std::vector<DayTithi> dayTithis(std::chrono::sys_days first, int count) const;

    /// The lunar month that runs at `jd`. A month with two sankrantis (1963, 1983 and 2028) carries the name of the
    /// first.
    [[nodiscard]] LunarMonth lunarMonthAt(double jd) const;

    /// How many sankrantis fall in a lunar month: 1, or 0 in an extra one, or 2.
    [[nodiscard]] int sankrantisIn(const LunarMonth& month) const;

    /// The tithi that runs at `jd`, with its month by the purnimanta names.
    [[nodiscard]] LunarDate lunarDateAt(double jd) const;

    /// The instant at which the Sun enters sign `sign`, 0 (Mesha) to 11 (Mina), next to `near`: within half a year.
    [[nodiscard]] double sankranti(int sign, double near) const;

    /// The solar month `month`, 1 (Baisakh) to 12 (Chaitra), of the BS year `year`.
    ///
    /// It begins on the day of the sankranti, with the two exceptions of Nepal's calendar: a Makara sankranti after
    /// sunset moves the first of Magh to the next day, a Karka sankranti before sunrise moves the first of Shrawan to
    /// the day before. Both go by the geometric horizon, whatever the place's own: of the months published, Shrawan of
    /// BS 2051 alone tells the two apart (the sankranti comes 2.4 minutes before the geometric sunrise, 0.4 after the
    /// other).
    [[nodiscard]] SolarMonth solarMonth(int year, int month) const;
    /// The solar month that the civil day of `jd` is in.
    [[nodiscard]] SolarMonth solarMonthAt(double jd) const;
    [[nodiscard]] std::chrono::sys_days solarMonthStart(int year, int month) const {
        return solarMonth(year, month).first;
    }

private:
    /// The solar month that begins with the entry into `sign` next to `near`.
    [[nodiscard]] SolarMonth solarMonthOf(int sign, double near) const;

    /// The instant between `from` and `to` at which `angle(jd)`, ascending, reaches `target` degrees; the nearer of the
    /// two where it does so outside of them.
    template <typename Angle>
    [[nodiscard]] static double crossing(Angle angle, double target, double from, double to);

    Reckoning reckoning_;
};

}  // namespace dinmala::panchanga
