/// Square pictures in the forms that panels take.
#pragma once

#include <cstdint>
#include <vector>

#include "desktop/Image.h"

namespace dinmala {

/// A square picture: size * size * 4 bytes, alpha, red, green, blue.
struct Pixmap {
    int size = 0;
    std::vector<std::uint8_t> argb;

    friend bool operator==(const Pixmap&, const Pixmap&) = default;
};

/// A picture fitted into the middle of a clear square, its shape kept: panels
/// stretch a picture that is not square.
/// @param size the square's side in pixels, at least 1
[[nodiscard]] Pixmap squarePixmap(const Image& image, int size);
/// The same as the bytes of a PNG file; empty when it cannot be encoded.
[[nodiscard]] std::vector<std::uint8_t> squarePng(const Image& image, int size);

/// A square that shows nothing.
[[nodiscard]] Pixmap clearPixmap(int size);

}  // namespace dinmala
