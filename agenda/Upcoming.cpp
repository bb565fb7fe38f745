#include "agenda/Upcoming.h"

#include <algorithm>
#include <string>

#include "almanac/DataStoreEvents.h"
#include "base/Lines.h"

namespace dinmala {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr days kSpan{365};

/// The important events of BS 2070 after a day.
std::vector<UpcomingEvent> importantOf2070(const Edition& edition, sys_days today) {
    std::vector<UpcomingEvent> upcoming;
    for (const auto& [year, list] : embeddedEventTexts().importantYears) {
        if (year != "2070") continue;
        forEachToken(list, kAdDateLength, [&](const YearToken& token) {
            const auto ad = fixedNumber(token.head, kAdDateLength);
            const auto id = fixedNumber(token.id, token.id.size());
            if (!ad || !id) return;
            const sys_days day = std::chrono::year{*ad / 10000} / (*ad / 100 % 100) / (*ad % 100);
            const auto date = edition.calendar.toDate(day);
            const Event event{static_cast<std::uint16_t>(*id),
                              edition.almanac.eventName(static_cast<std::uint16_t>(*id)), Holiday::none,
                              Grade::published};
            if (date && day > today && !event.name.empty()) {
                upcoming.push_back({*date, day, event, (day - today).count()});
            }
        });
    }
    return upcoming;
}

}  // namespace

std::vector<UpcomingEvent> upcomingEvents(const Edition& edition, sys_days today) {
    std::vector<UpcomingEvent> upcoming;
    const auto date = edition.calendar.toDate(today);
    if (!date) return upcoming;
    const bool everyYear = edition.almanac.graded();
    for (BsYear year = date->year; year <= date->year + std::chrono::years{everyYear ? 1 : 0}; ++year) {
        for (const AlmanacDay& day : edition.almanac.year(year)) {
            if (day.day <= today || (everyYear && day.day > today + kSpan)) continue;
            for (const Event& event : day.events) {
                upcoming.push_back({day.date, day.day, event, (day.day - today).count()});
            }
        }
    }
    return upcoming;
}

std::vector<UpcomingEvent> importantEvents(const Edition& edition, sys_days today) {
    if (!edition.almanac.graded()) return importantOf2070(edition, today);
    std::vector<UpcomingEvent> upcoming = upcomingEvents(edition, today);
    std::erase_if(upcoming, [](const UpcomingEvent& one) { return one.event.holiday < Holiday::group; });
    return upcoming;
}

}  // namespace dinmala
