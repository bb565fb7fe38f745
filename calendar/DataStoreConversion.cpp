// Conversion between BS and AD dates, by whole civil days.
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "calendar/DataStore.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"
#include "calendar/Text.h"
#include "calendar/TimeZone.h"

namespace dinmala {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

/// The day of year, month and day; a month or day beyond its range counts on
/// into the neighbouring ones.
sys_days civilDay(std::int32_t year, std::int32_t month, std::int32_t day) {
    const auto first = std::chrono::year{year} / 1 + std::chrono::months{month - 1};
    return sys_days{first / 1} + days{day - 1};
}

sys_days civilDay(std::string_view adDate) {
    return civilDay(fieldValue(adDate, adText::kYear), fieldValue(adDate, adText::kMonth),
                    fieldValue(adDate, adText::kDay));
}

sys_days firstDay(std::string_view record) { return civilDay(fieldText(record, record::kAdStart)); }

std::uint64_t unsignedValue(std::string_view text, Field field) {
    return static_cast<std::uint64_t>(std::int64_t{fieldValue(text, field)});
}

/// What the embedded table says of one of its months, as numbers.
struct MonthNumbers {
    std::uint8_t length;         // days of the BS month
    std::uint8_t adStartDay;     // the AD day on which it begins
    std::uint8_t adStartLength;  // days of the AD month in which it begins
};

constexpr std::string_view embeddedRecord(std::size_t index) {
    return {kMonthTable.data() + index * (record::kLength + 1), record::kLength};
}

constexpr std::int32_t monthsOf(std::int32_t year, std::int32_t month) { return year * 12 + month - 1; }

/// The AD month, counted from AD 0 month 1, in which a record begins.
constexpr std::int32_t adStartMonths(std::string_view record) {
    return monthsOf(fieldValue(record, record::kAdStartYear), fieldValue(record, record::kAdStartMonth));
}

constexpr std::int32_t kFirstAdMonths = adStartMonths(embeddedRecord(0));

constexpr auto kMonths = [] {
    std::array<MonthNumbers, kMonthCount> months{};
    for (std::size_t i = 0; i < months.size(); ++i) {
        const std::string_view text = embeddedRecord(i);
        const std::chrono::year_month_day_last adMonth{
            std::chrono::year{fieldValue(text, record::kAdStartYear)} /
            std::chrono::month{static_cast<unsigned>(fieldValue(text, record::kAdStartMonth))} / std::chrono::last};
        months[i] = {static_cast<std::uint8_t>(fieldValue(text, record::kBsNoOfDays)),
                     static_cast<std::uint8_t>(fieldValue(text, record::kAdStartDay)),
                     static_cast<std::uint8_t>(unsigned{adMonth.day()})};
    }
    return months;
}();

// One BS month begins in each AD month, which is why a date needs no search.
static_assert([] {
    for (std::size_t i = 0; i < kMonthCount; ++i) {
        if (adStartMonths(embeddedRecord(i)) != kFirstAdMonths + static_cast<std::int32_t>(i)) return false;
    }
    return true;
}());

/// The number in two or four characters; beyond 9999 when one is not a digit.
constexpr std::uint32_t kNoNumber = 10'000;
std::uint32_t twoDigits(const char* text) {
    const auto tens = static_cast<std::uint32_t>(text[0] - '0');
    const auto ones = static_cast<std::uint32_t>(text[1] - '0');
    return std::max(tens, ones) > 9 ? kNoNumber : tens * 10 + ones;
}
std::uint32_t fourDigits(const char* text) {
    const std::uint32_t high = twoDigits(text);
    const std::uint32_t low = twoDigits(text + 2);
    return high == kNoNumber || low == kNoNumber ? kNoNumber : high * 100 + low;
}

/// A day from 1 to 99 as two digits.
void putTwoDigits(char* out, std::uint32_t day) {
    out[0] = static_cast<char>('0' + day / 10);
    out[1] = static_cast<char>('0' + day % 10);
}

/// The text of a result, which fits into a string without an allocation.
using ResultText = std::array<char, 10>;

// The two below write what the conversions further down give, for a day of the
// embedded table that is written in plain digits. For any other text they tell 0;
// else the length of the result.

std::size_t tableDayBs2Ad(std::string_view bsDate, ResultText& text) {
    const std::uint32_t day = twoDigits(bsDate.data());
    const std::uint32_t month = twoDigits(bsDate.data() + 2);
    const std::uint32_t year = fourDigits(bsDate.data() + 4);
    if (month - 1 > 11) return 0;
    const std::size_t index = std::size_t{year - static_cast<std::uint32_t>(kFirstBsYear)} * 12 + month - 1;
    if (index >= kMonthCount) return 0;
    const MonthNumbers& numbers = kMonths[index];
    if (day - 1 >= numbers.length) return 0;
    const std::uint32_t adDay = numbers.adStartDay + day - 1;
    const bool inStartMonth = adDay <= numbers.adStartLength;
    // "yyyyMM" stands in the record, of the month's first day and of its last.
    const char* yearMonth = embeddedRecord(index).data() + (inStartMonth ? record::kAdStart : record::kAdEnd).position;
    std::copy_n(yearMonth, 4, text.begin());
    text[4] = '-';
    std::copy_n(yearMonth + 4, 2, &text[5]);
    text[7] = '-';
    putTwoDigits(&text[8], inStartMonth ? adDay : adDay - numbers.adStartLength);
    return text.size();
}

/// The day has two digits here: the first may have to go.
std::size_t tableDayAd2Bs(std::string_view adDate, ResultText& text) {
    const std::uint32_t year = fourDigits(adDate.data());
    const std::uint32_t month = twoDigits(adDate.data() + 4);
    const std::uint32_t day = twoDigits(adDate.data() + 6);
    if (month - 1 > 11 || day == 0) return 0;
    // The BS month that begins in this AD month, or the one before it.
    std::size_t index = std::size_t{year * 12 + month - 1 - static_cast<std::uint32_t>(kFirstAdMonths)};
    if (index >= kMonthCount) return 0;
    if (day > kMonths[index].adStartLength) return 0;
    std::uint32_t bsDay = day + 1 - kMonths[index].adStartDay;
    if (day < kMonths[index].adStartDay) {
        if (index == 0) return 0;
        --index;
        bsDay = day + 1 + kMonths[index].adStartLength - kMonths[index].adStartDay;
    }
    const char* monthYear = embeddedRecord(index).data();
    putTwoDigits(text.data(), bsDay);
    text[2] = '-';
    std::copy_n(monthYear, 2, &text[3]);
    text[5] = '-';
    std::copy_n(monthYear + 2, 4, &text[6]);
    return bsDay < 10 ? text.size() - 1 : text.size();
}

}  // namespace

