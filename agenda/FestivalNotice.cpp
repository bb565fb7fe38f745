#include "agenda/FestivalNotice.h"

#include <algorithm>

#include "agenda/Today.h"

namespace dinmala {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::sys_days;

constexpr hours kEvening{18};
constexpr hours kMorning{7};
constexpr hours kNoon{12};

template <typename Value>
bool has(const std::vector<Value>& values, const Value& value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

/// Whether the clock of a zone has shown `from` in this day of Nepal's. The day's beginning counts for it where it
/// falls between `from` and `until`, and where a change of the clock leaves `from` out. REQUIRES: `now` is in this day.
bool hasCome(hours from, hours until, sys_days day, Moment now, const TimeZone& zone) {
    const Moment begin = kathmandu().toMoment(LocalTime{day.time_since_epoch()});
    const LocalTime shown = zone.toLocal(begin);
    const LocalTime midnight = std::chrono::floor<days>(shown);
    if (shown >= midnight + from && shown < midnight + until) return true;
    Moment moment = zone.toMoment(midnight + from);
    if (moment < begin) moment = zone.toMoment(midnight + days{1} + from);
    return now >= moment || moment >= begin + days{1};
}

/// A day with what is to be told of it.
std::optional<AlmanacDay> tellable(const Edition& edition, sys_days day, TellOf of, const ToldFestivals& told) {
    const auto date = edition.calendar.toDate(day);
    if (!date || has(told.days, day)) return std::nullopt;
    auto found = edition.almanac.day(*date);
    if (!found) return std::nullopt;
    const bool holidaysOnly = of == TellOf::holidays && edition.almanac.graded();
    std::erase_if(found->events, [&](const Event& event) {
        return has(told.left, event.id) || (holidaysOnly && event.holiday < Holiday::group);
    });
    if (found->events.empty()) return std::nullopt;
    std::stable_sort(found->events.begin(), found->events.end(),
                     [](const Event& a, const Event& b) { return a.holiday > b.holiday; });
    return found;
}

}  // namespace

std::optional<FestivalNotice> dueNotice(const Edition& edition, Moment now, const TimeZone& zone,
                                        const TellChoice& choice, const ToldFestivals& told) {
    if (choice.when == TellWhen::never) return std::nullopt;
    const sys_days today = nepalDay(std::chrono::floor<std::chrono::seconds>(now));
    FestivalNotice notice{today, {}};
    const auto add = [&](sys_days day) {
        if (auto found = tellable(edition, day, choice.of, told)) notice.days.push_back(std::move(*found));
    };
    if (choice.when == TellWhen::morning) {
        if (hasCome(kMorning, kNoon, today, now, zone)) add(today);
    } else {
        add(today);  // of which nothing was told the evening before: it was slept through
        // Evenings have no beginning of a day in them: Nepal's tomorrow would be a day too far away then.
        if (!notice.days.empty() || hasCome(kEvening, kEvening, today, now, zone)) add(today + days{1});
    }
    if (notice.days.empty()) return std::nullopt;
    return notice;
}

}  // namespace dinmala
