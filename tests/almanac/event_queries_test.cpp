// The queries over lists of this file's own; the lists of the program are held to
// their facts by the almanac check.
#include <gtest/gtest.h>

#include "calendar/DataStore.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using Names = std::vector<std::string>;

constexpr KeyedText kNames[] = {{"5", "नयाँ वर्ष"}, {"67", "गाई / गोरु तिहार"}, {"300", "तीन"}, {"", "no id"}};
// A token without a name (55), one too short (010), a repeated one, and an empty
// piece between two spaces.
constexpr KeyedText kYears[] = {{"2070", "01015 010155 0101300 010  02015 02015 0101 300567"}, {"2071", ""}};
constexpr EventTexts kEvents{kNames, kYears, {}};
constexpr KeyedText kTithiYears[] = {{"2070", "01015 0101300 02015"}};
constexpr TithiTexts kTithis{kNames, kTithiYears};

class EventQueries : public testing::Test {
protected:
    DataStore store{[] { return test::nepal(2013, 4, 20); }, {.events = kEvents, .tithis = kTithis}};
};

TEST_F(EventQueries, GiveADaysNamesInListOrderAndDropWhatHasNone) {
    EXPECT_EQ(store.getDayEvent("2070", "0101"), (Names{"नयाँ वर्ष", "तीन", "no id"}));
    EXPECT_EQ(store.getDayEvent("2070", "0201"), (Names{"नयाँ वर्ष", "नयाँ वर्ष"}));
    EXPECT_EQ(store.getDayTithi("2070", "0101"), (Names{"नयाँ वर्ष", "तीन"}));
}

TEST_F(EventQueries, FindNothingUnderAKeyOfAnotherForm) {
    for (const std::string_view year : {"2064", "2072", " 2070", "२०७०", ""}) {
        EXPECT_TRUE(store.getDayEvent(year, "0101").empty()) << year;
        EXPECT_TRUE(store.getDayTithi(year, "0101").empty()) << year;
    }
    for (const std::string_view day : {"101", "10101", "01015", "", "010", "०१०१"}) {
        EXPECT_TRUE(store.getDayEvent("2070", day).empty()) << day;
        EXPECT_TRUE(store.getDayTithi("2070", day).empty()) << day;
    }
}

TEST_F(EventQueries, CountTokensButListNames) {
    EXPECT_EQ(store.getYearEventsCount(2070), 9u);
    EXPECT_EQ(store.getYearEvents(2070).size(), 6u);
    EXPECT_EQ(store.getYearEventsCount(2064), 0u);
    EXPECT_TRUE(store.getYearEvents(2064).empty());
    EXPECT_EQ(store.dse().getEventByIndex("67"), "गाई / गोरु तिहार");
    for (const std::string_view id : {"55", "0", "649", "05", " 5"}) {
        EXPECT_EQ(store.dse().getEventByIndex(id), std::nullopt) << id;
    }
}

}  // namespace
}  // namespace dinmala
