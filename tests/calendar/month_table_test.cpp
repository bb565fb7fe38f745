#include <gtest/gtest.h>

#include "base/Text.h"
#include "calendar/DataStore.h"
#include "calendar/MonthRecord.h"
#include "tests/support/Fingerprint.h"
#include "tests/support/Moments.h"

namespace dinmala {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using test::nepal;

class MonthTable : public testing::Test {
protected:
    DataStore store{[] { return nepal(2013, 4, 20, 6, 30); }};
};

sys_days dayOf(std::string_view record, Field field) {
    const int date = fieldValue(record, field);
    return sys_days{std::chrono::year{date / 10000} / (date / 100 % 100) / (date % 100)};
}

// The records known apart from the lengths file: a wrong first day, length or
// field width anywhere before them moves one of these.
TEST_F(MonthTable, SpellsTheKnownRecordsAtTheirIndices) {
    EXPECT_EQ(kMonthTable.size(), 31511u);
    EXPECT_EQ(test::fingerprint(kMonthTable), 1078158205u);  // two months of a far year exchanged move nothing else
    EXPECT_TRUE(
        kMonthTable.starts_with("0119993119420413194205132 0219993219420514194206145 0319993119420615194207152"));
    EXPECT_TRUE(kMonthTable.ends_with("1120993020430213204303146 1220993020430315204304131"));
    ASSERT_EQ(store.dataArray().size(), kMonthCount);
    EXPECT_EQ(store.dataArray()[11], "1219993119430314194304131");
    EXPECT_EQ(store.dataArray()[12], "0120003019430414194305134");
    EXPECT_EQ(store.dataArray()[852], "0120703120130414201305141");
}

TEST_F(MonthTable, EveryMonthFollowsTheOneBefore) {
    sys_days next = sys_days{std::chrono::year{1942} / 4 / 13};
    for (std::size_t i = 0; i < kMonthCount; ++i) {
        const std::string& record = store.dataArray()[i];
        ASSERT_EQ(record.size(), record::kLength) << i;
        EXPECT_EQ(fieldValue(record, record::kBsYear), 1999 + static_cast<int>(i) / 12) << record;
        EXPECT_EQ(fieldValue(record, record::kBsMonth), 1 + static_cast<int>(i) % 12) << record;
        EXPECT_EQ(dayOf(record, record::kAdStart), next) << record;
        const sys_days last = dayOf(record, record::kAdEnd);
        EXPECT_EQ((last - next).count() + 1, fieldValue(record, record::kBsNoOfDays)) << record;
        EXPECT_EQ(std::chrono::weekday{next}.c_encoding() + 1u,
                  static_cast<unsigned>(fieldValue(record, record::kFirstWeekDay)))
            << record;
        // The day of the month is told from these two alone.
        EXPECT_TRUE(fieldValue(record, record::kAdStartDay) >= 12 && fieldValue(record, record::kAdStartDay) <= 18);
        EXPECT_EQ(fieldValue(record, record::kAdEndMonth), fieldValue(record, record::kAdStartMonth) % 12 + 1);
        next = last + days{1};
    }
}

TEST_F(MonthTable, FindsMonthsByAdDate) {
    struct Case {
        std::string_view date;
        std::uint64_t index;
    };
    for (const Case& one : {Case{"19420413", 0}, Case{"19420514", 1}, Case{"20130414 06:30", 852},
                            Case{"20130514", 852}, Case{"20130515", 853}, Case{"20430413", 1211},
                            // Misses give 0: outside the table, too short, no number, no such month.
                            Case{"19420412", 0}, Case{"20430414", 0}, Case{"2013041", 0}, Case{"", 0},
                            Case{"abcdefgh", 0}, Case{"-2013041", 0}, Case{"99999999", 0}}) {
        EXPECT_EQ(store.findIndexByAd(one.date), one.index) << one.date;
    }
}

TEST_F(MonthTable, FindsMonthsByBsDate) {
    struct Case {
        std::string_view date;
        std::uint64_t index;
    };
    for (const Case& one : {Case{"01012070", 852}, Case{"30122099", 1211}, Case{"15011999", 0}, Case{"99012070", 852},
                            Case{"xx 12070", 852},  // leading white space is part of a number
                            Case{"01131999", 0}, Case{"01002070", 0}, Case{"01012100", 0}, Case{"01011998", 0},
                            Case{"0101207", 0}, Case{"", 0}, Case{"01-12070", 0}}) {
        EXPECT_EQ(store.findIndexByBs(one.date), one.index) << one.date;
    }
}

// The embedded table is searched by a short cut, any other one record by record:
// both give the same, for real dates, for numbers between them and for texts that
// are no date. The second store holds the same records but not the same table.
TEST_F(MonthTable, ShortCutAndScanAgree) {
    DataStore scanning{[] { return nepal(2013, 4, 20); }};
    scanning.setDataArray(store.dataArray());
    for (int year = 1941; year <= 2044; ++year) {
        for (const int month : {0, 1, 2, 4, 5, 9, 12, 13, 14, 50, 99}) {
            for (const int day : {0, 1, 12, 13, 14, 15, 16, 17, 18, 19, 28, 31, 32, 99}) {
                const std::string date = std::to_string(year * 10000 + month * 100 + day);
                ASSERT_EQ(store.findIndexByAd(date), scanning.findIndexByAd(date)) << date;
            }
        }
    }
    for (int year = 1990; year <= 2110; ++year) {
        for (int month = 0; month <= 14; ++month) {
            const std::string date = "01" + padded(static_cast<std::uint64_t>(month), 2) + std::to_string(year);
            ASSERT_EQ(store.findIndexByBs(date), scanning.findIndexByBs(date)) << date;
        }
    }
}

// A table of another make: the first record that matches counts, and none is 0.
TEST_F(MonthTable, AnotherTableIsSearchedAsItStands) {
    const StoreTexts texts{.monthTable =
                               "0120813120240413202405137 0220813120240514202406133 0220813120240514202406133"};
    DataStore other{[] { return nepal(2024, 5, 20); }, texts};
    EXPECT_TRUE(other.coversToday());
    EXPECT_EQ(other.cm_index(), 1u);
    EXPECT_EQ(other.findIndexByBs("01022081"), 1u);
    EXPECT_EQ(other.findIndexByBs("01012070"), 0u);
    other.setDataArray({});
    EXPECT_EQ(other.findIndexByAd("20240520"), 0u);
    DataStore empty{[] { return nepal(2024, 5, 20); }, {.monthTable = ""}};
    EXPECT_FALSE(empty.coversToday());
    EXPECT_EQ(empty.currentBSYear(), 0u);
}

TEST(LeadingDigits, AreReadTheWayFieldsAreWritten) {
    EXPECT_EQ(intValue(" \t12x3"), 12);
    EXPECT_EQ(intValue("-7"), -7);
    EXPECT_EQ(intValue("+7"), 7);
    EXPECT_EQ(intValue("x7"), 0);
    EXPECT_EQ(intValue("- 7"), 0);
    EXPECT_EQ(intValue(""), 0);
    EXPECT_EQ(intValue("99999999999999999999"), 2147483647);
    EXPECT_EQ(intValue("-99999999999999999999"), -2147483647 - 1);
}

}  // namespace
}  // namespace dinmala
