#include "base/PendingFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>

#include "base/ReadFile.h"

namespace dinmala {
namespace {

int writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(fd, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

constexpr std::string_view kPendingPrefix = ".dinmala-";
constexpr std::time_t kAbandoned = 600;  // seconds; a file is written in far less

/// Removes what a program left that was killed while it wrote.
void removeAbandoned(const std::string& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    while (const dirent* entry = entries ? readdir(entries.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (!name.starts_with(kPendingPrefix) || name.size() != kPendingPrefix.size() + 6) continue;
        const std::string path = folder + "/" + entry->d_name;
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (status.st_uid == geteuid() && status.st_mtim.tv_sec < std::time(nullptr) - kAbandoned) {
            unlink(path.c_str());
        }
    }
}

/// Some file systems (FAT, some of FUSE) have no permissions to set or cannot be told
/// to write at once. The file is as well kept there as any.
bool cannot(int error) {
    return error == EINVAL || error == ENOTSUP || error == EOPNOTSUPP || error == ENOSYS || error == EPERM;
}

/// The folder's own entry of a new name reaches the disk, where the file system can.
void syncFolder(const std::string& path) {
    const Descriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() >= 0) fsync(folder.get());
}

}  // namespace

PendingFile::PendingFile(const std::string& folder, std::string_view text, mode_t mode)
    : folder_(folder), path_(folder + "/" + std::string(kPendingPrefix) + "XXXXXX") {
    removeAbandoned(folder);
    const Descriptor file(mkostemp(path_.data(), O_CLOEXEC));
    if (file.get() < 0) {
        error_ = errno;
        path_.clear();
        return;
    }
    error_ = writeAll(file.get(), text);
    if (error_ == 0 && fchmod(file.get(), mode) != 0 && !cannot(errno)) error_ = errno;
    if (error_ == 0 && fsync(file.get()) != 0 && !cannot(errno)) error_ = errno;
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

}  // namespace dinmala
