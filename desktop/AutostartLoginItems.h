/// The programs that a desktop session starts at login: the user's autostart folder.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/Files.h"
#include "desktop/LoginItems.h"

namespace dinmala {

/// Each .desktop file of the folder is an entry, its id the file's name.
///
/// The list is ordered by the time of the file, then by name: a new entry is the
/// last. Files of other programs are read and never written. A symbolic link is
/// an entry too, as sessions start what it names; removing it takes the link away.
class AutostartLoginItems : public LoginItems {
public:
    /// @param folder need not exist; it is made when an entry is added
    /// @param icon   an absolute path or a theme's icon name for new entries
    /// @param tell   hears why an entry could not be added or removed
    AutostartLoginItems(std::string folder, std::string icon, Tell tell);

    /// `autostart` in the user's configuration folder.
    [[nodiscard]] static std::string defaultFolder();

    /// A folder that does not exist is an empty list.
    [[nodiscard]] std::optional<std::vector<LoginItemRef>> snapshot() override;
    /// Nothing for an entry that a session would not start: hidden, switched off,
    /// no key file, a program that is missing.
    [[nodiscard]] std::optional<std::string> resolve(const LoginItemRef& entry) override;
    bool append(const std::string& path) override;
    bool remove(const LoginItemRef& entry) override;

private:
    std::string folder_;
    std::string icon_;
    Tell tell_;
};

/// The command line of an entry, the value of its key Exec, that starts a
/// program without arguments, whatever characters its path has.
[[nodiscard]] std::string execLine(const std::string& program);

/// The absolute path of the program that the text of a .desktop file starts, or
/// nothing; see AutostartLoginItems::resolve().
[[nodiscard]] std::optional<std::string> startedProgram(std::string_view desktopEntry);

}  // namespace dinmala
