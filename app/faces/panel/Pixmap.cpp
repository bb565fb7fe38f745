#include "app/faces/panel/Pixmap.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace dinmala {

namespace {

struct Unref {
    void operator()(GdkPixbuf* pixbuf) const { g_object_unref(pixbuf); }
};
using PixbufPtr = std::unique_ptr<GdkPixbuf, Unref>;

bool isDrawable(const Image& image) {
    const auto width = static_cast<std::size_t>(std::max(image.width, 0));
    const auto height = static_cast<std::size_t>(std::max(image.height, 0));
    return width > 0 && height > 0 && image.pixels.size() >= width * height * 4;
}

PixbufPtr square(const Image& image, int size) {
    PixbufPtr result{gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, size, size)};
    gdk_pixbuf_fill(result.get(), 0);
    if (!isDrawable(image)) return result;
    const PixbufPtr source{gdk_pixbuf_new_from_data(image.pixels.data(), GDK_COLORSPACE_RGB, TRUE, 8, image.width,
                                                    image.height, image.width * 4, nullptr, nullptr)};
    const double scale = static_cast<double>(size) / std::max(image.width, image.height);
    const auto fitted = [&](int length) { return std::clamp(static_cast<int>(std::lround(length * scale)), 1, size); };
    const int width = fitted(image.width);
    const int height = fitted(image.height);
    const int x = (size - width) / 2;
    const int y = (size - height) / 2;
    gdk_pixbuf_scale(source.get(), result.get(), x, y, width, height, x, y, static_cast<double>(width) / image.width,
                     static_cast<double>(height) / image.height, GDK_INTERP_BILINEAR);
    return result;
}

}  // namespace

Pixmap squarePixmap(const Image& image, int size) {
    Pixmap pixmap = clearPixmap(size);
    const PixbufPtr pixbuf = square(image, size);
    const guint8* pixels = gdk_pixbuf_read_pixels(pixbuf.get());
    const int stride = gdk_pixbuf_get_rowstride(pixbuf.get());
    std::uint8_t* out = pixmap.argb.data();
    for (int y = 0; y < size; ++y) {
        const guint8* row = pixels + std::ptrdiff_t{y} * stride;
        for (int x = 0; x < size; ++x, row += 4, out += 4) {
            out[0] = row[3];
            std::copy_n(row, 3, out + 1);
        }
    }
    return pixmap;
}

std::vector<std::uint8_t> squarePng(const Image& image, int size) {
    gchar* bytes = nullptr;
    gsize length = 0;
    if (gdk_pixbuf_save_to_buffer(square(image, size).get(), &bytes, &length, "png", nullptr, nullptr) == FALSE) {
        return {};
    }
    const std::unique_ptr<gchar, decltype(&g_free)> owned{bytes, g_free};
    return {bytes, bytes + length};
}

Pixmap clearPixmap(int size) {
    const auto side = static_cast<std::size_t>(size);
    return {size, std::vector<std::uint8_t>(side * side * 4)};
}

}  // namespace dinmala
