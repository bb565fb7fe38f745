#include "tools/RuleFiles.h"

#include "base/MonthLengths.h"

#include <sstream>

namespace dinmala::tools {

std::string fileText(const std::string& root, const std::string& path) {
    return readFile(root, path, [](std::istream& file, const std::string&) {
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    });
}

BsCalendar readCalendar(const std::string& root, const std::string& path) {
    const Result<MonthLengths> lengths = parseMonthLengths(fileText(root, path));
    if (!lengths) {
        throw FileError{path + ":" + std::to_string(lengths.error().line) + ": " + lengths.error().what};
    }
    Result<BsCalendar> calendar = lengths->calendar();
    if (!calendar) {
        throw FileError{path + ": " + calendar.error().what};
    }
    return *std::move(calendar);
}

AlmanacRules::AlmanacRules(const std::string& root)
    : calendar(readCalendar(root, "calendar/data/month_lengths.txt")),
      festivals(readFile(root, "almanac/rules/festivals.txt",
                         [](std::istream& file, const std::string& path) {
                             Festivals rules;
                             if (const std::optional<FileError> error = rules.read(file, path)) {
                                 throw FileError{*error};
                             }
                             return rules;
                         })),
      tithis(readFile(root, "almanac/rules/tithis.txt",
                      [](std::istream& file, const std::string& path) {
                          return TithiRules{file, path};
                      })),
      plans(readFile(root, "almanac/rules/years.txt", [](std::istream& file, const std::string& path) {
          return EventPlans{file, path};
      })) {}

Names readEventNames(const std::string& root) { return readFile(root, "almanac/data/event_names.txt", readNames); }

Dated readImportant(const std::string& root, const AlmanacRules& rules, int year) {
    const std::string name = rules.plans.importantFile(year);
    return name.empty() ? Dated{} : readFile(root, "almanac/data/" + name, readDated);
}

std::string tithiFile(int year, const AlmanacRules& rules, const Panchanga& panchanga) {
    return "# The tithis of BS " + std::to_string(year) + ", made by make_almanac from almanac/rules.\n" +
           writeYearList(rules.tithis.list(year, rules.calendar, panchanga));
}

std::string eventFile(int year, const AlmanacRules& rules, const Panchanga& panchanga, const Names& names,
                      const Dated& important) {
    const SkyYear sky{year, rules.calendar, panchanga};
    return "# The events of BS " + std::to_string(year) + ", made by make_almanac from almanac/rules.\n" +
           writeYearList(rules.plans.list(sky, rules.festivals, names, important));
}

}  // namespace dinmala::tools
