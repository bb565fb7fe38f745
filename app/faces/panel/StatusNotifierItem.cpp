#include "app/faces/panel/StatusNotifierItem.h"

#include <utility>

#include "desktop/SessionBus.h"

namespace dinmala {

namespace {

constexpr const char* kPath = "/StatusNotifierItem";
constexpr const char* kInterface = "org.kde.StatusNotifierItem";

constexpr const char* kIntrospection = R"xml(<node><interface name="org.kde.StatusNotifierItem">
  <property name="Category" type="s" access="read"/>
  <property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="WindowId" type="i" access="read"/>
  <property name="IconThemePath" type="s" access="read"/>
  <property name="IconName" type="s" access="read"/>
  <property name="IconPixmap" type="a(iiay)" access="read"/>
  <property name="OverlayIconName" type="s" access="read"/>
  <property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
  <property name="AttentionIconName" type="s" access="read"/>
  <property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
  <property name="AttentionMovieName" type="s" access="read"/>
  <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <property name="Menu" type="o" access="read"/>
  <property name="XAyatanaLabel" type="s" access="read"/>
  <property name="XAyatanaLabelGuide" type="s" access="read"/>
  <property name="XAyatanaOrderingIndex" type="u" access="read"/>
  <method name="Activate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="ProvideXdgActivationToken"><arg type="s" direction="in"/></method>
  <signal name="NewTitle"/>
  <signal name="NewIcon"/>
  <signal name="NewAttentionIcon"/>
  <signal name="NewOverlayIcon"/>
  <signal name="NewToolTip"/>
  <signal name="NewStatus"><arg name="status" type="s"/></signal>
  <signal name="XAyatanaNewLabel"><arg name="label" type="s"/><arg name="guide" type="s"/></signal>
</interface></node>)xml";

Glib::Variant<Glib::ustring> text(const std::string& value) { return Glib::Variant<Glib::ustring>::create(value); }

/// The pictures as one value, its bytes in one piece.
Glib::VariantBase pixmaps(const std::vector<Pixmap>& icon) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iiay)"));
    for (const Pixmap& pixmap : icon) {
        g_variant_builder_add(
            &builder, "(ii@ay)", pixmap.size, pixmap.size,
            g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, pixmap.argb.data(), pixmap.argb.size(), 1));
    }
    return Glib::VariantBase(g_variant_ref_sink(g_variant_builder_end(&builder)));
}

Glib::VariantContainerBase toolTip(const ItemView& view) {
    return Glib::VariantContainerBase::create_tuple(
        {text(""), pixmaps({}), text(view.toolTipTitle), text(view.toolTipBody)});
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(Glib::RefPtr<Gio::DBus::Connection> connection, const std::string& menuPath,
                                       std::function<void()> wasRead, std::function<void()> clicked)
    : connection_(std::move(connection)),
      menuPath_(menuPath),
      wasRead_(std::move(wasRead)),
      clicked_(std::move(clicked)),
      handlers_([this](const auto&, const auto&, const auto&, const auto&, const Glib::ustring& method,
                       const auto& arguments, const auto& invocation) { called(method, arguments, invocation); },
                [this](Glib::VariantBase& value, const auto&, const auto&, const auto&, const auto&,
                       const Glib::ustring& name) {
                    value = property(name);
                    wasRead_();
                }),
      icon_(pixmaps({})),
      cancellable_(Gio::Cancellable::create()) {
    const auto node = Gio::DBus::NodeInfo::create_for_xml(kIntrospection);
    registration_ = connection_->register_object(kPath, node->lookup_interface(kInterface), handlers_);
}

StatusNotifierItem::~StatusNotifierItem() {
    cancellable_->cancel();
    connection_->unregister_object(registration_);
}

void StatusNotifierItem::show(ItemView view) {
    const bool titleIsNew = view.title != view_.title;
    const bool labelIsNew = view.label != view_.label;
    const bool iconIsNew = view.iconName != view_.iconName || view.icon != view_.icon;
    const bool toolTipIsNew = view.toolTipTitle != view_.toolTipTitle || view.toolTipBody != view_.toolTipBody;
    view_ = std::move(view);
    if (iconIsNew) icon_ = pixmaps(view_.icon);
    if (titleIsNew) send("NewTitle");
    if (iconIsNew) send("NewIcon");
    if (toolTipIsNew) send("NewToolTip");
    // Panels take the label from the signal and do not read the property again.
    if (labelIsNew) {
        send("XAyatanaNewLabel", Glib::VariantContainerBase::create_tuple({text(view_.label), text("")}));
    }
}

void StatusNotifierItem::registerAt(const std::string& watcher, std::function<void(bool)> done) {
    // The path and not a name on the bus: GNOME's extension drops an item whose name it sees too late for its own
    // start.
    const auto parameters = Glib::VariantContainerBase::create_tuple(text(kPath));
    connection_->call(
        "/StatusNotifierWatcher", kWatcherName, "RegisterStatusNotifierItem", parameters,
        [connection = connection_, cancellable = cancellable_, done = std::move(done)](const auto& result) {
            bool taken = false;
            try {
                connection->call_finish(result);
                taken = true;
            } catch (const Glib::Error&) {
                // Said through `done`.
            }
            if (!cancellable->is_cancelled()) done(taken);
        },
        cancellable_, watcher);
}

Glib::VariantBase StatusNotifierItem::property(const Glib::ustring& name) const {
    if (name == "Category") return text("ApplicationStatus");
    if (name == "Id") return text("dinmala");
    if (name == "Title") return text(view_.title);
    if (name == "Status") return text("Active");
    if (name == "WindowId") return Glib::Variant<gint32>::create(0);
    if (name == "IconName") return text(view_.iconName);
    if (name == "IconPixmap") return icon_;
    if (name == "OverlayIconPixmap" || name == "AttentionIconPixmap") return pixmaps({});
    if (name == "ToolTip") return toolTip(view_);
    if (name == "ItemIsMenu") return Glib::Variant<bool>::create(view_.isMenu);
    if (name == "Menu") return Glib::Variant<Glib::DBusObjectPathString>::create(menuPath_);
    if (name == "XAyatanaLabel") return text(view_.label);
    if (name == "XAyatanaOrderingIndex") return Glib::Variant<guint32>::create(0);
    return text("");  // the icon names and paths that the item has no use for
}

void StatusNotifierItem::called(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
                                const Glib::RefPtr<Gio::DBus::MethodInvocation>& invocation) {
    // A panel that gets UnknownMethod for a click opens the menu on a left click too.
    if (method == "Activate" && view_.isMenu) {
        return invocation->return_dbus_error("org.freedesktop.DBus.Error.UnknownMethod", "a click opens the menu");
    }
    invocation->return_value({});
    if (method == "Activate") return clicked_();  // where it was is told wrongly by some panels, so it is not asked
    Glib::Variant<Glib::ustring> token;
    arguments.get_child(token, 0);
    token_ = token.get();
}

void StatusNotifierItem::send(const char* signal, const Glib::VariantContainerBase& arguments) {
    try {
        connection_->emit_signal(kPath, kInterface, signal, {}, arguments);
    } catch (const Glib::Error&) {
        // The bus has gone, which its connection tells the face.
    }
}

}  // namespace dinmala
