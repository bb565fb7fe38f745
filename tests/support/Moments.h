/// Moments as a person in Nepal would write them, and a clock that stands still
/// until it is moved.
#pragma once

#include <chrono>

#include "calendar/Clock.h"
#include "calendar/TimeZone.h"

namespace dinmala::test {

/// The moment at which clocks in Nepal show this date and time.
inline Moment nepal(int year, unsigned month, unsigned day, int hour = 12, int minute = 0, int second = 0) {
    using namespace std::chrono;
    const year_month_day date{std::chrono::year{year}, std::chrono::month{month}, std::chrono::day{day}};
    return Moment{sys_days{date}} + hours{hour} + minutes{minute} + seconds{second} - (hours{5} + minutes{45});
}

/// Puts the process's default time zone back.
class DefaultTimeZoneGuard {
public:
    DefaultTimeZoneGuard() : before_(defaultTimeZone()) {}
    explicit DefaultTimeZoneGuard(TimeZone zone) : DefaultTimeZoneGuard() { setDefaultTimeZone(std::move(zone)); }
    ~DefaultTimeZoneGuard() { setDefaultTimeZone(before_); }
    DefaultTimeZoneGuard(const DefaultTimeZoneGuard&) = delete;
    DefaultTimeZoneGuard& operator=(const DefaultTimeZoneGuard&) = delete;

private:
    TimeZone before_;
};

}  // namespace dinmala::test
