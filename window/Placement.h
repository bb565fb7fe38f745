/// Where a window that belongs to a panel stands: beside the panel, at the pointer, whole on the screen.
#pragma once

#include <algorithm>

namespace dinmala {

/// In pixels of the desktop, from its left upper corner.
struct Box {
    int x = 0, y = 0, width = 0, height = 0;
    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
    friend bool operator==(const Box&, const Box&) = default;
};

/// @param work    the monitor without its panels
/// @param pointerX, pointerY where the pointer is: on a panel when its item was clicked
/// @return the window's place within `work`; where it is larger, its left upper corner is kept
[[nodiscard]] inline Box placeBeside(const Box& work, int pointerX, int pointerY, int width, int height) {
    const auto within = [](int value, int from, int to) { return std::max(from, std::min(value, to)); };
    const bool inWork = pointerX >= work.x && pointerX < work.right() && pointerY >= work.y && pointerY < work.bottom();
    const bool atSide = !inWork && (pointerX < work.x || pointerX >= work.right());
    // Beside an upright panel the window's middle is at the pointer's height, below or above a level one at its place.
    const int x = pointerX - width / 2;
    const int y = atSide || inWork ? pointerY - height / 2 : pointerY;
    return {within(x, work.x, work.right() - width), within(y, work.y, work.bottom() - height), width, height};
}

/// What is left of a monitor when a panel keeps a strip along one of its edges for itself. A strip that is not at an
/// edge of this monitor takes nothing.
/// @param strip where the panel is
[[nodiscard]] inline Box without(const Box& work, const Box& monitor, const Box& strip) {
    const int left = std::max(work.x, strip.x), right = std::min(work.right(), strip.right());
    const int top = std::max(work.y, strip.y), bottom = std::min(work.bottom(), strip.bottom());
    if (left >= right || top >= bottom) return work;
    Box rest = work;
    if (strip.width >= strip.height) {
        if (strip.y <= monitor.y) {
            rest.y = bottom;
            rest.height = work.bottom() - bottom;
        } else if (strip.bottom() >= monitor.bottom()) {
            rest.height = top - work.y;
        }
    } else if (strip.x <= monitor.x) {
        rest.x = right;
        rest.width = work.right() - right;
    } else if (strip.right() >= monitor.right()) {
        rest.width = left - work.x;
    }
    return rest;
}

}  // namespace dinmala
