#include "cal/Lists.h"

#include <algorithm>
#include <chrono>
#include <vector>

#include "cal/Columns.h"
#include "cal/Json.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"
#include "calendar/Text.h"

namespace dinmala::cal {

namespace {

const TextMap& listsOf(const DataStore& store, Almanac almanac) {
    return almanac == Almanac::Events ? store.dse().events_map() : store.dst().tithi_map();
}

bool hasList(const DataStore& store, Almanac almanac, std::int32_t year) {
    return listsOf(store, almanac).contains(std::to_string(year));
}

const char* nameOf(Almanac almanac) { return almanac == Almanac::Events ? "events" : "tithi"; }

/// One name on one BS day; the day need not be in the calendar.
struct Entry {
    Date bs;
    std::string name;
};

/// The events of a BS year after a month and day, in list order.
std::vector<Entry> eventsAfter(const DataStore& store, std::int32_t year, std::int32_t month, std::int32_t day) {
    std::vector<Entry> entries;
    for (const std::string& text : store.dse().getUpcomingEventsOfYearAfterMonthAndDay(
             static_cast<std::uint64_t>(year), static_cast<std::uint64_t>(month), static_cast<std::uint64_t>(day))) {
        // "<name>^<month>/<day>"; a name may hold a slash.
        const std::size_t caret = text.rfind('^');
        const std::size_t slash = text.find('/', caret);
        const std::string_view view = text;
        entries.push_back(
            {{year, intValue(view.substr(caret + 1)), intValue(view.substr(slash + 1))}, text.substr(0, caret)});
    }
    return entries;
}

std::vector<Entry> tithisOf(const DataStore& store, std::int32_t year) {
    const DayFinder finder{store};
    std::vector<Entry> entries;
    for (std::int32_t month = 1; month <= 12; ++month) {
        for (std::int32_t day = 1; finder.find(Date{year, month, day}, Calendar::Bs); ++day) {
            const std::string key =
                padded(static_cast<std::uint64_t>(day), 2) + padded(static_cast<std::uint64_t>(month), 2);
            for (std::string& name : store.getDayTithi(std::to_string(year), key)) {
                entries.push_back({{year, month, day}, std::move(name)});
            }
        }
    }
    return entries;
}

bool sameDay(const Date& a, const Date& b) { return a.year == b.year && a.month == b.month && a.day == b.day; }

std::chrono::sys_days civilDay(const Date& ad) {
    return std::chrono::year{ad.year} / static_cast<int>(ad.month) / static_cast<int>(ad.day);
}

/// An event and its distance from today; without a day where its BS day is not in
/// the calendar.
struct Upcoming {
    std::string name;
    Date bs;
    std::optional<Day> day;
    std::int64_t left = 0;
};

std::string leftText(const Upcoming& event, const Settings& settings) {
    if (!event.day) return "";
    const auto left = static_cast<std::uint64_t>(event.left);
    if (!settings.nepali) {
        return left == 0 ? "today" : left == 1 ? "tomorrow" : "in " + numberText(left, false, 3) + " days";
    }
    if (left == 0) return "आज";
    return left == 1 ? "भोलि" : numberText(left, settings.devanagari, 3) + " दिन बाँकी";
}

std::string listed(const std::vector<Upcoming>& events, const DayFinder& finder, const Settings& settings) {
    if (settings.json) {
        Json list = Json::array();
        for (const Upcoming& event : events) {
            Json json{{"name", event.name}, {"bs", dateText(event.bs)}, {"ad", nullptr}, {"daysLeft", nullptr}};
            if (event.day) {
                json.update(jsonOf(*event.day, finder));
                json["daysLeft"] = event.left;
            }
            list.push_back(std::move(json));
        }
        return printed(list);
    }
    std::string text;
    Line line{settings.terminal};
    for (const Upcoming& event : events) {
        line.put(0, dateText(event.bs, settings.devanagari));
        if (event.day) line.put(12, dateText(event.day->ad), settings.colours ? "2" : "");
        line.put(24, leftText(event, settings));
        line.put(40, event.name, settings.colours && event.left <= 1 ? "1" : "");
        text += line.take();
    }
    return text;
}

}  // namespace

std::optional<std::string> yearList(const DataStore& store, Almanac almanac, std::int32_t year,
                                    const Settings& settings) {
    if (!hasList(store, almanac, year)) return std::nullopt;
    const std::vector<Entry> entries =
        almanac == Almanac::Events ? eventsAfter(store, year, 0, 0) : tithisOf(store, year);
    if (!settings.json) {
        std::string text;
        for (const Entry& entry : entries) {
            appendDate(text, entry.bs, settings.devanagari);
            text.append("  ").append(entry.name).append("\n");
        }
        return text;
    }
    const DayFinder finder{store};
    Json days = Json::array();
    for (std::size_t i = 0; i < entries.size();) {
        const Date bs = entries[i].bs;
        const auto day = finder.find(bs, Calendar::Bs);
        Json json = day ? jsonOf(*day, finder) : Json{{"bs", dateText(bs)}, {"ad", nullptr}, {"weekday", nullptr}};
        Json names = Json::array();
        for (; i < entries.size() && sameDay(entries[i].bs, bs); ++i) names.push_back(entries[i].name);
        json[nameOf(almanac)] = std::move(names);
        days.push_back(std::move(json));
    }
    return printed({{"year", year}, {"days", std::move(days)}});
}

std::optional<std::string> dayList(const DataStore& store, Almanac almanac, const Day& day, const Settings& settings) {
    if (!hasList(store, almanac, day.bs.year)) return std::nullopt;
    const std::string year = std::to_string(day.bs.year);
    const std::string key =
        padded(static_cast<std::uint64_t>(day.bs.day), 2) + padded(static_cast<std::uint64_t>(day.bs.month), 2);
    const auto names = almanac == Almanac::Events ? store.getDayEvent(year, key) : store.getDayTithi(year, key);
    if (settings.json) {
        Json json = jsonOf(day, DayFinder{store});
        json[nameOf(almanac)] = names;
        return printed(json);
    }
    std::string text;
    for (const std::string& name : names) text += name + "\n";
    return text;
}

std::optional<std::string> upcomingList(const DataStore& store, const Day& today, const Settings& settings) {
    if (!hasList(store, Almanac::Events, today.bs.year)) return std::nullopt;
    const DayFinder finder{store};
    std::vector<Upcoming> events;
    for (const Entry& entry : eventsAfter(store, today.bs.year, today.bs.month, today.bs.day)) {
        const auto day = finder.find(entry.bs, Calendar::Bs);
        const std::int64_t left = day ? (civilDay(day->ad) - civilDay(today.ad)).count() : 0;
        events.push_back({entry.name, entry.bs, day, left});
    }
    return listed(events, finder, settings);
}

std::string importantList(const DataStore& store, const Day& today, const Settings& settings) {
    const DayFinder finder{store};
    std::vector<Upcoming> events;
    for (const std::string& text : store.getUpcomingEvents()) {
        // "<name>~भोलि", "<name>~१० दिन बाँकी"
        const std::size_t tilde = text.rfind('~');
        const std::string_view phrase = std::string_view{text}.substr(tilde + 1);
        const std::int32_t left = readNumber(phrase.substr(0, phrase.find(' '))).value_or(1);
        const std::chrono::year_month_day ad{civilDay(today.ad) + std::chrono::days{left}};
        const auto day = finder.find(Date{int{ad.year()}, static_cast<std::int32_t>(unsigned{ad.month()}),
                                          static_cast<std::int32_t>(unsigned{ad.day()})},
                                     Calendar::Ad);
        if (day) events.push_back({text.substr(0, tilde), day->bs, day, left});
    }
    return listed(events, finder, settings);
}

std::string yearsWithList(const DataStore& store, Almanac almanac) {
    std::vector<std::string_view> years;
    for (const auto& [year, list] : listsOf(store, almanac)) years.push_back(year);
    std::sort(years.begin(), years.end());
    if (years.empty()) return "none";
    return std::string{years.front()} + " to " + std::string{years.back()};
}

}  // namespace dinmala::cal
