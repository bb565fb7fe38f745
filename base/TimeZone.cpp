#include "base/TimeZone.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace dinmala {

namespace {

TimeZone& mutableDefaultTimeZone() {
    static TimeZone zone = machine();
    return zone;
}

}  // namespace

LocalTime TimeZone::toLocal(Moment moment) const {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment.time_since_epoch());
    return LocalTime{seconds + offsetAt(moment)};
}

Moment TimeZone::toMoment(LocalTime local) const {
    // The offset is asked for at a moment that already uses it: a second round
    // settles every time but one that a change skips. That one counts on from the
    // time before the change.
    const std::chrono::sys_seconds asUtc{local.time_since_epoch()};
    const std::chrono::seconds offset = offsetAt(asUtc - offsetAt(asUtc));
    const Moment moment = asUtc - offset;
    return toLocal(moment) == local ? moment : asUtc - std::min(offset, offsetAt(moment));
}

const TimeZone& kathmandu() {
    static const TimeZone zone{"Asia/Kathmandu", [](Moment) -> std::chrono::seconds {
                                   return std::chrono::hours{5} + std::chrono::minutes{45};
                               }};
    return zone;
}

const TimeZone& machine() {
    static const TimeZone zone{"", [](Moment moment) {
                                   const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
                                   std::tm local{};
                                   localtime_r(&seconds, &local);
                                   return std::chrono::seconds{local.tm_gmtoff};
                               }};
    return zone;
}

const TimeZone& defaultTimeZone() { return mutableDefaultTimeZone(); }

void setDefaultTimeZone(TimeZone zone) { mutableDefaultTimeZone() = std::move(zone); }

std::uint64_t calendarDaysBetween(Moment a, Moment b) {
    const TimeZone& zone = defaultTimeZone();
    const auto from = std::chrono::floor<std::chrono::days>(zone.toLocal(std::min(a, b)));
    const auto to = std::chrono::floor<std::chrono::days>(zone.toLocal(std::max(a, b)));
    return from < to ? static_cast<std::uint64_t>((to - from).count()) : 0;
}

}  // namespace dinmala
