#include "cal/CalendarFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "base/PendingFile.h"
#include "base/ReadFile.h"
#include "cal/Messages.h"
#include "i18n/Translation.h"

namespace dinmala::cal {

namespace {

constexpr std::size_t kLargestFile = 256 << 20;

constexpr std::string_view kHead = "BEGIN:VCALENDAR\r\n";
constexpr std::string_view kSum = "X-DINMALA-SUM:";
constexpr std::size_t kDigits = 16;

/// FNV-1a of 64 bits: it tells a changed file from an untouched one, it keeps no secrets.
std::string sumOf(std::string_view text) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    char digits[kDigits + 1];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(sum));
    return digits;
}

/// The text with a sum over all of it in its second line.
std::string summed(const std::string& text) {
    return std::string{kHead} + std::string{kSum} + sumOf(text) + "\r\n" + text.substr(kHead.size());
}

/// Whether a text is what summed() gave.
bool isOurs(const std::string& text) {
    const std::size_t line = kHead.size() + kSum.size() + kDigits + 2;
    if (text.size() < line || !text.starts_with(kHead)) return false;
    return summed(std::string{kHead} + text.substr(line)) == text;
}

/// The place of the file itself, behind symbolic links.
std::string realPath(const std::string& path) {
    std::error_code error;
    const auto real = std::filesystem::weakly_canonical(path, error);
    return error ? path : real.string();
}

mode_t usualMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

std::optional<std::string> keepCalendarFile(const std::string& path, const std::string& text, bool force) {
    const std::string shown = shownText(path);
    const std::string target = realPath(path);
    struct stat status {};
    const bool exists = lstat(target.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) return tr("{1} is no file: it stays as it is", {shown});
    const std::string wanted = summed(text);
    if (exists) {
        const FileText old = readFile(target, kLargestFile);
        if (old.ok() && old.text == wanted) return std::nullopt;
        if (!force && !(old.ok() && isOurs(old.text))) {
            return tr("{1} was written or changed by somebody else and stays as it is; --force replaces it", {shown});
        }
    }
    std::string folder = folderOf(target);
    if (folder.empty()) folder = ".";
    PendingFile file{folder, wanted, exists ? status.st_mode & 0777 : usualMode()};
    // A file that has come meanwhile is somebody else's.
    if (const int error = exists ? file.moveTo(target) : file.moveToNew(target); error != 0) {
        return tr("{1} cannot be written: {2}", {shown, std::strerror(error)});
    }
    return std::nullopt;
}

std::chrono::seconds secondsToNextLook(std::chrono::sys_seconds now) {
    // Nepal's day begins at a quarter past an hour of UTC, so every quarter of an hour meets it.
    constexpr std::chrono::minutes kQuarter{15};
    const std::chrono::seconds gone = now.time_since_epoch() % kQuarter;
    return (gone.count() < 0 ? std::chrono::seconds{0} : kQuarter) - gone;
}

}  // namespace dinmala::cal
