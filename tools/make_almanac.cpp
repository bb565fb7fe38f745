// Makes and checks the almanac's year lists by the rules in almanac/rules and the computed sky.
//
//   make_almanac tithi ROOT YEAR          the text of almanac/data/tithi-YEAR.txt
//   make_almanac events ROOT YEAR         the text of almanac/data/events-YEAR.txt
//   make_almanac days ROOT YEAR [ID]      every festival's days in the year, to read: id, name, AD, BS month/day, grade
//   make_almanac check ROOT               holds the files to everything known of them; fails where one is wrong
//
// ROOT is the top of the source tree.

#include "AlmanacCheck.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using namespace dinmala::panchanga;

namespace {

void printDays(const AlmanacRules& rules, const EventPlans::Names& names, const SkyYear& sky, int only) {
    for (const auto& [id, festival] : rules.festivals.all()) {
        if (only != 0 && only != id) {
            continue;
        }
        for (const Occurrence& one : rules.festivals.daysOf(id, sky)) {
            const std::chrono::year_month_day ad{one.day};
            const BsCalendar::Date bs = rules.calendar.date(one.day);
            const auto name = names.find(id);
            std::cout << id << " | " << (name == names.end() ? "" : name->second) << " | "
                      << static_cast<int>(ad.year()) << '-' << static_cast<unsigned>(ad.month()) << '-'
                      << static_cast<unsigned>(ad.day()) << " | " << bs.month << '/' << bs.day << " | "
                      << gradeName(one.grade) << '\n';
        }
    }
}

int run(const std::string& what, const std::string& root, const std::vector<std::string>& rest) {
    const AlmanacRules rules{root};
    const Panchanga panchanga;
    if (what == "check") {
        const AlmanacReport report = checkAlmanac(readAlmanac(root), rules, panchanga);
        std::cout << report.text();
        return report.passed() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const int year = rest.empty() ? 0 : std::atoi(rest[0].c_str());
    if (!rules.calendar.holds(year)) {
        throw FileError{"no BS year of the month table is given"};
    }
    if (what == "tithi") {
        std::cout << tithiFile(year, rules, panchanga);
    } else if (what == "events") {
        std::cout << eventFile(year, rules, panchanga, readEventNames(root), readImportant(root, rules, year));
    } else if (what == "days") {
        const SkyYear sky{year, rules.calendar, panchanga};
        printDays(rules, readEventNames(root), sky, rest.size() > 1 ? std::atoi(rest[1].c_str()) : 0);
    } else {
        throw FileError{"no such thing to make: " + what};
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < 2) {
        std::cerr << "usage: make_almanac tithi|events|days ROOT YEAR [ID], or make_almanac check ROOT\n";
        return EXIT_FAILURE;
    }
    try {
        return run(arguments[0], arguments[1], {arguments.begin() + 2, arguments.end()});
    } catch (const FileError& error) {
        std::cerr << error.text << '\n';
        return EXIT_FAILURE;
    }
}
