/// Addresses in the user's browser.
#pragma once

#include <string>

#include "app/platform/linux/Files.h"

namespace dinmala {

/// Asks the desktop to open an address with the program that the user has
/// chosen for its kind. `tell` hears when there is none or it does not start.
void openUrl(const std::string& url, const Tell& tell);

}  // namespace dinmala
