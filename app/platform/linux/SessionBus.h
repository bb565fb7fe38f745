/// The few things the program asks of the session bus itself.
#pragma once

#include <giomm.h>

#include <cstdint>
#include <string>

namespace dinmala {

/// Where panels take status items.
inline constexpr const char* kWatcherName = "org.kde.StatusNotifierWatcher";

/// Takes a name on the bus; false when another program has it, or no bus answers.
[[nodiscard]] bool requestName(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& name);

/// Takes the name that one running Dinmala has at a time; false when one runs.
[[nodiscard]] bool claimInstance(const Glib::RefPtr<Gio::DBus::Connection>& connection);

/// Whether a panel takes status items now.
[[nodiscard]] bool watcherPresent(const Glib::RefPtr<Gio::DBus::Connection>& connection);

/// The process behind a bus name; 0 when it has gone.
[[nodiscard]] std::uint32_t processIdOf(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& name);

/// Shows a notification where the desktop has such a service. Returns at once.
void notifyUser(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& text);

}  // namespace dinmala
