// Builds the platform, hands it to the shell, runs the loop.
#include <fcntl.h>
#include <giomm.h>
#include <langinfo.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include "agenda/EditionChoice.h"
#include "agenda/EditionSource.h"
#include "agenda/PageLook.h"
#include "agenda/Sentences.h"
#include "agenda/Summary.h"
#include "agenda/Today.h"
#include "app/AppDelegate.h"
#include "app/FaceChoice.h"
#include "app/Interface.h"
#include "app/faces/panel/CalendarProgram.h"
#include "app/faces/panel/PanelFace.h"
#include "app/faces/terminal/LinesFace.h"
#include "app/faces/terminal/TerminalFace.h"
#include "desktop/AutostartLoginItems.h"
#include "desktop/ChildFetch.h"
#include "desktop/GlibRunLoop.h"
#include "desktop/ImageFile.h"
#include "desktop/InstalledBundle.h"
#include "desktop/KeyFilePreferences.h"
#include "desktop/Notifications.h"
#include "desktop/OpenUrl.h"
#include "desktop/PropertyListFile.h"
#include "desktop/SessionBus.h"
#include "desktop/StateFile.h"
#include "i18n/Translation.h"

namespace dinmala {
namespace {

constexpr int kUsageError = 2;
constexpr unsigned kPatience = 30;  // seconds; at login a panel may come after the program

std::string help() {
    return tr("Dinmala shows today's Bikram Sambat date, with Nepal's time, the tithi and the\n"
              "day's festivals, in the desktop's panel.\n"
              "\n"
              "usage: dinmala [--edition current|first | --help | --version]\n"
              "\n"
              "The calendar comes in two editions: \"current\", as Nepal publishes it today, and\n"
              "\"first\", as first made in 2015. DINMALA_EDITION chooses too, and so does the menu.\n"
              "\n"
              "DINMALA_FACE chooses what it shows:\n"
              "  panel     an item in the panel, with a menu\n"
              "  terminal  the same in this terminal, operated by keys\n"
              "  lines     the title as a line of text at every refresh, for bars and scripts\n"
              "Unset, it takes the panel where there is one, else the terminal.\n") +
           "\n" + tr("DINMALA_LINES=json or i3bar makes the lines objects for waybar, or for i3bar and swaybar.\n");
}

void say(const std::string& message) { std::cerr << "dinmala: " << message << std::endl; }

/// What is asked for is written, or the status tells that it is not.
int print(const std::string& text) {
    if (std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return EXIT_SUCCESS;
    say(tr("cannot write: {1}", {std::strerror(errno)}));
    return EXIT_FAILURE;
}

/// Character widths and file names need UTF-8, whatever the locale is.
void setLocale() {
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
}

std::string interfaceDefinition(const Bundle& bundle) {
    const auto path = bundle.pathForResource("MainMenu", "json");
    if (!path) throw InterfaceError(tr("the interface definition is missing; please reinstall"));
    std::ostringstream text;
    text << std::ifstream{*path}.rdbuf();
    return text.str();
}

/// Opens nothing on the standard descriptors that are closed, lest a socket takes
/// their place. False when standard output was closed.
bool openStandardDescriptors() {
    const bool hasOutput = fcntl(STDOUT_FILENO, F_GETFD) != -1;
    for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
        if (fcntl(fd, F_GETFD) == -1 && open("/dev/null", O_RDWR) == -1) break;
    }
    return hasOutput;
}

/// What the command line and the environment ask for.
struct Asked {
    std::optional<EditionId> edition;
    std::optional<std::string> wrongEdition;  ///< a word that names none; an empty one is a word too
};

Asked asked(int argc, char** argv) {
    std::optional<std::string> word;
    constexpr std::string_view kOption = "--edition";
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == kOption) word = i + 1 < argc ? argv[i + 1] : "?";
        if (argument.starts_with(kOption) && argument.substr(kOption.size()).starts_with('=')) {
            word = argument.substr(kOption.size() + 1);
        }
    }
    word = askedEditionWord(std::move(word));
    Asked result{word ? editionNamed(*word) : std::nullopt, {}};
    if (!result.edition) result.wrongEdition = word;
    return result;
}

