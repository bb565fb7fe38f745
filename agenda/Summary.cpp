#include "agenda/Summary.h"

#include <algorithm>

#include "agenda/Sentences.h"
#include "agenda/Upcoming.h"
#include "i18n/Translation.h"

namespace dinmala {

DaySummary daySummary(const Edition& edition, std::chrono::sys_days day, Language language, Digits digits) {
    DaySummary summary;
    summary.holiday = std::chrono::weekday{day} == std::chrono::Saturday;
    const auto date = edition.calendar.toDate(day);
    if (!date) {
        summary.text = tr("this day lies outside the calendar");
        return summary;
    }
    std::string& text = summary.text;
    text.append(weekDayName(weekDayNumber(day), language)).append(", ").append(dateWords(*date, language, digits));
    text.append("\n").append(dateWords(day, language, digits));
    const auto addLine = [&text](const std::string& line) {
        if (!line.empty()) text.append("\n").append(line);
    };
    if (const auto listed = edition.almanac.day(*date)) {
        addLine(tithiWords(*listed, language));
        for (const Event& event : listed->events) {
            std::string line{eventName(event, language)};
            if (event.holiday == Holiday::national) line.append(" (").append(holidayWords(event.holiday)).append(")");
            addLine(line);
        }
        addLine(trustNote(*listed));
        summary.holiday = summary.holiday || listed->holiday() == Holiday::national;
        summary.provisional = listed->grade != Grade::published;
    }
    constexpr std::size_t kMost = 4;
    const std::vector<UpcomingEvent> next = importantEvents(edition, day);
    if (!next.empty()) text += '\n';
    for (std::size_t i = 0; i < std::min(kMost, next.size()); ++i) {
        addLine(distanceWords(std::chrono::days{next[i].daysLeft}, digits) + ": " +
                std::string{eventName(next[i].event, language)});
    }
    return summary;
}

}  // namespace dinmala
