#include "window/gtk/Placing.h"

#include <X11/Xatom.h>
#include <gdk/gdkwayland.h>
#include <gdk/gdkx.h>
#include <gtk-layer-shell.h>

#include <memory>
#include <span>
#include <vector>

#include "window/Placement.h"

namespace dinmala {

namespace {

Box boxOf(const GdkRectangle& rectangle) { return {rectangle.x, rectangle.y, rectangle.width, rectangle.height}; }

/// A property of a window that is a list of 32-bit numbers; empty where there is none.
std::vector<long> numbersOf(Display* display, Window window, const char* property, Atom type) {
    Atom actual = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* data = nullptr;
    constexpr long kMost = 1024;
    const int status = XGetWindowProperty(display, window, XInternAtom(display, property, False), 0, kMost, False, type,
                                          &actual, &format, &count, &rest, &data);
    const std::unique_ptr<unsigned char, int (*)(void*)> owned{data, XFree};
    if (status != Success || actual != type || format != 32 || data == nullptr) return {};
    const auto* numbers = reinterpret_cast<const long*>(data);
    return {numbers, numbers + count};
}

/// The strips of the screen that panels keep for themselves, in pixels of the screen.
std::vector<Box> strips(GdkDisplay* display) {
    Display* const x = gdk_x11_display_get_xdisplay(display);
    const Window root = DefaultRootWindow(x);
    std::vector<Box> found;
    // Also without a window manager, which keeps the list, panels are among the root's children.
    std::vector<long> windows = numbersOf(x, root, "_NET_CLIENT_LIST", XA_WINDOW);
    if (windows.empty()) {
        Window ignored = 0, parent = 0, *children = nullptr;
        unsigned count = 0;
        if (XQueryTree(x, root, &ignored, &parent, &children, &count) != 0 && children != nullptr) {
            for (const Window child : std::span{children, count}) windows.push_back(static_cast<long>(child));
            XFree(children);
        }
    }
    const int width = WidthOfScreen(DefaultScreenOfDisplay(x)), height = HeightOfScreen(DefaultScreenOfDisplay(x));
    for (const long window : windows) {
        // left, right, top, bottom; then from where to where each of them
        const std::vector<long> all = numbersOf(x, static_cast<Window>(window), "_NET_WM_STRUT_PARTIAL", XA_CARDINAL);
        if (all.size() < 12) continue;
        const auto at = [&all](std::size_t place) { return static_cast<int>(all[place]); };
        if (at(0) > 0) found.push_back({0, at(4), at(0), at(5) - at(4) + 1});
        if (at(1) > 0) found.push_back({width - at(1), at(6), at(1), at(7) - at(6) + 1});
        if (at(2) > 0) found.push_back({at(8), 0, at(9) - at(8) + 1, at(2)});
        if (at(3) > 0) found.push_back({at(10), height - at(3), at(11) - at(10) + 1, at(3)});
    }
    return found;
}

}  // namespace

void PlaceBesidePanel::begin(GtkWindow* window) {
    GdkDisplay* const display = gtk_widget_get_display(GTK_WIDGET(window));
    if (!GDK_IS_X11_DISPLAY(display)) return;
    window_ = window;
    gdk_device_get_position(gdk_seat_get_pointer(gdk_display_get_default_seat(display)), nullptr, &x_, &y_);
    GtkRequisition size;
    gtk_widget_get_preferred_size(GTK_WIDGET(window), nullptr, &size);
    width_ = height_ = 0;
    keep(size.width, size.height);
}

void PlaceBesidePanel::keep(int width, int height) {
    if (window_ == nullptr || (width == width_ && height == height_)) return;
    width_ = width;
    height_ = height;
    GdkDisplay* const display = gtk_widget_get_display(GTK_WIDGET(window_));
    GdkMonitor* const monitor = gdk_display_get_monitor_at_point(display, x_, y_);
    if (monitor == nullptr) return;
    GdkRectangle whole, work;
    gdk_monitor_get_geometry(monitor, &whole);
    gdk_monitor_get_workarea(monitor, &work);
    Box free = boxOf(work);
    // The window manager tells the work area of one monitor only, so the panels are asked too.
    const int scale = gdk_monitor_get_scale_factor(monitor);
    gdk_x11_display_error_trap_push(display);  // a panel may go while it is asked
    for (const Box& strip : strips(display)) {
        free = without(
            free, boxOf(whole),
            {strip.x / scale, strip.y / scale, (strip.width + scale - 1) / scale, (strip.height + scale - 1) / scale});
    }
    gdk_x11_display_error_trap_pop_ignored(display);
    const Box place = placeBeside(free, x_, y_, width, height);
    gtk_window_move(window_, place.x, place.y);
}

void PlaceBesidePanel::rescue() {
    if (window_ == nullptr) return;
    GdkRectangle box, monitor, seen;
    gtk_window_get_position(window_, &box.x, &box.y);
    gtk_window_get_size(window_, &box.width, &box.height);
    GdkDisplay* const display = gtk_widget_get_display(GTK_WIDGET(window_));
    gdk_monitor_get_geometry(gdk_display_get_monitor_at_point(display, box.x + box.width / 2, box.y + box.height / 2),
                             &monitor);
    if (gdk_rectangle_intersect(&box, &monitor, &seen) != FALSE && gdk_rectangle_equal(&box, &seen) != FALSE) return;
    width_ = 0;
    keep(box.width, box.height);
}

GdkRectangle roomAtPointer(GtkWindow* window) {
    GdkDisplay* const display = gtk_widget_get_display(GTK_WIDGET(window));
    GdkMonitor* monitor = gdk_display_get_monitor(display, 0);
    if (GDK_IS_X11_DISPLAY(display)) {
        int x = 0, y = 0;
        gdk_device_get_position(gdk_seat_get_pointer(gdk_display_get_default_seat(display)), nullptr, &x, &y);
        monitor = gdk_display_get_monitor_at_point(display, x, y);
    }
    GdkRectangle room{0, 0, G_MAXINT, G_MAXINT};
    if (monitor != nullptr) gdk_monitor_get_workarea(monitor, &room);
    return room;
}

void joinPanelsLayer(GtkWindow* window) {
    GdkDisplay* const display = gtk_widget_get_display(GTK_WIDGET(window));
    // Asked of the library itself, each start in a desktop without layers would leave a warning in the log.
    if (!GDK_IS_WAYLAND_DISPLAY(display)) return;
    if (gdk_wayland_display_query_registry(display, "zwlr_layer_shell_v1") == FALSE) return;
    gtk_layer_init_for_window(window);
    gtk_layer_set_namespace(window, "dinmala-window");
    // Nobody tells where the panel and the pointer are: the corner where most bars have their items, beside the bar.
    gtk_layer_set_anchor(window, GTK_LAYER_SHELL_EDGE_TOP, TRUE);
    gtk_layer_set_anchor(window, GTK_LAYER_SHELL_EDGE_RIGHT, TRUE);
    letAbove(window, false);
}

void mayLoseKeyboard(GtkWindow* window) {
    if (gtk_layer_is_layer_window(window) == FALSE) return;
    gtk_layer_set_keyboard_mode(window, GTK_LAYER_SHELL_KEYBOARD_MODE_ON_DEMAND);
}

void letAbove(GtkWindow* window, bool others) {
    if (gtk_layer_is_layer_window(window) == FALSE) return;
    gtk_layer_set_layer(window, others ? GTK_LAYER_SHELL_LAYER_BOTTOM : GTK_LAYER_SHELL_LAYER_TOP);
    gtk_layer_set_keyboard_mode(window,
                                others ? GTK_LAYER_SHELL_KEYBOARD_MODE_NONE : GTK_LAYER_SHELL_KEYBOARD_MODE_EXCLUSIVE);
}

void presentNow(GtkWindow* window) {
    gtk_widget_show(GTK_WIDGET(window));
    GdkWindow* const surface = gtk_widget_get_window(GTK_WIDGET(window));
    // Window managers give the keyboard only for a time that is not before the last click's.
    const guint32 now = GDK_IS_X11_WINDOW(surface) ? gdk_x11_get_server_time(surface) : GDK_CURRENT_TIME;
    gtk_window_present_with_time(window, now);
}

}  // namespace dinmala
