/// A menu on the session bus, for the panel to draw (com.canonical.dbusmenu).
#pragma once

#include <giomm.h>
#include <libdbusmenu-glib/dbusmenu-glib.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "app/platform/Controls.h"

namespace dinmala {

/// Exports a menu on the process's shared session bus connection. The rows are
/// those the menu has now; what they say may change.
class MenuExport {
public:
    static constexpr const char* kPath = "/MenuBar";

    /// @param menu    must outlive the export, which observes its rows
    /// @param changed called at every change of a row
    MenuExport(const Menu& menu, const std::function<void()>& changed);
    ~MenuExport();
    MenuExport(const MenuExport&) = delete;
    MenuExport& operator=(const MenuExport&) = delete;

    /// Sends what has changed since the last call.
    void update();

    /// Another panel will read the menu.
    void panelIsNew() { panelIsNew_ = true; }

    /// Calls back once, from the main loop, with true when the menu can be read from the
    /// bus, or with false when that is not to be expected any more, some seconds later;
    /// never when the bus goes away before.
    void whenExported(const Glib::RefPtr<Gio::DBus::Connection>& connection, std::function<void(bool)> callback);

private:
    struct Row;
    struct Unref {
        void operator()(gpointer object) const { g_object_unref(object); }
    };

    void askForIt(const Glib::RefPtr<Gio::DBus::Connection>& connection, std::function<void(bool)> callback,
                  std::size_t tries);
    void aboutToShow();
    void addRows(DbusmenuMenuitem* parent, const Menu& menu, const std::function<void()>& changed);

    std::unique_ptr<DbusmenuMenuitem, Unref> root_;
    std::unique_ptr<DbusmenuServer, Unref> server_;
    std::vector<std::unique_ptr<Row>> rows_;
    Glib::RefPtr<Gio::Cancellable> cancellable_;
    sigc::connection retry_;
    Glib::RefPtr<Gio::DBus::Connection> connection_;
    bool panelIsNew_ = false;
};

}  // namespace dinmala
