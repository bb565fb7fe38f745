#pragma once

/// The rules of almanac/rules/festivals.txt: read, checked, and turned into days. docs/data.md explains the grammar.

#include "Panchanga.h"

#include <array>
#include <chrono>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dinmala::panchanga {

/// A mistake in a data file, said as `file:line: what`.
struct FileError {
    std::string text;
};

/// The BS months, from the table of lengths.
class BsCalendar {
public:
    /// Reads lines such as `2070: 31 31 31 32 31 31 29 30 30 29 30 30`; the first line is the year that began on
    /// 1942-04-13, and years follow each other. Throws FileError.
    BsCalendar(std::istream& lengths, const std::string& fileName);

    struct Date {
        int year, month, day;
    };

    /// REQUIRES: `year` in the table, `month` 1 to 12.
    [[nodiscard]] int monthLength(int year, int month) const;
    /// The civil day of a BS date. REQUIRES: as monthLength().
    [[nodiscard]] std::chrono::sys_days day(int year, int month, int dayOfMonth) const;
    /// The BS date of a civil day. REQUIRES: a day of the table.
    [[nodiscard]] Date date(std::chrono::sys_days day) const;
    [[nodiscard]] bool holds(int year) const;

private:
    int firstYear_ = 0;
    std::vector<std::array<int, 12>> lengths_;
    std::vector<std::chrono::sys_days> starts_;
};

/// The moment of the day that must fall in a tithi for the day to be the festival's.
enum class DayPart {
    sunrise,
    midday,     ///< halfway between sunrise and sunset
    afternoon,  ///< seven tenths of the way from sunrise to sunset: the middle of the fourth fifth (aparahna)
    evening,    ///< 72 minutes after sunset: the middle of pradosha
    moonrise,   ///< 170 minutes after sunset: about when the Moon of the dark 4th rises
    midnight,   ///< halfway between sunset and the next sunrise
};

/// How far a day can be trusted, best last.
enum class Grade {
    usual,  ///< ends of the tithi 25 minutes off would move it, or, where the rule names no moment, midday or
            ///< afternoon; or the moment falls in the tithi on no day, or on two and the rule does not choose
    sure,   ///< none of that
    dated,  ///< taken from a dated source, or fixed in the civil calendar
};

[[nodiscard]] std::string_view gradeName(Grade grade);

/// One day on which a rule puts its festival.
struct Occurrence {
    std::chrono::sys_days day;
    Grade grade;
};

/// How much stands behind a rule.
enum class Trust { unknown, inferred, named, known };

/// One line of the rules.
struct Festival {
    enum class Kind { unknown, bsDate, adDate, dates, lunar, everyMonth, moonEnters, withOther };

    int id = 0;
    int line = 0;  ///< in the file
    Trust trust = Trust::unknown;
    std::string source;

    Kind kind = Kind::unknown;
    int month = 0;                             ///< bsDate, adDate, lunar
    int day = 0;                               ///< bsDate, adDate: day of the month
    int tithi = 0;                             ///< lunar, everyMonth: 1 to 30
    bool bothHalves = false;                   ///< everyMonth
    bool adhika = false;                       ///< lunar: in extra months only, whichever month it is
    DayPart part = DayPart::sunrise;           ///< lunar, everyMonth
    bool partGiven = false;                    ///< the rule names its moment; without, sunrise is only the custom
    double degrees = 0.0;                      ///< moonEnters
    int other = 0;                             ///< withOther: the id whose day this one goes by
    std::vector<std::chrono::sys_days> dates;  ///< dates

    int sameAs = 0;                                 ///< the festival that this is another name of; 0 for most
    bool later = false;                             ///< of two days in a row that both qualify, the second
    bool earlier = false;                           ///< of two days in a row that both qualify, expressly the first
    int shift = 0;                                  ///< days to add in the end
    std::optional<std::chrono::weekday> weekday;    ///< only when the day falls on it
    std::optional<std::chrono::weekday> firstFrom;  ///< the first such weekday on or after the day
    enum class Fast { plain, householders, vaishnava } fast = Fast::plain;  ///< an ekadashi kept on two days
    std::vector<int> only, never;                                           ///< BS years
    std::vector<std::chrono::sys_days> but;  ///< dated days that replace the reckoned one next to them
};

/// The sky over one BS year and some days around it, reckoned once for all festivals.
class SkyYear {
public:
    /// A tithi with the lunar month that it is named by.
    struct NamedTithi {
        Tithi tithi;
        LunarDate date;
    };

    /// REQUIRES: `year` in the table of `calendar`. Keeps references to both arguments.
    SkyYear(int year, const BsCalendar& calendar, const Panchanga& panchanga);

    [[nodiscard]] int year() const { return year_; }
    [[nodiscard]] std::chrono::sys_days first() const { return first_; }
    [[nodiscard]] std::chrono::sys_days last() const { return last_; }
    [[nodiscard]] std::chrono::sys_days from() const;  ///< where the days before the year begin
    [[nodiscard]] std::chrono::sys_days to() const;    ///< where the days after it end
    [[nodiscard]] const BsCalendar& calendar() const { return calendar_; }
    [[nodiscard]] const Panchanga& panchanga() const { return panchanga_; }
    [[nodiscard]] const std::vector<NamedTithi>& tithis() const { return tithis_; }

private:
    int year_;
    const BsCalendar& calendar_;
    const Panchanga& panchanga_;
    std::chrono::sys_days first_, last_;
    std::vector<NamedTithi> tithis_;
};

/// The festivals by id, and their days.
class Festivals {
public:
    /// Reads the rules. Throws FileError on a line that breaks the grammar, an id given twice or one that goes by
    /// the day of a later one.
    Festivals(std::istream& rules, const std::string& fileName);

    [[nodiscard]] const std::map<int, Festival>& all() const { return festivals_; }

    /// Every day of the year on which the rule of `id` puts its festival, in order: none when the rule is unknown or
    /// the year has no such day; two when a lunar year begins and ends within the BS year.
    [[nodiscard]] std::vector<Occurrence> daysOf(int id, const SkyYear& sky) const;

private:
    /// The days of a rule in the year and around it, whichever years it is kept in.
    [[nodiscard]] std::vector<Occurrence> around(const Festival& festival, const SkyYear& sky) const;

    std::map<int, Festival> festivals_;
};

}  // namespace dinmala::panchanga
