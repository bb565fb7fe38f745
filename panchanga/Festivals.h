#pragma once

/// The rules of almanac/rules/festivals.txt: read, checked, and turned into days. docs/data.md explains the grammar.

#include "base/Grade.h"
#include "panchanga/Panchanga.h"
#include "panchanga/SkyYear.h"

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

/// The moment of the day that must fall in a tithi for the day to be the festival's.
enum class DayPart {
    sunrise,
    midday,     ///< halfway between sunrise and sunset
    afternoon,  ///< seven tenths of the way from sunrise to sunset: the middle of the fourth fifth (aparahna)
    evening,    ///< 72 minutes after sunset: the middle of pradosha
    moonrise,   ///< 170 minutes after sunset: about when the Moon of the dark 4th rises
    midnight,   ///< halfway between sunset and the next sunrise
};

/// The word of the rules for a moment of the day: "midday".
[[nodiscard]] std::string_view partName(DayPart part);

/// How far a day of the first edition's lists can be trusted, best last.
enum class ListGrade {
    usual,  ///< ends of the tithi 25 minutes off would move it, or, where the rule names no moment, midday or
            ///< afternoon; or the moment falls in the tithi on no day, or on two and the rule does not choose
    sure,   ///< none of that
    dated,  ///< taken from a dated source, or fixed in the civil calendar
};

[[nodiscard]] std::string_view gradeName(ListGrade grade);

/// One day on which a rule puts its festival.
struct Occurrence {
    std::chrono::sys_days day;
    ListGrade grade;
};

/// How much stands behind a rule.
enum class Trust { unknown, inferred, named, known };

/// One line of the rules.
struct Festival {
    enum class Kind { unknown, bsDate, adDate, dates, lunar, everyMonth, moonEnters, withOther, between };

    int id = 0;
    int line = 0;  ///< in the file
    Trust trust = Trust::unknown;
    std::string source;
    std::string text;  ///< the rule as it is written

    Kind kind = Kind::unknown;
    int month = 0;                             ///< bsDate, adDate, lunar
    int day = 0;                               ///< bsDate, adDate: day of the month
    int tithi = 0;                             ///< lunar, everyMonth: 1 to 30
    bool bothHalves = false;                   ///< everyMonth
    bool adhika = false;                       ///< lunar: in extra months only, whichever month it is
    DayPart part = DayPart::sunrise;           ///< lunar, everyMonth
    bool partGiven = false;                    ///< the rule names its moment; without, sunrise is only the custom
    double degrees = 0.0;                      ///< moonEnters
    int other = 0;                             ///< withOther: the id whose day this one goes by; between: the first
    int last = 0;                              ///< between: the id whose day ends the days between
    std::vector<std::chrono::sys_days> dates;  ///< dates

    int sameAs = 0;                                 ///< the festival that this is another name of; 0 for most
    bool later = false;                             ///< of two days in a row that both qualify, the second
    bool earlier = false;                           ///< of two days in a row that both qualify, expressly the first
    std::optional<DayPart> rival;                   ///< near where this moment would give another day
    int shift = 0;                                  ///< days to add in the end
    std::optional<std::chrono::weekday> weekday;    ///< only when the day falls on it
    std::optional<std::chrono::weekday> firstFrom;  ///< the first such weekday on or after the day
    enum class Fast { plain, householders, vaishnava } fast = Fast::plain;  ///< an ekadashi kept on two days
    std::vector<int> only, never;                                           ///< BS years, of the first edition alone
    std::vector<std::chrono::sys_days> but;  ///< dated days of the first edition, in place of the one next to them

    bool firstEdition = false;                  ///< not in the current edition: it has a better name for it
    int from = 0, until = 9999;                 ///< BS years in which it is kept, of the current edition
    std::vector<int> behind;                    ///< left out on a day that has one of these
    int movesTo = 0;                            ///< goes by the day of this id when its own is one of `moved`
    std::vector<std::chrono::sys_days> moved;   ///< days with an eclipse that spoils them
    std::optional<std::pair<int, int>> lastBy;  ///< of all days of the year, the last by this BS month and day
};

/// A line of almanac/rules/corrections.txt: a dated source has a festival on a day.
struct Correction {
    int id = 0;
    std::chrono::sys_days day;
    std::string source;
};

/// One festival on one day of the current edition, and what puts it there.
struct Celebration {
    const Festival* festival = nullptr;  ///< of the Festivals that it came from
    std::chrono::sys_days day;
    Grade grade = Grade::sure;  ///< near also where the rule is inferred, or custom leaves two days
    Holiday dayOff = Holiday::none;
    bool byBsDate = false;  ///< fixed in the BS calendar, so it is no surer than the BS date

    Tithi tithi{};           ///< what decides the day; number 0 for a rule that goes by no tithi
    DayPart part{};          ///< the moment of the day that must fall in the tithi
    double moment = 0.0;     ///< its instant; for a sign of the Moon, the instant at which it is entered
    double margin = 0.0;     ///< minutes by which the tithi's ends may move before the day does, 180 at most
    bool twoDays = false;    ///< two days qualify, or none, and the rule does not say which
    bool unsettled = false;  ///< between an extra month and the lost one that follows
    const Correction* correction = nullptr;              ///< the dated source, where there is one
    std::optional<std::chrono::sys_days> reckonedDay{};  ///< the rule's own day, where that source has another
};

/// The festivals by id, and their days.
class Festivals {
public:
    /// Reads rules, besides those that are there. Gives the first line that breaks the grammar, has an id that is there
    /// already or goes by the day of one that is not; what stands above it has been read then.
    [[nodiscard]] std::optional<FileError> read(std::istream& rules, const std::string& fileName);

    [[nodiscard]] const std::map<int, Festival>& all() const { return festivals_; }

    /// Reads dated sources: `AD date | id | source`, ids from the rules read before.
    [[nodiscard]] std::optional<FileError> readCorrections(std::istream& corrections, const std::string& fileName);

    /// Reads who has the day off: `id | national, group or observed | BS years | source`.
    [[nodiscard]] std::optional<FileError> readHolidays(std::istream& holidays, const std::string& fileName);

    /// Every day of the year on which the rule of `id` puts its festival in the first edition, in order: none when the
    /// rule is unknown or the year has no such day; two when a lunar year begins and ends within the BS year.
    [[nodiscard]] std::vector<Occurrence> daysOf(int id, const SkyYear& sky) const;

    /// What the current edition lists in the year: by day, and within a day by holiday, weight and id. Dated sources
    /// take the place of the day that the rule gives, unless `corrected` is false. Points into this object.
    [[nodiscard]] std::vector<Celebration> celebrations(const SkyYear& sky, bool corrected = true) const;

    /// Whether people have the day of a festival off in a BS year.
    [[nodiscard]] Holiday dayOff(int id, int year) const;

private:
    /// The days of a rule in the year and around it, whichever years it is kept in; `first` for the first edition's
    /// own dated days.
    [[nodiscard]] std::vector<Celebration> around(const Festival& festival, const SkyYear& sky, bool first) const;

    struct HolidayYears {
        Holiday kind;
        int from, until;
    };

    std::map<int, Festival> festivals_;
    std::vector<Correction> corrections_;
    std::map<int, std::vector<HolidayYears>> holidays_;
};

}  // namespace dinmala::panchanga
