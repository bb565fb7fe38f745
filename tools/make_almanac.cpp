// Makes one year's list of tithis or events from the rules in almanac/rules and from the computed sky.
//
//   make_almanac tithi ROOT YEAR > almanac/data/tithi-YEAR.txt
//   make_almanac events ROOT YEAR > almanac/data/events-YEAR.txt
//   make_almanac days ROOT YEAR [ID]     every festival's days in the year, to read: id, date, grade
//
// ROOT is the top of the source tree.

#include "YearLists.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

using namespace dinmala::panchanga;

namespace {

std::ifstream opened(const std::string& path) {
    std::ifstream file{path};
    if (!file) {
        throw FileError{path + ": cannot be read"};
    }
    return file;
}

int run(const std::vector<std::string>& arguments) {
    const std::string& root = arguments[1];
    const int year = std::atoi(arguments[2].c_str());
    const std::string lengthsPath = root + "/calendar/data/month_lengths.txt";
    std::ifstream lengths = opened(lengthsPath);
    const BsCalendar calendar{lengths, lengthsPath};
    const Panchanga panchanga;
    if (!calendar.holds(year)) {
        throw FileError{lengthsPath + ": has no year " + arguments[2]};
    }
    if (arguments[0] == "tithi") {
        const std::string rulesPath = root + "/almanac/rules/tithis.txt";
        std::ifstream rules = opened(rulesPath);
        std::cout << "# The tithis of BS " << year << ", made by make_almanac from almanac/rules/tithis.txt.\n"
                  << writeYearList(TithiRules{rules, rulesPath}.list(year, calendar, panchanga));
        return EXIT_SUCCESS;
    }
    const std::string festivalsPath = root + "/almanac/rules/festivals.txt";
    std::ifstream rules = opened(festivalsPath);
    const Festivals festivals{rules, festivalsPath};
    const SkyYear sky{year, calendar, panchanga};
    if (arguments[0] == "days") {
        const int only = arguments.size() > 3 ? std::atoi(arguments[3].c_str()) : 0;
        for (const auto& [id, festival] : festivals.all()) {
            for (const Occurrence& one : festivals.daysOf(id, sky)) {
                if (only == 0 || only == id) {
                    const std::chrono::year_month_day ad{one.day};
                    const BsCalendar::Date bs = calendar.date(one.day);
                    std::cout << id << ' ' << static_cast<int>(ad.year()) << '-' << static_cast<unsigned>(ad.month())
                              << '-' << static_cast<unsigned>(ad.day()) << " (" << bs.month << '/' << bs.day << ") "
                              << gradeName(one.grade) << '\n';
                }
            }
        }
        return EXIT_SUCCESS;
    }
    if (arguments[0] == "events") {
        const std::string plansPath = root + "/almanac/rules/years.txt";
        const std::string namesPath = root + "/almanac/data/event_names.txt";
        std::ifstream plansFile = opened(plansPath);
        std::ifstream namesFile = opened(namesPath);
        const EventPlans plans{plansFile, plansPath};
        EventPlans::Dated important;
        if (const std::string name = plans.importantFile(year); !name.empty()) {
            const std::string importantPath = root + "/almanac/data/" + name;
            std::ifstream importantFile = opened(importantPath);
            important = readDated(importantFile, importantPath);
        }
        const std::vector<Token> list = plans.list(sky, festivals, readNames(namesFile, namesPath), important);
        std::cout << "# The events of BS " << year << ", made by make_almanac from almanac/rules.\n"
                  << writeYearList(list);
        return EXIT_SUCCESS;
    }
    std::cerr << "no such list: " << arguments[0] << '\n';
    return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < 3) {
        std::cerr << "usage: make_almanac tithi|events|days ROOT YEAR [ID]\n";
        return EXIT_FAILURE;
    }
    try {
        return run(arguments);
    } catch (const FileError& error) {
        std::cerr << error.text << '\n';
        return EXIT_FAILURE;
    }
}
