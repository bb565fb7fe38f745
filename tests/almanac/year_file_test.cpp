#include "almanac/YearFile.h"

#include <gtest/gtest.h>

#include "almanac/Edition.h"
#include "almanac/PackedYear.h"

namespace dinmala {
namespace {

/// BS 2084 of the first edition's months, its tithis counted on with one skipped and one twice each 40 days.
YearAlmanac someYear() {
    YearAlmanac year{BsYear{2084}, false, {}};
    const BsCalendar& calendar = firstEdition().calendar;
    unsigned tithi = 10;
    unsigned count = 0;
    for (auto day = *calendar.toDays(bsDate(2084, 1, 1)); calendar.toDate(day)->year == year.year; ++count) {
        YearDay one{*calendar.toDate(day), day, Grade::sure, static_cast<std::uint8_t>(tithi), 0, Grade::sure, {}};
        if (count % 40 == 7) one.skipped = static_cast<std::uint8_t>(tithi % 30 + 1);
        if (count % 40 != 20) tithi = (one.skipped != 0 ? one.skipped : tithi) % 30 + 1;
        if (count % 40 == 9) one.tithiGrade = Grade::open;
        if (one.date.month == BsMonth{4}) one.dateGrade = Grade::near;
        if (count % 3 == 0) one.events = {{5, Holiday::national, Grade::published}, {648, Holiday::none, Grade::sure}};
        if (count % 5 == 0) one.events.push_back({7, Holiday::group, Grade::near});
        if (count % 7 == 0) one.events.push_back({62, Holiday::observed, Grade::open});
        year.days.push_back(one);
        day += std::chrono::days{1};
    }
    return year;
}

TEST(YearFile, IsReadAsItWasWritten) {
    for (const bool published : {false, true}) {
        YearAlmanac year = someYear();
        year.published = published;
        if (published) {
            for (YearDay& day : year.days) day.dateGrade = Grade::published;  // all of them are
        }
        const auto read = parseYearFile(yearFileText(year, [](std::uint16_t) { return "नयाँ वर्ष"; }));
        ASSERT_TRUE(read) << read.error().text();
        EXPECT_EQ(*read, year);
        EXPECT_EQ(unpackYear(packYear(year)), year);
        for (const YearDay& day : year.days) {
            ASSERT_EQ(unpackDay(packYear(year), day.date.month, day.date.day), day);
        }
        EXPECT_EQ(unpackDay(packYear(year), BsMonth{1}, BsDay{32}), std::nullopt);
        EXPECT_EQ(unpackDay(packYear(year), BsMonth{13}, BsDay{1}), std::nullopt);
    }
    const std::string text = yearFileText(someYear());
    EXPECT_TRUE(text.starts_with("year 2084 computed\n2084-01-01 2027-04-14 10 5H! 648 7L~ 62O?\n"))
        << text.substr(0, 99);
    EXPECT_NE(text.find("\n2084-04-01~ "), std::string::npos);
}

// Whatever is wrong with one line, nothing of the file is taken, and the line is named.
TEST(YearFile, RefusesWhatIsWrongWithItsLine) {
    const std::string good = yearFileText(someYear());
    ASSERT_TRUE(parseYearFile(good));
    const auto with = [&](const std::string& old, const std::string& now) {
        std::string text = good;
        return text.replace(text.find(old), old.size(), now);
    };
    const std::string second = "2084-01-02 2027-04-15 11\n";
    const std::string third = "2084-01-03 2027-04-16 12\n";
    struct Case {
        std::string text, problem;
    };
    for (const Case& one : {
             Case{"", "has no line such as 'year 2084 published'"},
             Case{with("year 2084 computed", "year 2084"),
                  "line 1: does not begin with a line such as 'year 2084 published'"},
             Case{with("year 2084", "year 2083"), "line 2: 2084-01-01 is not of the year 2083"},
             Case{with(second, ""), "line 3: 2084-01-03 does not follow 2084-01-01"},
             Case{with(second, second + second), "line 4: 2084-01-02 does not follow 2084-01-02"},
             Case{with("2084-01-02 2027-04-15", "2084-01-02 2027-04-16"), "line 3: 2027-04-16 is not the next AD day"},
             Case{with("2027-04-15", "2027-02-30"), "line 3: there is no AD date 2027-02-30"},
             Case{with("2084-01-02", "2084-1-2"), "line 3: '2084-1-2' is no BS date such as 2084-01-31"},
             Case{with("15 11\n", "15 31\n"), "line 3: '31' is no tithi from 1 to 30"},
             Case{with("15 11\n", "15 12+14\n"), "line 3: '12+14' is no tithi with the next one"},
             Case{with("15 11\n", "15 13\n"), "line 3: tithi 13 does not follow 10"},
             Case{with("15 11\n", "15 10\n").replace(good.find(third), third.size(), "2084-01-03 2027-04-16 10\n"),
                  "line 4: tithi 10 does not follow 10"},
             Case{with("15 11\n", "15 11 5 5H\n"), "line 3: event 5 stands twice"},
             Case{with("15 11\n", "15 11 5X\n"), "line 3: '5X' is no event id"},
             Case{with("15 11\n", "15 11 999\n"), "line 3: there is no event 999"},
             Case{with("15 11\n", "15\n"), "line 3: is no BS date, AD date and tithi"},
             Case{with("15 11\n", "15 11\r\n"), "line 3: has a carriage return"},
             Case{with("15 11\n", "15 11 # \xE0\xA4\n"), "line 3: is not UTF-8"},
             Case{with("15 11\n", "15 11 # \xED\xA0\x80\n"), "line 3: is not UTF-8"},  // half of a pair
             Case{"\xEF\xBB\xBF" + good, "line 1: begins with a byte-order mark"},
             Case{good.substr(0, good.find("2084-12-01")), "line 336: ends with 2084-11-30, before month 12"},
             Case{good.substr(0, good.size() - 1), "line 366: ends in the middle of a line"},
             Case{good + "2085-01-01 2028-04-13 9\n", "line 367: 2085-01-01 is not of the year 2084"},
         }) {
        const auto year = parseYearFile(one.text, [](std::uint16_t id) { return id < 900; });
        ASSERT_FALSE(year) << one.problem;
        EXPECT_EQ(year.error().text(), one.problem);
    }
    // A month of 33 days, and one of 28: the AD dates go on.
    std::string longMonth = "year 2084 published\n";
    std::string shortMonth = longMonth;
    for (unsigned day = 1; day <= 33; ++day) {
        const std::chrono::sys_days ad{std::chrono::year{2027} / 4 / 14};
        const YearDay one{bsDate(2084, 1, day),
                          ad + std::chrono::days{day - 1},
                          {},
                          static_cast<std::uint8_t>(day % 30 + 1),
                          0,
                          {},
                          {}};
        longMonth += yearFileText({BsYear{2084}, true, {one}}).substr(20);
        if (day <= 28) shortMonth += yearFileText({BsYear{2084}, true, {one}}).substr(20);
    }
    EXPECT_EQ(parseYearFile(longMonth).error().text(), "line 34: gives month 1 more than 32 days");
    EXPECT_EQ(parseYearFile(shortMonth + "2084-02-01 2027-05-12 30\n").error().text(),
              "line 30: gives month 1 28 days");
}

}  // namespace
}  // namespace dinmala
