// Set-up and searches.
#include "calendar/DataStore.h"

#include <algorithm>
#include <array>
#include <utility>

#include "calendar/MonthRecord.h"
#include "calendar/Text.h"

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

}  // namespace

DataStore::DataStore(Clock clock, const StoreTexts& texts)
    : clock_(std::move(clock)),
      isEmbeddedTable_(texts.monthTable == kMonthTable),
      ad_c_date_(getCurrentNepalDateTime()),
      dse_(clock_, texts.events),
      dst_(texts.tithis) {
    dataArray_.reserve(texts.monthTable.size() / (record::kLength + 1) + 1);
    forEachPiece(texts.monthTable, ' ', [&](std::string_view record) { dataArray_.emplace_back(record); });
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
    for (std::size_t k = 0; k < dataArray_.size(); ++k) {
        const AdRange range = rangeOf(dataArray_[k]);
        if (date >= range.first && date <= range.last) return k;
    }
    return 0;
}

std::uint64_t DataStore::findIndexByBs(std::string_view bsDate) const {
    if (bsDate.size() < bsText::kLength) return 0;
    const std::int32_t monthYear = fieldValue(bsDate, bsText::kMonthYear);
    if (isEmbeddedTable_) {
        const std::int32_t month = monthYear / 10000;
        const std::int32_t index = (monthYear % 10000 - kFirstBsYear) * 12 + month - 1;
        return month >= 1 && month <= 12 && index >= 0 && index <= kLastIndex ? static_cast<std::uint64_t>(index) : 0;
    }
    for (std::size_t k = 0; k < dataArray_.size(); ++k) {
        if (fieldValue(dataArray_[k], record::kBsMonthYear) == monthYear) return k;
    }
    return 0;
}

void DataStore::setDataArray(std::vector<std::string> records) {
    dataArray_ = std::move(records);
    isEmbeddedTable_ = false;
}

}  // namespace dinmala