int run(const FaceChoice& choice, LineForm lineForm, std::optional<EditionId> edition,
        const Glib::RefPtr<Gio::DBus::Connection>& bus, bool hasOutput) {
    GlibRunLoop loop;
    EditionSource editions;
    int status = EXIT_SUCCESS;
    const auto quit = [&loop] { loop.quit(); };

    const bool inPanel = choice.kind == FaceKind::panel;
    // Nobody reads a panel program's standard error: the desktop tells as well.
    const Tell tell = [&](const std::string& message) {
        say(message);
        if (inPanel) notifyUser(bus, message);
    };

    const Bundle bundle = makeBundle();
    Interface interface { interfaceDefinition(bundle) };

    const std::string calendarProgram = inPanel ? windowProgram(bundle.bundlePath) : std::string{};
    const AppDelegate* shell = nullptr;
    CalendarProgram calendar{bus, calendarProgram, [&] { return shell->askedEdition(); }, tell};
    std::function<void()> openCalendar;
    // The terminal's calendar opens when all is set up.
    KeyFilePreferences preferences{KeyFilePreferences::defaultPath(), tell};
    const auto shown = [&]() -> TerminalFace::Shown {
        const auto now = std::chrono::floor<std::chrono::seconds>(systemNow());
        return {shell->edition(), nepalDay(now),
                keptLook(preferences.textForKey(kLanguageKey), preferences.textForKey(kDigitsKey))};
    };
    const auto keep = [&](PageLook look) {
        preferences.setTextForKey(keptWord(look.language), kLanguageKey);
        preferences.setTextForKey(keptWord(look.digits), kDigitsKey);
        preferences.synchronize();
    };

    std::unique_ptr<Face> face;
    if (inPanel) {
        PanelResources resources;
        resources.clearIcon = bundle.pathForResource("transparent", "png").value_or("");
        resources.digits = [&bundle]() -> ImagePtr {
            const auto path = bundle.pathForResource("digits", "png");
            return path ? loadImage(*path) : nullptr;
        };
        auto panel = std::make_unique<PanelFace>(bus, std::move(resources), [&] {
            say(tr("the session bus has gone"));
            status = EXIT_FAILURE;
            loop.quit();
        });
        panel->ifUnseen(kPatience, [&] {
            tell(
                tr("no panel takes status items yet, so Dinmala waits unseen; in GNOME the extension AppIndicator "
                   "takes them"));
        });
        if (!calendarProgram.empty()) {
            panel->whenClicked([&calendar] { calendar.click(); });
            openCalendar = [&calendar, item = panel.get()] { calendar.open(item->takeToken()); };
        }
        panel->ifMenuFails(
            [&] { tell(tr("Dinmala's menu cannot be reached over the session bus, so the item has none")); });
        face = std::move(panel);
    } else if (choice.kind == FaceKind::terminal) {
        auto terminal = std::make_unique<TerminalFace>(quit, TerminalFace::Calendar{shown, keep});
        openCalendar = [terminal = terminal.get()] { terminal->openPage(); };
        face = std::move(terminal);
    } else {
        face = std::make_unique<LinesFace>(quit, hasOutput ? STDOUT_FILENO : -1, lineForm, [&] {
            const auto now = std::chrono::floor<std::chrono::seconds>(systemNow());
            return daySummary(shell->edition(), nepalDay(now), Language::nepali, Digits::devanagari);
        });
    }
    face->setOutlets(interface.outlets());

    AutostartLoginItems loginItems{AutostartLoginItems::defaultFolder(),
                                   bundle.pathForResource("logo", "png").value_or("dinmala"), tell};
    Platform platform;
    platform.bundle = bundle;
    platform.preferences = &preferences;
    platform.loginItems = &loginItems;
    platform.runLoop = &loop;
    platform.edition = [&](EditionId id) -> const Edition& {
        const Edition& found = editions.get(id);
        for (const std::string& problem : editions.takeProblems()) {
            tell(tr("a year's file is not taken, the built-in year stays: {1}", {problem}));
        }
        return found;
    };
    platform.askedEdition = edition;
    platform.tell = tell;
    std::unique_ptr<DesktopNotifier> notifier;
    if (bus) notifier = std::make_unique<DesktopNotifier>(bus);
    platform.notifier = notifier.get();
    platform.changeState = [state = StateFile(StateFile::defaultPath())](const ChangeText& change) {
        const int error = state.change(change);
        return error == 0 ? std::string{} : state.path() + ": " + errorText(error);
    };
    if (const std::string window = windowProgram(bundle.bundlePath); !window.empty()) {
        platform.showDay = [&, window](std::chrono::sys_days day, const std::string& token) {
            startProgram({window, "--date", dayArgument(day)}, token, tell);
        };
    }
    platform.statusItemWithLength = [&](double length) { return face->statusItemWithLength(length); };
    platform.whenShown = [&](std::function<void()> callback) { face->whenShown(std::move(callback)); };
    platform.loadImage = loadImage;
    platform.readPropertyList = readPropertyList;
    platform.httpGet = [fetch = fetchHelper(bundle.bundlePath)](const std::string& url) {
        return httpGetByChild(fetch, url);
    };
    platform.openCalendar = openCalendar;
    platform.openUrl = [&](const std::string& url) { openUrl(url, tell); };

    AppDelegate delegate{std::move(platform), interface.outlets()};
    shell = &delegate;
    interface.connect(delegate, quit);
    delegate.launch();
    loop.run();
    return status;
}

