#include "plasma/CalendarPlugin.h"

#include <QCalendar>
#include <QHash>
#include <QMultiHash>
#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "agenda/EditionChoice.h"
#include "agenda/PageLook.h"
#include "agenda/Sentences.h"
#include "base/DateText.h"
#include "base/Names.h"
#include "base/Text.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

using CalendarEvents::CalendarEventsPlugin;
using CalendarEvents::EventData;
using std::chrono::days;
using std::chrono::sys_days;

/// 1970-01-01 in Qt's count of days.
constexpr qint64 kEpoch = 2440588;

QString text(std::string_view utf8) { return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size())); }

QDate dateOf(sys_days day) { return QDate::fromJulianDay(day.time_since_epoch().count() + kEpoch); }

sys_days dayOf(const QDate& date) { return sys_days{days{date.toJulianDay() - kEpoch}}; }

CalendarEventsPlugin::SubLabel labelOf(const AlmanacDay& day, PageLook look) {
    const std::string date = dateWords(day.date, look.language, look.digits);
    std::vector<std::string_view> words{date};
    for (const Tithi& tithi : day.tithis) {
        const bool isEnglish = look.language == Language::english && tithi.number != 0;
        words.push_back(isEnglish ? tithiName(tithi.number, Language::english) : tithi.name);
    }
    CalendarEventsPlugin::SubLabel label;
    label.label = text(joined(words, ", "));
    label.yearLabel = text(numberText(static_cast<std::uint64_t>(int{day.date.year}), look.digits));
    label.monthLabel = text(bsMonthName(day.date.month, look.language));
    label.dayLabel = text(numberText(unsigned{day.date.day}, look.digits));
    label.priority = CalendarEventsPlugin::SubLabelPriority::Low;
    return label;
}

EventData eventOf(const AlmanacDay& day, const Event& event, Language language) {
    EventData data;
    const QDateTime begin(dateOf(day.day), QTime(0, 0));
    data.setStartDateTime(begin);
    data.setEndDateTime(begin);
    data.setIsAllDay(true);
    data.setTitle(text(eventName(event, language)));
    // Nearly every day has a festival of somebody's: the grid marks those for which many stay at home.
    const bool isOff = event.holiday >= Holiday::group;
    data.setIsMinor(!isOff);
    data.setEventType(isOff ? EventData::Holiday : EventData::Event);
    data.setUid(text("dinmala-" + dateText(day.date) + "-" + std::to_string(event.id)));
    std::vector<std::string> words;
    for (std::string one : {holidayWords(event.holiday), trustNote(day, event, language)}) {
        if (!one.empty()) words.push_back(std::move(one));
    }
    data.setDescription(text(joined(words, "; ")));
    return data;
}

}  // namespace

CalendarPlugin::CalendarPlugin(QObject* parent)
    : CalendarEventsPlugin(parent), preferences_(KeyFilePreferences::defaultPath(), nullptr) {
    useTranslationsIn(DINMALA_LOCALE_DIR);  // the process is another's: nothing of it is set
}

void CalendarPlugin::loadEventsForDateRange(const QDate& startDate, const QDate& endDate) {
    preferences_.reload();
    const Edition& edition = editions_.get(chosenEdition({}, preferences_.textForKey(kEditionKey)));
    const PageLook look = keptLook(preferences_.textForKey(kLanguageKey), preferences_.textForKey(kDigitsKey));
    (void)editions_.takeProblems();  // the panel program tells of them

    const auto months = edition.calendar.months();
    QMultiHash<QDate, EventData> events;
    QHash<QDate, QCalendar::YearMonthDay> dates;
    QHash<QDate, SubLabel> labels;
    if (startDate.isValid() && endDate.isValid()) {
        const sys_days last = std::min(dayOf(endDate), months.back().first() + days{months.back().length - 1});
        for (sys_days day = std::max(dayOf(startDate), months.front().first()); day <= last; day += days{1}) {
            const BsDate date = *edition.calendar.toDate(day);
            const AlmanacDay found = edition.almanac.day(date).value_or(AlmanacDay{date, day, {}, {}, {}});
            const QDate key = dateOf(day);
            dates.insert(
                key, {int{date.year}, static_cast<int>(unsigned{date.month}), static_cast<int>(unsigned{date.day})});
            labels.insert(key, labelOf(found, look));
            for (const Event& event : found.events) events.insert(key, eventOf(found, event, look.language));
        }
    }
    Q_EMIT dataReady(events);
    Q_EMIT alternateCalendarDateReady(dates);
    Q_EMIT subLabelReady(labels);
}

}  // namespace dinmala
