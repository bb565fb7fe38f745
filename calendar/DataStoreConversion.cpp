// Conversion between BS and AD dates, by whole civil days.
#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cstring>

#include "base/Text.h"
#include "base/TimeZone.h"
#include "calendar/DataStore.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"

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

/// What a conversion needs of one month of the embedded table: numbers, and the
/// part of each result that is the same for all its days.
struct MonthAtHand {
    std::uint32_t length = 0;                           // days of the BS month
    std::uint32_t adStartDay = 0;                       // the AD day on which it begins
    std::uint32_t adStartLength = 0;                    // days of the AD month in which it begins
    std::array<char, 8> bsMonthYear{};                  // "-MM-yyyy"
    std::array<std::array<char, 8>, 2> adYearMonths{};  // "yyyy-MM-" of its first day and of its last
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

constexpr std::array<char, 8> yearMonth(std::string_view yyyyMM) {
    return {yyyyMM[0], yyyyMM[1], yyyyMM[2], yyyyMM[3], '-', yyyyMM[4], yyyyMM[5], '-'};
}

constexpr auto kMonths = [] {
    std::array<MonthAtHand, kMonthCount> months{};
    for (std::size_t i = 0; i < months.size(); ++i) {
        const std::string_view text = embeddedRecord(i);
        const std::chrono::year_month_day_last adMonth{
            std::chrono::year{fieldValue(text, record::kAdStartYear)} /
            std::chrono::month{static_cast<unsigned>(fieldValue(text, record::kAdStartMonth))} / std::chrono::last};
        months[i] = {static_cast<std::uint32_t>(fieldValue(text, record::kBsNoOfDays)),
                     static_cast<std::uint32_t>(fieldValue(text, record::kAdStartDay)),
                     unsigned{adMonth.day()},
                     {'-', text[0], text[1], '-', text[2], text[3], text[4], text[5]},
                     {{yearMonth(fieldText(text, record::kAdStart)), yearMonth(fieldText(text, record::kAdEnd))}}};
    }
    return months;
}();

/// A day as two digits.
constexpr auto kDayText = [] {
    std::array<std::array<char, 2>, 33> texts{};
    for (std::size_t day = 0; day < texts.size(); ++day) {
        texts[day] = {static_cast<char>('0' + day / 10), static_cast<char>('0' + day % 10)};
    }
    return texts;
}();
static_assert(std::ranges::all_of(kMonths, [](const MonthAtHand& month) { return month.length < kDayText.size(); }));

// One BS month begins in each AD month, which is why a date needs no search.
static_assert([] {
    for (std::size_t i = 0; i < kMonthCount; ++i) {
        if (adStartMonths(embeddedRecord(i)) != kFirstAdMonths + static_cast<std::int32_t>(i)) return false;
    }
    return true;
}());

/// Eight characters as four numbers of two digits.
struct DigitPairs {
    bool digits;  // all eight; otherwise the numbers mean nothing
    std::uint32_t first, second, third, fourth;
};

/// All eight at once, a byte each of one word.
DigitPairs digitPairs(const char* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
    constexpr std::uint64_t kEachByte = 0x0101010101010101;
    word ^= kEachByte * '0';  // a digit's byte is now its value, any other byte 10 or more
    const bool digits = (((word + kEachByte * (0x80 - 10)) | word) & kEachByte * 0x80) == 0;
    const std::uint64_t pairs = word * 10 + (word >> 8);
    const auto number = [&](int byte) { return static_cast<std::uint32_t>(pairs >> (8 * byte) & 0xFF); };
    return {digits, number(0), number(2), number(4), number(6)};
}

// The two below give what the conversions further down give, for a day of the
// embedded table that is written in plain digits; for any other text they tell
// false. A result fits into a string without an allocation.

bool tableDayBs2Ad(std::string_view bsDate, std::optional<std::string>& result) {
    const DigitPairs pairs = digitPairs(bsDate.data());
    const std::uint32_t day = pairs.first;
    const std::uint32_t month = pairs.second;
    const std::uint32_t year = pairs.third * 100 + pairs.fourth;
    if (!pairs.digits || month - 1 > 11) return false;
    const std::size_t index = std::size_t{year - static_cast<std::uint32_t>(kFirstBsYear)} * 12 + month - 1;
    if (index >= kMonthCount) return false;
    const MonthAtHand& atHand = kMonths[index];
    if (day - 1 >= atHand.length) return false;
    std::uint32_t adDay = atHand.adStartDay + day - 1;
    const bool inEndMonth = adDay > atHand.adStartLength;
    if (inEndMonth) adDay -= atHand.adStartLength;
    char* const text = result.emplace("yyyy-MM-dd").data();
    std::memcpy(text, atHand.adYearMonths[inEndMonth ? 1 : 0].data(), 8);
    std::memcpy(text + 8, kDayText[adDay].data(), 2);
    return true;
}

bool tableDayAd2Bs(std::string_view adDate, std::optional<std::string>& result) {
    const DigitPairs pairs = digitPairs(adDate.data());
    const std::uint32_t year = pairs.first * 100 + pairs.second;
    const std::uint32_t month = pairs.third;
    const std::uint32_t day = pairs.fourth;
    if (!pairs.digits || month - 1 > 11 || day == 0) return false;
    // The BS month that begins in this AD month, or the one before it.
    std::size_t index = std::size_t{year * 12 + month - 1 - static_cast<std::uint32_t>(kFirstAdMonths)};
    if (index >= kMonthCount) return false;
    if (day > kMonths[index].adStartLength) return false;
    std::uint32_t bsDay = day + 1 - kMonths[index].adStartDay;
    if (day < kMonths[index].adStartDay) {
        if (index == 0) return false;
        --index;
        bsDay = day + 1 + kMonths[index].adStartLength - kMonths[index].adStartDay;
    }
    if (bsDay < 10) {
        char* const text = result.emplace("d-MM-yyyy").data();
        text[0] = static_cast<char>('0' + bsDay);
        std::memcpy(text + 1, kMonths[index].bsMonthYear.data(), 8);
    } else {
        char* const text = result.emplace("dd-MM-yyyy").data();
        std::memcpy(text, kDayText[bsDay].data(), 2);
        std::memcpy(text + 2, kMonths[index].bsMonthYear.data(), 8);
    }
    return true;
}

// Any text and any table, by the record that the search finds. Kept out of the
// conversions below: what it needs of the stack would cost each of them.

std::string_view recordOf(const DataStore& store, std::uint64_t index) {
    return index < store.dataArray().size() ? std::string_view{store.dataArray()[index]} : std::string_view{};
}

[[gnu::noinline]] void recordBs2Ad(const DataStore& store, std::string_view bsDate,
                                   std::optional<std::string>& adDate) {
    const std::string_view record = recordOf(store, store.findIndexByBs(bsDate));
    const std::int32_t day = fieldValue(bsDate, bsText::kDay);
    if (unsignedValue(bsDate, bsText::kDay) > unsignedValue(record, record::kBsNoOfDays)) return;
    const std::chrono::year_month_day date{firstDay(record) + days{day - 1}};
    adDate = padded(static_cast<std::uint64_t>(int{date.year()}), 4) + "-" + padded(unsigned{date.month()}, 2) + "-" +
             padded(unsigned{date.day()}, 2);
}

[[gnu::noinline]] void recordAd2Bs(const DataStore& store, std::string_view adDate,
                                   std::optional<std::string>& bsDate) {
    const std::string_view record = recordOf(store, store.findIndexByAd(adDate));
    const std::uint64_t monthLength =
        store.getNoOfDaysInMonth(unsignedValue(adDate, adText::kYear), unsignedValue(adDate, adText::kMonth));
    if (unsignedValue(adDate, adText::kDay) > monthLength) return;
    const days distance = civilDay(adDate) - firstDay(record);
    bsDate = std::to_string(std::chrono::abs(distance).count() + 1) + "-" +
             std::string{fieldText(record, record::kBsMonth)} + "-" + std::string{fieldText(record, record::kBsYear)};
}

}  // namespace

std::optional<std::string> DataStore::convertBs2Ad(std::string_view bsDate) const {
    std::optional<std::string> adDate;
    if (bsDate.size() < bsText::kLength) return adDate;
    if (!isEmbeddedTable_ || !tableDayBs2Ad(bsDate, adDate)) recordBs2Ad(*this, bsDate, adDate);
    return adDate;
}

std::optional<std::string> DataStore::convertAd2Bs(std::string_view adDate) const {
    std::optional<std::string> bsDate;
    if (adDate.size() < adText::kLength) return bsDate;
    if (!isEmbeddedTable_ || !tableDayAd2Bs(adDate, bsDate)) recordAd2Bs(*this, adDate, bsDate);
    return bsDate;
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
