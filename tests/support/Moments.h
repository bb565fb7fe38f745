/// Moments as a person in Nepal would write them, and a clock that stands still
/// until it is moved.
#pragma once

#include <stdlib.h>
#include <time.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "base/TimeZone.h"

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

/// Makes the C library's zone, and so machine(), that of a tz-database name.
class MachineZoneGuard {
public:
    explicit MachineZoneGuard(const char* name) {
        if (const char* zone = std::getenv("TZ")) before_ = zone;
        setenv("TZ", name, 1);
        tzset();
    }
    ~MachineZoneGuard() {
        before_ ? setenv("TZ", before_->c_str(), 1) : unsetenv("TZ");
        tzset();
    }
    MachineZoneGuard(const MachineZoneGuard&) = delete;
    MachineZoneGuard& operator=(const MachineZoneGuard&) = delete;

private:
    std::optional<std::string> before_;
};

}  // namespace dinmala::test
