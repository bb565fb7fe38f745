// The page of a month: what its cells say and hear, where keys lead, what is told of a day and of a typed date.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "window/Conversion.h"
#include "window/DayDetails.h"
#include "window/UpcomingRows.h"

namespace dinmala {
namespace {

using namespace std::chrono;

const sys_days kToday{2026y / 11 / 23};  // 7 Mangsir 2083
constexpr PageLook kEnglish{Language::english, Digits::western};

Page page(EditionId edition = EditionId::current, sys_days today = kToday, PageLook look = kEnglish) {
    return {builtInEdition(edition), today, look};
}

/// The cell of a day that is on the page.
const Cell& cellOf(const Page& page, sys_days day) {
    return page.cells().at(static_cast<std::size_t>((day - page.cells().front().day).count()));
}

std::string detailsAt(Page page, sys_days day) {
    EXPECT_TRUE(page.goTo(day));
    return copyText(dayDetails(page));
}

/// Whatever was pressed: one chosen day of the table in its month, 42 days in a row from a Sunday on.
void expectWhole(const Page& page) {
    const BsCalendar& calendar = page.edition().calendar;
    ASSERT_TRUE(calendar.covers(page.chosen()));
    ASSERT_EQ(weekday{page.cells().front().day}, Sunday);
    unsigned own = 0;
    for (std::size_t i = 0; i < Page::kCells; ++i) {
        const Cell& cell = page.cells()[i];
        ASSERT_EQ(cell.day, page.cells().front().day + days{i});
        ASSERT_EQ(cell.chosen, i == page.chosenCell());
        ASSERT_EQ(cell.spoken.ends_with("outside the table"), !calendar.covers(cell.day));
        own += cell.otherMonth ? 0U : 1U;
    }
    ASSERT_EQ(cellOf(page, page.chosen()).day, page.chosen());
    ASSERT_EQ(own, calendar.daysIn(page.month()));
}

TEST(Page, SpeaksWhatItsCellsShow) {
    const Page english = page();
    EXPECT_EQ(english.title(), "Mangsir 2083");
    EXPECT_EQ(english.adMonths(), "Nov/Dec 2026");
    EXPECT_EQ(cellOf(english, kToday).spoken,
              "Monday, 7 Mangsir 2083, 23 November 2026, Shukla Chaturdashi, बैकुण्ठ चतुर्दशी, "
              "विष्णु बैकुण्ठ चतुर्दशी, शिव बैकुण्ठ चतुर्दशी, today");
    EXPECT_EQ(cellOf(english, kToday + days{7}).tithi, "Shashthi/ Saptami");
    EXPECT_EQ(cellOf(english, sys_days{2026y / 12 / 25}).event, "Christmas");
    const Page nepali = page(EditionId::current, kToday, {});
    EXPECT_EQ(nepali.title(), "मंसिर २०८३");
    EXPECT_EQ(nepali.weekDays()[6], "शनि");
    // The 7th tithi of this day sees no sunrise; the day has no event.
    const Cell& skipped = cellOf(nepali, sys_days{2026y / 11 / 30});
    EXPECT_EQ(skipped.tithi, "षष्ठी/ सप्तमी");
    EXPECT_EQ(skipped.spoken, "सोमवार, १४ मंसिर २०८३, ३० नोभेम्बर २०२६, कृष्ण षष्ठी, कृष्ण सप्तमी");
    // A public holiday is named, the festivals beside it are a mark.
    const Cell& holiday = cellOf(nepali, sys_days{2026y / 12 / 24});
    EXPECT_EQ(holiday.event, "किरांत पर्व / उधौली पूजा");
    EXPECT_TRUE(holiday.moreEvents && holiday.otherMonth && !holiday.today && !holiday.saturday);
    EXPECT_EQ(holiday.holiday, Holiday::national);
    EXPECT_TRUE(holiday.spoken.ends_with(", public holiday"));
    EXPECT_TRUE(cellOf(nepali, kToday + days{1}).spoken.ends_with(", holiday of a group or region"));
    const Cell& alone = cellOf(nepali, sys_days{2026y / 11 / 15});
    EXPECT_TRUE(alone.event == "छठ पर्व" && !alone.moreEvents);
    const Cell& festival = cellOf(nepali, sys_days{2026y / 12 / 5});  // one alone, and no holiday
    EXPECT_TRUE(festival.event.empty() && festival.moreEvents && festival.saturday);

    Page later = page();
    ASSERT_TRUE(later.goTo(BsYearMonth{BsYear{2097}, BsMonth{1}}));
    EXPECT_EQ(later.notes(), std::vector<std::string>{"provisional: Nepal has not published BS 2097"});
    std::set<std::string> grades;
    for (const Cell& cell : later.cells()) grades.insert(cell.spoken.substr(cell.spoken.rfind(", ") + 2));
    EXPECT_TRUE(grades.contains("not yet published"));
    EXPECT_TRUE(grades.contains("may be a day earlier or later"));
}

// From one end of the table to the other and back, by every key, in both editions; a flip that lost a month, or ran
// over an end, shows in the count.
TEST(Page, WalksToBothEndsAndNotBeyond) {
    for (const EditionId id : {EditionId::first, EditionId::current}) {
        const BsCalendar& calendar = builtInEdition(id).calendar;
        const bool months = id == EditionId::current;  // of one edition: a flip costs a millisecond without -O
        Page walked = page(id);
        ASSERT_TRUE(walked.goTo(months ? calendar.firstDay() : calendar.lastDay()));
        int moves = 0;
        for (; walked.press(months ? PageKey::monthForward : PageKey::yearBack); ++moves) {
            if (moves % 47 == 0) expectWhole(walked);
        }
        expectWhole(walked);
        EXPECT_EQ(moves, months ? 1211 : 100);
        EXPECT_EQ(walked.month(),
                  (months ? calendar.lastDate() : calendar.firstDate() + std::chrono::months{11}).yearMonth());
        EXPECT_TRUE(walked.press(PageKey::today));
        EXPECT_EQ(walked.chosen(), kToday);
        Page ends = page(id);
        ASSERT_TRUE(ends.goTo(calendar.firstDay()));
        for (const PageKey key : {PageKey::dayBack, PageKey::weekBack, PageKey::monthBack, PageKey::yearBack}) {
            EXPECT_FALSE(ends.press(key));
        }
        const Cell& before = ends.cells().front();  // the Sunday before the table's first Monday
        EXPECT_EQ(before.spoken, "Sunday, 12 April 1942, outside the table");
        EXPECT_TRUE(!before.date && before.bsDay.empty());
        ASSERT_TRUE(ends.goTo(calendar.lastDay()));
        for (const PageKey key :
             {PageKey::dayForward, PageKey::weekForward, PageKey::monthForward, PageKey::yearForward}) {
            EXPECT_FALSE(ends.press(key));
        }
        EXPECT_FALSE(ends.goTo(calendar.lastDay() + days{1}));
        EXPECT_FALSE(ends.goTo(BsYearMonth{BsYear{2100}, BsMonth{1}}));
        EXPECT_EQ(ends.chosen(), calendar.lastDay());
    }
    // Over months of 29 to 32 days the day stays, as far as the month has it; days and weeks cross their ends.
    Page long32 = page();
    ASSERT_TRUE(long32.goTo(*builtInEdition(EditionId::current).calendar.toDays(bsDate(2083, 3, 32))));
    EXPECT_TRUE(long32.press(PageKey::monthForward));
    EXPECT_EQ(long32.month(), (BsYearMonth{BsYear{2083}, BsMonth{4}}));
    EXPECT_EQ(cellOf(long32, long32.chosen()).bsDay, "31");
    EXPECT_TRUE(long32.press(PageKey::yearForward));
    EXPECT_EQ(long32.month(), (BsYearMonth{BsYear{2084}, BsMonth{4}}));
    EXPECT_TRUE(long32.press(PageKey::yearBack) && long32.press(PageKey::monthForward) &&
                long32.press(PageKey::monthBack));
    EXPECT_TRUE(long32.press(PageKey::dayForward));
    EXPECT_TRUE(long32.press(PageKey::weekForward));
    EXPECT_EQ(cellOf(long32, long32.chosen()).spoken.substr(0, 23), "Monday, 8 Bhadra 2083, ");
}

TEST(Page, FollowsTodayOverMidnightAndOutOfTheTable) {
    Page follows = page();
    follows.setToday(kToday + days{1});
    EXPECT_EQ(follows.chosen(), kToday + days{1});
    EXPECT_TRUE(cellOf(follows, kToday + days{1}).today);
    EXPECT_FALSE(cellOf(follows, kToday).today);
    follows.press(PageKey::dayBack);
    follows.setToday(kToday + days{2});
    EXPECT_EQ(follows.chosen(), kToday);  // somebody reads there
    EXPECT_TRUE(cellOf(follows, kToday + days{2}).today);

    Page outside = page(EditionId::current, sys_days{2050y / 1 / 1});
    expectWhole(outside);
    EXPECT_EQ(outside.chosen(), outside.edition().calendar.lastDay());
    EXPECT_EQ(outside.notes().front(), "today lies outside the table");
    EXPECT_EQ(outside.yearNotes().size(), outside.notes().size() - 1);  // nothing of today, as on paper
    EXPECT_EQ(upcomingRows(outside, UpcomingFilter::all).whyNone, "today lies outside the table");
    outside.press(PageKey::monthBack);
    EXPECT_TRUE(outside.press(PageKey::today));
    outside.setToday(kToday);
    EXPECT_EQ(outside.chosen(), kToday);
    EXPECT_TRUE(outside.notes().empty());
}

TEST(Page, SaysThatAYearHasNoLists) {
    Page first = page(EditionId::first);
    const std::string why = "there are no tithis and festivals for BS 2083; this edition has them for 2065 to 2071";
    EXPECT_EQ(first.notes(), std::vector<std::string>{why});
    first.setLook({});
    EXPECT_TRUE(first.notes().front().ends_with("BS २०८३; this edition has them for २०६५ to २०७१"));
    first.setLook(kEnglish);
    EXPECT_EQ(cellOf(first, kToday).spoken,
              "Monday, 8 Mangsir 2083, 23 November 2026, no tithi or festival is listed, today");
    EXPECT_NE(detailsAt(first, kToday).find("Note: " + why), std::string::npos);
    EXPECT_EQ(upcomingRows(first, UpcomingFilter::all).whyNone, why);
    EXPECT_EQ(upcomingRows(first, UpcomingFilter::holidays).whyNone, "this edition tells no holidays");
    first.setToday(sys_days{2013y / 11 / 1});
    EXPECT_EQ(first.title(), "Kartik 2070");
    EXPECT_FALSE(upcomingRows(first, UpcomingFilter::important).rows.empty());
    first.setEdition(currentEdition());
    EXPECT_TRUE(first.notes().empty());
    EXPECT_EQ(first.chosen(), sys_days{2013y / 11 / 1});
    // A shorter table: the chosen day is its last.
    constexpr std::array<std::uint8_t, 2> kLengths{31, 31};
    Edition shorter = currentEdition();
    shorter.calendar = *BsCalendar::make({BsYear{2069}, BsMonth{1}}, sys_days{2012y / 4 / 13}, kLengths);
    first.setEdition(shorter);
    expectWhole(first);
    EXPECT_EQ(first.chosen(), shorter.calendar.lastDay());
}

TEST(DayDetails, TellsADayWhole) {
    EXPECT_EQ(detailsAt(page(), kToday + days{7}),
              "BS: १४ मंसिर २०८३ · 14 Mangsir 2083\n"
              "AD: 30 November 2026 · ३० नोभेम्बर २०२६\n"
              "Weekday: सोमवार · Monday\n"
              "From today: in 7 days\n"
              "Tithi: Krishna Shashthi, from 13 Mangsir 09:48 to 07:40\n"
              "  Krishna Saptami, from 07:40 to 15 Mangsir 05:45\n"
              "Sunrise: 06:37\n");
    // Festivals stand before the tithi's times: they are what a cell has no room for.
    const std::string devanagari = detailsAt(page(EditionId::first, kToday, {}), sys_days{2013y / 11 / 3});
    EXPECT_NE(devanagari.find("\nTithi: औंसी, from १६ कार्तिक १९:४३ to १८:४५\n"), std::string::npos) << devanagari;
    EXPECT_LT(devanagari.find("\nFestivals: "), devanagari.find("\nTithi: ")) << devanagari;
    EXPECT_NE(detailsAt(page(), kToday).find("विष्णु बैकुण्ठ चतुर्दशी, may be a day earlier or later\n"), std::string::npos);
}

TEST(UpcomingRows, AreFewerWithEachFilter) {
    const Page today = page();
    const auto holidays = upcomingRows(today, UpcomingFilter::holidays).rows;
    const auto important = upcomingRows(today, UpcomingFilter::important).rows;
    ASSERT_FALSE(holidays.empty());
    EXPECT_LT(holidays.size(), important.size());
    EXPECT_LT(important.size(), upcomingRows(today, UpcomingFilter::all).rows.size());
    EXPECT_TRUE(std::all_of(holidays.begin(), holidays.end(),
                            [](const auto& row) { return row.holiday == Holiday::national; }));
    EXPECT_EQ(important.front().name + " | " + important.front().date + " | " + important.front().left,
              "Guru Nanak Jayanti | Tuesday, 8 Mangsir 2083 | tomorrow");
    EXPECT_EQ(holidays.front().left, "in 31 days");
}

TEST(Conversion, AnswersInTheOtherCalendarOrTellsWhichPartIsWrong) {
    const Page today = page();
    const std::string thisDay = "7 Mangsir 2083 = 23 November 2026, Monday";
    struct Case {
        std::string_view typed;
        std::vector<std::string> answers;
        std::string problem = {};
    };
    for (const Case& one : {
             Case{"२०८३-०८-०७", {thisDay}},
             {" 7 mangsir ", {thisDay}},
             {"मंसिर ७, २०८३", {thisDay}},
             {"२३ नोभेम्बर २०२६", {"23 November 2026 = 7 Mangsir 2083, Monday"}},
             {"Nov 23", {"23 November 2026 = 7 Mangsir 2083, Monday"}},
             {"2026-11-23", {"23 November 2026 = 7 Mangsir 2083, Monday", "23 Falgun 2026 = 6 March 1970, Friday"}},
             {"2013-02-31", {"31 Jestha 2013 = 13 June 1956, Wednesday"}},
             {"1999-01-01", {"1 January 1999 = 17 Poush 2055, Friday", "1 Baishakh 1999 = 13 April 1942, Monday"}},
             {"", {}},
             {" ", {}},
             {"Nov 31 2026", {}, "AD 2026-11-31: the month has days 1 to 30"},
             {"३२ मंसिर २०८३", {}, "BS 2083-08-32: the month has days 1 to 29"},
             {"2083-13-01", {}, "BS 2083-13-01: there is no month 13"},
             {"7 Mungsir 2083", {}, "\"Mungsir\" is not understood"},
             {"1 Baishakh 2101", {}, "BS 2101-01-01 lies outside the table, BS 1999 to 2099"},
             {"1900-01-01", {}, "AD 1900-01-01 lies outside the table, AD 1942-04-13 to 2043-04-13"},
             {"\033[31m", {}, "\"?[31m\" is not a date such as 2070-01-31"},
         }) {
        const Conversion told = convert(one.typed, today);
        std::vector<std::string> answers;
        for (const auto& answer : told.answers) answers.push_back(answer.text);
        EXPECT_EQ(answers, one.answers) << one.typed;
        EXPECT_EQ(told.problem, one.problem) << one.typed;
    }
}

}  // namespace
}  // namespace dinmala
