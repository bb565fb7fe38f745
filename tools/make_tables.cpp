// Turns the text files in calendar/data and almanac/data into C++ constants. It
// fixes nothing: a line that breaks a rule stops the build with file and line.
//
//   make_tables months OUT LENGTHS           month_lengths.txt -> the month table's text
//   make_tables names NAME OUT FILE          id|name lines     -> an array of id and name
//   make_tables years NAME OUT LENGTHS FILE...   ddMM id id... -> an array of year and list
//   make_tables dates NAME OUT FILE...       yyyyMMdd id id... -> an array of year and list
//
// The year of a list is the last four digits of its file's name. "#" begins a
// comment; blank lines are skipped.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kFirstYear = 1999;
constexpr int kLastYear = 2099;
constexpr std::chrono::year_month_day kFirstDay{std::chrono::year{1942}, std::chrono::month{4}, std::chrono::day{13}};
constexpr std::size_t kLongestId = 3;

/// A line of a data file and where it stands.
struct Line {
    std::string file;
    int number;
    std::string text;

    [[noreturn]] void refuse(const std::string& why) const {
        throw std::runtime_error(file + ":" + std::to_string(number) + ": " + why);
    }
};

void forEachLine(const fs::path& path, bool withComments, const std::function<void(const Line&)>& handle) {
    std::ifstream in(path);
    if (!in) throw std::runtime_error(path.string() + ": cannot be read");
    Line line{path.filename().string(), 0, {}};
    while (std::getline(in, line.text)) {
        ++line.number;
        if (line.text.find('\r') != std::string::npos) line.refuse("has a carriage return");
        if (withComments) line.text.erase(std::min(line.text.find('#'), line.text.size()));
        const bool blank = line.text.find_first_not_of(' ') == std::string::npos;
        if (!blank) handle(line);
    }
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> result;
    for (std::string word; in >> word;) result.push_back(word);
    return result;
}

bool allDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// A number of exactly `width` digits.
int fixedNumber(const Line& line, std::string_view text, std::size_t width, const std::string& what) {
    if (text.size() != width || !allDigits(text)) line.refuse(std::string{text} + " is not " + what);
    return std::stoi(std::string{text});
}

void checkId(const Line& line, const std::string& id) {
    if (!allDigits(id) || id.size() > kLongestId || id.front() == '0') {
        line.refuse(id + " is not an id of 1 to 3 digits without leading zero");
    }
}

