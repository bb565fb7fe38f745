#include "app/faces/panel/MenuExport.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "app/faces/panel/Pixmap.h"

namespace dinmala {

namespace {

/// Milliseconds before the menu is asked for again. It mostly answers the second time.
constexpr std::array<unsigned, 9> kPauses = {0, 0, 1, 4, 16, 64, 256, 1024, 4096};

constexpr int kLogoSize = 16;  // what panels draw beside a row's text

/// Panels take a single `_` for the mark of a shortcut letter.
std::string escaped(const std::string& title) {
    std::string result;
    for (const char c : title) {
        result += c;
        if (c == '_') result += c;
    }
    return result;
}

}  // namespace

struct MenuExport::Row {
    MenuItem* item = nullptr;
    std::unique_ptr<DbusmenuMenuitem, Unref> node;
    ImagePtr image;

    /// The library sends a property only when its value is another one.
    void update() {
        DbusmenuMenuitem* const out = node.get();
        dbusmenu_menuitem_property_set_bool(out, DBUSMENU_MENUITEM_PROP_VISIBLE, item->isHidden() ? FALSE : TRUE);
        if (item->kind() == MenuItem::Kind::separator) return;
        dbusmenu_menuitem_property_set(out, DBUSMENU_MENUITEM_PROP_LABEL, escaped(item->title()).c_str());
        dbusmenu_menuitem_property_set_bool(out, DBUSMENU_MENUITEM_PROP_ENABLED, item->isEnabled() ? TRUE : FALSE);
        if (item->kind() == MenuItem::Kind::toggle) {
            dbusmenu_menuitem_property_set_int(out, DBUSMENU_MENUITEM_PROP_TOGGLE_STATE, item->state());
        }
        if (image != item->image()) {
            image = item->image();
            const std::vector<std::uint8_t> png = image ? squarePng(*image, kLogoSize) : std::vector<std::uint8_t>{};
            if (png.empty()) {
                dbusmenu_menuitem_property_remove(out, DBUSMENU_MENUITEM_PROP_ICON_DATA);
            } else {
                dbusmenu_menuitem_property_set_byte_array(out, DBUSMENU_MENUITEM_PROP_ICON_DATA, png.data(),
                                                          png.size());
            }
        }
    }

    static void activated(DbusmenuMenuitem*, guint, gpointer data) {
        const auto& row = *static_cast<const Row*>(data);
        const int before = row.item->state();
        row.item->choose();
        // Some panels flip a mark by themselves; where the choice left it as it was, it is sent again.
        if (row.item->kind() == MenuItem::Kind::toggle && row.item->state() == before) {
            dbusmenu_menuitem_property_remove(row.node.get(), DBUSMENU_MENUITEM_PROP_TOGGLE_STATE);
            dbusmenu_menuitem_property_set_int(row.node.get(), DBUSMENU_MENUITEM_PROP_TOGGLE_STATE, before);
        }
    }
};

MenuExport::MenuExport(const Menu& menu, const std::function<void()>& changed)
    : root_(dbusmenu_menuitem_new()), server_(dbusmenu_server_new(kPath)), cancellable_(Gio::Cancellable::create()) {
    addRows(root_.get(), menu, changed);
    update();
    g_signal_connect_swapped(root_.get(), DBUSMENU_MENUITEM_SIGNAL_ABOUT_TO_SHOW,
                             G_CALLBACK(+[](MenuExport* self) { self->aboutToShow(); }), this);
    dbusmenu_server_set_root(server_.get(), root_.get());
}

MenuExport::~MenuExport() {
    cancellable_->cancel();
    retry_.disconnect();
    g_signal_handlers_disconnect_by_data(root_.get(), this);
    for (const auto& row : rows_) {
        row->item->setObserver(nullptr);
        g_signal_handlers_disconnect_by_data(row->node.get(), row.get());
    }
}

void MenuExport::addRows(DbusmenuMenuitem* parent, const Menu& menu, const std::function<void()>& changed) {
    for (const auto& item : menu.items()) {
        Row& row = *rows_.emplace_back(std::make_unique<Row>());
        row.item = item.get();
        row.node.reset(dbusmenu_menuitem_new());
        DbusmenuMenuitem* const node = row.node.get();
        if (item->kind() == MenuItem::Kind::separator) {
            dbusmenu_menuitem_property_set(node, DBUSMENU_MENUITEM_PROP_TYPE, "separator");
        }
        if (item->kind() == MenuItem::Kind::toggle) {
            dbusmenu_menuitem_property_set(node, DBUSMENU_MENUITEM_PROP_TOGGLE_TYPE, DBUSMENU_MENUITEM_TOGGLE_CHECK);
        }
        g_signal_connect(node, DBUSMENU_MENUITEM_SIGNAL_ITEM_ACTIVATED, G_CALLBACK(&Row::activated), &row);
        item->setObserver(changed);
        dbusmenu_menuitem_child_append(parent, node);
        if (item->submenu() != nullptr) addRows(node, *item->submenu(), changed);
    }
}

void MenuExport::aboutToShow() {
    if (!connection_ || !std::exchange(panelIsNew_, false)) return;
    // Plasma reads a submenu as it opens, too late to know its size: at the screen's edge it would stand outside. This
    // makes it read them now. The revision, which is old, keeps others from reading anything.
    for (const auto& row : rows_) {
        if (row->item->submenu() == nullptr) continue;
        try {
            connection_->emit_signal(kPath, "com.canonical.dbusmenu", "LayoutUpdated", {},
                                     Glib::VariantContainerBase::create_tuple(
                                         {Glib::Variant<guint32>::create(0),
                                          Glib::Variant<gint32>::create(dbusmenu_menuitem_get_id(row->node.get()))}));
        } catch (const Glib::Error&) {
            // The bus has gone, which its connection tells the face.
        }
    }
}

void MenuExport::update() {
    for (const auto& row : rows_) row->update();
}

void MenuExport::whenExported(const Glib::RefPtr<Gio::DBus::Connection>& connection,
                              std::function<void(bool)> callback) {
    connection_ = connection;
    askForIt(connection, std::move(callback), 0);
}

void MenuExport::askForIt(const Glib::RefPtr<Gio::DBus::Connection>& connection, std::function<void(bool)> callback,
                          std::size_t tries) {
    // The library exports the menu some turns of the loop later and does not say when; so the menu is asked
    // for over the bus, and again until it answers.
    const auto parameters =
        Glib::VariantContainerBase::create_tuple({Glib::Variant<Glib::ustring>::create("com.canonical.dbusmenu"),
                                                  Glib::Variant<Glib::ustring>::create("Version")});
    connection->call(
        kPath, "org.freedesktop.DBus.Properties", "Get", parameters,
        [this, connection, callback = std::move(callback), tries, cancellable = cancellable_](const auto& result) {
            bool answered = false;
            try {
                connection->call_finish(result);
                answered = true;
            } catch (const Glib::Error&) {
                // Not yet.
            }
            if (cancellable->is_cancelled() || connection->is_closed()) return;
            if (answered || tries >= kPauses.size()) return callback(answered);
            retry_ = Glib::signal_timeout().connect(
                [this, connection, callback, tries] {
                    askForIt(connection, callback, tries + 1);
                    return false;
                },
                kPauses[tries]);
        },
        cancellable_, connection->get_unique_name());
}

}  // namespace dinmala
