/// Files replaced as a whole or not at all.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace dinmala {

/// A new file beside its later place, gone again unless it is put there. What a
/// killed program left of one goes with the next in that folder.
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

}  // namespace dinmala
