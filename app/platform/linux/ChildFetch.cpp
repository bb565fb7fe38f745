#include "app/platform/linux/ChildFetch.h"

#include <gio/gio.h>

#include <memory>

namespace dinmala {

namespace {

struct Unref {
    void operator()(GSubprocess* child) const { g_object_unref(child); }
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};

}  // namespace

std::optional<std::string> httpGetByChild(const std::string& helper, const std::string& url) {
    const auto flags =
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE);
    const std::unique_ptr<GSubprocess, Unref> child{
        g_subprocess_new(flags, nullptr, helper.c_str(), url.c_str(), nullptr)};
    GBytes* output = nullptr;
    if (!child || g_subprocess_communicate(child.get(), nullptr, nullptr, &output, nullptr, nullptr) == FALSE) {
        return std::nullopt;
    }
    const std::unique_ptr<GBytes, Unref> body{output};
    gsize size = 0;
    const void* data = g_bytes_get_data(body.get(), &size);
    if (g_subprocess_get_successful(child.get()) == FALSE || size == 0) return std::nullopt;
    return std::string(static_cast<const char*>(data), size);
}

}  // namespace dinmala
