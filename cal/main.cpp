// dinmala-cal: the Bikram Sambat calendar in a terminal.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "cal/Complain.h"
#include "cal/Convert.h"
#include "cal/Dates.h"
#include "cal/Json.h"
#include "cal/Lists.h"
#include "cal/MonthView.h"
#include "cal/Names.h"
#include "cal/Settings.h"
#include "calendar/DataStore.h"
#include "calendar/MonthRecord.h"
#include "calendar/TimeZone.h"
#include "i18n/Translation.h"

namespace {

using namespace dinmala;
using namespace dinmala::cal;

constexpr int kGood = 0;
constexpr int kBad = 1;    // a date, a line or a year that has no answer
constexpr int kUsage = 2;  // the command line cannot be understood

int say(const std::string& message) {
    complain(message);
    return kBad;
}

int print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) return kGood;
    return say(tr("cannot write: {1}", {std::strerror(errno)}));
}

/// As given on the command line, not yet read.
struct Arguments {
    std::string year;
    std::string month;
    std::string date;  // --date
    std::string from = "ad";
    std::string language = "ne";
    std::string digits;
    std::string day;        // of convert, weekday
    std::string yearOrDay;  // of events, tithi
    bool json = false;
    bool important = false;
};

Settings settingsOf(const Arguments& arguments, bool forPrograms) {
    const char* noColour = std::getenv("NO_COLOR");
    const char* term = std::getenv("TERM");
    Settings settings;
    settings.json = arguments.json;
    settings.nepali = arguments.language == "ne";
    settings.devanagari = arguments.digits.empty() ? settings.nepali && !forPrograms : arguments.digits == "devanagari";
    settings.from = arguments.from == "bs" ? Calendar::Bs : Calendar::Ad;
    settings.terminal = isatty(STDOUT_FILENO) == 1 && term != nullptr && std::string_view{term} != "dumb";
    settings.colours = settings.terminal && (noColour == nullptr || *noColour == '\0');
    return settings;
}

/// Today in Nepal, or the day of --date.
std::optional<Day> today(const DataStore& store, const DayFinder& finder) {
    if (!store.coversToday()) return std::nullopt;
    return finder.find(std::string_view{store.ad_c_date()}.substr(0, adText::kLength), Calendar::Ad);
}

int showCalendar(DataStore& store, const Arguments& arguments, const Settings& settings) {
    if (arguments.year.empty()) {
        if (!store.coversToday()) return say(tr("today lies outside the table; choose a year"));
        return print(monthText(store, static_cast<std::int32_t>(store.currentBSYear()),
                               static_cast<std::int32_t>(store.currentBSMonth()), settings));
    }
    const DayFinder finder{store};
    const auto year = readNumber(arguments.year);
    if (!year) return say(tr("{1} is not a BS year such as 2070", {shownText(arguments.year)}));
    const auto month = arguments.month.empty() ? 1 : readNumber(arguments.month);
    if (!month) return say(tr("{1} is not a month, 1 to 12", {shownText(arguments.month)}));
    if (const Date first{*year, *month, 1}; !finder.find(first, Calendar::Bs)) {
        if (*month < 1 || *month > 12) return say(tr("{1} is not a month, 1 to 12", {shownText(arguments.month)}));
        return say(finder.problemWith(dateText(first), Calendar::Bs));
    }
    return print(arguments.month.empty() ? yearText(store, *year, settings)
                                         : monthText(store, *year, *month, settings));
}

int convert(const DataStore& store, const Arguments& arguments, const Settings& settings) {
    const DayFinder finder{store};
    if (arguments.day.empty() || arguments.day == "-") {
        return convertStream(finder, settings, STDIN_FILENO, STDOUT_FILENO);
    }
    const auto day = finder.find(arguments.day, settings.from);
    if (!day) return say(finder.problemWith(arguments.day, settings.from));
    std::string text;
    appendConverted(text, *day, finder, settings);
    return print(text + "\n");
}

int weekDay(const DataStore& store, const Arguments& arguments, const Settings& settings) {
    const DayFinder finder{store};
    const auto day = arguments.day.empty() ? today(store, finder) : finder.find(arguments.day, settings.from);
    if (!day && arguments.day.empty()) return say(tr("today lies outside the table; choose a date"));
    if (!day) return say(finder.problemWith(arguments.day, settings.from));
    const std::uint64_t number = finder.weekDay(*day);
    if (!settings.json) return print(std::string{weekDayName(number, settings.nepali)} + "\n");
    Json json = jsonOf(*day, finder);
    json["name"] = weekDayName(number, true);
    json["nameEnglish"] = weekDayName(number, false);
    return print(printed(json));
}

int noList(const DataStore& store, Almanac almanac, std::int32_t year) {
    const std::string text = almanac == Almanac::Events
                                 ? tr("there is no list of events for BS {1}; there are lists for {2}",
                                      {std::to_string(year), yearsWithList(store, almanac)})
                                 : tr("there is no list of tithis for BS {1}; there are lists for {2}",
                                      {std::to_string(year), yearsWithList(store, almanac)});
    return say(text);
}

int almanacList(const DataStore& store, Almanac almanac, const Arguments& arguments, const Settings& settings) {
    if (const auto year = readNumber(arguments.yearOrDay)) {
        const auto text = yearList(store, almanac, *year, settings);
        return text ? print(*text) : noList(store, almanac, *year);
    }
    const DayFinder finder{store};
    const bool none = arguments.yearOrDay.empty();
    const auto day = none ? today(store, finder) : finder.find(arguments.yearOrDay, settings.from);
    if (!day && none) return say(tr("today lies outside the table; choose a year or a date"));
    if (!day) return say(finder.problemWith(arguments.yearOrDay, settings.from));
    const auto text = dayList(store, almanac, *day, settings);
    return text ? print(*text) : noList(store, almanac, day->bs.year);
}

