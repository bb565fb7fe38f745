#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>

#include "desktop/GlibRunLoop.h"
#include "tests/support/Loop.h"
#include "tests/support/TestBus.h"

namespace dinmala {
namespace {

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
        EXPECT_TRUE(runUntil([&] { return changes == expected; }));
    }
}

/// A bus that plays the system bus, with a logind that can fall asleep.
class WakeFromSleep : public testing::Test {
protected:
    WakeFromSleep() : logind_(bus_.another()) {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", bus_.address(), 1);
        TestBus::own(logind_, "org.freedesktop.login1");
    }
    ~WakeFromSleep() override { unsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }

    static void prepareForSleep(const TestBus::Connection& sender, bool asleep) {
        sender->emit_signal("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep", "",
                            Glib::VariantContainerBase::create_tuple(Glib::Variant<bool>::create(asleep)));
        sender->flush_sync();
    }

    TestBus bus_;
    TestBus::Connection logind_;
};

TEST_F(WakeFromSleep, IsHeardFromLogindAlone) {
    int wakes = 0;
    GlibRunLoop loop;
    loop.onWake([&] { ++wakes; });
    // The bus is connected from the loop: until then a signal finds nobody.
    ASSERT_TRUE(runUntil([&] {
        prepareForSleep(logind_, false);
        return wakes > 0;
    }));
    runFor(100);

    wakes = 0;
    const auto stranger = bus_.another();
    prepareForSleep(stranger, false);
    prepareForSleep(logind_, true);
    EXPECT_FALSE(runUntil([&] { return wakes > 0; }, 200));
    prepareForSleep(logind_, false);
    runUntil([&] { return wakes > 0; });
    EXPECT_EQ(wakes, 1);

    // The bus goes away: the loop goes on.
    bool ticked = false;
    loop.everySecond([&] { ticked = true; });
    logind_.reset();
    bus_.stop();
    EXPECT_TRUE(runUntil([&] { return ticked; }));
}

TEST(GlibRunLoop, GoesOnWithoutASystemBus) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/dinmala-test", 1);
    {
        bool ticked = false;
        GlibRunLoop loop;
        loop.onWake([] {});
        loop.everySecond([&] { ticked = true; });
        EXPECT_TRUE(runUntil([&] { return ticked; }));
    }
    {
        GlibRunLoop gone;  // ends before the bus has answered
        gone.onWake([] {});
    }
    runFor(50);
    unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

}  // namespace
}  // namespace dinmala
