#include <gtest/gtest.h>

#include "tests/support/FakePlatform.h"

namespace dinmala {
namespace {

using test::nepal;
using test::Shell;

/// The shell as the program has it: with both editions.
class EditionOfTheShell : public testing::Test {
protected:
    void start(std::optional<EditionId> asked = std::nullopt) {
        Platform platform = shell.platform();
        platform.edition = [this](EditionId id) -> const Edition& { return other ? *other : builtInEdition(id); };
        platform.askedEdition = asked;
        platform.tell = [this](const std::string& message) { told.push_back(message); };
        Outlets outlets = shell.outlets();
        outlets.noteMenuItem = &note;
        outlets.currentEditionMenuItem = &current;
        outlets.firstEditionMenuItem = &first;
        shell.delegate = std::make_unique<AppDelegate>(platform, outlets);
        shell.delegate->awakeFromNib();
    }
    [[nodiscard]] std::string marks() const {
        return std::string(current.state() == kOnState ? "current" : "") + (first.state() == kOnState ? "first" : "");
    }

    Shell shell{nepal(2026, 11, 23, 12, 0)};
    MenuItem note, current{MenuItem::Kind::toggle}, first{MenuItem::Kind::toggle};
    std::optional<Edition> other;
    std::vector<std::string> told;
};

TEST_F(EditionOfTheShell, ShowsWhatNepalPublishesUntilTheFirstIsChosen) {
    start();
    EXPECT_EQ(shell.title(), " मंसिर ७ १२:००");
    EXPECT_EQ(shell.date.title(), "२०८३ मंसिर ७ सोमवार १२:००");
    EXPECT_TRUE(shell.description.title().starts_with("चतुर्दशी, ")) << shell.description.title();
    EXPECT_EQ(marks(), "current");
    EXPECT_TRUE(note.isHidden());
    EXPECT_TRUE(told.empty());

    shell.delegate->setFirstEdition(nullptr);
    EXPECT_EQ(shell.title(), " मंसिर ८ १२:००");
    EXPECT_EQ(shell.description.title(), ", ");
    EXPECT_EQ(marks(), "first");
    start();  // kept
    EXPECT_EQ(shell.title(), " मंसिर ८ १२:००");

    // A choice made elsewhere counts from the next refresh on; a word that names no edition is none.
    shell.preferences.texts["edition"] = "current";
    shell.delegate->updateData();
    EXPECT_EQ(shell.title(), " मंसिर ७ १२:००");
    shell.preferences.texts["edition"] = "firstt";
    shell.delegate->updateData();
    EXPECT_EQ(marks(), "current");
}

TEST_F(EditionOfTheShell, WhatWasAskedForAtTheStartHoldsUntilTheMenuIsUsed) {
    shell.preferences.texts["edition"] = "current";
    start(EditionId::first);
    EXPECT_EQ(marks(), "first");
    EXPECT_EQ(shell.preferences.texts["edition"], "current");
    shell.delegate->setCurrentEdition(nullptr);
    EXPECT_EQ(marks(), "current");
}

// The other session's choice came after the last refresh, this click after that.
TEST_F(EditionOfTheShell, TheLastClickHoldsAmongSessions) {
    start();
    shell.preferences.elsewhereTexts = {{"edition", "first"}};
    shell.delegate->setCurrentEdition(nullptr);
    EXPECT_EQ(marks(), "current");
    EXPECT_EQ(shell.preferences.texts["edition"], "current");
}

TEST_F(EditionOfTheShell, TellsOnceWhoeverKnewTheFirstAlone) {
    shell.preferences.values["month"] = true;
    start(EditionId::first);  // shows what it showed: nothing to tell yet
    EXPECT_TRUE(told.empty());
    start();
    EXPECT_EQ(told.size(), 1u);
    start();
    EXPECT_EQ(told.size(), 1u);
    EXPECT_EQ(shell.preferences.texts["edition"], "current");
}

// Every day of two years: no lone comma, and the sentence stands exactly where a day is not published.
TEST_F(EditionOfTheShell, SaysHowFarADayCanBeTrusted) {
    start();
    bool withoutEvent = false;
    for (int i = 0; i < 800; ++i) {
        shell.now += std::chrono::hours{24};
        shell.delegate->updateData();
        const std::string line = shell.description.title();
        withoutEvent = withoutEvent || line.find(", ") == std::string::npos;
        ASSERT_FALSE(line.starts_with(',') || line.ends_with(", ")) << line;
        const int year = static_cast<int>(shell.delegate->ds()->currentBSYear());
        const bool isPublished = BsYear{year} <= currentEdition().lastPublished;
        const bool saysSo = note.title().find("BS 208") != std::string::npos;
        ASSERT_EQ(saysSo, !isPublished) << shell.date.title() << note.title();
        ASSERT_EQ(note.isHidden(), note.title().empty());
    }
    EXPECT_TRUE(withoutEvent);
}

// A year put into a folder is shown at the next refresh.
TEST_F(EditionOfTheShell, FollowsAnEditionThatChanges) {
    start();
    YearAlmanac year = *currentEdition().almanac.numbers(BsYear{2083});
    for (YearDay& day : year.days) day.events = {{5, Holiday::none, Grade::open}, {62, Holiday::none, Grade::sure}};
    other = *currentEditionWith({&year, 1});
    shell.delegate->updateData();
    EXPECT_EQ(shell.description.title(), "चतुर्दशी, नयाँ वर्ष/ बिजया दशमी");
    EXPECT_NE(note.title().find("नयाँ वर्ष"), std::string::npos);
}

}  // namespace
}  // namespace dinmala
