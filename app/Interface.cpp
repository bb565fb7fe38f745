#include "app/Interface.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

namespace dinmala {

namespace {

using nlohmann::json;

template <typename Object>
struct Outlet {
    std::string_view name;
    Object* Outlets::*member;
};

constexpr Outlet<MenuItem> kItemOutlets[] = {
    {"dateMenuItem", &Outlets::dateMenuItem},       {"descriptionMenuItem", &Outlets::descriptionMenuItem},
    {"startupMenuItem", &Outlets::startupMenuItem}, {"logoMenuItem", &Outlets::logoMenuItem},
    {"iconMenuItem", &Outlets::iconMenuItem},       {"yearMenuItem", &Outlets::yearMenuItem},
    {"monthMenuItem", &Outlets::monthMenuItem},     {"dayMenuItem", &Outlets::dayMenuItem},
    {"dowMenuItem", &Outlets::dowMenuItem},         {"timeMenuItem", &Outlets::timeMenuItem},
    {"tithiMenuItem", &Outlets::tithiMenuItem},     {"eventMenuItem", &Outlets::eventMenuItem},
};

constexpr Outlet<Label> kLabelOutlets[] = {
    {"txtMonth", &Outlets::txtMonth}, {"txtYear", &Outlets::txtYear},   {"txtTime", &Outlets::txtTime},
    {"txtTithi", &Outlets::txtTithi}, {"txtEvent", &Outlets::txtEvent}, {"txtDow", &Outlets::txtDow},
    {"txtDay", &Outlets::txtDay},
};

constexpr Outlet<Button> kButtonOutlets[] = {{"btnNotification", &Outlets::btnNotification}};

struct Action {
    std::string_view name;
    void (AppDelegate::*run)(Sender);
};

constexpr Action kActions[] = {
    {"nothingToDo:", &AppDelegate::nothingToDo}, {"changeAppStartup:", &AppDelegate::changeAppStartup},
    {"goToWeb:", &AppDelegate::goToWeb},         {"goToUpdateURL:", &AppDelegate::goToUpdateURL},
    {"setIcon:", &AppDelegate::setIcon},         {"setYear:", &AppDelegate::setYear},
    {"setMonth:", &AppDelegate::setMonth},       {"setDay:", &AppDelegate::setDay},
    {"setDow:", &AppDelegate::setDow},           {"setTime:", &AppDelegate::setTime},
    {"setTithi:", &AppDelegate::setTithi},       {"setEvent:", &AppDelegate::setEvent},
};

constexpr std::string_view kTerminate = "terminate:";

/// The entry of a name, or null.
template <typename Entry, std::size_t N>
const Entry* entryOf(const Entry (&entries)[N], std::string_view name) {
    for (const Entry& entry : entries) {
        if (entry.name == name) return &entry;
    }
    return nullptr;
}

}  // namespace

/// Walks the definition; `where` names the row for messages: "rows[2].rows[0]".
struct Interface::Builder {
    Interface& interface;
    std::string_view language;

    [[noreturn]] static void fail(const std::string& where, const std::string& why) {
        throw InterfaceError(where + ": " + why);
    }

    static std::string text(const json& row, const char* key, const std::string& where) {
        if (!row.at(key).is_string()) fail(where, std::string{"\""} + key + "\" is not a text");
        return row.at(key).get<std::string>();
    }

    /// The title in the interface's language, else in English, else the first.
    [[nodiscard]] std::string title(const json& row, const std::string& where) const {
        if (!row.contains("title")) return {};
        const json& titles = row.at("title");
        if (!titles.is_object() || titles.empty()) fail(where, "\"title\" is not a table of languages");
        for (const std::string& wanted : {std::string{language}, std::string{"en"}}) {
            if (titles.contains(wanted)) return text(titles, wanted.c_str(), where);
        }
        return text(titles, titles.begin().key().c_str(), where);
    }

    template <typename Object, std::size_t N>
    void connectOutlet(const Outlet<Object> (&outlets)[N], const std::string& name, Object& object,
                       const std::string& where) const {
        const auto* outlet = entryOf(outlets, name);
        if (outlet == nullptr) fail(where, "there is no outlet " + name + " of this kind");
        if (interface.outlets_.*(outlet->member) != nullptr) fail(where, "outlet " + name + " is connected already");
        interface.outlets_.*(outlet->member) = &object;
    }

