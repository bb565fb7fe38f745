// Makes and checks the almanac's year lists by the rules in almanac/rules and the computed sky.
//
//   make_almanac tithi ROOT YEAR          the text of almanac/data/tithi-YEAR.txt
//   make_almanac events ROOT YEAR         the text of almanac/data/events-YEAR.txt
//   make_almanac days ROOT YEAR [ID]      every festival's days in the year, to read: id, name, AD, BS, grade
//   make_almanac years ROOT [FROM [TO]]   writes almanac/years/YEAR.txt, the current edition's years
//   make_almanac check ROOT               holds the files to everything known of them; fails where one is wrong
//
// ROOT is the top of the source tree.

#include "base/DateText.h"
#include "tools/ListCheck.h"
#include "tools/YearMaker.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

using namespace dinmala;
using namespace dinmala::tools;

namespace {

void printDays(const AlmanacRules& rules, const Names& names, const SkyYear& sky, int only) {
    for (const auto& [id, festival] : rules.festivals.all()) {
        if (only != 0 && only != id) {
            continue;
        }
        for (const Occurrence& one : rules.festivals.daysOf(id, sky)) {
            const std::chrono::year_month_day ad{one.day};
            const BsDate bs = *rules.calendar.toDate(one.day);
            const auto name = names.find(id);
            std::cout << id << " | " << (name == names.end() ? "" : name->second) << " | " << dateText(ad) << " | "
                      << dateText(bs) << " | " << gradeName(one.grade) << '\n';
        }
    }
}

/// The BS year that `rest` has at `place`, or `otherwise`.
int yearOf(const std::vector<std::string>& rest, std::size_t place, int otherwise) {
    if (place >= rest.size()) {
        return otherwise;
    }
    const std::optional<int> year = readNumber(rest[place]);
    if (!year || *year < kFirstYear || *year > kLastYear) {
        throw FileError{"'" + rest[place] + "' is no BS year from " + std::to_string(kFirstYear) + " to " +
                        std::to_string(kLastYear)};
    }
    return *year;
}

void writeYears(const std::string& root, int from, int to) {
    if (to < from) {
        throw FileError{"the last year comes before the first"};
    }
    const CurrentRules rules{root};
    std::filesystem::create_directories(root + "/almanac/years");
    for (int year = from; year <= to; ++year) {
        const std::string path = root + "/" + yearPath(year);
        std::ofstream file{path, std::ios::binary};
        if (!(file << makeYearFile(year, rules)).flush()) {
            throw FileError{path + ": cannot be written"};
        }
    }
}

int run(const std::string& what, const std::string& root, const std::vector<std::string>& rest) {
    if (what == "years") {
        writeYears(root, yearOf(rest, 0, kFirstYear), yearOf(rest, 1, rest.empty() ? kLastYear : yearOf(rest, 0, 0)));
        return EXIT_SUCCESS;
    }
    const AlmanacRules rules{root};
    const Panchanga panchanga{kFirstReckoning};
    if (what == "check") {
        const AlmanacReport report = checkAlmanac(readAlmanac(root), rules, panchanga);
        const CurrentRules current{root};
        const std::string months = checkMonths(current.calendar, current.lastPublished, current.panchanga);
        const std::string years = checkYearFiles(root, current);
        std::cout << report.text() << "published months: " << (months.empty() ? "all begin with the Sun" : "wrong")
                  << "\n"
                  << months << "year files: "
                  << (years.empty() ? "all are what the rules make" : "wrong; make_almanac years ROOT makes them")
                  << "\n"
                  << years;
        return report.passed() && months.empty() && years.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const int year = yearOf(rest, 0, 0);
    if (rules.calendar.daysIn(BsYear{year}) == 0) {
        throw FileError{"no BS year of the month table is given"};
    }
    if (what == "tithi") {
        std::cout << tithiFile(year, rules, panchanga);
    } else if (what == "events") {
        std::cout << eventFile(year, rules, panchanga, readEventNames(root), readImportant(root, rules, year));
    } else if (what == "days") {
        const SkyYear sky{year, rules.calendar, panchanga};
        const std::optional<int> only = rest.size() > 1 ? readNumber(rest[1]) : 0;
        if (!only) {
            throw FileError{"'" + rest[1] + "' is no event id"};
        }
        printDays(rules, readEventNames(root), sky, *only);
    } else {
        throw FileError{"no such thing to make: " + what};
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < 2) {
        std::cerr << "usage: make_almanac tithi|events|days ROOT YEAR [ID], make_almanac years ROOT [FROM [TO]],\n"
                     "       or make_almanac check ROOT\n";
        return EXIT_FAILURE;
    }
    try {
        return run(arguments[0], arguments[1], {arguments.begin() + 2, arguments.end()});
    } catch (const FileError& error) {
        std::cerr << error.text << '\n';
        return EXIT_FAILURE;
    }
}
