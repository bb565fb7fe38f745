// Calls to the item and the menu over a bus, a line each ("Method (arguments)" in GLib's text form; `/` before it for
// the menu): whatever is called, both go on to answer, and a row is chosen only by an event of its own.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "app/faces/panel/PanelFace.h"
#include "fuzz/Require.h"
#include "tests/app/faces/panel/FakePanel.h"

namespace {

using namespace dinmala;

/// A face with a menu of two rows, and a panel that shows it.
struct World {
    World() {
        rows.add(std::make_unique<MenuItem>()).setTitle("row");
        MenuItem& toggle = rows.add(std::make_unique<MenuItem>(MenuItem::Kind::toggle));
        toggle.setTitle("toggle");
        toggle.setAction([this] { ++chosen; });
        outlets.statusMenu = &rows;
        face = std::make_unique<PanelFace>(TestBus::shared(), PanelResources{"", [] { return nullptr; }}, [] {});
        face->setOutlets(outlets);
        item = face->statusItemWithLength(-1);
        item->setMenu(&rows);
        item->setTitle("title");
        require(panel.waitForItem(), "the panel takes the item");
    }
    TestBus bus;
    FakePanel panel{bus};
    Menu rows;
    Outlets outlets;
    int chosen = 0;
    std::unique_ptr<PanelFace> face;
    std::unique_ptr<StatusItem> item;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World& world = *new World;  // the bus ends with the process
    const std::string text(reinterpret_cast<const char*>(data), size);
    bool events = false;
    world.chosen = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        at = end + 1;
        const bool menu = line.starts_with('/');
        if (menu) line.erase(0, 1);
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string method = line.substr(0, blank);
        const std::string arguments = blank < line.size() ? line.substr(blank + 1) : "()";
        const bool isText = g_utf8_validate(arguments.c_str(), -1, nullptr) != FALSE;  // as GLib's text form wants it
        GVariant* value = isText ? g_variant_parse(nullptr, arguments.c_str(), nullptr, nullptr, nullptr) : nullptr;
        const bool usable = value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_TUPLE) != FALSE &&
                            g_dbus_is_member_name(method.c_str()) != FALSE;
        if (value != nullptr) g_variant_unref(g_variant_ref_sink(value));
        if (!usable) continue;
        events = events || method.starts_with("Event");
        const bool get = method.starts_with("Get") && method != "GetLayout" && method != "GetGroupProperties";
        world.panel.call(menu ? "/MenuBar" : "/StatusNotifierItem",
                         get    ? "org.freedesktop.DBus.Properties"
                         : menu ? "com.canonical.dbusmenu"
                                : "org.kde.StatusNotifierItem",
                         method, arguments);
    }
    require(world.panel.read("Title") == "'title'", "the item answers");
    const std::string layout = world.panel.call("/MenuBar", "com.canonical.dbusmenu", "GetLayout", "(0, -1, @as [])");
    require(layout.find("'row'") != std::string::npos && layout.find("'toggle'") != std::string::npos,
            "so does the menu");
    require(events || world.chosen == 0, "a row is chosen by an event alone");
    return 0;
}
