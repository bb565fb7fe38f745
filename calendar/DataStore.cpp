// Set-up and searches.
#include "calendar/DataStore.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "base/Text.h"
#include "calendar/MonthRecord.h"

namespace dinmala {

namespace {

struct AdRange {
    std::int32_t first;  // yyyyMMdd
    std::int32_t last;
};

constexpr AdRange rangeOf(std::string_view record) {
    return {fieldValue(record, record::kAdStart), fieldValue(record, record::kAdEnd)};
}

/// The embedded table's ranges as numbers: ascending, without gap or overlap.
constexpr auto kRanges = [] {
    std::array<AdRange, kMonthCount> ranges{};
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        ranges[i] = rangeOf(kMonthTable.substr(i * (record::kLength + 1), record::kLength));
    }
    return ranges;
}();

constexpr std::int64_t kLastIndex = std::int64_t{kMonthCount} - 1;

/// What the scan below finds in the embedded table. Each AD month begins one BS
/// month, so year and month point at the record or next to it; from there the
/// walk ends at the last record that does not begin after the date.
std::uint64_t findInRanges(std::int32_t date) {
    if (date < kRanges.front().first || date > kRanges.back().last) return 0;
    const std::int32_t monthsSinceFirst =
        (date / 10000 - kRanges.front().first / 10000) * 12 + date / 100 % 100 - kRanges.front().first / 100 % 100;
    auto k = static_cast<std::size_t>(std::clamp<std::int64_t>(monthsSinceFirst, 0, kLastIndex));
    while (date < kRanges[k].first) --k;
    while (k + 1 < kRanges.size() && date >= kRanges[k + 1].first) ++k;
    return date <= kRanges[k].last ? k : 0;
}

std::uint64_t yyyyMMdd(std::chrono::sys_days day) {
    const std::chrono::year_month_day date{day};
    return static_cast<std::uint64_t>(std::int64_t{int{date.year()}}) * 10000 + unsigned{date.month()} * 100 +
           unsigned{date.day()};
}

/// The record of a month of a calendar.
std::string recordOf(const BsCalendar& calendar, std::size_t index) {
    const BsCalendar::Month& month = calendar.months()[index];
    const std::chrono::sys_days last = month.first() + std::chrono::days{month.length - 1};
    return padded(unsigned{month.name.month}, 2) + padded(static_cast<std::uint64_t>(int{month.name.year}), 4) +
           padded(month.length, 2) + padded(yyyyMMdd(month.first()), 8) + padded(yyyyMMdd(last), 8) +
           std::to_string(std::chrono::weekday{month.first()}.c_encoding() + 1);
}

}  // namespace

DataStore::DataStore(Clock clock, const StoreTexts& texts)
    : clock_(std::move(clock)),
      calendar_(texts.calendar),
      owner_(texts.owner),
      isEmbeddedTable_(!calendar_ && texts.monthTable == kMonthTable),
      ad_c_date_(getCurrentNepalDateTime()),
      dse_(clock_, texts.events),
      dst_(texts.tithis) {
    if (isEmbeddedTable_) calendar_ = firstEdition().calendar;
    if (!calendar_) {
        forEachPiece(texts.monthTable, ' ', [&](std::string_view record) { dataArray_.emplace_back(record); });
    }
    cm_index_ = findIndexByAd(ad_c_date_);
    cm_data_ = recordAt(cm_index_);
    const AdRange range = rangeOf(cm_data_);
    const std::int32_t today = fieldValue(ad_c_date_, adText::kDate);
    coversToday_ = today >= range.first && today <= range.last;
    show(cm_index_);
}

std::uint64_t DataStore::findIndexByAd(std::string_view adDate) const {
    if (adDate.size() < adText::kLength) return 0;
    const std::int32_t date = fieldValue(adDate, adText::kDate);
    if (isEmbeddedTable_) return findInRanges(date);
    if (calendar_) {
        const std::chrono::year_month_day day{std::chrono::year{date / 10000},
                                              std::chrono::month{static_cast<unsigned>(date / 100 % 100)},
                                              std::chrono::day{static_cast<unsigned>(date % 100)}};
        if (date > 0 && day.ok()) {
            const std::size_t index = calendar_->indexOf(std::chrono::sys_days{day});
            return index < recordCount() ? index : 0;
        }
    }
    // By ranges and not by the calendar: a day that its month does not have, 20130231, lies in a range too.
    const std::vector<std::string>& records = dataArray();
    for (std::size_t k = 0; k < records.size(); ++k) {
        const AdRange range = rangeOf(records[k]);
        if (date >= range.first && date <= range.last) return k;
    }
    return 0;
}

std::uint64_t DataStore::findIndexByBs(std::string_view bsDate) const {
    if (bsDate.size() < bsText::kLength) return 0;
    const std::int32_t monthYear = fieldValue(bsDate, bsText::kMonthYear);
    if (calendar_) {
        const std::int32_t month = monthYear / 10000;
        if (monthYear < 0 || month < 1 || month > 12) return 0;
        const std::size_t index =
            calendar_->indexOf({BsYear{monthYear % 10000}, BsMonth{static_cast<unsigned>(month)}});
        return index < recordCount() ? index : 0;
    }
    for (std::size_t k = 0; k < dataArray_.size(); ++k) {
        if (fieldValue(dataArray_[k], record::kBsMonthYear) == monthYear) return k;
    }
    return 0;
}

const std::vector<std::string>& DataStore::dataArray() const {
    if (calendar_ && dataArray_.empty()) {
        dataArray_.reserve(recordCount());
        for (std::size_t k = 0; k < recordCount(); ++k) dataArray_.push_back(recordOf(*calendar_, k));
    }
    return dataArray_;
}

std::size_t DataStore::recordCount() const { return calendar_ ? calendar_->months().size() : dataArray_.size(); }

std::string DataStore::recordAt(std::uint64_t index) const {
    if (index >= recordCount()) return {};
    return calendar_ ? recordOf(*calendar_, index) : dataArray_[index];
}

void DataStore::setDataArray(std::vector<std::string> records) {
    dataArray_ = std::move(records);
    calendar_.reset();
    isEmbeddedTable_ = false;
}

}  // namespace dinmala
