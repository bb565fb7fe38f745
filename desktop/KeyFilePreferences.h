/// The user's choices in a key file.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "desktop/Files.h"
#include "desktop/Preferences.h"

namespace dinmala {

/// Keeps each choice as `key=true`, `key=false` or `key=text` in the group [display].
///
/// What else stands in the file (comments, other groups, other keys) survives a
/// save, and so does what another session of the user has chosen since; of a key
/// that both set the later value holds. A file that is no key file is kept aside as
/// `<file>.corrupt` before a new one takes its place; one that may not be read is
/// never replaced, nor is one that could not be read when the choices were made.
class KeyFilePreferences : public Preferences {
public:
    /// @param path the file; it and its folder need not exist. A symbolic link is
    ///             followed, also to a file that is not there yet: the file that it
    ///             names is replaced, not the link
    /// @param tell hears why a choice could not be kept, once for each cause
    KeyFilePreferences(std::string path, Tell tell);

    /// preferences.ini in the user's configuration folder.
    [[nodiscard]] static std::string defaultPath();

    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    void setBoolForKey(bool value, std::string_view key) override;
    [[nodiscard]] std::string textForKey(std::string_view key) const override;
    void setTextForKey(std::string_view value, std::string_view key) override;
    /// Reads the file when it is another than last time. One that is gone, empty or
    /// damaged changes nothing.
    bool reload() override;
    /// Writes the file only when a choice has changed since the last save.
    bool synchronize() override;

private:
    using Choices = std::map<std::string, std::string, std::less<>>;

    /// What tells one state of a file from another.
    struct Stamp {
        std::uint64_t device = 0, inode = 0;
        std::int64_t size = -1, seconds = 0, nanoseconds = 0;

        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    [[nodiscard]] static Stamp stampOf(const std::string& path);

    bool read();
    [[nodiscard]] bool fail(const std::string& message);

    std::string path_;
    Tell tell_;
    Choices choices_;          ///< as read, and as set since
    Choices unsaved_;          ///< set since the last save, also to what it was: the file may differ by now
    bool hasChanged_ = false;  ///< whether one of them was set to another value
    Stamp stamp_;              ///< of the file as read or saved last
    int unread_ = 0;           ///< why the file that is there could not be read, an errno value
    std::string lastFailure_;  ///< what the user was told last
};

}  // namespace dinmala
