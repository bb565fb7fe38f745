// dinmala-cal: the Bikram Sambat calendar in a terminal.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "agenda/EditionSource.h"
#include "agenda/ReadDay.h"
#include "agenda/Sentences.h"
#include "agenda/Today.h"
#include "agenda/Upcoming.h"
#include "almanac/YearFile.h"
#include "base/Names.h"
#include "cal/Convert.h"
#include "cal/EditionChoice.h"
#include "cal/Explain.h"
#include "cal/Json.h"
#include "cal/Lists.h"
#include "cal/Messages.h"
#include "cal/MonthView.h"
#include "cal/Settings.h"
#include "cal/YearFiles.h"
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

/// The words of the command line, not yet read. An empty text is a word too.
struct Arguments {
    using Text = std::optional<std::string>;
    Text year;
    Text month;
    Text date;  // --date
    Text edition;
    std::string from = "ad";
    std::string language = "ne";
    std::string digits;
    Text day;        // of convert, weekday, explain
    Text yearOrDay;  // of events, tithi
    std::string almanacYear;
    std::string file;  // of check-year
    Text first, last;  // years, of ics
    Text output;
    Text follow;
    bool months = false;
    bool days = false;
    bool force = false;
    bool json = false;
    bool important = false;
};

Settings settingsOf(const Arguments& arguments, bool forPrograms) {
    const char* noColour = std::getenv("NO_COLOR");
    const char* term = std::getenv("TERM");
    Settings settings;
    settings.json = arguments.json;
    settings.language = arguments.language == "ne" ? Language::nepali : Language::english;
    const bool devanagari = arguments.digits.empty() ? settings.language == Language::nepali && !forPrograms
                                                     : arguments.digits == "devanagari";
    settings.digits = devanagari ? Digits::devanagari : Digits::western;
    settings.from = arguments.from == "bs" ? CalendarKind::bs : CalendarKind::ad;
    settings.terminal = isatty(STDOUT_FILENO) == 1 && term != nullptr && std::string_view{term} != "dumb";
    settings.colours = settings.terminal && (noColour == nullptr || *noColour == '\0');
    return settings;
}

/// What every command answers from.
struct Context {
    const Edition& edition;
    std::chrono::sys_days today;  // in Nepal, or the day of --date; may lie outside the table
    Settings settings;
};

/// The day of a text, or today without one. Tells what is wrong, `noToday` where today lies outside the table.
std::optional<FoundDay> dayOf(const std::optional<std::string>& text, const Context& context,
                              const std::string& noToday) {
    const BsCalendar& calendar = context.edition.calendar;
    if (text) {
        const auto day = readDay(*text, context.settings.from, calendar);
        if (!day) complain(problemWith(*text, context.settings.from, calendar));
        return day;
    }
    const auto date = calendar.toDate(context.today);
    if (!date) {
        complain(noToday);
        return std::nullopt;
    }
    return FoundDay{*date, context.today, CalendarKind::bs};
}

int showCalendar(const Context& context, const Arguments& arguments) {
    const Edition& edition = context.edition;
    const auto today = edition.calendar.toDate(context.today);
    if (!arguments.year) {
        if (!today) return say(tr("today lies outside the table; choose a year"));
        return print(monthText(edition, today->yearMonth(), today, context.settings));
    }
    const auto year = readNumber(*arguments.year);
    if (!year) return say(tr("{1} is not a BS year such as 2070", {shownText(*arguments.year)}));
    const auto month = arguments.month ? readNumber(*arguments.month) : 1;
    if (!month || *month < 1 || *month > 12) {
        return say(tr("{1} is not a month, 1 to 12", {shownText(*arguments.month)}));
    }
    const BsYearMonth wanted{BsYear{*year}, BsMonth{static_cast<unsigned>(*month)}};
    if (edition.calendar.daysIn(wanted) == 0) {
        return say(
            problemWith(dateText(BsDate{wanted.year, wanted.month, BsDay{1}}), CalendarKind::bs, edition.calendar));
    }
    return print(arguments.month ? monthText(edition, wanted, today, context.settings)
                                 : yearText(edition, wanted.year, today, context.settings));
}

int convert(const Context& context, const Arguments& arguments) {
    if (!arguments.day || *arguments.day == "-") {
        return convertStream(context.edition.calendar, context.settings, STDIN_FILENO, STDOUT_FILENO);
    }
    const auto day = dayOf(arguments.day, context, "");
    if (!day) return kBad;
    std::string text;
    appendConverted(text, *day, context.settings);
    return print(text + "\n");
}

int weekDay(const Context& context, const Arguments& arguments) {
    const auto day = dayOf(arguments.day, context, tr("today lies outside the table; choose a date"));
    if (!day) return kBad;
    const unsigned number = weekDayNumber(day->day);
    if (!context.settings.json) return print(std::string{weekDayName(number, context.settings.language)} + "\n");
    Json json = jsonOf(day->bs, day->day);
    json["name"] = weekDayName(number, Language::nepali);
    json["nameEnglish"] = weekDayName(number, Language::english);
    return print(printed(json));
}