std::string two(unsigned number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::string yyyyMMdd(std::chrono::sys_days day) {
    const std::chrono::year_month_day date{day};
    return std::to_string(int{date.year()}) + two(unsigned{date.month()}) + two(unsigned{date.day()});
}

/// The twelve lengths of each BS year.
std::map<int, std::vector<int>> readLengths(const fs::path& path) {
    std::map<int, std::vector<int>> years;
    int next = kFirstYear;
    forEachLine(path, true, [&](const Line& line) {
        std::vector<std::string> parts = words(line.text);
        const std::string head = parts.front();
        if (head.size() != 5 || head.back() != ':') line.refuse("does not begin with a year and a colon");
        const int year = fixedNumber(line, head.substr(0, 4), 4, "a year");
        if (year != next)
            line.refuse("has year " + std::to_string(year) + " where " + std::to_string(next) + " follows");
        ++next;
        if (parts.size() != 13) line.refuse("has " + std::to_string(parts.size() - 1) + " lengths in place of 12");
        int days = 0;
        for (std::size_t month = 1; month <= 12; ++month) {
            const int length = fixedNumber(line, parts[month], 2, "a month's length");
            const bool longMonth = length == 32 && month >= 2 && month <= 5;
            const bool shortMonth = length == 29 && month >= 7 && month <= 11;
            if (length != 30 && length != 31 && !longMonth && !shortMonth) {
                line.refuse("gives month " + std::to_string(month) + " " + parts[month] + " days");
            }
            years[year].push_back(length);
            days += length;
        }
        if (days < 364 || days > 366) line.refuse("has a year of " + std::to_string(days) + " days");
    });
    if (next != kLastYear + 1)
        throw std::runtime_error(path.filename().string() + ": ends before " + std::to_string(kLastYear));
    return years;
}

std::string monthTable(const fs::path& lengthsFile) {
    std::string out;
    std::chrono::sys_days day{kFirstDay};
    for (const auto& [year, lengths] : readLengths(lengthsFile)) {
        out += '"';
        for (unsigned month = 1; month <= 12; ++month) {
            const int length = lengths[month - 1];
            const std::chrono::sys_days last = day + std::chrono::days{length - 1};
            const unsigned weekDay = std::chrono::weekday{day}.c_encoding() + 1;
            out += two(month) + std::to_string(year) + std::to_string(length) + yyyyMMdd(day) + yyyyMMdd(last) +
                   std::to_string(weekDay);
            if (year != kLastYear || month != 12) out += ' ';
            day = last + std::chrono::days{1};
        }
        out += "\"\n";
    }
    return out;
}

std::string names(const fs::path& file) {
    std::string out;
    int before = 0;
    forEachLine(file, false, [&](const Line& line) {
        const std::size_t bar = line.text.find('|');
        if (bar == std::string::npos) line.refuse("has no |");
        const std::string id = line.text.substr(0, bar);
        const std::string name = line.text.substr(bar + 1);
        checkId(line, id);
        if (std::stoi(id) <= before) line.refuse("id " + id + " does not come after " + std::to_string(before));
        before = std::stoi(id);
        if (name.empty() || name.front() == ' ' || name.back() == ' ')
            line.refuse("name is empty or has a blank at an end");
        if (name.find_first_of("|~^\"\\\t") != std::string::npos) line.refuse("name has one of | ~ ^ \" \\ or a tab");
        out += "    {\"" + id + "\", \"" + name + "\"},\n";
    });
    return out;
}

/// Reads `head id id ...` lines in ascending order of what `order` makes of the
/// head, and spells them out as one list.
std::string list(const fs::path& file, const std::function<int(const Line&, const std::string&)>& order) {
    std::string tokens;
    int before = 0;
    forEachLine(file, true, [&](const Line& line) {
        const std::vector<std::string> parts = words(line.text);
        const int place = order(line, parts.front());
        if (place == before) line.refuse(parts.front() + " has a line already");
        if (place < before) line.refuse(parts.front() + " stands after a later day");
        before = place;
        if (parts.size() == 1) line.refuse(parts.front() + " has no id");
        for (auto id = parts.begin() + 1; id != parts.end(); ++id) {
            checkId(line, *id);
            tokens += (tokens.empty() ? "" : " ") + parts.front() + *id;
        }
    });
    if (tokens.empty()) throw std::runtime_error(file.filename().string() + ": has no day");
    return tokens;
}

int yearOfName(const fs::path& file) {
    const std::string stem = file.stem().string();
    const std::string year = stem.substr(stem.size() < 4 ? 0 : stem.size() - 4);
    if (year.size() != 4 || !allDigits(year))
        throw std::runtime_error(file.string() + ": name does not end with a year");
    return std::stoi(year);
}

std::string yearEntry(int year, const std::string& tokens) {
    return "    {\"" + std::to_string(year) + "\", \"" + tokens + "\"},\n";
}

std::string yearLists(const fs::path& lengthsFile, const std::vector<fs::path>& files) {
    const auto years = readLengths(lengthsFile);
    std::string out;
    for (const fs::path& file : files) {
        const int year = yearOfName(file);
        const auto lengths = years.find(year);
        if (lengths == years.end()) throw std::runtime_error(file.string() + ": has a year outside the month table");
        out +=
            yearEntry(year, list(file, [&](const Line& line, const std::string& head) {
                          fixedNumber(line, head, 4, "a day and a month");
                          const int day = std::stoi(head.substr(0, 2));
                          const int month = std::stoi(head.substr(2));
                          if (month < 1 || month > 12) line.refuse("there is no month " + std::to_string(month));
                          if (day < 1) line.refuse("there is no day 0");
                          if (day > lengths->second[static_cast<std::size_t>(month) - 1]) {
                              line.refuse(std::to_string(day) + " is past the end of month " + std::to_string(month));
                          }
                          return month * 100 + day;
                      }));
    }
    return out;
}

std::string dateLists(const std::vector<fs::path>& files) {
    std::string out;
    for (const fs::path& file : files) {
        out += yearEntry(yearOfName(file), list(file, [](const Line& line, const std::string& head) {
                             const int date = fixedNumber(line, head, 8, "a date");
                             const std::chrono::year_month_day day{
                                 std::chrono::year{date / 10000},
                                 std::chrono::month{static_cast<unsigned>(date / 100 % 100)},
                                 std::chrono::day{static_cast<unsigned>(date % 100)}};
                             if (!day.ok()) line.refuse("there is no day " + head);
                             return date;
                         }));
    }
    return out;
}

std::string arrayOf(const std::string& name, const std::string& entries) {
    const auto count = std::count(entries.begin(), entries.end(), '\n');
    const std::string body = count == 0 ? "{}" : "{{\n" + entries + "}}";
    return "constexpr std::array<KeyedText, " + std::to_string(count) + "> " + name + body + ";\n";
}

void write(const fs::path& path, const std::string& source, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << "// Made by tools/make_tables from " << source << "; do not edit.\n" << text;
    if (!out.flush()) throw std::runtime_error(path.string() + ": cannot be written");
}

void run(const std::vector<std::string>& args) {
    const std::string mode = args.empty() ? "" : args[0];
    const auto files = [&](std::size_t from) {
        return std::vector<fs::path>(args.begin() + static_cast<std::ptrdiff_t>(from), args.end());
    };
    if (mode == "months" && args.size() == 3) {
        write(args[1], fs::path(args[2]).filename().string(), monthTable(args[2]));
    } else if (mode == "names" && args.size() == 4) {
        write(args[2], fs::path(args[3]).filename().string(), arrayOf(args[1], names(args[3])));
    } else if (mode == "years" && args.size() >= 4) {
        write(args[2], "the year lists", arrayOf(args[1], yearLists(args[3], files(4))));
    } else if (mode == "dates" && args.size() >= 3) {
        write(args[2], "the dated lists", arrayOf(args[1], dateLists(files(3))));
    } else {
        throw std::runtime_error("usage: make_tables months|names|years|dates ... (see the head of make_tables.cpp)");
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
