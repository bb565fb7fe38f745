#pragma once

/// The five-limbed almanac of a place: the tithi of each day, lunar months and the months of the Sun.
///
/// Instants are Julian Days in UT (see Sky.h); days are civil days of the place. Nothing is cached and nothing throws.

#include "Sky.h"

#include <chrono>
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

class Panchanga {
public:
    /// Reckons for `place`; another reckoning than the classical one only serves to compare.
    explicit Panchanga(const Place& place = kKathmandu, const Reckoning& reckoning = kSuryaSiddhanta)
        : place_(place), reckoning_(reckoning) {}

    [[nodiscard]] const Place& place() const { return place_; }
    [[nodiscard]] double moonLongitude(double jd) const { return reckoning_.moon(jd); }

    /// How far the Moon is ahead of the Sun, degrees from 0 up to 360: each 12 degrees are a tithi.
    [[nodiscard]] double elongation(double jd) const;

    /// The tithi that runs at `jd`. Its ends are good to a tenth of a second.
    [[nodiscard]] Tithi tithiAt(double jd) const;

    /// The tithis of one civil day.
    [[nodiscard]] DayTithi dayTithi(std::chrono::sys_days day) const;

    /// The tithis of `count` civil days in a row, `first` included: the quick way to a year.
    [[nodiscard]] std::vector<DayTithi> dayTithis(std::chrono::sys_days first, int count) const;

    /// The lunar month that runs at `jd`. A month with two sankrantis (1963, 1983 and 2028) carries the name of the
    /// first.
    [[nodiscard]] LunarMonth lunarMonthAt(double jd) const;

    /// The tithi that runs at `jd`, with its month by the purnimanta names.
    [[nodiscard]] LunarDate lunarDateAt(double jd) const;

    /// The instant at which the Sun enters sign `sign`, 0 (Mesha) to 11 (Mina), next to `near`: within half a year.
    [[nodiscard]] double sankranti(int sign, double near) const;

    /// The civil first day of solar month `month`, 1 (Baisakh) to 12 (Chaitra), of the BS year `year`.
    ///
    /// It is the day of the sankranti, with the two exceptions of Nepal's calendar: a Makara sankranti after sunset
    /// moves the first of Magh to the next day, a Karka sankranti before sunrise moves the first of Shrawan to the day
    /// before. Agrees with the month table on 972 of the 984 months of BS 1999 to 2080; beyond 2080 the table was
    /// made in another way.
    [[nodiscard]] std::chrono::sys_days solarMonthStart(int year, int month) const;

private:
    /// The instant between `from` and `to` at which `angle(jd)`, ascending, reaches `target` degrees.
    template <typename Angle>
    [[nodiscard]] static double crossing(Angle angle, double target, double from, double to);

    Place place_;
    Reckoning reckoning_;
};

}  // namespace dinmala::panchanga
