// Conversion between BS and AD dates, by whole civil days.
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

}  // namespace

std::optional<std::string> DataStore::convertBs2Ad(std::string_view bsDate) const {
    if (bsDate.size() < bsText::kLength) return std::nullopt;
    const std::string record = recordAt(findIndexByBs(bsDate));
    const std::int32_t day = fieldValue(bsDate, bsText::kDay);
    if (unsignedValue(bsDate, bsText::kDay) > unsignedValue(record, record::kBsNoOfDays)) return std::nullopt;
    const std::chrono::year_month_day date{firstDay(record) + days{day - 1}};
    return padded(static_cast<std::uint64_t>(int{date.year()}), 4) + "-" + padded(unsigned{date.month()}, 2) + "-" +
           padded(unsigned{date.day()}, 2);
}

std::optional<std::string> DataStore::convertAd2Bs(std::string_view adDate) const {
    if (adDate.size() < adText::kLength) return std::nullopt;
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
