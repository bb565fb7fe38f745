// The search as a program: started by the bus when a desktop asks, gone when none has asked for a while.
#include <giomm.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <string>

#include "agenda/EditionChoice.h"
#include "agenda/EditionSource.h"
#include "agenda/PageLook.h"
#include "agenda/Sentences.h"
#include "agenda/Today.h"
#include "base/Clock.h"
#include "desktop/InstalledBundle.h"
#include "desktop/KeyFilePreferences.h"
#include "desktop/OpenUrl.h"
#include "desktop/SessionBus.h"
#include "i18n/Translation.h"
#include "search/bus/SearchService.h"

namespace dinmala {
namespace {

/// Seconds without a call before it ends; a person who types on finds it warm.
constexpr unsigned kIdle = 30;

void say(const std::string& message) { std::cerr << "dinmala-search: " << message << std::endl; }

int run() {
    Glib::RefPtr<Gio::DBus::Connection> bus;
    try {
        bus = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
    } catch (const Glib::Error&) {
        say(tr("there is no session bus, and searches come through it"));
        return EXIT_FAILURE;
    }
    bus->set_exit_on_close(false);

    const auto loop = Glib::MainLoop::create();
    int status = EXIT_SUCCESS;
    bus->signal_closed().connect([&](bool, const Glib::Error&) {
        say(tr("the session bus has gone"));
        status = EXIT_FAILURE;
        loop->quit();
    });

    KeyFilePreferences preferences{KeyFilePreferences::defaultPath(), nullptr};
    EditionSource editions;
    const std::string word = askedEditionWord().value_or("");
    const auto asked = editionNamed(word);
    if (!asked && !word.empty()) say(tr("there is no edition \"{1}\"; it is current or first", {word}));

    SearchService::Doors doors;
    doors.surroundings = [&]() -> SearchSurroundings {
        preferences.reload();
        const Edition& edition = editions.get(chosenEdition(asked, preferences.textForKey(kEditionKey)));
        (void)editions.takeProblems();  // the panel program tells of them
        const PageLook look = keptLook(preferences.textForKey(kLanguageKey), preferences.textForKey(kDigitsKey));
        return {edition, nepalDay(std::chrono::floor<std::chrono::seconds>(systemNow())), look.language, look.digits};
    };
    if (const std::string window = windowProgram(makeBundle().bundlePath); !window.empty()) {
        doors.open = [window](std::chrono::sys_days day, const std::string& token) {
            startProgram({window, "--date", dayArgument(day)}, token, say);
        };
    }
    sigc::connection idle;
    doors.called = [&] {
        idle.disconnect();
        idle = Glib::signal_timeout().connect_seconds(
            [&] {
                loop->quit();
                return false;
            },
            kIdle);
    };
    doors.called();
    const SearchService service{bus, doors};

    const Claim claim = claimInstance(bus, SearchService::kName);
    if (claim.result == Claim::Result::another) {
        say(tr("is running already"));
        return EXIT_SUCCESS;
    }
    if (claim.result == Claim::Result::refused && !bus->is_closed()) {
        say(tr("the session bus refuses the name {1}: {2}", {SearchService::kName, claim.why}));
        return EXIT_FAILURE;
    }
    if (!bus->is_closed()) loop->run();
    if (status == EXIT_SUCCESS) {
        // Who asked while it was ending still gets an answer; who asks once the name is given up starts it anew.
        releaseName(bus, SearchService::kName);
        while (Glib::MainContext::get_default()->iteration(false)) {
        }
        g_dbus_connection_flush_sync(bus->gobj(), nullptr, nullptr);
    }
    return status;
}

}  // namespace
}  // namespace dinmala

int main() {
    std::setlocale(LC_ALL, "");
    dinmala::openTranslations();
    Gio::init();
    return dinmala::run();
}
