#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "desktop/KeyFilePreferences.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

class PreferenceFile : public testing::Test {
protected:
    KeyFilePreferences open() {
        return {path, [this](const std::string& message) { told.push_back(message); }};
    }
    static bool choose(KeyFilePreferences& preferences, std::string_view key, bool value = true) {
        preferences.setBoolForKey(value, key);
        return preferences.synchronize();
    }
    void write(std::string_view text) const { folder.write("preferences.ini", text); }
    [[nodiscard]] std::string read() const { return contentOf(path); }

    TemporaryFolder folder;
    const std::string path = folder.path("preferences.ini");
    std::vector<std::string> told;
};

TEST_F(PreferenceFile, KeepsChoicesAcrossRunsAndMakesItsFolder) {
    const std::string deep = folder.path("new/folder/preferences.ini");
    {
        KeyFilePreferences first(deep, {});
        EXPECT_FALSE(first.boolForKey("month"));
        first.setBoolForKey(true, "month");
        EXPECT_TRUE(choose(first, "icon", false));
    }
    KeyFilePreferences second(deep, {});
    EXPECT_TRUE(second.boolForKey("month"));
    EXPECT_FALSE(second.boolForKey("icon"));
    EXPECT_FALSE(second.boolForKey("Month"));
    EXPECT_EQ(folder.read("new/folder/preferences.ini"), "[display]\nicon=false\nmonth=true\n");

    second.setTextForKey("किन \\ \n=;", "edition");
    second.setTextForKey("true", "month");
    ASSERT_TRUE(second.synchronize());
    const KeyFilePreferences third(deep, {});
    EXPECT_EQ(third.textForKey("edition"), "किन \\ \n=;");
    EXPECT_FALSE(third.boolForKey("edition"));
    EXPECT_EQ(third.textForKey("none"), "");
    EXPECT_EQ(folder.read("new/folder/preferences.ini"), "[display]\nicon=false\nmonth=true\nedition=किन \\\\ \\n=;\n");
}

// A save at every refresh would wear out the disk and hide an edit made by hand.
TEST_F(PreferenceFile, IsWrittenOnlyWhenAChoiceHasChanged) {
    write("[display]\nmonth=true\n");
    std::filesystem::last_write_time(path, {});
    KeyFilePreferences preferences = open();
    EXPECT_TRUE(choose(preferences, "month"));
    EXPECT_EQ(std::filesystem::last_write_time(path), std::filesystem::file_time_type{});
}

// The last choice is what it was once another line follows it.
TEST_F(PreferenceFile, ReadsACarriageReturnAtTheEndOfTheFile) {
    write("[display]\r\nmonth=true\r\ntime=true\r");
    KeyFilePreferences preferences = open();
    EXPECT_TRUE(preferences.boolForKey("time"));
    EXPECT_TRUE(choose(preferences, "day"));
    EXPECT_TRUE(open().boolForKey("time"));
}

// Only what was chosen is changed, also when a person edits the file meanwhile.
TEST_F(PreferenceFile, LeavesWhatElseStandsInTheFile) {
    const std::string other = "future=3;4\n\n[other]\nname=दिन\nname[ne]=x\n";
    write("# by hand\n\n[display]\n# the day\nday=true\nyear=true\n" + other);
    KeyFilePreferences preferences = open();
    preferences.setBoolForKey(false, "day");
    write("# by hand\n\n[display]\n# the day\nday=true\nyear=false\n" + other + "later=1\n");
    ASSERT_TRUE(preferences.synchronize());
    EXPECT_EQ(read(), "# by hand\n\n[display]\n# the day\nday=false\nyear=false\n" + other + "later=1\n");

    // Without a file to add to, everything that holds in this run is written.
    std::filesystem::remove(path);
    ASSERT_TRUE(choose(preferences, "dow"));
    EXPECT_EQ(read(), "[display]\nday=false\ndow=true\nfuture=3;4\nyear=true\n");
}

// Two sessions of one user. What one has chosen stays when the other saves; where
// both set a key the later choice holds, even one that changes nothing there.
TEST_F(PreferenceFile, TwoProgramsKeepEachOthersChoices) {
    write("[display]\nicon=false\nyear=false\nmonth=true\n");
    KeyFilePreferences first = open();
    KeyFilePreferences second = open();
    ASSERT_TRUE(choose(first, "year"));
    ASSERT_TRUE(choose(second, "tithi"));
    EXPECT_EQ(read(), "[display]\nicon=false\nyear=true\nmonth=true\ntithi=true\n");

    // The flag alone, where the year was off all the time.
    second.setBoolForKey(true, "icon");
    for (const char* piece : {"year", "month", "tithi"}) second.setBoolForKey(false, piece);
    ASSERT_TRUE(second.synchronize());
    EXPECT_EQ(read(), "[display]\nicon=true\nyear=false\nmonth=false\ntithi=false\n");
}

