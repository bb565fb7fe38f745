#include "desktop/AutostartLoginItems.h"

#include <dirent.h>
#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>
#include <tuple>
#include <utility>

#include "i18n/Translation.h"

namespace dinmala {
namespace {

constexpr const char* kGroup = "Desktop Entry";
constexpr std::string_view kSuffix = ".desktop";
constexpr std::size_t kLimit = 1 << 20;

/// What /bin/sh runs in an entry whose program cannot be its first word.
constexpr const char* kLaunch = "exec \"$0\"";

using Chars = std::unique_ptr<char, decltype(&g_free)>;
using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;

struct Entry {
    std::string name;
    timespec time;
};

bool earlier(const Entry& a, const Entry& b) {
    return std::tie(a.time.tv_sec, a.time.tv_nsec, a.name) < std::tie(b.time.tv_sec, b.time.tv_nsec, b.name);
}

/// The folder's entries in list order.
/// @return 0 or an errno value
int listEntries(const std::string& folder, std::vector<Entry>& entries) {
    struct Close {
        void operator()(DIR* open) const { closedir(open); }
    };
    const std::unique_ptr<DIR, Close> directory(opendir(folder.c_str()));
    if (!directory) return errno == ENOENT ? 0 : errno;
    while (const dirent* found = readdir(directory.get())) {
        const std::string name = found->d_name;
        struct stat status {};
        if (!name.ends_with(kSuffix)) continue;
        if (fstatat(dirfd(directory.get()), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
        if (S_ISREG(status.st_mode) || S_ISLNK(status.st_mode)) entries.push_back({name, status.st_mtim});
    }
    std::sort(entries.begin(), entries.end(), earlier);
    return 0;
}

/// The value of a key; empty when it has none.
std::string value(GKeyFile* file, const char* key) {
    const Chars text(g_key_file_get_string(file, kGroup, key, nullptr), &g_free);
    return text ? text.get() : "";
}

/// A key that is true or false.
bool flag(GKeyFile* file, const char* key, bool otherwise) {
    GError* error = nullptr;
    const bool on = g_key_file_get_boolean(file, kGroup, key, &error) != FALSE;
    const bool known = error == nullptr;
    g_clear_error(&error);
    return known ? on : otherwise;
}

/// Where a program is found, as a session's own look-up would.
std::optional<std::string> findProgram(const std::string& word) {
    if (word.empty()) return std::nullopt;
    const Chars found(g_find_program_in_path(word.c_str()), &g_free);
    if (!found || !g_path_is_absolute(found.get())) return std::nullopt;
    return found.get();
}

/// A word of Exec with `%%` read as `%`; nothing when it has a field code, which
/// stands for something else.
std::optional<std::string> withoutFieldCodes(std::string_view word) {
    std::string text;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] == '%' && (++i == word.size() || word[i] != '%')) return std::nullopt;
        text += word[i];
    }
    return text;
}

/// A word of Exec: in double quotes unless it is plain.
std::string quoted(std::string_view word) {
    constexpr std::string_view kReserved = " \t\n\"'\\><~|&;$*?#()`%";
    if (!word.empty() && word.find_first_of(kReserved) == std::string_view::npos) return std::string(word);
    std::string text = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\' || c == '$' || c == '`') text += '\\';
        if (c == '%') text += '%';
        text += c;
    }
    return text + '"';
}

std::string desktopEntry(const std::string& program, const std::string& icon) {
    const KeyFile file(g_key_file_new(), &g_key_file_unref);
    const auto set = [&](const char* key, const std::string& text) {
        g_key_file_set_string(file.get(), kGroup, key, text.c_str());
    };
    set("Type", "Application");
    set("Name", "Dinmala");
    set("Name[ne]", "दिनमाला");
    set("Comment", "Today's Bikram Sambat date in the panel");
    set("Comment[ne]", "आजको विक्रम संवत् मिति प्यानलमा");
    set("Exec", execLine(program));
    if (!icon.empty()) set("Icon", icon);
    set("Terminal", "false");
    set("X-GNOME-Autostart-enabled", "true");
    const Chars data(g_key_file_to_data(file.get(), nullptr, nullptr), &g_free);
    return data.get();
}

/// Gives a file a time later than those of all entries, as the list is ordered
/// by it: a clock that was set back, or a coarse one, does not change the order.
void makeLatest(const std::string& path, const std::vector<Entry>& entries) {
    struct stat status {};
    if (entries.empty() || stat(path.c_str(), &status) != 0) return;
    const timespec last = entries.back().time;
    if (earlier(entries.back(), {"", status.st_mtim})) return;
    const timespec times[2] = {{0, UTIME_OMIT}, {last.tv_sec + 2, 0}};  // the coarsest file systems count by two
    utimensat(AT_FDCWD, path.c_str(), times, 0);
}

}  // namespace

AutostartLoginItems::AutostartLoginItems(std::string folder, std::string icon, Tell tell)
    : folder_(std::move(folder)), icon_(std::move(icon)), tell_(std::move(tell)) {
    if (!tell_) tell_ = [](const std::string&) {};
}

std::string AutostartLoginItems::defaultFolder() { return std::string(g_get_user_config_dir()) + "/autostart"; }

std::optional<std::vector<LoginItemRef>> AutostartLoginItems::snapshot() {
    std::vector<Entry> entries;
    if (listEntries(folder_, entries) != 0) return std::nullopt;
    std::vector<LoginItemRef> list;
    list.reserve(entries.size());
    for (Entry& entry : entries) list.push_back({std::move(entry.name)});
    return list;
}

std::optional<std::string> AutostartLoginItems::resolve(const LoginItemRef& entry) {
    const FileText file = readFile(folder_ + "/" + entry.id, kLimit);
    return file.ok() ? startedProgram(file.text) : std::nullopt;
}

bool AutostartLoginItems::append(const std::string& path) {
    const auto fail = [&](const std::string& why) {
        tell_(tr("Dinmala will not start at login: {1}", {why}));
        return false;
    };
    if (!g_path_is_absolute(path.c_str()) || g_utf8_validate(path.c_str(), -1, nullptr) == FALSE) {
        return fail(tr("the path of the program is not an absolute path in UTF-8"));
    }
    if (const int error = makeFolder(folder_); error != 0) {
        return fail(tr("the folder {1} cannot be made: {2}", {folder_, errorText(error)}));
    }
    std::vector<Entry> entries;
    int error = listEntries(folder_, entries);
    if (error != 0) return fail(tr("the folder {1} cannot be read: {2}", {folder_, errorText(error)}));

    PendingFile file(folder_, desktopEntry(path, icon_), 0644);
    error = file.error();
    if (error == 0) makeLatest(file.path(), entries);
    for (int number = 1; error == 0; ++number) {
        const std::string name = "dinmala" + (number == 1 ? "" : "-" + std::to_string(number)) + std::string(kSuffix);
        error = file.moveToNew(folder_ + "/" + name);
        if (error == 0) return true;
        if (error == EEXIST && number < 1000) error = 0;
    }
    return fail(tr("no file can be written in {1}: {2}", {folder_, errorText(error)}));
}

bool AutostartLoginItems::remove(const LoginItemRef& entry) {
    const std::string path = folder_ + "/" + entry.id;
    const int error = unlink(path.c_str()) == 0 ? 0 : errno;
    if (error == 0 || error == ENOENT) return true;
    tell_(tr("Dinmala will still start at login: {1} cannot be removed: {2}", {path, errorText(error)}));
    return false;
}

std::string execLine(const std::string& program) {
    // Sessions look for the first word as it stands, with `%%` for `%`: such a
    // path is found only as an argument.
    if (program.find('%') == std::string::npos) return quoted(program);
    return "/bin/sh -c " + quoted(kLaunch) + " " + quoted(program);
}

std::optional<std::string> startedProgram(std::string_view desktopEntry) {
    const KeyFile file(g_key_file_new(), &g_key_file_unref);
    if (!g_key_file_load_from_data(file.get(), desktopEntry.data(), desktopEntry.size(), G_KEY_FILE_NONE, nullptr)) {
        return std::nullopt;
    }
    if (value(file.get(), "Type") != "Application") return std::nullopt;
    // A desktop's own list of startup programs switches an entry off with either.
    if (flag(file.get(), "Hidden", false) || !flag(file.get(), "X-GNOME-Autostart-enabled", true)) return std::nullopt;
    if (const std::string needed = value(file.get(), "TryExec"); !needed.empty() && !findProgram(needed)) {
        return std::nullopt;
    }

    int count = 0;
    char** raw = nullptr;
    if (!g_shell_parse_argv(value(file.get(), "Exec").c_str(), &count, &raw, nullptr)) return std::nullopt;
    const std::unique_ptr<char*, decltype(&g_strfreev)> words(raw, &g_strfreev);
    const bool launched = count == 4 && std::string_view(raw[0]) == "/bin/sh" && std::string_view(raw[1]) == "-c" &&
                          std::string_view(raw[2]) == kLaunch;
    const auto program = withoutFieldCodes(raw[launched ? 3 : 0]);
    return program ? findProgram(*program) : std::nullopt;
}

}  // namespace dinmala
