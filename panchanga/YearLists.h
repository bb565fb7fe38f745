#pragma once

/// The almanac's year lists, almanac/data/tithi-YYYY.txt and events-YYYY.txt: reading, writing, and making them from
/// the rules in almanac/rules.

#include "Festivals.h"
#include "Panchanga.h"

#include <compare>
#include <istream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace dinmala::panchanga {

/// One token: an id on one BS day of the list's year.
struct Token {
    int month = 0;
    int day = 0;
    int id = 0;
    std::string note;  ///< why it stands although it is irregular or untrue; empty for most

    /// Day, month and id run together as in a year list: "0101428".
    [[nodiscard]] std::string text() const;
    friend bool operator==(const Token& a, const Token& b) {
        return a.month == b.month && a.day == b.day && a.id == b.id;
    }
};

/// Reads a year list: one day a line, `DDMM id id`, `#` begins a comment. Keeps the order; throws FileError on a line
/// of another form. A trailing comment becomes the note of the day's last token.
[[nodiscard]] std::vector<Token> readYearList(std::istream& list, const std::string& fileName);

/// The lines of a year list, each with its line feed; `tokens` in list order.
[[nodiscard]] std::string writeYearList(const std::vector<Token>& tokens);

/// almanac/rules/tithis.txt: which id a tithi is listed under in which year. Its grammar stands at its head.
class TithiRules {
public:
    /// Throws FileError on a line that breaks the grammar.
    TithiRules(std::istream& rules, const std::string& fileName);

    /// The year's tithi list, in order. REQUIRES: `year` in the table of `calendar`.
    [[nodiscard]] std::vector<Token> list(int year, const BsCalendar& calendar, const Panchanga& panchanga) const;

private:
    using MonthDay = std::pair<int, int>;
    struct Year {
        bool joined = false, both = false;
        int joinedFirst = -1;         ///< how many days are joined before both are listed; -1: no such change
        std::map<int, int> variants;  ///< tithi -> id
        std::map<std::pair<int, int>, int> observances;  ///< month and tithi -> id
        std::vector<std::pair<MonthDay, MonthDay>> covers;
        std::vector<MonthDay> empty, bothDays;
        std::vector<Token> added, standing;
    };

    std::map<int, int> plain_;                   // tithi, 1 to 30 -> id
    std::map<std::pair<int, int>, int> joined_;  // two tithis of a half -> id
    std::map<int, Year> years_;
};

/// almanac/rules/years.txt: what each year's event list must hold. Its grammar stands at its head.
class EventPlans {
public:
    /// Throws FileError on a line that breaks the grammar.
    EventPlans(std::istream& plans, const std::string& fileName);

    /// Names by event id: those that tell which two ids say the same.
    using Names = std::map<int, std::string>;
    /// Days of an important-event list, in AD, with their ids.
    using Dated = std::vector<std::pair<std::chrono::sys_days, int>>;

    /// The year's event list, in order. Throws FileError when the rules cannot fill what the year must hold.
    [[nodiscard]] std::vector<Token> list(const SkyYear& sky, const Festivals& festivals, const Names& names,
                                          const Dated& important) const;

    /// The important-event list that `year` names, or an empty text.
    [[nodiscard]] std::string importantFile(int year) const;

private:
    using MonthDay = std::pair<int, int>;
    struct Plan {
        int line = 0;
        std::size_t tokens = 0, ids = 0, most = 0;
        int newest = 0;                                                   ///< the last id that the year brought in
        std::vector<std::pair<MonthDay, std::vector<int>>> wholes, days;  ///< `days` in list order for the first
        std::vector<MonthDay> ordered;                                    ///< the days that begin with their ids
        MonthDay last;                                                    ///< the day that ends with `lastOfDay`
        int lastOfDay = 0;
        std::map<MonthDay, std::size_t> full;
        std::vector<std::pair<MonthDay, MonthDay>> quiet;
        std::vector<Token> standing, twice;
        std::string important;
        std::vector<int> later;
    };
    friend class EventFiller;

    std::string fileName_;
    std::map<int, Plan> plans_;
};

/// Reads `id|name` lines. Throws FileError.
[[nodiscard]] EventPlans::Names readNames(std::istream& names, const std::string& fileName);

/// Reads `yyyyMMdd id id` lines. Throws FileError.
[[nodiscard]] EventPlans::Dated readDated(std::istream& list, const std::string& fileName);

}  // namespace dinmala::panchanga
