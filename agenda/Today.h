/// Which day it is in Nepal.
#pragma once

#include <chrono>

#include "base/TimeZone.h"

namespace dinmala {

/// The civil day in Nepal at an instant. Takes seconds, which reach past the year 2262 where a Moment ends.
[[nodiscard]] inline std::chrono::sys_days nepalDay(std::chrono::sys_seconds instant) {
    // Days are counted as today's clock counts them; see kathmandu().
    return std::chrono::floor<std::chrono::days>(instant + kathmandu().offsetAt(Moment{}));
}

}  // namespace dinmala