int upcoming(const DataStore& store, const Arguments& arguments, const Settings& settings) {
    const auto day = today(store, DayFinder{store});
    if (!day) return say(tr("today lies outside the table; choose a day with --date"));
    if (arguments.important) return print(importantList(store, *day, settings));
    const auto text = upcomingList(store, *day, settings);
    return text ? print(*text) : noList(store, Almanac::Events, day->bs.year);
}

/// The clock of --date: noon in Nepal on that day.
Clock noonOf(const Day& day) {
    const std::chrono::year_month_day date{std::chrono::year{day.ad.year},
                                           std::chrono::month{static_cast<unsigned>(day.ad.month)},
                                           std::chrono::day{static_cast<unsigned>(day.ad.day)}};
    const Moment noon = kathmandu().toMoment(std::chrono::local_days{date} + std::chrono::hours{12});
    return [noon] { return noon; };
}

int run(int argc, char** argv) {
    CLI::App app{tr("The Bikram Sambat calendar in a terminal.\n"
                    "Without a command: this month, or the YEAR, or its MONTH (1 to 12), of Bikram Sambat."),
                 "dinmala-cal"};
    Arguments arguments;
    for (const auto& [word, told] :
         {std::pair{"Usage", tr("Usage")}, std::pair{"OPTIONS", tr("OPTIONS")}, std::pair{"SUBCOMMAND", tr("COMMAND")},
          std::pair{"Positionals", tr("Positionals")}}) {
        app.get_formatter()->label(word, told);
    }
    app.option_defaults()->group(tr("Options"));
    app.set_help_flag("-h,--help", tr("tell the options and end"));
    app.set_version_flag("--version", std::string{"dinmala-cal "} + DINMALA_VERSION, tr("tell the version and end"));
    app.add_option("YEAR", arguments.year, tr("a BS year, 1999 to 2099"))->option_text(" ");
    app.add_option("MONTH", arguments.month, tr("a BS month of that year"))->option_text(" ");
    app.add_flag("--json", arguments.json, tr("write JSON: Western digits, dates as yyyy-MM-dd"));
    app.add_option("--from", arguments.from, tr("the calendar in which DATE is given: ad (as without) or bs"))
        ->check(CLI::IsMember({"ad", "bs"}))
        ->option_text("ad|bs");
    app.add_option("--date", arguments.date, tr("stand on this day in place of today"))->option_text("DATE");
    app.add_option("--digits", arguments.digits, tr("the digits of BS numbers"))
        ->check(CLI::IsMember({"devanagari", "western"}))
        ->option_text("devanagari|western");
    app.add_option("--lang", arguments.language, tr("the language of months and weekdays: ne (as without) or en"))
        ->check(CLI::IsMember({"ne", "en"}))
        ->option_text("ne|en");
    app.require_subcommand(0, 1);
    app.footer(tr("A DATE is yyyy-MM-dd. More in dinmala-cal(1)."));

    const auto command = [&](const char* name, const std::string& about) {
        CLI::App* subcommand = app.add_subcommand(name, about);
        subcommand->fallthrough();
        subcommand->group(tr("Commands"));
        return subcommand;
    };
    CLI::App* convertCommand = command("convert", tr("AD to BS, or with --from bs to AD: DATE, or a date a line of "
                                                     "standard input"));
    convertCommand->add_option("DATE", arguments.day, tr("yyyy-MM-dd; without it, or with -, standard input"))
        ->option_text("");
    CLI::App* weekDayCommand = command("weekday", tr("the weekday of DATE, or of today"));
    weekDayCommand->add_option("DATE", arguments.day, "yyyy-MM-dd")->option_text("");
    CLI::App* eventsCommand = command("events", tr("the events of a BS YEAR or of DATE, or of today"));
    eventsCommand->add_option("YEAR|DATE", arguments.yearOrDay, tr("a BS year, or yyyy-MM-dd"))->option_text("");
    CLI::App* tithiCommand = command("tithi", tr("the tithis of a BS YEAR or of DATE, or of today"));
    tithiCommand->add_option("YEAR|DATE", arguments.yearOrDay, tr("a BS year, or yyyy-MM-dd"))->option_text("");
    CLI::App* upcomingCommand = command("upcoming", tr("the events still to come in this BS year"));
    upcomingCommand->add_flag("--important", arguments.important, tr("the important ones, from their own list"));

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kGood : kUsage;
    }
    if (!app.get_subcommands().empty() && !arguments.year.empty()) {
        say(tr("too much is given: {1}", {shownText(arguments.year)}));
        return kUsage;
    }

    const Settings settings = settingsOf(arguments, convertCommand->parsed());
    setDefaultTimeZone(kathmandu());
    DataStore store;
    if (!arguments.date.empty()) {
        const DayFinder finder{store};
        const auto day = finder.find(arguments.date, settings.from);
        if (!day) return say("--date: " + finder.problemWith(arguments.date, settings.from));
        store = DataStore{noonOf(*day)};
    }
    if (convertCommand->parsed()) return convert(store, arguments, settings);
    if (weekDayCommand->parsed()) return weekDay(store, arguments, settings);
    if (eventsCommand->parsed()) return almanacList(store, Almanac::Events, arguments, settings);
    if (tithiCommand->parsed()) return almanacList(store, Almanac::Tithis, arguments, settings);
    if (upcomingCommand->parsed()) return upcoming(store, arguments, settings);
    return showCalendar(store, arguments, settings);
}

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_MESSAGES, "");
    std::setlocale(LC_CTYPE, "C.UTF-8");  // for wcwidth(); what is written is UTF-8 in every locale
    openTranslations();
    return run(argc, argv);
}
