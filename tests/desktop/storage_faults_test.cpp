// What is kept on the disk when a system call fails, when memory ends, and when the power does. GLib ends the program
// where it gets no memory; what is counted here are the program's own allocations.
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <map>
#include <new>

#include "agenda/EditionSource.h"
#include "almanac/YearFile.h"
#include "desktop/KeyFilePreferences.h"
#include "tests/desktop/SystemCalls.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

using calls::Failing;
using Choices = std::vector<std::string>;

constexpr const char* kFile = "preferences.ini";
constexpr const char* kBefore = "# by hand\n[display]\nday=true\nyear=false\n";

/// A folder in one of the ways in which people keep their files.
struct Kept {
    explicit Kept(std::string_view way) {
        if (way == "none") return;
        if (way == "damaged") {
            folder.write(kFile, "not a key file");
        } else if (way == "linked") {
            folder.write("dotfiles/mine.ini", kBefore);
            std::filesystem::create_symlink("dotfiles/mine.ini", folder.path(kFile));
        } else {
            folder.write(kFile, kBefore);
        }
    }
    KeyFilePreferences open() {
        return {folder.path(kFile), [this](const std::string& message) { told.push_back(message); }};
    }
    /// What a new session reads.
    [[nodiscard]] Choices read() const {
        const KeyFilePreferences preferences(folder.path(kFile), {});
        return {preferences.textForKey("day"), preferences.textForKey("year"), preferences.textForKey("edition")};
    }
    /// Hidden files that a save left behind.
    [[nodiscard]] int leftBehind() const {
        int count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
            if (entry.path().filename().string().starts_with(".dinmala-")) ++count;
        }
        return count;
    }

    TemporaryFolder folder;
    Choices told;
};

const std::map<std::string_view, std::pair<Choices, Choices>> kWays{
    {"plain", {{"true", "false", ""}, {"true", "true", "first"}}},
    {"linked", {{"true", "false", ""}, {"true", "true", "first"}}},
    {"damaged", {{"", "", ""}, {"", "true", "first"}}},
    {"none", {{"", "", ""}, {"", "true", "first"}}}};

void choose(KeyFilePreferences& preferences) {
    preferences.setBoolForKey(true, "year");
    preferences.setTextForKey("first", "edition");
}

TEST(StorageFaults, ASaveThatFailsAnywhereLeavesWhatWasOrWhatIsToBe) {
    for (const auto& [way, states] : kWays) {
        const auto& [before, after] = states;
        for (const int error : {EIO, EINTR}) {
            int nth = 1;
            for (bool failed = true; failed; ++nth) {
                Kept kept(way);
                KeyFilePreferences preferences = kept.open();
                choose(preferences);
                bool saved = false;
                {
                    const Failing failing(nth, error);
                    saved = preferences.synchronize();
                    failed = Failing::happened();
                }
                const std::string where = std::string(way) + ", call " + std::to_string(nth) + ", " + errorText(error);
                EXPECT_EQ(kept.read(), saved ? after : before) << where;
                if (error == EINTR && (Failing::call() == "read" || Failing::call() == "write")) {
                    EXPECT_TRUE(saved) << where;  // tried again
                }
                EXPECT_EQ(kept.told.size(), !saved || way == "damaged" ? 1U : 0U) << where;
                EXPECT_EQ(kept.leftBehind(), 0) << where;
                EXPECT_EQ(std::filesystem::is_symlink(kept.folder.path(kFile)), way == "linked") << where;
                EXPECT_TRUE(preferences.boolForKey("year")) << where;
                EXPECT_TRUE(preferences.synchronize()) << where;
                EXPECT_EQ(kept.read(), after) << where;
                if (way == "damaged") {
                    EXPECT_EQ(kept.folder.read("preferences.ini.corrupt"), "not a key file") << where;
                }
            }
            EXPECT_GT(nth, 12) << way;  // the calls of a save were all tried
        }
    }
}

// A session that could not read the choices must not write its own over them.
TEST(StorageFaults, ALoadThatFailsAnywhereLosesNoChoice) {
    for (const std::string_view way : {"plain", "linked"}) {
        int nth = 1;
        for (bool failed = true; failed; ++nth) {
            Kept kept(way);
            std::optional<KeyFilePreferences> preferences;
            {
                const Failing failing(nth, EIO);
                preferences.emplace(kept.open());
                failed = Failing::happened();
            }
            const bool loaded = preferences->textForKey("day") == "true";
            if (!loaded) preferences->setBoolForKey(true, "year");  // as the shell does where nothing is chosen
            EXPECT_EQ(preferences->synchronize(), loaded) << nth;
            EXPECT_EQ(kept.told.size(), loaded ? 0U : 1U) << nth;
            EXPECT_EQ(kept.read(), kWays.at(way).first) << nth;
            EXPECT_EQ(preferences->reload(), !loaded) << nth;
            EXPECT_FALSE(preferences->boolForKey("year")) << nth;
            choose(*preferences);
            EXPECT_TRUE(preferences->synchronize()) << nth;
            EXPECT_EQ(kept.read(), kWays.at(way).second) << nth;
        }
        EXPECT_GT(nth, 5) << way;
    }
}

