/// What the desktop opens: addresses in the user's browser, programs.
#pragma once

#include <string>
#include <vector>

#include "desktop/Files.h"

namespace dinmala {

/// Asks the desktop to open an address with the program that the user has
/// chosen for its kind. `tell` hears when there is none or it does not start.
void openUrl(const std::string& url, const Tell& tell);

/// Starts a program with its arguments. `tell` hears when it does not start; what comes of it then is its own matter.
/// @param token by which the desktop lets its window come to the front; may be empty
void startProgram(const std::vector<std::string>& command, const std::string& token, const Tell& tell);

}  // namespace dinmala
