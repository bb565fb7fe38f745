#include "almanac/DataStoreEvents.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/DateText.h"
#include "base/Fields.h"
#include "base/TimeZone.h"

namespace dinmala {

namespace {

std::optional<std::string_view> lookUp(const TextMap& map, std::string_view key) {
    const auto found = map.find(key);
    if (found == map.end()) return std::nullopt;
    return found->second;
}

/// Midnight in Nepal at the start of an AD date; nothing for a text that is not
/// a date.
std::optional<Moment> startOfNepalDay(std::string_view adDate) {
    const bool digits = std::all_of(adDate.begin(), adDate.end(), [](char c) { return c >= '0' && c <= '9'; });
    const std::chrono::year_month_day date{
        std::chrono::year{fieldValue(adDate, adText::kYear)},
        std::chrono::month{static_cast<unsigned>(fieldValue(adDate, adText::kMonth))},
        std::chrono::day{static_cast<unsigned>(fieldValue(adDate, adText::kDay))}};
    if (!digits || !date.ok()) return std::nullopt;
    return kathmandu().toMoment(std::chrono::local_days{date});
}

}  // namespace

DataStoreEvents::DataStoreEvents(Clock clock, const EventTexts& texts) : clock_(std::move(clock)) {
    const EventTexts& own = embeddedEventTexts();
    events_ = sharedTextMap(texts.names, own.names);
    events_map_ = sharedTextMap(texts.years, own.years);
    imp_events_ = sharedTextMap(texts.importantYears, own.importantYears);
}

std::optional<std::string_view> DataStoreEvents::getEventByIndex(std::string_view id) const {
    return lookUp(*events_, id);
}

std::optional<std::string_view> DataStoreEvents::listOfYear(std::uint64_t year) const {
    return lookUp(*events_map_, std::to_string(year));
}

std::vector<std::string> DataStoreEvents::getEventsAtYear(std::uint64_t year) const {
    std::vector<std::string> result;
    const auto list = listOfYear(year);
    if (!list) return result;
    forEachToken(*list, kDayMonthLength, [&](const YearToken& token) {
        if (const auto name = getEventByIndex(token.id)) result.emplace_back(*name);
    });
    return result;
}

std::vector<std::string> DataStoreEvents::getUpComingEvents() const {
    setDefaultTimeZone(kathmandu());
    const Moment now = clock_();
    std::vector<std::string> result;
    const auto list = lookUp(*imp_events_, "2070");
    if (!list) return result;
    forEachToken(*list, kAdDateLength, [&](const YearToken& token) {
        const auto start = startOfNepalDay(token.head);
        const auto name = getEventByIndex(token.id);
        if (!start || !name || now > *start) return;
        const std::uint64_t days = calendarDaysBetween(now, *start);
        std::string entry{*name};
        entry += '~';
        if (now == *start) {
            entry += std::to_string(days);
        } else if (days == 1) {
            entry += "भोलि";
        } else {
            entry += numberText(days, Digits::devanagari);
            entry += " दिन बाँकी";
        }
        result.push_back(std::move(entry));
    });
    return result;
}

std::vector<DataStoreEvents::NamedDay> DataStoreEvents::daysAfter(std::uint64_t year, std::uint64_t month,
                                                                  std::uint64_t day) const {
    std::vector<NamedDay> result;
    const auto list = listOfYear(year);
    if (!list) return result;
    forEachToken(*list, kDayMonthLength, [&](const YearToken& token) {
        const auto tokenDay = static_cast<std::uint64_t>(fieldValue(token.head, {0, 2}));
        const auto tokenMonth = static_cast<std::uint64_t>(fieldValue(token.head, {2, 2}));
        if (tokenMonth < month || (tokenMonth == month && tokenDay <= day)) return;
        if (const auto name = getEventByIndex(token.id)) result.push_back({tokenMonth, tokenDay, *name});
    });
    return result;
}

std::vector<std::string> DataStoreEvents::getUpcomingEventsOfYearAfterMonthAndDay(std::uint64_t year,
                                                                                  std::uint64_t month,
                                                                                  std::uint64_t day) const {
    std::vector<std::string> result;
    for (const NamedDay& one : daysAfter(year, month, day)) {
        result.push_back(std::string{one.name} + "^" + std::to_string(one.month) + "/" + std::to_string(one.day));
    }
    return result;
}

std::uint64_t DataStoreEvents::getNumberOfEventsAtYear(std::uint64_t year) const {
    const auto list = listOfYear(year);
    return list ? static_cast<std::uint64_t>(std::count(list->begin(), list->end(), ' ')) + 1 : 0;
}

std::vector<std::string> DataStoreEvents::getEventAtYearAndDayMonth(std::string_view year,
                                                                    std::string_view dayMonth) const {
    return namesOfDay(*events_map_, *events_, year, dayMonth);
}

}  // namespace dinmala
