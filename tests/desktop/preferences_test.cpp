#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
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
        return {folder.path("preferences.ini"), [this](const std::string& message) { told.push_back(message); }};
    }

    TemporaryFolder folder;
    std::vector<std::string> told;
};

TEST_F(PreferenceFile, KeepsChoicesAcrossRunsAndMakesItsFolder) {
    const std::string path = folder.path("new/folder/preferences.ini");
    {
        KeyFilePreferences first(path, {});
        EXPECT_FALSE(first.boolForKey("month"));
        first.setBoolForKey(true, "month");
        first.setBoolForKey(false, "icon");
        EXPECT_TRUE(first.synchronize());
    }
    KeyFilePreferences second(path, {});
    EXPECT_TRUE(second.boolForKey("month"));
    EXPECT_FALSE(second.boolForKey("icon"));
    EXPECT_FALSE(second.boolForKey("Month"));
    EXPECT_EQ(folder.read("new/folder/preferences.ini"), "[display]\nicon=false\nmonth=true\n");

    second.setTextForKey("किन \\ \n=;", "edition");
    second.setTextForKey("true", "month");
    ASSERT_TRUE(second.synchronize());
    const KeyFilePreferences third(path, {});
    EXPECT_EQ(third.textForKey("edition"), "किन \\ \n=;");
    EXPECT_FALSE(third.boolForKey("edition"));
    EXPECT_EQ(third.textForKey("none"), "");
    EXPECT_EQ(folder.read("new/folder/preferences.ini"), "[display]\nicon=false\nmonth=true\nedition=किन \\\\ \\n=;\n");
}

