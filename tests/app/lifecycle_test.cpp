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

TEST_F(Lifecycle, RefreshesOnceWhenTheMinuteChanges) {
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
}

TEST_F(Lifecycle, TheClockSetBackAnHourRefreshesByItsOwnNotice) {
    start();
    const std::uint64_t recorded = shell.delegate->minute();
    shell.now -= 1h;
    EXPECT_FALSE(refreshes(shell.runLoop.tick));  // the same minute
    EXPECT_TRUE(refreshes(shell.runLoop.clockChanged));
    EXPECT_EQ(shell.title(), " कार्तिक २ १३:५८");
    EXPECT_EQ(shell.delegate->minute(), recorded);
}

TEST_F(Lifecycle, WakingRefreshesAtOnceAndTheNextTickAgain) {
    start();
    shell.now += 8h;
    shell.now += 3min;
    EXPECT_TRUE(refreshes(shell.runLoop.woke));
    EXPECT_EQ(shell.title(), " कार्तिक २ २३:०१");
    EXPECT_TRUE(refreshes(shell.runLoop.tick));  // the recorded minute was left alone
}

TEST_F(Lifecycle, StartsWithoutALogo) {
    shell.missingResources = "logo.png";
    start();
    EXPECT_EQ(shell.delegate->logoImage(), nullptr);
    EXPECT_EQ(shell.logo.image(), nullptr);
}

}  // namespace
}  // namespace dinmala
