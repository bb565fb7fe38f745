#include <gtest/gtest.h>

#include "base/DateText.h"
#include "base/Text.h"
#include "calendar/DataStore.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

// The operations of the store tell of the current edition what its values tell: every day both ways, each
// month found, and on the 15th of each the tithis and events in their order.
TEST(StoreOfTheCurrentEdition, SaysWhatTheEditionSays) {
    const Edition& edition = currentEdition();
    const StoreTexts texts = storeTexts(edition);
    DataStore store{[] { return test::nepal(2026, 11, 23, 12, 0); }, texts};
    EXPECT_EQ(store.currentBSYear(), 2083u);
    EXPECT_EQ(store.currentBSMonth(), 8u);
    EXPECT_EQ(store.getBsCurrentDay(), 7u);
    // The same months as records of a program's own, which are scanned.
    DataStore scanning = store;
    scanning.setDataArray(std::vector<std::string>{store.dataArray()});
    for (auto day = edition.calendar.firstDay(); day <= edition.calendar.lastDay(); day += std::chrono::days{1}) {
        const BsDate bs = *edition.calendar.toDate(day);
        const std::string month = padded(unsigned{bs.month}, 2);
        const std::string year = std::to_string(int{bs.year});
        const std::string ad = dateText(std::chrono::year_month_day{day});
        std::string plain = ad;
        std::erase(plain, '-');
        ASSERT_EQ(store.convertBs2Ad(padded(unsigned{bs.day}, 2) + month + year), ad);
        ASSERT_EQ(store.convertAd2Bs(plain), std::to_string(unsigned{bs.day}) + "-" + month + "-" + year);
        if (bs.day == BsDay{1}) {
            ASSERT_EQ(store.findIndexByAd(plain), scanning.findIndexByAd(plain));
            ASSERT_EQ(store.findIndexByBs("01" + month + year), scanning.findIndexByBs("01" + month + year));
        }
        if (bs.day != BsDay{15}) continue;
        std::vector<std::string> tithis, events;
        const auto shown = edition.almanac.day(bs);
        for (const Tithi& tithi : shown->tithis) tithis.emplace_back(tithi.name);
        for (const Event& event : shown->events) events.emplace_back(event.name);
        const std::string key = padded(unsigned{bs.day}, 2) + month;
        ASSERT_EQ(store.getDayTithi(year, key), tithis);
        ASSERT_EQ(store.getDayEvent(year, key), events);
    }
    for (const std::string_view odd : {"20130231", "19420412", "20430414", "20430431", "-1-1-1-1", "00000000"}) {
        EXPECT_EQ(store.findIndexByAd(odd), scanning.findIndexByAd(odd)) << odd;
    }
    EXPECT_EQ(store.findIndexByBs("01012100"), 0u);
    EXPECT_EQ(store.convertBs2Ad("32012083"), std::nullopt);
}

}  // namespace
}  // namespace dinmala
