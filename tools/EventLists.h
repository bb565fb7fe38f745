#pragma once

/// The event lists of the first edition, made from almanac/rules/festivals.txt and years.txt.

#include "panchanga/Festivals.h"
#include "tools/YearLists.h"

#include <cstddef>
#include <istream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace dinmala::tools {

/// What a year's event list must hold: the lines of one year.
struct EventPlan {
    using MonthDay = std::pair<int, int>;

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

/// almanac/rules/years.txt: what each year's event list must hold. Its grammar stands at its head.
class EventPlans {
public:
    /// Throws FileError on a line that breaks the grammar.
    EventPlans(std::istream& plans, const std::string& fileName);

    /// The year's event list, in order. Throws FileError when the rules cannot fill what the year must hold.
    [[nodiscard]] std::vector<Token> list(const SkyYear& sky, const Festivals& festivals, const Names& names,
                                          const Dated& important) const;

    /// The important-event list that `year` names, or an empty text.
    [[nodiscard]] std::string importantFile(int year) const;

private:
    std::string fileName_;
    std::map<int, EventPlan> plans_;
};

}  // namespace dinmala::tools
