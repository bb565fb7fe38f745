/// Pictures from files.
#pragma once

#include <string>

#include "desktop/Image.h"

namespace dinmala {

/// Reads a picture of any format that gdk-pixbuf knows. Null for a file that is
/// absent, no picture, or wider or taller than 4096 pixels.
[[nodiscard]] ImagePtr loadImage(const std::string& path);

}  // namespace dinmala
