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