/// The shell with its preferences and a year's file on the disk: Mangsir 7 of that year has no event.
struct OnDisk {
    OnDisk() {
        YearAlmanac year = *currentEdition().almanac.numbers(BsYear{2083});
        for (YearDay& day : year.days) day.events.clear();
        kept.folder.write("years/2083.txt", yearFileText(year, [](std::uint16_t) { return std::string_view{}; }));
        kept.folder.write(kFile, "[display]\nday=true\nevent=true\nedition=current\n");
        Platform platform = shell.platform();
        platform.preferences = &preferences;
        platform.edition = [this](EditionId id) -> const Edition& {
            const Edition& edition = source.get(id);
            for (const std::string& problem : source.takeProblems()) kept.told.push_back(problem);
            return edition;
        };
        shell.delegate = std::make_unique<AppDelegate>(std::move(platform), shell.outlets());
        preferences.reload();
    }

    Kept kept{"none"};
    test::Shell shell{test::nepal(2026, 11, 23)};
    KeyFilePreferences preferences = kept.open();
    EditionSource source{{kept.folder.path("years")}};
};

TEST(StorageFaults, ARefreshThatFailsAnywhereTellsAndTheNextIsRight) {
    int nth = 1;
    for (bool failed = true; failed; ++nth) {
        OnDisk one;
        {
            const Failing failing(nth, EIO);
            one.shell.delegate->awakeFromNib();
            failed = Failing::happened();
        }
        EXPECT_TRUE(one.shell.title() == " ७ " || !one.kept.told.empty()) << nth << *one.shell.title();
        one.shell.delegate->updateData();
        EXPECT_EQ(one.shell.title(), " ७ ") << nth;
        EXPECT_EQ(one.kept.folder.read(kFile).find("[display]\nday=true\nevent=true\nedition=current\n"), 0U) << nth;
    }
    EXPECT_GT(nth, 10);
}

TEST(StorageFaults, MemoryThatEndsAnywhereEndsTheWorkAndNotTheChoices) {
    const auto runsOut = [](int nth, const auto& work) {
        calls::failAllocation(nth);
        try {
            work();
        } catch (const std::bad_alloc&) {
        }
        calls::failAllocation(0);
    };
    bool failed = true;
    for (int nth = 1; failed; ++nth) {
        Kept kept("linked");
        KeyFilePreferences preferences = kept.open();
        runsOut(nth, [&] {
            choose(preferences);
            preferences.synchronize();
            failed = false;
        });
        const auto& [before, after] = kWays.at("linked");
        EXPECT_TRUE(kept.read() == before || kept.read() == after) << nth;
        EXPECT_EQ(kept.leftBehind(), 0) << nth;
        choose(preferences);
        EXPECT_TRUE(preferences.synchronize()) << nth;
        EXPECT_EQ(kept.read(), after) << nth;
    }
    failed = true;
    int nth = 1;
    for (; failed; nth += 13) {  // a year's file takes some thousand
        OnDisk one;
        one.shell.delegate->awakeFromNib();
        std::filesystem::last_write_time(one.kept.folder.path("years/2083.txt"), {});  // it is read again
        runsOut(nth, [&] {
            one.shell.delegate->updateData();
            failed = false;
        });
        one.shell.delegate->updateData();
        EXPECT_EQ(one.shell.title(), " ७ ") << nth;
    }
    EXPECT_GT(nth, 1000);
}

/// A disk that has taken the first steps, of which the power left what was synced and some of the rest.
class Disk {
public:
    explicit Disk(std::string text) : data_{{0, text}}, synced_{{0, text}}, entries_{{kFile, 0}} {}

    void take(const calls::Step& step) {
        using Kind = calls::Step::Kind;
        switch (step.kind) {
            case Kind::create:
                data_[step.file].clear();
                synced_[step.file].clear();
                [[fallthrough]];
            case Kind::move:
            case Kind::remove:
                names_.push_back(step);
                break;
            case Kind::write:
                data_[step.file] += step.text;
                break;
            case Kind::sync:
                synced_[step.file] = data_[step.file];
                break;
            case Kind::syncFolder:
                entries_ = entriesAfter(names_.size());
                names_.clear();
                break;
        }
    }

