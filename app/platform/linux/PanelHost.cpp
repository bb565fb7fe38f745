#include "app/platform/linux/PanelHost.h"

#include <array>
#include <utility>

#include "app/platform/linux/SessionBus.h"

namespace dinmala {

namespace {

/// Panels that show labels own one of these names in the watcher's process.
constexpr std::array<const char*, 3> kLabelHosts = {
    "org.gnome.Shell",
    "org.ayatana.indicator.application",
    "org.mate.panel.applet.NotificationAreaAppletFactory",
};

}  // namespace

PanelHost::PanelHost(Glib::RefPtr<Gio::DBus::Connection> connection, std::function<void()> changed)
    : connection_(std::move(connection)), changed_(std::move(changed)), override_(Glib::getenv("DINMALA_HOST")) {
    if (override_ != "label" && override_ != "tile") {
        override_.clear();
        for (const char* name : kLabelHosts) follow(name);
    }
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
    kind_ = owner_.empty() ? Kind::none : showsLabels() ? Kind::label : Kind::tile;
    changed_();
}

bool PanelHost::showsLabels() const {
    if (!override_.empty()) return override_ == "label";
    const std::uint32_t watcher = processIdOf(connection_, owner_);
    if (watcher == 0) return false;
    for (const char* name : kLabelHosts) {
        const std::string& owner = owners_.at(name);
        if (!owner.empty() && processIdOf(connection_, owner) == watcher) return true;
    }
    return false;
}

}  // namespace dinmala
