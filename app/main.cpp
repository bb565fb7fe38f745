// Builds the platform, hands it to the shell, runs the loop.
#include <fcntl.h>
#include <giomm.h>
#include <langinfo.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include "app/AppDelegate.h"
#include "app/FaceChoice.h"
#include "app/Interface.h"
#include "app/platform/linux/AutostartLoginItems.h"
#include "app/platform/linux/ChildFetch.h"
#include "app/platform/linux/GlibRunLoop.h"
#include "app/platform/linux/ImageFile.h"
#include "app/platform/linux/InstalledBundle.h"
#include "app/platform/linux/KeyFilePreferences.h"
#include "app/platform/linux/OpenUrl.h"
#include "app/platform/linux/PanelFace.h"
#include "app/platform/linux/PropertyListFile.h"
#include "app/platform/linux/SessionBus.h"
#include "app/platform/terminal/LinesFace.h"
#include "app/platform/terminal/TerminalFace.h"
#include "i18n/Translation.h"

namespace dinmala {
namespace {

constexpr int kUsageError = 2;
constexpr unsigned kPatience = 30;  // seconds; at login a panel may come after the program

std::string help() {
    return tr(
        "Dinmala shows today's Bikram Sambat date, with Nepal's time, the tithi and the\n"
        "day's festivals, in the desktop's panel.\n"
        "\n"
        "usage: dinmala [--help | --version]\n"
        "\n"
        "DINMALA_FACE chooses what it shows:\n"
        "  panel     an item in the panel, with a menu\n"
        "  terminal  the same in this terminal, operated by keys\n"
        "  lines     the title as a line of text at every refresh, for bars and scripts\n"
        "Unset, it takes the panel where there is one, else the terminal.\n");
}

void say(const std::string& message) { std::cerr << "dinmala: " << message << std::endl; }

/// Character widths and file names need UTF-8, whatever the locale is.
void setLocale() {
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
}

/// "ne" when the user prefers Nepali to English, else "en".
std::string language() {
    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name) {
        const std::string_view language{*name};
        if (language.starts_with("ne")) return "ne";
        if (language.starts_with("en") || language == "C") break;
    }
    return "en";
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

int run(const FaceChoice& choice, const Glib::RefPtr<Gio::DBus::Connection>& bus, bool hasOutput) {
    GlibRunLoop loop;
    int status = EXIT_SUCCESS;
    const auto quit = [&loop] { loop.quit(); };

    const bool inPanel = choice.kind == FaceKind::panel;
    // Nobody reads a panel program's standard error: the desktop tells as well.
    const Tell tell = [&](const std::string& message) {
        say(message);
        if (inPanel) notifyUser(bus, message);
    };

    const Bundle bundle = makeBundle();
    Interface interface { interfaceDefinition(bundle), language() };

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
        face = std::move(panel);
    } else if (choice.kind == FaceKind::terminal) {
        face = std::make_unique<TerminalFace>(quit, language());
    } else {
        face = std::make_unique<LinesFace>(quit, hasOutput ? STDOUT_FILENO : -1);
    }
    face->setOutlets(interface.outlets());

    KeyFilePreferences preferences{KeyFilePreferences::defaultPath(), tell};
    AutostartLoginItems loginItems{AutostartLoginItems::defaultFolder(),
                                   bundle.pathForResource("logo", "png").value_or("dinmala"), tell};
    Platform platform;
    platform.bundle = bundle;
    platform.preferences = &preferences;
    platform.loginItems = &loginItems;
    platform.runLoop = &loop;
    platform.statusItemWithLength = [&](double length) { return face->statusItemWithLength(length); };
    platform.loadImage = loadImage;
    platform.readPropertyList = readPropertyList;
    platform.httpGet = [fetch = fetchHelper(bundle.bundlePath)](const std::string& url) {
        return httpGetByChild(fetch, url);
    };
    platform.openUrl = [&](const std::string& url) { openUrl(url, tell); };

    AppDelegate delegate{std::move(platform), interface.outlets()};
    interface.connect(delegate, quit);
    delegate.awakeFromNib();
    face->whenShown([&] { delegate.applicationDidFinishLaunching(nullptr); });
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

int start() {
    const bool hasOutput = openStandardDescriptors();
    Gio::init();
    const Glib::RefPtr<Gio::DBus::Connection> bus = sessionBus();
    Surroundings around;
    if (const char* asked = std::getenv("DINMALA_FACE")) around.asked = asked;
    around.hasSessionBus = static_cast<bool>(bus);
    around.hasWatcher = bus && watcherPresent(bus);
    around.onTerminal = isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;

    const auto choice = chooseFace(around);
    if (!choice) {
        say(tr("there is no face \"{1}\"; DINMALA_FACE is panel, terminal or lines", {*around.asked}));
        return kUsageError;
    }
    if (!choice->why.empty()) say(choice->why);
    if (choice->kind == FaceKind::panel) {
        if (!bus) {
            say(tr("there is no session bus, and the panel is reached through it"));
            return EXIT_FAILURE;
        }
        if (!claimInstance(bus)) {
            say(tr("is running already"));
            return EXIT_SUCCESS;
        }
    }
    return run(*choice, bus, hasOutput);
}

}  // namespace
}  // namespace dinmala

int main(int argc, char** argv) {
    dinmala::setLocale();
    dinmala::openTranslations();
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0) {
            std::fputs(dinmala::help().c_str(), stdout);
            return EXIT_SUCCESS;
        }
        if (std::strcmp(argv[i], "--version") == 0) {
            std::puts("dinmala " DINMALA_VERSION);
            return EXIT_SUCCESS;
        }
    }
    try {
        return dinmala::start();
    } catch (const dinmala::InterfaceError& error) {
        dinmala::say(std::string{"MainMenu.json: "} + error.what());
    } catch (const std::exception& error) {
        dinmala::say(error.what());
    }
    return EXIT_FAILURE;
}