    /// Changes of names that need not be on the disk yet.
    [[nodiscard]] std::size_t unsyncedNames() const { return names_.size(); }

    /// The file where so many of those are there, and so many quarters of what was written since a sync.
    [[nodiscard]] std::string textAfterCrash(std::size_t names, std::size_t quarters) const {
        const auto entries = entriesAfter(names);
        const auto entry = entries.find(kFile);
        if (entry == entries.end()) return {};
        const std::string& synced = synced_.at(entry->second);
        const std::string& all = data_.at(entry->second);
        return all.substr(0, synced.size() + (all.size() - synced.size()) * quarters / 4);
    }

private:
    using Entries = std::map<std::string, int>;

    [[nodiscard]] Entries entriesAfter(std::size_t count) const {
        const auto last = [](const std::string& path) { return std::filesystem::path(path).filename().string(); };
        Entries entries = entries_;
        for (std::size_t i = 0; i < count; ++i) {
            const calls::Step& step = names_[i];
            if (step.kind == calls::Step::Kind::create) entries[last(step.name)] = step.file;
            if (step.kind == calls::Step::Kind::move) entries[last(step.otherName)] = entries[last(step.name)];
            if (step.kind != calls::Step::Kind::create) entries.erase(last(step.name));
        }
        return entries;
    }

    std::map<int, std::string> data_, synced_;
    Entries entries_;                 ///< as the folder was synced last
    std::vector<calls::Step> names_;  ///< since
};

TEST(StorageFaults, APowerCutAtAnyStepLeavesAStateThatWasChosen) {
    Kept kept("plain");
    KeyFilePreferences preferences = kept.open();
    std::vector<std::string> states{kBefore};
    std::vector<std::size_t> savedAt{0};  // steps after which the state of the same place was promised
    {
        const calls::Recording recording;
        for (int i = 0; i < 200; ++i) {
            preferences.setBoolForKey(i % 2 == 0, "year");
            preferences.setTextForKey("number " + std::to_string(i), "edition");
            ASSERT_TRUE(preferences.synchronize());
            savedAt.push_back(calls::Recording::steps().size());
            states.push_back("");
        }
    }
    const std::vector<calls::Step> steps = calls::Recording::steps();
    EXPECT_GE(steps.size(), 1000U);

    // What each save wrote is what was read of the disk with all its steps.
    Disk whole(kBefore);
    std::size_t next = 1;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        whole.take(steps[i]);
        if (next < savedAt.size() && i + 1 == savedAt[next])
            states[next++] = whole.textAfterCrash(whole.unsyncedNames(), 4);
    }
    ASSERT_EQ(states.back(), kept.folder.read(kFile));

    Disk disk(kBefore);
    std::size_t promised = 0, crashes = 0;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        disk.take(steps[i]);
        while (promised + 1 < savedAt.size() && savedAt[promised + 1] <= i + 1) ++promised;
        for (std::size_t names = 0; names <= disk.unsyncedNames(); ++names) {
            for (std::size_t quarters = 0; quarters <= 4; ++quarters, ++crashes) {
                const std::string text = disk.textAfterCrash(names, quarters);
                ASSERT_TRUE(text == states[promised] || (promised + 1 < states.size() && text == states[promised + 1]))
                    << "step " << i << ", " << names << " names, " << quarters << " quarters: " << text;
            }
        }
    }
    EXPECT_GE(crashes, 5000U);
}

// Kills leave files behind; some mounts have no permissions and no sync.
TEST(StorageFaults, CleansUpAndSavesOnPoorFileSystems) {
    Kept kept("plain");
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(kept.folder.write(".dinmala-a1B2c3", "half"), old);
    std::filesystem::last_write_time(kept.folder.write(".dinmala-mine", "kept"), old);
    kept.folder.write(".dinmala-d4E5f6", "of a program that writes now");
    KeyFilePreferences preferences = kept.open();
    for (const char* call : {"fsync", "fchmod"}) {
        for (const int error : {EINVAL, ENOTSUP, EPERM}) {
            const Failing failing(call, error);
            const bool on = !preferences.boolForKey("day");
            preferences.setBoolForKey(on, "day");
            EXPECT_TRUE(preferences.synchronize()) << call << error;
            EXPECT_EQ(kept.read()[0], on ? "true" : "false");
        }
    }
    EXPECT_FALSE(kept.folder.has(".dinmala-a1B2c3"));
    EXPECT_TRUE(kept.folder.has(".dinmala-mine") && kept.folder.has(".dinmala-d4E5f6"));
}

}  // namespace
}  // namespace dinmala
