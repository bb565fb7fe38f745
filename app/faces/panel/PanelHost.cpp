#include "app/faces/panel/PanelHost.h"

#include <array>
#include <utility>

#include "desktop/SessionBus.h"

namespace dinmala {

namespace {

/// A panel that owns a name in the watcher's process. Others show icons only and take clicks.
struct Known {
    const char* name;
    bool showsLabels;
    bool takesClicks;
};

constexpr std::array<Known, 6> kKnown = {{
    // After the first click that is answered, every click waits for a second one before the menu opens.
    {"org.gnome.Shell", true, false},
    {"org.ayatana.indicator.application", true, false},  // tells of no click
    {"org.mate.panel.applet.NotificationAreaAppletFactory", true, true},
    // Where a click is answered, a left click opens no menu.
    {"org.kde.kded5", false, false},
    {"org.kde.kded6", false, false},
    {"org.kde.plasmashell", false, false},
}};

}  // namespace

PanelHost::PanelHost(Glib::RefPtr<Gio::DBus::Connection> connection, std::function<void()> changed)
    : connection_(std::move(connection)), changed_(std::move(changed)), override_(Glib::getenv("DINMALA_HOST")) {
    if (override_ != "label" && override_ != "tile") override_.clear();
    for (const Known& known : kKnown) follow(known.name);
    follow(kWatcherName);
}

PanelHost::~PanelHost() {
    for (const guint watch : watches_) Gio::DBus::unwatch_name(watch);
}

void PanelHost::follow(const std::string& name) {
    watches_.push_back(Gio::DBus::watch_name(
        connection_, name,
        [this, name](const auto&, const Glib::ustring&, const Glib::ustring& owner) { ownerIs(name, owner); },
        [this, name](const auto&, const Glib::ustring&) { ownerIs(name, {}); }));
}

void PanelHost::ownerIs(const std::string& name, const std::string& owner) {
    owners_[name] = owner;
    // Judging before all names are known would take a label host for another at first.
    if (owners_.size() < watches_.size()) return;
    // A panel that ends loses its names one by one; it does not become one of tiles in between.
    if (kind_ == Kind::label && owner_ == owners_[kWatcherName]) return;
    owner_ = owners_[kWatcherName];
    judge();
    changed_();
}

void PanelHost::judge() {
    kind_ = owner_.empty() ? Kind::none : override_ == "label" ? Kind::label : Kind::tile;
    takesClicks_ = kind_ != Kind::none;
    const std::uint32_t watcher = kind_ == Kind::none ? 0 : processIdOf(connection_, owner_);
    if (watcher == 0) return;
    for (const Known& known : kKnown) {
        const std::string& owner = owners_.at(known.name);
        if (owner.empty() || processIdOf(connection_, owner) != watcher) continue;
        if (known.showsLabels && override_.empty()) kind_ = Kind::label;
        takesClicks_ = takesClicks_ && known.takesClicks;
    }
}

}  // namespace dinmala
