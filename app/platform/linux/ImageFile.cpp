#include "app/platform/linux/ImageFile.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <memory>

namespace dinmala {
namespace {

constexpr int kLongestSide = 4096;

using Pixbuf = std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)>;

}  // namespace

ImagePtr loadImage(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
    // The size stands in the file's first bytes: known before room is made for it.
    int width = 0;
    int height = 0;
    if (gdk_pixbuf_get_file_info(path.c_str(), &width, &height) == nullptr) return nullptr;
    if (std::max(width, height) > kLongestSide || std::min(width, height) < 1) return nullptr;

    Pixbuf pixbuf(gdk_pixbuf_new_from_file(path.c_str(), nullptr), &g_object_unref);
    if (!pixbuf) return nullptr;
    if (gdk_pixbuf_get_has_alpha(pixbuf.get()) == 0) {
        pixbuf.reset(gdk_pixbuf_add_alpha(pixbuf.get(), FALSE, 0, 0, 0));
        if (!pixbuf) return nullptr;
    }

    auto image = std::make_shared<Image>();
    image->path = path;
    image->width = gdk_pixbuf_get_width(pixbuf.get());
    image->height = gdk_pixbuf_get_height(pixbuf.get());
    const auto rowLength = static_cast<std::size_t>(image->width) * 4;
    const auto stride = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(pixbuf.get()));
    const std::uint8_t* pixels = gdk_pixbuf_read_pixels(pixbuf.get());
    image->pixels.reserve(rowLength * static_cast<std::size_t>(image->height));
    for (std::size_t row = 0; row < static_cast<std::size_t>(image->height); ++row) {
        image->pixels.insert(image->pixels.end(), pixels + row * stride, pixels + row * stride + rowLength);
    }
    return image;
}

}  // namespace dinmala
