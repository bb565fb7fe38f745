#include <gtest/gtest.h>

#include "tests/support/FakePlatform.h"

namespace dinmala {
namespace {

using test::Shell;

constexpr std::string_view kDefaults = "month day time";

class DisplayRules : public testing::Test {
protected:
    /// Starts with these keys stored.
    void start(std::initializer_list<std::string_view> keys = {}) {
        shell.preferences.values.clear();
        for (const std::string_view key : keys) shell.preferences.setBoolForKey(true, key);
        shell.restart();
        shell.delegate->awakeFromNib();
    }

    /// What is on, after checking that marks, store and file say the same.
    std::string state() {
        EXPECT_EQ(shell.preferences.on(), shell.marks());
        EXPECT_EQ(shell.preferences.saved, shell.preferences.values);
        return shell.marks();
    }

    Shell shell;
};

TEST_F(DisplayRules, MendWhatWasStoredAndShowMonthDayAndTimeAtFirst) {
    start();
    EXPECT_EQ(state(), kDefaults);
    EXPECT_EQ(shell.title(), " कार्तिक २ १४:०५");
    start({"icon", "tithi"});
    EXPECT_EQ(state(), "tithi");
    start({"icon", "year", "event"});
    EXPECT_EQ(state(), "year event");
    start({"icon"});
    EXPECT_EQ(state(), "icon");
}

TEST_F(DisplayRules, TheFlagAndThePiecesExcludeEachOther) {
    start();
    shell.delegate->setIcon(nullptr);
    EXPECT_EQ(state(), "icon");
    EXPECT_NE(shell.delegate->statusItem()->image(), nullptr);
    shell.delegate->setIcon(nullptr);
    EXPECT_EQ(state(), kDefaults);
    EXPECT_EQ(shell.delegate->statusItem()->image(), nullptr);
    shell.delegate->setIcon(nullptr);
    shell.delegate->setTithi(nullptr);
    EXPECT_EQ(state(), "tithi");
}

// A toggle wired to its neighbour's key or item shows here: each piece in turn,
// on and off again, among others.
TEST_F(DisplayRules, EachPieceFlipsAlone) {
    struct Toggle {
        std::string_view key;
        void (AppDelegate::*set)(Sender);
    };
    for (const Toggle& toggle : {Toggle{"year", &AppDelegate::setYear}, Toggle{"month", &AppDelegate::setMonth},
                                 Toggle{"day", &AppDelegate::setDay}, Toggle{"dow", &AppDelegate::setDow},
                                 Toggle{"time", &AppDelegate::setTime}, Toggle{"tithi", &AppDelegate::setTithi},
                                 Toggle{"event", &AppDelegate::setEvent}}) {
        start({"icon"});
        (shell.delegate.get()->*toggle.set)(nullptr);
        EXPECT_EQ(state(), toggle.key);
        (shell.delegate.get()->*toggle.set)(nullptr);
        EXPECT_EQ(state(), kDefaults);  // the last one gives way
        start({"year", "month", "day", "dow", "time", "tithi", "event"});
        (shell.delegate.get()->*toggle.set)(nullptr);
        EXPECT_FALSE(shell.preferences.boolForKey(toggle.key));
        EXPECT_EQ(state().size(), std::string{"year month day dow time tithi event"}.size() - toggle.key.size() - 1);
        (shell.delegate.get()->*toggle.set)(nullptr);
        EXPECT_EQ(state(), "year month day dow time tithi event");
    }
}

// Another session, or a person in the file: the next refresh shows it by the same
// rules, and a toggle does not bring the old choices back.
TEST_F(DisplayRules, FollowWhatIsChosenElsewhere) {
    start({"year", "month"});
    shell.preferences.elsewhere = {{"icon", true}, {"tithi", true}};
    shell.delegate->updateData();
    EXPECT_EQ(state(), "tithi");
    EXPECT_EQ(shell.title(), " ");
    shell.preferences.elsewhere = {{"dow", true}};
    shell.delegate->setYear(nullptr);
    EXPECT_EQ(state(), "year dow");
}

// A desktop may show a mark that is neither on nor off; it is not off.
TEST_F(DisplayRules, AMarkDecidesAndAMixedOneIsTurnedOff) {
    start({"year", "month"});
    shell.preferences.setBoolForKey(false, "year");  // behind the menu's back
    shell.delegate->setYear(nullptr);                // the mark is on: off it goes
    EXPECT_EQ(state(), "month");
    start({"year", "month"});
    shell.toggles[1].setState(-1);
    shell.delegate->setYear(nullptr);
    EXPECT_EQ(state(), "month");
    shell.toggles[0].setState(-1);
    shell.delegate->setIcon(nullptr);
    EXPECT_EQ(state(), "month");
    shell.startup.setState(-1);
    shell.delegate->changeAppStartup(nullptr);
    EXPECT_EQ(shell.startup.state(), kOffState);
    EXPECT_TRUE(shell.loginItems.entries.empty());
}

TEST_F(DisplayRules, SettingsAnswerOnlyTheEightKeys) {
    EXPECT_FALSE(shell.delegate->getPlist("icon"));  // no readable file
    shell.settings = PropertyList{{"icon", true},
                                  {"year", std::int64_t{1}},
                                  {"month", std::string{"YES"}},
                                  {"day", 0.5},
                                  {"dow", std::string{"no"}},
                                  {"time", std::string{" +007"}},
                                  {"tithi", std::string{"0"}},
                                  {"Icon", true}};
    for (const std::string_view key : {"icon", "year", "month", "day", "time"})
        EXPECT_TRUE(shell.delegate->getPlist(key)) << key;
    for (const std::string_view key : {"dow", "tithi", "event", "Icon", ""})
        EXPECT_FALSE(shell.delegate->getPlist(key)) << key;
    shell.missingResources = "Settings.plist";
    EXPECT_FALSE(shell.delegate->getPlist("icon"));
}

}  // namespace
}  // namespace dinmala
