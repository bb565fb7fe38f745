#include "agenda/EditionSource.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "almanac/YearFile.h"
#include "base/Lines.h"
#include "base/ReadFile.h"
#include "base/Text.h"

namespace dinmala {

namespace {

constexpr std::size_t kLargestFile = 1 << 20;
constexpr std::string_view kFolder = "/dinmala/almanac";

/// A variable of the environment, or what stands for one that is unset or empty.
std::string variable(const char* name, const std::string& otherwise) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

/// The year in the name of a file, "2084.txt"; nothing for another name.
std::optional<int> yearOfName(std::string_view name) {
    if (name.size() != 8 || !name.ends_with(".txt")) return std::nullopt;
    return fixedNumber(name.substr(0, 4), 4);
}

std::string whyUnread(int error) {
    if (error == EINVAL) return "is not a regular file";
    if (error == EFBIG) return "is larger than " + std::to_string(kLargestFile) + " bytes";
    return std::string{"cannot be read: "} + std::strerror(error);
}

}  // namespace

std::vector<std::string> yearFolders() {
    std::vector<std::string> folders;
    const auto add = [&folders](std::string_view base) {
        if (!base.starts_with('/')) return;  // as for all of these variables, a relative path counts for nothing
        folders.push_back(std::string{base} + std::string{kFolder});
    };
    add(variable("XDG_DATA_HOME", variable("HOME", "") + "/.local/share"));
    forEachPiece(variable("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ':', add);
    add("/etc");
    return folders;
}

Result<YearAlmanac> readYearFile(const std::string& path) {
    const FileText file = readFile(path, kLargestFile);
    if (!file.ok()) return TextError{0, 0, whyUnread(file.error)};
    auto year = parseYearFile(file.text, isCurrentEvent);
    const auto named = yearOfName(std::string_view{path}.substr(path.rfind('/') + 1));
    if (year && named && year->year != BsYear{*named}) {
        return TextError{1, 0, "is of the year " + std::to_string(int{year->year})};
    }
    return year;
}

EditionSource::EditionSource(std::vector<std::string> folders) : folders_(std::move(folders)) {}

const Edition& EditionSource::get(EditionId id) {
    if (id == EditionId::first) return firstEdition();
    if (auto now = files(); now != files_) {
        rebuild(now);
        files_ = std::move(now);
    }
    return current_;
}

std::vector<std::string> EditionSource::takeProblems() { return std::exchange(problems_, {}); }

EditionSource::Files EditionSource::files() {
    Files found;
    for (const std::string& folder : folders_) {
        const std::unique_ptr<DIR, int (*)(DIR*)> entries{opendir(folder.c_str()), closedir};
        if (!entries && (errno == ENOENT || errno == ENOTDIR)) continue;
        while (entries) {
            errno = 0;
            const dirent* entry = readdir(entries.get());
            if (entry == nullptr) break;
            const auto year = yearOfName(entry->d_name);
            if (!year || found.contains(*year)) continue;
            File file{folder + "/" + entry->d_name, {}};
            struct stat status {};
            if (stat(file.path.c_str(), &status) == 0) {
                file.stamp = {status.st_dev,         status.st_ino,          status.st_size,
                              status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec};
            }
            found.emplace(*year, std::move(file));
        }
        if (errno != 0) {
            refuse({folder, {}}, {0, 0, whyUnread(errno)});
            for (const auto& [year, file] : files_) {
                if (file.path.starts_with(folder + "/")) found.emplace(year, file);
            }
        }
    }
    return found;
}

void EditionSource::rebuild(Files& files) {
    std::vector<YearAlmanac> years;
    std::vector<const File*> from;
    for (auto& [number, file] : files) {
        auto year = readYearFile(file.path);
        const bool unread = !year && year.error().line == 0;
        if (year) {
            years.push_back(*std::move(year));
            from.push_back(&file);
        } else {
            refuse(file, year.error());
            if (unread) file.stamp = kUnread;
        }
    }
    // A year that does not fit among the others is refused, and the rest tried again without it.
    auto edition = currentEditionWith(years);
    while (!edition) {
        const auto place = static_cast<std::ptrdiff_t>(edition.error().line) - 1;
        refuse(*from[static_cast<std::size_t>(place)], {0, 0, edition.error().what});
        years.erase(years.begin() + place);
        from.erase(from.begin() + place);
        edition = currentEditionWith(years);
    }
    current_ = *std::move(edition);
    newest_.reset();
    for (const File* file : from) {
        const std::chrono::sys_seconds came{std::chrono::seconds{std::max(file->stamp.seconds, file->stamp.changed)}};
        newest_ = std::max(newest_.value_or(came), came);
    }
}

void EditionSource::refuse(const File& file, const TextError& error) {
    if (std::find(told_.begin(), told_.end(), file) != told_.end()) return;
    std::erase_if(told_, [&](const File& old) { return old.path == file.path; });
    told_.push_back(file);
    const std::string where = error.line == 0 ? file.path : file.path + ":" + std::to_string(error.line);
    problems_.push_back(where + ": " + error.what);
}

}  // namespace dinmala