int noList(const Edition& edition, ListKind kind, BsYear year) {
    const std::string number = std::to_string(int{year});
    const std::string years = yearsWithLists(edition);
    return say(kind == ListKind::events
                   ? tr("there is no list of events for BS {1}; there are lists for {2}", {number, years})
                   : tr("there is no list of tithis for BS {1}; there are lists for {2}", {number, years}));
}

int almanacList(const Context& context, ListKind kind, const Arguments& arguments) {
    const Edition& edition = context.edition;
    if (const auto year = arguments.yearOrDay ? readNumber(*arguments.yearOrDay) : std::nullopt) {
        if (!edition.almanac.holds(BsYear{*year})) return noList(edition, kind, BsYear{*year});
        return print(yearList(edition, kind, BsYear{*year}, context.settings));
    }
    const auto found = dayOf(arguments.yearOrDay, context, tr("today lies outside the table; choose a year or a date"));
    if (!found) return kBad;
    const auto day = edition.almanac.day(found->bs);
    return day ? print(dayList(edition, kind, *day, context.settings)) : noList(edition, kind, found->bs.year);
}

int upcoming(const Context& context, const Arguments& arguments) {
    const Edition& edition = context.edition;
    const auto today = edition.calendar.toDate(context.today);
    if (!today) return say(tr("today lies outside the table; choose a day with --date"));
    if (arguments.important) {
        return print(upcomingList(importantEvents(edition, context.today), edition, context.settings));
    }
    if (!edition.almanac.holds(today->year)) return noList(edition, ListKind::events, today->year);
    return print(upcomingList(upcomingEvents(edition, context.today), edition, context.settings));
}

int explain(const Context& context, const Arguments& arguments) {
    const auto found = dayOf(arguments.day, context, tr("today lies outside the table; choose a date"));
    if (!found) return kBad;
    const auto day = context.edition.almanac.day(found->bs);
    if (!day) return noList(context.edition, ListKind::events, found->bs.year);
    return print(explanation(context.edition, *day, context.settings));
}

int almanacFile(const Context& context, const Arguments& arguments) {
    const Almanac& almanac = context.edition.almanac;
    if (!almanac.graded()) return say(tr("the first edition has no year files"));
    const auto year = readNumber(arguments.almanacYear);
    if (!year) return say(tr("{1} is not a BS year such as 2070", {shownText(arguments.almanacYear)}));
    const auto numbers = almanac.numbers(BsYear{*year});
    if (!numbers) {
        return say(tr("there is no almanac of BS {1}; there are those of {2}",
                      {std::to_string(*year), yearsWithLists(context.edition)}));
    }
    return print(yearFileText(*numbers, [&almanac](std::uint16_t id) { return almanac.eventName(id); }));
}

int checkYear(const Edition& current, const Arguments& arguments) {
    const Result<std::string> told = checkedYear(arguments.file, current);
    if (!told) return say(refusal(arguments.file, told.error()));
    return print(withoutControls(arguments.file) + ": " + *told + "\n");
}

/// Goes on as the helper that writes iCalendar.
int iCalendar(const Context& context, const Arguments& arguments) {
    const Edition& edition = context.edition;
    const bool devanagari = context.settings.digits == Digits::devanagari;
    std::vector<std::string> words{"dinmala-ics", "edition=" + std::string{editionName(edition.id)},
                                   "language=" + arguments.language,
                                   std::string{"digits="} + (devanagari ? "devanagari" : "western")};
    if (arguments.first) {
        const std::string& lastText = arguments.last ? *arguments.last : *arguments.first;
        for (const auto& [key, text] : {std::pair{"first=", *arguments.first}, {"last=", lastText}}) {
            const auto year = readNumber(text);
            if (!year) return say(tr("{1} is not a BS year such as 2070", {shownText(text)}));
            if (edition.calendar.daysIn(BsYear{*year}) == 0) {
                return say(problemWith(dateText(bsDate(*year, 1, 1)), CalendarKind::bs, edition.calendar));
            }
            words.push_back(key + std::to_string(*year));
        }
        if (*readNumber(*arguments.first) > *readNumber(lastText)) {
            return say(tr("{1} is later than {2}", {shownText(*arguments.first), shownText(lastText)}));
        }
    }
    const auto& file = arguments.follow ? arguments.follow : arguments.output;
    if (file && file->empty()) return say(tr("{1} cannot be written: {2}", {shownText(*file), std::strerror(ENOENT)}));
    if (file) words.push_back("file=" + *file);
    if (arguments.follow) words.emplace_back("follow=1");
    if (arguments.months) words.emplace_back("months=1");
    if (arguments.days) words.emplace_back("days=1");
    if (arguments.force) words.emplace_back("force=1");
    std::vector<char*> list;
    list.reserve(words.size() + 1);
    for (std::string& word : words) list.push_back(word.data());
    list.push_back(nullptr);
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* place : {"dinmala-ics", "../libexec/dinmala/dinmala-ics"}) {  // in the build tree, installed
        execv((folder / place).c_str(), list.data());
    }
    return say(tr("the helper {1} cannot be started: {2}; please reinstall", {"dinmala-ics", std::strerror(errno)}));
}

