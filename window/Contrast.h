/// Colours that can be read on whatever the theme puts behind them.
#pragma once

#include <algorithm>
#include <cmath>

namespace dinmala {

/// Red, green and blue, each 0 to 1, as screens have them (sRGB).
struct Colour {
    double red = 0, green = 0, blue = 0;
};

/// How bright it is to the eye, 0 to 1, as the Web Content Accessibility Guidelines 2.1 reckon it.
[[nodiscard]] inline double luminance(const Colour& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

/// 1 for the same to 21 for black on white; small text needs 4.5.
[[nodiscard]] inline double contrast(const Colour& a, const Colour& b) {
    const double one = luminance(a) + 0.05, other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

/// A colour between two: all of `from` at 0, all of `to` at 1.
[[nodiscard]] inline Colour between(const Colour& from, const Colour& to, double part) {
    const auto mixed = [part](double a, double b) { return a + (b - a) * part; };
    return {mixed(from.red, to.red), mixed(from.green, to.green), mixed(from.blue, to.blue)};
}

/// The colour, taken towards white or black (whichever stands out more) as far as it needs to be read.
[[nodiscard]] inline Colour readable(const Colour& colour, const Colour& background, double least = 4.5) {
    const Colour white{1, 1, 1}, black{};
    const Colour end = contrast(white, background) > contrast(black, background) ? white : black;
    constexpr int kSteps = 20;
    for (int step = 0; step < kSteps; ++step) {
        const Colour candidate = between(colour, end, static_cast<double>(step) / kSteps);
        if (contrast(candidate, background) >= least) return candidate;
    }
    return end;
}

}  // namespace dinmala
