#include <gtest/gtest.h>

#include "tests/support/FakePlatform.h"

namespace dinmala {
namespace {

using namespace std::chrono_literals;
using test::nepal;
using test::Shell;

class Lifecycle : public testing::Test {
protected:
    void start() {
        shell.delegate->awakeFromNib();
        shell.delegate->applicationDidFinishLaunching(nullptr);
    }

    /// Whether the callback made a refresh: each refresh builds a new store.
    template <typename Callback>
    bool refreshes(Callback&& callback) {
        shell.log.clear();
        callback();
        return !shell.log.empty();
    }

    Shell shell{nepal(2024, 10, 18, 14, 58, 30)};
};

TEST_F(Lifecycle, SetsUpTheItemBeforeLaunchingFinishes) {
    shell.delegate->awakeFromNib();
    const StatusItem& item = *shell.delegate->statusItem();
    EXPECT_EQ(item.length(), -1.0);
    EXPECT_EQ(item.toolTip(), "Dinmala");
    EXPECT_TRUE(item.highlightMode());
    EXPECT_EQ(item.menu(), &shell.menu);
    EXPECT_EQ(shell.logo.title(), "");
    EXPECT_EQ(shell.logo.image()->path, "/res/logo.png");
    EXPECT_EQ(item.title(), " कार्तिक २ १४:५८");
    EXPECT_EQ(shell.delegate->minute(), 0u);
    EXPECT_FALSE(shell.runLoop.tick);  // no trigger before launching has finished
    EXPECT_TRUE(shell.fetched.empty());
    EXPECT_FALSE(refreshes([this] { shell.delegate->applicationDidFinishLaunching(nullptr); }));
    EXPECT_EQ(shell.fetched.size(), 1u);
}

TEST_F(Lifecycle, RefreshesOnceWhenTheMinuteOrAnotherSessionsChoiceChanges) {
    start();
    const std::uint64_t recorded = shell.delegate->minute();
    EXPECT_FALSE(refreshes(shell.runLoop.tick));
    shell.now += 29s;
    EXPECT_FALSE(refreshes(shell.runLoop.tick));
    shell.now += 1s;
    EXPECT_TRUE(refreshes(shell.runLoop.tick));
    EXPECT_EQ(shell.delegate->minute(), (recorded + 1) % 60);
    EXPECT_EQ(shell.title(), " कार्तिक २ १४:५९");
    EXPECT_FALSE(refreshes(shell.runLoop.tick));
    shell.now += 60s;  // 59 to 0
    EXPECT_TRUE(refreshes(shell.runLoop.tick));
    EXPECT_EQ(shell.title(), " कार्तिक २ १५:००");
    shell.now -= 60s;  // backward counts as well
    EXPECT_TRUE(refreshes(shell.runLoop.tick));
    shell.preferences.elsewhere = {{"dow", true}};
    EXPECT_TRUE(refreshes(shell.runLoop.tick));
    EXPECT_EQ(shell.title(), " शुक्रवार");
    EXPECT_FALSE(refreshes(shell.runLoop.tick));
}

// The item is on show some time after the start, two seconds where no panel is there
// yet. Whatever turns meanwhile is caught at the next tick; only the update check waits.
TEST_F(Lifecycle, NothingTurnsUnseenWhileItStarts) {
    shell.now = nepal(2013, 5, 14, 23, 59, 59);
    shell.perReading = 1s;
    std::function<void()> shown;
    Platform platform = shell.platform();
    platform.whenShown = [&](std::function<void()> callback) { shown = std::move(callback); };
    shell.delegate = std::make_unique<AppDelegate>(std::move(platform), shell.outlets());
    shell.delegate->launch();
    EXPECT_EQ(shell.title(), " बैशाख ३१ २३:५९");
    ASSERT_TRUE(shell.runLoop.tick && shell.runLoop.clockChanged && shell.runLoop.woke);
    EXPECT_TRUE(refreshes(shell.runLoop.tick));
    EXPECT_EQ(shell.title(), " जेठ १ ००:००");
    EXPECT_TRUE(shell.fetched.empty());
    shown();
    EXPECT_EQ(shell.fetched.size(), 1u);
}

TEST_F(Lifecycle, ClockAndWakeRefreshByTheirOwnNotices) {
    start();
    const std::uint64_t recorded = shell.delegate->minute();
    shell.now -= 1h;
    EXPECT_FALSE(refreshes(shell.runLoop.tick));  // the same minute
    EXPECT_TRUE(refreshes(shell.runLoop.clockChanged));
    EXPECT_EQ(shell.title(), " कार्तिक २ १३:५८");
    shell.now += 9h + 3min;
    EXPECT_TRUE(refreshes(shell.runLoop.woke));
    EXPECT_EQ(shell.title(), " कार्तिक २ २३:०१");
    EXPECT_EQ(shell.delegate->minute(), recorded);  // so that the next tick refreshes again
    EXPECT_TRUE(refreshes(shell.runLoop.tick));
}

// A refresh that reads the clock twice may tell the day of before midnight with the
// month of after it. Here every reading is a second later than the last.
TEST_F(Lifecycle, ARefreshIsOneMoment) {
    for (const Moment turn : {nepal(2013, 5, 15, 0, 0),      // Baishakh ends
                              nepal(2014, 4, 14, 0, 0),      // BS 2070 ends
                              nepal(2013, 6, 1, 0, 0),       // May ends within Jeth
                              nepal(2013, 5, 20, 6, 31)}) {  // a minute
        for (const auto before : {0s, 1s, 2s, 3s, 5s, 8s, 13s}) {
            Shell still{turn - before};
            for (const char* key : {"year", "month", "day", "dow", "time", "tithi", "event"}) {
                still.preferences.setBoolForKey(true, key);
            }
            still.delegate->awakeFromNib();
            Shell moving{turn - 2min};
            moving.preferences.values = still.preferences.values;
            moving.delegate->awakeFromNib();
            moving.delegate->applicationDidFinishLaunching(nullptr);
            moving.perReading = 1s;
            const std::function<void()> triggers[] = {moving.runLoop.tick, moving.runLoop.clockChanged};
            for (const auto& trigger : triggers) {
                moving.now = turn - before;
                trigger();
                EXPECT_EQ(moving.everything(), still.everything()) << before.count() << " s before";
            }
        }
    }
}

}  // namespace
}  // namespace dinmala
