/// Files of the user: read with a limit, replaced as a whole or not at all.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace dinmala {

/// Tells the user, in a sentence, what could not be done.
using Tell = std::function<void(const std::string& message)>;

/// What readFile() found.
struct FileText {
    std::string text;
    int error = 0;  ///< an errno value; ENOENT when there is no such file

    [[nodiscard]] bool ok() const { return error == 0; }
};

/// Reads a regular file. Anything else (a folder, a FIFO, a device) is EINVAL
/// and is never waited for; a file longer than the limit is EFBIG.
[[nodiscard]] FileText readFile(const std::string& path, std::size_t limit);

/// Makes a folder and those above it, readable by the user alone.
/// @return 0 or an errno value
[[nodiscard]] int makeFolder(const std::string& path);

/// A new file beside its later place, gone again unless it is put there.
class PendingFile {
public:
    /// Writes `text` to the disk under a hidden name in `folder`.
    PendingFile(const std::string& folder, std::string_view text, mode_t mode);
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// 0, or the errno value of what went wrong in writing.
    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] const std::string& path() const { return path_; }

    /// Puts the file at `path` in one step, in place of a file that is there.
    /// @return 0 or an errno value
    [[nodiscard]] int moveTo(const std::string& path);
    /// As moveTo(), but EEXIST when there is a file already.
    [[nodiscard]] int moveToNew(const std::string& path);

private:
    std::string folder_;
    std::string path_;
    int error_ = 0;
};

/// Renames a file unless the new name is taken (EEXIST).
/// @return 0 or an errno value
[[nodiscard]] int renameToNew(const std::string& from, const std::string& to);

/// The folder that a path's file is in.
[[nodiscard]] std::string folderOf(const std::string& path);

/// The text of an errno value.
[[nodiscard]] std::string errorText(int error);

}  // namespace dinmala
