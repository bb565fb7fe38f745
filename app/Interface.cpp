#include "app/Interface.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/Pieces.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

using nlohmann::json;

struct ItemOutlet {
    std::string_view name;
    MenuItem* Outlets::*member;
};

constexpr ItemOutlet kItemOutlets[] = {
    {"dateMenuItem", &Outlets::dateMenuItem},
    {"descriptionMenuItem", &Outlets::descriptionMenuItem},
    {"startupMenuItem", &Outlets::startupMenuItem},
    {"logoMenuItem", &Outlets::logoMenuItem},
    {"iconMenuItem", &Outlets::iconMenuItem},
    {"noteMenuItem", &Outlets::noteMenuItem},
    {"currentEditionMenuItem", &Outlets::currentEditionMenuItem},
    {"firstEditionMenuItem", &Outlets::firstEditionMenuItem},
    {"tellMenuItem", &Outlets::tellMenuItem},
    {"tellNeverMenuItem", &Outlets::tellNeverMenuItem},
    {"tellEveningMenuItem", &Outlets::tellEveningMenuItem},
    {"tellMorningMenuItem", &Outlets::tellMorningMenuItem},
    {"tellHolidaysMenuItem", &Outlets::tellHolidaysMenuItem},
    {"tellAllMenuItem", &Outlets::tellAllMenuItem},
    {"tellLeftMenuItem", &Outlets::tellLeftMenuItem},
    {"calendarMenuItem", &Outlets::calendarMenuItem},
};

struct Action {
    std::string_view name;
    void (AppDelegate::*run)(Sender);
    bool opensSite = false;  ///< a row for it is of use only where there is a site
};

constexpr Action kActions[] = {
    {"nothingToDo:", &AppDelegate::nothingToDo},
    {"changeAppStartup:", &AppDelegate::changeAppStartup},
    {"goToWeb:", &AppDelegate::goToWeb, true},
    {"goToUpdateURL:", &AppDelegate::goToUpdateURL, true},
    {"setIcon:", &AppDelegate::setIcon},
    {"setCurrentEdition:", &AppDelegate::setCurrentEdition},
    {"setFirstEdition:", &AppDelegate::setFirstEdition},
    {"tellNever:", &AppDelegate::tellNever},
    {"tellInEvening:", &AppDelegate::tellInEvening},
    {"tellInMorning:", &AppDelegate::tellInMorning},
    {"tellOfHolidays:", &AppDelegate::tellOfHolidays},
    {"tellOfAll:", &AppDelegate::tellOfAll},
    {"tellOfLeft:", &AppDelegate::tellOfLeft},
    {"openCalendar:", &AppDelegate::openCalendar},
};

constexpr std::string_view kTerminate = "terminate:";

/// More than any menu has, and little enough for the stack.
constexpr int kDeepest = 8;

std::string capitalized(std::string_view key) {
    std::string word{key};
    if (!word.empty()) word[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
    return word;
}

/// The piece that a name stands for, made of its key by one of the patterns of Piece; null for none.
template <typename Pattern>
const Piece* pieceNamed(std::string_view name, Pattern&& pattern) {
    for (const Piece& piece : pieces()) {
        if (pattern(piece.key) == name) return &piece;
    }
    return nullptr;
}

/// What an action does; null for a name that none has.
std::function<void(AppDelegate&)> actionNamed(std::string_view name) {
    for (const Action& action : kActions) {
        if (action.name == name) return [run = action.run](AppDelegate& delegate) { (delegate.*run)(nullptr); };
    }
    const Piece* piece = pieceNamed(name, [](auto key) { return "set" + capitalized(key) + ":"; });
    if (piece == nullptr) return nullptr;
    return [key = piece->key](AppDelegate& delegate) { delegate.toggle(key); };
}

}  // namespace

/// Walks the definition; `where` names the row for messages: "rows[2].rows[0]".
struct Interface::Builder {
    Interface& interface;

    [[noreturn]] static void fail(const std::string& where, const std::string& why) {
        throw InterfaceError(where + ": " + why);
    }

    static std::string text(const json& row, const char* key, const std::string& where) {
        if (!row.at(key).is_string()) fail(where, std::string{"\""} + key + "\" is not a text");
        return row.at(key).get<std::string>();
    }

    /// The title in the user's language.
    static std::string title(const json& row, const std::string& where) {
        const std::string english = row.contains("title") ? text(row, "title", where) : "";
        return english.empty() ? english : tr(english.c_str());
    }

    /// Where an outlet's object is kept.
    [[nodiscard]] MenuItem*& itemOutlet(const std::string& name, const std::string& where) const {
        for (const ItemOutlet& outlet : kItemOutlets) {
            if (outlet.name == name) return interface.outlets_.*(outlet.member);
        }
        const Piece* piece = pieceNamed(name, [](auto key) { return std::string{key} + "MenuItem"; });
        if (piece == nullptr) failOutlet(name, where);
        if (piece->toggle != nullptr) return interface.outlets_.*(piece->toggle);
        return interface.outlets_.toggles[std::string{piece->key}];
    }

