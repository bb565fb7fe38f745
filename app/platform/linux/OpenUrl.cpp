#include "app/platform/linux/OpenUrl.h"

#include <gio/gio.h>

namespace dinmala {

void openUrl(const std::string& url, const Tell& tell) {
    GError* error = nullptr;
    if (g_app_info_launch_default_for_uri(url.c_str(), nullptr, &error) != FALSE) return;
    if (tell) tell(url + " cannot be opened: " + (error != nullptr ? error->message : "no program for it"));
    g_clear_error(&error);
}

}  // namespace dinmala
