#include "desktop/StateFile.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "desktop/Files.h"

namespace dinmala {

namespace {

constexpr std::size_t kLimit = 1 << 18;

constexpr unsigned kPause = 10'000;  // microseconds

/// Waits for another Dinmala, which holds it as long as a small file takes to write; one that was stopped is not
/// waited for.
int lock(int folder, std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (flock(folder, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        if ((error != EINTR && error != EWOULDBLOCK) || std::chrono::steady_clock::now() >= end) return error;
        usleep(kPause);
    }
    return 0;
}

}  // namespace

std::string StateFile::defaultPath() { return std::string(g_get_user_state_dir()) + "/dinmala/festivals"; }

int StateFile::change(const std::function<std::optional<std::string>(const std::string&)>& change) const {
    const std::string place = folderOf(path_);
    int error = makeFolder(place);
    // The folder is what is locked: the file is another one after each change. It is open for this call only.
    const Descriptor folder(error == 0 ? open(place.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1);
    if (error == 0) error = folder.get() < 0 ? errno : lock(folder.get(), patience_);
    const FileText old = readFile(path_, kLimit);
    if (error == 0 && old.error != ENOENT) error = old.error;
    const auto text = change(old.ok() ? old.text : "");
    if (error != 0 || !text) return error;
    PendingFile saved(place, *text, 0600);
    return saved.error() != 0 ? saved.error() : saved.moveTo(path_);
}

}  // namespace dinmala
