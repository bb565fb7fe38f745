// Notices of festivals as the shell gives them: chosen in the menu, kept over restarts, with their sentences and
// buttons.
#include <gtest/gtest.h>

#include "base/DateText.h"
#include "tests/support/FakePlatform.h"

namespace dinmala {
namespace {

using test::nepal;
using test::Shell;
using Strings = std::vector<std::string>;

class FakeNotifier : public Notifier {
public:
    [[nodiscard]] bool ready() const override { return isReady; }
    void show(const Notice& notice, std::function<void(bool)> taken,
              std::function<void(const std::string&, const std::string&)> chosen) override {
        notices.push_back(notice);
        answer = std::move(taken);
        choose = std::move(chosen);
    }
    bool isReady = true;
    std::vector<Notice> notices;
    std::function<void(bool)> answer;
    std::function<void(const std::string&, const std::string&)> choose;
};

class FestivalNotices : public testing::Test {
protected:
    void start(const char* when = "") {
        if (*when != '\0') shell.preferences.texts["tell"] = when;
        Platform platform = shell.platform();
        platform.edition = [](EditionId id) -> const Edition& { return builtInEdition(id); };
        platform.notifier = &notifier;
        platform.changeState = [this](const ChangeText& change) {
            const auto text = change(kept);
            if (text && broken.empty()) kept = *text;
            return text ? broken : "";
        };
        platform.showDay = [this](std::chrono::sys_days day, const std::string& token) {
            shown.push_back(dateText(day) + " " + token);
        };
        platform.tell = [this](const std::string& message) { said.push_back(message); };
        Outlets outlets = shell.outlets();
        outlets.tellMenuItem = &above;
        outlets.tellNeverMenuItem = &rows[0];
        outlets.tellEveningMenuItem = &rows[1];
        outlets.tellMorningMenuItem = &rows[2];
        outlets.tellHolidaysMenuItem = &rows[3];
        outlets.tellAllMenuItem = &rows[4];
        outlets.tellLeftMenuItem = &rows[5];
        shell.delegate = std::make_unique<AppDelegate>(platform, outlets);
        shell.delegate->launch();
    }
    /// Wakes the machine at a moment.
    void goTo(Moment moment) {
        shell.now = moment;
        shell.runLoop.woke();
    }
    /// How many notices there are after that.
    std::size_t noticesAt(Moment moment) {
        goTo(moment);
        return notifier.notices.size();
    }
    [[nodiscard]] std::string marks() const {
        std::string result;
        for (const MenuItem& row : rows) result += row.state() == kOnState ? '1' : '0';
        return result;
    }
    [[nodiscard]] Strings titles() const {
        Strings result;
        for (const Notice& notice : notifier.notices) result.push_back(notice.title);
        return result;
    }

