#include "tools/YearLists.h"

#include "panchanga/RuleText.h"

#include <optional>

namespace dinmala::tools {

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

std::string Token::text() const { return twoDigits(day) + twoDigits(month) + std::to_string(id); }

std::vector<Token> readYearList(std::istream& list, const std::string& fileName) {
    std::vector<Token> tokens;
    std::string line;
    for (int number = 1; std::getline(list, line); ++number) {
        const std::size_t hash = line.find('#');
        Words words{std::string_view{line}.substr(0, hash)};
        if (words.done()) {
            continue;
        }
        const std::string_view key = words.take("day and month");
        const int dayMonth = key.size() == 4 ? wholeNumber(key).value_or(0) : 0;
        if (dayMonth == 0) {
            words.complain("'" + std::string(key) + "' is no day and month such as 3012");
        }
        do {
            tokens.push_back({dayMonth % 100, dayMonth / 100, words.number("id", 1, 999), {}});
        } while (!words.done());
        if (const Complaint complaint = words.finish()) {
            throw FileError{fileName + ":" + std::to_string(number) + ": " + *complaint};
        }
        if (hash != std::string::npos) {
            tokens.back().note = trimmed(std::string_view{line}.substr(hash + 1));
        }
    }
    return tokens;
}

std::string writeYearList(const std::vector<Token>& tokens) {
    std::string text;
    for (std::size_t i = 0; i < tokens.size();) {
        const Token& first = tokens[i];
        std::string notes;
        text += twoDigits(first.day) + twoDigits(first.month);
        for (; i < tokens.size() && tokens[i].day == first.day && tokens[i].month == first.month; ++i) {
            text += " " + std::to_string(tokens[i].id);
            if (!tokens[i].note.empty()) {
                notes += (notes.empty() ? "  # " : "; ") + std::to_string(tokens[i].id) + ": " + tokens[i].note;
            }
        }
        text += notes + "\n";
    }
    return text;
}

Names readNames(std::istream& names, const std::string& fileName) {
    Names byId;
    std::string line;
    for (int number = 1; std::getline(names, line); ++number) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const std::size_t bar = line.find('|');
        const std::optional<int> id = wholeNumber(std::string_view{line}.substr(0, bar));
        if (bar == std::string::npos || !id) {
            throw FileError{fileName + ":" + std::to_string(number) + ": no id and name"};
        }
        byId[*id] = line.substr(bar + 1);
    }
    return byId;
}

Dated readDated(std::istream& list, const std::string& fileName) {
    Dated dated;
    std::string line;
    for (int number = 1; std::getline(list, line); ++number) {
        Words words{std::string_view{line}.substr(0, line.find('#'))};
        if (words.done()) {
            continue;
        }
        const int date = words.number("AD date", 19420413, 20430413);
        const std::chrono::year_month_day day{std::chrono::year{date / 10000} / (date / 100 % 100) / (date % 100)};
        if (!day.ok()) {
            words.complain("'" + std::to_string(date) + "' is no date");
        }
        do {
            dated.emplace_back(day, words.number("id", 1, 999));
        } while (!words.done());
        if (const Complaint complaint = words.finish()) {
            throw FileError{fileName + ":" + std::to_string(number) + ": " + *complaint};
        }
    }
    return dated;
}

}  // namespace dinmala::tools
