/// Files of a test's own, and what it may do with them.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>

namespace dinmala {

[[nodiscard]] inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A folder that is gone at the end.
class TemporaryFolder {
public:
    TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}
    explicit TemporaryFolder(const std::filesystem::path& parent) {
        std::string name = (parent / "dinmala-test-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string path() const { return path_; }
    [[nodiscard]] std::string path(std::string_view name) const { return path_ + "/" + std::string(name); }

    std::string write(std::string_view name, std::string_view text) const {
        const std::filesystem::path file = path(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file.string();
    }
    [[nodiscard]] std::string read(std::string_view name) const { return contentOf(path(name)); }
    [[nodiscard]] bool has(std::string_view name) const { return std::filesystem::exists(path(name)); }

private:
    std::string path_;
};

/// Root may read and write everything: as nobody it may not.
inline void asNobody(const std::function<void()>& work) {
    const bool isRoot = geteuid() == 0;
    if (isRoot && seteuid(65534) != 0) std::abort();
    work();
    if (isRoot && seteuid(0) != 0) std::abort();
}

}  // namespace dinmala
