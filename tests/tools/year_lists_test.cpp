// The year lists: reading and writing them, and making them from small rules whose outcome can be told by hand.

#include "tools/ListCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace dinmala::tools {
namespace {

/// The error that `read` throws, or nothing.
template <typename Read>
std::string errorOf(Read read) {
    try {
        read();
        return {};
    } catch (const FileError& error) {
        return error.text;
    }
}

TEST(YearLists, ComeBackAsTheyWereWritten) {
    const std::string text = "0101 428 5 542\n3001 216 216  # 216: twice\n";
    std::istringstream file{"# head\n" + text};
    const std::vector<Token> tokens = readYearList(file, "list.txt");
    ASSERT_EQ(tokens.size(), 5U);
    EXPECT_EQ(tokens[1].text(), "01015");
    EXPECT_EQ(tokens[4].note, "216: twice");
    std::vector<Token> plain{{1, 1, 428, {}}, {1, 1, 5, {}}, {1, 30, 216, "once"}, {1, 30, 7, "again"}};
    EXPECT_EQ(writeYearList(plain), "0101 428 5\n3001 216 7  # 216: once; 7: again\n");
    for (const char* bad : {"101 5", "0101", "0101 x", "0l01 5", "0101 1000"}) {
        std::istringstream wrong{std::string("# head\n") + bad + "\n"};
        const std::string error = errorOf([&] { (void)readYearList(wrong, "list.txt"); });
        EXPECT_EQ(error.compare(0, 11, "list.txt:2:"), 0) << bad << " -> " << error;
    }
}

TEST(Names, HaveAnIdAndABar) {
    for (const char* line : {"5 name", "5", "x|name", "|name"}) {
        std::istringstream file{std::string("# names\n") + line};
        EXPECT_EQ(errorOf([&] { (void)readNames(file, "names.txt"); }), "names.txt:2: no id and name") << line;
    }
}

class TithiLists : public testing::Test {
protected:
    /// The year's list as lines, under the plain names and `lines`.
    std::string list(const std::string& lines, int year) {
        std::string text;
        for (int tithi = 1; tithi <= 15; ++tithi) {  // bright as they count, dark 100 more
            text += "plain " + std::to_string(tithi) + " " + std::to_string(tithi) + " " + std::to_string(tithi + 100) +
                    "\n";
        }
        std::istringstream file{text + "plain 30 30 30\njoined 201 1 2\njoined 213 13 14\n" + lines};
        return writeYearList(TithiRules{file, "tithis.txt"}.list(year, rules.calendar, Panchanga{kFirstReckoning}));
    }

    static bool holds(const std::string& text, const std::string& line) {
        return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
    }

    AlmanacRules rules{SOURCE_DIR};
};

// 2068 skips a dark 2nd on day 6 of month 1, a dark 10th on day 29 of it, and a bright 2nd on day 13 of month 5.
TEST_F(TithiLists, SayASkippedTithiAsTheYearWants) {
    const std::string sunrise = list("skipped 2068 sunrise\n", 2068);
    EXPECT_TRUE(holds(sunrise, "0601 101"));
    EXPECT_EQ(std::count(sunrise.begin(), sunrise.end(), '\n'), 365);
    EXPECT_TRUE(holds(list("skipped 2068 both\n", 2068), "0601 101 102"));
    const std::string joined = list("skipped 2068 joined\n", 2068);
    EXPECT_TRUE(holds(joined, "0601 201"));
    EXPECT_FALSE(holds(joined, "2901 110 111"));  // no joined name: sunrise only
    const std::string first = list("skipped 2068 joined 1\n", 2068);
    EXPECT_TRUE(holds(first, "0601 201"));
    EXPECT_TRUE(holds(first, "1305 1 2"));  // after the first, both
    EXPECT_TRUE(holds(list("skipped 2068 joined\nboth 2068 01-06\n", 2068), "0601 101 102"));
}

TEST_F(TithiLists, TakeVariantsObservancesAndExceptions) {
    EXPECT_TRUE(holds(list("variant 2070 bright 4 77\n", 2070), "0101 77"));
    EXPECT_FALSE(holds(list("variant 2069 bright 4 77\n", 2070), "0101 77"));
    EXPECT_TRUE(holds(list("observance 2070 Vaishakh bright 3 77\n", 2070), "3001 77"));
    const std::string covered = list("cover 2070 02-01 02-03\nempty 2070 02-02\n", 2070);
    EXPECT_EQ(std::count(covered.begin(), covered.end(), '\n'), 2);
    EXPECT_TRUE(holds(list("add 2070 01-01 88 because\n", 2070), "0101 4 88  # 88: because"));
    EXPECT_TRUE(holds(list("stands 2070 01-01 88 because\n", 2070), "0101 88  # 88: because"));
}

TEST_F(TithiLists, RefuseALineOfAnotherForm) {
    for (const char* bad : {"plain 31 1 1", "joined 201 1", "variant 2070 4 77", "observance 2070 Baisakh bright 3 7",
                            "skipped 2070 never", "cover 2070 02-01", "empty 2070 0202", "adds 2070 01-01 8 x",
                            "both 2070 01-06 01-07"}) {
        const std::string error = errorOf([&] { (void)list(bad, 2070); });
        EXPECT_EQ(error.compare(0, 14, "tithis.txt:19:"), 0) << bad << " -> " << error;
    }
    std::istringstream file{"plain 1 1 1\n"};
    EXPECT_EQ(errorOf([&] { TithiRules{file, "tithis.txt"}; }), "tithis.txt: a tithi has no plain name");
}

class EventLists : public testing::Test {
protected:
    /// The list of 2070 under a plan, with ten festivals: 1 to 4 of 2069, 5 to 8 of 2070, 9 and 10 of later years.
    std::string list(const std::string& plan, const Dated& important = {}) {
        std::istringstream rulesText{
            "1 | known | bs 01-10 | test\n2 | inferred | bs 01-10 | test\n3 | named | every bright 8 sunrise | test\n"
            "4 | named | bs 01-10 | test\n5 | known | bs 01-01 | test\n6 | inferred | bs 02-05 | test\n"
            "7 | known | lunar Chaitra bright 9 midday, later | test\n8 | unknown | unknown | test\n"
            "9 | known | bs 03-03 | test\n10 | known | bs 01-10, as 1 | test\n"};
        Festivals festivals;
        EXPECT_FALSE(festivals.read(rulesText, "rules.txt"));
        std::istringstream planText{"year 2069 1 1 1 4\nyear 2070 " + plan};
        const EventPlans plans{planText, "years.txt"};
        Names names;
        for (int id = 1; id <= 10; ++id) {
            names[id] = "event " + std::to_string(id);
        }
        names[4] = names[1];  // one name under two ids
        const SkyYear sky{2070, rules.calendar, panchanga};
        return writeYearList(plans.list(sky, festivals, names, important));
    }

