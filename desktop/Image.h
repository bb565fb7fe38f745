/// Pictures as the program holds them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace dinmala {

/// A picture from a file: RGBA, 8 bits each, row by row from the top.
struct Image {
    std::string path;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;  ///< width * height * 4
};
using ImagePtr = std::shared_ptr<const Image>;

}  // namespace dinmala
