/// A panel that takes status items on a bus of a test's own.
#pragma once

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/Loop.h"
#include "tests/support/TestBus.h"

namespace dinmala {

/// A watcher and host in one, as most panels are.
class FakePanel {
public:
    /// @param alsoOwns a further name of the panel's process, or empty
    explicit FakePanel(const TestBus& bus, const std::string& alsoOwns = {})
        : connection_(bus.another()), handlers_([this](auto&&... call) { take(call...); }) {
        const auto node = Gio::DBus::NodeInfo::create_for_xml(
            R"(<node><interface name="org.kde.StatusNotifierWatcher"><method name="RegisterStatusNotifierItem">
               <arg type="s" direction="in"/></method></interface></node>)");
        connection_->register_object("/StatusNotifierWatcher", node->lookup_interface(), handlers_);
        for (const auto& [interface, heard] :
             {std::pair{"org.kde.StatusNotifierItem", &signals}, {"com.canonical.dbusmenu", &menuSignals}}) {
            connection_->signal_subscribe(
                [heard = heard](const auto&, const auto&, const auto&, const auto&, const Glib::ustring& signal,
                                const Glib::VariantContainerBase& arguments) {
                    heard->push_back(signal + (arguments.get_n_children() > 0 ? arguments.print() : ""));
                },
                {}, interface);
        }
        // Labels may be decided by the process and not by the connection: the second name is on another one.
        if (!alsoOwns.empty()) {
            second_ = bus.another();
            TestBus::own(second_, alsoOwns);
        }
        TestBus::own(connection_, kWatcher);
    }
    ~FakePanel() {
        for (const auto& connection : {connection_, second_}) {
            if (connection && !connection->is_closed()) connection->close_sync();
        }
    }
    FakePanel(const FakePanel&) = delete;
    FakePanel& operator=(const FakePanel&) = delete;

    bool waitForItem() {
        return runUntil([this] { return !items.empty(); });
    }
    /// A property of the registered item, as text with its type.
    std::string read(const std::string& property, const std::function<void(GVariant*)>& use = nullptr) {
        const std::string arguments = "('org.kde.StatusNotifierItem', '" + property + "')";
        std::string text = call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get", arguments, use);
        if (text.starts_with("(<") && text.ends_with(">,)")) text = text.substr(2, text.size() - 5);
        return text;
    }
    /// Calls a method of the registered item while the loop runs, as both ends are in this process.
    /// @return the reply as text ("(true, 'a')"), or "error: " and the error's name
    std::string call(const std::string& path, const std::string& interface, const std::string& method,
                     const std::string& arguments, const std::function<void(GVariant*)>& use = nullptr) {
        std::string text;
        const Glib::VariantContainerBase parameters(
            g_variant_parse(nullptr, arguments.c_str(), nullptr, nullptr, nullptr));
        const auto finish = [&](Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                Glib::VariantContainerBase reply = connection_->call_finish(result);
                text = reply.print(true);
                if (use) use(reply.gobj());
            } catch (const Glib::Error& error) {
                char* const remote = g_dbus_error_get_remote_error(error.gobj());  // giomm's own way leaks it
                text = std::string("error: ") + (remote != nullptr ? remote : error.what());
                g_free(remote);
            }
        };
        connection_->call(path, interface, method, parameters, finish, items.back(), 20000);
        runUntil([&] { return !text.empty(); }, 25000);
        return text;
    }

    using Call = Glib::RefPtr<Gio::DBus::MethodInvocation>;
    static void refuse(const Call& call) { call->return_dbus_error("org.example.NotYet", "not yet"); }
    /// Gives the watcher's name away and lives on.
    void giveUpName() { TestBus::giveUp(connection_, kWatcher); }

    std::vector<std::string> items;    ///< the connections of those that have registered
    std::vector<std::string> signals;  ///< what items sent
    std::vector<std::string> menuSignals;
    bool refuses = false;
    bool isBusy = false;     ///< answers no registration
    std::vector<Call> held;  ///< what it has not answered then

    [[nodiscard]] const Glib::RefPtr<Gio::DBus::Connection>& connection() const { return connection_; }

private:
    static constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";

    void take(const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring& sender, const Glib::ustring&,
              const Glib::ustring&, const Glib::ustring&, const Glib::VariantContainerBase& arguments,
              const Call& invocation) {
        if (isBusy) return held.push_back(invocation);
        if (refuses) return refuse(invocation);
        Glib::Variant<Glib::ustring> path;
        arguments.get_child(path, 0);
        if (path.get() == "/StatusNotifierItem") items.push_back(sender.raw());
        invocation->return_value({});
    }

    Glib::RefPtr<Gio::DBus::Connection> connection_;
    Glib::RefPtr<Gio::DBus::Connection> second_;
    Gio::DBus::InterfaceVTable handlers_;
};

}  // namespace dinmala
