#include "desktop/OpenUrl.h"

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

void startProgram(const std::vector<std::string>& command, const std::string& token, const Tell& tell) {
    std::vector<const char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command) words.push_back(word.c_str());
    words.push_back(nullptr);
    char** environment = g_get_environ();
    for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
        if (!token.empty()) environment = g_environ_setenv(environment, name, token.c_str(), TRUE);
    }
    GError* error = nullptr;
    // GLib reaps the child: it is another one's. Its words are for nobody.
    if (g_spawn_async(nullptr, const_cast<char**>(words.data()), environment, G_SPAWN_DEFAULT, nullptr, nullptr,
                      nullptr, &error) == FALSE &&
        tell) {
        tell(tr("{1} cannot be opened: {2}", {command.front(), error->message}));
    }
    g_clear_error(&error);
    g_strfreev(environment);
}

}  // namespace dinmala
