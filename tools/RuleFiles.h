#pragma once

/// The rule files of the source tree, read, and the year files that they make.

#include "base/BsCalendar.h"
#include "panchanga/Festivals.h"
#include "panchanga/Panchanga.h"
#include "tools/EventLists.h"
#include "tools/TithiLists.h"
#include "tools/YearLists.h"

#include <fstream>
#include <string>

namespace dinmala::tools {

/// Reads one file of the source tree: `make(stream, path)`. Throws FileError where it cannot be opened.
template <typename Make>
auto readFile(const std::string& root, const std::string& path, Make make) {
    const std::string full = root + "/" + path;
    std::ifstream file{full};
    if (!file) {
        throw FileError{full + ": cannot be read"};
    }
    return make(file, full);
}

/// The text of a file. Throws FileError where it cannot be read.
[[nodiscard]] std::string fileText(const std::string& root, const std::string& path);

/// The calendar of a table of month lengths. Throws FileError.
[[nodiscard]] BsCalendar readCalendar(const std::string& root, const std::string& path);

/// The rules under `root`, and the month table. Throws FileError.
struct AlmanacRules {
    explicit AlmanacRules(const std::string& root);
    BsCalendar calendar;
    Festivals festivals;
    TithiRules tithis;
    EventPlans plans;
};

/// The names of the events under `root`; the important-event list that the plan of `year` names, or none. Throw
/// FileError.
[[nodiscard]] Names readEventNames(const std::string& root);
[[nodiscard]] Dated readImportant(const std::string& root, const AlmanacRules& rules, int year);

/// The text of a year's file of the first edition, as make_almanac writes it. Throws FileError when the rules cannot
/// fill the year.
[[nodiscard]] std::string tithiFile(int year, const AlmanacRules& rules, const Panchanga& panchanga);
[[nodiscard]] std::string eventFile(int year, const AlmanacRules& rules, const Panchanga& panchanga, const Names& names,
                                    const Dated& important);

}  // namespace dinmala::tools
