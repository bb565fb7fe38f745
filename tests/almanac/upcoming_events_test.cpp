#include <gtest/gtest.h>

#include "calendar/DataStore.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using namespace std::chrono_literals;
using test::nepal;
using Names = std::vector<std::string>;

class UpcomingEvents : public testing::Test {
protected:
    test::DefaultTimeZoneGuard guard;
    Moment now;
    Names importantAt(Moment moment) {
        now = moment;
        return DataStore{[this] { return now; }}.getUpcomingEvents();
    }
};

TEST_F(UpcomingEvents, CountDownToTheImportantOnesInNepal) {
    setDefaultTimeZone({"elsewhere", [](Moment) { return -8h; }});
    EXPECT_EQ(importantAt(nepal(2014, 3, 29)), (Names{"घोडे जात्रा~भोलि", "राम नवमी~१० दिन बाँकी"}));
    EXPECT_EQ(importantAt(nepal(2014, 4, 6)), (Names{"राम नवमी~२ दिन बाँकी"}));
    EXPECT_EQ(importantAt(nepal(2014, 4, 7)), (Names{"राम नवमी~भोलि"}));
    EXPECT_EQ(importantAt(nepal(2014, 4, 8, 0, 0)), (Names{"राम नवमी~0"}));
    EXPECT_EQ(importantAt(nepal(2014, 4, 8, 0, 0) + 1ns), Names{});
    EXPECT_EQ(importantAt(nepal(2013, 4, 13, 23, 59)).front(), "नयाँ वर्ष~भोलि");
    EXPECT_EQ(importantAt(nepal(2013, 4, 14, 0, 0, 1)).front(), "राम नवमी~५ दिन बाँकी");
    EXPECT_EQ(importantAt(nepal(2000, 1, 1)).size(), 36u);
    EXPECT_EQ(defaultTimeZone().name, "Asia/Kathmandu");
}

TEST_F(UpcomingEvents, ListAYearAfterADay) {
    constexpr KeyedText names[] = {{"5", "नयाँ वर्ष"}, {"67", "गाई / गोरु तिहार"}};
    constexpr KeyedText years[] = {{"2070", "01015 010155 0201 020167 29125 301267 31125 001267"}};
    const StoreTexts texts{.events = {names, years, {}}};
    setDefaultTimeZone(kathmandu());
    const DataStore store{[] { return nepal(2014, 4, 10); }, texts};
    EXPECT_EQ(store.dse().getUpcomingEventsOfYearAfterMonthAndDay(2070, 1, 1),
              (Names{"गाई / गोरु तिहार^1/2", "नयाँ वर्ष^12/29", "गाई / गोरु तिहार^12/30", "नयाँ वर्ष^12/31",
                     "गाई / गोरु तिहार^12/0"}));
    EXPECT_EQ(store.dse().getUpcomingEventsOfYearAfterMonthAndDay(2070, 12, 31), Names{});
    EXPECT_EQ(store.dse().getUpcomingEventsOfYearAfterMonthAndDay(2072, 0, 0), Names{});
    // 2070-12-30 is the year's last day: the 31st falls back to its BS date.
    EXPECT_EQ(store.getYearUpcomingEventsAfterMonthAndDay(2070, 12, 28),
              (Names{"नयाँ वर्ष^२ दिन बाँकी", "गाई / गोरु तिहार^३ दिन बाँकी", "नयाँ वर्ष~चैत्र ३१"}));
}

// The lists of the program itself, counted in the default zone.
TEST_F(UpcomingEvents, CountInTheDefaultZone) {
    const DataStore store{[] { return nepal(2014, 4, 10); }};
    setDefaultTimeZone(kathmandu());
    EXPECT_EQ(store.getYearUpcomingEventsAfterMonthAndDay(2070, 12, 28),
              (Names{"शनि प्रदोष व्रत^२ दिन बाँकी", "महावीर जयन्ती^३ दिन बाँकी"}));
    const test::MachineZoneGuard machineZone{"America/New_York"};  // there it is still the 9th
    setDefaultTimeZone(machine());
    const DataStore night{[] { return nepal(2014, 4, 10, 6, 0); }};
    EXPECT_EQ(night.getYearUpcomingEventsAfterMonthAndDay(2070, 12, 28),
              (Names{"शनि प्रदोष व्रत^३ दिन बाँकी", "महावीर जयन्ती^४ दिन बाँकी"}));
    // Samoa skipped 2011-12-30, which is 2068-09-15.
    const test::MachineZoneGuard samoa{"Pacific/Apia"};
    const DataStore before{[] { return nepal(2011, 12, 30, 10, 0); }};  // there the 29th, 18:15
    EXPECT_EQ(before.convertBs2Ad("15092068"), "2011-12-30");
    EXPECT_TRUE(before.getYearUpcomingEventsAfterMonthAndDay(2068, 9, 14).front().ends_with("^१ दिन बाँकी"));
    // Months and days before today count as if they were ahead.
    EXPECT_EQ(store.getYearUpcomingEventsAfterMonthAndDay(2070, 0, 0).size(), 467u);
}

}  // namespace
}  // namespace dinmala
