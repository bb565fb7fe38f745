/// The user's choices in a key file.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "app/platform/Platform.h"
#include "app/platform/linux/Files.h"

namespace dinmala {

/// Keeps each choice as `key=true` or `key=false` in the group [display].
///
/// What else stands in the file (comments, other groups, other keys) survives a
/// save, and so does what another session of the user has chosen since; of a key
/// that both set the later value holds. A file that is no key file is kept aside as
/// `<file>.corrupt` before a new one takes its place; one that may not be read is
/// never replaced.
class KeyFilePreferences : public Preferences {
public:
    /// @param path the file; it and its folder need not exist. A symbolic link is
    ///             followed: the file that it names is replaced, not the link
    /// @param tell hears why a choice could not be kept, once for each cause
    KeyFilePreferences(std::string path, Tell tell);

    /// preferences.ini in the user's configuration folder.
    [[nodiscard]] static std::string defaultPath();

    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    void setBoolForKey(bool value, std::string_view key) override;
    /// Writes the file only when a choice has changed since the last save.
    bool synchronize() override;

private:
    using Choices = std::map<std::string, bool, std::less<>>;

    [[nodiscard]] bool fail(const std::string& message);

    std::string path_;
    Tell tell_;
    Choices choices_;          ///< as read, and as set since
    Choices unsaved_;          ///< set since the last save, also to what it was: the file may differ by now
    bool hasChanged_ = false;  ///< whether one of them was set to another value
    std::string lastFailure_;  ///< what the user was told last
};

}  // namespace dinmala
