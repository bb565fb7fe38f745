#include "app/platform/linux/Files.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace dinmala {
namespace {

/// Closes a file descriptor at the end of a block.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int get() const { return fd_; }

private:
    int fd_;
};

int writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(fd, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

/// The folder's own entry of a new name reaches the disk, where the file system can.
void syncFolder(const std::string& path) {
    const Descriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() >= 0) fsync(folder.get());
}

}  // namespace

FileText readFile(const std::string& path, std::size_t limit) {
    // Looked at before it is opened, as opening a device can have effects, and
    // again after, as it may have been replaced. O_NONBLOCK: a FIFO is not waited for.
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return {{}, errno};
    if (!S_ISREG(status.st_mode)) return {{}, EINVAL};
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (file.get() < 0 || fstat(file.get(), &status) != 0) return {{}, errno};
    if (!S_ISREG(status.st_mode)) return {{}, EINVAL};

    FileText result;
    char buffer[4096];
    while (true) {
        const ssize_t got = read(file.get(), buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return {{}, errno};
        if (got == 0) return result;
        if (result.text.size() + static_cast<std::size_t>(got) > limit) return {{}, EFBIG};
        result.text.append(buffer, static_cast<std::size_t>(got));
    }
}

int makeFolder(const std::string& path) { return g_mkdir_with_parents(path.c_str(), 0700) == 0 ? 0 : errno; }

PendingFile::PendingFile(const std::string& folder, std::string_view text, mode_t mode)
    : folder_(folder), path_(folder + "/.dinmala-XXXXXX") {
    const Descriptor file(mkostemp(path_.data(), O_CLOEXEC));
    if (file.get() < 0) {
        error_ = errno;
        path_.clear();
        return;
    }
    error_ = writeAll(file.get(), text);
    if (error_ == 0 && (fchmod(file.get(), mode) != 0 || fsync(file.get()) != 0)) error_ = errno;
}

PendingFile::~PendingFile() {
    if (!path_.empty()) unlink(path_.c_str());
}

int PendingFile::moveTo(const std::string& path) {
    if (error_ != 0) return error_;
    if (rename(path_.c_str(), path.c_str()) != 0) return errno;
    path_.clear();
    syncFolder(folder_);
    return 0;
}

int PendingFile::moveToNew(const std::string& path) {
    if (error_ != 0) return error_;
    if (const int error = renameToNew(path_, path); error != 0) return error;
    path_.clear();
    syncFolder(folder_);
    return 0;
}

int renameToNew(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    // Some file systems cannot do both in one step.
    if (errno != EINVAL && errno != ENOSYS) return errno;
    struct stat status {};
    if (lstat(to.c_str(), &status) == 0) return EEXIST;
    return rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

std::string folderOf(const std::string& path) { return std::filesystem::path(path).parent_path().string(); }

std::string errorText(int error) { return g_strerror(error); }

}  // namespace dinmala
