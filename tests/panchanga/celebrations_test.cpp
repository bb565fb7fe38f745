// What the current edition lists: where its rules put festivals, what takes their place, in what order and how surely;
// and the days that Nepal declared or kept.

#include "base/DateText.h"
#include "tests/panchanga/Truth.h"
#include "tools/YearMaker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace dinmala::panchanga {
namespace {

using namespace std::chrono;

const tools::CurrentRules& current() {
    static const tools::CurrentRules rules{SOURCE_DIR};
    return rules;
}

std::string text(sys_days day) { return dateText(year_month_day{day}); }

/// Small rules, and what they list.
class Celebrations : public testing::Test {
protected:
    /// The days of festival `id`, each with what is left of its certainty and holiday: "2013-10-14 sure national".
    std::vector<std::string> days(int id, int year, const std::string& rules, const std::string& corrections = {},
                                  const std::string& holidays = {}) {
        std::vector<std::string> told;
        for (const Celebration& one : list(year, rules, corrections, holidays)) {
            if (one.festival->id == id) {
                static const std::string kCertainties[]{"", " sure", " near", " open"};
                static const std::string kDaysOff[]{"", " observed", " group", " national"};
                told.push_back(text(one.day) + kCertainties[static_cast<int>(one.grade)] +
                               kDaysOff[static_cast<int>(one.dayOff)]);
            }
        }
        return told;
    }

    const std::vector<Celebration>& list(int year, const std::string& rules, const std::string& corrections = {},
                                         const std::string& holidays = {}) {
        festivals = {};
        std::istringstream ruleFile{rules}, correctionFile{corrections}, holidayFile{holidays};
        EXPECT_FALSE(festivals.read(ruleFile, "rules.txt")) << rules;
        EXPECT_FALSE(festivals.readCorrections(correctionFile, "corrections.txt")) << corrections;
        EXPECT_FALSE(festivals.readHolidays(holidayFile, "holidays.txt")) << holidays;
        const SkyYear sky{year, current().calendar, current().panchanga};
        return found = festivals.celebrations(sky);
    }

