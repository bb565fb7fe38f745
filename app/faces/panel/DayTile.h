/// The day number as a picture, for panels that show no text.
#pragma once

#include <string_view>

#include "desktop/Image.h"

namespace dinmala {

/// White digits on a filled square with round corners, large enough to be scaled
/// down to any panel.
///
/// @param digits ten cells side by side, "०" to "९" in white on clear
///               (resources/digits.png); without them the square stays bare
/// @param day    Devanagari digits ("२७"); other characters are left out
///
/// The digits are pictures and not text, so that the tile looks the same on every
/// machine and no font is loaded to draw two characters.
[[nodiscard]] Image dayTile(const Image& digits, std::string_view day);

}  // namespace dinmala
