#include "desktop/Files.h"

#include <glib.h>

#include <cerrno>

namespace dinmala {

int makeFolder(const std::string& path) { return g_mkdir_with_parents(path.c_str(), 0700) == 0 ? 0 : errno; }

std::string errorText(int error) { return g_strerror(error); }

}  // namespace dinmala
