#include "cal/ICalendar.h"

#include <libical/ical.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "agenda/MonthPage.h"
#include "agenda/Sentences.h"

namespace dinmala::cal {

namespace {

using std::chrono::sys_days;

/// The end of every UID here: it keeps them apart from other makers'.
constexpr std::string_view kUidTail = "@dinmala";

struct FreeComponent {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using Component = std::unique_ptr<icalcomponent, FreeComponent>;

std::string textOf(const Component& component) {
    const std::unique_ptr<char, decltype(&icalmemory_free_buffer)> text{icalcomponent_as_ical_string_r(component.get()),
                                                                        icalmemory_free_buffer};
    return text.get();
}

icaltimetype dateOf(sys_days day) {
    const std::chrono::year_month_day date{day};
    icaltimetype time = icaltime_null_date();
    time.year = int{date.year()};
    time.month = static_cast<int>(unsigned{date.month()});
    time.day = static_cast<int>(unsigned{date.day()});
    return time;
}

/// The kinds of entries, as calendar programs colour and filter them.
std::string_view kindName(std::optional<Holiday> holiday, Language language) {
    const bool english = language == Language::english;
    if (!holiday) return english ? "Bikram Sambat" : "विक्रम संवत्";
    switch (*holiday) {
        case Holiday::national:
            return english ? "Public holiday" : "सार्वजनिक बिदा";
        case Holiday::group:
            return english ? "Holiday of a group or region" : "समूह वा क्षेत्रको बिदा";
        case Holiday::observed:
            return english ? "Observance" : "औपचारिक दिवस";
        case Holiday::none:
            break;
    }
    return english ? "Festival" : "पर्व";
}

struct Entry {
    std::string uid;
    sys_days day;
    std::string summary;
    std::string description;
    std::string_view kind;
    bool tentative = false;
};

class Writer {
public:
    Writer(const Edition& edition, const ICalendarChoice& choice, std::chrono::sys_seconds stamp)
        : edition_(edition), choice_(choice), stamp_(stamp) {}

    std::string text() {
        const std::string name = choice_.language == Language::english ? "Nepali calendar" : "नेपाली पात्रो";
        const Component calendar{icalcomponent_vanew(ICAL_VCALENDAR_COMPONENT, icalproperty_new_version("2.0"),
                                                     icalproperty_new_prodid("-//Dinmala//dinmala-cal//EN"),
                                                     icalproperty_new_calscale("GREGORIAN"), nullptr)};
        for (const char* key : {"NAME", "X-WR-CALNAME"}) {
            icalproperty* property = icalproperty_new_x(name.c_str());
            icalproperty_set_x_name(property, key);
            icalcomponent_add_property(calendar.get(), property);
        }
        // The entries go between: libical would hold all of them at once.
        text_ = textOf(calendar);
        const std::string end = "END:VCALENDAR\r\n";
        text_.resize(text_.size() - end.size());
        for (BsYear year = choice_.first; year <= choice_.last; ++year) addYear(year);
        return std::move(text_) + end;
    }

private:
    void addYear(BsYear year) {
        std::map<std::uint16_t, int> seen;
        for (unsigned month = 1; month <= 12; ++month) {
            for (const AlmanacDay& day : monthDays(edition_, {year, BsMonth{month}})) {
                if (choice_.months && unsigned{day.date.day} == 1) addMonth(day);
                if (choice_.days) addDay(day);
                for (const Event& event : day.events) addEvent(day, event, ++seen[event.id]);
            }
        }
    }

    void addMonth(const AlmanacDay& day) {
        add({"month-" + dateText(day.date).substr(0, 7), day.day,
             std::string{bsMonthName(day.date.month, choice_.language)} + " " +
                 numberText(static_cast<std::uint64_t>(int{day.date.year}), choice_.digits),
             trustNote(withoutEvents(day)), kindName(std::nullopt, choice_.language), day.grade != Grade::published});
    }

    /// The AD day is what stays when a year is published with other months.
    void addDay(const AlmanacDay& day) {
        const std::string tithi = tithiWords(day);
        add({"day-" + dateText(std::chrono::year_month_day{day.day}), day.day,
             dateWords(day.date, choice_.language, choice_.digits) + (tithi.empty() ? "" : ", " + tithi),
             trustNote(withoutEvents(day)), kindName(std::nullopt, choice_.language), day.grade != Grade::published});
    }

    void addEvent(const AlmanacDay& day, const Event& event, int which) {
        std::string uid = std::to_string(int{day.date.year}) + "-" + std::to_string(event.id);
        if (which > 1) uid += "-" + std::to_string(which);
        std::string description = dateWords(day.date, choice_.language, choice_.digits);
        const auto append = [&description](std::string_view separator, const std::string& more) {
            if (!more.empty()) description.append(separator).append(more);
        };
        append(", ", tithiWords(day));
        append("\n", holidayWords(event.holiday));
        const std::string note = trustNote(day, event, choice_.language);
        append("\n", note);
        add({std::move(uid), day.day, std::string{eventName(event, choice_.language)}, std::move(description),
             kindName(event.holiday, choice_.language), !note.empty()});
    }

    static AlmanacDay withoutEvents(AlmanacDay day) {
        day.events.clear();
        return day;
    }

    void add(const Entry& entry) {
        const auto seconds = stamp_.time_since_epoch().count();
        // Whole hours from 2026 on: more than one correction a day, and a number that 32 bits hold.
        const auto sequence = std::max<std::int64_t>(0, seconds / 3600 - kHours2026);
        const Component event{icalcomponent_vanew(
            ICAL_VEVENT_COMPONENT, icalproperty_new_uid((entry.uid + std::string{kUidTail}).c_str()),
            icalproperty_new_dtstamp(icaltime_from_timet_with_zone(seconds, 0, icaltimezone_get_utc_timezone())),
            icalproperty_new_sequence(static_cast<int>(sequence)), icalproperty_new_dtstart(dateOf(entry.day)),
            icalproperty_new_summary(entry.summary.c_str()),
            icalproperty_new_categories(std::string{entry.kind}.c_str()),
            icalproperty_new_transp(ICAL_TRANSP_TRANSPARENT),
            icalproperty_new_status(entry.tentative ? ICAL_STATUS_TENTATIVE : ICAL_STATUS_CONFIRMED), nullptr)};
        if (!entry.description.empty()) {
            icalcomponent_add_property(event.get(), icalproperty_new_description(entry.description.c_str()));
        }
        text_ += textOf(event);
    }

    static constexpr std::int64_t kHours2026 =
        sys_days{std::chrono::year{2026} / 1 / 1}.time_since_epoch() / std::chrono::hours{1};

    const Edition& edition_;
    const ICalendarChoice& choice_;
    std::chrono::sys_seconds stamp_;
    std::string text_;
};

}  // namespace

std::string iCalendarText(const Edition& edition, const ICalendarChoice& choice, std::chrono::sys_seconds stamp) {
    return Writer{edition, choice, stamp}.text();
}

}  // namespace dinmala::cal
