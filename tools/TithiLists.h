#pragma once

/// The tithi lists of the first edition, made from almanac/rules/tithis.txt and the computed sky.

#include "base/BsCalendar.h"
#include "panchanga/Panchanga.h"
#include "tools/YearLists.h"

#include <istream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace dinmala::tools {

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

}  // namespace dinmala::tools
