// Turns the text files in calendar/data and almanac/data into C++ constants. It
// fixes nothing: a line that breaks a rule stops the build with file and line.
//
//   make_tables months OUT LENGTHS           month_lengths.txt -> the month table's text
//   make_tables names NAME OUT FILE...       id|name lines     -> an array of id and name
//   make_tables years NAME OUT LENGTHS FILE...   ddMM id id... -> an array of year and list
//   make_tables dates NAME OUT FILE...       yyyyMMdd id id... -> an array of year and list
//   make_tables lengths NAME OUT LENGTHS     month_lengths.txt -> an array of the lengths
//   make_tables packed NAME OUT NAMES... -- YEAR...   year files, their events among the names -> their bytes
//   make_tables fixed NAME OUT RULES         festivals.txt     -> the ids that go by the day of a BS month
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
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "almanac/PackedYear.h"
#include "almanac/YearFile.h"
#include "base/Lines.h"
#include "base/MonthLengths.h"

namespace {

namespace fs = std::filesystem;

constexpr dinmala::BsYear kFirstYear{1999};
constexpr dinmala::BsYear kLastYear{2099};
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
        const bool blank = line.text.find_first_not_of(" \t\v\f") == std::string::npos;
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

/// The id that a line begins with, before its first |.
int idOf(const Line& line) {
    const std::vector<std::string> head = words(line.text.substr(0, line.text.find('|')));
    if (head.size() != 1) line.refuse("does not begin with an id");
    checkId(line, head.front());
    return std::stoi(head.front());
}

std::string two(unsigned number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::string yyyyMMdd(std::chrono::sys_days day) {
    const std::chrono::year_month_day date{day};
    return std::to_string(int{date.year()}) + two(unsigned{date.month()}) + two(unsigned{date.day()});
}

std::string textOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + ": cannot be read");
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// The calendar of BS 1999 to 2099.
dinmala::BsCalendar readLengths(const fs::path& path) {
    const std::string name = path.filename().string();
    const auto table = dinmala::parseMonthLengths(textOf(path));
    if (!table) {
        throw std::runtime_error(name + ":" + std::to_string(table.error().line) + ": " + table.error().what);
    }
    const auto calendar = table->calendar();
    if (table->firstYear != kFirstYear || calendar->lastDate().year != kLastYear) {
        throw std::runtime_error(name + ": ends before " + std::to_string(int{kLastYear}));
    }
    return *calendar;
}

std::string monthTable(const fs::path& lengthsFile) {
    const dinmala::BsCalendar calendar = readLengths(lengthsFile);
    std::string out;
    for (std::size_t i = 0; i < calendar.months().size(); ++i) {
        const dinmala::BsYearMonth month = calendar.months()[i].name;
        const std::chrono::sys_days first = calendar.months()[i].first();
        const unsigned length = calendar.months()[i].length;
        const unsigned weekDay = std::chrono::weekday{first}.c_encoding() + 1;
        if (month.month == dinmala::BsMonth{1}) out += '"';
        out += two(unsigned{month.month}) + std::to_string(int{month.year}) + std::to_string(length) + yyyyMMdd(first) +
               yyyyMMdd(first + std::chrono::days{length - 1}) + std::to_string(weekDay);
        if (i + 1 != calendar.months().size()) out += ' ';
        if (month.month == dinmala::BsMonth{12}) out += "\"\n";
    }
    return out;
}

/// Adds the names of a file, in ascending order of their ids, or puts them in the place of others.
void readNames(const fs::path& file, std::map<int, std::string>& names) {
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
        names[before] = name;
    });
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
    const dinmala::BsCalendar calendar = readLengths(lengthsFile);
    std::string out;
    for (const fs::path& file : files) {
        const int year = yearOfName(file);
        if (calendar.daysIn(dinmala::BsYear{year}) == 0) {
            throw std::runtime_error(file.string() + ": has a year outside the month table");
        }
        out += yearEntry(
            year, list(file, [&](const Line& line, const std::string& head) {
                fixedNumber(line, head, 4, "a day and a month");
                const int day = std::stoi(head.substr(0, 2));
                const int month = std::stoi(head.substr(2));
                if (month < 1 || month > 12) line.refuse("there is no month " + std::to_string(month));
                if (day < 1) line.refuse("there is no day 0");
                if (!calendar.has(dinmala::bsDate(year, static_cast<unsigned>(month), static_cast<unsigned>(day)))) {
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

/// A name of a later file takes the place of an earlier one's.
std::string names(const std::vector<fs::path>& files) {
    std::map<int, std::string> all;
    for (const fs::path& file : files) readNames(file, all);
    std::string out;
    for (const auto& [id, name] : all) out += "    {\"" + std::to_string(id) + "\", \"" + name + "\"},\n";
    return out;
}

std::string lengthArray(const std::string& name, const fs::path& lengthsFile) {
    const dinmala::BsCalendar calendar = readLengths(lengthsFile);
    std::string out =
        "constexpr std::array<std::uint8_t, " + std::to_string(calendar.months().size()) + "> " + name + "{";
    for (const auto& month : calendar.months()) out += std::to_string(unsigned{month.length}) + ",";
    return out + "};\n";
}

/// Bytes as a text literal: three octal digits each, as fewer could run into a digit that follows.
std::string literal(const std::string& bytes) {
    std::string out = "\"";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        out += '\\';
        for (const int shift : {6, 3, 0}) out += static_cast<char>('0' + (byte >> shift & 7));
    }
    return out + "\"";
}

std::string packedYears(const std::string& name, const std::vector<fs::path>& nameFiles,
                        const std::vector<fs::path>& yearFiles) {
    std::set<int> ids;
    for (const fs::path& file : nameFiles) {
        forEachLine(file, false, [&](const Line& line) { ids.insert(idOf(line)); });
    }
    std::string entries;
    std::chrono::sys_days next = dinmala::kFirstDayOf1999;
    dinmala::BsYear nextYear = kFirstYear;
    for (const fs::path& file : yearFiles) {
        const std::string where = file.filename().string() + ":";
        const auto year = dinmala::parseYearFile(textOf(file), [&](std::uint16_t id) { return ids.contains(id); });
        if (!year) {
            throw std::runtime_error(where + std::to_string(year.error().line) + ": " + year.error().what);
        }
        if (year->year != nextYear || year->days.front().day != next || yearOfName(file) != int{nextYear}) {
            throw std::runtime_error(where + " is not the year after the one before");
        }
        nextYear = year->year + std::chrono::years{1};
        next = year->days.back().day + std::chrono::days{1};
        const std::string bytes = dinmala::packYear(*year);
        entries += "    {" + literal(bytes) + ", " + std::to_string(bytes.size()) + "},\n";
    }
    return "constexpr std::array<std::string_view, " + std::to_string(yearFiles.size()) + "> " + name + "{{\n" +
           entries + "}};\n";
}

/// The ids whose rule in festivals.txt is a day of a BS month.
std::string fixedEvents(const std::string& name, const fs::path& file) {
    std::string ids;
    std::size_t count = 0;
    forEachLine(file, true, [&](const Line& line) {
        const std::size_t trust = line.text.find('|');
        const std::size_t rule = line.text.find('|', trust + 1);
        if (rule == std::string::npos) line.refuse("has no rule");
        const std::vector<std::string_view> parts = dinmala::wordsOf(std::string_view{line.text}.substr(rule + 1));
        if (parts.empty() || parts.front() != "bs") return;
        ids += std::to_string(idOf(line)) + ",";
        ++count;
    });
    return "constexpr std::array<std::uint16_t, " + std::to_string(count) + "> " + name + "{" + ids + "};\n";
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
    } else if (mode == "names" && args.size() >= 4) {
        write(args[2], fs::path(args[3]).filename().string(), arrayOf(args[1], names(files(3))));
    } else if (mode == "years" && args.size() >= 4) {
        write(args[2], "the year lists", arrayOf(args[1], yearLists(args[3], files(4))));
    } else if (mode == "dates" && args.size() >= 3) {
        write(args[2], "the dated lists", arrayOf(args[1], dateLists(files(3))));
    } else if (mode == "lengths" && args.size() == 4) {
        write(args[2], fs::path(args[3]).filename().string(), lengthArray(args[1], args[3]));
    } else if (mode == "packed" && args.size() >= 4) {
        const std::vector<fs::path> all = files(3);
        const auto dashes = std::find(all.begin(), all.end(), "--");
        write(args[2], "the years", packedYears(args[1], {all.begin(), dashes}, {std::next(dashes), all.end()}));
    } else if (mode == "fixed" && args.size() == 4) {
        write(args[2], fs::path(args[3]).filename().string(), fixedEvents(args[1], args[3]));
    } else {
        throw std::runtime_error(
            "usage: make_tables months|names|years|dates|lengths|packed|fixed ... (see the head of make_tables.cpp)");
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        run({argv + 1, argv + argc});
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
