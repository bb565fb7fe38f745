#include "tools/YearMaker.h"

#include "almanac/YearFile.h"
#include "base/DateText.h"
#include "panchanga/DaySky.h"
#include "panchanga/RuleText.h"
#include "tools/RuleFiles.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <vector>

namespace dinmala::tools {

using std::chrono::days;
using std::chrono::sys_days;

namespace {

MonthLengths publishedMonths(const std::string& root) {
    const std::string path = "almanac/rules/months.txt";
    Result<MonthLengths> lengths = parseMonthLengths(fileText(root, path));
    if (!lengths) {
        throw FileError{path + ":" + std::to_string(lengths.error().line) + ": " + lengths.error().what};
    }
    if (lengths->firstYear != BsYear{kFirstYear}) {
        throw FileError{path + ": does not begin with " + std::to_string(kFirstYear)};
    }
    return *std::move(lengths);
}

int lastYearOf(const MonthLengths& months) {
    return int{months.firstYear} + static_cast<int>(months.lengths.size() / 12) - 1;
}

/// Reads one more file of rules into `festivals`, by `read`.
template <typename Read>
void addRules(Festivals& festivals, const std::string& root, const std::string& path, Read read) {
    readFile(root, path, [&](std::istream& file, const std::string& name) {
        if (const std::optional<FileError> error = (festivals.*read)(file, name)) {
            throw FileError{*error};
        }
        return 0;
    });
}

Festivals currentFestivals(const std::string& root) {
    Festivals festivals;
    addRules(festivals, root, "almanac/rules/festivals.txt", &Festivals::read);
    addRules(festivals, root, "almanac/rules/corrections.txt", &Festivals::readCorrections);
    addRules(festivals, root, "almanac/rules/holidays.txt", &Festivals::readHolidays);
    return festivals;
}

Names currentNames(const std::string& root) {
    Names names = readEventNames(root);
    for (auto& [id, name] : readFile(root, "almanac/data/event_names_current.txt", readNames)) {
        names[id] = name.substr(0, name.find('|'));
    }
    return names;
}

/// The grades of a reckoned year's dates: those of a month by how near its sankranti comes to the instant at which the
/// month would begin on another day. Its last day also is in doubt when the next month may begin a day earlier.
void gradeDates(YearAlmanac& almanac, const Panchanga& panchanga) {
    for (YearDay& day : almanac.days) {
        const int month = static_cast<int>(unsigned{day.date.month});
        const SolarMonth now = panchanga.solarMonth(int{almanac.year}, month);
        day.dateGrade = gradeOf(now.margin());
        const SolarMonth next = month < 12 ? panchanga.solarMonth(int{almanac.year}, month + 1)
                                           : panchanga.solarMonth(int{almanac.year} + 1, 1);
        if (day.day + days{1} == next.first) {
            day.dateGrade = std::max(day.dateGrade, gradeOf(1440.0 * (next.sankranti - next.earlierBefore)));
        }
    }
}

}  // namespace

BsCalendar wholeCalendar(MonthLengths published, const Panchanga& panchanga) {
    sys_days start = kFirstDayOf1999;
    for (const std::uint8_t length : published.lengths) {
        start += days{length};
    }
    for (int year = lastYearOf(published) + 1; year <= kLastYear; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const sys_days next =
                month < 12 ? panchanga.solarMonthStart(year, month + 1) : panchanga.solarMonthStart(year + 1, 1);
            published.lengths.push_back(static_cast<std::uint8_t>((next - start).count()));
            start = next;
        }
    }
    Result<BsCalendar> calendar = published.calendar();
    if (!calendar) {
        throw FileError{"the reckoned months: " + calendar.error().what};
    }
    return *std::move(calendar);
}

CurrentRules::CurrentRules(const std::string& root)
    : lastPublished(lastYearOf(publishedMonths(root))),
      calendar(wholeCalendar(publishedMonths(root), panchanga)),
      festivals(currentFestivals(root)),
      names(currentNames(root)) {}

YearAlmanac makeYear(int year, const CurrentRules& rules) {
    const SkyYear sky{year, rules.calendar, rules.panchanga};
    YearAlmanac almanac{BsYear{year}, year <= rules.lastPublished, {}};
    for (sys_days day = sky.first(); day <= sky.last(); day += days{1}) {
        const DaySky above = daySky(day, sky);
        almanac.days.push_back({*rules.calendar.toDate(day),
                                day,
                                Grade::published,
                                static_cast<std::uint8_t>(above.tithi.tithi.number),
                                static_cast<std::uint8_t>(above.skipped ? above.skipped->tithi.number : 0),
                                gradeOf(above.margin),
                                {}});
    }
    if (!almanac.published) {
        gradeDates(almanac, rules.panchanga);
    }
    for (const Celebration& one : rules.festivals.celebrations(sky)) {
        YearDay& day = almanac.days[static_cast<std::size_t>((one.day - sky.first()).count())];
        day.events.push_back({static_cast<std::uint16_t>(one.festival->id), one.dayOff,
                              one.byBsDate ? std::max(one.grade, day.dateGrade) : one.grade});
    }
    return almanac;
}

std::string yearPath(int year) { return "almanac/years/" + std::to_string(year) + ".txt"; }

std::string makeYearFile(int year, const CurrentRules& rules) {
    return "# BS " + std::to_string(year) +
           ", made by make_almanac from almanac/rules and the computed sky; almanac/YearFile.h tells the form.\n" +
           yearFileText(makeYear(year, rules), [&rules](std::uint16_t id) -> std::string_view {
               const auto name = rules.names.find(id);
               return name == rules.names.end() ? std::string_view{} : name->second;
           });
}

std::string checkMonths(const BsCalendar& calendar, int lastPublished, const Panchanga& panchanga) {
    constexpr double kMinutes = 30.0;
    std::string wrong;
    for (int year = kFirstYear; year <= lastPublished; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const SolarMonth reckoned = panchanga.solarMonth(year, month);
            const BsDate date = bsDate(year, static_cast<unsigned>(month), 1);
            const auto apart = (*calendar.toDays(date) - reckoned.first).count();
            const double near =
                apart < 0 ? reckoned.sankranti - reckoned.earlierBefore : reckoned.laterFrom - reckoned.sankranti;
            if (apart != 0 && (std::abs(apart) > 1 || near * 1440.0 > kMinutes)) {
                wrong +=
                    dateText(date) + " is " + std::to_string(apart) + " days from where the Sun begins the month\n";
            }
        }
    }
    return wrong;
}

std::string checkYearFiles(const std::string& root, const CurrentRules& rules) {
    std::string wrong;
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        const std::string path = yearPath(year);
        const bool there = std::filesystem::exists(root + "/" + path);
        if (!there || fileText(root, path) != makeYearFile(year, rules)) {
            wrong += path + (there ? " is not what the rules make\n" : " is missing\n");
        }
    }
    return wrong;
}

}  // namespace dinmala::tools
