/// Files read whole, with a limit.
#pragma once

#include <cstddef>
#include <string>

namespace dinmala {

/// What readFile() found.
struct FileText {
    std::string text;
    int error = 0;  ///< an errno value; ENOENT when there is no such file

    [[nodiscard]] bool ok() const { return error == 0; }
};

/// Reads a regular file. Anything else (a folder, a FIFO, a device) is EINVAL
/// and is never waited for; a file longer than the limit is EFBIG.
[[nodiscard]] FileText readFile(const std::string& path, std::size_t limit);

/// Closes a file descriptor at the end of a block.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int get() const { return fd_; }

private:
    int fd_;
};

}  // namespace dinmala
