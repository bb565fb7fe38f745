// The month window as a program: its options, its one instance, its end.
#include <gtk/gtk.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "agenda/EditionChoice.h"
#include "agenda/ReadDay.h"
#include "agenda/Sentences.h"
#include "agenda/Today.h"
#include "base/Clock.h"
#include "desktop/KeyFilePreferences.h"
#include "i18n/Translation.h"
#include "window/gtk/MonthWindow.h"
#include "window/gtk/Sheet.h"

namespace dinmala {
namespace {

constexpr const char* kId = "org.dinmala.Dinmala.Window";
constexpr int kUsageError = 2;

/// Milliseconds. A click on the panel's item takes the keyboard from the window in some panels, and so closes it; the
/// click itself comes a little later and must not open it again.
constexpr guint kSameClick = 400;

std::string help() {
    return tr(
        "The month window of Dinmala: a month of days with tithis and festivals, a day's\n"
        "details, what is upcoming, and a converter between BS and AD dates.\n"
        "\n"
        "usage: dinmala-window [--date DATE | --month MONTH | --convert DATE]\n"
        "                      [--edition current|first] [--print FILE.pdf | --print-year FILE.pdf]\n"
        "\n"
        "  --date DATE         begins at a day: 2083-08-07, \"7 Mangsir 2083\", \"23 Nov 2026\"\n"
        "  --month MONTH       begins at a BS month: 2083-08\n"
        "  --convert DATE      begins with the converter\n"
        "  --edition EDITION   the calendar as Nepal publishes it today, or as first made in 2015\n"
        "  --print FILE        writes the month as a PDF file and ends; --print-year the year\n"
        "\n"
        "Started again without options it closes the window that is open. F1 shows its keys.\n");
}

void say(const std::string& message) { std::cerr << "dinmala-window: " << message << std::endl; }

/// What is asked for is written, or the status tells that it is not.
int told(const std::string& text) {
    if (std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return EXIT_SUCCESS;
    say(tr("cannot write: {1}", {std::strerror(errno)}));
    return EXIT_FAILURE;
}

struct Options {
    std::string date, month, convert, edition, print, printYear;
    bool isService = false;
};

/// The error is a sentence.
std::optional<Options> readOptions(int argc, char** argv, std::string& error) {
    Options options;
    const std::pair<std::string_view, std::string Options::*> known[] = {
        {"--date", &Options::date},       {"--month", &Options::month}, {"--convert", &Options::convert},
        {"--edition", &Options::edition}, {"--print", &Options::print}, {"--print-year", &Options::printYear}};
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--gapplication-service") {
            options.isService = true;
            continue;
        }
        const std::string_view name = argument.substr(0, argument.find('='));
        const auto* const option =
            std::find_if(std::begin(known), std::end(known), [name](const auto& one) { return one.first == name; });
        if (option == std::end(known)) {
            error = tr("there is no option \"{1}\"; --help tells which there are", {withoutControls(argument)});
            return std::nullopt;
        }
        if (name.size() < argument.size()) {
            options.*(option->second) = argument.substr(name.size() + 1);
        } else if (++i < argc) {
            options.*(option->second) = argv[i];
        }
        if ((options.*(option->second)).empty()) {
            error = tr("the option {1} needs a value", {name});
            return std::nullopt;
        }
    }
    return options;
}

/// The edition as the window shows it, with the years that people have put into folders.
Edition shownEdition(std::optional<EditionId> asked, const KeyFilePreferences& preferences) {
    return EditionSource{}.get(chosenEdition(asked, preferences.textForKey(kEditionKey)));
}

/// What the options and the environment ask for. The error is a sentence.
std::optional<Asked> readAsked(const Options& options, std::string& error) {
    Asked asked;
    asked.convert = options.convert;
    if (const auto word = askedEditionWord(options.edition.empty() ? std::nullopt : std::optional{options.edition})) {
        asked.edition = editionNamed(*word);
        if (!asked.edition) {
            error = tr("there is no edition \"{1}\"; it is current or first", {withoutControls(*word)});
            return std::nullopt;
        }
    }
    std::string text = options.date;
    if (!options.month.empty()) text = options.month + "-01";
    if (text.empty()) return asked;
    const KeyFilePreferences preferences{KeyFilePreferences::defaultPath(), nullptr};
    const auto found = readDay(text, CalendarKind::bs, shownEdition(asked.edition, preferences).calendar);
    if (!found) {
        const std::string& wrong = options.month.empty() ? options.date : options.month;
        error = tr("\"{1}\" is no date of the calendar", {withoutControls(wrong)});
        return std::nullopt;
    }
    asked.day = found->day;
    return asked;
}

/// The application with its window, while there is one.
class Program {
public:
    /// @param isPlain whether no option asks for anything: then it closes the window that is open
    Program(Asked asked, bool isPlain) : asked_(std::move(asked)), isPlain_(isPlain), edition_(asked_.edition) {}
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    int run(bool isService) {
        application_ = gtk_application_new(kId, isService ? G_APPLICATION_IS_SERVICE : G_APPLICATION_DEFAULT_FLAGS);
        addAction("open", nullptr, [](GSimpleAction*, GVariant*, gpointer self) { as(self).open({}); });
        addAction("toggle", nullptr, [](GSimpleAction*, GVariant*, gpointer self) { as(self).toggle(); });
        addAction("show", "(xss)", [](GSimpleAction*, GVariant* wanted, gpointer self) { as(self).show(wanted); });
        // The first time it is this program's own start that asks.
        g_signal_connect_swapped(application_, "activate",
                                 G_CALLBACK(+[](Program* self) { self->open(std::exchange(self->asked_, {})); }), this);
        GError* error = nullptr;
        if (g_application_register(G_APPLICATION(application_), nullptr, &error) == FALSE) {
            // A bus that refuses the name: alone, then.
            g_error_free(error);
            g_application_set_flags(G_APPLICATION(application_), G_APPLICATION_NON_UNIQUE);
            g_application_register(G_APPLICATION(application_), nullptr, nullptr);
        }
        if (g_application_get_is_remote(G_APPLICATION(application_)) != FALSE) {
            askRunning();
            return EXIT_SUCCESS;  // what was registered ends with the process
        }
        g_application_run(G_APPLICATION(application_), 0, nullptr);
        window_.reset();
        g_object_unref(application_);
        return EXIT_SUCCESS;
    }

private:
    static Program& as(gpointer self) { return *static_cast<Program*>(self); }