    [[nodiscard]] Label*& labelOutlet(const std::string& name, const std::string& where) const {
        const Piece* piece = pieceNamed(name, [](auto key) { return "txt" + capitalized(key); });
        if (piece == nullptr) failOutlet(name, where);
        if (piece->label != nullptr) return interface.outlets_.*(piece->label);
        return interface.outlets_.labels[std::string{piece->key}];
    }

    [[nodiscard]] Button*& buttonOutlet(const std::string& name, const std::string& where) const {
        if (name != "btnNotification") failOutlet(name, where);
        return interface.outlets_.btnNotification;
    }

    [[noreturn]] static void failOutlet(const std::string& name, const std::string& where) {
        fail(where, "there is no outlet " + name + " of this kind");
    }

    template <typename Object>
    static void connectOutlet(Object*& outlet, Object& object, const std::string& name, const std::string& where) {
        if (outlet != nullptr) fail(where, "outlet " + name + " is connected already");
        outlet = &object;
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
        connectOutlet(labelOutlet(name, where), label, name, where);
        label.setObserver([&item, &label, caption = item.title()] {
            item.setTitle(caption + ": " + (label.stringValue().empty() ? "–" : label.stringValue()));
        });
    }

    /// A button's place: its row is there while the button is.
    void addButton(MenuItem& item, const std::string& name, const std::string& where) const {
        Button& button = *interface.buttons_.emplace_back(std::make_unique<Button>());
        connectOutlet(buttonOutlet(name, where), button, name, where);
        item.setHidden(button.isHidden());
        button.setObserver([&item, &button] { item.setHidden(button.isHidden()); });
    }

    void addRow(Menu& menu, const json& row, const std::string& where, int depth) const {
        if (!row.is_object()) fail(where, "a row is not an object");
        checkKeys(row, where);
        const bool separator = flag(row, "separator", where);
        const bool mark = flag(row, "mark", where);
        const auto kind = separator ? MenuItem::Kind::separator : mark ? MenuItem::Kind::toggle : MenuItem::Kind::plain;
        MenuItem& item = menu.add(std::make_unique<MenuItem>(kind));
        if (separator) return;
        item.setTitle(title(row, where));
        if (row.contains("outlet")) {
            const std::string name = text(row, "outlet", where);
            connectOutlet(itemOutlet(name, where), item, name, where);
        }
        if (row.contains("label")) addLabel(item, text(row, "label", where), where);
        if (row.contains("button")) addButton(item, text(row, "button", where), where);
        if (row.contains("action")) {
            std::string action = text(row, "action", where);
            if (action != kTerminate && !actionNamed(action)) fail(where, "there is no action " + action);
            interface.actions_.emplace(&item, std::move(action));
        }
        if (row.contains("rows")) {
            auto submenu = std::make_shared<Menu>();
            addRows(*submenu, row.at("rows"), where + ".rows", depth + 1);
            item.setSubmenu(std::move(submenu));
        }
    }

    void addRows(Menu& menu, const json& rows, const std::string& where, int depth) const {
        if (depth > kDeepest) fail(where, "is too deep");
        if (!rows.is_array() || rows.empty()) fail(where, "is not a list of rows");
        for (std::size_t i = 0; i < rows.size(); ++i)
            addRow(menu, rows[i], where + "[" + std::to_string(i) + "]", depth);
    }
};

Interface::Interface(std::string_view definition) {
    json root;
    try {
        root = json::parse(definition);
    } catch (const json::exception& error) {
        const std::string message = error.what();  // says line and column after a tag in brackets
        throw InterfaceError(message.substr(message.find("] ") + 2));
    }
    if (!root.is_object() || !root.contains("rows")) throw InterfaceError("has no \"rows\"");
    Builder{*this}.addRows(statusMenu_, root.at("rows"), "rows", 1);
    outlets_.statusMenu = &statusMenu_;
}

void Interface::connect(AppDelegate& delegate, const std::function<void()>& terminate) {
    for (const auto& [item, name] : actions_) {
        if (name == kTerminate) {
            item->setAction(terminate);
        } else {
            item->setAction([&delegate, run = actionNamed(name)] { run(delegate); });
            const auto same = [name = std::string_view{name}](const Action& action) { return action.name == name; };
            const auto* action = std::find_if(std::begin(kActions), std::end(kActions), same);
            if (action != std::end(kActions) && action->opensSite && !delegate.hasSite()) item->setEnabled(false);
        }
    }
}

}  // namespace dinmala
