// Holds the almanac's data files to everything known of them, and shows that the check notices what is wrong.

#include "tests/tools/ModernSky.h"
#include "tools/ListCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace dinmala::tools {
namespace {

class AlmanacData : public testing::Test {
protected:
    static void SetUpTestSuite() {
        rules_ = new AlmanacRules{SOURCE_DIR};
        files_ = new AlmanacFiles{readAlmanac(SOURCE_DIR)};
    }
    static void TearDownTestSuite() {
        delete files_;
        delete rules_;
    }

    static AlmanacReport check(const AlmanacFiles& files, const Panchanga& panchanga = Panchanga{kFirstReckoning}) {
        return checkAlmanac(files, *rules_, panchanga);
    }

    /// Whether a failure begins with `what`.
    static bool caughtBy(const AlmanacReport& report, const std::string& what) {
        return std::any_of(report.failures.begin(), report.failures.end(),
                           [&what](const std::string& failure) { return failure.compare(0, what.size(), what) == 0; });
    }

    static inline AlmanacRules* rules_ = nullptr;
    static inline AlmanacFiles* files_ = nullptr;
};

// The 36 important events of 2070, each on its AD date by its rule alone, whatever the lists hold.
TEST_F(AlmanacData, RulesGiveTheImportantEventsOf2070) {
    const Panchanga panchanga{kFirstReckoning};
    const SkyYear sky{2070, rules_->calendar, panchanga};
    for (const auto& [day, id] : files_->important) {
        const auto days = rules_->festivals.daysOf(id, sky);
        EXPECT_TRUE(std::any_of(days.begin(), days.end(), [day = day](const Occurrence& one) {
            return one.day == day;
        })) << id;
    }
}

// What a hand makes with make_almanac is what the check holds the files to.
TEST_F(AlmanacData, AYearsListIsMadeWithItsImportantDays) {
    const Panchanga panchanga{kFirstReckoning};
    const Dated important = readImportant(SOURCE_DIR, *rules_, 2070);
    EXPECT_EQ(important.size(), 36U);
    EXPECT_TRUE(readImportant(SOURCE_DIR, *rules_, 2069).empty());
    EXPECT_EQ(eventFile(2070, *rules_, panchanga, files_->eventNames, important), files_->eventText[2070]);
}

TEST_F(AlmanacData, EveryEventIdHasOneRuleOrIsSaidToBeUnknown) {
    Names names = readFile(SOURCE_DIR, "almanac/data/event_names_current.txt", readNames);
    names.insert(files_->eventNames.begin(), files_->eventNames.end());
    for (const auto& [id, name] : names) {
        ASSERT_TRUE(rules_->festivals.all().contains(id)) << id;
    }
    EXPECT_EQ(rules_->festivals.all().size(), names.size());
    for (const auto& [year, tokens] : files_->events) {
        for (const Token& token : tokens) {
            const auto rule = rules_->festivals.all().find(token.id);
            EXPECT_TRUE(rule == rules_->festivals.all().end() || rule->second.trust != Trust::unknown)
                << year << " " << token.text();
        }
    }
}

// Each mutation is a mistake that a hand on the data files could make. The text of the files is made to follow, so
// that it is not the comparison with the generator that notices.
class Mutation : public AlmanacData {
protected:
    Mutation() : files(*files_) {}

    Token& event(int year, const std::string& text) { return find(files.events[year], text); }
    Token& tithi(int year, const std::string& text) { return find(files.tithis[year], text); }

    static Token& find(std::vector<Token>& tokens, const std::string& text) {
        const auto found =
            std::find_if(tokens.begin(), tokens.end(), [&text](const Token& token) { return token.text() == text; });
        EXPECT_NE(found, tokens.end()) << text;
        return *found;
    }

    AlmanacFiles files;
};

TEST_F(Mutation, ADayShiftedIsCaught) {
    event(2070, "280662").day = 29;  // Vijaya Dashami a day late
    tithi(2068, "270123").day = 28;
    const AlmanacReport report = check(files);
    EXPECT_TRUE(caughtBy(report, "event 2070 290662 is not on a day of its rule"));
    EXPECT_TRUE(caughtBy(report, "dated 2013-10-14 id 62"));
    EXPECT_TRUE(caughtBy(report, "tithi 2068 280123 is not in the sky"));
}

TEST_F(Mutation, TwoTithisExchangedAreCaught) {
    auto& tithis = files.tithis[2070];
    std::swap(tithis[100].id, tithis[101].id);
    EXPECT_TRUE(caughtBy(check(files), "tithi 2070 "));
}

TEST_F(Mutation, AWrongIdIsCaught) {
    event(2070, "280662").id = 61;  // the day's neighbour
    tithi(2070, "01014").id = 22;   // the name of the dark 4th in a bright half
    const AlmanacReport report = check(files);
    EXPECT_TRUE(caughtBy(report, "event 2070 280661 is not on a day of its rule"));
    EXPECT_TRUE(caughtBy(report, "tithi 2070 010122 is not in the sky"));
}

// One byte of a file is enough for the comparison with what the rules make.
TEST_F(Mutation, AFileThatTheRulesDoNotMakeIsCaught) {
    files.eventText[2068].back() = ' ';
    EXPECT_TRUE(caughtBy(check(files), "events-2068.txt is not what make_almanac makes"));
}

TEST_F(Mutation, AModernReckoningInPlaceOfTheClassicalOneIsCaught) {
    const AlmanacReport report = check(*files_, Panchanga{panchanga::modern::kModern});
    const auto wrong = std::count_if(report.failures.begin(), report.failures.end(),
                                     [](const std::string& failure) { return failure.compare(0, 6, "tithi ") == 0; });
    EXPECT_GT(wrong, 100);
    EXPECT_TRUE(caughtBy(report, "event "));
    EXPECT_TRUE(caughtBy(report, "tithi-2070.txt is not what"));
}

}  // namespace
}  // namespace dinmala::tools
