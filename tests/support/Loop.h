/// The main loop as a test runs it.
#pragma once

#include <glib.h>

#include <functional>

namespace dinmala {

/// Handles events until something has happened; false when it did not in time.
inline bool runUntil(const std::function<bool()>& happened, int milliseconds = 5000) {
    const gint64 end = g_get_monotonic_time() + gint64{milliseconds} * 1000;
    while (!happened()) {
        if (g_get_monotonic_time() >= end) return false;
        if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(500);
    }
    return true;
}

/// Handles events for a while: for what must not happen.
inline void runFor(int milliseconds) {
    static_cast<void>(runUntil([] { return false; }, milliseconds));
}

/// Until all that is due has been done.
inline void runDueSources() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

}  // namespace dinmala
