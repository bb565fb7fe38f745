// The current edition's years: what a year's file says of its days, and how sure it says to be.

#include "tools/YearMaker.h"

#include "almanac/YearFile.h"
#include "panchanga/DaySky.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/RuleFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace dinmala::tools {
namespace {

class Years : public testing::Test {
protected:
    static const CurrentRules& rules() {
        static const CurrentRules kRules{SOURCE_DIR};
        return kRules;
    }

    static const YearDay& day(const YearAlmanac& year, unsigned month, unsigned dayOfMonth) {
        return *std::find_if(year.days.begin(), year.days.end(), [&](const YearDay& one) {
            return one.date.month == BsMonth{month} && one.date.day == BsDay{dayOfMonth};
        });
    }

    static std::optional<Grade> grade(const YearAlmanac& year, int id) {
        for (const YearDay& one : year.days) {
            for (const EventEntry& entry : one.events) {
                if (entry.id == id) return entry.grade;
            }
        }
        return std::nullopt;
    }
};

// Printed calendars of BS 2076 have the 9th on its first day and the 11th on the second, so the 10th is skipped; those
// of 2079 the dark 6th on 2022-10-16, that ran out within minutes of sunrise.
TEST_F(Years, HaveTheTithisOfPrintedCalendarsWithTheirGrades) {
    const YearAlmanac year2076 = makeYear(2076, rules());
    EXPECT_EQ(day(year2076, 1, 1).tithi, 9);
    EXPECT_EQ(day(year2076, 1, 1).skipped, 10);
    EXPECT_EQ(day(year2076, 1, 2).tithi, 11);
    EXPECT_EQ(day(year2076, 1, 2).skipped, 0);
    const YearAlmanac year2079 = makeYear(2079, rules());
    EXPECT_EQ(day(year2079, 6, 30).tithi, 21);
    EXPECT_EQ(day(year2079, 6, 30).tithiGrade, Grade::open);
    // A tithi that ends 0.6 minutes after the next sunrise may as well be skipped; so may one that ends 0.8 after.
    EXPECT_EQ(day(makeYear(2084, rules()), 1, 5).tithiGrade, Grade::open);
    EXPECT_NE(day(makeYear(2082, rules()), 7, 24).tithiGrade, Grade::sure);
    int sure = 0, near = 0;
    for (const YearDay& one : year2079.days) {
        EXPECT_EQ(one.dateGrade, Grade::published);
        sure += one.tithiGrade == Grade::sure ? 1 : 0;
        near += one.tithiGrade == Grade::near ? 1 : 0;
    }
    // A tithi's end is as likely at any minute of the day: 50 of 1440 minutes are near sunrise, 4 of them open.
    EXPECT_NEAR(near, 365.0 * 46.0 / 1440.0, 10.0);
    EXPECT_GT(sure, 330);
}

TEST_F(Years, SayWhichDatesAndFestivalsAreProvisional) {
    EXPECT_EQ(rules().lastPublished, 2083);
    EXPECT_TRUE(makeYear(2083, rules()).published);
    const YearAlmanac year = makeYear(2085, rules());
    EXPECT_FALSE(year.published);
    for (const YearDay& one : year.days) {
        const SolarMonth month = rules().panchanga.solarMonth(2085, static_cast<int>(unsigned{one.date.month}));
        EXPECT_EQ(one.dateGrade == Grade::sure, month.margin() > 25.0) << unsigned{one.date.month};
    }
    // Laxmi Puja and Bhai Tika stand between the extra month and the lost one of that year; Phagu comes after both, and
    // a festival of summer before.
    for (const int id : {66, 68}) EXPECT_EQ(grade(year, id), Grade::open) << id;
    EXPECT_TRUE(grade(year, 52) && grade(year, 52) != Grade::open);  // Teej
}

// When Nepal publishes a year that ends a day later, the next month gives the day, and no later one moves.
TEST_F(Years, AreReckonedOnFromWhereThePublishedOnesEnd) {
    Result<MonthLengths> months = parseMonthLengths(fileText(SOURCE_DIR, "almanac/rules/months.txt"));
    ASSERT_TRUE(months);
    ++months->lengths.back();
    const BsCalendar calendar = wholeCalendar(*months, rules().panchanga);
    EXPECT_EQ(calendar.daysIn({BsYear{2084}, BsMonth{1}}) + 1, rules().calendar.daysIn({BsYear{2084}, BsMonth{1}}));
    EXPECT_EQ(calendar.toDays(bsDate(2084, 2, 1)), rules().calendar.toDays(bsDate(2084, 2, 1)));
    // A row with a slip in it: the second month of 2083 a day short, and the first edition's 2002.
    EXPECT_EQ(checkMonths(rules().calendar, 2083, rules().panchanga), "");
    months->lengths.back() -= 1;
    std::uint8_t& jestha = months->lengths[months->lengths.size() - 11];
    --jestha;
    EXPECT_EQ(checkMonths(wholeCalendar(*months, rules().panchanga), 2083, rules().panchanga).substr(0, 10),
              "2083-03-01");
    ++jestha;
    EXPECT_EQ(checkMonths(readCalendar(SOURCE_DIR, "calendar/data/month_lengths.txt"), 2080, rules().panchanga),
              "2002-08-01 is -1 days from where the Sun begins the month\n");
    months->lengths.back() = 26;
    EXPECT_THROW((void)wholeCalendar(*months, rules().panchanga), FileError);
}

// What explains a day must say the same as the day's line.
TEST_F(Years, AgreeWithTheReasonsOfTheirDays) {
    const SkyYear sky{2084, rules().calendar, rules().panchanga};
    for (const YearDay& one : makeYear(2084, rules()).days) {
        const DayReasons reasons = reasonsOf(one.day, sky, rules().festivals);
        ASSERT_EQ(reasons.sky.tithi.tithi.number, one.tithi);
        ASSERT_EQ(reasons.sky.margin > 25.0, one.tithiGrade == Grade::sure);
        ASSERT_EQ(reasons.celebrations.size(), one.events.size());
        for (std::size_t i = 0; i < one.events.size(); ++i) {
            ASSERT_EQ(reasons.celebrations[i].festival->id, one.events[i].id);
        }
        ASSERT_EQ(reasons.month.first, rules().calendar.toDays({one.date.year, one.date.month, BsDay{1}}));
    }
}

// The check that the tests run (make_almanac check) must notice a hand on a file and a file that is gone.
TEST_F(Years, AreRefusedWhenTheyAreNotWhatTheRulesMake) {
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    const std::string root = folder.path();
    fs::create_directories(folder.path("almanac"));
    fs::copy(SOURCE_DIR "/almanac/years", folder.path("almanac/years"), fs::copy_options::recursive);
    EXPECT_EQ(checkYearFiles(root, rules()), "");
    std::ofstream{folder.path(yearPath(2070)), std::ios::app} << "# a remark\n";
    fs::remove(folder.path(yearPath(2071)));
    EXPECT_EQ(checkYearFiles(root, rules()),
              "almanac/years/2070.txt is not what the rules make\nalmanac/years/2071.txt is missing\n");
}

}  // namespace
}  // namespace dinmala::tools