    void addAction(const char* name, const char* type, void (*activated)(GSimpleAction*, GVariant*, gpointer)) {
        GSimpleAction* const action = g_simple_action_new(name, type != nullptr ? G_VARIANT_TYPE(type) : nullptr);
        g_signal_connect(action, "activate", G_CALLBACK(activated), this);
        g_action_map_add_action(G_ACTION_MAP(application_), G_ACTION(action));
        g_object_unref(action);
    }

    /// Hands what is asked to the program that runs already.
    void askRunning() {
        GActionGroup* const other = G_ACTION_GROUP(application_);
        if (isPlain_) {
            g_action_group_activate_action(other, "toggle", nullptr);
        } else {
            constexpr gint64 kNoDay = G_MININT64;
            const gint64 day = asked_.day ? gint64{asked_.day->time_since_epoch().count()} : kNoDay;
            const std::string edition{asked_.edition ? editionName(*asked_.edition) : std::string_view{}};
            g_action_group_activate_action(other, "show",
                                           g_variant_new("(xss)", day, asked_.convert.c_str(), edition.c_str()));
        }
        GDBusConnection* const bus = g_application_get_dbus_connection(G_APPLICATION(application_));
        if (bus != nullptr) g_dbus_connection_flush_sync(bus, nullptr, nullptr);
    }

    void show(GVariant* wanted) {
        gint64 day = 0;
        const char *convert = nullptr, *edition = nullptr;
        g_variant_get(wanted, "(x&s&s)", &day, &convert, &edition);
        Asked asked;
        if (day != G_MININT64) asked.day = std::chrono::sys_days{std::chrono::days{day}};
        asked.convert = convert;
        asked.edition = editionNamed(edition);
        open(asked);
    }

    void toggle() {
        if (window_) {
            window_->close();
        } else if (grace_ == 0) {
            open({});
        }
    }

    void open(const Asked& asked) {
        if (!window_) {
            Asked first = asked;
            if (!first.edition) first.edition = edition_;
            window_ =
                std::make_unique<MonthWindow>(application_, first, [this](MonthWindow::Closed how) { closed(how); });
        }
        window_->show(asked);
    }

    /// The application ends with its last window, or a little later.
    void closed(MonthWindow::Closed how) {
        if (how == MonthWindow::Closed::byFocus && grace_ == 0) {
            g_application_hold(G_APPLICATION(application_));
            grace_ = g_timeout_add(
                kSameClick,
                [](gpointer self) -> gboolean {
                    as(self).grace_ = 0;
                    g_application_release(G_APPLICATION(as(self).application_));
                    return G_SOURCE_REMOVE;
                },
                this);
        }
        window_.reset();
    }

    Asked asked_;
    bool isPlain_;
    std::optional<EditionId> edition_;  ///< asked for at the start; for windows that are opened over the bus too
    GtkApplication* application_ = nullptr;
    std::unique_ptr<MonthWindow> window_;
    guint grace_ = 0;
};

int print(const Options& options, const Asked& asked) {
    const KeyFilePreferences preferences{KeyFilePreferences::defaultPath(), say};
    Page page{shownEdition(asked.edition, preferences), nepalDay(std::chrono::floor<std::chrono::seconds>(systemNow())),
              keptLook(preferences.textForKey(kLanguageKey), preferences.textForKey(kDigitsKey))};
    if (asked.day) page.goTo(*asked.day);
    const std::pair<std::string, Sheet> sheets[] = {{options.print, Sheet::month}, {options.printYear, Sheet::year}};
    for (const auto& [file, sheet] : sheets) {
        if (file.empty()) continue;
        if (const std::string why = writeSheet(file, page, sheet); !why.empty()) {
            say(tr("cannot write {1}: {2}", {withoutControls(file), why}));
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}

int start(int argc, char** argv) {
    std::string error;
    const auto options = readOptions(argc, argv, error);
    const auto asked = options ? readAsked(*options, error) : std::nullopt;
    if (!asked) {
        say(error);
        return kUsageError;
    }
    if (!options->print.empty() || !options->printYear.empty()) return print(*options, *asked);
    // Drawing is too little for the graphics processor to be worth its start: 84 MB in place of 31.
    setenv("GDK_GL", "disable", 0);
    if (gtk_init_check(nullptr, nullptr) == FALSE) {
        say(tr("there is no display to show the window on (see the variables DISPLAY and WAYLAND_DISPLAY)"));
        return kUsageError;
    }
    const bool isPlain = !asked->day && asked->convert.empty() && options->edition.empty();
    return Program{*asked, isPlain}.run(options->isService);
}

}  // namespace
}  // namespace dinmala

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    dinmala::openTranslations();
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0) return dinmala::told(dinmala::help());
        if (std::strcmp(argv[i], "--version") == 0) return dinmala::told("dinmala-window " DINMALA_VERSION "\n");
    }
    return dinmala::start(argc, argv);
}
