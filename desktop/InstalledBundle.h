/// The program's own files, installed or in the build tree.
#pragma once

#include <string>

#include "desktop/Bundle.h"

namespace dinmala {

/// The bundle of the running program.
///
/// Resources are in $DINMALA_RESOURCES when that is set; else in `resources`
/// beside the executable (the build tree); else in `../share/dinmala`.
/// $DINMALA_SITE_HOST, when it is set, takes the place of "DinmalaSiteHost" in
/// the information property list: a host, perhaps with a port.
[[nodiscard]] Bundle makeBundle();

/// The bundle of an executable, its resources in a folder; the environment is
/// not asked.
[[nodiscard]] Bundle makeBundle(std::string executable, std::string resources);

/// The path of dinmala-fetch: beside the executable (the build tree), else in
/// `../libexec/dinmala`.
[[nodiscard]] std::string fetchHelper(const std::string& executable);

/// The path of dinmala-window, a package of its own: beside the executable, or for an installed helper in `../../bin`;
/// empty where it is not installed.
[[nodiscard]] std::string windowProgram(const std::string& executable);

}  // namespace dinmala