// What was chosen elsewhere is taken over, what was chosen here and could not be saved
// stays, and a file that is gone or half written takes nothing away.
TEST_F(PreferenceFile, FollowsWhatIsChosenElsewhere) {
    write("[display]\nyear=true\nmonth=true\n");
    KeyFilePreferences first = open();
    EXPECT_FALSE(first.reload());
    KeyFilePreferences second = open();
    ASSERT_TRUE(choose(second, "year", false));
    EXPECT_FALSE(second.reload());  // its own
    EXPECT_TRUE(first.reload());
    EXPECT_FALSE(first.boolForKey("year"));
    EXPECT_FALSE(first.reload());

    // Another saves between the look and the save: seen at the next look.
    ASSERT_TRUE(choose(second, "tithi"));
    ASSERT_TRUE(choose(first, "month", false));
    EXPECT_TRUE(first.reload());
    EXPECT_TRUE(first.boolForKey("tithi"));

    first.setBoolForKey(true, "dow");
    for (const char* text : {"", "[disp", "[display\ntithi=false\n"}) {
        write(text);
        EXPECT_FALSE(first.reload()) << text;
    }
    std::filesystem::remove(path);
    EXPECT_FALSE(first.reload());
    EXPECT_TRUE(first.boolForKey("tithi"));
    write("[display]\ndow=false\n");
    EXPECT_TRUE(first.reload());
    EXPECT_TRUE(first.boolForKey("dow"));
    EXPECT_FALSE(first.boolForKey("tithi"));
}

TEST_F(PreferenceFile, ReadsFalseFromWhatIsNoBooleanOrNoKeyFile) {
    for (const std::string& text :
         {std::string(), std::string("[display]\nmonth=perhaps\n"), std::string("month=true\n"),
          std::string("\x7f"
                      "ELF\0\0",
                      6),
          std::string("[display\nmonth=true\n"), std::string("[display]\nmonth\n"), std::string(2 << 20, '#')}) {
        write(text);
        EXPECT_FALSE(open().boolForKey("month")) << text.substr(0, 20);
    }
    EXPECT_TRUE(told.empty());
}

TEST_F(PreferenceFile, KeepsACorruptFileAside) {
    for (const std::string name : {"preferences.ini.corrupt", "preferences.ini.corrupt.2"}) {
        const std::string text = (told.empty() ? "not a key file: " : std::string(1, '\0')) + name;
        write(text);
        KeyFilePreferences preferences = open();
        EXPECT_TRUE(choose(preferences, "time"));
        EXPECT_EQ(folder.read(name), text);
        EXPECT_TRUE(open().boolForKey("time"));
        ASSERT_FALSE(told.empty());
        EXPECT_TRUE(told.back().ends_with(name)) << told.back();  // the user hears where it is
    }
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(PreferenceFile, ReplacesTheFileThatALinkNames) {
    folder.write("dotfiles/mine.ini", "[display]\nday=true\n");
    std::filesystem::create_symlink("dotfiles/mine.ini", path);
    std::filesystem::permissions(folder.path("dotfiles/mine.ini"), std::filesystem::perms(0640));
    KeyFilePreferences preferences = open();
    ASSERT_TRUE(choose(preferences, "year"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(folder.read("dotfiles/mine.ini"), "[display]\nday=true\nyear=true\n");
    EXPECT_EQ(std::filesystem::status(folder.path("dotfiles/mine.ini")).permissions(), std::filesystem::perms(0640));

    // A link to what is not there yet, by way of another.
    std::filesystem::remove(path);
    std::filesystem::create_symlink(folder.path("dotfiles/link"), path);
    std::filesystem::create_symlink("later/new.ini", folder.path("dotfiles/link"));
    KeyFilePreferences dangling = open();
    ASSERT_TRUE(choose(dangling, "dow"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(folder.read("dotfiles/later/new.ini"), "[display]\ndow=true\n");
}

// What is not an ordinary file that can be read is not ours to replace. The user hears why, once; the choices hold
// for the run, and are kept as soon as they can be.
TEST_F(PreferenceFile, NeverReplacesWhatItCannotRead) {
    namespace fs = std::filesystem;
    const auto refuses = [this](const std::string& what) {
        told.clear();
        KeyFilePreferences preferences = open();
        for (const std::string_view key : {"day", "year"}) EXPECT_FALSE(choose(preferences, key)) << what;
        EXPECT_EQ(told.size(), 1U) << what;
        EXPECT_NE(told.at(0).find(path), std::string::npos) << told[0];
        EXPECT_TRUE(preferences.boolForKey("day")) << what;
        return preferences;
    };
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    refuses("a FIFO");
    EXPECT_TRUE(fs::is_fifo(path));
    fs::remove(path);

    fs::create_directory(path);
    refuses("a folder");
    fs::remove(path);

    write(std::string(2 << 20, '#'));
    refuses("a huge file");
    EXPECT_EQ(fs::file_size(path), 2U << 20);

    write("[display]\n");
    fs::permissions(path, fs::perms::none);
    fs::permissions(folder.path(), fs::perms(0755));
    asNobody([&] { refuses("a file without permission"); });
    fs::permissions(path, fs::perms(0644));
    fs::permissions(folder.path(), fs::perms(0555));
    std::optional<KeyFilePreferences> kept;
    asNobody([&] { kept.emplace(refuses("a folder without permission")); });
    fs::permissions(folder.path(), fs::perms(0755));
    EXPECT_EQ(read(), "[display]\n");
    EXPECT_TRUE(kept->synchronize());
    EXPECT_EQ(read(), "[display]\nday=true\nyear=true\n");
}

}  // namespace
}  // namespace dinmala
