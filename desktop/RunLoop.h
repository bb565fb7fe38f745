/// What the main loop tells of.
#pragma once

#include <functional>

namespace dinmala {

/// The main loop's sources. All callbacks come on the loop's thread, one at a
/// time, and stay registered as long as the loop lives.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    virtual void everySecond(std::function<void()> callback) = 0;
    /// The system's wall clock was set.
    virtual void onSystemClockChange(std::function<void()> callback) = 0;
    /// The machine woke from sleep.
    virtual void onWake(std::function<void()> callback) = 0;
};

}  // namespace dinmala
