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
/// @param strip where the panel is, with all that lies between it and the edge of the desktop: with two monitors side
///              by side that may be another monitor. One that would take more than half is another monitor's panel.
[[nodiscard]] inline Box without(const Box& work, const Box& monitor, const Box& strip) {
    const int left = std::max(monitor.x, strip.x), right = std::min(monitor.right(), strip.right());
    const int top = std::max(monitor.y, strip.y), bottom = std::min(monitor.bottom(), strip.bottom());
    const int width = right - left, height = bottom - top;
    if (width <= 0 || height <= 0 || 2 * width * height > monitor.width * monitor.height) return work;
    int fromX = work.x, fromY = work.y, toX = work.right(), toY = work.bottom();
    if (width >= height) {
        if (top == monitor.y) {
            fromY = std::max(fromY, bottom);
        } else if (bottom == monitor.bottom()) {
            toY = std::min(toY, top);
        }
    } else if (left == monitor.x) {
        fromX = std::max(fromX, right);
    } else if (right == monitor.right()) {
        toX = std::min(toX, left);
    }
    return {fromX, fromY, toX - fromX, toY - fromY};
}

}  // namespace dinmala
