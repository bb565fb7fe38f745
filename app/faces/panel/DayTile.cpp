#include "app/faces/panel/DayTile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace dinmala {

namespace {

constexpr std::array<std::uint8_t, 3> kCrimson = {0xC8, 0x10, 0x2E};
constexpr std::string_view kZero = "०";  // the ten digits differ in the last byte only

/// Columns of the strip: from, up to.
struct Span {
    int begin = 0;
    int end = 0;
    [[nodiscard]] int width() const { return end - begin; }
};

std::uint8_t alphaAt(const Image& image, int x, int y) {
    const auto index =
        static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x);
    return image.pixels[index * 4 + 3];
}

/// The inked columns of a digit's cell.
Span inkOf(const Image& digits, int digit) {
    const int cell = digits.width / 10;
    const auto isInked = [&](int x) {
        for (int y = 0; y < digits.height; ++y) {
            if (alphaAt(digits, x, y) > 8) return true;
        }
        return false;
    };
    Span ink{cell * digit, cell * (digit + 1)};
    while (ink.begin < ink.end && !isInked(ink.begin)) ++ink.begin;
    while (ink.begin < ink.end && !isInked(ink.end - 1)) --ink.end;
    return ink;
}

std::vector<Span> inksOf(const Image& digits, std::string_view day) {
    std::vector<Span> inks;
    const std::string_view prefix = kZero.substr(0, 2);
    for (std::size_t at = day.find(prefix); at < day.size(); at = day.find(prefix, at + 3)) {
        if (at + 3 > day.size()) break;
        const int digit = static_cast<std::uint8_t>(day[at + 2]) - static_cast<std::uint8_t>(kZero[2]);
        if (digit >= 0 && digit <= 9) inks.push_back(inkOf(digits, digit));
    }
    return inks;
}

/// How much of a pixel lies in the square with round corners, 0 to 1.
double coverage(int x, int y, int side, double radius) {
    const double half = side / 2.0;
    const double dx = std::max(std::abs(x + 0.5 - half) - (half - radius), 0.0);
    const double dy = std::max(std::abs(y + 0.5 - half) - (half - radius), 0.0);
    return std::clamp(radius - std::hypot(dx, dy) + 0.5, 0.0, 1.0);
}

}  // namespace

Image dayTile(const Image& digits, std::string_view day) {
    const bool usable =
        digits.width >= 10 && digits.height > 0 &&
        digits.pixels.size() >= static_cast<std::size_t>(digits.width) * static_cast<std::size_t>(digits.height) * 4;
    const std::vector<Span> inks = usable ? inksOf(digits, day) : std::vector<Span>{};
    const int gap = digits.height / 10;
    int textWidth = -gap;
    for (const Span& ink : inks) textWidth += ink.width() + gap;

    // The digits are as tall as two thirds of the tile, unless they are too wide for that.
    Image tile;
    const int side = std::max({64, digits.height * 3 / 2, textWidth * 100 / 84});
    tile.width = tile.height = side;
    tile.pixels.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            tile.pixels.insert(tile.pixels.end(), kCrimson.begin(), kCrimson.end());
            tile.pixels.push_back(static_cast<std::uint8_t>(std::lround(255 * coverage(x, y, side, side * 0.18))));
        }
    }

    int left = (side - textWidth) / 2;
    const int top = (side - digits.height) / 2;
    for (const Span& ink : inks) {
        for (int y = 0; y < digits.height; ++y) {
            for (int x = ink.begin; x < ink.end; ++x) {
                const int alpha = alphaAt(digits, x, y);
                const auto at = (static_cast<std::size_t>(top + y) * static_cast<std::size_t>(side) +
                                 static_cast<std::size_t>(left + x - ink.begin)) *
                                4;
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    std::uint8_t& value = tile.pixels[at + channel];
                    value = static_cast<std::uint8_t>(value + (255 - value) * alpha / 255);
                }
            }
        }
        left += ink.width() + gap;
    }
    return tile;
}

}  // namespace dinmala
