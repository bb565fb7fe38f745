// The store's view of the almanac.
#include <utility>

#include "base/Names.h"
#include "base/Text.h"
#include "base/TimeZone.h"
#include "calendar/DataStore.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"

namespace dinmala {

namespace {

/// The civil days in the default zone between a moment's day and a "yyyy-MM-dd"
/// day, also for a day that the zone skipped.
std::int64_t civilDaysBetween(Moment moment, std::string_view date) {
    const std::chrono::year_month_day day{std::chrono::year{fieldValue(date, {0, 4})},
                                          std::chrono::month{static_cast<unsigned>(fieldValue(date, {5, 2}))},
                                          std::chrono::day{static_cast<unsigned>(fieldValue(date, {8, 2}))}};
    const auto from = std::chrono::floor<std::chrono::days>(defaultTimeZone().toLocal(moment));
    return std::chrono::abs(std::chrono::local_days{day} - from).count();
}

}  // namespace

std::vector<std::string> DataStore::getDayEvent(std::string_view year, std::string_view dayMonth) const {
    return dse_.getEventAtYearAndDayMonth(year, dayMonth);
}

std::vector<std::string> DataStore::getYearEvents(std::uint64_t year) const { return dse_.getEventsAtYear(year); }

std::uint64_t DataStore::getYearEventsCount(std::uint64_t year) const { return dse_.getNumberOfEventsAtYear(year); }

std::vector<std::string> DataStore::getDayTithi(std::string_view year, std::string_view dayMonth) const {
    return dst_.getTithiAtYearAndDayMonth(year, dayMonth);
}

std::vector<std::string> DataStore::getUpcomingEvents() const { return dse_.getUpComingEvents(); }

std::vector<std::string> DataStore::getYearUpcomingEventsAfterMonthAndDay(std::uint64_t year, std::uint64_t month,
                                                                          std::uint64_t day) const {
    const Moment now = clock_();
    std::vector<std::string> result;
    for (const DataStoreEvents::NamedDay& event : dse_.daysAfter(year, month, day)) {
        const std::string name{event.name};
        const auto adDate = convertBs2Ad(padded(event.day, 2) + padded(event.month, 2) + std::to_string(year));
        if (!adDate) {
            result.push_back(
                name + "~" +
                std::string{DataStoreFunctions::getNameForMonthInCalendarAndFormat(event.month, true, true)} + " " +
                std::string{DataStoreFunctions::getNepaliDateDigitFor(static_cast<std::int32_t>(event.day))});
            continue;
        }
        const std::int64_t left = civilDaysBetween(now, *adDate);
        result.push_back(name + "^" + DataStoreFunctions::convertNumber2Nepali(static_cast<std::int32_t>(left)) +
                         " दिन बाँकी");
    }
    return result;
}

}  // namespace dinmala
