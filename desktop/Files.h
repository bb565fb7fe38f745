/// Files of the user: read with a limit, replaced as a whole or not at all.
#pragma once

#include <functional>
#include <string>

#include "base/PendingFile.h"
#include "base/ReadFile.h"

namespace dinmala {

/// Tells the user, in a sentence, what could not be done.
using Tell = std::function<void(const std::string& message)>;

/// Makes a folder and those above it, readable by the user alone.
/// @return 0 or an errno value
[[nodiscard]] int makeFolder(const std::string& path);

/// The text of an errno value.
[[nodiscard]] std::string errorText(int error);

}  // namespace dinmala
