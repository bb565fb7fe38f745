/// A bus of a test's own.
#pragma once

#include <giomm.h>

#include <string>

namespace dinmala {

class TestBus {
public:
    using Connection = Glib::RefPtr<Gio::DBus::Connection>;

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
    [[nodiscard]] static Connection shared() {
        auto connection = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
        connection->set_exit_on_close(false);
        return connection;
    }
    /// A connection as another program has it.
    [[nodiscard]] Connection another() const {
        return Gio::DBus::Connection::create_for_address_sync(
            address(),
            Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT | Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION);
    }
    [[nodiscard]] const char* address() const { return g_test_dbus_get_bus_address(bus_); }
    void stop() {
        if (address() != nullptr) g_test_dbus_stop(bus_);
    }

    static void own(const Connection& connection, const std::string& name) {
        ask(connection, "RequestName", g_variant_new("(su)", name.c_str(), 4U));
    }
    static void giveUp(const Connection& connection, const std::string& name) {
        ask(connection, "ReleaseName", g_variant_new("(s)", name.c_str()));
    }

private:
    static void ask(const Connection& connection, const char* method, GVariant* arguments) {
        connection->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                              Glib::VariantContainerBase(arguments, true), "org.freedesktop.DBus");
    }

    GTestDBus* bus_;
};

}  // namespace dinmala