// A save at every refresh would wear out the disk and hide an edit made by hand.
TEST_F(PreferenceFile, IsWrittenOnlyWhenAChoiceHasChanged) {
    folder.write("preferences.ini", "[display]\nmonth=true\n");
    KeyFilePreferences preferences = open();
    struct stat before {};
    ASSERT_EQ(stat(folder.path("preferences.ini").c_str(), &before), 0);
    preferences.setBoolForKey(true, "month");
    EXPECT_TRUE(preferences.synchronize());
    struct stat after {};
    ASSERT_EQ(stat(folder.path("preferences.ini").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

// The last choice is what it was once another line follows it.
TEST_F(PreferenceFile, ReadsACarriageReturnAtTheEndOfTheFile) {
    folder.write("preferences.ini", "[display]\r\nmonth=true\r\ntime=true\r");
    KeyFilePreferences preferences = open();
    EXPECT_TRUE(preferences.boolForKey("time"));
    preferences.setBoolForKey(true, "day");
    EXPECT_TRUE(preferences.synchronize());
    EXPECT_TRUE(open().boolForKey("time"));
}

// Only what was chosen is changed, also when a person edits the file meanwhile.
TEST_F(PreferenceFile, LeavesWhatElseStandsInTheFile) {
    const std::string other = "future=3;4\n\n[other]\nname=दिन\nname[ne]=x\n";
    folder.write("preferences.ini", "# by hand\n\n[display]\n# the day\nday=true\nyear=true\n" + other);
    KeyFilePreferences preferences = open();
    preferences.setBoolForKey(false, "day");
    folder.write("preferences.ini", "# by hand\n\n[display]\n# the day\nday=true\nyear=false\n" + other + "later=1\n");
    ASSERT_TRUE(preferences.synchronize());
    EXPECT_EQ(folder.read("preferences.ini"),
              "# by hand\n\n[display]\n# the day\nday=false\nyear=false\n" + other + "later=1\n");

    // Without a file to add to, everything that holds in this run is written.
    std::filesystem::remove(folder.path("preferences.ini"));
    preferences.setBoolForKey(true, "dow");
    ASSERT_TRUE(preferences.synchronize());
    EXPECT_EQ(folder.read("preferences.ini"), "[display]\nday=false\ndow=true\nfuture=3;4\nyear=true\n");
}

// Two sessions of one user. What one has chosen stays when the other saves; where
// both set a key the later choice holds, even one that changes nothing there.
TEST_F(PreferenceFile, TwoProgramsKeepEachOthersChoices) {
    folder.write("preferences.ini", "[display]\nicon=false\nyear=false\nmonth=true\n");
    KeyFilePreferences first = open();
    KeyFilePreferences second = open();
    first.setBoolForKey(true, "year");
    ASSERT_TRUE(first.synchronize());
    second.setBoolForKey(true, "tithi");
    ASSERT_TRUE(second.synchronize());
    EXPECT_EQ(folder.read("preferences.ini"), "[display]\nicon=false\nyear=true\nmonth=true\ntithi=true\n");

    // The flag alone, where the year was off all the time.
    second.setBoolForKey(true, "icon");
    for (const char* piece : {"year", "month", "tithi"}) second.setBoolForKey(false, piece);
    ASSERT_TRUE(second.synchronize());
    EXPECT_EQ(folder.read("preferences.ini"), "[display]\nicon=true\nyear=false\nmonth=false\ntithi=false\n");
}

// What was chosen elsewhere is taken over, what was chosen here and could not be saved
// stays, and a file that is gone or half written takes nothing away.
TEST_F(PreferenceFile, FollowsWhatIsChosenElsewhere) {
    folder.write("preferences.ini", "[display]\nyear=true\nmonth=true\n");
    KeyFilePreferences first = open();
    EXPECT_FALSE(first.reload());
    KeyFilePreferences second = open();
    second.setBoolForKey(false, "year");
    ASSERT_TRUE(second.synchronize());
    EXPECT_FALSE(second.reload());  // its own
    EXPECT_TRUE(first.reload());
    EXPECT_FALSE(first.boolForKey("year"));
    EXPECT_FALSE(first.reload());

    // Another saves between the look and the save: seen at the next look.
    second.setBoolForKey(true, "tithi");
    ASSERT_TRUE(second.synchronize());
    first.setBoolForKey(false, "month");
    ASSERT_TRUE(first.synchronize());
    EXPECT_TRUE(first.reload());
    EXPECT_TRUE(first.boolForKey("tithi"));

    first.setBoolForKey(true, "dow");
    for (const char* text : {"", "[disp", "[display\ntithi=false\n"}) {
        folder.write("preferences.ini", text);
        EXPECT_FALSE(first.reload()) << text;
    }
    std::filesystem::remove(folder.path("preferences.ini"));
    EXPECT_FALSE(first.reload());
    EXPECT_TRUE(first.boolForKey("tithi"));
    folder.write("preferences.ini", "[display]\ndow=false\n");
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
        folder.write("preferences.ini", text);
        EXPECT_FALSE(open().boolForKey("month")) << text.substr(0, 20);
    }
    EXPECT_TRUE(told.empty());
}

TEST_F(PreferenceFile, KeepsACorruptFileAside) {
    for (const std::string name : {"preferences.ini.corrupt", "preferences.ini.corrupt.2"}) {
        const std::string text = (told.empty() ? "not a key file: " : std::string(1, '\0')) + name;
        folder.write("preferences.ini", text);
        KeyFilePreferences preferences = open();
        preferences.setBoolForKey(true, "time");
        EXPECT_TRUE(preferences.synchronize());
        EXPECT_EQ(folder.read(name), text);
        EXPECT_TRUE(open().boolForKey("time"));
        ASSERT_FALSE(told.empty());
        EXPECT_TRUE(told.back().ends_with(name)) << told.back();  // the user hears where it is
    }
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(PreferenceFile, ReplacesTheFileThatALinkNames) {
    folder.write("dotfiles/mine.ini", "[display]\nday=true\n");
    std::filesystem::create_symlink("dotfiles/mine.ini", folder.path("preferences.ini"));
    std::filesystem::permissions(folder.path("dotfiles/mine.ini"), std::filesystem::perms(0640));
    KeyFilePreferences preferences = open();
    preferences.setBoolForKey(true, "year");
    ASSERT_TRUE(preferences.synchronize());
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("preferences.ini")));
    EXPECT_EQ(folder.read("dotfiles/mine.ini"), "[display]\nday=true\nyear=true\n");
    EXPECT_EQ(std::filesystem::status(folder.path("dotfiles/mine.ini")).permissions(), std::filesystem::perms(0640));

    // A link to what is not there yet, by way of another.
    std::filesystem::remove(folder.path("preferences.ini"));
    std::filesystem::create_symlink(folder.path("dotfiles/link"), folder.path("preferences.ini"));
    std::filesystem::create_symlink("later/new.ini", folder.path("dotfiles/link"));
    KeyFilePreferences dangling = open();
    dangling.setBoolForKey(true, "dow");
    ASSERT_TRUE(dangling.synchronize());
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("preferences.ini")));
    EXPECT_EQ(folder.read("dotfiles/later/new.ini"), "[display]\ndow=true\n");
}

