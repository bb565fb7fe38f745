/// Notices through the session bus: org.freedesktop.Notifications.
#pragma once

#include <giomm.h>

#include <memory>
#include <string>

#include "desktop/Notifier.h"

namespace dinmala {

/// Shows a notification where the desktop has such a service. Returns at once.
void notifyUser(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& text);

/// Buttons are left out where the service has none, and signals are listened to only while a notice is on show.
class DesktopNotifier : public Notifier {
public:
    explicit DesktopNotifier(const Glib::RefPtr<Gio::DBus::Connection>& connection);
    ~DesktopNotifier() override;
    DesktopNotifier(const DesktopNotifier&) = delete;
    DesktopNotifier& operator=(const DesktopNotifier&) = delete;

    [[nodiscard]] bool ready() const override;
    void show(const Notice& notice, std::function<void(bool)> taken,
              std::function<void(const std::string& key, const std::string& token)> chosen) override;

private:
    struct State;
    std::shared_ptr<State> state_;  ///< answers that come after the end find it gone
};

}  // namespace dinmala
