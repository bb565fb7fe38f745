// Holds the almanac's data files to everything known of them, and shows that the check notices what is wrong.

#include "AlmanacCheck.h"
#include "ModernSky.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <set>
#include <string>

namespace dinmala::panchanga {
namespace {

class AlmanacData : public testing::Test {
protected:
    static void SetUpTestSuite() {
        rules_ = new AlmanacRules{DINMALA_ROOT};
        files_ = new AlmanacFiles{readAlmanac(DINMALA_ROOT)};
    }
    static void TearDownTestSuite() {
        delete files_;
        delete rules_;
    }

    static AlmanacReport check(const AlmanacFiles& files, const Panchanga& panchanga = Panchanga{}) {
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

TEST_F(AlmanacData, HoldsToEverythingKnown) {
    const AlmanacReport report = check(*files_);
    std::cout << report.text();
    EXPECT_TRUE(report.passed());
    EXPECT_EQ(report.tithiTokens, 2340);
    EXPECT_EQ(report.untrue, (std::vector<std::string>{"2065 160120", "2066 01015", "2066 010112", "2066 080217"}));
    EXPECT_EQ(report.eventTokens, 2329);
    int graded = 0;
    for (const auto& [grade, count] : report.byGrade) {
        graded += count;
    }
    EXPECT_EQ(graded, 2329);
    EXPECT_GE(report.datedAgree, 40);
    EXPECT_EQ(report.datedElse.size(), 2U);
}

// The 36 important events of 2070, each on its AD date by its rule alone, whatever the lists hold.
TEST_F(AlmanacData, RulesGiveTheImportantEventsOf2070) {
    const Panchanga panchanga;
    const SkyYear sky{2070, rules_->calendar, panchanga};
    int agree = 0;
    for (const auto& [day, id] : files_->important) {
        const auto days = rules_->festivals.daysOf(id, sky);
        const bool found =
            std::any_of(days.begin(), days.end(), [day = day](const Occurrence& one) { return one.day == day; });
        EXPECT_TRUE(found) << id;
        agree += found;
    }
    EXPECT_EQ(agree, 36);
}

TEST_F(AlmanacData, EveryEventIdHasOneRuleOrIsSaidToBeUnknown) {
    int unknown = 0;
    for (const auto& [id, name] : files_->eventNames) {
        ASSERT_TRUE(rules_->festivals.all().contains(id)) << id;
        unknown += rules_->festivals.all().at(id).trust == Trust::unknown;
    }
    EXPECT_EQ(rules_->festivals.all().size(), files_->eventNames.size());
    std::cout << unknown << " of " << files_->eventNames.size() << " festivals have no rule that can be trusted\n";
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
    EXPECT_TRUE(caughtBy(report, "fact: important 2070: all 36"));
    EXPECT_TRUE(caughtBy(report, "dated 2013-10-14 id 62"));
    EXPECT_TRUE(caughtBy(report, "fact: tithis 2068: 14 days with several tokens"));
}

TEST_F(Mutation, TwoTokensSwappedAreCaught) {
    auto& events = files.events[2069];
    std::swap(events[100], events[140]);
    EXPECT_TRUE(caughtBy(check(files), "fact: events 2069: days ascend"));
    files = *files_;
    auto& tithis = files.tithis[2070];
    std::swap(tithis[100].id, tithis[101].id);  // still in order, two days exchanged
    EXPECT_TRUE(caughtBy(check(files), "tithi 2070 "));
    files = *files_;
    auto& first = files.events[2070];
    std::swap(first[0], first[1]);  // within a day
    EXPECT_TRUE(caughtBy(check(files), "fact: day 0101 of 2070"));
}

TEST_F(Mutation, AWrongIdIsCaught) {
    event(2070, "280662").id = 61;  // the day's neighbour
    tithi(2070, "01014").id = 22;   // the name of the dark 4th in a bright half
    const AlmanacReport report = check(files);
    EXPECT_TRUE(caughtBy(report, "event 2070 280661 is not on a day of its rule"));
    EXPECT_TRUE(caughtBy(report, "fact: important 2070: all 36"));
    EXPECT_TRUE(caughtBy(report, "fact: tithis 2070: first"));
    EXPECT_TRUE(caughtBy(report, "tithi 2070 010122 is not in the sky"));
}

// No single token can be lost, doubled or moved by a day without a word: one in every forty is tried.
TEST_F(Mutation, NoTokenGoesMissingUnseen) {
    for (const int year : {2066, 2070}) {
        for (std::size_t i = 0; i < files_->events[year].size(); i += 40) {
            files = *files_;
            files.events[year].erase(files.events[year].begin() + static_cast<std::ptrdiff_t>(i));
            const AlmanacReport report = check(files);
            EXPECT_FALSE(report.passed()) << year << " " << i;
        }
    }
}

// One byte of a file is enough for the comparison with what the rules make.
TEST_F(Mutation, AFileThatTheRulesDoNotMakeIsCaught) {
    files.eventText[2068].back() = ' ';
    EXPECT_TRUE(caughtBy(check(files), "events-2068.txt is not what make_almanac makes"));
}

TEST_F(Mutation, AModernReckoningInPlaceOfTheClassicalOneIsCaught) {
    const AlmanacReport report = check(*files_, Panchanga{kKathmandu, modern::kModern});
    const auto wrong = std::count_if(report.failures.begin(), report.failures.end(),
                                     [](const std::string& failure) { return failure.compare(0, 6, "tithi ") == 0; });
    std::cout << "with a modern reckoning " << wrong << " tithi tokens are not in the sky, and "
              << report.failures.size() << " findings fail\n";
    EXPECT_GT(wrong, 100);
    EXPECT_TRUE(caughtBy(report, "event "));
    EXPECT_TRUE(caughtBy(report, "tithi-2070.txt is not what"));
}

}  // namespace
}  // namespace dinmala::panchanga
