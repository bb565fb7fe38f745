/// A session bus of a test's own, and a panel that takes status items on it.
#pragma once

#include <giomm.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace dinmala {

/// Handles events until something has happened; false when it did not in time.
inline bool runUntil(const std::function<bool()>& happened, int milliseconds = 5000) {
    const gint64 end = g_get_monotonic_time() + gint64{milliseconds} * 1000;
    while (!happened()) {
        if (g_get_monotonic_time() >= end) return false;
        if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(500);
    }
    return true;
}

/// Handles events for a while: for what must not happen.
inline void runFor(int milliseconds) {
    static_cast<void>(runUntil([] { return false; }, milliseconds));
}

class TestBus {
public:
    TestBus() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
        Gio::init();
        g_test_dbus_up(bus_);
    }
    ~TestBus() {
        stop();
        g_object_unref(bus_);
    }
    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

    /// The connection that a program shares with its libraries.
    [[nodiscard]] static Glib::RefPtr<Gio::DBus::Connection> shared() {
        auto connection = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
        connection->set_exit_on_close(false);
        return connection;
    }
    /// A connection as another program has it.
    [[nodiscard]] Glib::RefPtr<Gio::DBus::Connection> another() const {
        return Gio::DBus::Connection::create_for_address_sync(
            g_test_dbus_get_bus_address(bus_),
            Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT | Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION);
    }
    void stop() {
        if (g_test_dbus_get_bus_address(bus_) != nullptr) g_test_dbus_stop(bus_);
    }

private:
    GTestDBus* bus_;
};

/// Calls a method while the loop runs, as both ends are in this process.
/// @return the reply as text ("(true, 'a')"), or "error: " and the error's name
inline std::string callMethod(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& name,
                              const std::string& path, const std::string& interface, const std::string& method,
                              const char* arguments, const std::function<void(GVariant*)>& read = nullptr) {
    struct Answer {
        bool here = false;
        std::string text;
        const std::function<void(GVariant*)>& read;
    } answer{false, {}, read};
    GVariant* const parameters = g_variant_parse(nullptr, arguments, nullptr, nullptr, nullptr);
    g_dbus_connection_call(
        connection->gobj(), name.c_str(), path.c_str(), interface.c_str(), method.c_str(), parameters, nullptr,
        G_DBUS_CALL_FLAGS_NONE, 20000, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            auto& out = *static_cast<Answer*>(data);
            GError* error = nullptr;
            out.here = true;
            if (GVariant* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error)) {
                char* text = g_variant_print(reply, TRUE);
                out.text = text;
                if (out.read) out.read(reply);
                g_free(text);
                g_variant_unref(reply);
            } else {
                char* remote = g_dbus_error_get_remote_error(error);
                out.text = std::string("error: ") + (remote != nullptr ? remote : error->message);
                g_free(remote);
                g_error_free(error);
            }
        },
        &answer);
    if (parameters != nullptr) g_variant_unref(parameters);
    runUntil([&] { return answer.here; }, 25000);
    return answer.text;
}

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
        connection_->signal_subscribe(
            [this](const auto&, const auto&, const auto&, const auto&, const Glib::ustring& signal,
                   const Glib::VariantContainerBase& arguments) {
                signals.push_back(signal + (arguments.get_n_children() > 0 ? arguments.print() : ""));
            },
            {}, "org.kde.StatusNotifierItem");
        // Labels may be decided by the process and not by the connection: the second name is on another one.
        if (!alsoOwns.empty()) {
            second_ = bus.another();
            own(second_, alsoOwns);
        }
        own(connection_, "org.kde.StatusNotifierWatcher");
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
    std::string call(const std::string& path, const std::string& interface, const std::string& method,
                     const std::string& arguments, const std::function<void(GVariant*)>& use = nullptr) {
        return callMethod(connection_, items.back(), path, interface, method, arguments.c_str(), use);
    }
    [[nodiscard]] const Glib::RefPtr<Gio::DBus::Connection>& connection() const { return connection_; }

    using Call = Glib::RefPtr<Gio::DBus::MethodInvocation>;
    static void refuse(const Call& call) { call->return_dbus_error("org.example.NotYet", "not yet"); }
    /// Gives the watcher's name away and lives on.
    void giveUpName() {
        callMethod(connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReleaseName",
                   "('org.kde.StatusNotifierWatcher',)");
    }

    std::vector<std::string> items;    ///< the connections of those that have registered
    std::vector<std::string> signals;  ///< what items sent
    bool refuses = false;
    bool isBusy = false;     ///< answers no registration
    std::vector<Call> held;  ///< what it has not answered then

private:
    static void own(const Glib::RefPtr<Gio::DBus::Connection>& connection, const std::string& name) {
        callMethod(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                   ("('" + name + "', uint32 4)").c_str());
    }
    void take(const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring& sender, const Glib::ustring&,
              const Glib::ustring&, const Glib::ustring&, const Glib::VariantContainerBase& arguments,
              const Call& invocation) {
        if (isBusy) {
            held.push_back(invocation);
            return;
        }
        if (refuses) {
            refuse(invocation);
            return;
        }
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
