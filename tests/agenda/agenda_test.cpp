// What the faces share: months as pages, what is still to come.
#include <gtest/gtest.h>

#include "agenda/MonthPage.h"
#include "agenda/ReadDay.h"
#include "agenda/Sentences.h"
#include "agenda/Summary.h"
#include "agenda/Today.h"
#include "agenda/Upcoming.h"

namespace dinmala {
namespace {

using namespace std::chrono;

// A window that is opened at a day assumes a BS date: "2026-10-17" would be one of 1970.
TEST(ReadDay, TakesWhatIsHandedOverForThatDayAlone) {
    for (const Edition* edition : {&firstEdition(), &currentEdition()}) {
        const BsCalendar& calendar = edition->calendar;
        for (const sys_days day : {sys_days{2026y / 10 / 17}, calendar.firstDay(), calendar.lastDay()}) {
            const auto found = readDay(dayArgument(day), CalendarKind::bs, calendar);
            ASSERT_TRUE(found) << dayArgument(day);
            EXPECT_EQ(found->day, day);
        }
    }
}

// Every day of every month stands once, under its weekday.
TEST(MonthPage, HoldsEachDayUnderItsWeekDay) {
    for (const BsCalendar::Month& month : firstEdition().calendar.months()) {
        const MonthPage page = *monthPage(firstEdition().calendar, month.name);
        unsigned next = 1;
        for (std::size_t week = 0; week < page.weeks(); ++week) {
            for (unsigned column = 0; column < 7; ++column) {
                const unsigned day = page.dayAt(week, column);
                if (day == 0) continue;
                ASSERT_EQ(day, next++);
                ASSERT_EQ(weekday{month.first() + days{day - 1}}.c_encoding(), column);
            }
        }
        ASSERT_EQ(next, month.length + 1u);
    }
    EXPECT_FALSE(monthPage(firstEdition().calendar, {BsYear{2100}, BsMonth{1}}));
}

// The last day is the 365th, in the next year; today's own events have come.
TEST(Upcoming, ReachesAYearAhead) {
    const sys_days today{2026y / 4 / 14};  // New Year
    const auto events = upcomingEvents(currentEdition(), today);
    EXPECT_GT(events.front().day, today);
    EXPECT_EQ(events.back().day, today + days{365});
    EXPECT_EQ(events.back().daysLeft, 365);
    EXPECT_EQ(events.back().date, bsDate(2084, 1, 1));
    const auto important = importantEvents(currentEdition(), today);
    EXPECT_TRUE(std::any_of(important.begin(), important.end(),
                            [](const UpcomingEvent& one) { return one.event.holiday == Holiday::group; }));
    EXPECT_FALSE(upcomingEvents(currentEdition(), sys_days{2043y / 4 / 1}).empty());  // the next year is none
    EXPECT_TRUE(upcomingEvents(currentEdition(), sys_days{2043y / 5 / 1}).empty());
}

// Past the last day whose lists there are, the days themselves are still shown.
TEST(MonthPage, HasDaysWithoutLists) {
    const auto bare = monthDays(firstEdition(), {BsYear{2080}, BsMonth{1}});
    ASSERT_EQ(bare.size(), 31u);
    EXPECT_EQ(firstEdition().calendar.toDate(bare.back().day), bsDate(2080, 1, 31));
    EXPECT_TRUE(bare.back().tithis.empty());
}

// What bars show beside the date: the day, then the next holidays; a day that is not published says so.
TEST(Summary, TellsTheDayAndWhatComes) {
    const auto told = [](const Edition& edition, sys_days day) {
        return daySummary(edition, day, Language::english, Digits::western);
    };
    const DaySummary dashami = told(currentEdition(), 2026y / 10 / 21);
    EXPECT_TRUE(dashami.text.starts_with("Wednesday, 4 Kartik 2083\n21 October 2026\n")) << dashami.text;
    EXPECT_NE(dashami.text.find("\nVijaya Dashami (public holiday)\n"), std::string::npos) << dashami.text;
    EXPECT_NE(dashami.text.find("\n\ntomorrow: Papankusha Ekadashi\n"), std::string::npos) << dashami.text;
    EXPECT_TRUE(dashami.holiday);
    EXPECT_FALSE(dashami.provisional);
    const DaySummary later = told(currentEdition(), 2030y / 10 / 8);
    EXPECT_NE(later.text.find("Nepal has not published BS 2087"), std::string::npos);
    EXPECT_TRUE(later.provisional);
    EXPECT_TRUE(told(firstEdition(), 2026y / 11 / 21).holiday);  // a Saturday, without lists
    EXPECT_TRUE(told(currentEdition(), 2026y / 11 / 21).holiday);
    EXPECT_EQ(distanceWords(days{5}, Digits::devanagari), "in 5 days");  // no Devanagari in an English sentence
    EXPECT_FALSE(told(firstEdition(), 2026y / 11 / 22).holiday);
    EXPECT_EQ(told(currentEdition(), 2060y / 1 / 1).text, "this day lies outside the calendar");
}

// A clock of nanoseconds would have wrapped into our own time.
TEST(Today, IsOutsideTheTableAfterTheClocksEnd) {
    const sys_days day = nepalDay(sys_seconds{sys_days{2600y / 1 / 1}} + 18h + 15min);
    EXPECT_EQ(day, sys_days{2600y / 1 / 2});
    EXPECT_FALSE(currentEdition().calendar.toDate(day));
}

}  // namespace
}  // namespace dinmala
