#include "app/platform/linux/StatusNotifierItem.h"

#include <unistd.h>

#include <tuple>
#include <utility>

#include "app/platform/linux/SessionBus.h"

namespace dinmala {

namespace {

constexpr const char* kPath = "/StatusNotifierItem";
constexpr const char* kInterface = "org.kde.StatusNotifierItem";

/// There are no methods: a panel that gets UnknownMethod for Activate opens the
/// menu on a left click too.
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
  <signal name="NewTitle"/>
  <signal name="NewIcon"/>
  <signal name="NewAttentionIcon"/>
  <signal name="NewOverlayIcon"/>
  <signal name="NewToolTip"/>
  <signal name="NewStatus"><arg name="status" type="s"/></signal>
  <signal name="XAyatanaNewLabel"><arg name="label" type="s"/><arg name="guide" type="s"/></signal>
</interface></node>)xml";

using PixmapTuple = std::tuple<gint32, gint32, std::vector<guint8>>;

Glib::Variant<Glib::ustring> text(const std::string& value) { return Glib::Variant<Glib::ustring>::create(value); }

Glib::Variant<std::vector<PixmapTuple>> pixmaps(const std::vector<Pixmap>& icon) {
    std::vector<PixmapTuple> tuples;
    tuples.reserve(icon.size());
    for (const Pixmap& pixmap : icon) tuples.emplace_back(pixmap.size, pixmap.size, pixmap.argb);
    return Glib::Variant<std::vector<PixmapTuple>>::create(tuples);
}

Glib::VariantContainerBase toolTip(const ItemView& view) {
    return Glib::VariantContainerBase::create_tuple(
        {text(""), pixmaps({}), text(view.toolTipTitle), text(view.toolTipBody)});
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(Glib::RefPtr<Gio::DBus::Connection> connection, const std::string& menuPath,
                                       std::function<void()> wasRead)
    : connection_(std::move(connection)),
      menuPath_(menuPath),
      wasRead_(std::move(wasRead)),
      busName_("org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1"),
      handlers_({},
                [this](Glib::VariantBase& value, const auto&, const auto&, const auto&, const auto&,
                       const Glib::ustring& name) {
                    value = property(name);
                    wasRead_();
                }),
      cancellable_(Gio::Cancellable::create()) {
    const auto node = Gio::DBus::NodeInfo::create_for_xml(kIntrospection);
    registration_ = connection_->register_object(kPath, node->lookup_interface(kInterface), handlers_);
    // A panel that knows the connection needs no name, so a refusal is no failure.
    static_cast<void>(requestName(connection_, busName_));
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
    if (titleIsNew) send("NewTitle");
    if (iconIsNew) send("NewIcon");
    if (toolTipIsNew) send("NewToolTip");
    // Panels take the label from the signal and do not read the property again.
    if (labelIsNew) {
        send("XAyatanaNewLabel", Glib::VariantContainerBase::create_tuple({text(view_.label), text("")}));
    }
}

void StatusNotifierItem::registerAt(const std::string& watcher, std::function<void(bool)> done) {
    const auto parameters = Glib::VariantContainerBase::create_tuple(text(busName_));
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
    if (name == "IconPixmap") return pixmaps(view_.icon);
    if (name == "OverlayIconPixmap" || name == "AttentionIconPixmap") return pixmaps({});
    if (name == "ToolTip") return toolTip(view_);
    if (name == "ItemIsMenu") return Glib::Variant<bool>::create(true);
    if (name == "Menu") return Glib::Variant<Glib::DBusObjectPathString>::create(menuPath_);
    if (name == "XAyatanaLabel") return text(view_.label);
    if (name == "XAyatanaOrderingIndex") return Glib::Variant<guint32>::create(0);
    return text("");  // the icon names and paths that the item has no use for
}

void StatusNotifierItem::send(const char* signal, const Glib::VariantContainerBase& arguments) {
    try {
        connection_->emit_signal(kPath, kInterface, signal, {}, arguments);
    } catch (const Glib::Error&) {
        // The bus has gone, which its connection tells the face.
    }
}

}  // namespace dinmala
