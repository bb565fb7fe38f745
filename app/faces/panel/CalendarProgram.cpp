#include "app/faces/panel/CalendarProgram.h"

#include <map>
#include <utility>
#include <vector>

#include "agenda/EditionChoice.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

constexpr const char* kName = "org.dinmala.Dinmala.Window";
constexpr const char* kPath = "/org/dinmala/Dinmala/Window";

constexpr std::int64_t kDoubleClick = 400'000;  // microseconds, as desktops count it
constexpr int kPatience = 2000;                 // milliseconds

}  // namespace

CalendarProgram::CalendarProgram(Glib::RefPtr<Gio::DBus::Connection> connection, std::string program,
                                 AskedEdition edition, Tell tell)
    : connection_(std::move(connection)),
      program_(std::move(program)),
      edition_(std::move(edition)),
      tell_(std::move(tell)),
      cancellable_(Gio::Cancellable::create()) {}

CalendarProgram::~CalendarProgram() {
    cancellable_->cancel();
    child_.disconnect();
}

void CalendarProgram::click() {
    const std::int64_t now = g_get_monotonic_time();
    if (lastClick_ != 0 && now - lastClick_ < kDoubleClick) return;
    lastClick_ = now;
    ask("toggle", {});
}

void CalendarProgram::open(const std::string& token) { ask("open", token); }

void CalendarProgram::ask(const char* action, const std::string& token) {
    using Glib::Variant;
    std::map<Glib::ustring, Glib::VariantBase> platform;
    if (!token.empty()) {
        for (const char* key : {"activation-token", "desktop-startup-id"}) {
            platform[key] = Variant<Glib::ustring>::create(token);
        }
    }
    const auto parameters = Glib::VariantContainerBase::create_tuple(
        {Variant<Glib::ustring>::create(action), Variant<std::vector<Glib::VariantBase>>::create({}),
         Variant<std::map<Glib::ustring, Glib::VariantBase>>::create(platform)});
    connection_->call(
        kPath, "org.freedesktop.Application", "ActivateAction", parameters,
        [this, connection = connection_, token, cancellable = cancellable_](const auto& result) {
            bool isThere = true;
            try {
                connection->call_finish(result);
            } catch (const Gio::DBus::Error& error) {
                isThere = error.code() != Gio::DBus::Error::SERVICE_UNKNOWN &&
                          error.code() != Gio::DBus::Error::NAME_HAS_NO_OWNER;
            } catch (const Glib::Error&) {
                // It is there and busy, or the bus has gone.
            }
            if (!isThere && !cancellable->is_cancelled()) start(token);
        },
        cancellable_, kName, kPatience, Gio::DBus::CallFlags::NO_AUTO_START);
}

void CalendarProgram::start(const std::string& token) {
    if (child_.connected()) return;  // it runs, and its name is not on the bus yet
    std::vector<std::string> environment = Glib::listenv();
    std::erase(environment, kEditionVariable);
    for (std::string& name : environment) name += "=" + Glib::getenv(name);
    if (const auto edition = edition_()) {
        environment.push_back(std::string{kEditionVariable} + "=" + std::string{editionName(*edition)});
    }
    if (!token.empty()) {
        environment.push_back("XDG_ACTIVATION_TOKEN=" + token);
        environment.push_back("DESKTOP_STARTUP_ID=" + token);
    }
    try {
        Glib::Pid process{};
        Glib::spawn_async({}, std::vector<std::string>{program_}, environment, Glib::SpawnFlags::DO_NOT_REAP_CHILD, {},
                          &process);
        child_ = Glib::signal_child_watch().connect(
            [this](Glib::Pid, int status) {
                child_.disconnect();
                if (status != 0) tell_(tr("the calendar's window cannot be opened; dinmala-window tells why"));
            },
            process);
    } catch (const Glib::Error& error) {
        tell_(tr("the calendar's window cannot be started: {1}", {error.what()}));
    }
}

}  // namespace dinmala
