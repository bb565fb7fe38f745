/// The present moment, and the one seam through which it is read.
#pragma once

#include <chrono>
#include <functional>

namespace dinmala {

/// A point of absolute time, independent of any zone.
using Moment = std::chrono::system_clock::time_point;

/// Gives the present moment. A test passes a lambda and moves time by moving
/// what the lambda returns.
using Clock = std::function<Moment()>;

/// The system clock.
inline Moment systemNow() { return std::chrono::system_clock::now(); }

}  // namespace dinmala
