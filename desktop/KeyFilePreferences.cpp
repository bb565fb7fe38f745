#include "desktop/KeyFilePreferences.h"

#include <glib.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include "i18n/Translation.h"

namespace dinmala {
namespace {

constexpr const char* kGroup = "display";
constexpr std::size_t kLimit = 1 << 20;

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;

/// The text as a key file; null when it is none. GLib takes a line that begins with
/// a zero for a comment.
KeyFile parse(const std::string& text) {
    KeyFile file(g_key_file_new(), &g_key_file_unref);
    if (text.empty()) return file;
    if (text.find('\0') != std::string::npos) return {nullptr, &g_key_file_unref};
    const auto flags = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    if (!g_key_file_load_from_data(file.get(), text.data(), text.size(), flags, nullptr)) file.reset();
    return file;
}

std::string textOf(GKeyFile* file) {
    std::size_t length = 0;
    const std::unique_ptr<char, decltype(&g_free)> data(g_key_file_to_data(file, &length, nullptr), &g_free);
    return {data.get(), length};
}

/// Turns a path into that of the file that it names in the end, whether or not it is there.
/// @return 0 or an errno value
int followLinks(std::string& path) {
    for (int links = 0; links < 40; ++links) {
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        // No link, or nothing there.
        if (error == std::errc::invalid_argument || error == std::errc::no_such_file_or_directory) return 0;
        if (error) return error.value();
        path = (std::filesystem::path(path).parent_path() / next).string();
    }
    return ELOOP;
}

/// A value as a key file's boolean; nothing for any other text.
std::optional<bool> booleanOf(std::string_view value) {
    if (value == "true" || value == "1") return true;
    if (value == "false" || value == "0") return false;
    return std::nullopt;
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
    read();
}

KeyFilePreferences::Stamp KeyFilePreferences::stampOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

bool KeyFilePreferences::read() {
    stamp_ = stampOf(path_);  // before the text: a change between the two is seen at the next look
    const FileText text = readFile(path_, kLimit);
    unread_ = text.error != ENOENT ? text.error : 0;
    if (unread_ != 0) stamp_ = {};  // so that every look tries again
    const KeyFile file = parse(text.text);
    if (!file || g_key_file_has_group(file.get(), kGroup) == 0) return false;
    Choices choices = unsaved_;
    const std::unique_ptr<char*, decltype(&g_strfreev)> keys(g_key_file_get_keys(file.get(), kGroup, nullptr, nullptr),
                                                             &g_strfreev);
    for (char** key = keys.get(); key != nullptr && *key != nullptr; ++key) {
        const std::unique_ptr<char, decltype(&g_free)> value(g_key_file_get_string(file.get(), kGroup, *key, nullptr),
                                                             &g_free);
        // GLib drops the carriage return before a line's end, but not one that ends the file.
        if (value) choices.emplace(*key, g_strchomp(value.get()));
    }
    return choices != std::exchange(choices_, choices);
}

bool KeyFilePreferences::reload() { return stampOf(path_) != stamp_ && read(); }

std::string KeyFilePreferences::defaultPath() {
    return std::string(g_get_user_config_dir()) + "/dinmala/preferences.ini";
}

bool KeyFilePreferences::boolForKey(std::string_view key) const { return booleanOf(textForKey(key)).value_or(false); }

void KeyFilePreferences::setBoolForKey(bool value, std::string_view key) {
    // What says so already is left as it is written.
    const std::string text = textForKey(key);
    setTextForKey(booleanOf(text) == value ? text : value ? "true" : "false", key);
}

std::string KeyFilePreferences::textForKey(std::string_view key) const {
    const auto choice = choices_.find(key);
    return choice != choices_.end() ? choice->second : "";
}

void KeyFilePreferences::setTextForKey(std::string_view value, std::string_view key) {
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

    const auto leave = [this](const std::string& file, int error) {
        return fail(tr("{1} cannot be read and is left alone: {2}", {file, errorText(error)}));
    };
    std::string target = path_;
    if (const int error = followLinks(target); error != 0) return leave(target, error);
    if (const int error = makeFolder(folderOf(target)); error != 0) {
        return fail(tr("the folder {1} cannot be made: {2}", {folderOf(target), errorText(error)}));
    }
    // The file is read again, so that what was written there meanwhile survives.
    const bool known = stampOf(path_) == stamp_;
    const FileText old = readFile(target, kLimit);
    const bool absent = old.error == ENOENT;
    if (!old.ok() && !absent) return leave(target, old.error);
    if (const int error = std::exchange(unread_, 0); error != 0) {
        // It can be read by now, but what was set is no choice between what it says. The next look takes it over.
        unsaved_.clear();
        hasChanged_ = false;
        return leave(target, error);
    }
    KeyFile file = parse(old.text);
    const bool corrupt = !file;
    if (corrupt) file = parse("");

    for (const auto& [key, value] : absent || corrupt ? choices_ : unsaved_) {
        g_key_file_set_string(file.get(), kGroup, key.c_str(), value.c_str());
    }
    struct stat status {};
    const bool exists = stat(target.c_str(), &status) == 0;
    PendingFile saved(folderOf(target), textOf(file.get()), exists ? status.st_mode & 0777 : 0600);
    const Stamp stamp = stampOf(saved.path());
    int error = saved.error();
    std::string aside;
    if (error == 0 && corrupt) error = keepAside(target, aside);
    if (error == 0) error = saved.moveTo(target);
    if (error != 0) return fail(tr("{1} cannot be written: {2}", {target, errorText(error)}));
    if (corrupt && tell_) tell_(tr("{1} is damaged and was begun anew; the old one is {2}", {target, aside}));

    if (known) stamp_ = stamp;  // else what another has written meanwhile is still to be read
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
