#include "app/platform/linux/KeyFilePreferences.h"

#include <glib.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <utility>

#include "i18n/Translation.h"

namespace dinmala {
namespace {

constexpr const char* kGroup = "display";
constexpr std::size_t kLimit = 1 << 20;

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;

/// The text as a key file; null when it is none.
KeyFile parse(const std::string& text) {
    KeyFile file(g_key_file_new(), &g_key_file_unref);
    if (text.empty()) return file;
    const auto flags = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    if (!g_key_file_load_from_data(file.get(), text.data(), text.size(), flags, nullptr)) file.reset();
    return file;
}

std::string textOf(GKeyFile* file) {
    std::size_t length = 0;
    const std::unique_ptr<char, decltype(&g_free)> data(g_key_file_to_data(file, &length, nullptr), &g_free);
    return {data.get(), length};
}

/// The file that a path names in the end; the path itself while there is none.
std::string followLinks(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
    return error ? path : target.string();
}

/// Moves a file aside under the first free name.
/// @param aside that name
/// @return 0 or an errno value
int keepAside(const std::string& path, std::string& aside) {
    for (int number = 1; number < 100; ++number) {
        aside = path + ".corrupt" + (number == 1 ? "" : "." + std::to_string(number));
        if (const int error = renameToNew(path, aside); error != EEXIST) return error;
    }
    return EEXIST;
}

}  // namespace

KeyFilePreferences::KeyFilePreferences(std::string path, Tell tell) : path_(std::move(path)), tell_(std::move(tell)) {
    const KeyFile file = parse(readFile(path_, kLimit).text);
    if (!file) return;
    const std::unique_ptr<char*, decltype(&g_strfreev)> keys(g_key_file_get_keys(file.get(), kGroup, nullptr, nullptr),
                                                             &g_strfreev);
    for (char** key = keys.get(); key != nullptr && *key != nullptr; ++key) {
        GError* error = nullptr;
        const bool value = g_key_file_get_boolean(file.get(), kGroup, *key, &error) != 0;
        if (error == nullptr) choices_.emplace(*key, value);
        g_clear_error(&error);
    }
}

std::string KeyFilePreferences::defaultPath() {
    return std::string(g_get_user_config_dir()) + "/dinmala/preferences.ini";
}

bool KeyFilePreferences::boolForKey(std::string_view key) const {
    const auto choice = choices_.find(key);
    return choice != choices_.end() && choice->second;
}

void KeyFilePreferences::setBoolForKey(bool value, std::string_view key) {
    const auto choice = choices_.find(key);
    if (choice == choices_.end() || choice->second != value) hasChanged_ = true;
    choices_.insert_or_assign(std::string(key), value);
    unsaved_.insert_or_assign(std::string(key), value);
}

bool KeyFilePreferences::synchronize() {
    if (!hasChanged_) {
        unsaved_.clear();
        return true;
    }

    const std::string target = followLinks(path_);
    if (const int error = makeFolder(folderOf(target)); error != 0) {
        return fail(tr("the folder {1} cannot be made: {2}", {folderOf(target), errorText(error)}));
    }
    // The file is read again, so that what was written there meanwhile survives.
    const FileText old = readFile(target, kLimit);
    const bool absent = old.error == ENOENT;
    if (!old.ok() && !absent)
        return fail(tr("{1} cannot be read and is left alone: {2}", {target, errorText(old.error)}));
    KeyFile file = parse(old.text);
    const bool corrupt = !file;
    if (corrupt) file = parse("");

    for (const auto& [key, value] : absent || corrupt ? choices_ : unsaved_) {
        g_key_file_set_boolean(file.get(), kGroup, key.c_str(), value);
    }
    struct stat status {};
    const bool known = stat(target.c_str(), &status) == 0;
    PendingFile saved(folderOf(target), textOf(file.get()), known ? status.st_mode & 0777 : 0600);
    int error = saved.error();
    std::string aside;
    if (error == 0 && corrupt) error = keepAside(target, aside);
    if (error == 0) error = saved.moveTo(target);
    if (error != 0) return fail(tr("{1} cannot be written: {2}", {target, errorText(error)}));
    if (corrupt && tell_) tell_(tr("{1} is damaged and was begun anew; the old one is {2}", {target, aside}));

    unsaved_.clear();
    hasChanged_ = false;
    lastFailure_.clear();
    return true;
}

bool KeyFilePreferences::fail(const std::string& message) {
    if (message != lastFailure_ && tell_)
        tell_(tr("What you chose to show holds until Dinmala ends, but was not saved: {1}", {message}));
    lastFailure_ = message;
    return false;
}

}  // namespace dinmala