// Where the file cannot be kept the user hears why, once; the old file stays to
// the byte, nothing is left beside it, and the choices hold for the run.
TEST_F(PreferenceFile, TellsOnceWhyItCouldNotBeKeptAndRecovers) {
    const std::string old = "[display]\nday=true\n";
    folder.write("preferences.ini", old);
    KeyFilePreferences preferences = open();

    // A limit on the size of files stands for a full disk: the write fails midway.
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const rlimit little{8, unlimited.rlim_max};
    setrlimit(RLIMIT_FSIZE, &little);
    for (const std::string_view key : {"month", "year"}) {
        preferences.setBoolForKey(true, key);
        EXPECT_FALSE(preferences.synchronize());
    }
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, oldHandler);

    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find(folder.path("preferences.ini")), std::string::npos) << told[0];
    EXPECT_EQ(folder.read("preferences.ini"), old);
    EXPECT_EQ(folder.count(), 1U);
    EXPECT_TRUE(preferences.boolForKey("year"));

    EXPECT_TRUE(preferences.synchronize());
    EXPECT_EQ(folder.read("preferences.ini"), "[display]\nday=true\nmonth=true\nyear=true\n");
}

// What is not an ordinary file that can be read is not ours to replace.
TEST_F(PreferenceFile, NeverReplacesWhatItCannotRead) {
    const auto refuses = [this](const char* what) {
        told.clear();
        KeyFilePreferences preferences = open();
        preferences.setBoolForKey(true, "day");
        EXPECT_FALSE(preferences.synchronize()) << what;
        EXPECT_EQ(told.size(), 1U) << what;
        EXPECT_TRUE(preferences.boolForKey("day")) << what;
    };
    ASSERT_EQ(mkfifo(folder.path("preferences.ini").c_str(), 0600), 0);
    refuses("a FIFO");
    EXPECT_TRUE(std::filesystem::is_fifo(folder.path("preferences.ini")));
    std::filesystem::remove(folder.path("preferences.ini"));

    std::filesystem::create_directory(folder.path("preferences.ini"));
    refuses("a folder");
    std::filesystem::remove(folder.path("preferences.ini"));

    folder.write("preferences.ini", std::string(2 << 20, '#'));
    refuses("a huge file");
    EXPECT_EQ(std::filesystem::file_size(folder.path("preferences.ini")), 2U << 20);

    folder.write("preferences.ini", "[display]\n");
    std::filesystem::permissions(folder.path("preferences.ini"), std::filesystem::perms::none);
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    // Root may read everything: the rest is tried as nobody.
    const bool root = geteuid() == 0;
    if (root) {
        ASSERT_EQ(seteuid(65534), 0);
    }
    refuses("a file without permission");
    if (root) {
        ASSERT_EQ(seteuid(0), 0);
    }
    std::filesystem::permissions(folder.path("preferences.ini"), std::filesystem::perms(0644));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    if (root) {
        ASSERT_EQ(seteuid(65534), 0);
    }
    refuses("a folder without permission");
    if (root) {
        ASSERT_EQ(seteuid(0), 0);
    }
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    EXPECT_EQ(folder.read("preferences.ini"), "[display]\n");
}

}  // namespace
}  // namespace dinmala