    static void checkKeys(const json& row, const std::string& where) {
        constexpr std::array<std::string_view, 8> kKeys = {"separator", "title", "outlet", "label",
                                                           "button",    "mark",  "action", "rows"};
        for (const auto& [key, value] : row.items()) {
            if (std::find(kKeys.begin(), kKeys.end(), key) == kKeys.end()) fail(where, "unknown key \"" + key + "\"");
        }
    }

    static bool flag(const json& row, const char* key, const std::string& where) {
        if (!row.contains(key)) return false;
        if (!row.at(key).is_boolean()) fail(where, std::string{"\""} + key + "\" is not true or false");
        return row.at(key).get<bool>();
    }

    /// A label's place: its row shows the caption and the label's text.
    void addLabel(MenuItem& item, const std::string& name, const std::string& where) const {
        Label& label = *interface.labels_.emplace_back(std::make_unique<Label>());
        connectOutlet(kLabelOutlets, name, label, where);
        label.setObserver([&item, &label, caption = item.title()] {
            item.setTitle(caption + ": " + (label.stringValue().empty() ? "–" : label.stringValue()));
        });
    }

    /// A button's place: its row is there while the button is.
    void addButton(MenuItem& item, const std::string& name, const std::string& where) const {
        Button& button = *interface.buttons_.emplace_back(std::make_unique<Button>());
        connectOutlet(kButtonOutlets, name, button, where);
        item.setHidden(button.isHidden());
        button.setObserver([&item, &button] { item.setHidden(button.isHidden()); });
    }

    void addRow(Menu& menu, const json& row, const std::string& where) const {
        if (!row.is_object()) fail(where, "a row is not an object");
        checkKeys(row, where);
        const bool separator = flag(row, "separator", where);
        const bool mark = flag(row, "mark", where);
        const auto kind = separator ? MenuItem::Kind::separator : mark ? MenuItem::Kind::toggle : MenuItem::Kind::plain;
        MenuItem& item = menu.add(std::make_unique<MenuItem>(kind));
        if (separator) return;
        item.setTitle(title(row, where));
        if (row.contains("outlet")) connectOutlet(kItemOutlets, text(row, "outlet", where), item, where);
        if (row.contains("label")) addLabel(item, text(row, "label", where), where);
        if (row.contains("button")) addButton(item, text(row, "button", where), where);
        if (row.contains("action")) {
            std::string action = text(row, "action", where);
            if (action != kTerminate && entryOf(kActions, action) == nullptr)
                fail(where, "there is no action " + action);
            interface.actions_.emplace(&item, std::move(action));
        }
        if (row.contains("rows")) {
            auto submenu = std::make_shared<Menu>();
            addRows(*submenu, row.at("rows"), where + ".rows");
            item.setSubmenu(std::move(submenu));
        }
    }

    void addRows(Menu& menu, const json& rows, const std::string& where) const {
        if (!rows.is_array() || rows.empty()) fail(where, "is not a list of rows");
        for (std::size_t i = 0; i < rows.size(); ++i) addRow(menu, rows[i], where + "[" + std::to_string(i) + "]");
    }
};

Interface::Interface(std::string_view definition, std::string_view language) {
    json root;
    try {
        root = json::parse(definition);
    } catch (const json::exception& error) {
        const std::string message = error.what();  // says line and column after a tag in brackets
        throw InterfaceError(message.substr(message.find("] ") + 2));
    }
    if (!root.is_object() || !root.contains("rows")) throw InterfaceError("has no \"rows\"");
    Builder{*this, language}.addRows(statusMenu_, root.at("rows"), "rows");
    outlets_.statusMenu = &statusMenu_;
}

void Interface::connect(AppDelegate& delegate, const std::function<void()>& terminate) {
    for (const auto& [item, name] : actions_) {
        if (name == kTerminate) {
            item->setAction(terminate);
        } else {
            const auto run = entryOf(kActions, name)->run;
            item->setAction([&delegate, run] { (delegate.*run)(nullptr); });
        }
    }
}

}  // namespace dinmala
