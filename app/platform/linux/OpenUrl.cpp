#include "app/platform/linux/OpenUrl.h"

#include <gio/gio.h>

#include "i18n/Translation.h"

namespace dinmala {

void openUrl(const std::string& url, const Tell& tell) {
    GError* error = nullptr;
    if (g_app_info_launch_default_for_uri(url.c_str(), nullptr, &error) != FALSE) return;
    const std::string why = error != nullptr ? error->message : tr("no program for it");
    if (tell) tell(tr("{1} cannot be opened: {2}", {url, why}));
    g_clear_error(&error);
}

}  // namespace dinmala