std::optional<std::string> DataStore::convertBs2Ad(std::string_view bsDate) const {
    if (bsDate.size() < bsText::kLength) return std::nullopt;
    if (isEmbeddedTable_) {
        ResultText text;
        if (tableDayBs2Ad(bsDate, text) > 0) {
            return std::optional<std::string>{std::in_place, text.data(), text.size()};
        }
    }
    const std::string record = recordAt(findIndexByBs(bsDate));
    const std::int32_t day = fieldValue(bsDate, bsText::kDay);
    if (unsignedValue(bsDate, bsText::kDay) > unsignedValue(record, record::kBsNoOfDays)) return std::nullopt;
    const std::chrono::year_month_day date{firstDay(record) + days{day - 1}};
    return padded(static_cast<std::uint64_t>(int{date.year()}), 4) + "-" + padded(unsigned{date.month()}, 2) + "-" +
           padded(unsigned{date.day()}, 2);
}

std::optional<std::string> DataStore::convertAd2Bs(std::string_view adDate) const {
    if (adDate.size() < adText::kLength) return std::nullopt;
    if (isEmbeddedTable_) {
        ResultText text;
        if (const std::size_t length = tableDayAd2Bs(adDate, text); length > 0) {
            return std::optional<std::string>{std::in_place, text.data() + text.size() - length, length};
        }
    }
    const std::string record = recordAt(findIndexByAd(adDate));
    const std::uint64_t monthLength =
        getNoOfDaysInMonth(unsignedValue(adDate, adText::kYear), unsignedValue(adDate, adText::kMonth));
    if (unsignedValue(adDate, adText::kDay) > monthLength) return std::nullopt;
    const days distance = civilDay(adDate) - firstDay(record);
    return std::to_string(std::chrono::abs(distance).count() + 1) + "-" +
           std::string{fieldText(record, record::kBsMonth)} + "-" + std::string{fieldText(record, record::kBsYear)};
}

std::uint64_t DataStore::getWeekDayByAd(std::string_view adDate) const {
    return std::chrono::weekday{civilDay(adDate)}.c_encoding() + 1;
}

std::uint64_t DataStore::daysBetween(Moment a, Moment b) const { return DataStoreFunctions::daysBetween(a, b); }

Moment DataStore::addDaysToDate(Moment date, std::uint64_t day) const {
    const TimeZone& zone = defaultTimeZone();
    const auto part = date - std::chrono::floor<std::chrono::seconds>(date);
    return zone.toMoment(zone.toLocal(date) + days{static_cast<std::int64_t>(day) - 1}) + part;
}

std::optional<std::string> DataStore::getBSDateByAd(std::string_view) const { return std::nullopt; }

}  // namespace dinmala