    using Days = std::vector<std::string>;
    Festivals festivals;
    std::vector<Celebration> found;
};

TEST_F(Celebrations, BeginAndEndAndGiveWay) {
    const std::string rule = "5 | known | bs 01-01, from 2070, until 2072 | test\n";
    EXPECT_EQ(days(5, 2069, rule), Days{});
    EXPECT_EQ(days(5, 2070, rule), Days{"2013-04-14 sure"});
    EXPECT_EQ(days(5, 2072, rule), Days{"2015-04-14 sure"});
    EXPECT_EQ(days(5, 2073, rule), Days{});
    EXPECT_EQ(days(5, 2070, "5 | known | bs 01-01, edition first | test\n"), Days{});

    const std::string names =
        "1 | known | bs 01-01 | test\n2 | known | bs 01-01, as 1 | test\n3 | known | bs 01-01, behind 4 | test\n"
        "4 | known | bs 01-01, weekday Sunday | test\n5 | known | bs 01-02, as 1 | test\n";
    EXPECT_EQ(days(2, 2070, names), Days{});
    EXPECT_EQ(days(3, 2070, names), Days{});                   // a Sunday
    EXPECT_EQ(days(3, 2071, names), Days{"2014-04-14 sure"});  // a Monday
    EXPECT_EQ(days(5, 2070, names), Days{"2013-04-15 sure"});  // another day
    const std::string better = "1 | known | bs 01-01, behind 2 | test\n2 | known | bs 01-01, as 1 | test\n";
    EXPECT_EQ(days(1, 2070, better), Days{});
    EXPECT_EQ(days(2, 2070, better).size(), 1U);

    // Full moons with an eclipse before midnight, and without.
    const std::string moves =
        "1 | known | lunar Shrawan bright 5 sunrise | test\n"
        "2 | known | lunar Shrawan bright 15 sunrise, moves 1 2017-08-07 | test\n";
    EXPECT_EQ(days(2, 2074, moves), Days{"2017-07-28 near"});
    EXPECT_EQ(days(2, 2075, moves), Days{"2018-08-26 sure"});

    // From the day of lamps in 2081 to that of brothers, whose days are three apart.
    const std::string between =
        "1 | known | lunar Kartik dark 30 evening | test\n2 | known | lunar Kartik bright 1 midday | test\n"
        "3 | known | lunar Kartik bright 2 afternoon | test\n4 | known | between 1 3, behind 2 | test\n";
    EXPECT_EQ(days(4, 2081, between), Days{"2024-11-01 sure"});
    EXPECT_EQ(days(4, 2078, between), Days{});
    EXPECT_EQ(days(4, 2085, between), Days{});  // a month lies between

    const std::string last = "1 | known | every 8 midday, last by 05-19 | test\n";
    EXPECT_EQ(days(1, 2072, last), Days{"2015-09-05 sure"});  // a dark 8th, on Bhadra 19
    EXPECT_EQ(days(1, 2077, last), Days{"2020-08-26 sure"});  // a bright one
}

TEST_F(Celebrations, FollowADatedSource) {
    const std::string rules =
        "1 | known | lunar Kartik dark 13 sunrise | test\n2 | known | lunar Kartik dark 13 sunrise, as 1 | test\n"
        "3 | known | dated | test\n";
    const std::string source = "2019-10-25 | 1 3 | the committee\n";
    EXPECT_EQ(days(1, 2076, rules, source), Days{"2019-10-25"});
    EXPECT_EQ(days(2, 2076, rules, source), Days{});  // the other name goes where the first went
    EXPECT_EQ(days(3, 2076, rules, source), Days{"2019-10-25"});
    EXPECT_EQ(days(3, 2077, rules, source), Days{});
    EXPECT_EQ(days(1, 2077, rules, source), Days{"2020-11-13 sure"});
    const Celebration& moved = list(2076, rules, source).front();
    ASSERT_TRUE(moved.reckonedDay);
    EXPECT_EQ(text(*moved.reckonedDay), "2019-10-26");
    EXPECT_EQ(moved.correction->source, "the committee");
    EXPECT_EQ(festivals.celebrations(SkyYear{2076, current().calendar, current().panchanga}, false).size(), 1U);
    EXPECT_EQ(days(1, 2083, "1 | known | lunar Ashwin bright 8 sunrise | test\n",
                   "2026-10-18 | 1 | the committee\n2026-10-19 | 1 | the committee\n"),
              (Days{"2026-10-18", "2026-10-19"}));  // kept on two days
    // Twice in a BS year: the source is of the one next to it.
    EXPECT_EQ(days(1, 2070, "1 | known | lunar Chaitra bright 9 midday, later | test\n", "2014-04-08 | 1 | test\n"),
              (Days{"2013-04-19 sure", "2014-04-08"}));
    EXPECT_EQ(days(1, 2070, "1 | known | lunar Bhadra bright 3 sunrise | test\n", "2014-01-08 | 1 | test\n"),
              (Days{"2013-09-08 sure", "2014-01-08"}));  // too far to be the same
}

TEST_F(Celebrations, ComeWithTheHolidaysFirst) {
    const std::string rules =
        "1 | known | bs 01-01 | un test\n2 | inferred | bs 01-01 | test\n3 | named | bs 01-01 | test\n"
        "4 | known | bs 01-01 | test\n5 | known | bs 01-01 | test\n6 | known | bs 01-01 | test\n"
        "7 | known | bs 01-01 | test\n";
    const std::string holidays =
        "4 | observed | 2070 2072-2073 | test\n5 6 | group | 2070 | test\n6 | national | 2071- | test\n";
    std::vector<int> order;
    for (const Celebration& one : list(2070, rules, {}, holidays)) {
        order.push_back(one.festival->id);
    }
    EXPECT_EQ(order, (std::vector{5, 6, 4, 7, 3, 1, 2}));
    EXPECT_EQ(days(4, 2071, rules, {}, holidays), Days{"2014-04-14 sure"});
    EXPECT_EQ(days(4, 2073, rules, {}, holidays), Days{"2016-04-13 sure observed"});
    EXPECT_EQ(days(6, 2099, rules, {}, holidays).front().substr(10), " sure national");
    EXPECT_EQ(days(2, 2070, rules), Days{"2013-04-14 near"});
    // No surer than the BS date, where they are fixed by it.
    list(2070, "1 | known | bs 02-01 | test\n2 | known | with 1, shift -1 | test\n3 | known | ad 12-25 | test\n");
    EXPECT_TRUE(found[0].byBsDate && found[1].byBsDate && !found[2].byBsDate);
}

// The tithis are those of the printed almanac, so the margins can be told by hand.
TEST_F(Celebrations, KnowHowNearTheirMomentIsToAnotherDay) {
    // The bright 1st of Kartik 2077 began at 11:27, and midday was at 11:48.
    list(2077, "1 | known | lunar Kartik bright 1 midday, later | test\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(text(found[0].day), "2020-11-15");
    EXPECT_EQ(found[0].tithi.number, 1);
    EXPECT_NEAR(found[0].margin, 21.0, 1.0);
    EXPECT_NEAR((found[0].moment - found[0].tithi.begin) * 1440.0, 21.0, 1.0);
    EXPECT_EQ(found[0].grade, Grade::near);
    // The dark 1st of Bhadra 2070 ended at 05:46, after a sunrise at 05:38.
    list(2070, "1 | known | lunar Bhadra dark 1 sunrise | test\n");
    EXPECT_EQ(text(found[0].day), "2013-08-22");
    EXPECT_NEAR(found[0].margin, 8.0, 1.0);
    // That of 2083 holds two middays in a row: whether the first counts decides where 'later' is not said.
    EXPECT_EQ(days(1, 2083, "1 | known | lunar Kartik bright 1 midday, later | test\n"), Days{"2026-11-10 sure"});
    EXPECT_EQ(days(1, 2083, "1 | known | lunar Kartik bright 1 midday, earlier | test\n"), Days{"2026-11-09 near"});
    EXPECT_EQ(days(1, 2083, "1 | known | lunar Kartik bright 1 midday | test\n"), Days{"2026-11-09 near"});
    EXPECT_EQ(days(1, 2066, "1 | known | lunar Kartik bright 1 midday | test\n"), Days{"2009-10-18 sure"});
    EXPECT_EQ(days(1, 2066, "1 | known | lunar Kartik bright 1 midday, near by sunrise | test\n"),
              Days{"2009-10-18 near"});
    // 2085 has a month too many and one too few: Tihar to Poush are open, Dashain and Magh are not.
    EXPECT_EQ(days(1, 2085, "1 | known | lunar Ashwin bright 10 sunrise | test\n"), Days{"2028-09-28 sure"});
    EXPECT_EQ(days(1, 2085, "1 | known | lunar Kartik dark 30 evening | test\n"), Days{"2028-10-17 open"});
    EXPECT_EQ(days(1, 2085, "1 | known | lunar Kartik bright 2 afternoon, later | test\n"), Days{"2028-11-18 open"});
    EXPECT_EQ(days(1, 2085, "1 | known | lunar Poush bright 1 sunrise | test\n").front().substr(10), " open");
    EXPECT_EQ(days(1, 2085, "1 | known | lunar Magh bright 5 sunrise | test\n").front().substr(10), " sure");
}

// Days that Nepal declared or kept, by the rules alone: each tells a moment, a 'later' or a first year from its
// absence.
TEST(CurrentFestivals, AreWhenNepalKeepsThem) {
    struct Kept {
        int year, id;
        const char* day;  // AD
        const char* source;
    };
    std::map<int, std::vector<Celebration>> years;
    for (const Kept& kept :
         {Kept{2077, 14, "2021-04-11", "news of that day, khabarhub.com/2021/11/259997"},
          Kept{2080, 53, "2023-09-19", "news of that day, thehimalayantimes.com/ampArticle/1022731"},
          Kept{2076, 124, "2019-10-28", "the calendar committee, nepalekhabar.com/2019/10/91516"},
          Kept{2076, 122, "2019-10-28", "Mha Puja is one day with it"},
          Kept{2074, 159, "2018-02-14", "the gazette of 2074: Phalgun 2"},
          Kept{2078, 47, "2021-08-30", "the cabinet, lalitkhabar.com/2021/08/19/43363"},
          Kept{2081, 64, "2024-10-16", "the calendar committee, bishwashkhabar.com/news/3628"},
          Kept{2076, 68, "2019-10-29", "the calendar committee, newsnepal.com/archives/110894"},
          Kept{2078, 108, "2021-09-19", "Nepal Rajpatra 70/47: Indra Jatra"},
          Kept{2082, 449, "2025-09-15", "a calendar of the year, nepalluxurytours.com/holidays-in-nepal"},
          Kept{2082, 234, "2025-06-07", "news of that day, kha.bar/news/1271471"},
          Kept{2078, 199, "2022-03-03", "Nepal Rajpatra 70/47: Gyalpo Lhosar"},
          Kept{2074, 260, "2017-07-28", "Nag Panchami, because of an eclipse"},
          Kept{2074, 99, "2017-07-28", "Raksha Bandhan with it"},
          Kept{2081, 664, "2024-11-01", "the Tihar holiday is Kartik 15 to 19, nepalkairan.com/news/2858"},
          Kept{2081, 665, "2024-11-04", "the same"},
          Kept{2079, 46, "2022-08-12",
               "the calendar committee: one day with Janai Purnima, pradeshportal.com/news/19797"},
          Kept{2079, 260, "2022-08-12", "the notice of 2079: Shrawan 27"},
          Kept{2080, 649, "2023-08-24", "the committee and the government, nigaranikhabar.com/2023/09/05/24915"},
          Kept{2081, 61, "2024-10-11", "the calendar committee: the 8th and the 9th on one day"},
          Kept{2082, 68, "2025-10-23", "the calendar committee, waveritam.com/?p=11762"},
          Kept{2073, 650, "2016-09-19", "the first year of the constitution's day"},
          Kept{2071, 649, "2014-09-02", "the notice of 2071, koirala.com.np/content/12295.html: Bhadra 17"},
          Kept{2071, 660, "2014-10-05", "the notice of 2071: the Dashain holiday is Ashwin 15 to 19"},
          Kept{2075, 69, "2018-11-13", "the cabinet, kharibot.com/news-details/12511/2018-03-29: Kartik 27"},
          Kept{2083, 651, "2026-09-08", "the notice of 2083: Bhadra 23"}}) {
        std::vector<Celebration>& year = years[kept.year];
        if (year.empty()) {
            year = current().festivals.celebrations(SkyYear{kept.year, current().calendar, current().panchanga}, false);
        }
        EXPECT_TRUE(std::any_of(
            year.begin(), year.end(),
            [&kept](const Celebration& one) { return one.festival->id == kept.id && text(one.day) == kept.day; }))
            << kept.id << " on " << kept.day << ": " << kept.source;
    }
    EXPECT_EQ(std::count_if(years[2081].begin(), years[2081].end(),
                            [](const Celebration& one) { return one.festival->id == 664; }),
              1);
    const auto off = [](int id, int year) { return current().festivals.dayOff(id, year); };
    EXPECT_EQ(off(650, 2072), Holiday::none);  // Constitution Day: a holiday from 2073
    EXPECT_EQ(off(650, 2073), Holiday::national);
    EXPECT_EQ(off(21, 2072), Holiday::national);  // Loktantra Diwas: left out since
    EXPECT_EQ(off(21, 2074), Holiday::none);
    EXPECT_EQ(off(7, 2075), Holiday::none);  // National Democracy Day: left out, observed, back
    EXPECT_EQ(off(7, 2076), Holiday::observed);
    EXPECT_EQ(off(7, 2078), Holiday::national);
    EXPECT_EQ(off(17, 2078), Holiday::group);  // Christmas
    EXPECT_EQ(off(17, 2079), Holiday::national);
    EXPECT_EQ(off(665, 2081), Holiday::national);
    EXPECT_EQ(off(59, 2075), Holiday::none);  // Phulpati: left out in that year alone
    EXPECT_EQ(off(660, 2074), Holiday::national);
    EXPECT_EQ(off(660, 2076), Holiday::none);
    EXPECT_EQ(off(425, 2068), Holiday::national);  // Yomari Punhi
    EXPECT_EQ(off(649, 2074), Holiday::national);  // Gaura: for all, then where it is kept
    EXPECT_EQ(off(649, 2076), Holiday::group);
    EXPECT_EQ(off(52, 2083), Holiday::group);  // Teej: women
}

// The corrections hold every day, and the rules alone nearly all of them, so that years without a source can be
// trusted.
TEST(CurrentFestivals, AgreeWithTheirDatedSources) {
    int sources = 0, ruled = 0, agree = 0;
    for (int year = 2063; year <= 2083; ++year) {
        for (const Celebration& one :
             current().festivals.celebrations(SkyYear{year, current().calendar, current().panchanga})) {
            if (one.correction != nullptr) {
                ++sources;
                EXPECT_EQ(one.day, one.correction->day);
                ruled += one.tithi.number != 0 ? 1 : 0;
                agree += one.tithi.number != 0 && !one.reckonedDay ? 1 : 0;
            }
        }
    }
    EXPECT_GE(sources, 200);
    EXPECT_GE(agree * 100, ruled * 93) << agree << " of " << ruled;
}

TEST(CurrentFestivals, AgreeWithTheDeclaredAndListedDays) {
    const std::vector<std::string> facts = truth("facts.csv", 1);
    if (facts.empty()) GTEST_SKIP() << "the facts are not beside this source tree";
    std::map<std::tuple<bool, int, std::string>, int> days;  // corrected or not, id, day
    for (int year = 2062; year <= 2078; ++year) {
        const SkyYear sky{year, current().calendar, current().panchanga};
        for (const bool corrected : {false, true}) {
            for (const Celebration& one : current().festivals.celebrations(sky, corrected)) {
                ++days[{corrected, one.festival->id, text(one.day)}];
            }
        }
    }
    std::map<std::string, int> rows, byRule;
    for (const std::string& line : facts) {
        const std::vector<std::string> row = cells(line);
        const int id = row[2] == "Gaura Parva" ? 649 : std::stoi(row[3]);
        ++rows[row[4]];
        byRule[row[4]] += days.contains({false, id, row[0]}) ? 1 : 0;
        EXPECT_TRUE(row[4] == "listed" || days.contains({true, id, row[0]})) << line;
    }
    EXPECT_GT(rows["declared"], 100);
    for (const auto& [kind, count] : rows) {
        EXPECT_GE(byRule[kind] * 100, count * 98) << kind << ": " << byRule[kind] << " of " << count;
    }
}

}  // namespace
}  // namespace dinmala::panchanga
