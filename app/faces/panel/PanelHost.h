/// Which panel, if any, takes status items on this session bus.
#pragma once

#include <giomm.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace dinmala {

/// Follows the panels that come and go.
class PanelHost {
public:
    enum class Kind {
        none,   ///< no panel takes items now
        label,  ///< shows an item's label beside its icon
        tile    ///< shows icons only
    };

    /// @param changed called from the main loop after each change, first when it
    ///                is known whether there is a panel
    /// The environment's DINMALA_HOST, "label" or "tile", settles the kind.
    PanelHost(Glib::RefPtr<Gio::DBus::Connection> connection, std::function<void()> changed);
    ~PanelHost();
    PanelHost(const PanelHost&) = delete;
    PanelHost& operator=(const PanelHost&) = delete;

    [[nodiscard]] Kind kind() const { return kind_; }
    /// Whether it does good to answer a left click.
    [[nodiscard]] bool takesClicks() const { return takesClicks_; }
    /// The unique bus name of the watcher that takes items; another after a restart.
    [[nodiscard]] const std::string& owner() const { return owner_; }

private:
    void follow(const std::string& name);
    void ownerIs(const std::string& name, const std::string& owner);
    void judge();

    Glib::RefPtr<Gio::DBus::Connection> connection_;
    std::function<void()> changed_;
    std::string override_;
    std::vector<guint> watches_;
    std::map<std::string, std::string> owners_;
    Kind kind_ = Kind::none;
    bool takesClicks_ = false;
    std::string owner_;
};

}  // namespace dinmala
