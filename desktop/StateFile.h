/// A text that the program keeps for itself, over restarts.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace dinmala {

class StateFile {
public:
    /// @param path     the file; it and its folder need not exist
    /// @param patience how long another Dinmala that holds it is waited for
    explicit StateFile(std::string path, std::chrono::milliseconds patience = std::chrono::seconds{10})
        : path_(std::move(path)), patience_(patience) {}

    /// "festivals" in the user's folder of such files.
    [[nodiscard]] static std::string defaultPath();

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Gives `change` the text, "" where there is no file, and puts the one that comes back in its place, if any. No
    /// other Dinmala of the user's reads it in between; which of them is first waits for nobody's answer.
    ///
    /// @return 0, or the errno value of why the text could not be read, locked or kept; `change` has been called even
    ///         so, with "" where it could not be read
    [[nodiscard]] int change(const std::function<std::optional<std::string>(const std::string&)>& change) const;

private:
    std::string path_;
    std::chrono::milliseconds patience_;
};

}  // namespace dinmala
