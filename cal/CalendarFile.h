/// A calendar file that is kept fresh for other programs to read.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace dinmala::cal {

/// Puts an iCalendar text into a file, whole or not at all, with a sum over it at its head. A file that is so already
/// is not touched. One that is not as it was put there, because it is another program's or a person has changed it, is
/// replaced only with `force`; anything but a regular file never is. A symbolic link stays one: its target is replaced.
///
/// @return what went wrong, a sentence for people; nothing when the file is as it should be
[[nodiscard]] std::optional<std::string> keepCalendarFile(const std::string& path, const std::string& text, bool force);

/// How long such a file is left alone: until Nepal's next day or another quarter of an hour, when a year's file may
/// have come or the clock been set. 1 to 900 for any `now`.
[[nodiscard]] std::chrono::seconds secondsToNextLook(std::chrono::sys_seconds now);

}  // namespace dinmala::cal
