#include "window/UpcomingRows.h"

#include "agenda/Sentences.h"
#include "agenda/Upcoming.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

std::vector<UpcomingEvent> eventsOf(const Page& page, UpcomingFilter filter) {
    if (filter == UpcomingFilter::all) return upcomingEvents(page.edition(), page.today());
    std::vector<UpcomingEvent> events = importantEvents(page.edition(), page.today());
    if (filter == UpcomingFilter::holidays) {
        std::erase_if(events, [](const UpcomingEvent& one) { return one.event.holiday != Holiday::national; });
    }
    return events;
}

std::string whyNoneOf(const Page& page, UpcomingFilter filter) {
    const Edition& edition = page.edition();
    const auto today = edition.calendar.toDate(page.today());
    if (!today) return tr("today lies outside the table");
    if (filter == UpcomingFilter::holidays && !edition.almanac.graded()) return tr("this edition tells no holidays");
    if (!edition.almanac.holds(today->year)) return noListsNote(edition, today->year);
    return tr("nothing more is listed");
}

}  // namespace

UpcomingRows upcomingRows(const Page& page, UpcomingFilter filter) {
    const PageLook look = page.look();
    UpcomingRows result;
    for (const UpcomingEvent& one : eventsOf(page, filter)) {
        result.rows.push_back({one.day, std::string{eventName(one.event, look.language)},
                               std::string{weekDayName(weekDayNumber(one.day), look.language)} + ", " +
                                   dateWords(one.date, look.language, look.digits),
                               distanceWords(one.day - page.today(), look.digits), one.event.holiday});
    }
    if (result.rows.empty()) result.whyNone = inDigits(whyNoneOf(page, filter), look.digits);
    return result;
}

}  // namespace dinmala
