// The rule files: what the grammar refuses, and where a rule puts its festival.

#include "base/DateText.h"
#include "tools/RuleFiles.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace dinmala::panchanga {
namespace {

using namespace std::chrono;

/// The complaint about the second line of a rules file that holds only `line` there, or nothing.
std::string complaint(const std::string& line) {
    std::istringstream rules{"# a comment\n" + line + "\n"};
    return Festivals{}.read(rules, "rules.txt").value_or(FileError{}).text;
}

TEST(FestivalRules, RefuseALineThatBreaksTheGrammarWithFileAndLine) {
    struct Bad {
        const char* line;
        const char* says;
    };
    for (const auto& [line, says] :
         {Bad{"5 | known | bs 01-01", "a line is 'id | trust | rule | source'"},
          Bad{"x | known | bs 01-01 | law", "'x' is no id"},
          Bad{"5 | surely | bs 01-01 | law", "'surely' is none of"},
          Bad{"5 | known | bs 13-01 | law", "'13-01' is no month and day"},
          Bad{"5 | known | bs 0101 | law", "'0101' is no month and day"},
          Bad{"5 | known | at 01-01 | law", "'at' begins no rule"},
          Bad{"5 | known | on 2013-02-30 | law", "'2013-02-30' is no date"},
          Bad{"5 | known | | law", "missing rule"},
          Bad{"5 | known | lunar Asoj bright 1 | law", "'Asoj' is no lunar month"},
          Bad{"5 | known | lunar Magh bright 16 | law", "'16' is no tithi from 1 to 15"},
          Bad{"5 | known | lunar Magh dark 20 | law", "a dark half ends with 30"},
          Bad{"5 | known | lunar Magh dark 8 noon | law", "'noon' is no part of the day"},
          Bad{"5 | known | lunar Magh dark 8 sunrise sunset | law", "'sunset' is one word too many"},
          Bad{"5 | known | first Funday from bs 09-01 | law", "'Funday' is no weekday"},
          Bad{"5 | known | with 52 | law", "no line above"},
          Bad{"5 | known | bs 01-01, as 4 | law", "no line above"},
          Bad{"5 | known | bs 01-01, often | law", "'often' is no modifier"},
          Bad{"5 | known | bs 01-01, shift 11 | law", "'11' is no shift"},
          Bad{"5 | known | bs 01-01, last 05-19 | law", "'last' goes on with 'by'"},
          Bad{"5 | known | bs 01-01, near sunrise | law", "'near' goes on with 'by'"},
          Bad{"5 | known | bs 01-01, edition second | law", "'second' is no edition"},
          Bad{"5 | known | bs 01-01, from 72 | law", "'72' is no BS year"},
          Bad{"5 | known | bs 01-01, moves 4 2017-08-07 | law", "no line above"},
          Bad{"5 | known | unknown | law", "unknown exactly when"},
          Bad{"5 | unknown | bs 01-01 | law", "unknown exactly when"},
          Bad{"5 | known | bs 01-01 | ", "the source is missing"},
          Bad{"5 | known | bs 01-01 | law\n5 | known | bs 01-01 | law", "has a line already"}}) {
        const std::string said = complaint(line);
        EXPECT_NE(said.find(says), std::string::npos) << line << " -> " << said;
        EXPECT_EQ(said.compare(0, 10, "rules.txt:"), 0) << said;
    }
    EXPECT_EQ(complaint("5 | known | first Sunday from bs 09-01, shift -1, only 2070 2071 | law"), "");

    const auto beside = [](auto read, const std::string& line) {
        std::istringstream rules{"5 | known | bs 01-01 | law\n"}, file{line};
        Festivals festivals;
        EXPECT_FALSE(festivals.read(rules, "rules.txt"));
        return (festivals.*read)(file, "file.txt").value_or(FileError{}).text;
    };
    for (const auto& [line, says] : {Bad{"2013-04-14 | 5", "file.txt:1: a line is 'AD date | id | source'"},
                                     Bad{"2013-04-31 | 5 | x", "file.txt:1: '2013-04-31' is no date"},
                                     Bad{"2013-04-14 | 5 6 | x", "file.txt:1: id 6 has no rule"}}) {
        EXPECT_EQ(beside(&Festivals::readCorrections, line).find(says), 0U) << line;
    }
    for (const auto& [line, says] :
         {Bad{"5 | national | 2079-", "file.txt:1: a line is 'id | kind | years | source'"},
          Bad{"5 | royal | 2079- | x", "file.txt:1: 'royal' is no kind of holiday"},
          Bad{"5 | group | 2079-2078 | x", "file.txt:1: '2079-2078' is no list of BS years"},
          Bad{"6 | group | 2079- | x", "file.txt:1: id 6 has no rule"},
          Bad{"5 | group | 2079- | x\n5 | national | 2080 | x", "file.txt:2: id 5 has a line for those years"}}) {
        EXPECT_EQ(beside(&Festivals::readHolidays, line).find(says), 0U) << line;
    }
}

class RuleDays : public testing::Test {
protected:
    /// The days of one rule in a BS year, as AD dates with their grades.
    std::vector<std::string> days(const std::string& rule, int year) {
        std::istringstream text{"1 | known | lunar Bhadra bright 3 | test\n9 | known | " + rule + " | test\n"};
        Festivals festivals;
        EXPECT_FALSE(festivals.read(text, "rules.txt")) << rule;
        const SkyYear sky{year, rules.calendar, panchanga};
        std::vector<std::string> found;
        for (const Occurrence& one : festivals.daysOf(9, sky)) found.push_back(dateText(year_month_day{one.day}));
        return found;
    }

