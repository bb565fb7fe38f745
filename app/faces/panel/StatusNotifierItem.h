/// The status item as an object on the session bus (org.kde.StatusNotifierItem).
#pragma once

#include <giomm.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "app/faces/panel/Pixmap.h"

namespace dinmala {

/// Everything a panel may read of an item.
struct ItemView {
    std::string title;
    std::string label;     ///< for panels that show text beside the icon
    std::string iconName;  ///< an absolute path, or empty for the pixmaps
    std::vector<Pixmap> icon;
    std::string toolTipTitle;
    std::string toolTipBody;  ///< panels read this as markup
    bool isMenu = true;       ///< whether a click opens the menu and nothing else
};

class StatusNotifierItem {
public:
    /// Exports the object; no panel knows it before registerAt().
    /// @param menuPath where the menu is exported on the same connection
    /// @param wasRead  called at every property that a panel reads
    /// @param clicked  called at a click, where the view is more than a menu
    StatusNotifierItem(Glib::RefPtr<Gio::DBus::Connection> connection, const std::string& menuPath,
                       std::function<void()> wasRead, std::function<void()> clicked);
    ~StatusNotifierItem();
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

    /// Changes what panels read, and tells them of what is different only.
    void show(ItemView view);

    /// The token that the panel handed over, by which the window that a row opens may come to the front; once.
    [[nodiscard]] std::string takeToken() { return std::exchange(token_, {}); }

    /// Asks a watcher to take the item.
    /// @param done whether it did; called from the main loop
    void registerAt(const std::string& watcher, std::function<void(bool)> done);

private:
    [[nodiscard]] Glib::VariantBase property(const Glib::ustring& name) const;
    void send(const char* signal, const Glib::VariantContainerBase& arguments = {});
    void called(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                const Glib::RefPtr<Gio::DBus::MethodInvocation>& invocation);

    Glib::RefPtr<Gio::DBus::Connection> connection_;
    std::string menuPath_;
    std::function<void()> wasRead_;
    std::function<void()> clicked_;
    std::string token_;
    ItemView view_;
    Gio::DBus::InterfaceVTable handlers_;
    Glib::VariantBase icon_;  ///< view_.icon as panels read it
    Glib::RefPtr<Gio::Cancellable> cancellable_;
    guint registration_ = 0;
};

}  // namespace dinmala
