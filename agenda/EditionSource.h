/// The editions as a running program has them: built in, with the years that people have put into folders.
///
/// Nepal publishes each year's calendar in spring. Its file, `2084.txt` in the form of almanac/YearFile.h, takes the
/// place of the built-in year as soon as it lies in one of the folders; a bad file is refused whole.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "almanac/Edition.h"

namespace dinmala {

/// `dinmala/almanac` in $XDG_DATA_HOME and in each of $XDG_DATA_DIRS, then /etc/dinmala/almanac. Of a year's files in
/// several the first counts.
[[nodiscard]] std::vector<std::string> yearFolders();

/// Reads and checks the file of a year. The error tells why it cannot be taken: no regular file, may not be read, over
/// a mebibyte, a wrong line, an event that the current edition does not know.
[[nodiscard]] Result<YearAlmanac> readYearFile(const std::string& path);

class EditionSource {
public:
    explicit EditionSource(std::vector<std::string> folders = yearFolders());

    /// An edition as it stands now; the current one is put together anew when a file in the folders has changed.
    /// Holds until the next call.
    [[nodiscard]] const Edition& get(EditionId id);

    /// When the newest of the files that are taken came into its folder or was changed; nothing without any.
    [[nodiscard]] std::optional<std::chrono::sys_seconds> newest() const { return newest_; }

    /// Why files were refused since the last call, "FILE:LINE: why", each told once as long as it stays as it is.
    [[nodiscard]] std::vector<std::string> takeProblems();

private:
    /// What tells one state of a file from another.
    struct Stamp {
        std::uint64_t device = 0, inode = 0;
        std::int64_t size = 0, seconds = 0, nanoseconds = 0, changed = 0;
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    struct File {
        std::string path;
        Stamp stamp;
        friend bool operator==(const File&, const File&) = default;
    };

    using Files = std::map<int, File>;  ///< by year, the first of each

    /// Unlike any stamp, so that the file is tried again at the next look.
    static constexpr Stamp kUnread{0, 0, -1, 0, 0, 0};

    /// Of a folder that is there and cannot be read now, those of the last look.
    [[nodiscard]] Files files();
    void rebuild(Files& files);
    void refuse(const File& file, const TextError& error);

    std::vector<std::string> folders_;
    Files files_;  ///< of the last look
    Edition current_ = currentEdition();
    std::optional<std::chrono::sys_seconds> newest_;
    std::vector<std::string> problems_;
    std::vector<File> told_;
};

}  // namespace dinmala