    AlmanacRules rules{SOURCE_DIR};
    Panchanga panchanga{kFirstReckoning};
};

TEST_F(EventLists, TakeWhatIsGivenThenTheYearsOwnThenOlderOnes) {
    EXPECT_EQ(list("1 1 5 8\n"), "1001 1\n");  // an older one that is known comes with the year's own
    EXPECT_EQ(list("3 3 5 8\n"), "0101 5\n0601 7\n1001 1\n");
    EXPECT_EQ(list("5 5 5 8\n"), "0101 5\n0501 3\n0601 7\n1001 1\n0502 6\n");
    EXPECT_EQ(list("6 5 5 8\n"), "0101 5\n0501 3\n0601 7\n1001 1\n0502 6\n2512 7\n");  // twice in the year: first
    EXPECT_EQ(list("7 6 5 8\n"), "0101 5\n0501 3\n0601 7\n1001 1 2\n0502 6\n2512 7\n");
    EXPECT_EQ(list("8 7 5 8\nlater 9\n"), "0101 5\n0501 3\n0601 7\n1001 1 2\n0502 6\n0303 9\n2512 7\n");
}

TEST_F(EventLists, KeepTheDaysThatAreFixed) {
    EXPECT_EQ(list("3 3 5 8\nwhole 1001 2 1\nfirst 0101 5\n").compare(0, 16, "0101 5\n1001 2 1\n"), 0);
    EXPECT_EQ(list("2 1 5 8\ntwice 0101 5\n"), "0101 5 5\n");
    EXPECT_EQ(list("1 1 5 8\nquiet 0101 3001\n"), "2512 7\n");
    EXPECT_EQ(list("1 1 5 8\nstands 0702 99 odd\n"), "0702 99  # 99: odd\n");
    EXPECT_EQ(list("3 3 5 8\nfull 1001 2\nday 0101 5\n"), "0101 5\n1001 1 2\n");
    EXPECT_EQ(list("2 2 5 8\nlast 1001 1\nday 1001 2\n"), "1001 2 1\n");
    using namespace std::chrono;
    EXPECT_EQ(list("1 1 5 8\n", {{sys_days{2013y / May / 19}, 6}}), "0502 6\n");
}

TEST_F(EventLists, SayWhatTheRulesCannotFill) {
    const auto error = [this](const std::string& plan) { return errorOf([&] { (void)list(plan); }); };
    EXPECT_EQ(error("9 9 5 8\n"), "years.txt:2: 2070: 6 ids and 9 tokens found, 9 and 9 are wanted");
    EXPECT_EQ(error("5 5 1 8\nday 0101 1\n"), "years.txt:2: 2070: no rule puts 1 on 0101");
    EXPECT_EQ(error("5 5 5 8\nfull 1001 5\n"), "years.txt:2: 2070: 1001 holds 2 tokens, 5 are wanted");
    for (const char* bad : {"day 1001", "whole 9901 5", "full 1001", "quiet 0101", "stands 0101 x y", "later x",
                            "days 0101 5", "important a b"}) {
        EXPECT_EQ(error(std::string("5 5 5 8\n") + bad + "\n").compare(0, 12, "years.txt:3:"), 0) << bad;
    }
}

// Two ids with one name never share a day; two names of one festival only where a full day cannot do without.
TEST_F(EventLists, ListAFestivalOnceADay) {
    EXPECT_NE(list("10 6 5 8\nlater 10\n").find("1001 1 2\n"), std::string::npos);
    EXPECT_NE(list("5 5 5 8\nlater 10\nfull 1001 3\n").find("1001 1 2 10\n"), std::string::npos);
}

}  // namespace
}  // namespace dinmala::tools
