#include "desktop/ImageFile.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstddef>
#include <memory>

#include "desktop/Files.h"

namespace dinmala {
namespace {

constexpr int kLongestSide = 4096;

constexpr std::size_t kLargestFile = 64 << 20;

using Pixbuf = std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)>;
using Loader = std::unique_ptr<GdkPixbufLoader, decltype(&g_object_unref)>;

void refuseTooLarge(GdkPixbufLoader* loader, int width, int height, bool* tooLarge) {
    *tooLarge = std::max(width, height) > kLongestSide || std::min(width, height) < 1;
    // Formats that cannot load a smaller picture make room for the whole one, unless it is to have no size at all.
    if (*tooLarge) gdk_pixbuf_loader_set_size(loader, 0, 0);
}

}  // namespace

ImagePtr loadImage(const std::string& path) {
    const FileText file = readFile(path, kLargestFile);
    if (!file.ok()) return nullptr;

    // Naming the format spares a start the reading of the desktop's table of file types.
    const Loader loader(
        path.ends_with(".png") ? gdk_pixbuf_loader_new_with_type("png", nullptr) : gdk_pixbuf_loader_new(),
        &g_object_unref);
    if (!loader) return nullptr;
    // The size stands in the file's first bytes: known before room is made for it.
    bool tooLarge = false;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(&refuseTooLarge), &tooLarge);
    const bool written = gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(file.text.data()),
                                                 file.text.size(), nullptr) != 0;
    const bool closed = gdk_pixbuf_loader_close(loader.get(), nullptr) != 0;
    if (!written || !closed || tooLarge) return nullptr;
    GdkPixbuf* const loaded = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (loaded == nullptr) return nullptr;
    Pixbuf pixbuf(GDK_PIXBUF(g_object_ref(loaded)), &g_object_unref);
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