    using Days = std::vector<std::string>;
    tools::AlmanacRules rules{SOURCE_DIR};
    Panchanga panchanga{kFirstReckoning};
};

// Each case is a day that Nepal kept, so a rule kind that counts, shifts or filters wrongly misses it.
TEST_F(RuleDays, AreWhereNepalKeptThem) {
    EXPECT_EQ(days("bs 01-01", 2070), Days{"2013-04-14"});
    EXPECT_EQ(days("bs 01-01, shift -1", 2070), Days{"2014-04-13"});  // the eve of the next year
    EXPECT_EQ(days("ad 12-25", 2070), Days{"2013-12-25"});
    EXPECT_EQ(days("on 2009-07-22 2010-01-15 2011-01-01", 2066), (Days{"2009-07-22", "2010-01-15"}));
    EXPECT_EQ(days("lunar Ashwin bright 10", 2070), Days{"2013-10-14"});
    EXPECT_EQ(days("lunar Chaitra bright 9 midday, later", 2070), (Days{"2013-04-19", "2014-04-08"}));  // twice a year
    EXPECT_EQ(days("lunar Bhadra dark 8 midnight", 2068), Days{"2011-08-21"});
    EXPECT_EQ(days("lunar Phalgun bright 15 evening", 2070), Days{"2014-03-16"});
    EXPECT_EQ(days("with 1, shift -1", 2070), Days{"2013-09-07"});  // the eve of Teej
    EXPECT_EQ(days("first Saturday from ad 09-08", 2069), Days{"2012-09-08"});
    EXPECT_EQ(days("first Saturday from ad 09-09", 2069), Days{"2012-09-15"});
    EXPECT_EQ(days("lunar Ashwin bright 10, never 2070", 2070), Days{});
    EXPECT_EQ(days("lunar Ashwin bright 10, only 2070", 2070), Days{"2013-10-14"});
    EXPECT_EQ(days("lunar Ashwin bright 10, but 2013-10-15", 2070), Days{"2013-10-15"});
    EXPECT_EQ(days("lunar Ashwin bright 10, but 2013-10-17", 2070), Days{"2013-10-14"});  // too far to be the same
}

TEST_F(RuleDays, KeepExtraMonthsApart) {
    EXPECT_EQ(days("adhika bright 1 sunrise", 2069), Days{"2012-08-18"});
    EXPECT_EQ(days("adhika dark 30 sunrise", 2069), Days{"2012-09-16"});
    EXPECT_EQ(days("adhika bright 1 sunrise", 2070), Days{});
    EXPECT_EQ(days("lunar Bhadra bright 3", 2069), Days{"2012-09-18"});         // after the extra month
    EXPECT_EQ(days("lunar Bhadra dark 30 sunrise", 2069), Days{"2012-08-17"});  // before it
    EXPECT_EQ(days("every bright 8 sunrise", 2069).size(), 12U);                // the extra month too
    EXPECT_EQ(days("every bright 8 sunrise, weekday Monday", 2069), (Days{"2012-10-22", "2013-02-18"}));
    EXPECT_EQ(days("every 11 sunrise", 2070).size(), 25U);
}

// A moon that never entered a sign twice in 27 days, and never skipped one.
TEST_F(RuleDays, FollowTheMoonThroughTheStars) {
    const Days entries = days("moon enters 300", 2070);
    EXPECT_EQ(entries.size(), 13U);
    EXPECT_EQ(entries.front(), "2013-05-03");
    EXPECT_EQ(entries[1], "2013-05-30");  // at 01:32 of the next date: the day runs to the sunrise
}

}  // namespace
}  // namespace dinmala::panchanga
