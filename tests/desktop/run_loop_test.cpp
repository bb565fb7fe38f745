#include <giomm.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>

#include "desktop/GlibRunLoop.h"

namespace dinmala {
namespace {

/// Handles events until something has happened, at most so long.
void runUntil(const std::function<bool()>& happened, std::chrono::milliseconds longest) {
    const auto end = std::chrono::steady_clock::now() + longest;
    while (!happened() && std::chrono::steady_clock::now() < end) {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        g_usleep(2000);
    }
}

TEST(GlibRunLoop, TicksEverySecondAndEnds) {
    GlibRunLoop loop;
    int ticks = 0;
    const auto start = std::chrono::steady_clock::now();
    loop.everySecond([&] {
        if (++ticks == 2) loop.quit();
    });
    loop.run();
    const auto taken = std::chrono::steady_clock::now() - start;
    EXPECT_GE(taken, std::chrono::milliseconds(1000));
    EXPECT_LE(taken, std::chrono::milliseconds(4000));
    loop.run();  // ended: returns at once
    EXPECT_EQ(ticks, 2);
}

// Needs the right to set the clock; it is set to the present moment.
TEST(GlibRunLoop, HearsEverySettingOfTheClock) {
    int changes = 0;
    GlibRunLoop loop;
    loop.onSystemClockChange([&] { ++changes; });
    for (const int expected : {1, 2}) {
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        if (clock_settime(CLOCK_REALTIME, &now) != 0) GTEST_SKIP() << "the clock may not be set here";
        runUntil([&] { return changes == expected; }, std::chrono::seconds(5));
        EXPECT_EQ(changes, expected);
    }
}

/// A bus that plays the system bus, with a logind that can fall asleep.
class WakeFromSleep : public testing::Test {
protected:
    WakeFromSleep() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
        Gio::init();
        g_test_dbus_up(bus_);
        setenv("DBUS_SYSTEM_BUS_ADDRESS", g_test_dbus_get_bus_address(bus_), 1);
        logind_ = connect();
        logind_->call_sync(
            "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            Glib::VariantContainerBase::create_tuple(
                {Glib::Variant<Glib::ustring>::create("org.freedesktop.login1"), Glib::Variant<guint32>::create(0)}),
            "org.freedesktop.DBus");
    }
    ~WakeFromSleep() override {
        logind_.reset();
        stopBus();
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    }

    [[nodiscard]] Glib::RefPtr<Gio::DBus::Connection> connect() const {
        return Gio::DBus::Connection::create_for_address_sync(
            g_test_dbus_get_bus_address(bus_),
            Gio::DBus::ConnectionFlags::AUTHENTICATION_CLIENT | Gio::DBus::ConnectionFlags::MESSAGE_BUS_CONNECTION);
    }
    void stopBus() {
        if (bus_ == nullptr) return;
        g_test_dbus_stop(bus_);
        g_object_unref(bus_);
        bus_ = nullptr;
    }
    static void prepareForSleep(const Glib::RefPtr<Gio::DBus::Connection>& sender, bool asleep) {
        sender->emit_signal("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep", "",
                            Glib::VariantContainerBase::create_tuple(Glib::Variant<bool>::create(asleep)));
        sender->flush_sync();
    }

    GTestDBus* bus_;
    Glib::RefPtr<Gio::DBus::Connection> logind_;
};

TEST_F(WakeFromSleep, IsHeardFromLogindAlone) {
    int wakes = 0;
    GlibRunLoop loop;
    loop.onWake([&] { ++wakes; });
    // The bus is connected from the loop: until then a signal finds nobody.
    runUntil(
        [&] {
            prepareForSleep(logind_, false);
            return wakes > 0;
        },
        std::chrono::seconds(5));
    ASSERT_GT(wakes, 0);
    runUntil([] { return false; }, std::chrono::milliseconds(100));

    wakes = 0;
    const auto stranger = connect();
    prepareForSleep(stranger, false);
    prepareForSleep(logind_, true);
    runUntil([&] { return wakes > 0; }, std::chrono::milliseconds(200));
    EXPECT_EQ(wakes, 0);
    prepareForSleep(logind_, false);
    runUntil([&] { return wakes > 0; }, std::chrono::seconds(5));
    EXPECT_EQ(wakes, 1);

    // The bus goes away: the loop goes on.
    bool ticked = false;
    loop.everySecond([&] { ticked = true; });
    logind_.reset();
    stopBus();
    runUntil([&] { return ticked; }, std::chrono::seconds(5));
    EXPECT_TRUE(ticked);
}

TEST(GlibRunLoop, GoesOnWithoutASystemBus) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/dinmala-test", 1);
    bool ticked = false;
    {
        GlibRunLoop loop;
        loop.onWake([] {});
        loop.everySecond([&] { ticked = true; });
        runUntil([&] { return ticked; }, std::chrono::seconds(5));
    }
    EXPECT_TRUE(ticked);
    {
        GlibRunLoop gone;  // ends before the bus has answered
        gone.onWake([] {});
    }
    runUntil([] { return false; }, std::chrono::milliseconds(50));
    unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

}  // namespace
}  // namespace dinmala
