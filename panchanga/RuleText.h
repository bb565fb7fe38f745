#pragma once

/// Words of the rule files: what the readers of festivals.txt, tithis.txt and years.txt share.
///
/// A line that breaks the grammar gives a complaint, a phrase in English; readRules() adds the file and the line.

#include "panchanga/Festivals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dinmala::panchanga {

inline constexpr std::array<std::string_view, 12> kMonths{"Vaishakh", "Jyeshtha", "Ashadh",  "Shrawan",
                                                          "Bhadra",   "Ashwin",   "Kartik",  "Marga",
                                                          "Poush",    "Magh",     "Phalgun", "Chaitra"};
inline constexpr std::array<std::string_view, 7> kWeekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                           "Thursday", "Friday", "Saturday"};
inline constexpr std::array<std::string_view, 2> kHalves{"bright", "dark"};

/// Place of `word` in `words`, or nothing.
template <std::size_t N>
std::optional<int> placeOf(std::string_view word, const std::array<std::string_view, N>& words) {
    const auto found = std::find(words.begin(), words.end(), word);
    return found == words.end() ? std::nullopt : std::optional<int>{static_cast<int>(found - words.begin())};
}

inline std::optional<int> wholeNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size() ? std::optional<int>{value} : std::nullopt;
}

inline std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

inline std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (true) {
        const auto at = text.find(separator);
        pieces.push_back(trimmed(text.substr(0, at)));
        if (at == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(at + 1);
    }
}

/// What is wrong with a line, or nothing.
using Complaint = std::optional<std::string>;

/// The words of one line, taken one after the other. The first that is missing or wrong is kept as the complaint; from
/// then on nothing is left to take, and every word taken is empty, every number the least allowed, every day the first.
class Words {
public:
    explicit Words(std::string_view text) {
        for (const std::string_view word : split(text, ' ')) {
            if (!word.empty()) {
                words_.push_back(word);
            }
        }
    }
    [[nodiscard]] const Complaint& complaint() const { return complaint_; }
    void complain(std::string what) {
        if (!complaint_) {
            complaint_ = std::move(what);
        }
        next_ = words_.size();
    }
    [[nodiscard]] bool done() const { return next_ == words_.size(); }
    [[nodiscard]] std::string_view peek() const { return done() ? std::string_view{} : words_[next_]; }
    std::string_view take(const char* what) {
        if (done()) {
            complain(std::string("missing ") + what);
            return {};
        }
        return words_[next_++];
    }
    int number(const char* what, int least, int most) {
        const std::string_view word = take(what);
        const std::optional<int> value = wholeNumber(word);
        if (!value || *value < least || *value > most) {
            complain("'" + std::string(word) + "' is no " + what + " from " + std::to_string(least) + " to " +
                     std::to_string(most));
            return least;
        }
        return *value;
    }
    template <std::size_t N>
    int oneOf(const char* what, const std::array<std::string_view, N>& names) {
        const std::string_view word = take(what);
        const std::optional<int> place = placeOf(word, names);
        if (!place) {
            complain("'" + std::string(word) + "' is no " + what);
        }
        return place.value_or(0);
    }
    std::chrono::weekday weekday() { return std::chrono::weekday{static_cast<unsigned>(oneOf("weekday", kWeekdays))}; }
    std::chrono::sys_days adDate() {
        const std::string_view word = take("AD date");
        const std::vector<std::string_view> parts = split(word, '-');
        if (parts.size() == 3) {
            const auto y = wholeNumber(parts[0]), m = wholeNumber(parts[1]), d = wholeNumber(parts[2]);
            if (y && m && d && *m > 0 && *d > 0) {
                const std::chrono::year_month_day date{std::chrono::year{*y} / *m / *d};
                if (date.ok()) {
                    return date;
                }
            }
        }
        complain("'" + std::string(word) + "' is no date such as 2013-10-14");
        return {};
    }

    /// `10-01`: a month and a day of it.
    std::pair<int, int> monthDay() {
        const std::string_view word = take("month and day");
        const std::vector<std::string_view> parts = split(word, '-');
        const auto month = wholeNumber(parts[0]);
        const auto day = parts.size() == 2 ? wholeNumber(parts[1]) : std::nullopt;
        if (!month || !day || *month < 1 || *month > 12 || *day < 1 || *day > 32) {
            complain("'" + std::string(word) + "' is no month and day such as 10-01");
            return {1, 1};
        }
        return {*month, *day};
    }
    /// `bright 8`, `dark 14` or `dark 30`: a tithi, 1 to 30.
    int tithi() {
        const bool dark = oneOf("half", kHalves) == 1;
        const int number = this->number("tithi", 1, dark ? 30 : 15);
        if (dark && number > 14 && number < 30) {
            complain("a dark half ends with 30, the new moon");
        }
        return dark && number < 15 ? number + 15 : number;
    }
    /// What is left of the line, blanks between the words.
    std::string rest() {
        std::string text;
        while (!done()) {
            text += (text.empty() ? "" : " ") + std::string(take("word"));
        }
        return text;
    }
    /// The complaint about the whole line: the first, or that words are left over.
    Complaint finish() {
        if (!done()) {
            complain("'" + std::string(peek()) + "' is one word too many");
        }
        return complaint_;
    }

private:
    std::vector<std::string_view> words_;
    std::size_t next_ = 0;
    Complaint complaint_;
};

/// Reads a rule file: `readLine(text, number)` gets each line that is not empty and no comment, and gives what is wrong
/// with it. The first complaint ends the reading and comes back with file and line.
template <typename ReadLine>
std::optional<FileError> readRules(std::istream& rules, const std::string& fileName, const ReadLine& readLine) {
    std::string line;
    for (int number = 1; std::getline(rules, line); ++number) {
        const std::string_view text = trimmed(line);
        if (text.empty() || text.front() == '#') {
            continue;
        }
        if (const Complaint complaint = readLine(text, number)) {
            return FileError{fileName + ":" + std::to_string(number) + ": " + *complaint};
        }
    }
    return std::nullopt;
}

}  // namespace dinmala::panchanga
