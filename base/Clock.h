/// The present moment, and the one seam through which it is read.
#pragma once

#include <time.h>

#include <chrono>
#include <cstdint>
#include <functional>

namespace dinmala {

/// A point of absolute time, independent of any zone.
using Moment = std::chrono::system_clock::time_point;

/// Gives the present moment. A test passes a lambda and moves time by moving
/// what the lambda returns.
using Clock = std::function<Moment()>;

/// The moment so many seconds after 1970-01-01 00:00 UTC. Moment ends in AD 2262 and begins in 1677: beyond, it is
/// the nearest that a whole number of weeks leads to. Weekday and time of day are right, and the date is, as
/// it should be, one that no month table has.
[[nodiscard]] constexpr Moment momentOf(std::int64_t seconds, std::int64_t nanoseconds = 0) {
    using namespace std::chrono;
    constexpr std::int64_t kWeek = std::chrono::seconds{weeks{1}}.count();
    constexpr std::int64_t kLast = floor<std::chrono::seconds>(Moment::max() - weeks{1}).time_since_epoch().count();
    constexpr std::int64_t kFirst = ceil<std::chrono::seconds>(Moment::min() + weeks{1}).time_since_epoch().count();
    if (seconds > kLast) seconds = kLast - kWeek + 1 + (seconds - kLast - 1) % kWeek;
    if (seconds < kFirst) seconds = kFirst + kWeek - 1 - (kFirst - 1 - seconds) % kWeek;
    return Moment{std::chrono::seconds{seconds}} + std::chrono::nanoseconds{nanoseconds};
}

/// The system clock.
inline Moment systemNow() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return momentOf(now.tv_sec, now.tv_nsec);
}

}  // namespace dinmala
