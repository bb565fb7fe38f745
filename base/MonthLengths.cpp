#include "base/MonthLengths.h"

#include <numeric>
#include <string>

#include "base/Lines.h"

namespace dinmala {

namespace {

/// What is wrong with a month of so many days; empty for nothing.
std::string wrongLength(unsigned month, unsigned length) {
    const bool longMonth = length == 32 && month >= 2 && month <= 5;
    const bool shortMonth = length == 29 && month >= 7 && month <= 11;
    if (length == 30 || length == 31 || longMonth || shortMonth) return {};
    return "gives month " + std::to_string(month) + " " + std::to_string(length) + " days";
}

}  // namespace

Result<MonthLengths> parseMonthLengths(std::string_view text) {
    constexpr unsigned kMonths = 12;
    MonthLengths table;
    const auto problem = forEachDataLine(text, [&](std::string_view line) -> std::string {
        const std::vector<std::string_view> words = wordsOf(line);
        const std::string_view head = words.front();
        const auto year = fixedNumber(head.substr(0, 4), 4);
        if (head.size() != 5 || head.back() != ':' || !year) return "does not begin with a year and a colon";
        const int follows = int{table.firstYear} + static_cast<int>(table.lengths.size() / kMonths);
        if (!table.lengths.empty() && *year != follows) {
            return "has year " + std::to_string(*year) + " where " + std::to_string(follows) + " follows";
        }
        if (words.size() != kMonths + 1) {
            return "has " + std::to_string(words.size() - 1) + " lengths in place of 12";
        }
        if (table.lengths.empty()) table.firstYear = BsYear{*year};
        unsigned days = 0;
        for (unsigned month = 1; month <= kMonths; ++month) {
            const auto length = fixedNumber(words[month], 2);
            if (!length) return std::string{words[month]} + " is not a month's length";
            if (std::string why = wrongLength(month, static_cast<unsigned>(*length)); !why.empty()) return why;
            table.lengths.push_back(static_cast<std::uint8_t>(*length));
            days += static_cast<unsigned>(*length);
        }
        if (days < 364 || days > 366) return "has a year of " + std::to_string(days) + " days";
        return {};
    });
    if (problem) return *problem;
    if (table.lengths.empty()) return TextError{0, 0, "has no year"};
    return table;
}

}  // namespace dinmala