    test::MachineZoneGuard zone{"Asia/Kathmandu"};
    Shell shell{nepal(2026, 10, 16, 17, 58)};
    FakeNotifier notifier;
    MenuItem above, rows[6];
    std::string kept, broken;
    Strings shown, said;
};

TEST_F(FestivalNotices, ComeOnceChosenAndNotBefore) {
    start();
    EXPECT_EQ(marks(), "100100");
    EXPECT_FALSE(above.isHidden());
    EXPECT_EQ(noticesAt(nepal(2026, 10, 17, 9, 0)), 0u);
    shell.delegate->tellInEvening(nullptr);
    EXPECT_EQ(marks(), "010100");
    ASSERT_EQ(titles(), Strings{"Today: फूलपाति"});  // at once: the evening has passed
    EXPECT_EQ(notifier.notices[0].text, "शनिवार ३१ आश्विन २०८३\npublic holiday\nTomorrow: महाअष्टमी");
    shell.delegate->tellInMorning(nullptr);
    shell.delegate->tellOfAll(nullptr);
    EXPECT_EQ(marks(), "001010");
    EXPECT_EQ(shell.preferences.texts["tell"] + " " + shell.preferences.texts["tell_of"], "morning all");
    EXPECT_EQ(noticesAt(nepal(2026, 10, 18, 9, 0)), 1u);  // told the day before
    EXPECT_EQ(noticesAt(nepal(2026, 10, 19, 7, 0)), 2u);
    shell.delegate->tellNever(nullptr);
    EXPECT_EQ(noticesAt(nepal(2026, 10, 20, 9, 0)), 2u);
    EXPECT_EQ(kept, "told 2026-10-17\ntold 2026-10-18\ntold 2026-10-19\n");
}

TEST_F(FestivalNotices, AreInTheLookThatIsChosen) {
    shell.preferences.texts = {{"tell", "evening"}, {"language", "english"}, {"digits", "western"}};
    start();
    goTo(nepal(2026, 10, 17, 9, 0));
    ASSERT_EQ(titles(), Strings{"Today: Phulpati"});
    EXPECT_EQ(notifier.notices[0].text, "Saturday 31 Ashwin 2083\npublic holiday\nTomorrow: Maha Ashtami");
}

// Not at the start, when a desktop may have nobody to show it yet; and what was told stays told.
TEST_F(FestivalNotices, OutliveTheProgram) {
    shell.now = nepal(2026, 10, 17, 9, 0);
    start("morning");
    EXPECT_TRUE(notifier.notices.empty());
    EXPECT_EQ(noticesAt(nepal(2026, 10, 17, 9, 1)), 1u);
    start();
    EXPECT_EQ(noticesAt(nepal(2026, 10, 17, 9, 2)), 1u);

    // Another Dinmala was faster. Lines that are no one's stay, and a damaged one hides no other, nor a day.
    kept = "told 2026-09-49\nleft x\n\xff\nfrom a later version\ntold 2026-10-18";
    EXPECT_EQ(noticesAt(nepal(2026, 10, 18, 9, 2)), 1u);
    goTo(nepal(2026, 10, 19, 9, 2));
    EXPECT_EQ(kept, "told 2026-09-49\nleft x\n\xff\nfrom a later version\ntold 2026-10-18\ntold 2026-10-19\n");

    // A text that grew for years loses its oldest days alone.
    kept = "left 10\n";
    for (int i = 0; i < 500; ++i) kept += "told 2020-01-01\n";
    goTo(nepal(2026, 10, 20, 9, 2));
    EXPECT_EQ(kept.size(), std::string{"left 10\n"}.size() + 400 * std::string{"told 2020-01-01\n"}.size());
    EXPECT_TRUE(kept.starts_with("left 10\n") && kept.ends_with("told 2026-10-20\n"));
}

TEST_F(FestivalNotices, WaitForSomebodyWhoShowsThem) {
    start("morning");
    ASSERT_EQ(noticesAt(nepal(2026, 10, 17, 9, 0)), 1u);
    notifier.isReady = false;
    notifier.answer(false);
    EXPECT_EQ(kept, "");
    EXPECT_EQ(noticesAt(nepal(2026, 10, 17, 9, 1)), 1u);
    notifier.isReady = true;
    goTo(nepal(2026, 10, 17, 9, 2));
    notifier.answer(true);
    EXPECT_EQ(notifier.notices.size(), 2u);
    EXPECT_EQ(noticesAt(nepal(2026, 10, 17, 9, 3)), 2u);
    EXPECT_TRUE(said.empty());
}

TEST_F(FestivalNotices, HaveButtons) {
    start("morning");
    EXPECT_TRUE(rows[5].isHidden());
    ASSERT_EQ(noticesAt(nepal(2026, 10, 17, 9, 0)), 1u);
    ASSERT_EQ(notifier.notices[0].actions.size(), 2u);
    notifier.choose("default", "token");
    EXPECT_EQ(shown, Strings{"2026-10-17 token"});
    notifier.choose("leave", "");
    notifier.choose("something else", "");
    EXPECT_EQ(kept, "told 2026-10-17\nleft 59\n");
    EXPECT_FALSE(rows[5].isHidden());
    shell.delegate->tellOfLeft(nullptr);
    EXPECT_EQ(kept, "told 2026-10-17\n");
    EXPECT_TRUE(rows[5].isHidden());
}

// The menu of another Dinmala takes back what was left out; a text that cannot be read says nothing.
TEST_F(FestivalNotices, LearnWhatIsTakenBackElsewhere) {
    shell.preferences.texts["tell"] = "morning";
    kept = "told 2026-10-11\nleft 59\n";
    start();
    goTo(nepal(2026, 10, 17, 9, 0));
    kept = "";
    goTo(nepal(2026, 10, 17, 9, 1));
    EXPECT_TRUE(notifier.notices.empty());
    kept = "told 2026-10-11\n";
    goTo(nepal(2026, 10, 17, 9, 2));
    EXPECT_EQ(titles(), Strings{"Today: फूलपाति"});
    goTo(nepal(2026, 10, 17, 9, 3));
    EXPECT_TRUE(rows[5].isHidden());
}

// A home that cannot be written: told once in this run all the same, and said once that it may come again.
TEST_F(FestivalNotices, SayWhenWhatWasToldCannotBeKept) {
    broken = "/state: no space";
    start("morning");
    for (int minute = 0; minute < 5; ++minute) goTo(nepal(2026, 10, 17, 9, minute));
    goTo(nepal(2026, 10, 18, 9, 0));
    EXPECT_EQ(titles(), (Strings{"Today: फूलपाति", "Today: महाअष्टमी"}));
    ASSERT_EQ(said.size(), 1u);
    EXPECT_TRUE(said[0].ends_with(": /state: no space")) << said[0];
}

}  // namespace
}  // namespace dinmala