/// What --help and --version write goes through std::cout.
int ended(const CLI::App& app, const CLI::ParseError& error) {
    if (app.exit(error) != 0) return kUsage;
    if (std::cout.flush()) return kGood;
    return say(tr("cannot write: {1}", {std::strerror(errno)}));
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
    app.add_option("--edition", arguments.edition,
                   tr("the calendar as Nepal publishes it (current, as without), or as first made in 2015 (first)"))
        ->option_text("current|first");
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
    CLI::App* upcomingCommand = command("upcoming", tr("the events of the next 365 days"));
    upcomingCommand->add_flag("--important", arguments.important, tr("the public holidays alone"));

    CLI::App* explainCommand = command("explain", tr("why DATE, or today, has its date, its tithi and its festivals"));
    explainCommand->add_option("DATE", arguments.day, "yyyy-MM-dd")->option_text("");
    CLI::App* almanacCommand = command("almanac", tr("the almanac of a BS YEAR as a file, a line a day"));
    almanacCommand->add_option("YEAR", arguments.almanacYear, tr("a BS year, 1999 to 2099"))->required();
    CLI::App* checkYearCommand = command("check-year", tr("whether a year's FILE can be taken, or why not"));
    checkYearCommand->add_option("FILE", arguments.file, tr("a file as almanac writes it; - for standard input"))
        ->required();

    CLI::App* icsCommand = command("ics", tr("the events of a BS YEAR, or of the years FROM to TO, or of this one and "
                                             "the next, as iCalendar"));
    icsCommand->add_option("YEAR|FROM", arguments.first, tr("a BS year, 1999 to 2099"))->option_text("");
    icsCommand->add_option("TO", arguments.last, tr("the last BS year"))->option_text("");
    icsCommand->add_flag("--months", arguments.months, tr("the beginning of each month too"));
    icsCommand->add_flag("--days", arguments.days, tr("each day's BS date and tithi too"));
    CLI::Option* output =
        icsCommand->add_option("--output", arguments.output, tr("write FILE where it is not so already"))
            ->option_text("FILE");
    icsCommand->add_option("--follow", arguments.follow, tr("keep FILE fresh until ended"))
        ->option_text("FILE")
        ->excludes(output);
    icsCommand->add_flag("--force", arguments.force, tr("replace a FILE of somebody else's"));

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return ended(app, error);
    }
    if (!app.get_subcommands().empty() && arguments.year) {
        say(tr("too much is given: {1}", {shownText(*arguments.year)}));
        return kUsage;
    }
    const Result<EditionId> id = chosenEdition(arguments.edition);
    if (!id) {
        complain(id.error().what);
        return kUsage;
    }

    EditionSource source;
    const Edition& edition = source.get(*id);
    for (const std::string& problem : source.takeProblems()) complain(withoutControls(problem));

    if (checkYearCommand->parsed()) return checkYear(source.get(EditionId::current), arguments);

    // time() and not the system clock, whose nanoseconds end with AD 2262.
    const auto now = std::chrono::sys_seconds{std::chrono::seconds{std::time(nullptr)}};
    Context context{edition, nepalDay(now), settingsOf(arguments, convertCommand->parsed())};
    if (arguments.date) {
        const BsCalendar& calendar = context.edition.calendar;
        const auto day = readDay(*arguments.date, context.settings.from, calendar);
        if (!day) return say("--date: " + problemWith(*arguments.date, context.settings.from, calendar));
        context.today = day->day;
    }
    if (convertCommand->parsed()) return convert(context, arguments);
    if (weekDayCommand->parsed()) return weekDay(context, arguments);
    if (eventsCommand->parsed()) return almanacList(context, ListKind::events, arguments);
    if (tithiCommand->parsed()) return almanacList(context, ListKind::tithis, arguments);
    if (upcomingCommand->parsed()) return upcoming(context, arguments);
    if (explainCommand->parsed()) return explain(context, arguments);
    if (icsCommand->parsed()) return iCalendar(context, arguments);
    if (almanacCommand->parsed()) return almanacFile(context, arguments);
    return showCalendar(context, arguments);
}

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_MESSAGES, "");
    std::setlocale(LC_CTYPE, "C.UTF-8");  // for wcwidth(); what is written is UTF-8 in every locale
    openTranslations();
    return run(argc, argv);
}
