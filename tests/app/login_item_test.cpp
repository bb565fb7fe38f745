#include <gtest/gtest.h>

#include "tests/support/FakePlatform.h"

namespace dinmala {
namespace {

class LoginItem : public testing::Test {
protected:
    void start() {
        shell.restart();
        shell.delegate->awakeFromNib();
    }
    void choose() { shell.delegate->changeAppStartup(nullptr); }
    [[nodiscard]] bool marked() const { return shell.startup.state() == kOnState; }

    const std::string own = "/opt/dinmala/bin/dinmala";
    test::Shell shell;
};

TEST_F(LoginItem, IsAddedAtTheEndAndTakenAwayAgain) {
    shell.loginItems.entries = {{"other", "/usr/bin/other"}};
    start();
    EXPECT_FALSE(marked());
    choose();
    EXPECT_TRUE(marked());
    EXPECT_EQ(shell.loginItems.ids(), "other new1");
    start();
    EXPECT_TRUE(marked());
    choose();
    EXPECT_FALSE(marked());
    EXPECT_EQ(shell.loginItems.ids(), "other");
}

TEST_F(LoginItem, ListedTwiceLosesOnlyTheLaterEntry) {
    shell.loginItems.entries = {{"a", own}, {"broken", std::nullopt}, {"b", own}, {"other", "/usr/bin/other"}};
    start();
    EXPECT_TRUE(marked());
    EXPECT_EQ(shell.delegate->itemRefInLoginItems()->id, "b");
    choose();
    EXPECT_FALSE(marked());
    EXPECT_EQ(shell.loginItems.ids(), "a broken other");
    start();
    EXPECT_TRUE(marked());  // one remains
}

TEST_F(LoginItem, IsComparedAsAText) {
    shell.loginItems.entries = {
        {"case", "/opt/Dinmala/bin/dinmala"}, {"slash", own + "/"}, {"dots", "/opt/./dinmala/bin/dinmala"}};
    start();
    EXPECT_FALSE(marked());
    shell.delegate->removeAsLoginItem();
    EXPECT_EQ(shell.loginItems.entries.size(), 3u);
    shell.delegate->addAsLoginItem();
    shell.delegate->addAsLoginItem();  // does not search first
    EXPECT_EQ(shell.loginItems.entries.size(), 5u);
}

TEST_F(LoginItem, AListThatCannotBeOpenedChangesNothing) {
    shell.loginItems.entries = {{"a", own}};
    shell.loginItems.opens = false;
    start();
    EXPECT_FALSE(marked());
    choose();
    EXPECT_TRUE(marked());  // what the user chose, until the next start
    start();
    EXPECT_FALSE(marked());
    EXPECT_EQ(shell.loginItems.ids(), "a");
    shell.loginItems.opens = true;
    shell.delegate->applyStartupState();  // reads it again
    EXPECT_TRUE(marked());
    EXPECT_EQ(shell.loginItems.ids(), "a");
}

}  // namespace
}  // namespace dinmala
