/// The few things the program asks of the session bus itself.
#pragma once

#include <giomm.h>

#include <cstdint>
#include <string>

namespace dinmala {

/// Where panels take status items.
inline constexpr const char* kWatcherName = "org.kde.StatusNotifierWatcher";

inline constexpr const char* kInstanceName = "org.dinmala.Dinmala";

/// Takes a name on the bus; false when another program has it, the bus refuses it or
/// does not answer within two seconds.
[[nodiscard]] bool requestName(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& name);

/// What came of asking for a name that one program has at a time.
struct Claim {
    enum class Result { ours, another, refused } result;
    std::string why;  ///< why it was refused, in the bus's words
};

/// Takes a name that one program has at a time: kInstanceName is a running Dinmala's.
/// Waits for the bus's answer however long it takes: at login it may take seconds.
[[nodiscard]] Claim claimInstance(const Glib::RefPtr<Gio::DBus::Connection>& connection,
                                  const std::string& name = kInstanceName);

/// Gives a name back.
void releaseName(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& name);

/// Whether a panel takes status items now.
[[nodiscard]] bool watcherPresent(const Glib::RefPtr<Gio::DBus::Connection>& connection);

/// The process behind a bus name; 0 when it has gone.
[[nodiscard]] std::uint32_t processIdOf(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& name);

}  // namespace dinmala
