#include "base/ReadFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace dinmala {

Descriptor::~Descriptor() {
    if (fd_ >= 0) close(fd_);
}

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

}  // namespace dinmala
