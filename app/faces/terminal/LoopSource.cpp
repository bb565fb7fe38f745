#include "app/faces/terminal/LoopSource.h"

#include <csignal>
#include <utility>

namespace dinmala {

namespace {

template <typename Function>
void attach(GSource* source, GSourceFunc trampoline, Function callback) {
    g_source_set_callback(source, trampoline, new Function(std::move(callback)),
                          [](gpointer data) { delete static_cast<Function*>(data); });
    g_source_attach(source, nullptr);
}

using Plain = std::function<void()>;
using OnCondition = std::function<void(GIOCondition)>;

}  // namespace

LoopSource LoopSource::idle(Plain callback) {
    GSource* source = g_idle_source_new();
    attach(
        source,
        [](gpointer data) -> gboolean {
            (*static_cast<Plain*>(data))();
            return G_SOURCE_REMOVE;
        },
        std::move(callback));
    return LoopSource(source);
}

LoopSource LoopSource::signal(int number, Plain callback) {
    struct sigaction now {};
    sigaction(number, nullptr, &now);
    if (now.sa_handler == SIG_IGN) return {};

    GSource* source = g_unix_signal_source_new(number);
    attach(
        source,
        [](gpointer data) -> gboolean {
            (*static_cast<Plain*>(data))();
            return G_SOURCE_CONTINUE;
        },
        std::move(callback));
    return LoopSource(source);
}

LoopSource LoopSource::descriptor(int fd, GIOCondition conditions, OnCondition callback) {
    GSource* source = g_unix_fd_source_new(fd, conditions);
    const GUnixFDSourceFunc trampoline = [](gint, GIOCondition condition, gpointer data) -> gboolean {
        (*static_cast<OnCondition*>(data))(condition);
        return G_SOURCE_CONTINUE;
    };
    attach(source, G_SOURCE_FUNC(trampoline), std::move(callback));
    return LoopSource(source);
}

}  // namespace dinmala
