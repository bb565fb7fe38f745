#include "cal/Lists.h"

#include "cal/Columns.h"
#include "cal/Json.h"

namespace dinmala::cal {

namespace {

std::vector<std::string_view> namesOf(const AlmanacDay& day, ListKind kind) {
    std::vector<std::string_view> names;
    if (kind == ListKind::events) {
        for (const Event& event : day.events) names.push_back(event.name);
    } else {
        for (const Tithi& tithi : day.tithis) names.push_back(tithi.name);
    }
    return names;
}

Json dayJson(const Edition& edition, ListKind kind, const AlmanacDay& day) {
    Json json = jsonOf(day.date, day.day);
    addDay(json, day, edition.almanac.graded(), kind == ListKind::tithis, kind == ListKind::events);
    return json;
}

std::string leftText(std::int64_t daysLeft, const Settings& settings) {
    const auto left = static_cast<std::uint64_t>(daysLeft);
    if (settings.language == Language::english)
        return left == 1 ? "tomorrow" : "in " + numberText(left, Digits::western, 3) + " days";
    return left == 1 ? "भोलि" : numberText(left, settings.digits, 3) + " दिन बाँकी";
}

}  // namespace

std::string yearList(const Edition& edition, ListKind kind, BsYear year, const Settings& settings) {
    std::string text;
    Json days = Json::array();
    for (const AlmanacDay& day : edition.almanac.year(year)) {
        const std::vector<std::string_view> names = namesOf(day, kind);
        if (names.empty()) continue;
        if (settings.json) {
            days.push_back(dayJson(edition, kind, day));
            continue;
        }
        for (const std::string_view name : names) {
            appendDate(text, day.date, settings.digits);
            text.append("  ").append(name).append("\n");
        }
    }
    return settings.json ? printed({{"year", int{year}}, {"days", std::move(days)}}) : text;
}

std::string dayList(const Edition& edition, ListKind kind, const AlmanacDay& day, const Settings& settings) {
    if (settings.json) return printed(dayJson(edition, kind, day));
    std::string text;
    for (const std::string_view name : namesOf(day, kind)) text.append(name).append("\n");
    return text;
}

std::string upcomingList(const std::vector<UpcomingEvent>& events, const Edition& edition, const Settings& settings) {
    if (settings.json) {
        const bool graded = edition.almanac.graded();
        Json list = Json::array();
        for (const UpcomingEvent& one : events) {
            Json json{{"name", one.event.name},
                      {"bs", dateText(one.date)},
                      {"ad", nullptr},
                      {"daysLeft", one.daysLeft},
                      {"weekday", nullptr},
                      {"id", one.event.id},
                      {"holiday", graded ? Json(holidayName(one.event.holiday)) : Json{}},
                      {"grade", graded ? Json(gradeName(one.event.grade)) : Json{}}};
            json.update(jsonOf(one.date, one.day));
            list.push_back(std::move(json));
        }
        return printed(list);
    }
    std::string text;
    Line line{settings.terminal};
    for (const UpcomingEvent& one : events) {
        line.put(0, dateText(one.date, settings.digits));
        line.put(12, dateText(std::chrono::year_month_day{one.day}), settings.colours ? "2" : "");
        line.put(24, leftText(one.daysLeft, settings));
        line.put(40, one.event.name, settings.colours && one.daysLeft <= 1 ? "1" : "");
        text += line.take();
    }
    return text;
}

}  // namespace dinmala::cal
