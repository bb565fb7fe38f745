#pragma once

/// The forms of the first edition's lists, almanac/data/tithi-YYYY.txt, events-YYYY.txt and what goes with them: read
/// and written. A file of another form throws FileError, which tells file and line.

#include "base/BsDate.h"
#include "panchanga/Festivals.h"

#include <chrono>
#include <istream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace dinmala::tools {

using namespace panchanga;

/// One token: an id on one BS day of the list's year.
struct Token {
    int month = 0;
    int day = 0;
    int id = 0;
    std::string note;  ///< why it stands although it is irregular or untrue; empty for most

    [[nodiscard]] BsDate date(int year) const {
        return bsDate(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
    }

    /// Day, month and id run together as in a year list: "0101428".
    [[nodiscard]] std::string text() const;
    friend bool operator==(const Token& a, const Token& b) {
        return a.month == b.month && a.day == b.day && a.id == b.id;
    }
};

/// Reads a year list: one day a line, `DDMM id id`, `#` begins a comment. Keeps the order. A trailing comment becomes
/// the note of the day's last token.
[[nodiscard]] std::vector<Token> readYearList(std::istream& list, const std::string& fileName);

/// The lines of a year list, each with its line feed; `tokens` in list order.
[[nodiscard]] std::string writeYearList(const std::vector<Token>& tokens);

/// Names by id.
using Names = std::map<int, std::string>;

/// Reads `id|name` lines.
[[nodiscard]] Names readNames(std::istream& names, const std::string& fileName);

/// Days of an important-event list, in AD, with their ids.
using Dated = std::vector<std::pair<std::chrono::sys_days, int>>;

/// Reads `yyyyMMdd id id` lines.
[[nodiscard]] Dated readDated(std::istream& list, const std::string& fileName);

/// "07" of 7.
[[nodiscard]] std::string twoDigits(int number);

}  // namespace dinmala::tools
