/// The month window's place on the screen.
#pragma once

#include <gtk/gtk.h>

namespace dinmala {

/// Keeps a window beside the panel, on the monitor that the pointer was on when it began, and never over a panel. On
/// Wayland the desktop places windows, so nothing happens.
class PlaceBesidePanel {
public:
    /// Before the window is shown.
    void begin(GtkWindow* window);
    /// When it has another size.
    void keep(int width, int height);
    /// When there are other monitors: a window that stands on none of them whole is placed anew.
    void rescue();

private:
    GtkWindow* window_ = nullptr;
    int x_ = 0, y_ = 0;  ///< where the pointer was
    int width_ = 0, height_ = 0;
};

/// The work area of the monitor that the pointer is on; on Wayland, where nobody knows the pointer, of the first
/// monitor.
[[nodiscard]] GdkRectangle roomAtPointer(GtkWindow* window);

/// Puts a window that was never shown where panels are, if the desktop has such layers. These three do nothing
/// elsewhere.
void joinPanelsLayer(GtkWindow* window);
/// It has got the keyboard; from now on a click elsewhere may take it.
void mayLoseKeyboard(GtkWindow* window);
/// Whether other windows, as its own dialogs, are to stand above it and have the keyboard.
void letAbove(GtkWindow* window, bool others);

/// Shows a window in front, with the keyboard.
void presentNow(GtkWindow* window);

}  // namespace dinmala