/// Null when there is none.
Glib::RefPtr<Gio::DBus::Connection> sessionBus() {
    try {
        auto bus = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
        bus->set_exit_on_close(false);  // the panel face says so first; the others live on
        return bus;
    } catch (const Glib::Error&) {
        return {};
    }
}

int start(const Asked& wanted) {
    const bool hasOutput = openStandardDescriptors();
    Gio::init();
    const Glib::RefPtr<Gio::DBus::Connection> bus = sessionBus();
    Surroundings around;
    if (const char* asked = std::getenv("DINMALA_FACE")) around.asked = asked;
    around.hasSessionBus = static_cast<bool>(bus);
    around.hasWatcher = bus && watcherPresent(bus);
    around.onTerminal = isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;

    if (wanted.wrongEdition) {
        say(tr("there is no edition \"{1}\"; it is current or first", {withoutControls(*wanted.wrongEdition)}));
        return kUsageError;
    }
    const auto choice = chooseFace(around);
    if (!choice) {
        say(tr("there is no face \"{1}\"; DINMALA_FACE is panel, terminal or lines", {withoutControls(*around.asked)}));
        return kUsageError;
    }
    const char* const asked = std::getenv("DINMALA_LINES");
    const std::string lines = asked != nullptr ? asked : "";
    const auto lineForm = lineFormNamed(lines);
    if (choice->kind == FaceKind::lines && !lineForm) {
        say(tr("there are no lines \"{1}\"; DINMALA_LINES is json or i3bar", {withoutControls(lines)}));
        return kUsageError;
    }
    if (!choice->why.empty()) say(choice->why);
    if (choice->kind == FaceKind::panel) {
        if (!bus) {
            say(tr("there is no session bus, and the panel is reached through it"));
            return EXIT_FAILURE;
        }
        const Claim claim = claimInstance(bus);
        if (claim.result == Claim::Result::another) {
            say(tr("is running already"));
            return EXIT_SUCCESS;
        }
        if (bus->is_closed()) {
            say(tr("the session bus has gone"));
            return EXIT_FAILURE;
        }
        if (claim.result == Claim::Result::refused) {
            say(tr("the session bus refuses the name {1}, so a second Dinmala can start beside this one: {2}",
                   {kInstanceName, claim.why}));
        }
    }
    return run(*choice, lineForm.value_or(LineForm::plain), wanted.edition, bus, hasOutput);
}

}  // namespace
}  // namespace dinmala

int main(int argc, char** argv) {
    dinmala::setLocale();
    dinmala::openTranslations();
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0) return dinmala::print(dinmala::help());
        if (std::strcmp(argv[i], "--version") == 0) return dinmala::print("dinmala " DINMALA_VERSION "\n");
    }
    try {
        return dinmala::start(dinmala::asked(argc, argv));
    } catch (const dinmala::InterfaceError& error) {
        dinmala::say(std::string{"MainMenu.json: "} + error.what());
    } catch (const std::exception& error) {
        dinmala::say(error.what());
    }
    return EXIT_FAILURE;
}
