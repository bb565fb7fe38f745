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
        int joinedFirst = -1;  ///< how many days are joined before both are listed; -1: no such change
        std::map<int, int> variants;                     ///< tithi -> id
        std::map<std::pair<int, int>, int> observances;  ///< month and tithi -> id
        std::vector<std::pair<MonthDay, MonthDay>> covers;
        std::vector<MonthDay> empty, bothDays;
        std::vector<Token> added, standing;
    };

    std::map<int, int> plain_;                   // tithi, 1 to 30 -> id
    std::map<std::pair<int, int>, int> joined_;  // two tithis of a half -> id
    std::map<int, Year> years_;
};

}  // namespace dinmala::panchanga
