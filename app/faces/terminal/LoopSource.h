/// Callbacks on the main loop that end with their owner.
#pragma once

#include <glib-unix.h>

#include <functional>
#include <memory>

namespace dinmala {

/// Owns one source of the default main loop; removes it when it goes.
class LoopSource {
public:
    LoopSource() = default;

    /// Calls back once, as soon as the loop has nothing more urgent.
    static LoopSource idle(std::function<void()> callback);

    /// Calls back at each such signal. Does nothing for a signal that the
    /// process was started to ignore (nohup, a script's background job).
    /// @param number SIGHUP, SIGINT, SIGTERM or SIGWINCH
    static LoopSource signal(int number, std::function<void()> callback);

    /// Calls back while any of the conditions holds, until this is reset.
    static LoopSource descriptor(int fd, GIOCondition conditions, std::function<void(GIOCondition)> callback);

    /// Whether the callback may still come.
    [[nodiscard]] bool isPending() const { return source_ && !g_source_is_destroyed(source_.get()); }
    void reset() { source_.reset(); }

private:
    struct Remove {
        void operator()(GSource* source) const {
            g_source_destroy(source);
            g_source_unref(source);
        }
    };
    explicit LoopSource(GSource* source) : source_(source) {}

    std::unique_ptr<GSource, Remove> source_;
};

}  // namespace dinmala
